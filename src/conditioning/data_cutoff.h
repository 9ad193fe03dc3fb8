#pragma once

#include "model/survey_model.h"

namespace keldrin {

/// Marks every window whose stored error is at or above DataCutoff as skipped; nothing is
/// unskipped.
/// returns  0, or 1 without soundings
int ApplyDataCutoff(SurveyModel &model);

} // namespace keldrin
