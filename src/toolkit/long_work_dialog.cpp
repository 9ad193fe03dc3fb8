#include "toolkit/control_ids.h"
#include "toolkit/long_work.h"

#include <array>

namespace keldrin {

namespace {

using enum ControlKind;

constexpr std::array Controls = {
    ControlSpec{.id = WorkWords},
    ControlSpec{.id = WorkBar, .kind = Bar},
    ControlSpec{.id = ButtonCancel, .kind = Button, .label = "Cancel"},
};

} // namespace

const DialogSpec ProgressDialog = {.number = 122, .caption = "Please wait", .controls = Controls};

} // namespace keldrin
