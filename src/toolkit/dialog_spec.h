#pragma once

#include "toolkit/control_ids.h"
#include "toolkit/dialog_field.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

// A dialog is a table of its controls; the order of the rows is the tab order. Backends build
// their widgets from it.

enum class ControlKind {
    Static,
    Text,
    Integer,
    Real,
    Double,
    Check,
    List,
    Trackbar,
    Button,
    Grid, ///< a table, of which the user selects rows
    Bar,  ///< how far some work is; the user cannot change it
};

/// What a static text is to the controls around it.
enum class StaticLook {
    Text,       ///< a text of its own, or the label of the field in the next row
    GroupTitle, ///< title of the frame that begins here; in the row of another one it goes on
    RowTitle,   ///< begins a row of fields
    Head,       ///< stands above the fields of its column
    Unit,       ///< stands after the field before it
    Help,       ///< an explanation, as wide as the dialog
};

/// Where a part of a dialog begins. Parts stand below each other; a run of left and right ones
/// stands side by side. Fields are aligned within their part.
enum class DialogPart {
    Same, ///< no part begins here, but see StaticLook::GroupTitle
    Plain,
    Frame,
    LeftFrame,
    RightFrame,
};

/// The label beside a control has the control's id plus this, the unit after it the id plus that.
/// Titles of groups have ids from 4001 up. None of these clashes with a control's own id.
inline constexpr int LabelIdOffset = 1000;
inline constexpr int UnitIdOffset = 2000;

struct ControlSpec {
    int id = 0;
    ControlKind kind = ControlKind::Static;
    std::string_view label = {};  ///< text beside it; of a static, check or button its own text
    std::string_view format = {}; ///< of a real: one edit descriptor
    std::string_view unit = {};   ///< text after it
    int length = 0;               ///< most bytes of a text, most entries of a list; 0 no limit
    FieldLimits limits = {};      ///< of what the user types
    bool enabled = true;

    // What it shows and changes; see dialog_form.h.
    FieldAccess field = {};                            ///< of the dialog's record
    FromRecord<FieldLimits> limitsFrom = {};           ///< in place of `limits`
    FromRecord<std::vector<std::string>> entries = {}; ///< of a list
    FromRecord<TableContent> table = {};               ///< of a grid, whose field are its rows
    FromRecord<bool> enabledFrom = {};                 ///< in place of `enabled`
    bool readWhileDisabled = false;                    ///< at Continue
    std::string_view name = {};                        ///< in messages; blank: the label
    std::string_view key = {}; ///< name of the value in the program's files; blank: none
    bool byEnter = false;      ///< of a text: only Enter commits it, any other way out drops it
    int listedBy = 0; ///< of a button: an entry of the list that the button of this id opens

    // How it is laid out; nothing else depends on this.
    bool sameRow = false; ///< stands in the row of the control before it
    DialogPart part = DialogPart::Same;
    std::string_view partTitle = {}; ///< of a frame that no static has the title of
    StaticLook look = StaticLook::Text;
    bool labelAbove = false; ///< the label is the head of its column
    int width = 0;           ///< of a field in characters; 0 as usual for its kind
    int rows = 0;            ///< of a list that is open; 0 one that drops down; of a grid at first
    int unitFrom = 0;        ///< static whose text is its unit too; 0 none
};

/// The title of a frame; see StaticLook.
constexpr ControlSpec groupTitle(int id, std::string_view label, FieldAccess field = {}) {
    return {.id = id, .label = label, .field = field, .look = StaticLook::GroupTitle};
}

constexpr ControlSpec checkBox(int id, std::string_view label, FieldAccess field) {
    return {.id = id, .kind = ControlKind::Check, .label = label, .field = field};
}

/// The control in the row of the one before it.
constexpr ControlSpec inRow(ControlSpec spec) {
    spec.sameRow = true;
    return spec;
}

/// The control with a name for messages, where the label says too little.
constexpr ControlSpec named(ControlSpec spec, std::string_view name) {
    spec.name = name;
    return spec;
}

// The rows that end most dialogs.
inline constexpr ControlSpec ContinueRow = {
    .id = ButtonContinue, .kind = ControlKind::Button, .label = "Continue"};
inline constexpr ControlSpec CancelRow = {
    .id = ButtonCancel, .kind = ControlKind::Button, .label = "Cancel", .sameRow = true};

/// Where a dialog is shown.
enum class DialogPlace {
    Usual,      ///< the toolkit's place
    LowerRight, ///< beside the page that it is about, or over its lower right corner
    Docked,     ///< beside the page where the user left it, at first at the right; never closed
    Beside,     ///< as Docked, below what stands there, while it is open; without a firstControl
                ///< the page keeps the focus
};

struct DialogSpec {
    int number = 0;
    std::string_view caption;
    int defaultButton = 0; ///< what Enter presses; 0 none
    std::span<const ControlSpec> controls;
    bool inRoot = false; ///< lies upon the root window's page, beside which it is used
    DialogPlace place = DialogPlace::Usual;
    int firstControl = 0; ///< has the focus at first; 0 the first of the table
    /// Static texts and enabled states that change while the dialog is shown, in the order in which
    /// followRecord() sets them; putFields() leaves them as the table has them.
    std::span<const int> followers = {};
};

} // namespace keldrin
