#include "shell/engine_dialog.h"

#include "toolkit/long_work.h"

namespace keldrin {

namespace {

constexpr auto EngineControls = workControls("Stop");

} // namespace

// Enter must not end an inversion, so there is no default button.
const DialogSpec EngineDialog = {
    .number = 121,
    .caption = "Inversion is running",
    .controls = EngineControls,
};

} // namespace keldrin
