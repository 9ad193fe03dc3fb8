#include "toolkit/control_ids.h"
#include "toolkit/dialog_specs/dialog_specs.h"

#include <array>

namespace keldrin {

namespace {

using enum ControlKind;

constexpr int LineLength = 128;
constexpr int LineNameLength = 16;
constexpr int BaseNameLength = 255;
constexpr std::string_view OneDecimal = "(F12.1)";
constexpr std::string_view FourDigits = "(0P,G12.4E1)";

struct Limits {
    double low = 1.0;
    double high = 0.0;
};
constexpr Limits None = {};
constexpr Limits Circle = {-360.0, 360.0};
constexpr Limits Length = {0.1, 990000.0};
constexpr Limits Percent = {0.1, 9999.9};
constexpr Limits Weight = {0.01, 100.0};

constexpr ControlSpec text(int id, std::string_view label, int length = LineLength) {
    return {.id = id, .kind = Text, .label = label, .length = length};
}

constexpr ControlSpec whole(int id, std::string_view label, Limits limits) {
    return {.id = id, .kind = Integer, .label = label, .limits = {limits.low, limits.high}};
}

constexpr ControlSpec real(int id, std::string_view label, Limits limits, std::string_view format,
                           std::string_view unit = {}) {
    return {.id = id,
            .kind = Real,
            .label = label,
            .format = format,
            .unit = unit,
            .limits = {limits.low, limits.high}};
}

// Enabled by the program, for Fixed-Loop only.
constexpr ControlSpec position(int id, std::string_view label, std::string_view format) {
    return {.id = id, .kind = Double, .label = label, .format = format};
}

constexpr ControlSpec besides(ControlSpec spec) {
    spec.sameRow = true;
    return spec;
}

constexpr ControlSpec beginning(ControlSpec spec, DialogPart part, std::string_view title = {}) {
    spec.part = part;
    spec.partTitle = title;
    return spec;
}

constexpr ControlSpec rowTitle(int id, std::string_view label) {
    return {.id = id, .label = label, .look = StaticLook::RowTitle};
}

// A field behind a row's title, with its label above it.
constexpr ControlSpec under(ControlSpec spec) {
    spec.labelAbove = true;
    return besides(spec);
}

constexpr int OffsetUnit = 1110; ///< the unit of all lengths

constexpr ControlSpec withLengthUnit(ControlSpec spec) {
    spec.unitFrom = OffsetUnit;
    return spec;
}

constexpr std::array Controls = {
    beginning(text(1001, "Descriptive Text"), DialogPart::Frame, "Job and line"),
    text(1003, ""),
    text(1004, ""),
    text(1071, "Job Name"),
    besides(text(1100, "Job Area")),
    text(1101, "Job For"),
    besides(text(1102, "Job By")),
    text(1072, "Line Name", LineNameLength),
    besides(real(1104, "Line Number", None, OneDecimal)),
    besides(whole(1106, "Line Azimuth", Circle)),
    beginning(real(1108, "Station # Scale", {1.0E-6, 1.0E6}, "(1P,G12.4E1)"), DialogPart::LeftFrame,
              "Array"),
    besides({.id = 1006, .kind = List, .label = "Length Units", .length = 2}),
    ControlSpec{.id = 1008, .kind = List, .label = "TEM Array", .length = 4},
    withLengthUnit(real(1011, "Tx-Rx Offset (across-line)", {-9.9E8, 9.9E9}, OneDecimal)),
    besides({.id = OffsetUnit, .label = "m", .look = StaticLook::Unit}),
    beginning(rowTitle(1010, "Tx Loop Size (m)"), DialogPart::LeftFrame, "Transmitter"),
    withLengthUnit(under(real(1015, "x along line", Length, OneDecimal))),
    withLengthUnit(under(real(1016, "y across line", Length, OneDecimal))),
    under(whole(1078, "x azm", Circle)),
    under(whole(1024, "# Turns", {1.0, 32.0})),
    real(1025, "Transmitter Ramp Time", Length, OneDecimal, "usec"),
    real(1026, "Transmitter Frequency", {0.01, 1024.0}, FourDigits, "Hz"),
    position(1122, "Tx.Stn =Tx ID", "(F14.1)"),
    rowTitle(1111, "FXL Tx Loop Center (m)"),
    under(position(1046, "East", "(F12.0)")),
    under(position(1047, "North", "(F12.0)")),
    beginning(real(1032, "Background Model Weighting", Weight, FourDigits), DialogPart::RightFrame,
              "Inversion"),
    real(1038, "Vertical Smoothness Weighting", Weight, FourDigits),
    real(1037, "Data Error Floor", Percent, OneDecimal, "%"),
    whole(1041, "Maximum # of Iterations", {0.0, 32.0}),
    real(1051, "Drop Data with Error Above", Percent, OneDecimal, "%"),
    beginning(
        {.id = 1043, .kind = Text, .label = "Save As", .unit = ".std", .length = BaseNameLength},
        DialogPart::Plain),
    ControlSpec{.id = ButtonContinue, .kind = Button, .label = "Continue"},
    besides({.id = ButtonCancel, .kind = Button, .label = "Cancel"}),
};

} // namespace

const DialogSpec ConfigurationDialog = {Dialog::Configuration, "Verify TEM survey configuration",
                                        ButtonContinue, Controls};

} // namespace keldrin
