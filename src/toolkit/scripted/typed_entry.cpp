#include "toolkit/scripted/typed_entry.h"

#include "base/ascii.h"
#include "base/index.h"
#include "toolkit/menu.h"
#include "toolkit/scripted/script_words.h"
#include "toolkit/user_edits.h"

namespace keldrin {

namespace {

int entryOf(const ControlState &control, std::string_view value) {
    const int count = static_cast<int>(control.entries.size());
    int index = 0;
    if (value.substr(0, 1) == "#" && readScriptInteger(value.substr(1), index)) {
        return index >= 1 && index <= count ? index : 0;
    }
    for (int i = 0; i < count; ++i) {
        if (trimBlanks(control.entries[asIndex(i)]) == trimBlanks(value)) {
            return i + 1;
        }
    }
    return 0;
}

std::optional<TableRows> namedRows(const ControlState &control, std::string_view value) {
    return rowsNamed(trimBlanks(value), static_cast<int>(control.table.rows.size()));
}

} // namespace

bool takesEntry(DialogModel &dialog, int id, std::string_view value) {
    const ControlState *control = findControl(dialog, id);
    if (control == nullptr || !control->enabled) {
        return false;
    }
    int number = 0;
    switch (control->kind) {
    case ControlKind::Check:
        return value == "on" || value == "off";
    case ControlKind::List:
        return entryOf(*control, value) != 0;
    case ControlKind::Trackbar:
        return readScriptInteger(value, number);
    case ControlKind::Grid:
        return namedRows(*control, value).has_value();
    default:
        return control->kind == ControlKind::Text || isNumberField(control->kind);
    }
}

void enterValue(DialogModel &dialog, int id, std::string_view value) {
    const ControlState *control = findControl(dialog, id);
    if (control == nullptr) {
        return;
    }
    int number = 0;
    switch (control->kind) {
    case ControlKind::Check:
        userChecks(dialog, id, value == "on");
        break;
    case ControlKind::List:
        userChooses(dialog, id, entryOf(*control, value));
        break;
    case ControlKind::Trackbar:
        readScriptInteger(value, number);
        userMoves(dialog, id, number);
        break;
    case ControlKind::Grid:
        userSelectsRows(dialog, id, namedRows(*control, value).value_or(TableRows{}));
        break;
    default:
        typeText(dialog, id, value);
        commitField(dialog, id);
    }
}

int chosenEntry(DialogModel &dialog, int id, std::string_view value) {
    const ControlState *control = findControl(dialog, id);
    return control != nullptr ? entryOf(*control, value) : 0;
}

bool isEnabledButton(DialogModel &dialog, int id) {
    const ControlState *control = findControl(dialog, id);
    return control != nullptr && control->kind == ControlKind::Button && control->enabled;
}

int findButton(DialogModel &dialog, std::string_view idOrCaption) {
    int id = 0;
    if (readScriptInteger(idOrCaption, id)) {
        return isEnabledButton(dialog, id) ? id : 0;
    }
    const std::string caption = withoutMnemonic(idOrCaption);
    for (const ControlState &control : dialog.controls) {
        if (control.kind == ControlKind::Button && control.enabled &&
            withoutMnemonic(control.label) == caption) {
            return control.id;
        }
    }
    return 0;
}

} // namespace keldrin
