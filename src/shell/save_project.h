#pragma once

#include "model/survey_model.h"

#include <string>

namespace keldrin {

/// Asks for a name and writes project and models there. ".std" is added to a name that does not end
/// in it.
/// path  of the project; takes the chosen one only when both files were written
void SaveProject(SurveyModel &model, std::string &path);

} // namespace keldrin
