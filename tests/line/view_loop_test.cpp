#include "line/view_loop.h"

#include "line/line_pages.h"
#include "shell/menu.h"
#include "toolkit/scripted/answering_backend.h"
#include "toolkit/toolkit_state.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

namespace keldrin {
namespace {

using testing::IsEmpty;

class StatusBackend : public AnsweringBackend {
  public:
    void setStatus(StatusPart part, std::string_view text) override { status[part] = text; }
    void setPointerText(const PointerText &text) override { pointer = text; }

    std::map<StatusPart, std::string> status;
    PointerText pointer;
};

class ViewLoopTest : public testing::Test {
  protected:
    ViewLoopTest() {
        offerMenu();
        ToolkitInit(backend, {"keldrin"});
        WindowOpen(ResizableWindow, -1, -1, 800, 600);
        for (int i = 0; i < 30; ++i) {
            SoundingRecord sounding;
            sounding.East = i * 50.0;
            sounding.North = 0.0;
            sounding.RxStn = 1000.0 + i;
            survey.hTrn.push_back(sounding);
        }
        survey.SoundingCount = 30;
        WMenuSetState(Command::Plan, MenuEntryEnabled, 1);
    }
    ~ViewLoopTest() override { ToolkitClose(); }
    ViewLoopTest(const ViewLoopTest &) = delete;
    ViewLoopTest &operator=(const ViewLoopTest &) = delete;

    static void press(int key) { queueEvent({EventKey, key, 0, 0.0, 0.0}); }
    ViewEnd view() { return View_Loop(survey, state, "line.std"); }

    StatusBackend backend;
    SurveyModel survey;
    ViewState state{Command::Plan, 1};
};

TEST_F(ViewLoopTest, KeysMoveTheMarkWithinTheLine) {
    struct Case {
        int from;
        int key;
        int to;
    };
    for (const Case c :
         {Case{1, 'n', 2}, Case{1, KeyRight, 2}, Case{30, 'N', 30}, Case{2, 'P', 1},
          Case{1, KeyUp, 1}, Case{1, KeyEnd, 30}, Case{30, KeyHome, 1}, Case{5, KeyPageDown, 15},
          Case{25, KeyPageDown, 30}, Case{5, KeyPageUp, 1}}) {
        state = {Command::Plan, c.from};
        press(c.key);
        press(KeyEnter);
        EXPECT_EQ(view(), ViewEnd::ReviewAsked);
        EXPECT_EQ(state.sounding, c.to) << c.from << " " << c.key;
        EXPECT_EQ(state.page, Command::Plan) << "the page is shown again after the review";
    }
}

TEST_F(ViewLoopTest, EscapeAndXGoBack) {
    for (const int key : {static_cast<int>(KeyEscape), static_cast<int>('x')}) {
        state = {Command::Plan, 3};
        press(key);
        EXPECT_EQ(view(), ViewEnd::Left);
        EXPECT_EQ(state.page, 0);
        EXPECT_EQ(state.sounding, 3);
    }
    EXPECT_FALSE(backend.pointer);
    EXPECT_THAT(backend.status[StatusPart::Sounding], IsEmpty());
    EXPECT_THAT(backend.status[StatusPart::Notice], IsEmpty());
    EXPECT_THAT(toolkitState().contextEntries, IsEmpty());
}

// The notice of a command that was chosen from the page must not give way to the hint of the page.
TEST_F(ViewLoopTest, TheHintIsShownOnceForEachChoiceOfThePage) {
    press(KeyEnter);
    EXPECT_EQ(view(), ViewEnd::ReviewAsked);
    EXPECT_FALSE(state.isNew);
    ToolkitStatus(StatusPart::Notice, "8 iterations");
    press(KeyEscape);
    EXPECT_EQ(view(), ViewEnd::Left);
    EXPECT_EQ(backend.status[StatusPart::Notice], "8 iterations");
}

TEST_F(ViewLoopTest, CommandsOfTheMenuAreLeftToTheCaller) {
    queueEvent({EventMenu, Command::Save, 0, 0.0, 0.0});
    EXPECT_EQ(view(), ViewEnd::MenuChosen);
    ToolkitEvent event;
    ToolkitNextEvent(event);
    EXPECT_EQ(event.type, EventMenu);
    EXPECT_EQ(event.value, Command::Save);

    queueEvent({EventClose, 0, 0, 0.0, 0.0});
    EXPECT_EQ(view(), ViewEnd::Closed);
}

TEST_F(ViewLoopTest, ASoundingOfALongerLineIsHeldWithinThisOne) {
    state.sounding = 99;
    press(KeyEnter);
    EXPECT_EQ(view(), ViewEnd::ReviewAsked);
    EXPECT_EQ(state.sounding, 30);
}

// Only the press that follows the one which opened something is dropped.
TEST_F(ViewLoopTest, TheSecondPressOfADoubleClickIsDroppedOnce) {
    ToolkitDropSecondPress();
    for (const bool second : {true, false, true}) {
        queueEvent({EventMouseUp, MouseLeft, 0, 0.5, 0.5});
        queueEvent({EventMouseDown, MouseLeft, 0, 0.5, 0.5, second});
    }
    int presses = 0;
    for (ToolkitEvent event; ToolkitPeekEvent(event);) {
        presses += event.type == EventMouseDown ? 1 : 0;
    }
    EXPECT_EQ(presses, 2);
}

// One key shows a page in the main window, in the pages and in the review: the menu and the table
// of pages must name the same, and no key that the pages use for something else.
TEST_F(ViewLoopTest, MenuAndPagesHaveTheSameKeys) {
    for (const LinePageKind &kind : linePageKinds()) {
        const MenuEntry *entry = findShortcut(kind.key);
        ASSERT_NE(entry, nullptr) << kind.name;
        EXPECT_EQ(entry->command, kind.command);
        EXPECT_EQ(withoutMnemonic(entry->label), kind.name);
        EXPECT_EQ(entry->below, Command::View);
        EXPECT_EQ(std::string_view("NPX").find(kind.key), std::string_view::npos);
    }
}

} // namespace
} // namespace keldrin
