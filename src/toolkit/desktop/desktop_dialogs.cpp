#include "toolkit/desktop/common_dialogs.h"
#include "toolkit/desktop/desktop_backend.h"
#include "toolkit/desktop/dialog_window.h"
#include "toolkit/desktop/main_window.h"
#include "toolkit/desktop/printing.h"
#include "toolkit/desktop/widgets/message_list.h"
#include "toolkit/desktop/widgets/qt_text.h"
#include "toolkit/dialog_model.h"
#include "toolkit/toolkit_state.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QMenu>
#include <utility>

namespace keldrin {

DialogWindow *DesktopBackend::dialogWindow(const DialogModel &dialog) {
    const auto found = dialogs_.find(&dialog);
    return found == dialogs_.end() ? nullptr : found->second.get();
}

// ---- The program's dialogs

void DesktopBackend::loadDialog(DialogModel &dialog) {
    auto made = std::make_unique<DialogWindow>(dialog, window_.get());
    made->onAction = [this] {
        wake();
    };
    dialogs_[&dialog] = std::move(made);
}

void DesktopBackend::showDialog(DialogModel &dialog, DialogPlacement placement) {
    DialogWindow *shown = dialogWindow(dialog);
    shown->setModal(dialog.mode == DialogModal);
    if (dialog.mode == DialogModeless) {
        shown->keyHook = [this](int code) {
            key(code);
        };
        shown->setContextMenuPolicy(Qt::CustomContextMenu);
        QObject::connect(shown, &QWidget::customContextMenuRequested, shown,
                         [this, shown](QPoint place) {
                             if (QMenu *menu = makeContextMenu(true)) {
                                 menu->popup(shown->mapToGlobal(place));
                             }
                         });
    }
    if (shown->isPanel()) {
        shown->setPanelState(settings_.panel(dialog.number));
        shown->onPanelChange = [this, number = dialog.number](const PanelState &state) {
            settings_.keepPanel(number, state);
        };
    }
    shown->showAt(placement);
    if (dialog.mode == DialogModal && messages_ != nullptr && messages_->isVisible()) {
        messages_->moveTo(shown); // where it can still be used
    }
}

int DesktopBackend::runModal(DialogModel &dialog) {
    waitUntil([&dialog] { return dialog.endButton != 0; });
    return dialog.endButton;
}

void DesktopBackend::hideDialog(DialogModel &dialog) {
    DialogWindow *shown = dialogWindow(dialog);
    shown->hide();
    if (messages_ != nullptr && messages_->parentWidget() == shown) {
        const bool listed = !messages_->isHidden();
        messages_->moveTo(window_.get());
        messages_->setVisible(listed);
    }
    window_->activateWindow();
}

void DesktopBackend::unloadDialog(DialogModel &dialog) {
    dialogs_.erase(&dialog);
}

void DesktopBackend::refresh(DialogModel &dialog, int id) {
    dialogWindow(dialog)->refresh(id);
}

void DesktopBackend::pointAtRow(DialogModel &dialog, int id) {
    dialogWindow(dialog)->refresh(id);
}

void DesktopBackend::rollPanel() {
    for (const auto &[dialog, window] : dialogs_) {
        if (window->isVisible()) {
            window->rollPanel();
        }
    }
}

void DesktopBackend::copyText(std::string_view text) {
    QGuiApplication::clipboard()->setText(qtText(text));
}

// ---- The system's dialogs

std::optional<std::string> DesktopBackend::chooseFile(const FileRequest &request) {
    std::optional<std::string> path;
    if (!request.save && dropped_) {
        path.swap(dropped_);
    } else {
        QFileDialog chooser(window_.get());
        prepareChooser(chooser, request, settings_);
        if (chooser.exec() == QDialog::Accepted && !chooser.selectedFiles().isEmpty()) {
            path = plainText(chooser.selectedFiles().front());
            settings_.keepLastDirectory(chooser.directory().absolutePath());
        }
    }
    return path;
}

BoxResult DesktopBackend::messageBox(const BoxRequest &request) {
    QMessageBox box(window_.get());
    prepareBox(box, request);
    box.exec();
    return answerOf(box);
}

std::unique_ptr<Surface> DesktopBackend::printer(PrinterPage &page) {
    return choosePrinter(window_.get(), page);
}

} // namespace keldrin
