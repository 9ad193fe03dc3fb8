#include "toolkit/desktop/work_window.h"

#include "toolkit/desktop/dialog_window.h"
#include "toolkit/desktop/main_window.h"
#include "toolkit/long_work.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <algorithm>

namespace keldrin {

namespace {

ControlState *firstOfKind(DialogModel &dialog, ControlKind kind) {
    const auto found = std::find_if(dialog.controls.begin(), dialog.controls.end(),
                                    [=](const ControlState &c) { return c.kind == kind; });
    return found == dialog.controls.end() ? nullptr : &*found;
}

} // namespace

WorkWindow::WorkWindow(MainWindow &root, const WorkRequest &request)
    : root_(root), model_(std::make_unique<DialogModel>(makeWorkDialog(request))) {
    model_->mode = DialogModal; // its button ends it, and queues no event
    root_.serveMenu(false);
    sinceBegin_.start();
}

WorkWindow::~WorkWindow() {
    root_.serveMenu(true);
}

void WorkWindow::show() {
    shown_ = true;
    window_ = std::make_unique<DialogWindow>(*model_, &root_);
    window_->showAt({});
}

bool WorkWindow::step(double fraction) {
    constexpr qint64 noticed = 300; // msec
    if (!shown_ && sinceBegin_.elapsed() >= noticed) {
        show();
    }
    ControlState *bar = firstOfKind(*model_, ControlKind::Bar);
    if (shown_ && bar != nullptr) {
        putFraction(*bar, fraction);
        window_->refresh(bar->id);
    }
    QCoreApplication::processEvents();
    return model_->endButton == 0;
}

void WorkWindow::say(std::string_view text) {
    ControlState *words = firstOfKind(*model_, ControlKind::Static);
    if (words != nullptr && !closing_) {
        putText(*words, std::string(text));
        if (shown_) {
            window_->refresh(words->id);
        }
    }
}

void WorkWindow::closeAsked() {
    say("The program closes when this is done.");
    closing_ = true;
}

} // namespace keldrin
