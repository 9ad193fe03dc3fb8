#include "toolkit/long_work.h"
#include "toolkit/control_ids.h"
#include "toolkit/dialog_specs/dialog_specs.h"

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

const DialogSpec ProgressDialog = {Dialog::Progress, "Please wait", 0, ProgressControls};

} // namespace keldrin
