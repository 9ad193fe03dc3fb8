#include "base/clock.h"
#include "base/paths.h"
#include "page/drawing.h"
#include "support/files.h"
#include "toolkit/control_ids.h"
#include "toolkit/sample_dialogs.h"
#include "toolkit/sample_menu.h"
#include "toolkit/scripted/scripted_backend.h"
#include "toolkit/toolkit_state.h"

#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <string>
#include <utility>

namespace keldrin {
namespace {

/// What a stopped run throws in place of ending the process.
struct Stopped {
    int code;
};

struct Played {
    std::string transcript; ///< without the lines of the window and the greyed entries
    int code = -1;
};

constexpr std::string_view StartLines = "window 1000 800\n"
                                        "menu off Edit Line Names\n"
                                        "menu off Invert\n";

Played play(const std::string &scenario, const std::function<void()> &program) {
    Script script;
    EXPECT_TRUE(parseScript(scenario, script).empty());
    std::ostringstream out;
    ScriptedBackend backend(std::move(script), out);
    backend.stopRun = [](int code) {
        throw Stopped{code};
    };
    Played played;
    try {
        ToolkitInit(backend, {"keldrin"});
        WindowOpen(ResizableWindow, -1, -1, 1000, 800);
        program();
        played.code = ToolkitClose();
    } catch (const Stopped &stopped) {
        played.code = stopped.code;
        selectSurface(nullptr);
        toolkitState() = ToolkitState{};
    }
    played.transcript = out.str();
    const std::size_t start = played.transcript.find(StartLines);
    EXPECT_NE(start, std::string::npos) << played.transcript;
    played.transcript.erase(start, StartLines.size());
    return played;
}

// The main loop in small: commands of the menu till Exit or a close request.
void serveMenu(const std::function<void(int)> &command) {
    for (;;) {
        ToolkitEvent event;
        ToolkitNextEvent(event);
        if (event.type == EventClose || (event.type == EventMenu && event.value == Command::Exit)) {
            return;
        }
        if (event.type == EventMenu) {
            command(event.value);
        }
    }
}

void nothing(int) {}

// Asks for a line and an area, which is then shown in millions.
void askAreas() {
    WDialogLoad(SampleAreas);
    WDialogPutMenu(1082, {"Line 1", "Line \"2\""}, 1);
    WDialogPutReal(1083, 1000.0F, "(1P,G14.4E1)");
    WDialogShow(-1, -1, ButtonContinue, DialogModal);
    float area = 0.0F;
    int line = 0;
    WDialogGetReal(1083, area);
    WDialogGetMenu(1082, line);
    const int button = ToolkitDialogInfo(DialogEndButton);
    WDialogUnload();
    ToolkitTrace("info", std::to_string(button) + " line " + std::to_string(line) + " area " +
                             std::to_string(static_cast<int>(area / 1.0E6F)));
}

// The configuration dialog's loop in small: the offset is for the second array only.
int configure() {
    WDialogLoad(SampleFields);
    ToolkitDialogOption(FieldChangeEvents, 1);
    WDialogPutMenu(1008, {"Fixed-Loop", "Moving-Loop"}, 1);
    WDialogPutReal(1025, 50.0F, "(F12.1)");
    WDialogFieldState(1011, false);
    WDialogShow(-1, -1, ButtonContinue, DialogModelessAlone);
    ToolkitEvent event;
    do {
        int array = 0;
        WDialogGetMenu(1008, array);
        WDialogFieldState(1011, array == 2);
        ToolkitNextEvent(event);
    } while (event.type != EventButton && event.type != EventClose);
    WDialogUnload();
    ToolkitDialogOption(FieldChangeEvents, 0);
    return event.type == EventClose ? 3 : event.value;
}

TEST(ScriptTranscript, ADialogThatBlocks) {
    const Played played = play("menu New\n"
                               "set 1082 \"Line \\\"2\\\"\"\n"
                               "set 1083 99E9\n"
                               "expect field 1083 real on \"along-line X\" = \"9.900E+9\"\n"
                               "reject field 1082 *\n"
                               "press Continue\n"
                               "expect info 1090 line 2 *\n"
                               "menu Exit\n"
                               "note passed over\n",
                               [] { serveMenu([](int) { askAreas(); }); });
    EXPECT_EQ(played.code, 0);
    EXPECT_EQ(played.transcript, "> 1: menu New\n"
                                 "dialog open 101 modal \"Verify data input parameters.\"\n"
                                 "field 1082 list on \"Select Line\" = \"Line 1\"\n"
                                 "field 1083 real on \"along-line X\" = \"1000.\"\n"
                                 "field 3083 static on \"m^2\" = \"\"\n"
                                 "field 1090 button on \"Continue\" = \"\"\n"
                                 "field 1084 button on \"Cancel\" = \"\"\n"
                                 "> 2: set 1082 \"Line \\\"2\\\"\"\n"
                                 "> 3: set 1083 99E9\n"
                                 "field 1083 real on \"along-line X\" = \"9.900E+9\"\n"
                                 "> 4: expect field 1083 real on \"along-line X\" = \"9.900E+9\"\n"
                                 "> 5: reject field 1082 *\n"
                                 "> 6: press Continue\n"
                                 "dialog close 101\n"
                                 "info 1090 line 2 area 9900\n"
                                 "> 7: expect info 1090 line 2 *\n"
                                 "> 8: menu Exit\n"
                                 "end program\n");
}

// What follows the opening of the configuration dialog.
std::string behindFields(const Played &played) {
    const std::string last = "field 1084 button on \"Cancel\" = \"\"\n";
    const std::size_t at = played.transcript.find(last);
    return at == std::string::npos ? played.transcript : played.transcript.substr(at + last.size());
}

TEST(ScriptTranscript, ADialogServedByALoop) {
    const Played played = play("set 1025 60\n"
                               "menu Exit\n" // the bar is out of service
                               "set 1008 Moving-Loop\n"
                               "key n\n"
                               "press 1090\n",
                               [] { EXPECT_EQ(configure(), ButtonContinue); });
    EXPECT_EQ(played.code, 0);
    EXPECT_EQ(behindFields(played), "> 1: set 1025 60\n"
                                    "> 2: menu Exit\n"
                                    "> 3: set 1008 Moving-Loop\n"
                                    "field 1011 real on \"Tx-Rx Offset (across-line)\" = \"\"\n"
                                    "> 4: key n\n"
                                    "> 5: press 1090\n"
                                    "dialog close 108\n"
                                    "end program\n");
    const auto leaving = [](const std::string &line) {
        int left = 0;
        const Played run = play(line, [&] { left = configure(); });
        return std::to_string(left) + " " + std::to_string(run.code);
    };
    EXPECT_EQ(leaving("close dialog\n"), "1084 0");
    EXPECT_EQ(leaving("key Escape\n"), "1084 0");
    EXPECT_EQ(leaving("key Enter\n"), "1090 0");
    EXPECT_EQ(leaving("close\n"), "3 0");
    EXPECT_EQ(leaving(""), "3 4") << "used up in the loop of a dialog";
    EXPECT_EQ(leaving("auto dialog \"*TEM*\" 1090\nmenu Exit\n"), "1090 0");
}

TEST(ScriptTranscript, LinesThatDoNotFitEndTheRun) {
    struct Case {
        const char *line;
        const char *request; ///< that it does not answer
    };
    const Case cases[] = {
        {"set 1011 5", "dialog 108 \"Verify TEM survey configuration\""}, // disabled
        {"set 9 5", "dialog 108 \"Verify TEM survey configuration\""},
        {"set 1008 #3", "dialog 108 \"Verify TEM survey configuration\""},
        {"press Print", "dialog 108 \"Verify TEM survey configuration\""},
        {"file \"a.std\"", "dialog 108 \"Verify TEM survey configuration\""},
    };
    for (const Case &c : cases) {
        const Played played = play(c.line, [] { configure(); });
        EXPECT_EQ(played.code, ScriptOutOfStep) << c.line;
        EXPECT_EQ(behindFields(played), "! 1: " + inQuotes(c.line) + " does not answer " +
                                            c.request + "\nend out-of-step\n");
    }
    const Played root = play("press 1090\n", [] { serveMenu(nothing); });
    EXPECT_EQ(root.transcript, "! 1: \"press 1090\" does not answer event\nend out-of-step\n");
    const Played box = play("menu New\nmenu Exit\n", [] {
        serveMenu(
            [](int) { WMessageBox(BoxOkAndCancel, BoxErrorIcon, BoxOk, "a \"b\"\rc", "ERROR"); });
    });
    EXPECT_EQ(box.transcript, "> 1: menu New\n"
                              "ask box \"ERROR\" \"a \\\"b\\\"|c\"\n"
                              "! 2: \"menu Exit\" does not answer box \"ERROR\" \"a \\\"b\\\"|c\"\n"
                              "end out-of-step\n");
}

TEST(ScriptTranscript, ChoosersBoxesAndTheEngine) {
    const auto program = [] {
        serveMenu([](int command) {
            std::string path = "old.std";
            if (command == Command::Open) {
                ToolkitFileChooser("Choose KELDRIN file|*.std|", ChooseExisting, path,
                                   "Open KELDRIN file");
            } else if (command == Command::Save) {
                ToolkitFileChooser("Save std file|*.std|     ", 11, path, "Save");
            } else {
                IOsCommand({"rkeldrin", path}, 2);
                ToolkitTrace("info", std::to_string(ToolkitErrorState(ErrorNumber)) + " " +
                                         std::to_string(ToolkitErrorState(ErrorOfSystem)));
            }
        });
    };
    const Played played = play("menu Open\nfile \"a b\"\nmenu Open\nfile cancel\n"
                               "menu Save\nfile new\n"
                               "menu New\nengine fail 2\nmenu New\nengine error 5\n"
                               "menu New\nengine fail 0\nmenu New\nengine exit 7\nclose\n",
                               program);
    EXPECT_EQ(played.code, 0);
    const std::string ask =
        "ask file open \"Open KELDRIN file\" \"Choose KELDRIN file|*.std|\" from "
        "\"old.std\"\n";
    const std::string run = "ask run \"rkeldrin\" \"old.std\"\n";
    EXPECT_EQ(
        played.transcript,
        "> 1: menu Open\n" + ask + "> 2: file \"a b\"\ngot file \"a b\"\n" + "> 3: menu Open\n" +
            ask + "> 4: file cancel\ngot file cancel\n" +
            "> 5: menu Save\nask file save \"Save\" \"Save std file|*.std|\" from \"old.std\"\n"
            "> 6: file new\ngot file \"new.std\"\n"
            "> 7: menu New\n" +
            run + "> 8: engine fail 2\ngot run fail 2\ninfo 13 2\n" + "> 9: menu New\n" + run +
            "> 10: engine error 5\ngot run error 5\ninfo 5 0\n" + "> 11: menu New\n" + run +
            "> 12: engine fail 0\ngot run fail 0\ninfo 13 0\n" + "> 13: menu New\n" + run +
            "> 14: engine exit 7\ngot run exit 7\ninfo 0 0\n" + "> 15: close\nend program\n");

    EXPECT_EQ(play("menu Open\n", program).code, ScriptEndedInRequest);
    EXPECT_EQ(play("menu Open\n", program).transcript, "> 1: menu Open\n" + ask + "end script\n");
    const Played unattended = play("auto file \"Open*\" x.std\nmenu Open\n", program);
    EXPECT_EQ(unattended.code, 0) << "a standing answer serves when no line is left";
}

TEST(ScriptTranscript, StandingAnswersAndTheOrderOfChecks) {
    const auto program = [] {
        serveMenu([](int) {
            ToolkitTrace("info", "before");
            WMessageBox(BoxOkAndCancel, BoxErrorIcon, BoxOk, "trouble", "ERROR");
            ToolkitTrace("info", "after");
        });
    };
    const Played played = play("auto box ok\n"
                               "menu New\n"
                               "expect info after\n" // held back till the box has been answered
                               "expect got box ok\n"
                               "auto off\n"
                               "menu New\n"
                               "expect ask box*\n"
                               "reject info after\n"
                               "box cancel\n"
                               "expect info after\n"
                               "reject info before\n"
                               "menu New\n"
                               "auto box \"WARN*\" cancel\n"
                               "auto box \"ERR*\" ok\n"
                               "show title\n",
                               program);
    EXPECT_EQ(played.code, 0) << played.transcript;
    EXPECT_EQ(played.transcript.find('!'), std::string::npos) << played.transcript;
    EXPECT_NE(played.transcript.find("> 14: auto box \"ERR*\" ok\ngot box ok\n"), std::string::npos)
        << played.transcript;
    EXPECT_NE(played.transcript.find("> 15: show title\ntitle\nend script\n"), std::string::npos)
        << played.transcript;
}

TEST(ScriptTranscript, AFailedCheckIsTheLeastOfTheCodes) {
    const auto program = [] {
        serveMenu([](int) { WMessageBox(BoxOkAndCancel, BoxErrorIcon, BoxOk, "a", "ERROR"); });
    };
    const Played played = play("expect *no such line*\nreject note x\nnote x\nreject note ?\n"
                               "menu Exit\n",
                               program);
    EXPECT_EQ(played.code, ScriptCheckFailed);
    EXPECT_EQ(played.transcript, "> 1: expect *no such line*\n"
                                 "! 1: no line matches: *no such line*\n"
                                 "> 2: reject note x\n"
                                 "> 3: note x\nnote x\n"
                                 "> 4: reject note ?\n"
                                 "! 4: a line matches: note ?\n"
                                 "> 5: menu Exit\nend program\n")
        << "lines of the scenario itself are never matched";
    EXPECT_EQ(play("expect x\nmenu New\n", program).code, ScriptEndedInRequest);
    EXPECT_EQ(play("expect x\nmenu New\nclose\n", program).code, ScriptOutOfStep);
}

TEST(ScriptTranscript, DrawingIsToldOnceBeforeARequest) {
    const auto draw = [] {
        IGrArea(0.0F, 0.0F, 1.0F, 1.0F);
        IGrUnits(0.0F, 0.0F, 24.0F, 18.0F);
        ToolkitClearPage();
        ToolkitPageKind("page");
        ToolkitMoveTo(1.0F, 2.0F);
        ToolkitLineTo(3.0F, 4.0F);
    };
    const Played played = play("expose\nkey n\nshow drawing\nmenu Exit\n", [&] {
        draw();
        ToolkitEvent event;
        do {
            ToolkitNextEvent(event);
            if (event.type == EventExposure) {
                draw();
                draw();
            }
        } while (event.type != EventMenu);
    });
    const std::string told =
        "draw page texts=0 lines=1 points=2 markers plus=0 dot=0 red=0 blue=0 black=0\n";
    EXPECT_EQ(played.transcript, told + "> 1: expose\n" + told +
                                     "> 2: key n\n> 3: show drawing\n"
                                     "line BLACK 2 1.00 2.00 3.00 4.00\n"
                                     "> 4: menu Exit\nend program\n");
}

TEST(ScriptTranscript, TheMouse) {
    const Played played =
        play("click left 1.5 11.5\ndrag right 6 9 12 4.5\n"
             "drag left 1 1 2 2 aborted\nclick middle 3 3 double\nwheel down 2\n",
             [] {
                 IGrArea(0.0F, 0.0F, 1.0F, 1.0F);
                 IGrUnits(0.0F, 0.0F, 24.0F, 18.0F);
                 ToolkitEvent event;
                 for (;;) {
                     ToolkitNextEvent(event);
                     std::ostringstream seen;
                     seen << event.type << ':' << event.value << " at " << event.x << ' '
                          << event.y;
                     if (event.type == EventClose) {
                         return;
                     }
                     if (event.type == EventMouseDown && event.value != 2 && event.value < 4) {
                         int end = 0;
                         WGrInput(RubberRectangle, event.x, event.y, end);
                         seen << " to " << event.x << ' ' << event.y << " ended by " << end;
                     }
                     ToolkitTrace("note", seen.str());
                 }
             });
    EXPECT_EQ(played.transcript, "> 1: click left 1.5 11.5\n"
                                 "note 4:1 at 1.5 11.5 to 1.5 11.5 ended by 5\n"
                                 "> 2: drag right 6 9 12 4.5\n"
                                 "note 4:3 at 6 9 to 12 4.5 ended by 5\n"
                                 "> 3: drag left 1 1 2 2 aborted\n"
                                 "note 4:1 at 1 1 to 2 2 ended by 1\n"
                                 "> 4: click middle 3 3 double\n"
                                 "note 4:2 at 3 3\nnote 5:2 at 3 3\n"
                                 "note 4:2 at 3 3\nnote 5:2 at 3 3\n"
                                 "> 5: wheel down 2\n"
                                 "note 4:5 at 12 9\nnote 4:5 at 12 9\n"
                                 "end script\n");
    EXPECT_EQ(played.code, 0);
}

TEST(ScriptTranscript, SetUpBeforeTheStartAndShownStates) {
    const std::string original = testing::TempDir() + "keldrin_transcript_one.txt";
    const std::string file = testing::TempDir() + "keldrin_transcript_copy.txt";
    putFile(original, "first\nsecond\n");
    const Played played = play(
        "screen 800 600\nclock 2024-05-06 07:08:09\nsurface off\ncopy \"" + original + "\" \"" +
            file + "\"\nresize 500 400\nshow menu\nshow title\nshow log\nshow file \"" + file +
            "\"\ndelete \"" + file + "\"\nshow exists \"" + file + "\"\nsurface on\n" +
            "show file \"" + file + "\"\n",
        [&] {
            EXPECT_TRUE(pathExists(file)) << "set up before the program";
            EXPECT_EQ(ToolkitScreenInfo(ScreenWidth), 800);
            EXPECT_FALSE(ToolkitHasSurface());
            WindowTitle("KELDRIN  ");
            WindowTitle("KELDRIN  ");
            ToolkitTrace("info", dateText(clockNow()) + " " + timeText(clockNow()));
            ToolkitTrace("info", "");
            WMenuSetState(Command::Invert, MenuEntryEnabled, 1);
            WMenuSetState(Command::Invert, MenuEntryEnabled, 1);
            serveMenu(nothing);
            EXPECT_TRUE(ToolkitHasSurface());
        });
    EXPECT_EQ(played.code, ScriptCheckFailed) << "a file that is gone cannot be shown";
    const std::size_t start = played.transcript.find("title KELDRIN\n");
    ASSERT_NE(start, std::string::npos) << played.transcript;
    const std::string behind = played.transcript.substr(start);
    EXPECT_EQ(behind.substr(0, behind.find("> 9: ")),
              "title KELDRIN\ninfo 06/05/2024 07:08:09\ninfo\nmenu on Invert\n"
              "> 5: resize 500 400\nwindow 500 400\n"
              "> 6: show menu\nmenu off Edit Line Names\nmenu on Invert\n"
              "> 7: show title\ntitle KELDRIN\n"
              "> 8: show log\ninfo 06/05/2024 07:08:09\ninfo\n");
    EXPECT_NE(behind.find("| first\n| second\n"), std::string::npos) << behind;
    EXPECT_NE(behind.find("\nexists " + file + " no\n"), std::string::npos) << behind;
}

TEST(ScriptTranscript, NoProgressEndsTheRun) {
    const Played played = play("auto box ok\nmenu New\n", [] {
        serveMenu([](int) {
            for (;;) {
                WMessageBox(BoxOkAndCancel, BoxErrorIcon, BoxOk, "again", "ERROR");
            }
        });
    });
    EXPECT_EQ(played.code, ScriptNoProgress);
    EXPECT_EQ(play("",
                   [] {
                       WDialogLoad(SampleFields);
                       WDialogShow(-1, -1, 0, DialogModelessAlone);
                       ToolkitEvent event;
                       for (;;) {
                           ToolkitNextEvent(event); // pays no heed to a close request
                       }
                   })
                  .code,
              ScriptNoProgress);
}

TEST(ScriptTranscript, FaultsReachTheReaderOfTheErrorState) {
    const Played played = play("fault 77 \"no pen\" 2\nmenu Exit\n", [] {
        for (int i = 0; i < 3; ++i) {
            const int state = ToolkitErrorState(ErrorNumber);
            ToolkitTrace("info", std::to_string(state) + " " + ToolkitErrorText(state));
        }
        serveMenu(nothing);
    });
    EXPECT_NE(played.transcript.find("info 77 no pen\ninfo 77 no pen\ninfo 0 "), std::string::npos)
        << played.transcript;
}

} // namespace
} // namespace keldrin
