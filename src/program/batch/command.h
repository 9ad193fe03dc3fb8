#pragma once

#include "base/program_help.h"

#include <span>
#include <string_view>

namespace keldrin {

// The commands of keldrin-batch. Each takes the words after its name and returns the exit code.

using CommandWords = std::span<const std::string_view>;

inline constexpr int ExitOk = 0;
inline constexpr int ExitFailed = 1;

/// build [--out DIR] [--line N|all] FILE...: field data files to projects.
int buildCommand(CommandWords words);

/// export [--format LIST] [--out DIR] PROJECT...: the line as files of other programs.
int exportTablesCommand(CommandWords words);

/// invert [--threads N] [--jobs N] PROJECT...: runs the engine on each project.
int invertCommand(CommandWords words);

/// play SCENARIO [FILE]: runs the program on the lines of a scenario and prints the transcript.
int playCommand(CommandWords words);

/// skip [OPTION VALUE]... PROJECT...: flags windows by the rules of Auto Skip.
int skipCommand(CommandWords words);

/// plot [--format LIST] [--soundings LIST] [--plan] [--out DIR] PROJECT...: pages of soundings and
/// the plan view as plot files.
int plotCommand(CommandWords words);

} // namespace keldrin
