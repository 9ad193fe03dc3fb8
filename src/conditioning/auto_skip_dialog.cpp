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

constexpr ControlSpec withUnit(ControlSpec row, std::string_view unit) {
    row.unit = unit;
    return row;
}

constexpr std::array FurtherRows = {
    checkBox(AutoSkipControl::NoiseFilter, "Skip data below noise of",
             furtherSetting<&FurtherSkipSettings::noiseFloor>()),
    named(withUnit(number(AutoSkipControl::NoiseLevel, "(1P,G12.4E1)",
                          furtherSetting<&FurtherSkipSettings::noiseLevel>(), {1.0e-9, 1.0e9}),
                   "nV/Am2 at 1 msec, exponent"),
          "Noise at 1 msec"),
    named(number(AutoSkipControl::NoiseExponent, "(F12.2)",
                 furtherSetting<&FurtherSkipSettings::noiseExponent>(), {-10.0, 10.0}),
          "Exponent of the noise"),
    checkBox(AutoSkipControl::CurvatureFilter,
             "Skip peaks and dips that bend the log-log slope by >",
             furtherSetting<&FurtherSkipSettings::curvature>()),
    named(number(AutoSkipControl::SlopeChange, "(F12.2)",
                 furtherSetting<&FurtherSkipSettings::slopeChange>(), {0.01, 1000.0}),
          "Difference of slopes"),
    checkBox(AutoSkipControl::NeighbourFilter, "Skip data off the neighbours' median by a factor >",
             furtherSetting<&FurtherSkipSettings::neighbours>()),
    named(number(AutoSkipControl::NeighbourFactor, "(F12.2)",
                 furtherSetting<&FurtherSkipSettings::neighbourFactor>(), {1.01, 1.0e6}),
          "Factor off the median"),
    checkBox(AutoSkipControl::AndLater, "Skip all windows later than a skipped one",
             furtherSetting<&FurtherSkipSettings::andLater>()),
    checkBox(AutoSkipControl::KeepMarks, "Keep present marks",
             furtherSetting<&FurtherSkipSettings::keepMarks>()),
    ControlSpec{.id = AutoSkipControl::Taken,
                .label = "Taken",
                .field = shownBy<takenText>(),
                .look = StaticLook::Help},
    ControlSpec{.id = AutoSkipControl::TakenFurther,
                .label = "Taken further",
                .field = shownBy<takenFurtherText>(),
                .look = StaticLook::Help},
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
    .controls = LiveControls, // Enter presses no button; it ends the typing of a number
    .place = DialogPlace::LowerRight,
    .firstControl = AutoSkipControl::ErrorFilter, // from where letters still walk the line
};

std::string takenText(const AutoSkipAnswers &answers) {
    const AutoSkipCounts &counts = answers.counted.counts;
    const int marks = answers.counted.otherMarks;
    return numbered("error", counts.error) + numbered(", negative", counts.negative) +
           numbered(", slope", counts.slope) + numbered(", range", counts.outsideRange) + "; " +
           std::to_string(marks) + (marks == 1 ? " mark" : " marks") + " made before " +
           (answers.further.keepMarks ? (marks == 1 ? "stays" : "stay") : "would go");
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
