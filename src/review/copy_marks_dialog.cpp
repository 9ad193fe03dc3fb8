#include "review/copy_marks_dialog.h"

#include "text/ordinal_list.h"
#include "toolkit/control_ids.h"

#include <array>
#include <variant>

namespace keldrin {

namespace {

using enum ControlKind;

std::string fromText(const CopyMarksAnswers &answers) {
    return "Marks of " + answers.from + ", set and not set, to the soundings";
}

bool takeList(std::string &list, const FieldValue &value) {
    const std::string &typed = std::get<std::string>(value);
    const bool accepted = readOrdinalList(typed).has_value();
    list = accepted ? typed : list;
    return accepted;
}

constexpr std::array CopyMarksControls = {
    ControlSpec{.id = CopyMarksControl::From, .label = "Marks to", .field = shownBy<fromText>()},
    ControlSpec{.id = CopyMarksControl::To,
                .kind = Text,
                .length = 64,
                .field = fieldTakenBy<takeList, &CopyMarksAnswers::to>("is no list of ordinals"),
                .name = "List of soundings",
                .width = 24},
    ControlSpec{.id = CopyMarksControl::ListHelp,
                .label = "Ordinals such as 1-5,9. A window gets the mark of the one at its time.",
                .look = StaticLook::Help},
    ContinueRow,
    CancelRow,
};

} // namespace

const DialogForm<CopyMarksAnswers> CopyMarksDialog = DialogSpec{
    .number = 123,
    .caption = "Copy marks to...",
    .defaultButton = ButtonContinue,
    .controls = CopyMarksControls,
    .place = DialogPlace::LowerRight,
    .firstControl = CopyMarksControl::To,
};

} // namespace keldrin
