#pragma once

#include "toolkit/dialog_spec.h"

namespace keldrin {

/// Shown while the engine runs; see long_work.h.
extern const DialogSpec EngineDialog;

} // namespace keldrin
