#pragma once

#include "base/clock.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace keldrin {

// A scenario: what a user does, as text, one item a line. Blank lines and lines from "#" are passed
// over. Words are separated by blanks; "..." keeps blanks, with \" and \\ inside. Positions are
// page centimetres (24 x 18) from the lower left corner.

// ---- set-up: carried out as it is met

struct SetScreen {
    int width = 0; ///< pixels
    int height = 0;
};
struct SetClock {
    DateTime moment;
};
struct SetSurface {
    bool on = true;
};
struct SetFault {
    int number = 0;
    std::string text;
    int reads = 1;
};
struct CopyFile {
    std::string from;
    std::string to;
};
struct DeleteFile {
    std::string path;
};

// ---- answers to requests

struct FileAnswer {
    std::optional<std::string> path; ///< none: declined
};
struct BoxAnswer {
    bool cancel = false;
    bool quiet = false; ///< with "do not show further" marked
};
struct PrinterAnswer {
    bool declined = false;
    int width = 0; ///< paper in points
    int height = 0;
};
struct EngineAnswer {
    enum class Kind { Run, Exit, Files, Fail, Error };
    Kind kind = Kind::Run;
    int code = 0;       ///< exit code, system error or toolkit error
    std::string base;   ///< of the files that are copied over the project pair
    bool close = false; ///< a close request arrives while it runs
};
struct ButtonAnswer {
    int button = 0;
};

struct SetAuto {
    std::string title; ///< pattern of the request's title; blank: every title
    std::variant<FileAnswer, BoxAnswer, PrinterAnswer, EngineAnswer, ButtonAnswer> answer;
};
struct ClearAuto {};

// ---- events of the root window

struct MenuChoice {
    int command = 0;
};
struct KeyPress {
    int code = 0; ///< character or ToolkitKey
};
struct ContextChoice {
    std::string label; ///< of the entry of the context menu
};
struct MouseClick {
    int button = 1; ///< 1 left, 2 middle, 3 right; plus KeyWithShift or KeyWithCtrl
    double x = 0.0;
    double y = 0.0;
    bool twice = false;
};
struct MouseDrag {
    int button = 1;
    double x1 = 0.0;
    double y1 = 0.0;
    double x2 = 0.0;
    double y2 = 0.0;
    bool aborted = false; ///< ended by a key
};
struct WheelTurn {
    bool up = true;
    int count = 1;
};
struct WindowResize {
    int width = 0;
    int height = 0;
};
struct WindowExpose {};
struct WindowClose {};

// ---- what is done in a dialog

struct FieldEntry {
    int id = 0;
    std::string value;
};
struct ButtonPress {
    std::string button; ///< id or caption
};
struct DialogClose {};

// ---- checks: carried out as they are met

struct ExpectLine {
    std::string pattern;
    bool reject = false; ///< no line may match
};
struct ShowState {
    enum class Kind { Title, Menu, Dialog, Drawing, Log, File, Exists };
    Kind kind = Kind::Title;
    std::string path;
};
struct NoteText {
    std::string text;
};

using ScriptAction =
    std::variant<SetScreen, SetClock, SetSurface, SetFault, CopyFile, DeleteFile, SetAuto,
                 ClearAuto, FileAnswer, BoxAnswer, PrinterAnswer, EngineAnswer, MenuChoice,
                 KeyPress, ContextChoice, MouseClick, MouseDrag, WheelTurn, WindowResize,
                 WindowExpose, WindowClose, FieldEntry, ButtonPress, DialogClose, ExpectLine,
                 ShowState, NoteText>;

enum class ScriptGroup { SetUp, Event, Dialog, Answer, Check };

struct ScriptLine {
    int number = 0;   ///< in the file, from 1
    std::string text; ///< as written, without blanks around it
    ScriptGroup group = ScriptGroup::Check;
    ScriptAction action;
};

/// A word that begins lines of a scenario, as the manual lists it.
struct ScriptVerb {
    std::string_view name;
    ScriptGroup group;
    std::string_view form; ///< what follows it; words in capitals stand for what the user gives
};

/// All of them, in the order of the manual.
std::vector<ScriptVerb> scriptVerbs();

struct Script {
    std::vector<ScriptLine> lines;
};

struct ScriptFault {
    int line = 0; ///< 0: the file as a whole
    std::string reason;
};

/// Reads a scenario. Every line that cannot be read is in the result; the script is of use only
/// when the result is empty. For tests.
std::vector<ScriptFault> parseScript(std::string_view text, Script &script);

/// The same from a file.
std::vector<ScriptFault> readScript(const std::string &path, Script &script);

} // namespace keldrin
