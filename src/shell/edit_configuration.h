#pragma once

#include "model/survey_model.h"

#include <string>

namespace keldrin {

/// Lets the user edit the configuration of the project and writes it at Continue, its models too
/// when it got another name. Where a value has changed on which they depend, the apparent
/// resistivities are computed anew before that, and the status bar says what is out of date.
/// path     of the project; takes a new name only when the file was written
/// returns  as EditSurveyConfiguration
int EditConfiguration(SurveyModel &model, std::string &path);

} // namespace keldrin
