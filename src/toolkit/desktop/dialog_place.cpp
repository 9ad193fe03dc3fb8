#include "toolkit/desktop/dialog_window.h"
#include "toolkit/desktop/page_area.h"
#include "toolkit/desktop/panel_frame.h"
#include "toolkit/desktop/widgets/part_grid.h"

#include <QApplication>
#include <QLayout>
#include <QMainWindow>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QWindow>

#include <algorithm>
#include <map>

namespace keldrin {

// How a dialog's window is shown: its size, its place, its focus.

namespace {

// The frame that the window system puts around a window, known once one of the program is shown.
QMargins frameMargins(const QWidget &window) {
    const QWindow *handle = window.windowHandle();
    return handle != nullptr ? handle->frameMargins() : QMargins();
}

// What a hidden widget wants reaches those around it only when it is asked for, from within.
void measureAgain(QWidget &widget) {
    widget.ensurePolished();
    for (QObject *child : widget.children()) {
        if (child->isWidgetType()) {
            measureAgain(*static_cast<QWidget *>(child));
        }
    }
    if (widget.layout() != nullptr) {
        widget.layout()->activate();
    }
    widget.updateGeometry();
}

} // namespace

// Buttons that stand together are equally wide.
void DialogWindow::evenButtons() {
    std::map<const QObject *, int> widest; // by what they stand in
    for (const bool measuring : {true, false}) {
        for (const DialogField &field : fields_) {
            if (auto *button = qobject_cast<QPushButton *>(field.widget)) {
                int &width = widest[button->parent()];
                button->setMinimumWidth(measuring ? 0 : width);
                const int air = button->fontMetrics().averageCharWidth();
                width = std::max(width, button->sizeHint().width() + air);
            }
        }
    }
}

bool DialogWindow::staysOpen() const {
    return frame_ != nullptr && dialog_.spec->place != DialogPlace::Beside;
}

bool DialogWindow::leavesFocus() const {
    return frame_ != nullptr && !staysOpen() && dialog_.firstControl == 0;
}

void DialogWindow::rollPanel() {
    if (staysOpen()) {
        frame_->rollUp(!frame_->state().rolledUp);
    }
}

void DialogWindow::showAt(DialogPlacement placement) {
    setModal(dialog_.mode == DialogModal && frame_ == nullptr);
    showAll();
    for (const DialogField &field : fields_) {
        if (auto *button = qobject_cast<QPushButton *>(field.widget)) {
            button->setDefault(field.spec.id == dialog_.defaultButton);
        }
    }
    settleLayout();
    place(placement);
    giveFocus();
    show();
    if (frame_ == nullptr) {
        activateWindow();
    } else {
        raise();
        giveFocus(); // what is hidden inside a window cannot have it
    }
}

void DialogWindow::giveFocus() {
    if (leavesFocus()) {
        return;
    }
    bool wanted = dialog_.firstControl == 0;
    for (const DialogField &field : fields_) {
        wanted = wanted || field.spec.id == dialog_.firstControl;
        if (wanted && field.widget->isEnabled() &&
            (field.widget->focusPolicy() & Qt::TabFocus) != 0) {
            field.widget->setFocus(Qt::TabFocusReason); // selects what would be typed over
            return;
        }
    }
}

void DialogWindow::setVisible(bool visible) {
    const bool hadFocus = isAncestorOf(QApplication::focusWidget());
    serving_ = visible;
    if (!visible && frame_ != nullptr) {
        frame_->leave();
    }
    QDialog::setVisible(visible);
    if (!visible && frame_ != nullptr && hadFocus) {
        parentWidget()->setFocus();
    }
}

QMargins DialogWindow::systemFrame() const {
    const QMargins own = frameMargins(*this);
    return own.isNull() && parentWidget() != nullptr ? frameMargins(*parentWidget()->window())
                                                     : own;
}

// Of the screen that the root window is on, whichever that is.
QRect DialogWindow::roomOnScreen() const {
    const QWidget *root = parentWidget();
    return (root != nullptr ? root : this)->screen()->availableGeometry();
}

QPoint DialogWindow::heldOnScreen(QPoint corner) const {
    const QRect room = roomOnScreen();
    const QSize spare = room.size() - size().grownBy(systemFrame());
    const QPoint last = room.topLeft() + QPoint(spare.width(), spare.height());
    return {std::max(std::min(corner.x(), last.x()), room.x()),
            std::max(std::min(corner.y(), last.y()), room.y())};
}

void DialogWindow::settleLayout() {
    evenButtons();
    for (const std::vector<QGridLayout *> &grids : frames_) {
        alignLabels(grids);
    }
    measureAgain(*this);
    fitSize();
}

QSize DialogWindow::wantedSize() const {
    QSize wanted = sizeHint();
    if (frame_ != nullptr) {
        return wanted;
    }
    const int besideCaption = 4 * style()->pixelMetric(QStyle::PM_TitleBarHeight); // its buttons
    const int caption = fontMetrics().horizontalAdvance(windowTitle()) + besideCaption;
    wanted = wanted.expandedTo(QSize(caption, 0));
    const QSize most = roomOnScreen().size().shrunkBy(systemFrame());
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const QSize bars(wanted.height() > most.height() ? bar : 0,
                     wanted.width() > most.width() ? bar : 0);
    return (wanted + bars).boundedTo(most);
}

// Grows when the content does; what the user has made smaller stays so otherwise.
void DialogWindow::fitSize() {
    if (frame_ != nullptr) {
        frame_->fit();
        return;
    }
    const QSize wanted = wantedSize();
    if (wanted != fitted_) {
        fitted_ = wanted;
        resize(isVisible() ? size().expandedTo(wanted) : wanted);
        if (isVisible()) {
            move(heldOnScreen(frameGeometry().topLeft()));
        }
    }
}

// Right or left of the page, where less of it is covered, at its foot; over a panel, if need be.
QPoint DialogWindow::besidePage(QPoint told) const {
    const auto *window = qobject_cast<QMainWindow *>(parentWidget());
    const auto *area =
        window != nullptr ? dynamic_cast<PageArea *>(window->centralWidget()) : nullptr;
    if (area == nullptr) {
        return told;
    }
    const QRect page(area->page().mapToGlobal(QPoint(0, 0)), area->page().size());
    const QRect room = roomOnScreen();
    const QSize all = size().grownBy(systemFrame());
    const int right = std::min(page.right() + 1, room.right() + 1 - all.width());
    const int left = std::max(page.left() - all.width(), room.left());
    const bool leftIsFree = left + all.width() - page.left() < page.right() + 1 - right;
    return {leftIsFree ? left : right, page.bottom() + 1 - all.height()};
}

void DialogWindow::place(DialogPlacement placement) {
    const bool middle = placement.x == -1 && placement.y == -1;
    const QWidget *below = parentWidget();
    if (frame_ != nullptr) {
        const QPoint centre((below->width() - width()) / 2, (below->height() - height()) / 2);
        const QPoint told = below->mapFromGlobal(QPoint(placement.x, placement.y));
        frame_->enter(middle ? centre : QPoint(std::max(told.x(), 0), std::max(told.y(), 0)));
        return;
    }
    const QSize all = size().grownBy(systemFrame());
    const bool overParent = below != nullptr && below->window()->isVisible();
    const QRect around = overParent ? below->window()->frameGeometry() : roomOnScreen();
    const QPoint told(placement.x, placement.y);
    const QPoint centred = around.center() - QPoint(all.width(), all.height()) / 2;
    const bool beside = dialog_.spec != nullptr && dialog_.spec->place == DialogPlace::LowerRight;
    move(heldOnScreen(beside ? besidePage(told) : middle ? centred : told));
}

bool DialogWindow::event(QEvent *event) {
    const bool done = QDialog::event(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        evenButtons();
    }
    if (event->type() == QEvent::LayoutRequest) {
        fitSize();
    }
    return done;
}

} // namespace keldrin
