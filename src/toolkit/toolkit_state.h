#pragma once

#include "toolkit/backend.h"
#include "toolkit/dialog_model.h"
#include "toolkit/user_record.h"

#include <chrono>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace keldrin {

/// Error states that a script puts in place of the real ones.
struct FaultInjection {
    int number = 0;
    int reads = 0;                    ///< reads of the error state that still give `number`
    std::map<int, std::string> texts; ///< descriptions that came with injected numbers
};

/// The current long work, see long_work.h.
struct WorkState {
    int depth = 0;       ///< works begun within one another; 0 none
    int pauses = 0;      ///< requests in which it is not shown
    WorkRequest request; ///< of the outermost
    bool stopped = false;
    std::optional<std::chrono::steady_clock::time_point> lastStep; ///< that the backend saw
};

/// State of the toolkit. One per process, see toolkitState(); only the toolkit's own files use it.
struct ToolkitState {
    Backend *backend = nullptr;
    std::vector<std::string> arguments; ///< [0] is the program's own path
    bool rootOpen = false;
    std::vector<int> menuTurned; ///< commands that are not on or off as in the menu's table
    std::span<const ContextEntry> contextEntries; ///< of the page on show

    MessageRows (*messages)() = nullptr; ///< log and messages
    UserRecord *record = nullptr;        ///< takes down what the user does
    void (*toggleRecord)() = nullptr;    ///< for KeyRecord
    RootSpec rootAsked;                  ///< the root window as the program opened it
    FaultInjection fault;

    std::deque<ToolkitEvent> putBack; ///< given again before all else
    std::deque<RawEvent> queue;       ///< positions are converted when an event is fetched
    bool dropsSecondPress = false;
    bool closeRemembered = false; ///< asked for while a child ran; for the next wait
    bool fieldChangeEvents = false;
    WorkState work;
    /// From one step of long work that the backend sees to the next.
    std::chrono::milliseconds stepPause = std::chrono::milliseconds(33);
    bool boxesQuiet = false; ///< the user wants no further boxes of this command

    std::vector<std::unique_ptr<DialogModel>> dialogs; ///< loaded
    std::vector<DialogModel *> shown;                  ///< the last one is on top
    int selected = 0;                                  ///< number of a loaded dialog, 0 none
    int lastButton = 0;                                ///< ended the last blocking dialog
    bool lastCommonOk = false;                         ///< the last common dialog ended with OK

    bool noticesSeen = false; ///< the program has waited for an event since
    std::string notices;      ///< in the status bar
};

ToolkitState &toolkitState();

/// True while an entry of the menu can be chosen; for a command outside the menu too.
bool menuEntryIsOn(int command);

/// Stands in every context menu while there is a record to be toggled.
extern const ContextEntry RecordEntry;

/// The entry of the context menu with a label in any case, or null.
const ContextEntry *findContextEntry(std::string_view label);

/// The loaded dialog of a number, or null.
DialogModel *findLoaded(int number);

/// The selected dialog; null with an error state when there is none.
DialogModel *selectedDialog();

/// The dialog that is shown on top, or null.
DialogModel *topDialog();

/// Makes the next `reads` reads of the error state give `number` with the description `text`.
void injectFault(int number, std::string text, int reads);

/// Puts an event after those that wait to be fetched.
void queueEvent(const RawEvent &event);

} // namespace keldrin
