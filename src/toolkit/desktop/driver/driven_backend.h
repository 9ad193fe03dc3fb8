#pragma once

#include "page/surfaces/tee_surface.h"
#include "toolkit/desktop/desktop_backend.h"
#include "toolkit/scripted/scripted_backend.h"

namespace keldrin {

/// A scripted run in the real window: the scenario decides and the transcript is written as without
/// a display, while every line is carried out on the real widgets and every page is shown.
///
/// Sizes that reach pages, and so the transcript, are those of the scenario's screen.
class DrivenBackend : public ScriptedBackend {
  public:
    DrivenBackend(Script script, std::ostream &transcript);

    /// Called at the end of stop(), when no window is left.
    std::function<void()> onStopped;

    void openRoot(const RootSpec &spec) override;
    int stop() override;
    void setTitle(std::string_view title) override;
    void setMenu(int command, bool on) override;
    void serveMenu(bool on) override;
    Surface &screen() override;
    void flush() override;

    void loadDialog(DialogModel &dialog) override;
    void showDialog(DialogModel &dialog, DialogPlacement placement) override;
    void hideDialog(DialogModel &dialog) override;
    void unloadDialog(DialogModel &dialog) override;
    void refresh(DialogModel &dialog, int id) override;
    void pointAtRow(DialogModel &dialog, int id) override;
    void rollPanel() override;
    void copyText(std::string_view text) override;

    void setStatus(StatusPart part, std::string_view text) override;
    void showMessages(const MessageRows &rows) override;
    void addMessage(const MessageRow &row) override;
    void setPointerText(const PointerText &text) override;
    std::unique_ptr<DocumentSurface> document(int driver) override;

  private:
    DesktopBackend desktop_;
    std::unique_ptr<TeeSurface> bothPages_; ///< of the window and of the transcript
};

} // namespace keldrin
