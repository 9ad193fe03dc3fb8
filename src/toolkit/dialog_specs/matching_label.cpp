#include "toolkit/control_ids.h"
#include "toolkit/dialog_specs/dialog_specs.h"

#include <array>

namespace keldrin {

namespace {

using enum ControlKind;

constexpr std::array Controls = {
    ControlSpec{.id = 1061, .label = "Match this label"},
    ControlSpec{.id = 1091, .kind = Text, .enabled = false},
    ControlSpec{.id = 1005, .label = "from this list"},
    ControlSpec{.id = 1092, .kind = List, .length = 16, .rows = 16},
    ControlSpec{.id = ButtonContinue, .kind = Button, .label = "Continue"},
    ControlSpec{.id = ButtonCancel, .kind = Button, .label = "Cancel", .sameRow = true},
};

} // namespace

const DialogSpec MatchingLabelDialog = {Dialog::MatchingLabel, "Select matching label",
                                        ButtonContinue, Controls};

} // namespace keldrin
