#include "toolkit/control_ids.h"
#include "toolkit/dialog_spec.h"

#include <array>

namespace keldrin {

namespace {

using enum ControlKind;

constexpr double MostWindows = 128.0;

constexpr ControlSpec check(int id, std::string_view label) {
    return {.id = id, .kind = Check, .label = label};
}

// The unit of 1086 tells how many windows the soundings have and is filled in by the program.
constexpr std::array Controls = {
    ControlSpec{.id = 1085,
                .kind = Integer,
                .label = "Use data from window",
                .low = 1.0,
                .high = MostWindows},
    ControlSpec{.id = 1086,
                .kind = Integer,
                .label = "to",
                .unit = "of 128",
                .low = 1.0,
                .high = MostWindows,
                .sameRow = true},
    check(1087, "Skip data after error >"),
    ControlSpec{.id = 1051,
                .kind = Real,
                .format = "(F12.1)",
                .unit = "%",
                .low = 0.1,
                .high = 10000.0,
                .sameRow = true},
    check(1088, "Skip negative data"),
    check(1089, "Skip data after transient slopes up and error > 1%"),
    ControlSpec{.id = ButtonContinue, .kind = Button, .label = "Continue"},
    ControlSpec{.id = ButtonCancel, .kind = Button, .label = "Cancel", .sameRow = true},
};

} // namespace

const DialogSpec AutoSkipDialog = {Dialog::AutoSkip, "Verify Auto Skip parameters", ButtonContinue,
                                   Controls};

} // namespace keldrin
