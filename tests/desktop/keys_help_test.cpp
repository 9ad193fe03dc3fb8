#include "toolkit/desktop/keys_help.h"

#include "support/temporary_directory.h"

#include <QDesktopServices>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTextBrowser>
#include <QUrl>
#include <QtTest>

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>

namespace keldrin {
namespace {

/// Takes the place of the system's browser.
class Browser {
  public:
    Browser() { QDesktopServices::setUrlHandler("file", &page_, "setSource"); }
    ~Browser() { QDesktopServices::unsetUrlHandler("file"); }
    Browser(const Browser &) = delete;
    Browser &operator=(const Browser &) = delete;

    /// What was opened since the last call; blank when nothing was.
    std::string opened() {
        std::string file = page_.source().fileName().toStdString();
        page_.setSource(QUrl());
        return file;
    }

  private:
    QTextBrowser page_;
};

QDialog *helpOf(QWidget &window) {
    return window.findChild<QDialog *>("keys-help");
}

QString noticeOf(QWidget &window) {
    return helpOf(window)->findChild<QLabel *>("notice")->text();
}

TEST(KeysHelp, TheManualIsOpenedByItsButtonAndByF1InTheListAndInTheWindow) {
    const TemporaryDirectory folder;
    std::ofstream(folder.path("index.html")) << "manual";
    ::setenv("KELDRIN_MANUAL", folder.path().c_str(), 1);
    Browser browser;
    QWidget window;
    window.show();

    showKeysHelp(&window); // the first F1 shows the list alone
    EXPECT_EQ(browser.opened(), "");
    for (QPushButton *button : helpOf(window)->findChildren<QPushButton *>()) {
        if (button->text() == "&Manual") {
            button->click();
        }
    }
    EXPECT_EQ(browser.opened(), "index.html");
    QTest::keyClick(helpOf(window), Qt::Key_F1);
    EXPECT_EQ(browser.opened(), "index.html");
    showKeysHelp(&window);
    EXPECT_EQ(browser.opened(), "index.html");
    EXPECT_EQ(noticeOf(window), "");
    ::unsetenv("KELDRIN_MANUAL");
}

TEST(KeysHelp, SaysWhereAManualThatIsNotInstalledWouldBe) {
    ::setenv("KELDRIN_MANUAL", "/nowhere", 1);
    Browser browser;
    QWidget window;
    window.show();
    showKeysHelp(&window);
    showKeysHelp(&window);
    EXPECT_EQ(noticeOf(window), "The manual is not installed: there is no /nowhere/index.html");
    EXPECT_TRUE(helpOf(window)->findChild<QLabel *>("notice")->isVisible());
    EXPECT_EQ(browser.opened(), "");
    ::unsetenv("KELDRIN_MANUAL");
}

} // namespace
} // namespace keldrin
