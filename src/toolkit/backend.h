#pragma once

#include "page/hardcopy.h"
#include "toolkit/toolkit.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

// The seam between the toolkit's operations and a window system. A backend shows things and reports
// what the user did; it knows no meaning. Limits, formats, exact values, menu states and the order
// of events are settled above it, so that every backend behaves alike.

class Surface;
class DocumentSurface;
struct DialogModel;

struct PixelSize {
    int width = 0;
    int height = 0;
};

struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// The root window to be opened; x or y of -1 lets the system place it.
struct RootSpec {
    int flags = 0; ///< 7 resizable with system menu, minimise and maximise
    int x = -1;
    int y = -1;
    int width = 0;
    int height = 0;
};

/// An event as the window system reports it.
struct RawEvent {
    int type = EventNone;
    int value = 0;
    int window = 0;     ///< 0 the root window, else a dialog's number
    double pageX = 0.0; ///< mouse position in fractions of the root window, y upward
    double pageY = 0.0;
    bool second = false; ///< press of a double click that follows another one
};

/// Pixel position of a dialog; -1, -1 is the toolkit's place.
struct DialogPlacement {
    int x = -1;
    int y = -1;
};

struct FileRequest {
    bool save = false;
    std::string title;
    std::string filter; ///< as the program gave it, see file_filter.h
    std::string path;   ///< where the chooser starts
};

struct BoxRequest {
    std::string title;
    std::vector<std::string> lines;
    int icon = 2;          ///< 2 error
    int defaultButton = 1; ///< 1 OK; Esc and the close box answer OK too
};

struct BoxResult {
    int button = 1;            ///< 0 Cancel, 1 OK
    bool quietFurther = false; ///< "Do not show further messages of this command" is marked
};

/// How a child process ended.
struct RunResult {
    int exitCode = 0;
    int toolkitError = 0;    ///< not 0: it did not run; ErrorCannotRun when the system refused
    int systemError = 0;     ///< the system's error code that came with it
    bool closeAsked = false; ///< the root window was asked to close meanwhile
    bool stopped = false;    ///< the user ended it
    int signal = 0;          ///< that ended it; 0 none
};

/// Who watches a child process while it runs; both on the caller's thread.
struct ChildWatch {
    /// Gets each line that the child writes to its console, as text (see console_lines.h).
    std::function<void(std::string_view)> line;
    /// Asked several times a second; false ends the child.
    std::function<bool()> goOn;
};

/// How a rubber band ended, and its second corner in fractions of the root window.
struct RubberEnd {
    int event = EventMouseUp; ///< EventMouseUp, EventKey, EventMouseDown or EventClose
    double pageX = 0.0;
    double pageY = 0.0;
};

/// Long work that the user watches and may stop.
struct WorkRequest {
    std::string words;                  ///< what is being done
    std::string caption = {};           ///< of the dialog; blank: its table's own
    const DialogSpec *dialog = nullptr; ///< shows it; null: ProgressDialog of long_work.h
};

/// The text for a mouse position in fractions of the root window; blank where there is none.
using PointerText = std::function<std::string(double pageX, double pageY)>;

class Backend {
  public:
    Backend() = default;
    Backend(const Backend &) = delete;
    Backend &operator=(const Backend &) = delete;
    virtual ~Backend() = default;

    virtual void start() = 0;
    /// Closes everything; the result is the exit code of the process.
    virtual int stop() = 0;

    virtual PixelSize screenSize() = 0;
    virtual void openRoot(const RootSpec &spec) = 0;
    virtual PixelRect rootRect() = 0;
    virtual void setTitle(std::string_view title) = 0;
    virtual void setMenu(int command, bool on) = 0; ///< enables or greys one entry
    virtual void serveMenu(bool on) = 0;            ///< puts the whole bar in or out of service
    virtual Surface &screen() = 0;                  ///< page of the root window
    virtual bool hasSurface() = 0;                  ///< false while there is nothing to draw on
    virtual void flush() = 0;                       ///< lets the window repaint

    /// Waits until the user did something. A type of EventNone says that edits or button presses
    /// were queued by user_edits.h instead.
    virtual RawEvent wait() = 0;
    virtual bool
    peek(RawEvent &event) = 0; ///< the same without waiting; false when nothing is there

    virtual void loadDialog(DialogModel &dialog) = 0; ///< makes it, hidden, and fills its size
    virtual void showDialog(DialogModel &dialog, DialogPlacement placement) = 0;
    /// Serves a shown dialog until a button ends it; the result is the button's id.
    virtual int runModal(DialogModel &dialog) = 0;
    virtual void hideDialog(DialogModel &dialog) = 0;
    virtual void unloadDialog(DialogModel &dialog) = 0;
    /// A control of a loaded dialog has another value or state now.
    virtual void refresh(DialogModel &dialog, int id) = 0;

    virtual std::optional<std::string> chooseFile(const FileRequest &request) = 0;
    virtual BoxResult messageBox(const BoxRequest &request) = 0;
    /// Runs a program with its arguments and waits for its end, see runChild(). The long work that
    /// the user watches and stops it by has begun.
    virtual RunResult run(const std::vector<std::string> &command, const ChildWatch &watch) = 0;
    /// Follows the mouse from a corner till something ends it.
    virtual RubberEnd rubberBand(double pageX, double pageY) = 0;
    /// Asks for a printer; null when the user declined.
    virtual std::unique_ptr<Surface> printer(PrinterPage &page) = 0;

    // What a backend without a user at a window can leave out.

    /// A table of a loaded dialog has another row to point at (ControlState::index).
    virtual void pointAtRow(DialogModel & /*dialog*/, int /*id*/) {}
    /// Rolls the panel beside the page up, or down again.
    virtual void rollPanel() {}
    /// A text for the clipboard.
    virtual void copyText(std::string_view /*text*/) {}
    /// Another text for a part of the status bar; blank clears it.
    virtual void setStatus(StatusPart /*part*/, std::string_view /*text*/) {}
    /// Shows messages in a list of its own, which stays, and returns at once.
    virtual void showMessages(const MessageRows & /*rows*/) {}
    /// A message for that list, where it is open.
    virtual void addMessage(const MessageRow & /*row*/) {}
    /// A file was opened or made; it goes to the head of the recent ones.
    virtual void addRecentFile(const std::string & /*path*/) {}
    /// Asked for the text of the pointer's part whenever the mouse moves; empty asks no more.
    virtual void setPointerText(const PointerText & /*text*/) {}
    /// Long work begins; makeWorkDialog() gives its dialog, to be shown once the work has taken a
    /// while. Until endWork() the program draws, runs a child and asks for nothing else.
    virtual void beginWork(const WorkRequest & /*request*/) {}
    /// Shows how far the work is and serves what cannot wait: repaints, the dialog's button, the
    /// close box (userAsksToClose()); all else that the user does is dropped. Comes at most about
    /// 30 times a second. Below 0 the end is not known. False once the user stops the work, after
    /// which some more steps may come.
    virtual bool workStep(double /*fraction*/) { return true; }
    /// What the shown work says of itself now.
    virtual void workWords(std::string_view /*words*/) {}
    virtual void endWork() {}
    /// The page of a plot file that needs the window system's help; null: there is none.
    virtual std::unique_ptr<DocumentSurface> document(int driver);

    virtual void trace(std::string_view kind, std::string_view text) = 0;
};

} // namespace keldrin
