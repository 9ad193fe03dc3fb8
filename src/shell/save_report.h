#pragma once

#include "model/survey_model.h"

#include <string_view>

namespace keldrin {

/// Writes the report of the survey beside its project, with a dialog that can stop it, and says in
/// the status bar where it is. A file that cannot be written is reported with its path.
/// path  of the project
void saveReport(const SurveyModel &survey, std::string_view path);

} // namespace keldrin
