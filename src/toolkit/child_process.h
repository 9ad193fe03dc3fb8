#pragma once

#include <string>
#include <vector>

namespace keldrin {

/// How a child process ended.
struct ChildResult {
    int exitCode = 0;    ///< 128 plus the signal when one ended it
    int systemError = 0; ///< not 0: the system could not start it or wait for it
};

/// Runs a program with its arguments, without a shell, and waits for it without end. The program is
/// looked for on the search path, then in `programDirectory`. What it writes to its standard output
/// goes to the error output, so that a transcript stays clean.
ChildResult runChild(const std::vector<std::string> &command, const std::string &programDirectory);

/// The directory of this program, from its own path as the command line gives it.
std::string programDirectory(const std::string &ownPath);

} // namespace keldrin
