#include "shell/matching_label_dialog.h"

#include "toolkit/control_ids.h"

#include <array>

namespace keldrin {

namespace {

using enum ControlKind;

std::string titleOf(const MatchingLabelAnswers &answers) {
    return "Match this " + answers.label + " label";
}

constexpr std::array MatchingLabelControls = {
    ControlSpec{.id = MatchingLabelControl::Title,
                .label = "Match this label",
                .field = shownBy<titleOf>()},
    ControlSpec{.id = MatchingLabelControl::Word,
                .kind = Text,
                .enabled = false,
                .field = fieldOf<&MatchingLabelAnswers::word>()},
    ControlSpec{.id = MatchingLabelControl::ListTitle, .label = "from this list"},
    ControlSpec{.id = MatchingLabelControl::Names,
                .kind = List,
                .length = 16,
                .field = fieldOf<&MatchingLabelAnswers::choice>(),
                .entries = givenBy<&MatchingLabelAnswers::names>(),
                .rows = 16},
    ContinueRow,
    CancelRow,
};

} // namespace

const DialogForm<MatchingLabelAnswers> MatchingLabelDialog = DialogSpec{
    .number = 106,
    .caption = "Select matching label",
    .defaultButton = ButtonContinue,
    .controls = MatchingLabelControls,
    .firstControl = MatchingLabelControl::Names,
};

} // namespace keldrin
