#pragma once

#include "toolkit/backend.h"

#include <string>
#include <vector>

namespace keldrin {

/// Runs a program with its arguments, without a shell, and waits for it without end. The program is
/// looked for on the search path, then in `programDirectory`. What it writes to its console goes to
/// the watch line by line, and nowhere else; it has nothing to read.
///
/// When the watch ends it, the child and its own children are asked to end and, should they not
/// within two seconds, are killed. A child of its own that still runs at a normal end is not waited
/// for.
/// returns  exitCode 128 plus the signal when one ended it; ErrorCannotRun with the system's code
///          when the system could not start it or wait for it
RunResult runChild(const std::vector<std::string> &command, const std::string &programDirectory,
                   const ChildWatch &watch = {});

/// The directory of this program, from its own path as the command line gives it; blank when
/// neither that nor the system knows.
std::string programDirectory(const std::string &ownPath);

} // namespace keldrin
