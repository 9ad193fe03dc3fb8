#include "page/drawing.h"
#include "toolkit/control_ids.h"
#include "toolkit/sample_dialogs.h"
#include "toolkit/sample_menu.h"
#include "toolkit/scripted/answering_backend.h"
#include "toolkit/toolkit_state.h"
#include "toolkit/user_edits.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace keldrin {
namespace {

/// A toolkit without a user, whose events the test queues by itself.
class DialogEvents : public testing::Test {
  protected:
    DialogEvents() {
        ToolkitInit(backend, {"keldrin"});
        WindowOpen(ResizableWindow, -1, -1, 1000, 800);
    }
    ~DialogEvents() override { ToolkitClose(); }

    // The events that can be had without waiting, as "type:value" each.
    static std::vector<std::string> waiting() {
        std::vector<std::string> events;
        ToolkitEvent event;
        while (ToolkitPeekEvent(event)) {
            events.push_back(std::to_string(event.type) + ":" + std::to_string(event.value));
        }
        return events;
    }
    static void showConfiguration() {
        WDialogLoad(SampleFields);
        ToolkitDialogOption(FieldChangeEvents, 1);
        WDialogShow(-1, -1, ButtonContinue, DialogModelessAlone);
    }

    AnsweringBackend backend;
    using Events = std::vector<std::string>;
};

TEST_F(DialogEvents, ATypedFieldIsCommittedJustBeforeAButton) {
    showConfiguration();
    typeText(*topDialog(), 1122, "1");
    typeText(*topDialog(), 1122, "103.4");
    EXPECT_EQ(waiting(), Events{}) << "not while it is being typed";
    userPresses(*topDialog(), ButtonContinue);
    EXPECT_EQ(waiting(), (Events{"10:1122", "3:1090"}));

    typeText(*topDialog(), 1025, "60");
    typeText(*topDialog(), 1026, "32"); // the focus leaves the first field
    EXPECT_EQ(waiting(), Events{"10:1025"});
    WDialogPutMenu(1006, {"m", "ft"}, 1);
    userChooses(*topDialog(), 1006, 2);
    userChooses(*topDialog(), 1006, 2); // no change
    EXPECT_EQ(waiting(), (Events{"10:1026", "10:1006"}));

    ToolkitDialogOption(FieldChangeEvents, 0);
    typeText(*topDialog(), 1025, "70");
    commitField(*topDialog(), 1025);
    EXPECT_EQ(waiting(), Events{});
}

TEST_F(DialogEvents, TheKeyThatRollsThePanelIsTheToolkitsOwn) {
    struct Rolled : AnsweringBackend {
        int times = 0;
        void rollPanel() override { ++times; }
    } rolled;
    ToolkitClose();
    ToolkitInit(rolled, {"keldrin"});
    queueEvent({EventKey, KeyF3, 0, 0.0, 0.0});
    queueEvent({EventKey, 'N', 0, 0.0, 0.0});
    EXPECT_EQ(waiting(), Events{"1:78"});
    EXPECT_EQ(rolled.times, 1);
    ToolkitClose();
    ToolkitInit(backend, {"keldrin"});
}

TEST_F(DialogEvents, RepeatedChangesOfOneFieldOrOfTheSizeCountOnce) {
    showConfiguration();
    for (const char *text : {"1", "2", "3"}) {
        typeText(*topDialog(), 1025, text);
        commitField(*topDialog(), 1025);
    }
    queueEvent({EventResize, 0, 0, 0.0, 0.0});
    queueEvent({EventResize, 0, 0, 0.0, 0.0});
    typeText(*topDialog(), 1025, "4");
    commitField(*topDialog(), 1025);
    EXPECT_EQ(waiting(), (Events{"10:1025", "8:0", "10:1025"}));
}

TEST_F(DialogEvents, ATrackbarIsHeldInItsRangeAndReadWhereItStands) {
    WDialogLoad(SampleStations);
    ToolkitDialogOption(FieldChangeEvents, 1);
    WDialogRangeTrackbar(1057, 1, 5, 1);
    WDialogPutTrackbar(1057, 2);
    WDialogShow(-1, -1, 0, DialogModeless);
    for (const int position : {3, 4, 99}) {
        userMoves(*topDialog(), 1057, position);
    }
    int position = 0;
    EXPECT_EQ(waiting(), Events{"10:1057"}) << "folded to the last";
    EXPECT_TRUE(WDialogGetTrackbar(1057, position));
    EXPECT_EQ(position, 5);
    userMoves(*topDialog(), 1057, 7);
    EXPECT_EQ(waiting(), Events{}) << "it has not moved";
    userCloses(*topDialog());
    EXPECT_EQ(waiting(), Events{"3:1084"});
}

TEST_F(DialogEvents, TheRootWindowIsServedAsTheDialogAllows) {
    const auto queueAll = [] {
        queueEvent({EventMenu, Command::New, 0, 0.0, 0.0});
        queueEvent({EventKey, 'n', 0, 0.0, 0.0});
        queueEvent({EventMouseDown, 1, 0, 0.5, 0.5});
        queueEvent({EventMouseMove, 0, 0, 0.5, 0.5});
        queueEvent({EventExposure, 0, 0, 0.0, 0.0});
        queueEvent({EventClose, 0, 0, 0.0, 0.0});
    };
    queueAll();
    queueEvent({EventMenu, Command::Edit, 0, 0.0, 0.0}); // greyed from the start
    EXPECT_EQ(waiting(), (Events{"2:101", "1:110", "4:1", "7:0", "9:0"}));
    WMenuSetState(Command::Edit, MenuEntryEnabled, 1);
    queueEvent({EventMenu, Command::Edit, 0, 0.0, 0.0});
    EXPECT_EQ(waiting(), Events{"2:104"});
    showConfiguration();
    queueAll();
    EXPECT_EQ(waiting(), (Events{"7:0", "9:0"}));
    WDialogUnload();
    WDialogLoad(SampleFields);
    WDialogShow(-1, -1, 0, DialogModeless);
    queueAll();
    EXPECT_EQ(waiting(), (Events{"1:110", "4:1", "7:0", "9:0"}));
}

TEST_F(DialogEvents, ARubberBandEndsByWhatWasPressedBeforeItBegan) {
    IGrUnits(0.0F, 0.0F, 24.0F, 18.0F);
    const auto bandFrom = [](float x, float y) {
        int end = EventNone;
        WGrInput(RubberRectangle, x, y, end);
        return std::to_string(end) + " " + std::to_string(std::lround(x)) + "," +
               std::to_string(std::lround(y));
    };
    EXPECT_EQ(bandFrom(3.0F, 4.0F), "5 3,4") << "the backend's own end";
    queueEvent({EventExposure, 0, 0, 0.0, 0.0});
    queueEvent({EventMouseMove, 0, 0, 0.1, 0.1});
    queueEvent({EventMouseUp, 1, 0, 0.5, 0.5});
    queueEvent({EventMouseUp, 1, 0, 0.75, 0.5});
    EXPECT_EQ(bandFrom(3.0F, 4.0F), "5 12,9");
    EXPECT_EQ(waiting(), (Events{"7:0", "5:1"}));
    queueEvent({EventKey, 'x', 0, 0.0, 0.0});
    EXPECT_EQ(bandFrom(3.0F, 4.0F).substr(0, 2), "1 ");
    queueEvent({EventClose, 0, 0, 0.0, 0.0});
    EXPECT_EQ(bandFrom(3.0F, 4.0F).substr(0, 2), "9 ");
    EXPECT_EQ(waiting(), Events{"9:0"}) << "for the loop to see";
}

TEST_F(DialogEvents, ANestedDialogLeavesTheOuterOneAsItWas) {
    showConfiguration();
    WDialogPutInteger(1024, 7);
    typeText(*topDialog(), 1025, "60");
    commitField(*topDialog(), 1025);
    std::vector<int> asked;
    backend.beforeAnswer = [&](AnsweringBackend &answers, int dialog) {
        asked.push_back(dialog);
        EXPECT_FALSE(answers.edit(1091, "x")) << "disabled by its table";
        EXPECT_FALSE(answers.edit(1092, "#3")) << "no such entry";
        EXPECT_TRUE(answers.edit(1092, "nV/Am2"));
    };
    const int outer = ToolkitDialogInfo(DialogSelected);
    WDialogLoad(SampleNames);
    WDialogPutMenu(1092, {"uV/A", "nV/Am2"}, 1);
    WDialogShow(-1, -1, ButtonContinue, DialogModal);
    EXPECT_EQ(ToolkitDialogInfo(DialogEndButton), ButtonContinue);
    int choice = 0;
    EXPECT_TRUE(WDialogGetMenu(1092, choice));
    EXPECT_EQ(choice, 2);
    WDialogUnload();
    EXPECT_EQ(ToolkitDialogInfo(DialogSelected), 0);
    int turns = 0;
    EXPECT_FALSE(WDialogGetInteger(1024, turns)) << "no dialog is selected";
    WDialogSelect(outer);
    EXPECT_TRUE(WDialogGetInteger(1024, turns));
    EXPECT_EQ(turns, 7);
    EXPECT_EQ(asked, std::vector<int>{SampleNames.number});
    EXPECT_EQ(waiting(), Events{"10:1025"}) << "a dialog that blocks sends no field changes";
}

TEST_F(DialogEvents, AnsweringServesEditsThenTheDefaultButton) {
    int calls = 0;
    backend.beforeAnswer = [&](AnsweringBackend &answers, int) {
        ++calls;
        EXPECT_TRUE(answers.edit(1025, "60"));
        EXPECT_TRUE(answers.edit(1043, "line7"));
    };
    showConfiguration();
    Events events;
    ToolkitEvent event;
    do {
        ToolkitNextEvent(event);
        events.push_back(std::to_string(event.type) + ":" + std::to_string(event.value));
    } while (event.type != EventButton && events.size() < 9);
    EXPECT_EQ(events, (Events{"10:1025", "10:1043", "3:1090"}));
    EXPECT_EQ(calls, 1);
    userPresses(*topDialog(), ButtonContinue);
    WDialogUnload();
    EXPECT_EQ(waiting(), Events{}) << "events of a dialog that is gone";
    ToolkitNextEvent(event);
    EXPECT_EQ(event.type, EventClose) << "nobody is there to give another event";

    backend.beforeAnswer = [](AnsweringBackend &answers, int) {
        answers.pressInstead(ButtonCancel);
    };
    WDialogLoad(SampleAreas);
    WDialogShow(-1, -1, ButtonContinue, DialogModal);
    EXPECT_EQ(ToolkitDialogInfo(DialogEndButton), ButtonCancel);
    backend.beforeAnswer = nullptr;
    WDialogShow(-1, -1, ButtonContinue, DialogModal);
    EXPECT_EQ(ToolkitDialogInfo(DialogEndButton), ButtonContinue);
}

TEST_F(DialogEvents, DisabledButtonsCannotBePressed) {
    showConfiguration();
    WDialogFieldState(ButtonContinue, false);
    EXPECT_FALSE(userPresses(*topDialog(), ButtonContinue));
    EXPECT_FALSE(userPresses(*topDialog(), 1025)) << "no button";
    EXPECT_TRUE(userCloses(*topDialog()));
    EXPECT_EQ(waiting(), Events{"3:1084"});
}

} // namespace
} // namespace keldrin
