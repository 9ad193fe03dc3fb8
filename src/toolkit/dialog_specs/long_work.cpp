#include "toolkit/control_ids.h"
#include "toolkit/dialog_spec.h"

#include <array>

namespace keldrin {

namespace {

using enum ControlKind;

constexpr std::array EngineControls = {
    ControlSpec{.id = WorkWords},
    ControlSpec{.id = WorkBar, .kind = Bar},
    ControlSpec{.id = ButtonCancel, .kind = Button, .label = "Stop"},
};

constexpr std::array ProgressControls = {
    ControlSpec{.id = WorkWords},
    ControlSpec{.id = WorkBar, .kind = Bar},
    ControlSpec{.id = ButtonCancel, .kind = Button, .label = "Cancel"},
};

} // namespace

const DialogSpec EngineDialog = {Dialog::Engine, "Inversion is running", 0, EngineControls};

const DialogSpec ProgressDialog = {Dialog::Progress, "Computing apparent resistivities", 0,
                                   ProgressControls};

} // namespace keldrin
