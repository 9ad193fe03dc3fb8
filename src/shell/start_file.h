#pragma once

#include "model/survey_model.h"

#include <string>

namespace keldrin {

/// The file to start with: the first argument of the command line if it exists (without a point
/// it gets `defaultExtension`; a name that does not exist is reported), else the user's choice.
/// Without a file the program ends.
std::string ChooseStartFile(std::string_view defaultExtension);

/// Opens a project or builds one from field data, from the command line or the user's choice.
/// path     out: the project's path; blank when a new model failed
/// returns  status of OpenProject or BuildNewModel (a failed build has been reported)
int StartFile(SurveyModel &model, std::string &path);

} // namespace keldrin
