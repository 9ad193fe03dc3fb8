#pragma once

#include "base/program_help.h"

namespace keldrin {

/// What rkeldrin says about itself.
const ProgramHelp &engineHelp();

} // namespace keldrin
