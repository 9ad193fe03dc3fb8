#include "toolkit/long_work.h"

#include "support/work_backend.h"
#include "toolkit/control_ids.h"
#include "toolkit/sample_dialogs.h"
#include "toolkit/user_edits.h"

#include <gmock/gmock.h>

#include <chrono>
#include <string>

namespace keldrin {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class LongWorks : public testing::Test {
  protected:
    LongWorks() {
        ToolkitInit(backend, {"keldrin"});
        WorkBackend::noticeEveryStep();
    }
    ~LongWorks() override { ToolkitClose(); }

    WorkBackend backend;
};

TEST_F(LongWorks, AreShownWithoutTheMenuAndStoppedForGood) {
    backend.stopAtStep(2);
    {
        LongWork work({"words"});
        EXPECT_TRUE(backend.shown);
        EXPECT_FALSE(backend.menuServed);
        EXPECT_TRUE(work.step(1, 4));
        EXPECT_FALSE(work.step(2, 4));
        EXPECT_FALSE(work.step(0, 0)) << "the window is served on, the answer stays";
        EXPECT_TRUE(work.stopped());
    }
    EXPECT_THAT(backend.fractions, ElementsAre(0.25, 0.5, -1.0));
    EXPECT_FALSE(backend.shown);
    EXPECT_TRUE(backend.menuServed);
    LongWork next({"words"});
    EXPECT_TRUE(next.step(1, 4)) << "another work begins anew";
}

TEST_F(LongWorks, WithinOtherWorkMoveThatOnesBar) {
    LongWork outer({"outer"});
    {
        LongWork inner({"inner", {}, &SampleWork});
        EXPECT_TRUE(inner.step(3, 4));
        backend.stopAtStep(2);
        EXPECT_FALSE(inner.step(4, 4));
    }
    EXPECT_TRUE(backend.shown);
    EXPECT_FALSE(outer.step(1, 2)) << "the user has stopped all of it";
    ASSERT_THAT(backend.works, SizeIs(1));
    EXPECT_EQ(backend.works[0].words, "outer");
}

TEST_F(LongWorks, GiveWayToWhateverIsAsked) {
    LongWork work({"words"});
    EXPECT_EQ(WMessageBox(BoxOkAndCancel, BoxErrorIcon, BoxOk, "text", "ERROR"), BoxOk);
    EXPECT_EQ(backend.boxesDuringWork, 0);
    EXPECT_TRUE(backend.shown);
    backend.beforeAnswer = [this](AnsweringBackend &, int) {
        EXPECT_FALSE(backend.shown);
    };
    WDialogLoad(SampleAzimuths);
    WDialogShow(-1, -1, 0, DialogModal);
    WDialogUnload();
    EXPECT_TRUE(backend.shown);
    EXPECT_FALSE(backend.menuServed) << "the end of a dialog is not the end of the work";
    EXPECT_TRUE(work.step(1, 2));
}

TEST_F(LongWorks, LeaveTheMenuAsideWhileADialogIsUp) {
    WDialogLoad(SampleStations);
    WDialogShow(-1, -1, 0, DialogModeless);
    { const LongWork work({"words"}); }
    EXPECT_FALSE(backend.menuServed);
}

TEST_F(LongWorks, ReachTheWindowSystemNowAndThenOnly) {
    toolkitState().stepPause = std::chrono::hours(1);
    LongWork work({"words"});
    for (int i = 0; i < 1000; ++i) {
        EXPECT_TRUE(work.step(i, 1000));
    }
    EXPECT_THAT(backend.fractions, SizeIs(1)) << "the first comes at once";
}

TEST_F(LongWorks, OutliveTheToolkit) {
    LongWork work({"words"});
    ToolkitClose();
    EXPECT_TRUE(work.step(1, 2));
    const LongWork alone({"words"});
}

TEST_F(LongWorks, ACloseRequestIsRememberedForTheNextWait) {
    {
        LongWork work({"words", {}, &SampleWork});
        userAsksToClose();
        EXPECT_TRUE(work.step(1, 2)) << "it does not stop the work";
        ToolkitEvent event;
        EXPECT_FALSE(ToolkitPeekEvent(event));
    }
    ToolkitEvent event;
    ToolkitNextEvent(event);
    EXPECT_EQ(event.type, EventClose);
    EXPECT_EQ(event.window, 0);
}

TEST(WorkDialogs, HoldWordsABarAndTheButtonThatStops) {
    for (const DialogSpec *spec : {&SampleWork, &ProgressDialog}) {
        DialogModel dialog = makeWorkDialog({"some words", "A caption", spec});
        EXPECT_EQ(dialog.number, spec->number);
        EXPECT_EQ(dialog.caption, "A caption");
        EXPECT_EQ(dialog.defaultButton, 0) << "Enter must not end an inversion";
        EXPECT_EQ(findControl(dialog, WorkWords)->label, "some words");
        EXPECT_EQ(findControl(dialog, WorkBar)->kind, ControlKind::Bar);
        EXPECT_TRUE(userCloses(dialog));
        EXPECT_EQ(dialog.endButton, ButtonCancel);
        EXPECT_TRUE(toolkitState().queue.empty());
    }
    EXPECT_EQ(makeWorkDialog({"words", {}, &SampleWork}).caption, "Inversion is running");
}

} // namespace
} // namespace keldrin
