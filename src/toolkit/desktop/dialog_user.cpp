#include "toolkit/desktop/dialog_window.h"
#include "toolkit/desktop/keys.h"
#include "toolkit/desktop/panel_frame.h"
#include "toolkit/desktop/widgets/field_widgets.h"
#include "toolkit/desktop/widgets/qt_text.h"
#include "toolkit/desktop/widgets/table_view.h"
#include "toolkit/user_edits.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QToolTip>

#include <algorithm>

namespace keldrin {

// What the user does to a dialog's window, reported to its model.

namespace {

bool leavesField(Qt::FocusReason reason) {
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
           reason != Qt::MenuBarFocusReason;
}

// A field of one line has no use for these.
bool walks(const QKeyEvent &key) {
    return key.key() == Qt::Key_Up || key.key() == Qt::Key_Down || key.key() == Qt::Key_PageUp ||
           key.key() == Qt::Key_PageDown;
}

} // namespace

template <class Edit>
void DialogWindow::report(Edit edit) {
    if (!serving_) {
        return;
    }
    edit();
    showAll();
    if (onAction) {
        onAction();
    }
}

void DialogWindow::connectField(const DialogField &field) {
    const int id = field.spec.id;
    field.widget->installEventFilter(this);
    if (auto *edit = dynamic_cast<FieldEdit *>(field.widget)) {
        connect(edit, &QLineEdit::textEdited, this,
                [this, id](const QString &text) { typed(id, text); });
    } else if (auto *check = qobject_cast<QCheckBox *>(field.widget)) {
        connect(check, &QCheckBox::toggled, this,
                [this, id](bool on) { report([&] { userChecks(dialog_, id, on); }); });
    } else if (auto *button = qobject_cast<QPushButton *>(field.widget)) {
        connect(button, &QPushButton::clicked, this, [this, id] { press(id); });
    } else if (auto *list = qobject_cast<QComboBox *>(field.widget)) {
        connect(list, &QComboBox::currentIndexChanged, this,
                [this, id](int index) { report([&] { userChooses(dialog_, id, index + 1); }); });
    } else if (auto *open = qobject_cast<QListWidget *>(field.widget)) {
        connect(open, &QListWidget::currentRowChanged, this,
                [this, id](int row) { report([&] { userChooses(dialog_, id, row + 1); }); });
        connect(open, &QListWidget::itemDoubleClicked, this,
                [this] { press(dialog_.defaultButton); });
    } else if (auto *table = dynamic_cast<TableView *>(field.widget)) {
        table->onSelect = [this, id](const TableRows &rows) {
            report([&] { userSelectsRows(dialog_, id, rows); });
        };
    } else if (auto *trackbar = qobject_cast<QSlider *>(field.widget)) {
        connect(trackbar, &QSlider::valueChanged, this,
                [this, id](int value) { report([&] { userMoves(dialog_, id, value); }); });
        connect(trackbar, &QSlider::sliderMoved, trackbar, [trackbar](int value) {
            QToolTip::showText(QCursor::pos(), QString::number(value), trackbar);
        });
    }
}

// A pasted text can hold line ends and other control characters, which no field takes.
void DialogWindow::typed(int id, const QString &text) {
    const auto endsLine = [](QChar c) {
        return c.category() == QChar::Other_Control || c.category() == QChar::Separator_Line ||
               c.category() == QChar::Separator_Paragraph;
    };
    QString line = text;
    std::replace_if(line.begin(), line.end(), endsLine, QChar(' '));
    report([&] { typeText(dialog_, id, plainText(line)); });
}

void DialogWindow::press(int id) {
    report([&] { userPresses(dialog_, id); });
}

// By Enter, or with the focus.
void DialogWindow::leaveField(const QObject *widget, bool byEnter) {
    for (const DialogField &field : fields_) {
        const ControlState *control = findControl(dialog_, field.spec.id);
        if (field.widget == widget && control != nullptr && control->typed) {
            const auto leave = byEnter ? commitField : userLeaves;
            report([&] { leave(dialog_, field.spec.id); });
        }
    }
}

bool DialogWindow::commitsByEnter(const QObject *widget) const {
    return std::any_of(fields_.begin(), fields_.end(), [=](const DialogField &field) {
        return field.widget == widget && field.spec.byEnter;
    });
}

void DialogWindow::reject() {
    if (staysOpen()) {
        frame_->rollUp(true);
        return;
    }
    report([&] { userCloses(dialog_); });
}

void DialogWindow::closeEvent(QCloseEvent *event) {
    event->ignore(); // the program closes it
    reject();
}

// ---- Keys

bool DialogWindow::leavesKeys() const {
    return dialog_.mode == DialogModeless && keyHook;
}

void DialogWindow::pressEnter() {
    leaveField(focusWidget(), true);
    if (auto *button = qobject_cast<QPushButton *>(focusWidget())) {
        button->click();
    } else {
        press(dialog_.defaultButton);
    }
}

// Beside a page that is served: a field that is left by Enter and, where Enter presses anything, a
// button take Enter; all other keys are the page's.
bool DialogWindow::takesKeyBesidePage(QKeyEvent &key, bool enter) {
    QWidget *focused = focusWidget();
    if ((enter || key.key() == Qt::Key_Escape) && commitsByEnter(focused)) {
        leaveField(focused, enter);
        focused->clearFocus();
        parentWidget()->setFocus(); // the keys that follow are the page's
        return true;
    }
    if (auto *button = qobject_cast<QPushButton *>(focused);
        enter && dialog_.defaultButton != 0 && button != nullptr) {
        button->click();
        return true;
    }
    const int code = key.modifiers().testFlag(Qt::AltModifier) ? 0 : keyCodeOf(key);
    if (enter) {
        leaveField(focused, true);
    }
    if (code != 0) {
        keyHook(code);
    }
    return code != 0;
}

bool DialogWindow::takesKey(QKeyEvent &key) {
    const bool enter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (key.key() == Qt::Key_F2) {
        ToolkitShowMessages();
        return true;
    }
    if (leavesKeys()) {
        return takesKeyBesidePage(key, enter);
    }
    if (enter && !key.isAutoRepeat()) {
        pressEnter();
    } else if (key.key() == Qt::Key_Escape) {
        reject();
    }
    return enter || key.key() == Qt::Key_Escape;
}

// What no control wanted.
void DialogWindow::keyPressEvent(QKeyEvent *event) {
    takesKey(*event);
    event->accept(); // a panel's keys end here
}

// A button needs Space and Tab; while the root window is served, a text field needs all it can use.
bool DialogWindow::isForControl(const QObject *watched, const QKeyEvent &key) const {
    if (key.key() == Qt::Key_Space || key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab) {
        return true;
    }
    if (dynamic_cast<const TableView *>(watched) != nullptr && TableView::usesKey(key)) {
        return true;
    }
    return leavesKeys() ? dynamic_cast<const FieldEdit *>(watched) != nullptr && !walks(key)
                        : qobject_cast<const QPushButton *>(watched) == nullptr;
}

bool DialogWindow::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::FocusOut &&
        leavesField(static_cast<QFocusEvent *>(event)->reason())) {
        leaveField(watched, false);
    }
    if (event->type() == QEvent::FocusIn && commitsByEnter(watched)) { // its text is typed over
        QMetaObject::invokeMethod(qobject_cast<QLineEdit *>(watched), &QLineEdit::selectAll,
                                  Qt::QueuedConnection);
    }
    if (event->type() == QEvent::KeyPress) {
        auto &key = *static_cast<QKeyEvent *>(event);
        return !isForControl(watched, key) && takesKey(key);
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace keldrin
