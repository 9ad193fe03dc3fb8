#pragma once

#include "base/program_help.h"

#include <string>

namespace keldrin {

/// The manual page of a program in section 1, for the man macros of troff (man(7)). Literal words
/// and options are bold, placeholders italic.
std::string manPage(const ProgramHelp &help);

} // namespace keldrin
