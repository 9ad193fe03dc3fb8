#include "toolkit/control_ids.h"
#include "toolkit/dialog_specs/dialog_specs.h"

#include <array>

namespace keldrin {

namespace {

using enum ControlKind;

constexpr ControlSpec button(int id, std::string_view caption, bool sameRow) {
    return {.id = id, .kind = Button, .label = caption, .sameRow = sameRow};
}

constexpr ControlSpec text(int id, std::string_view label, bool sameRow = false) {
    return {.id = id, .label = label, .sameRow = sameRow};
}

constexpr ControlSpec title(int id, std::string_view label) {
    return {.id = id, .label = label, .look = StaticLook::GroupTitle};
}

constexpr ControlSpec help(int id, std::string_view label) {
    return {.id = id, .label = label, .look = StaticLook::Help};
}

// Stands below the frame before it.
constexpr ControlSpec outside(ControlSpec spec) {
    spec.part = DialogPart::Plain;
    return spec;
}

constexpr std::array Controls = {
    title(1030, "Select Station"),
    text(1028, "1"),
    ControlSpec{.id = 1057, .kind = Trackbar, .limits = {1.0, 2.0}, .sameRow = true},
    text(1069, "1", true),
    button(1058, "&Previous", false),
    button(1059, "&Next", true),
    outside(button(1067, "Printer Plot", false)),
    title(1034, "Export plot"),
    button(1075, "To HPGL File", false),
    button(1074, "To WMF File", true),
    button(1076, "To PNG File", true),
    button(1077, "To PDF File", false),
    button(1079, "To SVG File", true),
    button(1073, "All to PDF", true),
    outside(button(1081, "Edit Plot Limits", false)),
    button(1068, "E&xit Review", false),
    button(ButtonCancel, "Cancel Changes", true),
    help(1012, "Left click on point to set skip flag, right click to clear flag."),
    help(1013, "Click and drag to skip or clear multiple data points."),
    help(4010, "Ctrl+Z takes the last change back, Ctrl+Y brings it again."),
};

constexpr int NoDefault = 0; // Enter does nothing

} // namespace

const DialogSpec ReviewDialog = {Dialog::Review, "Review TEM data and models", NoDefault, Controls,
                                 true};

} // namespace keldrin
