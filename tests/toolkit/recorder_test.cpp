#include "toolkit/scripted/recorder.h"

#include "page/drawing.h"
#include "support/files.h"
#include "support/temporary_directory.h"
#include "toolkit/sample_dialogs.h"
#include "toolkit/sample_menu.h"
#include "toolkit/scripted/answering_backend.h"
#include "toolkit/scripted/script.h"
#include "toolkit/toolkit_state.h"
#include "toolkit/user_edits.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace keldrin {
namespace {

using testing::ElementsAre;

/// A toolkit without a user; the test queues what one would do, and the recorder takes it down.
class RecorderTest : public testing::Test {
  protected:
    RecorderTest() {
        ToolkitInit(backend, {"keldrin"});
        WindowOpen(ResizableWindow, -1, -1, 1000, 800);
        ToolkitRecord(&recorder, nullptr);
    }
    ~RecorderTest() override {
        recorder.stop();
        fixClock(std::nullopt);
        ToolkitClose();
    }

    // Gives the logic an event, as it would wait for it.
    static ToolkitEvent serve(const RawEvent &raw) {
        queueEvent(raw);
        ToolkitEvent event;
        ToolkitNextEvent(event);
        return event;
    }
    static ToolkitEvent serveMouse(int type, int button, double xCm, double yCm,
                                   bool second = false) {
        return serve({type, button, 0, xCm / 24.0, yCm / 18.0, second});
    }

    // The lines of the file as they are now, except the heading.
    [[nodiscard]] std::vector<std::string> lines() const {
        std::vector<std::string> result;
        const std::string text = fileContent(path);
        for (std::size_t at = 0; at < text.size(); at = text.find('\n', at) + 1) {
            const std::string line = text.substr(at, text.find('\n', at) - at);
            if (line.front() != '#' && line.compare(0, 7, "screen ") != 0) {
                result.push_back(line);
            }
        }
        result.erase(result.begin()); // the clock at the start
        return result;
    }
    void start() { EXPECT_TRUE(recorder.start(path, {"a heading"}, false)); }

    TemporaryDirectory directory;
    const std::string path = directory.path("line.scn");
    AnsweringBackend backend;
    Recorder recorder;
};

TEST_F(RecorderTest, AGestureIsInTheFileAtOnceAndBecomesWhatItTurnsOutToBe) {
    start();
    serveMouse(EventMouseDown, MouseLeft, 3.25, 10.0);
    EXPECT_THAT(lines(), ElementsAre("click left 3.25 10")) << "before the program acts on it";
    serveMouse(EventMouseUp, MouseLeft, 3.25, 10.0);
    serveMouse(EventMouseDown, MouseLeft, 3.25, 10.0, true);
    serveMouse(EventMouseUp, MouseLeft, 3.25, 10.0);
    serveMouse(EventMouseDown, int{MouseRight} | KeyWithShift, 1.0, 2.0);
    serveMouse(EventMouseUp, MouseRight, 4.5, 6.0);
    serveMouse(EventMouseDown, WheelDown, 1.0, 2.0);
    EXPECT_THAT(lines(), ElementsAre("click left 3.25 10 double", "drag shift right 1 2 4.5 6",
                                     "wheel down"));
    float x = 1.0F;
    float y = 1.0F;
    int end = 0;
    serveMouse(EventMouseDown, int{MouseLeft} | KeyWithCtrl, 1.0, 2.0);
    queueEvent({EventKey, KeyEscape, 0, 0.0, 0.0});
    WGrInput(RubberRectangle, x, y, end);
    EXPECT_EQ(lines().back(), "drag ctrl left 1 2 0 0 aborted");
}

TEST_F(RecorderTest, ASecondPressThatIsDroppedStaysPartOfItsClick) {
    start();
    serveMouse(EventMouseDown, MouseLeft, 5.0, 5.0);
    serveMouse(EventMouseUp, MouseLeft, 5.0, 5.0);
    ToolkitDropSecondPress();
    queueEvent({EventMouseDown, MouseLeft, 0, 5.0 / 24.0, 5.0 / 18.0, true});
    serve({EventKey, 'n', 0, 0.0, 0.0});
    EXPECT_THAT(lines(), ElementsAre("click left 5 5 double", "key n"));
}

TEST_F(RecorderTest, TheProgramGetsThePlaceThatIsTakenDown) {
    start();
    IGrArea(0.0F, 0.0F, 1.0F, 1.0F);
    IGrUnits(0.0F, 0.0F, 24.0F, 18.0F);
    const ToolkitEvent event = serveMouse(EventMouseDown, MouseLeft, 3.00004999, 1.23456789);
    EXPECT_THAT(lines(), ElementsAre("click left 3 1.2346"));
    EXPECT_EQ(event.x, 3.0F);
    EXPECT_EQ(event.y, static_cast<float>(1.2346));
}

TEST_F(RecorderTest, WordsAreQuotedWhereTheyMustBe) {
    start();
    WDialogLoad(SampleFields);
    WDialogPutMenu(1008, {"Moving-Loop", "#1", "In Loop", "In Loop"}, 1);
    WDialogShow(-1, -1, 0, DialogModeless);
    DialogModel &dialog = *topDialog();
    typeText(dialog, 1072, " two  \"O'Brien\" \\");
    commitField(dialog, 1072);
    typeText(dialog, 1072, "");
    commitField(dialog, 1072);
    userChooses(dialog, 1008, 2);
    userChooses(dialog, 1008, 4);
    userChooses(dialog, 1008, 1);
    const std::vector<std::string> said = lines();
    EXPECT_THAT(said, ElementsAre("set 1072 \" two  \\\"O'Brien\\\" \\\\\"", "set 1072 \"\"",
                                  "set 1008 #2", "set 1008 #4", "set 1008 Moving-Loop"));
    WDialogUnload();
    serve({EventKey, '"', 0, 0.0, 0.0});
    serve({EventKey, ' ', 0, 0.0, 0.0});
    serve({EventKey, KeyWithCtrl | KeyWithShift | 'Z', 0, 0.0, 0.0});
    Script script;
    EXPECT_TRUE(readScript(path, script).empty()) << fileContent(path);
    EXPECT_EQ(std::get<FieldEntry>(script.lines[2].action).value, " two  \"O'Brien\" \\");
    EXPECT_EQ(std::get<KeyPress>(script.lines[7].action).code, '"');
}

TEST_F(RecorderTest, OfSeveralStepsOfATrackbarOnlyTheServedOneIsTakenDown) {
    start();
    WDialogLoad(SampleFields);
    ToolkitDialogOption(FieldChangeEvents, 1);
    WDialogPutMenu(1008, {"a", "b", "c"}, 1);
    WDialogShow(-1, -1, 0, DialogModeless);
    userChooses(*topDialog(), 1008, 2);
    userChooses(*topDialog(), 1008, 3);
    EXPECT_TRUE(lines().empty()) << "the program knows nothing of it yet";
    ToolkitEvent event;
    ToolkitNextEvent(event);
    userPresses(*topDialog(), ButtonContinue);
    ToolkitNextEvent(event);
    EXPECT_THAT(lines(), ElementsAre("set 1008 c", "press Continue"));
    WDialogUnload();
}

TEST_F(RecorderTest, AMomentThatWasReadStandsBeforeTheLineThatLedToIt) {
    fixClock(DateTime{2026, 5, 14, 9, 30, 0});
    start();
    serve({EventKey, 'a', 0, 0.0, 0.0});
    fixClock(DateTime{2026, 5, 14, 9, 30, 7});
    serve({EventKey, 'b', 0, 0.0, 0.0});
    static_cast<void>(clockNow());
    fixClock(DateTime{2026, 5, 14, 9, 31, 0});
    serve({EventKey, 'c', 0, 0.0, 0.0});
    serve({EventKey, 'd', 0, 0.0, 0.0});
    EXPECT_THAT(lines(),
                ElementsAre("key a", "clock 2026-05-14 09:30:07", "key b", "key c", "key d"));
}

TEST_F(RecorderTest, WhileItRecordsTheClockStandsStillAndThenGoesOn) {
    EXPECT_FALSE(clockIsFixed());
    start();
    serve({EventKey, 'a', 0, 0.0, 0.0});
    EXPECT_TRUE(clockIsFixed());
    recorder.stop();
    EXPECT_FALSE(clockIsFixed());
}

TEST_F(RecorderTest, ARecordThatBeginsWithinACommandHasTheLinesThatLedThere) {
    recorder.rests({"menu Review Data", "set 1057 12", "key x"});
    serve({EventMenu, Command::New, 0, 0.0, 0.0});
    serve({EventKey, 'n', 0, 0.0, 0.0});
    start();
    serve({EventKey, 'p', 0, 0.0, 0.0});
    EXPECT_THAT(lines(), ElementsAre("menu Review Data", "set 1057 12", "key x", "menu New",
                                     "key n", "key p"));
    recorder.rests({});
    start();
    EXPECT_TRUE(lines().empty());
}

TEST_F(RecorderTest, WhatIsDrainedWithoutALookIsNotTakenDown) {
    start();
    queueEvent({EventKey, 'a', 0, 0.0, 0.0});
    ToolkitEvent event;
    while (ToolkitPeekEvent(event)) {
    }
    ToolkitPutBack({EventMenu, Command::New, 0, 0.0F, 0.0F});
    ToolkitNextEvent(event);
    EXPECT_TRUE(lines().empty());
}

TEST_F(RecorderTest, AFileThatCannotBeWrittenIsTold) {
    EXPECT_FALSE(recorder.start(directory.path("no/such/line.scn"), {}, false));
#ifdef __linux__
    std::string failed;
    recorder.onFailure = [&](const std::string &which) {
        failed = which;
    };
    EXPECT_FALSE(recorder.start("/dev/full", {"heading"}, false));
    EXPECT_EQ(failed, "/dev/full");
    EXPECT_FALSE(recorder.isOn());
    EXPECT_FALSE(clockIsFixed());
#endif
}

} // namespace
} // namespace keldrin
