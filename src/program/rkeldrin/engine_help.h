#pragma once

#include "base/program_help.h"

namespace keldrin {

/// What rkeldrin tells of itself.
const ProgramHelp &engineHelp();

} // namespace keldrin
