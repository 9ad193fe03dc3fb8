#include "line/section_limits_dialog.h"

#include "base/ascii.h"
#include "conditioning/unread_fields.h"
#include "page/colour_scales.h"
#include "sounding/axis_rule.h"
#include "toolkit/control_ids.h"
#include "toolkit/dialog_form.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

namespace keldrin {

namespace {

using enum ControlKind;

constexpr std::string_view FourDigits = "(1P,G12.4E1)";
constexpr std::string_view OneDecimal = "(F12.1)";
constexpr std::string_view TwoDecimals = "(F12.2)";

/// What dialog 131 shows and changes.
struct SectionAnswers {
    SectionLimits limits;
    std::string heightTitle;
};

/// What dialog 132 shows and changes.
struct ProfileAnswers {
    ProfileLimits limits;
    std::string dataTitle;
};

std::string heightTitle(const SectionAnswers &answers) {
    return answers.heightTitle;
}

std::string dataTitle(const ProfileAnswers &answers) {
    return answers.dataTitle;
}

std::vector<std::string> sectionScales(const SectionAnswers & /*answers*/) {
    return colourScaleNames();
}

bool takeWindows(std::string &windows, const FieldValue &value) {
    const auto &typed = std::get<std::string>(value);
    const bool accepted = trimBlanks(typed).empty() || !windowList(typed).empty();
    windows = accepted ? std::string(trimBlanks(typed)) : windows;
    return accepted;
}

constexpr ControlSpec choice(int id, FieldAccess field) {
    return checkBox(id, "Set by hand", field);
}

constexpr ControlSpec limit(int id, std::string_view format, std::string_view label,
                            std::string_view name, FieldAccess field) {
    return {.id = id, .kind = Real, .label = label, .format = format, .field = field, .name = name};
}

constexpr auto Section = &SectionAnswers::limits;
constexpr auto Profile = &ProfileAnswers::limits;
constexpr auto High = &AxisLimits::high;
constexpr auto Low = &AxisLimits::low;
constexpr auto Resistivity = &SectionLimits::resistivity;
constexpr auto Time = &SectionLimits::time;
constexpr auto Height = &SectionLimits::height;
constexpr auto Data = &ProfileLimits::data;

namespace section {
using namespace SectionLimitsControl;
constexpr std::array Controls = {
    groupTitle(ResistivityTitle, "Resistivity (ohm-m)"),
    choice(SetResistivity, fieldOf<Section, &SectionLimits::setResistivity>()),
    limit(
        ResistivityLow, FourDigits, "minimum", "Resistivity minimum",
        fieldTakenBy<takeEnd<LogarithmicAxis>, Section, Resistivity, Low>(LogarithmicAxis.refusal)),
    inRow(limit(ResistivityHigh, FourDigits, "maximum", "Resistivity maximum",
                fieldTakenBy<takeEnd<LogarithmicAxis>, Section, Resistivity, High>(
                    LogarithmicAxis.refusal))),
    ControlSpec{.id = Colours,
                .kind = List,
                .label = "Colours",
                .field = fieldOf<Section, &SectionLimits::colours>(),
                .entries = givenBy<sectionScales>()},
    groupTitle(TimeTitle, "Time (msec)"),
    choice(SetTime, fieldOf<Section, &SectionLimits::setTime>()),
    limit(TimeLow, FourDigits, "minimum", "Time minimum",
          fieldTakenBy<takeEnd<LogarithmicAxis>, Section, Time, Low>(LogarithmicAxis.refusal)),
    inRow(limit(
        TimeHigh, FourDigits, "maximum", "Time maximum",
        fieldTakenBy<takeEnd<LogarithmicAxis>, Section, Time, High>(LogarithmicAxis.refusal))),
    groupTitle(HeightTitle, "Elevation", shownBy<heightTitle>()),
    choice(SetHeight, fieldOf<Section, &SectionLimits::setHeight>()),
    limit(HeightLow, OneDecimal, "minimum", "Elevation minimum",
          fieldTakenBy<takeEnd<LinearAxis>, Section, Height, Low>(LinearAxis.refusal)),
    inRow(limit(HeightHigh, OneDecimal, "maximum", "Elevation maximum",
                fieldTakenBy<takeEnd<LinearAxis>, Section, Height, High>(LinearAxis.refusal))),
    ControlSpec{.id = SetExaggeration,
                .kind = Check,
                .label = "Set the exaggeration, by the minimum",
                .field = fieldOf<Section, &SectionLimits::setExaggeration>()},
    inRow(limit(Exaggeration, TwoDecimals, "", "Vertical exaggeration",
                fieldTakenBy<takeEnd<LogarithmicAxis>, Section, &SectionLimits::exaggeration>(
                    LogarithmicAxis.refusal))),
    ContinueRow,
    CancelRow,
};
} // namespace section

constexpr DialogForm<SectionAnswers> SectionDialog = DialogSpec{
    .number = 131,
    .caption = "Set section limits",
    .defaultButton = ButtonContinue,
    .controls = section::Controls,
    .place = DialogPlace::LowerRight,
};

namespace profile {
using namespace ProfileLimitsControl;
constexpr std::array Controls = {
    ControlSpec{.id = Every,
                .kind = Integer,
                .label = "One window in (0: as many as can be read)",
                .limits = {0.0, static_cast<double>(MaxWindows)},
                .field = fieldOf<Profile, &ProfileLimits::every>(),
                .name = "One window in"},
    ControlSpec{.id = Windows,
                .kind = Text,
                .label = "Windows in place of these, such as 1-5,9",
                .length = 128,
                .field = fieldTakenBy<takeWindows, Profile, &ProfileLimits::windows>(
                    "is no list of windows"),
                .name = "Windows"},
    groupTitle(DataTitle, "dB/dt", shownBy<dataTitle>()),
    choice(SetData, fieldOf<Profile, &ProfileLimits::setData>()),
    limit(DataLow, FourDigits, "minimum", "dB/dt minimum",
          fieldTakenBy<takeEnd<LinearAxis>, Profile, Data, Low>(LinearAxis.refusal)),
    inRow(limit(DataHigh, FourDigits, "maximum", "dB/dt maximum",
                fieldTakenBy<takeEnd<LinearAxis>, Profile, Data, High>(LinearAxis.refusal))),
    ContinueRow,
    CancelRow,
};
} // namespace profile

constexpr DialogForm<ProfileAnswers> ProfileDialog = DialogSpec{
    .number = 132,
    .caption = "Set profile limits",
    .defaultButton = ButtonContinue,
    .controls = profile::Controls,
    .place = DialogPlace::LowerRight,
};

void setInOrder(AxisLimits &limits) {
    if (limits.low > limits.high) {
        std::swap(limits.low, limits.high);
    }
}

// A depth is a height below 0; 0 has no sign.
AxisLimits limitsOf(const SectionPlot &plot) {
    const auto [low, high] = std::minmax(plot.bottom, plot.top);
    return {static_cast<float>(low), static_cast<float>(high)};
}

} // namespace

bool askSectionLimits(const SectionPage &page, SectionLimits &limits) {
    SectionAnswers answers = {limits, page.hasElevations
                                          ? "Elevation (" + page.lengthUnits + ")"
                                          : "Depth (" + page.lengthUnits + "), downward negative"};
    SectionLimits &shown = answers.limits;
    shown.resistivity = page.resistivity;
    shown.time = limitsOf(page.times);
    if (page.heights) {
        shown.height = limitsOf(*page.heights);
        shown.exaggeration = static_cast<float>(page.exaggeration);
    }
    const DialogAnswer answer = askDialog(SectionDialog, answers);
    if (!answer.confirmed()) {
        return false;
    }
    setInOrder(shown.resistivity);
    setInOrder(shown.time);
    setInOrder(shown.height);
    limits = shown;
    reportUnreadFields(answer.unread);
    return true;
}

bool askProfileLimits(const ProfilePage &page, ProfileLimits &limits) {
    ProfileAnswers answers = {limits, "dB/dt (" + page.dataUnits + ")"};
    answers.limits.data = {std::sinh(page.bottom), std::sinh(page.top)};
    if (limits.setData) {
        answers.limits.data = limits.data; // as typed, not by way of the axis
    }
    const DialogAnswer answer = askDialog(ProfileDialog, answers);
    if (!answer.confirmed()) {
        return false;
    }
    setInOrder(answers.limits.data);
    limits = answers.limits;
    reportUnreadFields(answer.unread);
    return true;
}

const DialogSpec &sectionLimitsDialog() {
    return SectionDialog;
}

const DialogSpec &profileLimitsDialog() {
    return ProfileDialog;
}

} // namespace keldrin
