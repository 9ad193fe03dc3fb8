#pragma once

#include "model/survey_model.h"

#include <string>

namespace keldrin {

/// Loads a project file and the layered models beside it, if there are any, and computes apparent
/// resistivities where any is missing. The user may stop each of these.
///
/// path     offered to the user to be chosen when it does not exist; the choice comes back
/// returns  0, or 1 when the project could not be read (reported) or the user has stopped its
///          reading (logged); no sounding is then in use
int OpenProject(SurveyModel &model, std::string &path);

} // namespace keldrin
