#pragma once

#include "model/survey_model.h"

#include <string>

namespace keldrin {

/// Lets the user edit the survey configuration and the control values (dialog 108) and writes the
/// project at Continue.
/// path     of the project; its base name may be changed by the user
/// returns  0 written, 1 cancelled (all is as it was before the dialog), 3 the root window was
///          closed (nothing written)
int EditSurveyConfiguration(SurveyModel &model, std::string &path);

} // namespace keldrin
