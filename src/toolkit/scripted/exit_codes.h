#pragma once

#include "base/program_help.h"

#include <array>

namespace keldrin {

// How a scripted run ends. The commands that work on files use the first three as well.
inline constexpr int ScriptPassed = 0;
inline constexpr int ScriptCheckFailed = 1;
inline constexpr int ScriptUnreadable = 2;
inline constexpr int ScriptOutOfStep = 3;
inline constexpr int ScriptEndedInRequest = 4;
inline constexpr int ScriptNoProgress = 5;

inline constexpr std::array ExitCodes = {
    HelpEntry{"0", "Done."},
    HelpEntry{"1", "A file failed, or a check of the scenario."},
    HelpEntry{"2", "Unusable arguments or scenario."},
    HelpEntry{"3", "The scenario is out of step."},
    HelpEntry{"4", "The scenario ended inside a request."},
    HelpEntry{"5", "No progress."},
};

inline constexpr HelpSection ExitCodeSection = {"exit codes", ExitCodes};

} // namespace keldrin
