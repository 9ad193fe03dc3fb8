#include "sounding/plot_limits_dialog.h"

#include "sounding/axis_rule.h"
#include "toolkit/control_ids.h"

#include <array>

namespace keldrin {

namespace {

using enum ControlKind;
using namespace PlotLimitsControl;
using Answers = PlotLimitsAnswers;

constexpr std::string_view FourDigits = "(1P,G12.4E1)";
constexpr std::string_view OneDecimal = "(F12.1)";

std::string dataTitle(const Answers &answers) {
    return "dBz/dt (" + answers.dataUnits + ")";
}

std::string depthTitle(const Answers &answers) {
    return "Depth (" + answers.lengthUnits + ")";
}

// In the order of PageStyle.
std::vector<std::string> styleNames(const Answers & /*answers*/) {
    return {"Standard", "Presentation"};
}

constexpr ControlSpec title(int id, std::string_view label, FieldAccess field = {}) {
    return {.id = id, .label = label, .field = field, .look = StaticLook::RowTitle};
}

template <auto Axis, auto End, const AxisRule &rule>
constexpr ControlSpec limit(int id, std::string_view format, std::string_view name) {
    return {.id = id,
            .kind = Real,
            .label = End == &AxisEnds::maximum ? "maximum" : "minimum",
            .format = format,
            .field = fieldTakenBy<takeEnd<rule>, Axis, End>(rule.refusal),
            .name = name,
            .sameRow = true,
            .labelAbove = true};
}

// Begins a frame without a control of its own for the title.
constexpr ControlSpec framed(ControlSpec first, std::string_view title) {
    first.part = DialogPart::Frame;
    first.partTitle = title;
    return first;
}

constexpr auto Maximum = &AxisEnds::maximum;
constexpr auto Minimum = &AxisEnds::minimum;

constexpr std::array Controls = {
    groupTitle(DataGroup, "TEM Data Plot Limits"),
    title(DataTitle, "dBz/dt", shownBy<dataTitle>()),
    limit<&Answers::data, Maximum, ArcSinhAxis>(DataMaximum, FourDigits, "dBz/dt maximum"),
    limit<&Answers::data, Minimum, ArcSinhAxis>(DataMinimum, FourDigits, "dBz/dt minimum"),
    title(TimeTitle, "Time (msec)"),
    limit<&Answers::time, Maximum, LogarithmicAxis>(TimeMaximum, FourDigits, "Time maximum"),
    limit<&Answers::time, Minimum, LogarithmicAxis>(TimeMinimum, FourDigits, "Time minimum"),
    groupTitle(ModelGroup, "Smooth-Model Plot Limits"),
    title(DepthTitle, "Depth", shownBy<depthTitle>()),
    limit<&Answers::depth, Maximum, LinearAxis>(DepthMaximum, OneDecimal, "Depth maximum"),
    limit<&Answers::depth, Minimum, LinearAxis>(DepthMinimum, OneDecimal, "Depth minimum"),
    title(ResistivityTitle, "Resistivity (ohm-m)"),
    limit<&Answers::resistivity, Maximum, LogarithmicAxis>(ResistivityMaximum, FourDigits,
                                                           "Resistivity maximum"),
    limit<&Answers::resistivity, Minimum, LogarithmicAxis>(ResistivityMinimum, FourDigits,
                                                           "Resistivity minimum"),
    groupTitle(PageGroup, "Page"),
    ControlSpec{.id = Style,
                .kind = List,
                .label = "Style",
                .field = fieldOf<&Answers::style>(),
                .entries = givenBy<styleNames>()},
    framed(title(ApparentTitle, "Apparent resistivity (ohm-m)"), "Presentation Plot Limits"),
    limit<&Answers::apparent, Maximum, LogarithmicAxis>(ApparentMaximum, FourDigits,
                                                        "Apparent resistivity maximum"),
    limit<&Answers::apparent, Minimum, LogarithmicAxis>(ApparentMinimum, FourDigits,
                                                        "Apparent resistivity minimum"),
    ContinueRow,
    CancelRow,
};

} // namespace

const DialogForm<PlotLimitsAnswers> PlotLimitsDialog = DialogSpec{
    .number = 103,
    .caption = "Set review plot limits",
    .defaultButton = ButtonContinue,
    .controls = Controls,
    .place = DialogPlace::LowerRight,
};

} // namespace keldrin
