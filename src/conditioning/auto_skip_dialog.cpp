#include "conditioning/auto_skip_dialog.h"

#include "projectfile/control_table.h"
#include "toolkit/control_ids.h"

#include <algorithm>
#include <array>
#include <string>

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

constexpr std::array Controls = {
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
    ControlSpec{.id = ButtonContinue, .kind = Button, .label = "Continue"},
    ControlSpec{.id = ButtonCancel, .kind = Button, .label = "Cancel", .sameRow = true},
};

} // namespace

const DialogForm<AutoSkipAnswers> AutoSkipDialog = DialogSpec{
    .number = 104,
    .caption = "Verify Auto Skip parameters",
    .defaultButton = ButtonContinue,
    .controls = Controls,
    .firstControl = ButtonContinue,
};

} // namespace keldrin
