#include "toolkit/long_work.h"

#include "toolkit/control_ids.h"
#include "toolkit/dialog_spec.h"
#include "toolkit/toolkit_state.h"

#include <utility>

namespace keldrin {

namespace {

void showWork(ToolkitState &state) {
    state.backend->serveMenu(false);
    state.backend->beginWork(state.work.request);
}

void hideWork(ToolkitState &state) {
    state.backend->endWork();
    state.backend->serveMenu(state.shown.empty());
}

bool isShown(const ToolkitState &state) {
    return state.backend != nullptr && state.work.depth > 0 && state.work.pauses == 0;
}

// True while the current work may go on. The clock decides what is shown, never what is computed.
bool stepWork(double done, double total) {
    ToolkitState &state = toolkitState();
    WorkState &work = state.work;
    if (!isShown(state)) {
        return !work.stopped;
    }
    const auto now = std::chrono::steady_clock::now();
    if (!work.lastStep || now - *work.lastStep >= state.stepPause) {
        work.lastStep = now;
        const bool goOn = state.backend->workStep(total > 0.0 ? done / total : -1.0);
        work.stopped = work.stopped || !goOn;
    }
    return !work.stopped;
}

} // namespace

LongWork::LongWork(WorkRequest request) {
    ToolkitState &state = toolkitState();
    if (state.work.depth++ == 0 && state.backend != nullptr) {
        state.work.request = std::move(request);
        showWork(state);
    }
}

LongWork::~LongWork() {
    ToolkitState &state = toolkitState();
    if (state.work.depth == 0 || --state.work.depth > 0) {
        return; // the toolkit was closed meanwhile, or this was part of other work
    }
    if (state.backend != nullptr) {
        hideWork(state);
    }
    state.work = WorkState{};
}

bool LongWork::step(double done, double total) {
    stopped_ = !stepWork(done, total);
    return !stopped_;
}

void LongWork::say(std::string_view words) {
    ToolkitState &state = toolkitState();
    state.work.request.words = words; // so that they stand there again after a pause
    if (isShown(state)) {
        state.backend->workWords(words);
    }
}

WorkPause::WorkPause() {
    ToolkitState &state = toolkitState();
    if (isShown(state)) {
        hideWork(state);
    }
    ++state.work.pauses;
}

WorkPause::~WorkPause() {
    ToolkitState &state = toolkitState();
    if (state.work.pauses > 0 && --state.work.pauses == 0 && isShown(state)) {
        showWork(state);
    }
}

DialogModel makeWorkDialog(const WorkRequest &request) {
    DialogModel dialog = makeDialog(request.dialog != nullptr ? *request.dialog : ProgressDialog);
    dialog.mode = DialogModal; // its button queues no event
    if (!request.caption.empty()) {
        dialog.caption = request.caption;
    }
    if (ControlState *words = findControl(dialog, WorkWords)) {
        putText(*words, request.words);
    }
    return dialog;
}

} // namespace keldrin
