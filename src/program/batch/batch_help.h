#pragma once

#include "base/program_help.h"

namespace keldrin {

/// What keldrin-batch says about itself.
const ProgramHelp &batchHelp();

} // namespace keldrin
