#pragma once

#include "model/survey_model.h"

#include <string>

namespace keldrin {

/// Name of the inversion engine, looked for on the search path and beside this program.
inline constexpr const char *EngineName = "rkeldrin";

/// Runs the inversion engine on the project as the disk holds it, waits for its end and loads what
/// it left, whatever happened: nothing of the model survives but what is in the files. What the
/// engine writes to its console goes to the log. The user may stop it; see ProjectCopy for files
/// that it did not finish.
/// An engine that cannot be run, that fails or leaves less than it found is reported. A path that
/// is no ".std", or no file on the disk, is refused with a report, and the model stays.
/// path     as for OpenProject
/// returns  status of OpenProject; 0 for a refused path
int Invert(SurveyModel &model, std::string &path);

/// Says in the status bar when the engine is neither on the search path nor beside this program.
void showEngineStatus();

} // namespace keldrin
