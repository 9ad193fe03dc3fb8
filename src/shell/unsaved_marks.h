#pragma once

#include "model/survey_model.h"

#include <string>

namespace keldrin {

/// Offers the skip marks of a review that ended before the project was written, after this was
/// opened. Taken, they are written into the project; left, their file is kept under another name.
/// Nothing is asked where the project holds them all.
void offerUnsavedMarks(SurveyModel &model, const std::string &path);

} // namespace keldrin
