#include "toolkit/toolkit.h"

#include "toolkit/long_work.h"
#include "toolkit/toolkit_state.h"

#include <algorithm>
#include <utility>

namespace keldrin {

namespace {

bool isShown(const DialogModel *dialog) {
    const std::vector<DialogModel *> &shown = toolkitState().shown;
    return std::find(shown.begin(), shown.end(), dialog) != shown.end();
}

void hide(DialogModel *dialog) {
    ToolkitState &state = toolkitState();
    if (!isShown(dialog)) {
        return;
    }
    state.shown.erase(std::remove(state.shown.begin(), state.shown.end(), dialog),
                      state.shown.end());
    if (state.backend != nullptr) {
        state.backend->hideDialog(*dialog);
        if (state.shown.empty()) {
            state.backend->serveMenu(true);
        }
    }
    dialog->mode = 0;
}

// Events of a dialog that is gone would be taken for those of another one.
void dropEventsOf(int number) {
    std::deque<RawEvent> &queue = toolkitState().queue;
    queue.erase(std::remove_if(queue.begin(), queue.end(),
                               [=](const RawEvent &e) { return e.window == number; }),
                queue.end());
}

void unload(DialogModel *dialog) {
    ToolkitState &state = toolkitState();
    hide(dialog);
    dropEventsOf(dialog->number);
    if (state.backend != nullptr) {
        state.backend->unloadDialog(*dialog);
    }
    state.dialogs.erase(std::find_if(state.dialogs.begin(), state.dialogs.end(),
                                     [=](const auto &d) { return d.get() == dialog; }));
}

void show(DialogModel &dialog, DialogPlacement placement, int mode) {
    ToolkitState &state = toolkitState();
    dialog.mode = mode;
    dialog.endButton = 0;
    state.shown.push_back(&dialog);
    if (state.backend != nullptr) {
        state.backend->serveMenu(false);
        state.backend->showDialog(dialog, placement);
    }
}

void serveModal(DialogModel &dialog) {
    ToolkitState &state = toolkitState();
    state.lastButton =
        state.backend != nullptr ? state.backend->runModal(dialog) : dialog.defaultButton;
    hide(&dialog);
}

} // namespace

DialogModel *findLoaded(int number) {
    for (const auto &dialog : toolkitState().dialogs) {
        if (dialog->number == number) {
            return dialog.get();
        }
    }
    return nullptr;
}

DialogModel *selectedDialog() {
    DialogModel *dialog = findLoaded(toolkitState().selected);
    if (dialog == nullptr) {
        ToolkitSetError(ErrorNoDialogSelected);
    }
    return dialog;
}

void WDialogLoad(const DialogSpec &spec) {
    ToolkitState &state = toolkitState();
    if (DialogModel *loaded = findLoaded(spec.number)) {
        unload(loaded);
    }
    state.dialogs.push_back(std::make_unique<DialogModel>(makeDialog(spec)));
    state.selected = spec.number;
    if (state.backend != nullptr) {
        state.backend->loadDialog(*state.dialogs.back());
    }
}

void WDialogSelect(int number) {
    if (findLoaded(number) == nullptr) {
        ToolkitSetError(ErrorNoSuchDialog);
        return;
    }
    toolkitState().selected = number;
}

void WDialogShow(int x, int y, int control, int mode) {
    DialogModel *dialog = selectedDialog();
    if (dialog == nullptr) {
        return;
    }
    if (isShown(dialog)) {
        hide(dialog);
    }
    const ControlState *first = findControl(*dialog, control);
    dialog->firstControl = first != nullptr ? control : 0;
    if (first != nullptr && first->kind == ControlKind::Button) {
        dialog->defaultButton = control;
    }
    if (mode == DialogModal) {
        const WorkPause pause;
        show(*dialog, {x, y}, mode);
        serveModal(*dialog);
    } else {
        show(*dialog, {x, y}, mode);
    }
}

void WDialogUnload(int /*option*/) {
    if (DialogModel *dialog = selectedDialog()) {
        unload(dialog);
        toolkitState().selected = 0;
    }
}

void WDialogWatch(std::function<void(int id)> changed) {
    if (DialogModel *dialog = selectedDialog()) {
        dialog->changed = std::move(changed);
    }
}

void WDialogTitle(std::string_view caption) {
    DialogModel *dialog = selectedDialog();
    if (dialog == nullptr || dialog->caption == caption) {
        return;
    }
    dialog->caption = caption;
    if (toolkitState().backend != nullptr) {
        toolkitState().backend->refresh(*dialog, 0);
    }
}

int ToolkitDialogInfo(int item) {
    const ToolkitState &state = toolkitState();
    const DialogModel *dialog = findLoaded(state.selected);
    const PixelSize size = dialog != nullptr ? dialog->size : PixelSize{};
    switch (item) {
    case DialogEndButton:
        return state.lastButton;
    case DialogSelected:
        return state.selected;
    case CommonDialogOk:
        return state.lastCommonOk ? 1 : 0;
    case DialogWidth:
        return size.width;
    case DialogHeight:
        return size.height;
    default:
        return 0;
    }
}

} // namespace keldrin
