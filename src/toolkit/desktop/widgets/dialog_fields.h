#pragma once

#include "toolkit/dialog_model.h"
#include "toolkit/dialog_spec.h"

#include <QString>

#include <vector>

class QLabel;
class QWidget;

namespace keldrin {

// The widgets of a dialog's controls: how they are made, and how they show what the model holds.

/// A control of a dialog as the user sees it.
struct DialogField {
    ControlSpec spec;          ///< how it is laid out
    QWidget *widget = nullptr; ///< its object name is the control's id
    QLabel *label = nullptr;   ///< beside or above it; null where the text stands in the widget
};

/// The controls of a dialog in the order of its model, units among them, with their widgets; but
/// for the entries of lists that buttons open.
std::vector<DialogField> makeFields(const DialogSpec &spec, QWidget *parent);

/// True for controls that have a label and take what the user types or chooses.
bool isField(ControlKind kind);

/// The limits of what the user may type, "0.1 to 990000 m"; blank where there are none.
QString rangeText(const ControlState &control, const QString &unit);

/// Greys the texts that belong to greyed fields: the unit after one, the title of a row of them.
void greyTexts(const std::vector<DialogField> &fields);

/// Shows the state of a control in its widget, without an echo. Where nothing has changed the
/// cursor and the selection stay.
/// text  label or caption with its letter marked
/// unit  of a number
void showControl(const DialogField &field, const ControlState &control, const QString &text,
                 const QString &unit);

} // namespace keldrin
