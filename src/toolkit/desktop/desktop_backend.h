#pragma once

#include "toolkit/backend.h"
#include "toolkit/desktop/desktop_settings.h"

#include <QElapsedTimer>
#include <QPointF>
#include <QPointer>

#include <cmath>
#include <functional>
#include <map>
#include <memory>
#include <optional>

class QEventLoop;
class QMenu;

namespace keldrin {

class DialogWindow;
class MessageList;
class WorkWindow;
class MainWindow;

/// The toolkit of the desktop: a real window, real dialogs. What the user does is queued as events
/// or reported as edits; what it means is settled above the seam.
class DesktopBackend : public Backend {
  public:
    /// settings  where sizes and recent files are kept between runs; without memory nothing is
    explicit DesktopBackend(DesktopSettings settings);
    ~DesktopBackend() override;

    void start() override {}
    int stop() override;

    PixelSize screenSize() override;
    void openRoot(const RootSpec &spec) override;
    PixelRect rootRect() override;
    void setTitle(std::string_view title) override;
    void setMenu(int command, bool on) override;
    void serveMenu(bool on) override;
    Surface &screen() override;
    bool hasSurface() override;
    void flush() override;

    RawEvent wait() override;
    bool peek(RawEvent &event) override;

    void loadDialog(DialogModel &dialog) override;
    void showDialog(DialogModel &dialog, DialogPlacement placement) override;
    int runModal(DialogModel &dialog) override;
    void hideDialog(DialogModel &dialog) override;
    void unloadDialog(DialogModel &dialog) override;
    void refresh(DialogModel &dialog, int id) override;
    void pointAtRow(DialogModel &dialog, int id) override;
    void rollPanel() override;
    void copyText(std::string_view text) override;

    std::optional<std::string> chooseFile(const FileRequest &request) override;
    BoxResult messageBox(const BoxRequest &request) override;
    RunResult run(const std::vector<std::string> &command, const ChildWatch &watch) override;
    RubberEnd rubberBand(double pageX, double pageY) override;
    std::unique_ptr<Surface> printer(PrinterPage &page) override;

    void setStatus(StatusPart part, std::string_view text) override;
    void showMessages(const MessageRows &rows) override;
    void addMessage(const MessageRow &row) override;
    void addRecentFile(const std::string &path) override;
    void setPointerText(const PointerText &text) override;
    void beginWork(const WorkRequest &request) override;
    bool workStep(double fraction) override;
    void workWords(std::string_view words) override;
    void endWork() override;
    std::unique_ptr<DocumentSurface> document(int driver) override;

    void trace(std::string_view kind, std::string_view text) override;

    // For whoever drives the real widgets.
    MainWindow &window() { return *window_; }
    DialogWindow *dialogWindow(const DialogModel &dialog);
    /// Serves the window system until nothing is left to do.
    static void settle();
    /// The menu of the right button, which goes when it closes; null where the button is the
    /// page's.
    ///
    /// beside  asked for beside the page, where the button always opens it
    QMenu *makeContextMenu(bool beside);
    /// Ends the current wait when something was queued.
    void wake();
    /// Called each time the backend is about to wait for the user.
    std::function<void()> onIdle;
    /// Called at the end of stop(), when no window is left.
    std::function<void()> onStopped;
    /// Events of resizing are queued; a driver that reports them itself switches this off.
    bool reportsResize = true;

  private:
    void connectWindow();
    void waitForScreen();
    void waitUntil(const std::function<bool()> &done);
    void mouse(const RawEvent &event);
    void key(int code);
    void tellPointer();
    void addRecentFiles(QMenu &menu);
    void openDropped(const std::string &path);

    DesktopSettings settings_;
    std::unique_ptr<MainWindow> window_;
    std::map<const DialogModel *, std::unique_ptr<DialogWindow>> dialogs_;
    QEventLoop *waiting_ = nullptr; ///< the innermost loop that waits for the user
    QElapsedTimer sinceFlush_;

    std::optional<RubberEnd> bandEnd_;
    bool bandOn_ = false;
    int bandButton_ = 0;  ///< whose release ends the band
    int buttonDown_ = 0;  ///< pressed last
    int swallowedUp_ = 0; ///< a release that belongs to a band that has ended already

    QPointer<MessageList> messages_; ///< a child of the window that it is used beside
    bool recordOn_ = false;          ///< the status bar says so
    PointerText pointerText_;
    QPointF pointer_{std::nan(""), 0.0}; ///< the mouse on the page; NaN while it is elsewhere
    std::unique_ptr<WorkWindow> work_;   ///< null while there is no long work
    std::optional<std::string> dropped_; ///< answers the chooser of the command that the drop gave
};

} // namespace keldrin
