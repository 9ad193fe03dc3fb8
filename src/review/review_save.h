#pragma once

#include "model/survey_model.h"

#include <string>

namespace keldrin {

/// Writes the project after skip marks have changed, but only over a project: a path that is blank
/// or whose extension is not ".std" is left alone. What is not on the disk then is reported.
void writeMarkedProject(SurveyModel &model, const std::string &path);

/// False when a write would leave out soundings, which belong to other transmitters.
bool writesEverySounding(const SurveyModel &model);

} // namespace keldrin
