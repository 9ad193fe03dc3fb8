#include "toolkit/desktop/driver/synthetic_input.h"

#include "toolkit/desktop/keys.h"
#include "toolkit/toolkit.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>

namespace keldrin {

namespace {

void sendMouse(QWidget &widget, QEvent::Type type, QPointF place, Qt::MouseButton button,
               Qt::MouseButtons held, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    QMouseEvent event(type, place, widget.mapToGlobal(place), button, held, keys);
    QApplication::sendEvent(&widget, &event);
}

void sendKeyStroke(QWidget &widget, int qtKey, Qt::KeyboardModifiers modifiers,
                   const QString &text) {
    QKeyEvent down(QEvent::KeyPress, qtKey, modifiers, text);
    QApplication::sendEvent(&widget, &down);
    QKeyEvent up(QEvent::KeyRelease, qtKey, modifiers, text);
    QApplication::sendEvent(&widget, &up);
}

} // namespace

void sendMouseDown(QWidget &widget, QPointF place, Qt::MouseButton button, bool twice,
                   Qt::KeyboardModifiers held) {
    sendMouse(widget, twice ? QEvent::MouseButtonDblClick : QEvent::MouseButtonPress, place, button,
              button, held);
}

void sendMouseMove(QWidget &widget, QPointF place, Qt::MouseButtons held) {
    sendMouse(widget, QEvent::MouseMove, place, Qt::NoButton, held);
}

void sendMouseUp(QWidget &widget, QPointF place, Qt::MouseButton button,
                 Qt::KeyboardModifiers held) {
    sendMouse(widget, QEvent::MouseButtonRelease, place, button, Qt::NoButton, held);
}

void sendClick(QWidget &widget, QPointF place, Qt::KeyboardModifiers held) {
    sendMouseMove(widget, place, Qt::NoButton);
    sendMouseDown(widget, place, Qt::LeftButton, false, held);
    sendMouseUp(widget, place, Qt::LeftButton, held);
}

void sendWheel(QWidget &widget, QPointF place, int steps) {
    constexpr int unitsOfStep = 120;
    QWheelEvent event(place, widget.mapToGlobal(place), QPoint(), QPoint(0, steps * unitsOfStep),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &event);
}

void sendKey(QWidget &widget, int code) {
    const int plain = code & ~(KeyWithCtrl | KeyWithShift);
    Qt::KeyboardModifiers modifiers;
    modifiers.setFlag(Qt::ControlModifier, (code & KeyWithCtrl) != 0);
    modifiers.setFlag(Qt::ShiftModifier, (code & KeyWithShift) != 0);
    const int named = qtKeyOf(plain);
    const bool character = named == 0;
    const QChar letter = QChar(static_cast<char16_t>(plain));
    const int key = character ? static_cast<int>(letter.toUpper().unicode()) : named;
    const bool saysText = character && modifiers == Qt::NoModifier;
    sendKeyStroke(widget, key, modifiers, saysText ? QString(letter) : QString());
}

void sendText(QWidget &widget, const QString &text) {
    for (const QChar letter : text) {
        sendKeyStroke(widget, static_cast<int>(letter.toUpper().unicode()), Qt::NoModifier,
                      QString(letter));
    }
}

void giveFocus(QWidget &widget) {
    widget.window()->activateWindow();
    widget.setFocus(Qt::TabFocusReason);
    QApplication::processEvents();
}

void takeFocus(QWidget &widget) {
    if (widget.hasFocus()) {
        widget.clearFocus();
    } else {
        QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
        QApplication::sendEvent(&widget, &out);
        widget.clearFocus(); // of a window that is not active, which would have its keys
    }
}

} // namespace keldrin
