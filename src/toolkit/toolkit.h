#pragma once

#include "toolkit/message_rows.h"

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

// What the program's logic asks of windows, dialogs, files and child processes. Everything here is
// synchronous and on the main thread. No call reports failure by a result: a failing call leaves
// an error state, which ToolkitErrorState() reads and clears.
//
// All meaning lives above the seam (see backend.h): numbers are formatted, limited and read back
// here, so that the headless and the desktop toolkit behave alike. Without a backend every call is
// harmless: boxes answer OK, choosers are declined, and nothing is drawn.
//
// Drawing calls stand in page/drawing.h, axis plots in page/plot.h.

class Backend;
struct DialogSpec;
struct TableContent;

enum ToolkitEventType : int {
    EventNone = 0,
    EventKey = 1,       ///< value: character, or key code above 255
    EventMenu = 2,      ///< value: command number
    EventButton = 3,    ///< value: control id of a dialog's button
    EventMouseDown = 4, ///< value: a MouseButton
    EventMouseUp = 5,
    EventMouseMove = 6, ///< never delivered to the logic
    EventExposure = 7,
    EventResize = 8,
    EventClose = 9,        ///< window: 0 the root window
    EventFieldChange = 10, ///< value: control id; only while switched on
};

struct ToolkitEvent {
    int type = EventNone;
    int value = 0;
    int window = 0; ///< 0 the root window, else the dialog's number
    float x = 0.0F; ///< mouse position in the drawing units in force when the event was fetched
    float y = 0.0F;
    bool second = false; ///< the second press of a double click, which is a press like any
};

enum ToolkitKey : int {
    KeyBackspace = 8,
    KeyEnter = 13,
    KeyEscape = 27,
    KeyUp = 258,
    KeyDown = 259,
    KeyRight = 260,
    KeyLeft = 261,
    KeyHome = 262,
    KeyEnd = 263,
    KeyPageUp = 264,
    KeyPageDown = 265,
    KeyDelete = 266,
    KeyF1 = 267,
    KeyF2 = 268,           ///< never delivered: it shows log and messages
    KeyF3 = 269,           ///< never delivered: it rolls the panel up or down again
    KeyWithCtrl = 0x10000, ///< added to a code; letters are then upper case
    KeyWithShift = 0x20000,
};

// ---- Start and end

/// Starts the toolkit on a backend, which must outlive it.
/// arguments  the command line; [0] is the program's own path
void ToolkitInit(Backend &backend, std::vector<std::string> arguments);

/// Ends the toolkit and closes the root window. Returns the exit code that the backend asks for.
int ToolkitClose();

inline constexpr int ResizableWindow = 7; ///< with system menu, minimise and maximise

/// Opens the root window with the program's menu.
/// flags  ResizableWindow;  x, y  -1 lets the system place it
void WindowOpen(int flags, int x, int y, int width, int height);
void WindowTitle(std::string_view title); ///< of the root window

enum ScreenItem : int { ScreenWidth = 1, ScreenHeight = 2 };
enum WindowItem : int { WindowWidth = 1, WindowHeight = 2, WindowX = 5, WindowY = 6 };
enum DialogItem : int {
    DialogEndButton = 1, ///< that ended the last blocking dialog
    DialogSelected = 2,  ///< number of the selected dialog, 0 none
    CommonDialogOk = 4,  ///< not 0 when the last file chooser or printer dialog ended with OK
    DialogWidth = 8,     ///< of the selected dialog
    DialogHeight = 9,
};

int ToolkitScreenInfo(int item); ///< of a ScreenItem, in pixels
int ToolkitWindowInfo(int item); ///< of the root window, by WindowItem, in pixels
int ToolkitDialogInfo(int item); ///< by DialogItem

/// True when there is a root window, not minimised, that can be drawn on.
bool ToolkitHasSurface();

/// The parts of the status bar beside the hints of the menu.
enum class StatusPart {
    Notice,   ///< what the user has to know of the last thing that was done
    Program,  ///< what the program found at its start
    Sounding, ///< what the user has to know of the sounding on show
    Marks,    ///< changes that are not saved
    Pointer,  ///< what lies under the mouse
    Warnings, ///< how many the last command gave; a click shows log and messages
    Record,   ///< that what the user does is recorded
};

/// A text in the status bar, which stands until the part gets another one; blank clears it.
void ToolkitStatus(StatusPart part, std::string_view text);

/// Shows a notice in the status bar, after those the user has not yet seen: all since the program
/// last waited for an event.
void ToolkitNotice(std::string_view text);

/// Gives the pointer's part of the status bar the text for every position of the mouse, in the
/// units in force, until it is set again. An empty function ends that and clears the part.
void ToolkitPointerText(std::function<std::string(float x, float y)> text);

/// Names who gives log and messages, the oldest first, when the user asks for them.
void ToolkitMessagesSource(MessageRows (*rows)());

/// Shows log and messages in a list of their own, beside whatever is on show. It stays open, and
/// what is reported from then on is added to it.
void ToolkitShowMessages();

/// Adds a reported message to the list when it is open.
void ToolkitAddMessage(const MessageRow &row);

/// Puts a file at the head of the list of files opened lately.
void ToolkitRecentFile(const std::string &path);

/// An entry of the menu that the right button opens: it stands for a key.
struct ContextEntry {
    std::string_view label;
    std::string_view keyName; ///< shown beside it
    int key = 0;
};

/// Gives the context menu of the page on show other entries, which stand above the files opened
/// lately. Those of the span must outlive their use.
void ToolkitContextMenu(std::span<const ContextEntry> entries);

inline constexpr int MenuEntryEnabled = 1; ///< the state of an entry that can be set

/// Enables (value 1) or greys (0) a menu command.
/// item  always MenuEntryEnabled, as documented
void WMenuSetState(int command, int item, int value);

// ---- Events

/// The status of a flow that ended because the root window was closed. This one or a higher one
/// leaves the program.
inline constexpr int StatusWindowClosed = 3;

/// Blocks until the next event.
void ToolkitNextEvent(ToolkitEvent &event);

/// Takes the next event if there is one, without waiting.
bool ToolkitPeekEvent(ToolkitEvent &event);

/// Puts an event in front of the queue, for the caller's caller.
void ToolkitPutBack(const ToolkitEvent &event);

/// Drops the second press of a double click when it comes next: what the first one opened must not
/// get it.
void ToolkitDropSecondPress();

/// A press while one of these keys is held has KeyWithCtrl, else KeyWithShift, added.
enum MouseButton : int {
    MouseLeft = 1,
    MouseMiddle = 2,
    MouseRight = 3,
    WheelUp = 4,
    WheelDown = 5,
};

/// The code of a key, of a small letter that of its capital.
int capitalKey(int code);

/// The button of a press without the key that was held.
inline int plainButton(int button) {
    return button & ~(KeyWithCtrl | KeyWithShift);
}

inline constexpr int RubberRectangle = 3; ///< a mode of WGrInput

/// Rubber-band rectangle from a corner, following the mouse. In: the corner in user
/// units; out: the opposite one, and the type of the event that ended it: EventMouseUp,
/// EventMouseDown of another button, EventKey or EventClose, the last of which is put back.
void WGrInput(int mode, float &x, float &y, int &event);

inline constexpr int FieldChangeEvents = 10; ///< an option of dialogs: 1 sends them, 0 stops them

void ToolkitDialogOption(int option, int value);

/// Lets the window repaint during long work.
void ToolkitFlush();

/// A fact for the transcript of a scripted run; nothing on the desktop.
void ToolkitTrace(std::string_view kind, std::string_view text);

// ---- Dialogs: a dialog is a table with a number (dialog_spec.h); calls act on the selected one.
// Flows show their records in them through dialog_form.h.

/// Loads a dialog, hidden, and selects it. Its table must outlive it.
void WDialogLoad(const DialogSpec &dialog);
/// Selects a loaded dialog by its number; what follows acts on it. ErrorNoSuchDialog without one.
void WDialogSelect(int dialog);

enum DialogMode : int {
    DialogModal = 1,         ///< blocks until a button ends it
    DialogModeless = 2,      ///< does not block; the root window serves keys and mouse
    DialogModelessAlone = 3, ///< does not block; the root window takes only its close request
};

/// Shows the selected dialog at a pixel position (-1, -1: the toolkit's place).
/// control  the first control and, if it is a button, the default one; 0 the table's own
void WDialogShow(int x, int y, int control, int mode);
void WDialogUnload(int option = 0);           ///< option: as documented, of no effect
void WDialogTitle(std::string_view caption);  ///< as documented; no flow changes a caption
void WDialogFieldState(int id, bool enabled); ///< greys a control or gives it back
bool WDialogIsEnabled(int id);

/// Calls `changed` with a control's id after each change that the user makes in the selected dialog
/// while it blocks; one that does not block sends events instead.
void WDialogWatch(std::function<void(int id)> changed);

// A put with an id that the selected dialog has not leaves ErrorNoSuchControl, one into a control
// of another kind ErrorWrongKind. The limits of what the user types do not hold here.
void WDialogPutString(int id, std::string_view text);
void WDialogGetString(int id, std::string &text);
void WDialogPutInteger(int id, int value);
void WDialogPutReal(int id, float value, std::string_view format);
void WDialogPutDouble(int id, double value, std::string_view format);
void WDialogPutCheckBox(int id, bool on);
void WDialogPutMenu(int id, const std::vector<std::string> &entries, int selected);
void WDialogPutTrackbar(int id, int value);
void WDialogPutTable(int id,
                     const TableContent &table); ///< rows stay selected that are still there
void WDialogPutRows(int id, const std::vector<int> &rows); ///< selects rows, from 1
/// Points at a row of a table and brings it on show, the selection being left as it is; 0: none.
void WDialogPointAtRow(int id, int row);

// A get returns the exact value that was put as long as the user did not change its text. Where
// the text is no number the value stays and the call returns false; the error state is read
// inside, so that it cannot appear later as somebody else's.
bool WDialogGetInteger(int id, int &value);
bool WDialogGetReal(int id, float &value);
bool WDialogGetDouble(int id, double &value);
bool WDialogGetCheckBox(int id, bool &on);
bool WDialogGetMenu(int id, int &selected); ///< selected from 1
bool WDialogGetTrackbar(int id, int &value);
bool WDialogGetRows(int id, std::vector<int> &rows); ///< the selected ones, from 1, ascending

// Limits of what the user types; a value that the program puts is not touched. A lower limit above
// the upper one takes the limits off. Flows set them by the dialog's table, through the third; the
// others complete the documented set.
void WDialogRangeInteger(int id, int low, int high);
void WDialogRangeReal(int id, float low, float high);
void WDialogRangeDouble(int id, double low, double high);
void WDialogRangeTrackbar(int id, int low, int high, int step);

// ---- Files, boxes and the operating system

enum ChooserFlags : int {
    ChooseExisting = 10,
    ChooseForSave = 11, ///< a name without extension gets the filter's
};

/// The system's file dialog. On OK `path` is the choice, else it stays as it was.
/// filter   a description, a bar, patterns separated by semicolons, and a closing bar
/// flags    ChooserFlags
/// returns  true on OK, as the item CommonDialogOk says too
bool ToolkitFileChooser(std::string_view filter, int flags, std::string &path,
                        std::string_view title);

/// Whether a box stays away once the user wants no further messages of this command.
enum class BoxDuty { MayBeQuieted, AlwaysShown };

enum BoxButton : int { BoxCancel = 0, BoxOk = 1 };
inline constexpr int BoxOkAndCancel = 1; ///< the buttons of a box
inline constexpr int BoxNoteIcon = 1;
inline constexpr int BoxErrorIcon = 2;

/// A message box. Lines are joined by carriage returns. Returns the BoxButton that was pressed.
int WMessageBox(int buttons, int icon, int defaultButton, std::string_view text,
                std::string_view title, BoxDuty duty = BoxDuty::MayBeQuieted);

/// How a program that was run has ended.
struct CommandEnd {
    bool started = false;
    bool stopped = false; ///< the user has ended it
    int exitCode = 0;
    int signal = 0; ///< that ended it; 0 none

    [[nodiscard]] bool succeeded() const { return started && exitCode == 0 && signal == 0; }
};

/// How far a program has come, as a line of its own says.
struct CommandProgress {
    double done = 0.0;
    double total = 0.0;     ///< 0: the line says nothing of it
    std::string words = {}; ///< for the user, where total is above 0
};

inline constexpr int WaitForItsEnd = 2; ///< a flag of IOsCommand

/// Runs a program with its arguments, without a shell, until it has ended; the user may end it
/// before. A program that cannot be started leaves error state 13.
/// line     gets each line that it writes to its console, and returns what it says of the progress
/// dialog   shown meanwhile, a table of long work; null: the toolkit's own
CommandEnd IOsCommand(const std::vector<std::string> &command, int flags,
                      const std::function<CommandProgress(std::string_view)> &line = {},
                      const DialogSpec *dialog = nullptr);

inline constexpr int PrinterDialog = 2; ///< which options are asked for

/// The system's printer dialog for the chosen hardcopy (page/hardcopy.h); the item CommonDialogOk
/// says whether it ended with OK. When it was declined no driver is chosen any more.
/// which  always PrinterDialog, as documented
void WHardcopyOptions(int which);

void ToolkitCopyText(std::string_view text); ///< to the clipboard

std::string IOsVariable(std::string_view name); ///< an environment variable, or empty
std::string IOsDirName();                       ///< the working directory; no flow asks for it
int ToolkitArgumentCount();                     ///< arguments after the program's own path
std::string ToolkitArgument(int index);         ///< 0 the program's own path, 1 the first argument

/// Error states of the toolkit; those of pages stand in page/drawing.h and page/hardcopy.h.
enum ToolkitErrorNumber : int {
    ErrorNoSuchDialog = 1,
    ErrorNoDialogSelected = 2,
    ErrorNoSuchControl = 3,
    ErrorWrongKind = 4,     ///< the control holds no value of this kind
    ErrorNoNumber = 5,      ///< the text of the field is no number
    ErrorNoSuchCommand = 6, ///< of the menu
    ErrorCannotRun = 13,
};

enum ErrorItem : int {
    ErrorNumber = 1,   ///< the last error number, 0 if none; reading clears it
    ErrorOfSystem = 2, ///< the system's error value that came with it
};
int ToolkitErrorState(int item);
std::string ToolkitErrorText(int number);

/// Leaves an error state, as a failing call does.
void ToolkitSetError(int number, int systemError = 0);

} // namespace keldrin
