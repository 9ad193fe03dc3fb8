#include "desktop/dialog_backend.h"
#include "toolkit/control_ids.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace keldrin {
namespace {

using test::Events;

class DialogWindowTest : public testing::Test {
  protected:
    template <class Widget = QWidget>
    Widget &widget(int id) {
        return dynamic_cast<Widget &>(*backend.window->widgetOf(id));
    }
    QLineEdit &edit(int id) { return widget<QLineEdit>(id); }
    std::string shown(int id) { return edit(id).text().toStdString(); }

    // Types in place of what the field holds, and stays there.
    void type(int id, const char *text) {
        edit(id).setFocus(Qt::TabFocusReason);
        edit(id).selectAll();
        QTest::keyClick(&edit(id), Qt::Key_Delete);
        QTest::keyClicks(&edit(id), text);
    }
    void leaveBy(int id, const char *text) {
        type(id, text);
        QTest::keyClick(&edit(id), Qt::Key_Tab);
    }
    static QColor ground(const QWidget &field) { return field.palette().color(QPalette::Base); }

    test::DialogBackend backend;
};

// ---- Fields

TEST_F(DialogWindowTest, ATypedTextCountsWhenTheFieldIsLeft) {
    DialogModel &dialog = backend.open(108, DialogModelessAlone);
    type(1122, "103.4");
    EXPECT_EQ(backend.events(), Events{}) << "not while it is being typed";
    EXPECT_EQ(findControl(dialog, 1122)->text, "1.0");
    EXPECT_GE(backend.actions, 5);

    QFocusEvent away(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QApplication::sendEvent(&edit(1122), &away); // another program is looked at meanwhile
    QFocusEvent menu(QEvent::FocusOut, Qt::PopupFocusReason);
    QApplication::sendEvent(&edit(1122), &menu);
    EXPECT_EQ(backend.events(), Events{});

    QTest::keyClick(&edit(1122), Qt::Key_Tab);
    EXPECT_EQ(backend.events(), Events{"10:1122"});
    EXPECT_EQ(findControl(dialog, 1122)->text, "103.4");
    EXPECT_TRUE(edit(1046).hasFocus());

    type(1046, "5");
    QTest::mouseClick(&edit(1001), Qt::LeftButton);
    EXPECT_EQ(backend.events(), Events{"10:1046"});
}

TEST_F(DialogWindowTest, EnterCommitsAndPressesTheDefaultButton) {
    backend.open(108, DialogModelessAlone);
    EXPECT_TRUE(widget<QPushButton>(ButtonContinue).isDefault());
    type(1025, "60");
    QTest::keyClick(&edit(1025), Qt::Key_Return);
    EXPECT_EQ(backend.events(), (Events{"10:1025", "3:1090"}));

    type(1025, "70");
    QTest::mouseClick(&widget(ButtonCancel), Qt::LeftButton);
    EXPECT_EQ(backend.events(), (Events{"10:1025", "3:1084"}));

    widget(ButtonCancel).setFocus();
    QTest::keyClick(&widget(ButtonCancel), Qt::Key_Enter);
    EXPECT_EQ(backend.events(), Events{"3:1084"}) << "the button that has the focus";
    widget(1008).setFocus();
    QTest::keyClick(&widget(1008), Qt::Key_Return);
    EXPECT_EQ(backend.events(), Events{"3:1090"});
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
    QApplication::sendEvent(&widget(1008), &held);
    EXPECT_EQ(backend.events(), Events{}) << "a key held down answers one dialog only";
}

TEST_F(DialogWindowTest, WhatIsNoNumberIsMarkedInRed) {
    backend.open(108, DialogModelessAlone);
    const QColor usual = ground(edit(1026));
    EXPECT_EQ(edit(1025).toolTip(), "0.1 to 990000 usec");
    EXPECT_EQ(edit(1015).toolTip(), "0.1 to 990000 m");
    EXPECT_EQ(edit(1078).toolTip(), "-360 to 360 deg");
    EXPECT_EQ(edit(1104).toolTip(), "") << "it has no limits";
    WDialogPutString(1110, "ft");
    leaveBy(1015, "100");
    EXPECT_EQ(edit(1015).toolTip(), "0.1 to 990000 ft");

    leaveBy(1025, "5O");
    EXPECT_EQ(shown(1025), "5O");
    EXPECT_NE(ground(edit(1025)), usual);
    EXPECT_GT(ground(edit(1025)).red(), ground(edit(1025)).green());
    EXPECT_EQ(edit(1025).toolTip(), "0.1 to 990000 usec");
    leaveBy(1104, "");
    EXPECT_NE(ground(edit(1104)), usual) << "a blank is no number";
    EXPECT_EQ(edit(1104).toolTip(), "a number");

    QPalette dark = QApplication::palette();
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    backend.window->setPalette(dark); // the theme changes meanwhile
    EXPECT_LT(ground(edit(1025)).red(), 128);
    EXPECT_GT(ground(edit(1025)).red(), ground(edit(1025)).green());
    EXPECT_EQ(ground(edit(1026)), QColor(Qt::black));

    leaveBy(1025, "50");
    EXPECT_EQ(ground(edit(1025)), QColor(Qt::black));
    leaveBy(1071, "");
    EXPECT_EQ(ground(edit(1071)), QColor(Qt::black)) << "a text may be blank";
}

TEST_F(DialogWindowTest, LimitsMoveWhatWasTypedAndTheFieldShowsIt) {
    backend.open(108, DialogModelessAlone);
    leaveBy(1024, "99");
    EXPECT_EQ(shown(1024), "32");
    leaveBy(1016, "-4");
    EXPECT_EQ(shown(1016), "0.1");
    leaveBy(1072, "abcdefghijklmnopqrstuvw");
    EXPECT_EQ(shown(1072), "abcdefghijklmnop") << "cut to its 16 characters";
    EXPECT_EQ(backend.events(), (Events{"10:1024", "10:1016", "10:1072"}));
}

TEST_F(DialogWindowTest, WhatTheProgramPutsIsNoEdit) {
    backend.open(108, DialogModelessAlone);
    backend.actions = 0;
    edit(1071).setFocus();
    edit(1071).setSelection(2, 5);
    WDialogPutString(1071, "Gravel Flat water survey"); // as it stands
    WDialogPutInteger(1106, 45);
    EXPECT_EQ(edit(1071).selectedText(), "avel ");
    WDialogPutMenu(1006, {"m", "ft"}, 2);
    WDialogPutMenu(1008, {"Fixed-Loop", "Moving-Loop"}, 2);
    WDialogPutString(1010, "Tx Loop Size (ft)");
    WDialogTitle("Another caption");
    EXPECT_EQ(shown(1106), "45");
    EXPECT_EQ(widget<QComboBox>(1006).currentText(), "ft");
    EXPECT_EQ(widget<QComboBox>(1008).count(), 2);
    EXPECT_EQ(widget<QLabel>(1010).text().remove('&'), "Tx Loop Size (ft)");
    EXPECT_EQ(backend.window->windowTitle(), "Another caption");
    EXPECT_EQ(backend.events(), Events{});
    EXPECT_EQ(backend.actions, 0);

    type(1122, "10");
    WDialogPutInteger(1106, 50); // the program goes on while the user types
    EXPECT_EQ(shown(1122), "10");
    const std::string longText(120, 'x');
    WDialogPutString(1001, longText + "end");
    EXPECT_EQ(edit(1001).cursorPosition(), 0) << "its beginning is seen";
}

TEST_F(DialogWindowTest, APastedLineEndIsABlank) {
    backend.open(108, DialogModelessAlone);
    edit(1071).setFocus();
    edit(1071).selectAll();
    QApplication::clipboard()->setText("two\nlines\t&");
    edit(1071).paste();
    QTest::keyClick(&edit(1071), Qt::Key_Tab);
    std::string name;
    WDialogGetString(1071, name);
    EXPECT_EQ(name, "two lines &");
}

TEST_F(DialogWindowTest, DisabledFieldsAreGreyedAndWhatIsOnlyReadIsNot) {
    backend.open(108, DialogModelessAlone);
    const auto labelOf = [&](int id) {
        for (auto *label : backend.window->findChildren<QLabel *>()) {
            if (label->buddy() == backend.window->widgetOf(id)) {
                return label;
            }
        }
        return static_cast<QLabel *>(nullptr);
    };
    ASSERT_NE(labelOf(1011), nullptr);
    WDialogFieldState(1011, false);
    EXPECT_FALSE(edit(1011).isEnabled());
    EXPECT_FALSE(labelOf(1011)->isEnabled());
    EXPECT_FALSE(widget(1110).isEnabled()) << "its unit";
    WDialogPutString(1110, "ft");
    EXPECT_FALSE(widget(1110).isEnabled()) << "also with another text";
    WDialogFieldState(1046, false);
    EXPECT_TRUE(widget(1111).isEnabled()) << "the title of a row with another field";
    WDialogFieldState(1047, false);
    EXPECT_FALSE(widget(1111).isEnabled());
    WDialogFieldState(1047, true);
    EXPECT_TRUE(widget(1111).isEnabled());
    WDialogUnload();

    backend.open(106, DialogModelessAlone, 1092);
    EXPECT_TRUE(edit(1091).isEnabled());
    EXPECT_TRUE(edit(1091).isReadOnly());
    EXPECT_TRUE(widget(1092).hasFocus());
    QTest::keyClick(&widget(1092), Qt::Key_Tab);
    QTest::keyClick(backend.window->focusWidget(), Qt::Key_Tab);
    QTest::keyClick(backend.window->focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(widget(1092).hasFocus()) << "Tab goes round without it";
}

// ---- Lists, check boxes, buttons

TEST_F(DialogWindowTest, ChoicesCountAtOnce) {
    DialogModel &dialog = backend.open(108, DialogModelessAlone);
    widget(1008).setFocus();
    QTest::keyClick(&widget(1008), Qt::Key_Down);
    EXPECT_EQ(findControl(dialog, 1008)->index, 2);
    EXPECT_EQ(backend.events(), Events{"10:1008"});

    type(1025, "60");
    QWheelEvent turn(QPointF(5, 5), widget(1006).mapToGlobal(QPointF(5, 5)), QPoint(),
                     QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget(1006), &turn);
    EXPECT_EQ(widget<QComboBox>(1006).currentIndex(), 0) << "the wheel only passed over it";
    EXPECT_EQ(backend.events(), Events{});
    WDialogUnload();

    DialogModel &skip = backend.open(104, DialogModelessAlone);
    backend.events();
    QTest::mouseClick(&widget(1089), Qt::LeftButton, Qt::NoModifier, QPoint(8, 8));
    EXPECT_TRUE(findControl(skip, 1089)->on);
    EXPECT_EQ(backend.events(), Events{"10:1089"});
}

TEST_F(DialogWindowTest, ADialogThatBlocksEndsByItsButton) {
    DialogModel &dialog = backend.open(106, DialogModal);
    EXPECT_TRUE(backend.window->isModal());
    auto &list = widget<QListWidget>(1092);
    EXPECT_EQ(list.currentRow(), 3);
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_EQ(findControl(dialog, 1092)->index, 5);
    EXPECT_EQ(backend.events(), Events{}) << "it sends no field changes";
    EXPECT_EQ(dialog.endButton, 0);
    const int before = backend.actions;
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(dialog.endButton, ButtonContinue);
    EXPECT_EQ(backend.actions, before + 1);

    dialog.endButton = 0;
    const QRect place = list.visualItemRect(list.item(1));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, place.center());
    EXPECT_EQ(dialog.endButton, 0);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, place.center());
    EXPECT_EQ(dialog.endButton, ButtonContinue);
    EXPECT_EQ(findControl(dialog, 1092)->index, 2);
    toolkitState().shown.clear();
}

TEST_F(DialogWindowTest, EscAndTheCloseBoxAreCancelOrElseTheOnlyButton) {
    backend.open(101, DialogModelessAlone);
    type(1083, "7");
    QTest::keyClick(&edit(1083), Qt::Key_Escape);
    EXPECT_EQ(backend.events(), (Events{"10:1083", "3:1084"}));
    EXPECT_FALSE(backend.window->close());
    EXPECT_EQ(backend.events(), Events{"3:1084"});
    EXPECT_TRUE(backend.window->isVisible()) << "the program takes it away";
    WDialogFieldState(ButtonCancel, false);
    backend.window->close();
    EXPECT_EQ(backend.events(), Events{});
    WDialogUnload();

    backend.open(110, DialogModelessAlone, ButtonContinue);
    EXPECT_TRUE(widget(ButtonContinue).hasFocus()) << "the control that the program names";
    QTest::keyClick(&widget(ButtonContinue), Qt::Key_Escape);
    EXPECT_EQ(backend.events(), Events{"3:1090"});
}

TEST_F(DialogWindowTest, AHiddenDialogTellsNothing) {
    DialogModel &dialog = backend.open(108, DialogModelessAlone);
    type(1025, "60");
    backend.window->hide();
    EXPECT_TRUE(findControl(dialog, 1025)->typed.has_value());
    EXPECT_EQ(backend.events(), Events{});
    backend.window->show();
}

TEST_F(DialogWindowTest, ABarShowsPercentOrThatWorkGoesOn) {
    DialogModel &dialog = backend.open(121, DialogModelessAlone);
    ControlState &bar = *findControl(dialog, WorkBar);
    putFraction(bar, 0.42);
    backend.window->refresh(WorkBar);
    EXPECT_EQ(widget<QProgressBar>(WorkBar).text(), "42%");
    putFraction(bar, -1.0);
    backend.window->refresh(WorkBar);
    EXPECT_EQ(widget<QProgressBar>(WorkBar).maximum(), 0);
    WDialogPutString(WorkWords, "Reading A&B.avg");
    EXPECT_EQ(widget<QLabel>(WorkWords).text(), "Reading A&B.avg");
}

TEST_F(DialogWindowTest, AWindowIsKeptInsideTheScreen) {
    WDialogLoad(dialogTable(104));
    WDialogShow(5000, 5000, 0, DialogModelessAlone);
    const QRect room = backend.window->screen()->availableGeometry();
    EXPECT_EQ(backend.window->frameGeometry().bottomRight(), room.bottomRight());
    WDialogUnload();
    WDialogLoad(dialogTable(104));
    WDialogShow(-1, -1, 0, DialogModelessAlone);
    const QPoint off =
        backend.window->frameGeometry().center() - backend.root.frameGeometry().center();
    EXPECT_LE(off.manhattanLength(), 2) << "over the middle of the root window";
}

} // namespace
} // namespace keldrin
