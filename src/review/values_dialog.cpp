#include "review/values_dialog.h"

#include <array>

namespace keldrin {

namespace {

constexpr ControlSpec button(int id, std::string_view label) {
    return {.id = id,
            .kind = ControlKind::Button,
            .label = label,
            .sameRow = id != ValuesControl::Mark};
}

std::string soundingText(const ValuesShown &shown) {
    return shown.sounding;
}

constexpr std::array ValuesControls = {
    ControlSpec{.id = ValuesControl::Sounding, .field = shownBy<soundingText>()},
    ControlSpec{.id = ValuesControl::Table,
                .kind = ControlKind::Grid,
                .label = "Windows",
                .field = fieldOf<&ValuesShown::rows>(),
                .table = givenBy<&ValuesShown::table>(),
                .rows = 24},
    button(ValuesControl::Mark, "&Set skip flags"),
    button(ValuesControl::Clear, "&Clear"),
    button(ValuesControl::Copy, "Cop&y"),
    button(ValuesControl::Close, "Cl&ose"),
};

} // namespace

const DialogForm<ValuesShown> ValuesDialog = DialogSpec{
    .number = 150,
    .caption = "Values of the windows",
    .defaultButton = ValuesControl::Close,
    .controls = ValuesControls,
    .inRoot = true,
    .place = DialogPlace::Beside,
};

} // namespace keldrin
