#pragma once

#include "model/survey_model.h"

namespace keldrin {

/// ARes_Survey() while the user watches and may stop it. What is computed by then stays, the
/// other soundings keep what they had, and the log says how many are done.
void surveyApparentResistivities(SurveyModel &model);

} // namespace keldrin
