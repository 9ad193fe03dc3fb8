#pragma once

#include "base/program_help.h"

namespace keldrin {

/// What keldrin-batch tells of itself.
const ProgramHelp &batchHelp();

} // namespace keldrin
