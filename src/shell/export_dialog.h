#pragma once

#include "model/survey_model.h"
#include "toolkit/dialog_spec.h"

#include <string>

namespace keldrin {

/// Asks in which formats the line is to be exported, and where to, and writes the files. The status
/// bar says what was written, boxes what failed.
/// path  of the project, after which the files are named unless the user says otherwise
void exportProject(const SurveyModel &survey, const std::string &path);

/// Its table, for the manual.
const DialogSpec &exportDialog();

} // namespace keldrin
