#pragma once

#include "model/survey_model.h"

namespace keldrin {

/// Lets the user choose the line, the coil areas and the station rescaling of an import
/// (dialog 101), and stores the answers in the line table and the preset.
/// returns  0, or 2 on Cancel with nothing stored
int VerifyDataInput(SurveyModel &model);

} // namespace keldrin
