#pragma once

#include "model/survey_model.h"

namespace keldrin {

/// Fills the widths that a file did not give (0 or less) from the window centres: neighbouring
/// windows meet at the geometric mean of their centres. A sounding of one window gets width 0.
void SetWindowWidths(SurveyModel &model);

} // namespace keldrin
