#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace keldrin {

// The program in a real window. Each starts the toolkit; the program then runs as ever and
// ToolkitClose() gives its exit code.

/// False where no window can be shown, because the session has no display.
bool hasDisplay();

/// arguments  the program's own command line; [0] is its own path
void startDesktop(std::vector<std::string> arguments);

/// The same, played from a scenario on the real widgets; see startScriptedRun().
int startDrivenRun(const std::string &scenarioPath, std::vector<std::string> arguments,
                   std::ostream &transcript, std::ostream &complaints);

} // namespace keldrin
