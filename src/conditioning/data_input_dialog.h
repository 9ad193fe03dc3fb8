#pragma once

#include "model/survey_model.h"

namespace keldrin {

/// Lets the user choose the line of an import and shows that line's coil areas and station
/// rescaling to be changed (dialog 101). The answers go to the line table, those of the selected
/// line to the preset too.
/// returns  0, or 2 on Cancel with nothing stored
int VerifyDataInput(SurveyModel &model);

} // namespace keldrin
