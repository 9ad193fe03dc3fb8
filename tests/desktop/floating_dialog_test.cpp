#include "conditioning/auto_skip_dialog.h"
#include "toolkit/control_ids.h"
#include "toolkit/desktop/dialog_window.h"
#include "toolkit/toolkit_state.h"

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

#include <vector>

namespace keldrin {
namespace {

/// A dialog that floats over the page without blocking, and the keys that it leaves to the page.
class FloatingDialogTest : public testing::Test {
  protected:
    FloatingDialogTest() {
        dialog.mode = DialogModeless;
        window.keyHook = [this](int code) {
            left.push_back(code);
        };
        window.showAt({});
    }
    ~FloatingDialogTest() override { toolkitState() = ToolkitState{}; }
    FloatingDialogTest(const FloatingDialogTest &) = delete;
    FloatingDialogTest &operator=(const FloatingDialogTest &) = delete;

    DialogModel dialog = makeDialog(LiveAutoSkipDialog);
    DialogWindow window{dialog, nullptr};
    std::vector<int> left;
};

TEST_F(FloatingDialogTest, AFieldLeavesTheKeysThatWalkTheLine) {
    QWidget *field = window.widgetOf(AutoSkipControl::Cutoff);
    field->setFocus();
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_5}) {
        QTest::keyClick(field, key);
    }
    EXPECT_EQ(left, (std::vector<int>{KeyUp, KeyPageDown})) << "the others are the field's own";
}

TEST_F(FloatingDialogTest, EnterPressesTheButtonThatHasTheFocusAndNoOther) {
    QWidget *check = window.widgetOf(AutoSkipControl::ErrorFilter);
    check->setFocus();
    QTest::keyClick(check, Qt::Key_Return);
    EXPECT_TRUE(toolkitState().queue.empty());
    QWidget *button = window.widgetOf(ButtonContinue);
    button->setFocus();
    QTest::keyClick(button, Qt::Key_Return);
    ASSERT_EQ(toolkitState().queue.size(), 1U);
    EXPECT_EQ(toolkitState().queue.front().type, EventButton);
    EXPECT_EQ(toolkitState().queue.front().value, ButtonContinue);
    EXPECT_EQ(toolkitState().queue.front().window, LiveAutoSkipDialog.number);
}

} // namespace
} // namespace keldrin
