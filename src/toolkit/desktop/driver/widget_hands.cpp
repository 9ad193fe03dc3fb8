#include "toolkit/desktop/driver/widget_hands.h"

#include "toolkit/desktop/canvas.h"
#include "toolkit/desktop/common_dialogs.h"
#include "toolkit/desktop/desktop_backend.h"
#include "toolkit/desktop/dialog_window.h"
#include "toolkit/desktop/driver/synthetic_input.h"
#include "toolkit/desktop/main_window.h"
#include "toolkit/desktop/widgets/qt_text.h"
#include "toolkit/desktop/widgets/table_view.h"
#include "toolkit/scripted/typed_entry.h"
#include "toolkit/toolkit_state.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QFileInfo>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalBlocker>

#include <algorithm>

namespace keldrin {

namespace {

Qt::MouseButton buttonOf(int value) {
    const int number = plainButton(value);
    return number == MouseRight    ? Qt::RightButton
           : number == MouseMiddle ? Qt::MiddleButton
                                   : Qt::LeftButton;
}

Qt::KeyboardModifiers keysHeld(int value) {
    Qt::KeyboardModifiers held;
    held.setFlag(Qt::ControlModifier, (value & KeyWithCtrl) != 0);
    held.setFlag(Qt::ShiftModifier, (value & KeyWithShift) != 0);
    return held;
}

void clickCentre(QWidget &widget) {
    sendClick(widget, QRectF(widget.rect()).center());
}

void chooseInCombo(QComboBox &combo, int row) {
    giveFocus(combo);
    combo.showPopup();
    combo.view()->setCurrentIndex(combo.model()->index(row, combo.modelColumn()));
    sendKey(*combo.view(), KeyEnter);
}

void chooseInList(QListWidget &list, int row) {
    QListWidgetItem *item = list.item(row);
    list.scrollToItem(item);
    sendClick(*list.viewport(), QRectF(list.visualItemRect(item)).center());
}

void clickRow(TableView &table, int row, Qt::KeyboardModifiers held) {
    const QModelIndex cell = table.model()->index(row - 1, 0);
    table.scrollTo(cell);
    sendClick(*table.viewport(), QRectF(table.visualRect(cell)).center(), held);
}

// A plain click for the first row and one with Ctrl for each further one; to leave none selected,
// Ctrl and a click on each that is.
void selectInTable(TableView &table, const TableRows &before, const TableRows &rows) {
    if (rows.empty()) {
        for (const int row : TableRows(before)) {
            clickRow(table, row, Qt::ControlModifier);
        }
    } else if (rows != before) {
        for (const int row : TableRows(rows)) {
            clickRow(table, row, row == rows.front() ? Qt::NoModifier : Qt::ControlModifier);
        }
    }
}

// A greyed entry leaves the menu open.
void chooseIn(QMenu &menu, QAction *action) {
    DesktopBackend::settle();
    sendClick(menu, QPointF(menu.actionGeometry(action).center()));
    menu.close();
    DesktopBackend::settle();
}

// Opens the list of a button and chooses from it; without an entry it is closed again.
void pressListed(QPushButton &opener, QAction *entry) {
    QMenu &menu = *opener.menu();
    menu.popup(opener.mapToGlobal(QPoint(0, opener.height())));
    if (entry != nullptr) {
        chooseIn(menu, entry);
    } else {
        menu.close();
    }
}

void typeInto(QLineEdit &field, std::string_view text, bool withEnter = false) {
    giveFocus(field);
    field.selectAll();
    if (text.empty()) {
        sendKey(field, KeyDelete);
    } else {
        sendText(field, qtText(text));
    }
    if (withEnter) {
        sendKey(field, KeyEnter);
    }
    takeFocus(field);
}

} // namespace

// ---- Root window

QPointF WidgetHands::placeOf(double xCm, double yCm) const {
    const Canvas &canvas = desktop_.window().canvas();
    return {xCm / static_cast<double>(PageWidthCm) * canvas.width(),
            (1.0 - yCm / static_cast<double>(PageHeightCm)) * canvas.height()};
}

void WidgetHands::chooseMenu(int command) {
    QMenuBar &bar = *desktop_.window().menuBar();
    QAction *action = desktop_.window().actionOf(command);
    const QRect place = bar.actionGeometry(action);
    if (auto *menu = qobject_cast<QMenu *>(action->parent()); menu != nullptr) {
        menu->popup(bar.mapToGlobal(bar.rect().bottomLeft()));
        chooseIn(*menu, action);
    } else if (bar.rect().contains(place.center())) {
        sendClick(bar, QPointF(place.center()));
        sendMouseMove(bar, QPointF(bar.width() - 1, bar.height() - 1), Qt::NoButton);
    } else { // a narrow window keeps its last entries behind an arrow
        action->trigger();
    }
    DesktopBackend::settle();
}

void WidgetHands::chooseContext(const ContextEntry &entry) {
    QMenu *menu = desktop_.makeContextMenu(true);
    const QString label = qtText(entry.label);
    const auto stands = [&](const QAction *action) {
        return action->text().section('\t', 0, 0) == label;
    };
    const QList<QAction *> actions = menu->actions();
    menu->popup(desktop_.window().canvas().mapToGlobal(QPoint(0, 0)));
    chooseIn(*menu, *std::find_if(actions.begin(), actions.end(), stands));
}

void WidgetHands::pressKey(int code) {
    // A panel may leave the page the keyboard.
    const std::vector<DialogModel *> &shown = toolkitState().shown;
    const auto top = std::find_if(shown.rbegin(), shown.rend(), [this](const DialogModel *dialog) {
        return !desktop_.dialogWindow(*dialog)->leavesFocus();
    });
    DialogWindow *panel = top != shown.rend() ? desktop_.dialogWindow(**top) : nullptr;
    QWidget *focus = panel != nullptr ? panel->focusWidget() : nullptr;
    sendKey(focus != nullptr ? *focus : desktop_.window().canvas(), code);
    DesktopBackend::settle();
}

void WidgetHands::click(const MouseClick &click) {
    const QPointF place = placeOf(click.x, click.y);
    const Qt::MouseButton button = buttonOf(click.button);
    const Qt::KeyboardModifiers held = keysHeld(click.button);
    Canvas &canvas = desktop_.window().canvas();
    for (int i = 0; i < (click.twice ? 2 : 1); ++i) {
        gesture_.emplace_back([&canvas, place, button, held, i] {
            sendMouseDown(canvas, place, button, i > 0, held);
        });
        gesture_.emplace_back([&canvas, place, button] { sendMouseUp(canvas, place, button); });
    }
}

void WidgetHands::drag(const MouseDrag &drag) {
    const QPointF from = placeOf(drag.x1, drag.y1);
    const QPointF to = placeOf(drag.x2, drag.y2);
    const Qt::MouseButton button = buttonOf(drag.button);
    const Qt::KeyboardModifiers held = keysHeld(drag.button);
    Canvas &canvas = desktop_.window().canvas();
    gesture_.emplace_back(
        [&canvas, from, button, held] { sendMouseDown(canvas, from, button, false, held); });
    if (drag.aborted) {
        gesture_.emplace_back([&canvas, to, button] {
            sendMouseMove(canvas, to, button);
            sendKey(canvas, KeyEscape);
        });
    }
    gesture_.emplace_back([&canvas, to, button] {
        sendMouseMove(canvas, to, button);
        sendMouseUp(canvas, to, button);
    });
}

void WidgetHands::turnWheel(const WheelTurn &wheel) {
    Canvas &canvas = desktop_.window().canvas();
    for (int i = 0; i < wheel.count; ++i) {
        gesture_.emplace_back([&canvas, up = wheel.up] {
            sendWheel(canvas, QRectF(canvas.rect()).center(), up ? 1 : -1);
        });
    }
}

// The size reported is that of the page, as the program asks for it.
void WidgetHands::resize(PixelSize size) {
    MainWindow &window = desktop_.window();
    const QSize frame = window.size() - window.centralWidget()->size();
    window.resize(QSize(size.width, size.height) + frame);
    DesktopBackend::settle();
    queueEvent({EventResize, 0, 0, 0.0, 0.0});
}

// The window repaints by itself; the program hears of it here only.
void WidgetHands::expose() {
    desktop_.window().canvas().update();
    DesktopBackend::settle();
    queueEvent({EventExposure, 0, 0, 0.0, 0.0});
}

void WidgetHands::closeWindow() {
    desktop_.window().close();
    DesktopBackend::settle();
}

// ---- Dialogs

void WidgetHands::enter(DialogModel &dialog, int id, std::string_view value) {
    QWidget *widget = desktop_.dialogWindow(dialog)->widgetOf(id);
    if (auto *check = qobject_cast<QCheckBox *>(widget)) {
        if (check->isChecked() != (value == "on")) {
            sendClick(*check, QPointF(check->height() / 2.0, check->height() / 2.0));
        }
    } else if (auto *combo = qobject_cast<QComboBox *>(widget)) {
        chooseInCombo(*combo, chosenEntry(dialog, id, value) - 1);
    } else if (auto *list = qobject_cast<QListWidget *>(widget)) {
        chooseInList(*list, chosenEntry(dialog, id, value) - 1);
    } else if (auto *bar = qobject_cast<QAbstractSlider *>(widget)) {
        bar->setSliderPosition(qtText(value).toInt());
    } else if (auto *table = dynamic_cast<TableView *>(widget)) {
        const ControlState &control = *findControl(dialog, id);
        const int count = static_cast<int>(control.table.rows.size());
        selectInTable(*table, control.rows, rowsNamed(value, count).value_or(TableRows{}));
    } else if (auto *field = qobject_cast<QLineEdit *>(widget)) {
        const ControlState *control = findControl(dialog, id);
        typeInto(*field, value, control != nullptr && control->byEnter);
    }
    DesktopBackend::settle();
}

void WidgetHands::press(DialogModel &dialog, int button) {
    DialogWindow &window = *desktop_.dialogWindow(dialog);
    auto *widget = qobject_cast<QPushButton *>(window.widgetOf(button));
    if (widget != nullptr && widget->menu() != nullptr) {
        pressListed(*widget, window.listedAction(button));
    } else {
        clickCentre(*window.widgetOf(button));
    }
    DesktopBackend::settle();
}

void WidgetHands::closeDialog(DialogModel &dialog) {
    desktop_.dialogWindow(dialog)->close();
    DesktopBackend::settle();
}

void WidgetHands::pressKeyIn(DialogModel &dialog, int code) {
    DialogWindow &window = *desktop_.dialogWindow(dialog);
    QWidget *focus = window.focusWidget();
    sendKey(focus != nullptr ? *focus : window, code);
    DesktopBackend::settle();
}

// ---- Gestures

std::optional<RawEvent> WidgetHands::next() {
    if (gesture_.empty()) {
        return std::nullopt;
    }
    const std::function<void()> step = gesture_.front();
    gesture_.pop_front();
    step();
    return RawEvent{};
}

RubberEnd WidgetHands::rubberBand(double pageX, double pageY) {
    desktop_.onIdle = [this] {
        next(); // each step of a gesture ends the band, or has begun it
    };
    const RubberEnd end = desktop_.rubberBand(pageX, pageY);
    desktop_.onIdle = nullptr;
    return end;
}

// ---- The system's dialogs

// A file that the chooser would refuse is the program's to find out; nothing is done then.
bool WidgetHands::answerChooser(const FileRequest &request,
                                const std::optional<std::string> &path) {
    if (path && !request.save && !QFileInfo(qtText(*path)).isFile()) {
        return true;
    }
    QFileDialog chooser(&desktop_.window());
    chooser.setOption(QFileDialog::DontUseNativeDialog);
    chooser.setOption(QFileDialog::DontConfirmOverwrite);
    prepareChooser(chooser, request, {.memory = false});
    // Once it is closed, the list of files that its thread brings may still replace the name.
    QString chosen;
    QObject::connect(&chooser, &QFileDialog::fileSelected,
                     [&chosen](const QString &file) { chosen = file; });
    chooser.open();
    DesktopBackend::settle();
    if (!path) {
        sendKey(chooser, KeyEscape);
    } else {
        auto *name = chooser.findChild<QLineEdit *>("fileNameEdit");
        name->setCompleter(nullptr); // its list appears when it likes and would take Enter
        const QString whole = QFileInfo(qtText(*path)).absoluteFilePath();
        // The list of files is filled by a thread of its own. It would select what the name begins
        // with and, without the focus, put that into the field; and what is selected goes before
        // the name.
        constexpr int mostTries = 5;
        for (int i = 0; i < mostTries && chooser.isVisible(); ++i) {
            for (QAbstractItemView *list : chooser.findChildren<QAbstractItemView *>()) {
                list->clearSelection();
            }
            {
                const QSignalBlocker unseenByTheList(name);
                name->setText(whole);
            }
            sendKey(*name, KeyEnter);
            DesktopBackend::settle();
        }
    }
    DesktopBackend::settle();
    if (!path) {
        return chooser.result() == QDialog::Rejected;
    }
    return chooser.result() == QDialog::Accepted && !chosen.isEmpty() &&
           QFileInfo(chosen) == QFileInfo(qtText(*path));
}

bool WidgetHands::answerBox(const BoxRequest &request, const BoxResult &answer) {
    QMessageBox box(&desktop_.window());
    prepareBox(box, request);
    box.open();
    DesktopBackend::settle();
    if (answer.quietFurther) {
        sendClick(*box.checkBox(),
                  QPointF(box.checkBox()->height() / 2.0, box.checkBox()->height() / 2.0));
    }
    clickCentre(*box.button(answer.button == 0 ? QMessageBox::Cancel : QMessageBox::Ok));
    DesktopBackend::settle();
    const BoxResult given = answerOf(box);
    return given.button == answer.button && given.quietFurther == answer.quietFurther;
}

} // namespace keldrin
