#include "toolkit/control_ids.h"
#include "toolkit/dialog_specs/dialog_specs.h"

#include <array>

namespace keldrin {

namespace {

using enum ControlKind;

constexpr std::string_view FourDigits = "(1P,G12.4E1)";
constexpr std::string_view OneDecimal = "(F12.1)";

constexpr ControlSpec group(int id, std::string_view label) {
    return {.id = id, .label = label, .look = StaticLook::GroupTitle};
}

constexpr ControlSpec title(int id, std::string_view label) {
    return {.id = id, .label = label, .look = StaticLook::RowTitle};
}

constexpr ControlSpec limit(int id, std::string_view label, std::string_view format) {
    return {.id = id,
            .kind = Real,
            .label = label,
            .format = format,
            .sameRow = true,
            .labelAbove = true};
}

constexpr ControlSpec maximum(int id, std::string_view format) {
    return limit(id, "maximum", format);
}

constexpr ControlSpec minimum(int id, std::string_view format) {
    return limit(id, "minimum", format);
}

// The units of 1054 and 1056 are the project's and are filled in by the program.
constexpr std::array Controls = {
    group(4011, "TEM Data Plot Limits"),
    title(1054, "dBz/dt"),
    maximum(1027, FourDigits),
    minimum(1045, FourDigits),
    title(4012, "Time (msec)"),
    maximum(1062, FourDigits),
    minimum(1063, FourDigits),
    group(4013, "Smooth-Model Plot Limits"),
    title(1056, "Depth"),
    maximum(1064, OneDecimal),
    minimum(1065, OneDecimal),
    title(4014, "Resistivity (ohm-m)"),
    maximum(1066, FourDigits),
    minimum(1080, FourDigits),
    ControlSpec{.id = ButtonContinue, .kind = Button, .label = "Continue"},
    ControlSpec{.id = ButtonCancel, .kind = Button, .label = "Cancel", .sameRow = true},
};

} // namespace

const DialogSpec PlotLimitsDialog = {Dialog::PlotLimits, "Set review plot limits", ButtonContinue,
                                     Controls};

} // namespace keldrin
