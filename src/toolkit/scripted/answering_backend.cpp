#include "toolkit/scripted/answering_backend.h"

#include "toolkit/scripted/typed_entry.h"
#include "toolkit/toolkit_state.h"
#include "toolkit/user_edits.h"

#include <cerrno>

namespace keldrin {

bool AnsweringBackend::edit(int id, std::string_view text) {
    DialogModel *dialog = topDialog();
    if (dialog == nullptr || !takesEntry(*dialog, id, text)) {
        return false;
    }
    enterValue(*dialog, id, text);
    return true;
}

void AnsweringBackend::showDialog(DialogModel &dialog, DialogPlacement /*placement*/) {
    prepared_.erase(dialog.number);
}

void AnsweringBackend::prepare(DialogModel &dialog) {
    if (prepared_.insert(dialog.number).second) {
        button_ = 0;
        if (beforeAnswer) {
            beforeAnswer(*this, dialog.number);
        }
    }
}

void AnsweringBackend::answer(DialogModel &dialog) {
    const bool instead = button_ != 0 && userPresses(dialog, button_);
    const bool byDefault =
        !instead && dialog.defaultButton != 0 && userPresses(dialog, dialog.defaultButton);
    if (!instead && !byDefault && !userPresses(dialog, closeButtonOf(dialog))) {
        dialog.endButton = closeButtonOf(dialog); // a dialog without a usable button
    }
}

RawEvent AnsweringBackend::wait() {
    DialogModel *dialog = topDialog();
    if (dialog == nullptr) {
        return {EventClose, 0, 0, 0.0, 0.0};
    }
    prepare(*dialog);
    if (toolkitState().queue.empty()) { // else the edits are served first
        answer(*dialog);
    }
    const bool served = !toolkitState().queue.empty();
    return served ? RawEvent{} : RawEvent{EventClose, 0, 0, 0.0, 0.0};
}

int AnsweringBackend::runModal(DialogModel &dialog) {
    prepare(dialog);
    answer(dialog);
    return dialog.endButton;
}

std::optional<std::string> AnsweringBackend::chooseFile(const FileRequest & /*request*/) {
    return std::nullopt;
}

BoxResult AnsweringBackend::messageBox(const BoxRequest & /*request*/) {
    return {};
}

RunResult AnsweringBackend::run(const std::vector<std::string> & /*command*/,
                                const ChildWatch & /*watch*/) {
    RunResult result;
    result.toolkitError = ErrorCannotRun;
    result.systemError = ENOENT;
    return result;
}

RubberEnd AnsweringBackend::rubberBand(double pageX, double pageY) {
    return {EventMouseUp, pageX, pageY};
}

std::unique_ptr<Surface> AnsweringBackend::printer(PrinterPage & /*page*/) {
    return nullptr;
}

} // namespace keldrin
