#include "desktop/dialog_backend.h"
#include "toolkit/control_ids.h"
#include "toolkit/desktop/desktop_settings.h"
#include "toolkit/desktop/widgets/panel_buttons.h"
#include "toolkit/user_edits.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace keldrin {
namespace {

using test::Events;

constexpr int Station = 1057;
constexpr int Place = 1401;
constexpr int Export = 1400;

class ReviewPanel : public testing::Test {
  protected:
    template <class Widget = QWidget>
    Widget &widget(int id) {
        return dynamic_cast<Widget &>(*backend.window->widgetOf(id));
    }
    template <class Widget = QWidget>
    Widget &part(const char *name) {
        return *panel().findChild<Widget *>(name);
    }
    QWidget &title() { return *part("caption").parentWidget(); }
    QWidget &panel() { return *backend.window; }
    PageArea &area() { return dynamic_cast<PageArea &>(*backend.root.centralWidget()); }
    QWidget &page() { return area().page(); }

    // As the review does: for a place at the lower right corner of the page.
    DialogModel &openReview(const PanelState &state = {}) {
        WDialogLoad(dialogTable(102));
        test::fillDialog(*toolkitState().dialogs.back());
        backend.window->keyHook = [this](int code) {
            keys.push_back(code);
        };
        backend.window->setPanelState(state);
        const QPoint corner = area().mapToGlobal(QPoint(area().width(), area().height()));
        ToolkitDialogOption(FieldChangeEvents, 1);
        WDialogShow(corner.x() - ToolkitDialogInfo(DialogWidth) + 1,
                    corner.y() - ToolkitDialogInfo(DialogHeight) + 1, 0, DialogModeless);
        return *topDialog();
    }

    // Drags the title bar from its left end to a place of the area.
    void drag(QPoint to) {
        QWidget &bar = title();
        QTest::mousePress(&bar, Qt::LeftButton, Qt::NoModifier, QPoint(20, 5));
        for (const QPoint place : {to + QPoint(30, 30), to}) {
            QMouseEvent move(QEvent::MouseMove, QPointF(0, 0), area().mapToGlobal(QPointF(place)),
                             Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(&bar, &move);
        }
        QMouseEvent up(QEvent::MouseButtonRelease, QPointF(0, 0), area().mapToGlobal(QPointF(to)),
                       Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&bar, &up);
    }
    void click(const char *name) {
        QTest::mouseClick(&part<QAbstractButton>(name), Qt::LeftButton);
    }
    PanelSide side() { return backend.window->panelState().side; }

    test::DialogBackend backend;
    std::vector<int> keys;
};

// ---- Its place

TEST_F(ReviewPanel, StandsBesideThePageWhichKeepsItsShape) {
    openReview();
    EXPECT_TRUE(backend.window->isPanel());
    for (const QSize size :
         {QSize(640, 480), QSize(700, 500), QSize(640, 1000), QSize(1600, 900)}) {
        backend.root.resize(size);
        EXPECT_FALSE(panel().geometry().intersects(page().geometry()));
        EXPECT_TRUE(area().rect().contains(page().geometry()));
        EXPECT_EQ(panel().geometry().topRight(), area().rect().topRight());
        EXPECT_EQ(panel().height(), area().height());
        EXPECT_NEAR(page().width() / 24.0, page().height() / 18.0, 0.1) << size.width();
        EXPECT_GE(page().width(), 280) << size.width();
    }
    WDialogUnload();
    EXPECT_EQ(page().geometry(), area().rect()) << "without it the page has all the room";
}

TEST_F(ReviewPanel, IsScrolledWhereItIsHigherThanTheWindow) {
    QFont large = QApplication::font();
    large.setPointSize(16);
    backend.root.setFont(large);
    openReview();
    for (const PanelSide side : {PanelSide::Right, PanelSide::Floating}) {
        backend.window->setPanelState({.side = side});
        backend.root.resize(900, 300);
        QTest::qWait(1);
        auto &scroll = *panel().findChild<QScrollArea *>();
        EXPECT_GT(scroll.verticalScrollBar()->maximum(), 0);
        EXPECT_EQ(scroll.horizontalScrollBar()->maximum(), 0) << "its width is seen";
        EXPECT_LE(panel().height(), area().height());
    }
}

TEST_F(ReviewPanel, RollsUpToAStripAndDownAgain) {
    openReview();
    widget(Station).setFocus();
    const QRect whole = panel().geometry();
    click("close");
    EXPECT_LT(panel().width(), 40);
    EXPECT_EQ(panel().height(), area().height());
    EXPECT_EQ(panel().geometry().right(), area().rect().right());
    EXPECT_FALSE(panel().geometry().intersects(page().geometry()));
    EXPECT_FALSE(panel().isAncestorOf(QApplication::focusWidget())) << "what is hidden has no keys";
    EXPECT_TRUE(backend.window->panelState().rolledUp);
    EXPECT_TRUE(panel().isVisible());
    click("unroll");
    EXPECT_EQ(panel().geometry(), whole);
    click("roll");
    EXPECT_LT(panel().width(), 40);
    EXPECT_EQ(backend.events(), Events{}) << "none of it ends the review";
}

TEST_F(ReviewPanel, IsDraggedOffAndToEitherSide) {
    openReview();
    drag(QPoint(300, 40));
    EXPECT_EQ(side(), PanelSide::Floating);
    EXPECT_EQ(title().mapTo(&area(), QPoint(20, 5)), QPoint(300, 40))
        << "the mouse holds it where it took it";
    drag(QPoint(4, 100));
    EXPECT_EQ(side(), PanelSide::Left);
    EXPECT_EQ(panel().x(), 0);
    EXPECT_FALSE(panel().geometry().intersects(page().geometry()));
    const auto corner = backend.window->panelState().corner;
    ASSERT_TRUE(corner.has_value());
    EXPECT_GT(corner->x(), 200) << "where it floated, not where it was let go";
    drag(QPoint(area().width() + 50, 100));
    EXPECT_EQ(side(), PanelSide::Right);
    QTest::mousePress(&title(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 5));
    QTest::mouseRelease(&title(), Qt::LeftButton, Qt::NoModifier, QPoint(21, 5));
    EXPECT_EQ(side(), PanelSide::Right) << "a click moves nothing";
    click("dock");
    EXPECT_EQ(side(), PanelSide::Floating);
    QTest::mouseDClick(&title(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 5));
    EXPECT_EQ(side(), PanelSide::Right);
    EXPECT_EQ(backend.events(), Events{});
}

TEST_F(ReviewPanel, StaysInsideWhileItFloats) {
    openReview({.side = PanelSide::Floating, .corner = QPoint(5000, 5000)});
    EXPECT_EQ(panel().geometry().bottomRight(), area().rect().bottomRight());
    backend.root.resize(900, 650);
    EXPECT_EQ(panel().geometry().bottomRight(), area().rect().bottomRight());
    drag(QPoint(250, 60));
    const QPoint corner = panel().pos();
    backend.root.resize(640, 480);
    EXPECT_TRUE(area().rect().contains(panel().geometry()));
    EXPECT_EQ(backend.window->panelState().corner, corner) << "where the user has put it";

    const QSize whole = panel().size();
    click("roll");
    EXPECT_EQ(panel().width(), whole.width());
    EXPECT_LE(panel().height(), title().height() + 4);
    click("roll");
    EXPECT_EQ(panel().size(), whole);
}

TEST_F(ReviewPanel, ComesBackAsTheUserHasLeftIt) {
    const QTemporaryDir directory;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, directory.path());
    const DesktopSettings settings{.memory = true};
    EXPECT_EQ(settings.panel(102), PanelState{}) << "at first docked at the right";
    const PanelState left = {PanelSide::Left, true, QPoint(12, 34)};
    settings.keepPanel(102, left);
    EXPECT_EQ(settings.panel(102), left);
    EXPECT_EQ(settings.panel(103), PanelState{});
    EXPECT_EQ(DesktopSettings{.memory = false}.panel(102), PanelState{});

    openReview(settings.panel(102));
    EXPECT_EQ(panel().x(), 0);
    EXPECT_LT(panel().width(), 40);
    std::vector<PanelState> told;
    backend.window->onPanelChange = [&](const PanelState &state) {
        told.push_back(state);
    };
    click("unroll");
    EXPECT_EQ(panel().x(), 0);
    ASSERT_EQ(told.size(), 1U) << "what is kept is kept at once";
    EXPECT_EQ(told.front(), (PanelState{PanelSide::Left, false, QPoint(12, 34)}));
}

double luminance(QColor colour) {
    const auto linear = [](float light) {
        const auto part = static_cast<double>(light);
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

// The largest contrast between the ground of a button and what is drawn on it.
double contrastOf(QWidget &button) {
    const QImage picture = button.grab().toImage();
    const double ground = luminance(picture.pixelColor(0, 0));
    double most = 1.0;
    for (int x = 0; x < picture.width(); ++x) {
        for (int y = 0; y < picture.height(); ++y) {
            const double other = luminance(picture.pixelColor(x, y));
            most =
                std::max(most, (std::max(ground, other) + 0.05) / (std::min(ground, other) + 0.05));
        }
    }
    return most;
}

TEST_F(ReviewPanel, ItsTitleButtonsCanBeReadUnderTheMouse) {
    openReview();
    QPalette dark = backend.root.palette();
    dark.setColor(QPalette::Highlight, QColor(42, 130, 218));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    dark.setColor(QPalette::Button, QColor(53, 53, 53));
    for (const QPalette &colours : {backend.root.palette(), dark}) {
        backend.root.setPalette(colours);
        for (const char *name : {"dock", "roll", "close"}) {
            auto &button = part<QAbstractButton>(name);
            for (const bool hovered : {false, true}) {
                button.setAttribute(Qt::WA_UnderMouse, hovered);
                EXPECT_GE(contrastOf(button), 3.0) << name << (hovered ? " hovered" : "");
            }
        }
    }
}

// ---- Keys and mouse

TEST_F(ReviewPanel, LeavesTheKeysToTheReviewWhereverTheFocusIs) {
    DialogModel &dialog = openReview();
    for (const int id : {Station, 1059, 1068}) {
        widget(id).setFocus();
        keys.clear();
        for (const int key :
             {Qt::Key_Up, Qt::Key_Right, Qt::Key_PageDown, Qt::Key_Escape, Qt::Key_Return}) {
            QTest::keyClick(&widget(id), static_cast<Qt::Key>(key));
        }
        QTest::keyClicks(&widget(id), "nX7");
        QTest::keyClick(&widget(id), Qt::Key_Backspace);
        QTest::keyClick(&widget(id), Qt::Key_Z, Qt::ControlModifier);
        QTest::keyClick(&widget(id), Qt::Key_Shift);
        EXPECT_EQ(keys, (std::vector<int>{KeyUp, KeyRight, KeyPageDown, KeyEscape, KeyEnter, 'n',
                                          'X', '7', KeyBackspace, 'Z' | KeyWithCtrl}))
            << id;
    }
    EXPECT_EQ(findControl(dialog, Station)->index, 13) << "the bar has not moved";
    EXPECT_EQ(backend.events(), Events{}) << "no key has pressed a button";

    keys.clear();
    widget(1059).setFocus();
    QTest::keyClick(&widget(1059), Qt::Key_Space);
    EXPECT_EQ(backend.events(), Events{"3:1059"});
    QTest::keyClick(&backend.root, Qt::Key_P, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([] { return !toolkitState().queue.empty(); })); // it is animated
    EXPECT_EQ(backend.events(), Events{"3:1058"});
    EXPECT_EQ(keys, std::vector<int>{});
}

TEST_F(ReviewPanel, TheBarGoesToAStationAtOnce) {
    DialogModel &dialog = openReview();
    auto &bar = widget<QSlider>(Station);
    EXPECT_EQ(bar.maximum(), 24);
    EXPECT_EQ(bar.pageStep(), 2);
    QTest::mouseClick(&bar, Qt::LeftButton, Qt::NoModifier, QPoint(3, bar.height() / 2));
    EXPECT_EQ(findControl(dialog, Station)->index, 11) << "a page back";
    EXPECT_EQ(backend.events(), Events{"10:1057"});
    QWheelEvent up(QPointF(5, 5), bar.mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, 120),
                   Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&bar, &up);
    EXPECT_EQ(findControl(dialog, Station)->index, 10) << "as the wheel does upon the page";
    WDialogPutTrackbar(Station, 24);
    EXPECT_EQ(bar.value(), 24);
    EXPECT_EQ(backend.events(), Events{"10:1057"}) << "of the wheel only";
}

// A press on the page ends up on the sounding that is seen, so a number half typed goes nowhere.
TEST_F(ReviewPanel, OnlyEnterGoesToATypedPlace) {
    DialogModel &dialog = openReview();
    page().setFocusPolicy(Qt::StrongFocus);
    auto &field = widget<QLineEdit>(Place);
    const auto begin = [&] {
        QTest::mouseClick(&field, Qt::LeftButton);
        QTest::qWait(1);
        EXPECT_EQ(field.selectedText(), "13 of 24  Stn 8150") << "it is typed over";
        QTest::keyClicks(&field, "17n");
        EXPECT_EQ(field.text(), "17n") << "letters are not the review's";
        QTest::keyClick(&field, Qt::Key_Backspace);
    };
    begin();
    page().setFocus();
    EXPECT_EQ(field.text(), "13 of 24  Stn 8150");
    begin();
    QTest::keyClick(&field, Qt::Key_Escape);
    EXPECT_EQ(field.text(), "13 of 24  Stn 8150");
    EXPECT_TRUE(page().hasFocus());
    begin();
    QTest::mouseClick(&widget(1059), Qt::LeftButton);
    EXPECT_EQ(backend.events(), Events{"3:1059"});
    begin();
    QWheelEvent turn(QPointF(5, 5), widget(Station).mapToGlobal(QPointF(5, 5)), QPoint(),
                     QPoint(0, 120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget(Station), &turn);
    EXPECT_EQ(backend.events(), Events{"10:1057"});

    page().setFocus();
    begin();
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(backend.events(), Events{"10:1401"});
    EXPECT_EQ(findControl(dialog, Place)->text, "17");
    EXPECT_TRUE(page().hasFocus()) << "the keys go on to the page";
    EXPECT_EQ(keys, std::vector<int>{}) << "Esc has not cancelled the review";
}

TEST_F(ReviewPanel, FormatsAreEntriesOfOneButton) {
    DialogModel &dialog = openReview();
    const QMenu &list = *widget<QPushButton>(Export).menu();
    QStringList names;
    for (const QAction *action : list.actions()) {
        names << action->text();
    }
    EXPECT_EQ(names, (QStringList{"To HPGL File", "To WMF File", "To PNG File", "To PDF File",
                                  "To SVG File", "All to PDF"}));
    userPresses(dialog, Export);
    EXPECT_EQ(backend.events(), Events{}) << "it opens the list and does nothing else";
    backend.window->listedAction(1077)->trigger();
    EXPECT_EQ(backend.events(), Events{"3:1077"});
    WDialogFieldState(1076, false);
    EXPECT_FALSE(backend.window->listedAction(1076)->isEnabled());
    EXPECT_FALSE(userPresses(dialog, 1076));
}

/// The page, which counts what reaches it.
class CountingPage : public QWidget {
  public:
    int presses = 0;
    int turns = 0;

  protected:
    void mousePressEvent(QMouseEvent * /*event*/) override { ++presses; }
    void wheelEvent(QWheelEvent * /*event*/) override { ++turns; }
};

TEST_F(ReviewPanel, TheMouseUponItDoesNotReachThePage) {
    auto *counting = new CountingPage;
    backend.root.setCentralWidget(new PageArea(counting));
    openReview({.side = PanelSide::Floating});
    QTest::mouseClick(&widget(1030), Qt::LeftButton);
    QTest::mouseClick(backend.window.get(), Qt::LeftButton);
    QWheelEvent turn(QPointF(5, 5), widget(1030).mapToGlobal(QPointF(5, 5)), QPoint(),
                     QPoint(0, 120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget(1030), &turn);
    EXPECT_EQ(counting->presses, 0);
    EXPECT_EQ(counting->turns, 0);
    counting->setFocusPolicy(Qt::StrongFocus);
    WDialogUnload();
    EXPECT_TRUE(counting->hasFocus()) << "the keys go on to the page";
}

} // namespace
} // namespace keldrin
