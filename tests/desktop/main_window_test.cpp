#include "toolkit/desktop/main_window.h"

#include <QLabel>
#include <QStatusBar>

#include <gtest/gtest.h>

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
