#include "shell/engine_dialog.h"

#include "toolkit/control_ids.h"

#include <array>

namespace keldrin {

namespace {

using enum ControlKind;

constexpr std::array Controls = {
    ControlSpec{.id = WorkWords},
    ControlSpec{.id = WorkBar, .kind = Bar},
    ControlSpec{.id = ButtonCancel, .kind = Button, .label = "Stop"},
};

} // namespace

// Enter must not end an inversion, so there is no default button.
const DialogSpec EngineDialog = {
    .number = 121,
    .caption = "Inversion is running",
    .controls = Controls,
};

} // namespace keldrin
