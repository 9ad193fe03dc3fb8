#include "conditioning/auto_skip_dialog.h"

#include "projectfile/control_table.h"
#include "toolkit/control_ids.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace keldrin {

namespace {

using enum ControlKind;

FieldLimits windowLimits(const AutoSkipAnswers &answers) {
    return {1.0, static_cast<double>(std::max(answers.mostWindows, 1))};
}

std::string windowCount(const AutoSkipAnswers &answers) {
    return "of " + std::to_string(answers.mostWindows);
}

template <auto Setting>
constexpr FieldAccess setting() {
    return fieldOf<&AutoSkipAnswers::settings, Setting>();
}

constexpr std::array FilterRows = {
    ControlSpec{.id = AutoSkipControl::FirstWindow,
                .kind = Integer,
                .label = "Use data from window",
                .field = setting<&AutoSkipSettings::firstWindow>(),
                .limitsFrom = givenBy<windowLimits>()},
    ControlSpec{.id = AutoSkipControl::LastWindow,
                .kind = Integer,
                .label = "to",
                .field = setting<&AutoSkipSettings::lastWindow>(),
                .limitsFrom = givenBy<windowLimits>(),
                .name = "Use data to window",
                .sameRow = true},
    ControlSpec{.id = AutoSkipControl::WindowCount,
                .field = shownBy<windowCount>(),
                .sameRow = true,
                .look = StaticLook::Unit},
    ControlSpec{.id = AutoSkipControl::ErrorFilter,
                .kind = Check,
                .label = "Skip data after error >",
                .field = setting<&AutoSkipSettings::errorFilter>()},
    ControlSpec{.id = AutoSkipControl::Cutoff,
                .kind = Real,
                .format = "(F12.1)",
                .unit = "%",
                .limits = {control_ranges::SkipCutoff.low, control_ranges::SkipCutoff.high},
                .field = fieldOf<&AutoSkipAnswers::cutoff>(),
                .name = "Skip data after error",
                .sameRow = true},
    ControlSpec{.id = AutoSkipControl::NegativeFilter,
                .kind = Check,
                .label = "Skip negative data",
                .field = setting<&AutoSkipSettings::negativeFilter>()},
    ControlSpec{.id = AutoSkipControl::SlopeFilter,
                .kind = Check,
                .label = "Skip data after transient slopes up and error > 1%",
                .field = setting<&AutoSkipSettings::slopeFilter>()},
};

template <auto Setting>
constexpr FieldAccess furtherSetting() {
    return fieldOf<&AutoSkipAnswers::further, Setting>();
}

constexpr ControlSpec number(int id, std::string_view format, FieldAccess field,
                             FieldLimits limits) {
    return {.id = id,
            .kind = Real,
            .format = format,
            .limits = limits,
            .field = field,
            .sameRow = true,
            .width = 8};
}

constexpr ControlSpec shown(int id, std::string_view label, FieldAccess field) {
    return {.id = id, .label = label, .field = field, .look = StaticLook::Help};
}

// Short rows, which leave the page its room.
constexpr std::array FurtherRows = {
    checkBox(AutoSkipControl::NoiseFilter, "Skip data below noise of",
             furtherSetting<&FurtherSkipSettings::noiseFloor>()),
    named(number(AutoSkipControl::NoiseLevel, "(1P,G12.4E1)",
                 furtherSetting<&FurtherSkipSettings::noiseLevel>(), {1.0e-9, 1.0e9}),
          "Noise at 1 msec"),
    ControlSpec{.id = AutoSkipControl::NoiseUnit, .label = "nV/Am2 at 1 msec, exponent"},
    named(number(AutoSkipControl::NoiseExponent, "(F12.2)",
                 furtherSetting<&FurtherSkipSettings::noiseExponent>(), {-10.0, 10.0}),
          "Exponent of the noise"),
    checkBox(AutoSkipControl::CurvatureFilter, "Skip peaks and dips that bend >",
             furtherSetting<&FurtherSkipSettings::curvature>()),
    named(number(AutoSkipControl::SlopeChange, "(F12.2)",
                 furtherSetting<&FurtherSkipSettings::slopeChange>(), {0.01, 1000.0}),
          "Difference of slopes"),
    checkBox(AutoSkipControl::NeighbourFilter, "Skip data off neighbours by factor >",
             furtherSetting<&FurtherSkipSettings::neighbours>()),
    named(number(AutoSkipControl::NeighbourFactor, "(F12.2)",
                 furtherSetting<&FurtherSkipSettings::neighbourFactor>(), {1.01, 1.0e6}),
          "Factor off the median"),
    checkBox(AutoSkipControl::AndLater, "Skip all windows later than a skipped one",
             furtherSetting<&FurtherSkipSettings::andLater>()),
    checkBox(AutoSkipControl::KeepMarks, "Keep present marks",
             furtherSetting<&FurtherSkipSettings::keepMarks>()),
    shown(AutoSkipControl::Total, "Total", shownBy<totalText>()),
    shown(AutoSkipControl::Taken, "Taken", shownBy<takenText>()),
    shown(AutoSkipControl::TakenFurther, "Taken further", shownBy<takenFurtherText>()),
    shown(AutoSkipControl::OtherMarks, "Other marks", shownBy<otherMarksText>()),
};

constexpr std::array Buttons = {
    ContinueRow,
    CancelRow,
};

template <std::size_t... counts>
constexpr auto joined(const std::array<ControlSpec, counts> &...parts) {
    std::array<ControlSpec, (counts + ...)> rows{};
    std::size_t end = 0;
    const auto append = [&](const auto &part) {
        for (const ControlSpec &row : part) {
            rows[end++] = row;
        }
    };
    (append(parts), ...);
    return rows;
}

constexpr std::array AutoSkipControls = joined(FilterRows, Buttons);
constexpr std::array LiveControls = joined(FilterRows, FurtherRows, Buttons);

std::string numbered(std::string_view name, int count) {
    return std::string(name) + " " + std::to_string(count);
}

} // namespace

const DialogForm<AutoSkipAnswers> AutoSkipDialog = DialogSpec{
    .number = 104,
    .caption = "Verify Auto Skip parameters",
    .defaultButton = ButtonContinue,
    .controls = AutoSkipControls,
    .firstControl = ButtonContinue,
};

const DialogForm<AutoSkipAnswers> LiveAutoSkipDialog = DialogSpec{
    .number = 145,
    .caption = "Auto Skip",
    .defaultButton = ButtonContinue,
    .controls = LiveControls,
    .inRoot = true,
    .place = DialogPlace::Beside,
    .firstControl = AutoSkipControl::ErrorFilter, // from where letters still walk the line
};

std::string totalText(const AutoSkipAnswers &answers) {
    const AutoSkipCounts &counts = answers.counted.counts;
    int taken = counts.error + counts.negative + counts.slope + counts.outsideRange;
    for (const FurtherSkipFilter &filter : FurtherSkipFilters) {
        taken += answers.counted.further.*filter.taken;
    }
    return "Skips " + std::to_string(counts.skipped) + " of " + std::to_string(counts.windows) +
           (counts.windows == 1 ? " window" : " windows") +
           (taken > counts.skipped ? ", some by several rules:" : ":");
}

std::string takenText(const AutoSkipAnswers &answers) {
    const AutoSkipCounts &counts = answers.counted.counts;
    return numbered("error", counts.error) + numbered(", negative", counts.negative) +
           numbered(", slope", counts.slope) + numbered(", range", counts.outsideRange);
}

std::string otherMarksText(const AutoSkipAnswers &answers) {
    const int marks = answers.counted.otherMarks;
    if (marks == 0) {
        return "";
    }
    const bool one = marks == 1;
    const std::string others = std::to_string(marks) + (one ? " other window" : " other windows");
    if (answers.further.keepMarks) {
        return others + (one ? " is skipped now and stays so." : " are skipped now and stay so.");
    }
    return others + (one ? " is skipped now and comes back." : " are skipped now and come back.");
}

std::string takenFurtherText(const AutoSkipAnswers &answers) {
    std::string text;
    for (const FurtherSkipFilter &filter : FurtherSkipFilters) {
        if (answers.further.*filter.on) {
            text += (text.empty() ? "" : ", ") +
                    numbered(filter.name, answers.counted.further.*filter.taken);
        }
    }
    return text;
}

} // namespace keldrin
