#pragma once

#include "desktop/dialog_values.h"
#include "support/dialog_tables.h"
#include "toolkit/desktop/dialog_window.h"
#include "toolkit/desktop/page_area.h"
#include "toolkit/scripted/answering_backend.h"
#include "toolkit/toolkit_state.h"

#include <QMainWindow>
#include <QTest>

#include <memory>
#include <string>
#include <vector>

namespace keldrin::test {

/// A toolkit whose dialogs are real windows; everything else stands still.
class DialogBackend : public AnsweringBackend {
  public:
    DialogBackend() {
        root.setCentralWidget(new PageArea(new QWidget));
        root.resize(700, 500);
        root.show();
        ToolkitInit(*this, {"keldrin"});
        WindowOpen(ResizableWindow, -1, -1, 700, 500);
    }
    ~DialogBackend() override { ToolkitClose(); }

    void loadDialog(DialogModel &dialog) override {
        window = std::make_unique<DialogWindow>(dialog, &root);
        window->onAction = [this] {
            ++actions;
        };
    }
    void showDialog(DialogModel & /*dialog*/, DialogPlacement placement) override {
        window->showAt(placement);
        static_cast<void>(QTest::qWaitForWindowActive(window.get()));
    }
    void hideDialog(DialogModel & /*dialog*/) override { window->hide(); }
    void unloadDialog(DialogModel & /*dialog*/) override { window.reset(); }
    void refresh(DialogModel & /*dialog*/, int id) override { window->refresh(id); }

    /// Loads, fills and shows a dialog, with field-change events on.
    DialogModel &open(int number, int mode, int firstControl = 0) {
        WDialogLoad(dialogTable(number));
        fillDialog(*toolkitState().dialogs.back());
        ToolkitDialogOption(FieldChangeEvents, 1);
        if (mode == DialogModal) { // shown as such, but nobody waits for its end
            DialogModel &dialog = *toolkitState().dialogs.back();
            dialog.mode = DialogModal;
            toolkitState().shown.push_back(&dialog);
            showDialog(dialog, {});
        } else {
            WDialogShow(-1, -1, firstControl, mode);
        }
        return *topDialog();
    }

    /// The events that wait, as "type:value" each.
    static std::vector<std::string> events() {
        std::vector<std::string> told;
        ToolkitEvent event;
        while (ToolkitPeekEvent(event)) {
            told.push_back(std::to_string(event.type) + ":" + std::to_string(event.value));
        }
        return told;
    }

    QMainWindow root;
    std::unique_ptr<DialogWindow> window;
    int actions = 0; ///< how often onAction was called
};

using Events = std::vector<std::string>;

} // namespace keldrin::test
