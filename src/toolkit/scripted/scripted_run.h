#pragma once

#include "toolkit/scripted/script.h"

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace keldrin {

class ScriptedBackend;

/// Makes the backend that plays a scenario.
using MakeScripted =
    std::function<std::unique_ptr<ScriptedBackend>(Script script, std::ostream &transcript)>;

/// Starts the toolkit on a scenario. The program then runs as ever, and ToolkitClose() gives its
/// exit code; a run that has to stop inside a request ends the process by itself.
/// scenarioPath  the scenario file
/// arguments     the program's own command line; [0] is its own path
/// transcript    where the transcript goes; must live to the end of the process
/// complaints    where a scenario that cannot be read is reported, a line for each fault
/// make          the backend; without it the one that needs no window
/// returns       0, or 2 when the scenario cannot be read, with nothing started
int startScriptedRun(const std::string &scenarioPath, std::vector<std::string> arguments,
                     std::ostream &transcript, std::ostream &complaints,
                     const MakeScripted &make = {});

} // namespace keldrin
