#include "conditioning/auto_skip_dialog.h"
#include "desktop/dialog_values.h"
#include "review/review_panel.h"
#include "review/values_dialog.h"
#include "sounding/plot_limits_dialog.h"
#include "toolkit/control_ids.h"
#include "toolkit/desktop/dialog_window.h"
#include "toolkit/desktop/page_area.h"
#include "toolkit/toolkit_state.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMainWindow>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace keldrin {
namespace {

/// A dialog of the review, filled and shown without blocking, and the keys that it leaves to the
/// page.
struct Shown {
    Shown(const DialogSpec &spec, QMainWindow &root) : model(makeDialog(spec)) {
        test::fillDialog(model);
        window = std::make_unique<DialogWindow>(model, &root);
        model.mode = DialogModeless;
        model.firstControl = spec.firstControl;
        window->keyHook = [this](int code) {
            left.push_back(code);
        };
        window->showAt({});
    }

    QRect geometry() const { return window->geometry(); }
    QScrollArea &scroll() const { return *window->findChild<QScrollArea *>(); }
    QScrollBar &scrollBar() const { return *scroll().verticalScrollBar(); }

    DialogModel model;
    std::unique_ptr<DialogWindow> window;
    std::vector<int> left;
};

class BesidePage : public testing::Test {
  protected:
    BesidePage() {
        root.setCentralWidget(new PageArea(new QWidget));
        page().setFocusPolicy(Qt::StrongFocus);
        root.resize(1280, 650);
        root.show();
        static_cast<void>(QTest::qWaitForWindowActive(&root));
        panel = std::make_unique<Shown>(ReviewDialog, root);
        page().setFocus();
    }
    ~BesidePage() override { toolkitState() = ToolkitState{}; }
    BesidePage(const BesidePage &) = delete;
    BesidePage &operator=(const BesidePage &) = delete;

    PageArea &area() { return dynamic_cast<PageArea &>(*root.centralWidget()); }
    QWidget &page() { return area().page(); }

    QMainWindow root;
    std::unique_ptr<Shown> panel;
};

TEST_F(BesidePage, AutoSkipStandsBelowThePanelAndThePageIsSeen) {
    const QSize alone = page().size();
    {
        const Shown skip(LiveAutoSkipDialog, root);
        EXPECT_EQ(page().size(), alone) << "there is room at its side";
        EXPECT_EQ(skip.scrollBar().maximum(), 0) << "it is seen whole";
        EXPECT_EQ(panel->scrollBar().maximum(), 0);
        for (const QSize size : {QSize(640, 480), QSize(766, 590), QSize(1600, 900)}) {
            root.resize(size);
            EXPECT_FALSE(skip.geometry().intersects(page().geometry())) << size.width();
            EXPECT_FALSE(panel->geometry().intersects(page().geometry())) << size.width();
            EXPECT_FALSE(panel->geometry().intersects(skip.geometry())) << size.width();
            EXPECT_TRUE(area().rect().contains(skip.geometry())) << size.width();
            EXPECT_GE(page().width(), 270) << size.width();
            EXPECT_GE(skip.geometry().height(), size.height() / 3) << size.width();
            QTest::qWait(1);
            EXPECT_EQ(skip.scroll().horizontalScrollBar()->maximum(), 0) << size.width();
        }
        panel->window->setPanelState({.side = PanelSide::Right, .rolledUp = true});
        area().layOut();
        EXPECT_EQ(skip.geometry().height(), area().height()) << "the strip stands outside of it";
        panel->window->setPanelState({.side = PanelSide::Left});
        area().layOut();
        EXPECT_EQ(panel->geometry().left(), 0);
        EXPECT_EQ(skip.geometry().right(), area().rect().right());
    }
    panel->window->setPanelState({});
    root.resize(1280, 650);
    EXPECT_EQ(page().size(), alone);
    EXPECT_EQ(panel->geometry().height(), area().height());
}

TEST_F(BesidePage, TheTableLeavesThePageHalfOfTheRoomAndTheFocus) {
    const Shown values(ValuesDialog, root);
    EXPECT_TRUE(page().hasFocus());
    for (const QSize size : {QSize(640, 480), QSize(766, 590), QSize(1280, 620)}) {
        root.resize(size);
        EXPECT_FALSE(values.geometry().intersects(page().geometry())) << size.width();
        EXPECT_GE(page().width(), size.width() / 3) << size.width();
    }
    EXPECT_EQ(panel->scrollBar().maximum(), 0) << "the table is scrolled, not the panel";
    EXPECT_GE(values.geometry().height(), area().height() / 2);
    const Shown skip(LiveAutoSkipDialog, root);
    EXPECT_FALSE(values.geometry().intersects(skip.geometry()));
    EXPECT_TRUE(skip.window->widgetOf(AutoSkipControl::ErrorFilter)->hasFocus());
}

TEST_F(BesidePage, TheCloseBoxClosesWhatIsNotThePanel) {
    const Shown values(ValuesDialog, root);
    EXPECT_FALSE(values.window->findChild<QWidget *>("roll")->isVisible());
    QTest::mouseClick(values.window->findChild<QWidget *>("close"), Qt::LeftButton);
    ASSERT_EQ(toolkitState().queue.size(), 1U);
    EXPECT_EQ(toolkitState().queue.front().value, ValuesControl::Close);
    values.window->rollPanel();
    EXPECT_FALSE(values.window->panelState().rolledUp) << "a strip of it would be of no use";
    panel->window->rollPanel();
    EXPECT_TRUE(panel->window->panelState().rolledUp);
    panel->window->rollPanel();
    EXPECT_FALSE(panel->window->panelState().rolledUp);
}

TEST_F(BesidePage, ThePanelFloatsFirstWhereItHidesLeast) {
    for (const QSize size : {QSize(1280, 620), QSize(700, 500)}) {
        root.resize(size);
        panel->window->setPanelState({});
        area().layOut();
        QTest::mouseClick(panel->window->findChild<QWidget *>("dock"), Qt::LeftButton);
        EXPECT_EQ(panel->geometry().bottom(), area().rect().bottom());
        EXPECT_EQ(panel->geometry().left(), 0) << "not on the model, whose plot is at the right";
        root.resize(1700, 500);
        panel->window->setPanelState({});
        area().layOut();
        QTest::mouseClick(panel->window->findChild<QWidget *>("dock"), Qt::LeftButton);
        EXPECT_FALSE(panel->geometry().intersects(page().geometry())) << "where there is room";
    }
}

// The screen of these tests is 800 pixels wide.
TEST_F(BesidePage, LimitsAreAskedForBesideThePageThatTheyChange) {
    root.move(0, 0);
    root.resize(640, 480);
    QTest::qWait(20);
    Shown limits(PlotLimitsDialog, root);
    const auto onPage = [&] {
        const QRect place(page().mapToGlobal(QPoint(0, 0)), page().size());
        return place.intersected(limits.window->frameGeometry()).width();
    };
    const int width = limits.window->width();
    const int spare = root.screen()->availableGeometry().width() - page().width() - width;
    EXPECT_LE(onPage(), std::max(-spare, 0)) << "over the panel, as far as the screen has room";
    panel->window->setPanelState({.side = PanelSide::Left});
    area().layOut();
    root.move(160, 0);
    QTest::qWait(20);
    limits.window->showAt({});
    EXPECT_EQ(onPage(), 0) << "where the panel is, also at the left";
}

TEST_F(BesidePage, AFieldLeavesTheKeysThatWalkTheLine) {
    Shown skip(LiveAutoSkipDialog, root);
    QWidget *field = skip.window->widgetOf(AutoSkipControl::Cutoff);
    field->setFocus();
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_5, Qt::Key_F3}) {
        QTest::keyClick(field, key);
    }
    EXPECT_EQ(skip.left, (std::vector<int>{KeyUp, KeyPageDown, KeyF3}))
        << "the others are the field's own";
}

// A number that is being typed on the page comes first, so the page has Enter and Esc.
TEST_F(BesidePage, EnterIsThePagesButOnAButton) {
    Shown skip(LiveAutoSkipDialog, root);
    for (const int id : {AutoSkipControl::ErrorFilter, AutoSkipControl::Cutoff}) {
        QWidget *widget = skip.window->widgetOf(id);
        widget->setFocus();
        QTest::keyClick(widget, Qt::Key_Return);
        QTest::keyClick(widget, Qt::Key_Escape);
        EXPECT_EQ(skip.left, (std::vector<int>{KeyEnter, KeyEscape}));
        skip.left.clear();
    }
    EXPECT_TRUE(toolkitState().queue.empty());
    QWidget *button = skip.window->widgetOf(ButtonCancel);
    button->setFocus();
    QTest::keyClick(button, Qt::Key_Return);
    ASSERT_EQ(toolkitState().queue.size(), 1U);
    EXPECT_EQ(toolkitState().queue.front().value, ButtonCancel);
    EXPECT_EQ(toolkitState().queue.front().window, LiveAutoSkipDialog.number);
}

} // namespace
} // namespace keldrin
