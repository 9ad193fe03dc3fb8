#include "toolkit/desktop/main_window.h"

#include "page/page_colours.h"
#include "toolkit/desktop/canvas.h"
#include "toolkit/desktop/desktop_backend.h"
#include "toolkit/desktop/widgets/notice_line.h"
#include "toolkit/menu.h"
#include "toolkit/toolkit_state.h"

#include <QImage>
#include <QLabel>
#include <QMenu>
#include <QPalette>
#include <QStatusBar>
#include <QStringList>
#include <QTest>

#include <gtest/gtest.h>

#include <array>
#include <utility>

namespace keldrin {
namespace {

// A notice that came while the pointer was still on the menu was once drawn over the entry's hint.
TEST(MainWindow, ANoticeTakesThePlaceOfTheHintOfAMenuEntry) {
    MainWindow window;
    window.show();
    window.statusBar()->showMessage("Invert dBz/dt to smoothly varying model.");

    window.setStatus(StatusPart::Notice, "8 iterations");

    EXPECT_TRUE(window.statusBar()->currentMessage().isEmpty());
    const QList<QLabel *> labels = window.statusBar()->findChildren<QLabel *>();
    int shown = 0;
    for (const QLabel *label : labels) {
        shown += label->isVisible() && label->text() == "8 iterations" ? 1 : 0;
    }
    EXPECT_EQ(shown, 1);
}

// An entry without a key once showed a box, for the letter 0.
TEST(MainWindow, KeysStandBesideTheEntriesThatHaveOne) {
    static constexpr std::array<MenuEntry, 3> entries = {{{1, "&View", "", false},
                                                          {2, "&Plan", "", false, 'M', 1},
                                                          {3, "&Report", "", false, 0, 1}}};
    const WindowContent before = windowContent();
    windowContent().menu = entries;
    MainWindow window;
    windowContent() = before;

    QStringList texts;
    for (const QAction *action : window.findChildren<QMenu *>().front()->actions()) {
        texts.append(action->text());
    }

    EXPECT_EQ(texts, QStringList({"&Plan\tM", "&Report"}));
}

/// A status bar whose notices are read in no time.
class Notices : public testing::Test {
  protected:
    Notices() {
        window.resize(700, 400);
        window.show();
        line().readingTime = -2000;
    }
    NoticeLine &line() {
        return dynamic_cast<NoticeLine &>(*window.findChild<QWidget *>("notices"));
    }
    // The texts that are seen, each whole.
    QStringList seen() {
        QStringList texts;
        for (const QLabel *label : line().findChildren<QLabel *>()) {
            if (label->isVisible()) {
                EXPECT_GE(label->width(), label->sizeHint().width()) << qPrintable(label->text());
                texts << label->text();
            }
        }
        return texts;
    }

    MainWindow window;
};

TEST_F(Notices, TheReadOutDoesNotCutThem) {
    const QString readOut = "Time 0.1000 msec   dB/dt 12.00 nV/Am2   Window 3";
    window.setStatus(StatusPart::Pointer, readOut);
    window.setStatus(StatusPart::Notice, "26 rows copied.");
    QTest::qWait(1);
    EXPECT_EQ(seen(), (QStringList{"26 rows copied.", readOut}));
    const QString longer = "\"12000\" is neither a station of this line nor a sounding to 24.";
    window.setStatus(StatusPart::Notice, longer);
    EXPECT_EQ(seen(), QStringList{longer});
    window.setStatus(StatusPart::Pointer, readOut + ": 12.00 nV/Am2");
    EXPECT_EQ(seen(), QStringList{longer}) << "while it is moved too";
    window.setStatus(StatusPart::Notice, "");
    EXPECT_EQ(seen(), QStringList{readOut + ": 12.00 nV/Am2"});
}

TEST_F(Notices, GoWhenTheUserHasHadTimeToReadThem) {
    window.setStatus(StatusPart::Notice, "8 iterations");
    QTest::qWait(60);
    EXPECT_EQ(seen(), QStringList{"8 iterations"}) << "nobody was there";
    QTest::keyClick(&window.canvas(), Qt::Key_Shift);
    EXPECT_EQ(seen(), QStringList{"8 iterations"}) << "not at the first move";
    EXPECT_TRUE(QTest::qWaitFor([&] { return seen().isEmpty(); }));
    window.setStatus(StatusPart::Marks, "3 windows changed, not saved");
    QTest::keyClick(&window.canvas(), Qt::Key_Shift);
    QTest::qWait(60);
    EXPECT_TRUE(window.isWindowModified()) << "a state stays";
}

// A wheel or a key shows another sounding below a mouse that stands still.
TEST(MainWindow, TheReadOutIsOfThePageOnShow) {
    DesktopBackend backend({.memory = false});
    ToolkitInit(backend, {"keldrin"});
    WindowOpen(ResizableWindow, -1, -1, 600, 500);
    std::string sounding = "first";
    ToolkitPointerText([&](float, float) { return sounding; });
    backend.window().canvas().onMove(0.5, 0.5);
    sounding = "second";
    backend.onIdle = [&] {
        queueEvent({EventKey, 'n', 0, 0.0, 0.0});
        backend.wake();
    };
    ToolkitEvent event;
    while (event.type != EventKey) { // events of the window come first
        ToolkitNextEvent(event);
    }
    QStringList shown;
    for (const QLabel *label : backend.window().statusBar()->findChildren<QLabel *>()) {
        shown << label->text();
    }
    EXPECT_TRUE(shown.contains("second"));
    EXPECT_FALSE(shown.contains("first"));
    ToolkitClose();
}

TEST(MainWindow, TheTitleBeginsWithTheFileAndAMarkForChanges) {
    MainWindow window;
    window.showTitle("KELDRIN v4.00i updated 21/July/2020");
    EXPECT_EQ(window.windowTitle(), "KELDRIN v4.00i updated 21/July/2020");
    window.showTitle("KELDRIN 4.00i updated 21/July/2020, data from odd[*].std");
    EXPECT_EQ(window.windowTitle(), "odd[*][*].std[*] - KELDRIN 4.00i updated 21/July/2020, data "
                                    "from odd[*][*].std");
    EXPECT_FALSE(window.isWindowModified());
    window.setStatus(StatusPart::Marks, "3 windows changed, not saved");
    EXPECT_TRUE(window.isWindowModified());
    window.setStatus(StatusPart::Marks, "");
    EXPECT_FALSE(window.isWindowModified());
}

TEST(MainWindow, InDarkSurroundingsTheLogIsDarkAndAPageIsPaper) {
    Canvas canvas(nullptr);
    canvas.resize(240, 180);
    QPalette dark;
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Text, QColor(220, 220, 220));
    canvas.setPalette(dark);
    const auto drawn = [&](const char *kind) {
        canvas.page().begin(PageWidthCm, PageHeightCm);
        canvas.page().clear();
        canvas.page().pageKind(kind);
        canvas.page().setPen(Colour::Black, 1.0F);
        const std::array corners = {PagePoint{0.4F, 0.4F}, PagePoint{0.6F, 0.4F},
                                    PagePoint{0.6F, 0.6F}, PagePoint{0.4F, 0.6F}};
        canvas.page().polygon(corners, true);
        const QImage image = canvas.grab().toImage();
        return std::pair(image.pixelColor(5, 5).lightness(), image.pixelColor(120, 90).lightness());
    };
    EXPECT_EQ(drawn("log"), std::pair(30, 220));
    EXPECT_EQ(drawn("page"), std::pair(255, 0));
    canvas.setPalette(QPalette(Qt::lightGray));
    EXPECT_EQ(drawn("log"), std::pair(255, 0));
    canvas.resize(480, 360); // the picture that it keeps is of another size
    EXPECT_EQ(canvas.grab().toImage().pixelColor(240, 180).lightness(), 0);
    EXPECT_EQ(canvas.grab().toImage().pixelColor(120, 90).lightness(), 255);
}

TEST(MainWindow, TheCountOfWarningsIsALinkToTheList) {
    MainWindow window;
    int asked = 0;
    window.onMessages = [&] {
        ++asked;
    };
    window.show();
    window.setStatus(StatusPart::Warnings, "3 warnings");
    QLabel *found = nullptr;
    for (QLabel *label : window.statusBar()->findChildren<QLabel *>()) {
        found = label->isVisible() && label->text().contains("3 warnings") ? label : found;
    }
    ASSERT_NE(found, nullptr);
    emit found->linkActivated("messages");
    EXPECT_EQ(asked, 1);
    window.setStatus(StatusPart::Warnings, "");
    EXPECT_FALSE(found->isVisible());
}

} // namespace
} // namespace keldrin
