#pragma once

#include "model/survey_model.h"

#include <functional>
#include <string>

namespace keldrin {

/// Writes the project at Continue, the control values being those that the user has left.
/// before   the values when the dialog opened
/// path     of the project, its name as the user has left it
/// returns  true when the project can be found under this path from now on
using WriteConfigured = std::function<bool(const ControlValues &before, const std::string &path)>;

/// Lets the user edit the survey configuration and the control values (dialog 108).
/// path     of the project; takes the name that the user has chosen once `write` succeeded
/// write    called at Continue; it reports a failure itself
/// returns  0 confirmed, 1 cancelled (all is as it was before the dialog), 3 the root window was
///          closed (nothing written)
int EditSurveyConfiguration(SurveyModel &model, std::string &path, const WriteConfigured &write);

} // namespace keldrin
