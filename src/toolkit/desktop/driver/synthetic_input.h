#pragma once

#include <QPointF>
#include <Qt>

class QWidget;

namespace keldrin {

// Mouse and keys as the window system would deliver them, sent to one widget and served at once.

/// twice  the second press of a double click
/// held   the keys that are down
void sendMouseDown(QWidget &widget, QPointF place, Qt::MouseButton button, bool twice = false,
                   Qt::KeyboardModifiers held = Qt::NoModifier);
void sendMouseMove(QWidget &widget, QPointF place, Qt::MouseButtons held);
void sendMouseUp(QWidget &widget, QPointF place, Qt::MouseButton button,
                 Qt::KeyboardModifiers held = Qt::NoModifier);
void sendClick(QWidget &widget, QPointF place, Qt::KeyboardModifiers held = Qt::NoModifier);
/// steps  of 120 units; above 0 is away from the user
void sendWheel(QWidget &widget, QPointF place, int steps);

/// A key by its code (see ToolkitKey), down and up.
void sendKey(QWidget &widget, int code);
/// Each character of a text.
void sendText(QWidget &widget, const QString &text);

/// Gives the widget the focus, also where the window system has not made its window active.
void giveFocus(QWidget &widget);
/// Takes the focus from it, as a press of Tab would.
void takeFocus(QWidget &widget);

} // namespace keldrin
