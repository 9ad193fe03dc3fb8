#pragma once

#include <string>
#include <vector>

namespace keldrin {

// Record: what the user does is written as a scenario, BASE.scn beside the project. Played with the
// project as it was when the record began it gives the same files.

/// Lets the user start and end a record from now on, and begins the one of recordFromStart().
void offerRecord();

/// Has offerRecord() begin a record with the program.
/// saysSo  the status bar says that it records
void recordFromStart(const std::string &path, bool saysSo);

/// The program waits for a command in its main loop or on a page of the line.
/// project  its path; blank: none is loaded
/// lines    of a scenario, which lead from the program's start with the project to where it waits
void recordRests(const std::string &project, std::vector<std::string> lines);

/// True once after a record has begun. What the program keeps between commands is then to be as it
/// was at its start, except for what the lines of recordRests() bring back.
bool recordHasBegun();

} // namespace keldrin
