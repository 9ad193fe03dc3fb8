#include "toolkit/child_process.h"
#include "toolkit/desktop/desktop_backend.h"
#include "toolkit/desktop/dialog_window.h"
#include "toolkit/desktop/main_window.h"
#include "toolkit/desktop/work_window.h"
#include "toolkit/toolkit_state.h"

namespace keldrin {

void DesktopBackend::beginWork(const WorkRequest &request) {
    if (window_ != nullptr) {
        work_ = std::make_unique<WorkWindow>(*window_, request);
    }
}

bool DesktopBackend::workStep(double fraction) {
    return work_ == nullptr || work_->step(fraction);
}

void DesktopBackend::workWords(std::string_view words) {
    if (work_ != nullptr) {
        work_->say(words);
    }
}

void DesktopBackend::endWork() {
    work_.reset();
    if (topDialog() != nullptr) {
        window_->serveMenu(false); // the work was that of a dialog's loop
    }
}

RunResult DesktopBackend::run(const std::vector<std::string> &command, const ChildWatch &watch) {
    return runChild(command, programDirectory(ToolkitArgument(0)), watch);
}

} // namespace keldrin
