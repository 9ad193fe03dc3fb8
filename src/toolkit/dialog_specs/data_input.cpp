#include "toolkit/control_ids.h"
#include "toolkit/dialog_specs/dialog_specs.h"

#include <array>

namespace keldrin {

namespace {

using enum ControlKind;

constexpr double LeastArea = 0.1;
constexpr double Largest = 9.9E9;
constexpr std::string_view AreaFormat = "(1P,G14.4E1)";
constexpr std::string_view ScaleFormat = "(F14.2)";

constexpr ControlSpec area(int id, std::string_view label) {
    return {.id = id,
            .kind = Real,
            .label = label,
            .format = AreaFormat,
            .unit = "m^2",
            .limits = {LeastArea, Largest}};
}

constexpr ControlSpec title(int id, std::string_view label, bool sameRow) {
    return {.id = id, .label = label, .sameRow = sameRow, .look = StaticLook::GroupTitle};
}

constexpr ControlSpec head(int id, std::string_view label, bool sameRow) {
    return {.id = id, .label = label, .sameRow = sameRow, .look = StaticLook::Head};
}

constexpr ControlSpec rescaling(int id, std::string_view label, bool sameRow) {
    return {.id = id,
            .kind = Double,
            .label = label,
            .format = ScaleFormat,
            .limits = {-Largest, Largest},
            .sameRow = sameRow};
}

constexpr std::array Controls = {
    ControlSpec{.id = 1082, .kind = List, .label = "Select Line", .length = 32},
    title(4001, "Rx Coil", false),
    title(4002, "Effective Area", true),
    area(1083, "along-line X"),
    area(1116, "across-line Y"),
    area(1117, "vertical Z"),
    title(4003, "Stn Number Rescaling", false),
    head(4004, "Beginning", false),
    head(4005, "Increment", true),
    rescaling(1114, "QDR", false),
    rescaling(1115, "QDR", true),
    rescaling(1118, "Client", false),
    rescaling(1119, "Client", true),
    ControlSpec{.id = ButtonContinue, .kind = Button, .label = "Continue"},
    ControlSpec{.id = ButtonCancel, .kind = Button, .label = "Cancel", .sameRow = true},
};

} // namespace

const DialogSpec DataInputDialog = {Dialog::DataInput, "Verify data input parameters.",
                                    ButtonContinue, Controls};

} // namespace keldrin
