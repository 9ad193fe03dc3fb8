#include "toolkit/control_ids.h"
#include "toolkit/sample_menu.h"
#include "toolkit/scripted/script.h"
#include "toolkit/scripted/script_keys.h"
#include "toolkit/scripted/script_words.h"
#include "toolkit/toolkit.h"

#include <gtest/gtest.h>

#include <string>

namespace keldrin {
namespace {

// The action of a line that must be readable.
template <class Action>
Action read(const std::string &line) {
    Script script;
    const std::vector<ScriptFault> faults = parseScript(line, script);
    EXPECT_TRUE(faults.empty()) << line << ": " << (faults.empty() ? "" : faults[0].reason);
    if (script.lines.size() != 1 || !std::holds_alternative<Action>(script.lines[0].action)) {
        ADD_FAILURE() << line;
        return {};
    }
    return std::get<Action>(script.lines[0].action);
}

TEST(ScriptWords, QuotesKeepBlanksAndBackslashesStayInPaths) {
    std::vector<ScriptWord> words;
    EXPECT_TRUE(splitScriptWords(R"(file "a \"b\" \\c" C:\x\y	"" end)", words));
    ASSERT_EQ(words.size(), 5U);
    EXPECT_EQ(words[1].text, R"(a "b" \c)");
    EXPECT_EQ(words[2].text, R"(C:\x\y)");
    EXPECT_EQ(words[3].text, "");
    EXPECT_TRUE(words[3].quoted);
    words.clear();
    EXPECT_TRUE(splitScriptWords(R"("C:\temp")", words));
    EXPECT_EQ(words[0].text, R"(C:\temp)");
    EXPECT_FALSE(splitScriptWords("file \"open", words));
}

TEST(ScriptWords, PatternsMatchWholeLines) {
    struct Case {
        const char *text;
        const char *pattern;
        bool matches;
    };
    const Case cases[] = {
        {"abc", "abc", true},
        {"abc", "ab", false},
        {"abc", "*", true},
        {"", "*", true},
        {"", "?", false},
        {"abc", "a*c", true},
        {"abcabd", "*abd", true},
        {"abcabd", "a*b?", true},
        {"abc", "a?", false},
        {"a*c", "a\\*c", false},
        {"[x]", "[x]", true},
        {"x", "[x]", false},
        {"m\xC3\xA9t", "m?t", true},
        {"aaaaaaaaaaaaaaaaaaaaaaaab", "*a*a*a*a*a*a*c", false},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(matchesPattern(c.text, c.pattern), c.matches) << c.text << " / " << c.pattern;
    }
}

TEST(ScriptLines, SetUp) {
    EXPECT_EQ(read<SetScreen>("screen 800 600").height, 600);
    const DateTime moment = read<SetClock>("clock 2024-02-29 23:05:59").moment;
    EXPECT_EQ(moment.year * 10000 + moment.month * 100 + moment.day, 20240229);
    EXPECT_EQ(moment.hour * 10000 + moment.minute * 100 + moment.second, 230559);
    EXPECT_FALSE(read<SetSurface>("surface off").on);
    const SetFault fault = read<SetFault>("fault 7 \"no pen\" 20");
    EXPECT_EQ(fault.text, "no pen");
    EXPECT_EQ(fault.reads, 20);
    EXPECT_EQ(read<SetFault>("fault 7 x").reads, 1);
    EXPECT_EQ(read<CopyFile>("copy \"a b\" c").from, "a b");
    read<ClearAuto>("auto off");
}

TEST(ScriptLines, StandingAnswersMayNameATitle) {
    const auto file = read<SetAuto>("auto file \"my line.std\"");
    EXPECT_EQ(file.title, "");
    EXPECT_EQ(std::get<FileAnswer>(file.answer).path, "my line.std");
    const auto titled = read<SetAuto>("auto file \"Open*\" cancel");
    EXPECT_EQ(titled.title, "Open*");
    EXPECT_FALSE(std::get<FileAnswer>(titled.answer).path);
    EXPECT_EQ(std::get<FileAnswer>(read<SetAuto>("auto file \"cancel\"").answer).path, "cancel");
    EXPECT_TRUE(std::get<BoxAnswer>(read<SetAuto>("auto box ok quiet").answer).quiet);
    const auto box = read<SetAuto>("auto box \"ERR*\" cancel");
    EXPECT_EQ(box.title, "ERR*");
    EXPECT_TRUE(std::get<BoxAnswer>(box.answer).cancel);
    EXPECT_EQ(std::get<PrinterAnswer>(read<SetAuto>("auto printer 612 792").answer).height, 792);
    EXPECT_TRUE(std::get<PrinterAnswer>(read<SetAuto>("auto printer cancel").answer).declined);
    EXPECT_EQ(std::get<EngineAnswer>(read<SetAuto>("auto engine files out/a").answer).base,
              "out/a");
    const auto dialog = read<SetAuto>("auto dialog \"Verify*\" 1090");
    EXPECT_EQ(dialog.title, "Verify*");
    EXPECT_EQ(std::get<ButtonAnswer>(dialog.answer).button, 1090);
    EXPECT_EQ(read<SetAuto>("auto dialog 1084").title, "");
}

TEST(ScriptLines, EventsDialogsAndAnswers) {
    EXPECT_EQ(read<MenuChoice>("menu \"Edit Line Names\"").command, Command::Edit);
    EXPECT_EQ(read<MenuChoice>("menu auto skip").command, Command::AutoSkip);
    EXPECT_EQ(read<MenuChoice>("menu 107").command, Command::Exit);
    EXPECT_EQ(read<KeyPress>("key n").code, 'n');
    EXPECT_EQ(read<KeyPress>("key #").code, '#');
    EXPECT_TRUE(read<MouseClick>("click right 1.5 17.25 double").twice);
    EXPECT_EQ(read<MouseClick>("click middle 1 2").button, 2);
    const auto drag = read<MouseDrag>("drag left 1 2 3 4.5 aborted");
    EXPECT_EQ(drag.y2, 4.5);
    EXPECT_TRUE(drag.aborted);
    EXPECT_EQ(read<WheelTurn>("wheel down 3").count, 3);
    EXPECT_TRUE(read<WheelTurn>("wheel up").up);
    read<WindowClose>("close");
    read<DialogClose>("close dialog");
    EXPECT_EQ(read<FieldEntry>("set 1001 \"two  words\"").value, "two  words");
    EXPECT_EQ(read<FieldEntry>("set 1072 \"\"").value, "");
    EXPECT_EQ(read<ButtonPress>("press To WMF File").button, "To WMF File");
    EXPECT_FALSE(read<FileAnswer>("file cancel").path);
    EXPECT_FALSE(read<BoxAnswer>("box escape").cancel);
    EXPECT_TRUE(read<EngineAnswer>("engine run close").close);
    EXPECT_EQ(read<EngineAnswer>("engine fail 0").kind, EngineAnswer::Kind::Fail);
    EXPECT_EQ(read<ExpectLine>("expect   field * = \"a  b\"  ").pattern, "field * = \"a  b\"");
    EXPECT_TRUE(read<ExpectLine>("\treject\t\"").reject);
    EXPECT_EQ(read<ShowState>("show file \"a b.hpg\"").path, "a b.hpg");
    EXPECT_EQ(read<NoteText>("note an \"open quote").text, "an \"open quote");
}

TEST(ScriptLines, KeyNames) {
    EXPECT_EQ(keyCodeOf("Escape"), 27);
    EXPECT_EQ(keyCodeOf("Left"), KeyLeft);
    EXPECT_EQ(keyCodeOf("Ctrl+s"), 'S' | KeyWithCtrl);
    EXPECT_EQ(keyCodeOf("Ctrl+Shift+Home"), KeyHome | KeyWithCtrl | KeyWithShift);
    EXPECT_EQ(keyCodeOf("Ctrl++"), '+' | KeyWithCtrl);
    EXPECT_FALSE(keyCodeOf("escape"));
    EXPECT_FALSE(keyCodeOf("Ctrl+"));
    EXPECT_FALSE(keyCodeOf("\xC3\xA9"));
}

TEST(ScriptFaults, EveryBadLineIsTold) {
    const char *const bad[] = {
        "jump",
        "screen 0 600",
        "clock 2023-02-29 00:00:00",
        "clock 2023-2-9 1:2:3",
        "surface maybe",
        "fault x y",
        "fault 1 t 0",
        "auto",
        "auto box",
        "auto dialog Continue",
        "auto file",
        "menu Print",
        "menu",
        "key F4",
        "click left 1",
        "click up 1 2",
        "drag left 1 2 3",
        "wheel left",
        "wheel up 0",
        "resize 10",
        "expose now",
        "close box",
        "set",
        "set 1001",
        "press",
        "file",
        "file a b",
        "box yes",
        "box cancel quiet",
        "printer 612",
        "engine stop",
        "engine fail",
        "expect",
        "show",
        "show window",
        "click left nan 1",
        "file \"a",
        "note2",
        "copy a",
        "engine exit 99999999999",
    };
    std::string text = "# a comment\n\n";
    for (const char *line : bad) {
        text.append(line).append("\r\n");
    }
    Script script;
    const std::vector<ScriptFault> faults = parseScript(text, script);
    ASSERT_EQ(faults.size(), std::size(bad));
    for (std::size_t i = 0; i < faults.size(); ++i) {
        EXPECT_EQ(faults[i].line, static_cast<int>(i) + 3) << bad[i];
        EXPECT_FALSE(faults[i].reason.empty());
    }
    EXPECT_TRUE(script.lines.empty());
}

TEST(ScriptFaults, TheScreenComesFirst) {
    Script script;
    EXPECT_TRUE(parseScript("# here\nscreen 800 600\nsurface off\n", script).empty());
    EXPECT_EQ(parseScript("surface off\nscreen 800 600\n", script).size(), 1U);
    EXPECT_EQ(readScript("/nonexistent/scenario", script).at(0).line, 0);
}

} // namespace
} // namespace keldrin
