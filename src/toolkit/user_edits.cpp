#include "toolkit/user_edits.h"

#include "toolkit/toolkit_state.h"

namespace keldrin {

namespace {

// value  as a scenario enters it
void reportChange(const DialogModel &dialog, int id, std::string_view value) {
    const bool waiting = dialog.mode != DialogModal && toolkitState().fieldChangeEvents;
    if (toolkitState().record != nullptr) {
        toolkitState().record->entered(dialog, id, value, waiting);
    }
    if (dialog.mode == DialogModal) {
        if (dialog.changed) {
            dialog.changed(id);
        }
    } else if (toolkitState().fieldChangeEvents) {
        queueEvent({EventFieldChange, id, dialog.number, 0.0, 0.0});
    }
}

void commitControl(DialogModel &dialog, ControlState &control) {
    if (!control.typed) {
        return;
    }
    const std::string typed = *control.typed;
    const bool changed = commitTyped(control);
    if (control.text != typed && toolkitState().backend != nullptr) {
        toolkitState().backend->refresh(dialog, control.id);
    }
    if (changed) {
        reportChange(dialog, control.id, typed);
    }
}

void dropTyped(DialogModel &dialog, ControlState &control) {
    if (control.typed) {
        control.typed.reset();
        if (toolkitState().backend != nullptr) {
            toolkitState().backend->refresh(dialog, control.id);
        }
    }
}

// The focus has left it.
void leaveControl(DialogModel &dialog, ControlState &control) {
    if (control.byEnter) {
        dropTyped(dialog, control);
    } else {
        commitControl(dialog, control);
    }
}

void leaveAll(DialogModel &dialog) {
    for (ControlState &control : dialog.controls) {
        leaveControl(dialog, control);
    }
}

} // namespace

void typeText(DialogModel &dialog, int id, std::string_view text) {
    for (ControlState &control : dialog.controls) {
        if (control.id == id) {
            control.typed = text;
        } else {
            leaveControl(dialog, control);
        }
    }
}

void commitField(DialogModel &dialog, int id) {
    if (ControlState *control = findControl(dialog, id)) {
        commitControl(dialog, *control);
    }
}

void userLeaves(DialogModel &dialog, int id) {
    if (ControlState *control = findControl(dialog, id)) {
        leaveControl(dialog, *control);
    }
}

void userChooses(DialogModel &dialog, int id, int index) {
    leaveAll(dialog);
    ControlState *control = findControl(dialog, id);
    if (control != nullptr && chooseEntry(*control, index)) {
        reportChange(dialog, id, "#" + std::to_string(index));
    }
}

void userChecks(DialogModel &dialog, int id, bool on) {
    leaveAll(dialog);
    ControlState *control = findControl(dialog, id);
    if (control != nullptr && setCheck(*control, on)) {
        reportChange(dialog, id, on ? "on" : "off");
    }
}

void userMoves(DialogModel &dialog, int id, int position) {
    leaveAll(dialog);
    ControlState *control = findControl(dialog, id);
    if (control != nullptr && moveTrackbar(*control, position)) {
        reportChange(dialog, id, std::to_string(position));
    }
}

void userSelectsRows(DialogModel &dialog, int id, const TableRows &rows) {
    leaveAll(dialog);
    ControlState *control = findControl(dialog, id);
    if (control != nullptr && selectRows(*control, rows)) {
        reportChange(dialog, id, rows.empty() ? "none" : rowsText(rows));
    }
}

bool userPresses(DialogModel &dialog, int id) {
    const ControlState *button = findControl(dialog, id);
    if (button == nullptr || button->kind != ControlKind::Button || !button->enabled) {
        return false;
    }
    leaveAll(dialog);
    if (opensList(dialog, id)) {
        return true;
    }
    if (dialog.mode == DialogModal) {
        if (toolkitState().record != nullptr) {
            toolkitState().record->pressed(dialog, id);
        }
        dialog.endButton = id;
    } else {
        queueEvent({EventButton, id, dialog.number, 0.0, 0.0});
    }
    return true;
}

bool userCloses(DialogModel &dialog) {
    const DialogSpec *spec = dialog.spec;
    const bool stays = spec != nullptr && spec->inRoot && spec->place != DialogPlace::Beside;
    return stays || userPresses(dialog, closeButtonOf(dialog));
}

void userAsksToClose() {
    toolkitState().closeRemembered = true;
}

} // namespace keldrin
