#pragma once

#include "toolkit/scripted/headless_backend.h"

#include <functional>
#include <set>
#include <string_view>

namespace keldrin {

/// A toolkit without a user: dialogs are answered by their default button, boxes by OK, choosers
/// and printers are declined, and no program is started. Where the program would wait for an event
/// with no dialog open it gets a close request.
class AnsweringBackend : public HeadlessBackend {
  public:
    /// Called with a dialog's number once before it is answered; it may edit fields like a user.
    std::function<void(AnsweringBackend &, int)> beforeAnswer;

    /// Enters a value in the dialog on top, given as text: what is typed, "on" or "off", "#INDEX"
    /// or an entry. False when the control is not there, is disabled or does not take it.
    bool edit(int id, std::string_view text);

    /// From within beforeAnswer: answers this dialog by another button than its default one.
    void pressInstead(int button) { button_ = button; }

    RawEvent wait() override;
    void showDialog(DialogModel &dialog, DialogPlacement placement) override;
    int runModal(DialogModel &dialog) override;
    std::optional<std::string> chooseFile(const FileRequest &request) override;
    BoxResult messageBox(const BoxRequest &request) override;
    RunResult run(const std::vector<std::string> &command, const ChildWatch &watch) override;
    RubberEnd rubberBand(double pageX, double pageY) override;
    std::unique_ptr<Surface> printer(PrinterPage &page) override;

  private:
    void prepare(DialogModel &dialog);
    void answer(DialogModel &dialog);

    std::set<int> prepared_; ///< dialogs that beforeAnswer has seen since they were shown
    int button_ = 0;         ///< in place of the default one
};

} // namespace keldrin
