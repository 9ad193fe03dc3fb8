#pragma once

#include "model/survey_model.h"

#include <string>

namespace keldrin {

/// Writes the project after skip marks have changed, but only over a project: a path that is blank
/// or whose extension is not ".std" is left alone. When soundings are lost to the disk that way,
/// that is reported.
void writeMarkedProject(SurveyModel &model, const std::string &path);

} // namespace keldrin
