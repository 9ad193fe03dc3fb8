#pragma once

#include "model/survey_model.h"

namespace keldrin {

/// The TxStn of the sounding that lies nearest to `station`, ties to the earliest sounding;
/// `station` itself without soundings.
double nearestTransmitter(const SurveyModel &model, double station);

/// Makes the control value TxStn name a loop that exists: on a Fixed-Loop line whose soundings all
/// belong to other transmitters it snaps to the nearest one, for a project written with the old
/// value would hold no sounding. Nothing for other arrays.
void settleTransmitter(SurveyModel &model);

} // namespace keldrin
