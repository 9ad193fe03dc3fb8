#pragma once

#include "toolkit/backend.h"
#include "toolkit/dialog_spec.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

// A loaded dialog: one ControlState for each control of its table. Nothing here knows windows,
// events or the selected dialog; see user_edits.h for what a user does to a shown dialog.

/// A control of a loaded dialog.
///
/// A field of numbers keeps the exact number beside its text. The number counts as long as the
/// text is the one that belongs to it, so a display format never rounds what the program put.
struct ControlState {
    int id = 0;
    ControlKind kind = ControlKind::Static;
    std::string label;
    std::string format; ///< of the last number that was put, else of the table
    bool enabled = true;
    bool byEnter = false; ///< as its table says
    int length = 0;       ///< most bytes of a text, most entries of a list; 0 no limit

    std::string text;                   ///< as shown, of texts and numbers
    std::optional<std::string> typed;   ///< an edit of the user that is not yet committed
    std::optional<std::string> ofExact; ///< the text that stands for `exact`
    double exact = 0.0;                 ///< holds every int, float and double

    double low = 1.0; ///< limits of what the user types; none when low is above high
    double high = 0.0;

    std::vector<std::string> entries; ///< of a list
    int index = 0;   ///< chosen entry from 1, 0 none; number of a trackbar; percent of a bar,
                     ///< below 0 where the end is not known
    int step = 1;    ///< page step of a trackbar
    bool on = false; ///< of a check box

    TableContent table;   ///< of a grid; `index` is the row that is pointed at, 0 none
    int tableChanges = 0; ///< how often the program put another content
    TableRows rows;       ///< selected in the table
};

struct DialogModel {
    const DialogSpec *spec = nullptr; ///< its table; null only in a model without one
    int number = 0;
    std::string caption;
    std::vector<ControlState> controls;  ///< in tab order
    int defaultButton = 0;               ///< what Enter presses; 0 none
    int firstControl = 0;                ///< has the focus at first; 0 the first of the table
    int mode = 0;                        ///< DialogMode while shown, else 0
    int endButton = 0;                   ///< button that ended it while it blocks; 0 none yet
    PixelSize size;                      ///< filled by the backend
    std::function<void(int id)> changed; ///< called after a change by the user while it blocks
};

/// A dialog with the state that its table gives. A unit becomes a static of its own after its
/// control, with the control's id plus UnitIdOffset.
DialogModel makeDialog(const DialogSpec &spec);

/// The control of an id, or null. The id of a label is not a control's; see putText().
ControlState *findControl(DialogModel &dialog, int id);

bool isNumberField(ControlKind kind);

/// True for a button that opens a list of others and does nothing else.
bool opensList(const DialogModel &dialog, int id);

/// What a control shows as its value: a text, a number, an entry, "on" or "off", a percentage or
/// "busy", the selected rows of a table as "1-5,9"; of a static and a button nothing, their text
/// being the label.
std::string shownValue(const ControlState &control);

// ---- What the program puts. No limit acts on it; a text is cut to its length.

/// Sets the text of a static, button or check box, or the content of a field. In a field of
/// numbers such a text has no exact number.
void putText(ControlState &control, std::string_view text);
void putNumber(ControlState &control, double value, std::string_view format);
void putEntries(ControlState &control, const std::vector<std::string> &entries, int selected);
void putLimits(ControlState &control, double low, double high);
/// How far a bar is, 0 to 1, to the nearest percent; below 0 the end is not known.
void putFraction(ControlState &control, double fraction);

/// Puts rows and columns. Rows that are still there stay selected.
void putTable(ControlState &control, const TableContent &table);
/// Selects those of the rows that the table has.
void putRows(ControlState &control, const TableRows &rows);

/// The number of a field; none when its text is no number.
std::optional<double> fieldNumber(const ControlState &control);

// ---- What the user commits. Each returns true when the control has changed.

/// Takes over the typed text, if any. A number is moved to the nearest limit and shown so; a text
/// that is no number stays as typed.
bool commitTyped(ControlState &control);
bool chooseEntry(ControlState &control, int index);
bool setCheck(ControlState &control, bool on);
bool moveTrackbar(ControlState &control, int position);        ///< held in its limits
bool selectRows(ControlState &control, const TableRows &rows); ///< see putRows()

/// The button that the close box and Esc stand for: Cancel, else Continue, else the default one.
int closeButtonOf(DialogModel &dialog);

} // namespace keldrin
