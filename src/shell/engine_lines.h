#pragma once

#include "toolkit/toolkit.h"

#include <string_view>

namespace keldrin {

// What the engine writes to its console; each line begins with its name.

/// A line without the engine's name before it.
std::string_view withoutEngineName(std::string_view line);

/// True for the line that says how a run went, such as
/// "8 iterations, median misfit 0.97, 24 of 24 soundings" or
/// "0 iterations, no data to fit, 0 of 24 soundings".
bool isEngineSummary(std::string_view line);

/// How far the engine has come by a line such as "iteration 3 of 8: misfit median 1.11, ..." or
/// "soundings 512 of 2048"; total 0 for any other line.
CommandProgress engineProgress(std::string_view line);

} // namespace keldrin
