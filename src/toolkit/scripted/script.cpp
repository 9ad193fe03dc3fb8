#include "toolkit/scripted/script.h"

#include "base/ascii.h"
#include "base/index.h"
#include "base/line_reader.h"
#include "toolkit/menu.h"
#include "toolkit/scripted/script_keys.h"
#include "toolkit/scripted/script_words.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace keldrin {

namespace {

constexpr int MostPixels = 100000;
constexpr int MostPoints = 100000;
constexpr int Highest = std::numeric_limits<int>::max();
constexpr int Lowest = std::numeric_limits<int>::min();
constexpr std::size_t LongestLine = 16384;

// ---- set-up

bool readOnOff(WordTaker &words) {
    return words.oneOf({"on", "off"}) == 0;
}

ScriptAction readScreen(WordTaker &words) {
    const int width = words.integer("the width", 1, MostPixels);
    return SetScreen{width, words.integer("the height", 1, MostPixels)};
}

// Takes "2026-01-31" or "12:30:00" apart: three groups of digits of documented lengths.
bool readThree(std::string_view text, char mark, std::array<std::size_t, 3> lengths,
               std::array<int, 3> &values) {
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        const std::string_view digits = text.substr(0, lengths[i]);
        if (digits.size() != lengths[i] || !std::all_of(digits.begin(), digits.end(), isDigit) ||
            !readScriptInteger(digits, values[i])) {
            return false;
        }
        text.remove_prefix(digits.size());
        if (i < 2 && (text.empty() || text.front() != mark)) {
            return false;
        }
        text.remove_prefix(i < 2 ? 1 : 0);
    }
    return text.empty();
}

int daysIn(int month, int year) {
    constexpr std::array days = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return days[asIndex(month - 1)] + (month == 2 && leap ? 1 : 0);
}

ScriptAction readClock(WordTaker &words) {
    std::array<int, 3> date{};
    std::array<int, 3> time{};
    const std::string dateText = words.word("the date");
    const std::string timeText = words.word("the time");
    const bool good = readThree(dateText, '-', {4, 2, 2}, date) &&
                      readThree(timeText, ':', {2, 2, 2}, time) && date[1] >= 1 && date[1] <= 12 &&
                      date[2] >= 1 && date[2] <= daysIn(date[1], date[0]) && time[0] <= 23 &&
                      time[1] <= 59 && time[2] <= 59;
    if (!good) {
        words.fail("a moment is written as YYYY-MM-DD hh:mm:ss");
    }
    return SetClock{{date[0], date[1], date[2], time[0], time[1], time[2]}};
}

ScriptAction readSurface(WordTaker &words) {
    return SetSurface{readOnOff(words)};
}

ScriptAction readFault(WordTaker &words) {
    SetFault fault;
    fault.number = words.integer("the error number", Lowest, Highest);
    fault.text = words.word("the description");
    fault.reads = words.atEnd() ? 1 : words.integer("the count", 1, Highest);
    return fault;
}

ScriptAction readCopy(WordTaker &words) {
    CopyFile copy;
    copy.from = words.word("the file");
    copy.to = words.word("the copy");
    return copy;
}

ScriptAction readDelete(WordTaker &words) {
    return DeleteFile{words.word("the file")};
}

// ---- answers

FileAnswer readFileAnswer(WordTaker &words) {
    const bool declined = !words.nextIsQuoted() && words.accept("cancel");
    return declined ? FileAnswer{} : FileAnswer{words.word("the path")};
}

BoxAnswer readBoxAnswer(WordTaker &words) {
    BoxAnswer answer;
    const std::size_t choice = words.oneOf({"ok", "cancel", "escape"});
    answer.cancel = choice == 1;
    answer.quiet = choice == 0 && words.accept("quiet");
    return answer;
}

PrinterAnswer readPrinterAnswer(WordTaker &words) {
    PrinterAnswer answer;
    answer.declined = words.accept("cancel");
    if (!answer.declined) {
        answer.width = words.integer("the paper's width", 1, MostPoints);
        answer.height = words.integer("the paper's height", 1, MostPoints);
    }
    return answer;
}

EngineAnswer readEngineAnswer(WordTaker &words) {
    EngineAnswer answer;
    using Kind = EngineAnswer::Kind;
    answer.kind = static_cast<Kind>(words.oneOf({"run", "exit", "files", "fail", "error"}));
    if (answer.kind == Kind::Run) {
        answer.close = words.accept("close");
    } else if (answer.kind == Kind::Files) {
        answer.base = words.word("the base of the files");
    } else {
        answer.code = words.integer("the code", Lowest, Highest);
    }
    return answer;
}

// A standing answer may begin with a pattern of the request's title.
ScriptAction readAuto(WordTaker &words) {
    if (words.left() == 1 && words.accept("off")) {
        return ClearAuto{};
    }
    SetAuto standing;
    const std::size_t kind = words.oneOf({"file", "box", "printer", "engine", "dialog"});
    const bool plainFile = kind == 0 && words.left() == 1;
    const auto takeTitle = [&](bool answersNow) {
        if (!answersNow && words.left() > 1) {
            standing.title = words.word("the title");
        }
    };
    switch (kind) {
    case 0:
        takeTitle(plainFile);
        standing.answer = readFileAnswer(words);
        break;
    case 1:
        takeTitle(words.nextIs("ok") || words.nextIs("cancel") || words.nextIs("escape"));
        standing.answer = readBoxAnswer(words);
        break;
    case 2:
        takeTitle(words.nextIs("cancel") || words.nextIsNumber());
        standing.answer = readPrinterAnswer(words);
        break;
    case 3:
        takeTitle(!words.nextIsQuoted());
        standing.answer = readEngineAnswer(words);
        break;
    default:
        takeTitle(words.nextIsNumber());
        standing.answer = ButtonAnswer{words.integer("the button", 1, Highest)};
    }
    return standing;
}

// ---- events

ScriptAction readMenu(WordTaker &words) {
    const std::string name = words.rest("the menu entry");
    int number = 0;
    if (readScriptInteger(name, number)) {
        return MenuChoice{number};
    }
    const MenuEntry *entry = findMenuLabel(name);
    if (entry == nullptr) {
        words.fail("the menu has no entry \"" + name + "\"");
        return MenuChoice{};
    }
    return MenuChoice{entry->command};
}

ScriptAction readKey(WordTaker &words) {
    const std::string name = words.word("the key");
    const std::optional<int> code = keyCodeOf(name);
    if (!code) {
        words.fail("there is no key \"" + name + "\"");
    }
    return KeyPress{code.value_or(0)};
}

ScriptAction readContext(WordTaker &words) {
    return ContextChoice{words.rest("the entry of the context menu")};
}

// A button, held with a key or not.
int readMouseButton(WordTaker &words) {
    int held = 0;
    if (words.accept("shift")) {
        held = KeyWithShift;
    } else if (words.accept("ctrl")) {
        held = KeyWithCtrl;
    }
    return held + static_cast<int>(words.oneOf({"left", "middle", "right"})) + 1;
}

ScriptAction readClick(WordTaker &words) {
    MouseClick click;
    click.button = readMouseButton(words);
    click.x = words.number("X");
    click.y = words.number("Y");
    click.twice = words.accept("double");
    return click;
}

ScriptAction readDrag(WordTaker &words) {
    MouseDrag drag;
    drag.button = readMouseButton(words);
    drag.x1 = words.number("X1");
    drag.y1 = words.number("Y1");
    drag.x2 = words.number("X2");
    drag.y2 = words.number("Y2");
    drag.aborted = words.accept("aborted");
    return drag;
}

ScriptAction readWheel(WordTaker &words) {
    constexpr int mostNotches = 10000;
    const bool up = words.oneOf({"up", "down"}) == 0;
    return WheelTurn{up, words.atEnd() ? 1 : words.integer("the count", 1, mostNotches)};
}

ScriptAction readResize(WordTaker &words) {
    const int width = words.integer("the width", 1, MostPixels);
    return WindowResize{width, words.integer("the height", 1, MostPixels)};
}

ScriptAction readExpose(WordTaker &) {
    return WindowExpose{};
}

ScriptAction readClose(WordTaker &words) {
    if (words.accept("dialog")) {
        return DialogClose{};
    }
    return WindowClose{};
}

// ---- dialogs

ScriptAction readSet(WordTaker &words) {
    const int id = words.integer("the control", 1, Highest);
    return FieldEntry{id, words.rest("the value")};
}

ScriptAction readPress(WordTaker &words) {
    return ButtonPress{words.rest("the button")};
}

// ---- checks

ScriptAction readShow(WordTaker &words) {
    ShowState show;
    show.kind = static_cast<ShowState::Kind>(
        words.oneOf({"title", "menu", "dialog", "drawing", "log", "file", "exists"}));
    if (show.kind == ShowState::Kind::File || show.kind == ShowState::Kind::Exists) {
        show.path = words.word("the path");
    }
    return show;
}

/// How a line that begins with a word is read.
struct Keyword {
    std::string_view name;
    ScriptGroup group;
    std::string_view form; ///< for the manual, see ScriptVerb
    ScriptAction (*read)(WordTaker &);
};

constexpr std::array Keywords = {
    Keyword{"screen", ScriptGroup::SetUp, "WIDTH HEIGHT", readScreen},
    Keyword{"clock", ScriptGroup::SetUp, "YYYY-MM-DD hh:mm:ss", readClock},
    Keyword{"surface", ScriptGroup::SetUp, "on|off", readSurface},
    Keyword{"fault", ScriptGroup::SetUp, "NUMBER TEXT [COUNT]", readFault},
    Keyword{"auto", ScriptGroup::SetUp, "off, or KIND [TITLE] ANSWER", readAuto},
    Keyword{"copy", ScriptGroup::SetUp, "FILE COPY", readCopy},
    Keyword{"delete", ScriptGroup::SetUp, "FILE", readDelete},
    Keyword{"menu", ScriptGroup::Event, "LABEL or NUMBER", readMenu},
    Keyword{"key", ScriptGroup::Event, "KEY", readKey},
    Keyword{"context", ScriptGroup::Event, "LABEL", readContext},
    Keyword{"click", ScriptGroup::Event, "[shift|ctrl] left|middle|right X Y [double]", readClick},
    Keyword{"drag", ScriptGroup::Event, "[shift|ctrl] left|middle|right X1 Y1 X2 Y2 [aborted]",
            readDrag},
    Keyword{"wheel", ScriptGroup::Event, "up|down [COUNT]", readWheel},
    Keyword{"resize", ScriptGroup::Event, "WIDTH HEIGHT", readResize},
    Keyword{"expose", ScriptGroup::Event, "", readExpose},
    Keyword{"close", ScriptGroup::Event, "[dialog]", readClose},
    Keyword{"set", ScriptGroup::Dialog, "CONTROL VALUE", readSet},
    Keyword{"press", ScriptGroup::Dialog, "BUTTON", readPress},
    Keyword{"file", ScriptGroup::Answer, "PATH|cancel",
            [](WordTaker &w) {
                return ScriptAction(readFileAnswer(w));
            }},
    Keyword{"box", ScriptGroup::Answer, "ok [quiet]|cancel|escape",
            [](WordTaker &w) {
                return ScriptAction(readBoxAnswer(w));
            }},
    Keyword{"printer", ScriptGroup::Answer, "WIDTH HEIGHT|cancel",
            [](WordTaker &w) {
                return ScriptAction(readPrinterAnswer(w));
            }},
    Keyword{"engine", ScriptGroup::Answer, "run [close]|exit CODE|files BASE|fail CODE|error CODE",
            [](WordTaker &w) {
                return ScriptAction(readEngineAnswer(w));
            }},
    Keyword{"show", ScriptGroup::Check, "title|menu|dialog|drawing|log, or file|exists PATH",
            readShow},
};

// Lines whose rest is taken as it stands, quotes and all.
constexpr std::array PlainVerbs = {ScriptVerb{"expect", ScriptGroup::Check, "PATTERN"},
                                   ScriptVerb{"reject", ScriptGroup::Check, "PATTERN"},
                                   ScriptVerb{"note", ScriptGroup::Check, "TEXT"}};

// True when the line is one of these.
bool readPlainLine(std::string_view keyword, std::string_view rest, ScriptLine &line,
                   std::string &fault) {
    const bool isPattern = keyword == PlainVerbs[0].name || keyword == PlainVerbs[1].name;
    if (!isPattern && keyword != PlainVerbs[2].name) {
        return false;
    }
    line.group = ScriptGroup::Check;
    if (isPattern) {
        line.action = ExpectLine{std::string(rest), keyword == PlainVerbs[1].name};
        fault = rest.empty() ? "the pattern is missing" : "";
    } else {
        line.action = NoteText{std::string(rest)};
    }
    return true;
}

std::string readWords(ScriptLine &line) {
    std::vector<ScriptWord> words;
    if (!splitScriptWords(line.text, words)) {
        return "a quote is left open";
    }
    WordTaker taker(std::move(words));
    const std::string first = taker.word("the keyword");
    const auto *keyword = std::find_if(Keywords.begin(), Keywords.end(),
                                       [&](const Keyword &k) { return k.name == first; });
    if (keyword == Keywords.end()) {
        return "\"" + first + "\" begins no line of a scenario";
    }
    line.action = keyword->read(taker);
    line.group =
        std::holds_alternative<DialogClose>(line.action) ? ScriptGroup::Dialog : keyword->group;
    if (!taker.atEnd()) {
        taker.fail("there is more on the line than belongs to it");
    }
    return taker.fault();
}

std::string_view withoutBlanksAround(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    const std::size_t last = text.find_last_not_of(" \t");
    return first == std::string_view::npos ? std::string_view{}
                                           : text.substr(first, last - first + 1);
}

// Empty when the line could be read, else what is wrong with it.
std::string readLine(ScriptLine &line, bool isFirst) {
    const std::size_t end = line.text.find_first_of(" \t");
    const std::string_view whole = line.text;
    const std::string_view rest =
        end == std::string::npos ? std::string_view{} : whole.substr(end + 1);
    std::string fault;
    if (!readPlainLine(whole.substr(0, end), withoutBlanksAround(rest), line, fault)) {
        fault = readWords(line);
    }
    if (fault.empty() && !isFirst && std::holds_alternative<SetScreen>(line.action)) {
        fault = "\"screen\" stands in the first line only";
    }
    return fault;
}

std::vector<ScriptFault> readLines(LineReader &reader, Script &script) {
    std::vector<ScriptFault> faults;
    std::string_view text;
    LineStatus status = reader.next(text);
    for (bool isFirst = true; status == LineStatus::Line; status = reader.next(text)) {
        text = withoutBlanksAround(text);
        if (text.empty() || text.front() == '#') {
            continue;
        }
        ScriptLine line;
        line.number = reader.lineNumber();
        line.text = text;
        const std::string fault = readLine(line, isFirst);
        isFirst = false;
        if (fault.empty()) {
            script.lines.push_back(std::move(line));
        } else {
            faults.push_back({line.number, fault});
        }
    }
    if (status == LineStatus::Fault) {
        faults.push_back({0, reader.errorText()});
    }
    return faults;
}

} // namespace

std::vector<ScriptVerb> scriptVerbs() {
    std::vector<ScriptVerb> verbs;
    verbs.reserve(std::size(Keywords) + std::size(PlainVerbs));
    for (const Keyword &keyword : Keywords) {
        verbs.push_back({keyword.name, keyword.group, keyword.form});
    }
    verbs.insert(verbs.end(), PlainVerbs.begin(), PlainVerbs.end());
    return verbs;
}

std::vector<ScriptFault> parseScript(std::string_view text, Script &script) {
    LineReader reader(LongestLine);
    reader.openText(text);
    return readLines(reader, script);
}

std::vector<ScriptFault> readScript(const std::string &path, Script &script) {
    LineReader reader(LongestLine);
    if (!reader.open(path)) {
        return {{0, reader.errorText()}};
    }
    return readLines(reader, script);
}

} // namespace keldrin
