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

} // namespace
} // namespace keldrin
