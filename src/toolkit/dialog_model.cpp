#include "toolkit/dialog_model.h"

#include "base/ascii.h"
#include "base/fixed_text.h"
#include "base/index.h"
#include "toolkit/control_ids.h"
#include "toolkit/field_number.h"

#include <algorithm>
#include <cmath>

namespace keldrin {

namespace {

ControlState stateOf(const ControlSpec &spec) {
    ControlState state;
    state.id = spec.id;
    state.kind = spec.kind;
    state.label = spec.label;
    state.format = spec.format;
    state.enabled = spec.enabled;
    state.byEnter = spec.byEnter;
    state.length = spec.length;
    state.index = spec.kind == ControlKind::Trackbar ? 1 : 0;
    putLimits(state, spec.limits.low, spec.limits.high);
    return state;
}

ControlState unitOf(const ControlSpec &spec) {
    ControlState state;
    state.id = spec.id + UnitIdOffset;
    state.label = spec.unit;
    return state;
}

bool isShownAsLabel(ControlKind kind) {
    return kind == ControlKind::Static || kind == ControlKind::Button || kind == ControlKind::Check;
}

std::string_view cutToLength(const ControlState &control, std::string_view text) {
    return control.length > 0 ? cutText(text, asIndex(control.length)) : text;
}

// A real field compares in single: 0.1 typed is not below a limit of 0.1. The rounding stands here
// and not where the limits are put, for g++ 12 drops it there (`single ? double(float(x)) : x`).
double heldInLimits(const ControlState &control, double value) {
    if (!(control.low <= control.high)) {
        return value;
    }
    if (control.kind == ControlKind::Real) {
        return static_cast<double>(std::clamp(static_cast<float>(value),
                                              static_cast<float>(control.low),
                                              static_cast<float>(control.high)));
    }
    return std::clamp(value, control.low, control.high);
}

// A number outside the limits is shown as the nearest one; any other stays as it was typed.
void takeTypedNumber(ControlState &control) {
    const std::optional<double> value = typedNumber(control.text, control.kind);
    if (!value) {
        return;
    }
    const double held = heldInLimits(control, *value);
    if (!std::isfinite(held)) {
        return;
    }
    if (held != *value) {
        control.text = shownNumber(held, control.kind, control.format);
    }
    control.exact = held;
    control.ofExact = control.text;
}

} // namespace

DialogModel makeDialog(const DialogSpec &spec) {
    DialogModel dialog;
    dialog.spec = &spec;
    dialog.number = spec.number;
    dialog.caption = spec.caption;
    dialog.defaultButton = spec.defaultButton;
    for (const ControlSpec &control : spec.controls) {
        dialog.controls.push_back(stateOf(control));
        if (!control.unit.empty()) {
            dialog.controls.push_back(unitOf(control));
        }
    }
    return dialog;
}

ControlState *findControl(DialogModel &dialog, int id) {
    const auto found = std::find_if(dialog.controls.begin(), dialog.controls.end(),
                                    [=](const ControlState &c) { return c.id == id; });
    return found == dialog.controls.end() ? nullptr : &*found;
}

bool isNumberField(ControlKind kind) {
    return kind == ControlKind::Integer || kind == ControlKind::Real || kind == ControlKind::Double;
}

bool opensList(const DialogModel &dialog, int id) {
    const std::span<const ControlSpec> table =
        dialog.spec != nullptr ? dialog.spec->controls : std::span<const ControlSpec>{};
    return std::any_of(table.begin(), table.end(), [=](const ControlSpec &control) {
        return control.listedBy != 0 && control.listedBy == id;
    });
}

std::string shownValue(const ControlState &control) {
    switch (control.kind) {
    case ControlKind::Check:
        return control.on ? "on" : "off";
    case ControlKind::List: {
        const std::size_t chosen = asIndex(control.index);
        return chosen >= 1 && chosen <= control.entries.size() ? control.entries[chosen - 1] : "";
    }
    case ControlKind::Trackbar:
        return std::to_string(control.index);
    case ControlKind::Bar:
        return control.index < 0 ? "busy" : std::to_string(control.index) + "%";
    case ControlKind::Grid:
        return rowsText(control.rows);
    case ControlKind::Static:
    case ControlKind::Button:
        return "";
    default:
        return control.text;
    }
}

void putText(ControlState &control, std::string_view text) {
    if (isShownAsLabel(control.kind)) {
        control.label = text;
        return;
    }
    control.typed.reset();
    control.ofExact.reset();
    control.text = cutToLength(control, trimRight(text));
}

void putNumber(ControlState &control, double value, std::string_view format) {
    control.typed.reset();
    if (!format.empty()) {
        control.format = format;
    }
    control.exact = value;
    control.text = shownNumber(value, control.kind, control.format);
    control.ofExact = control.text;
}

void putEntries(ControlState &control, const std::vector<std::string> &entries, int selected) {
    control.entries = entries;
    if (control.length > 0 && entries.size() > asIndex(control.length)) {
        control.entries.resize(asIndex(control.length));
    }
    const int count = static_cast<int>(control.entries.size());
    control.index = selected >= 1 && selected <= count ? selected : 0;
}

void putLimits(ControlState &control, double low, double high) {
    control.low = low;
    control.high = high;
}

void putFraction(ControlState &control, double fraction) {
    constexpr double percent = 100.0;
    const bool known = fraction >= 0.0; // false for NaN
    control.index = known ? static_cast<int>(std::lround(std::min(fraction, 1.0) * percent)) : -1;
}

void putTable(ControlState &control, const TableContent &table) {
    if (control.table == table) {
        return;
    }
    control.table = table;
    ++control.tableChanges;
    putRows(control, TableRows(control.rows));
    const int count = static_cast<int>(table.rows.size());
    control.index = control.index <= count ? control.index : 0;
}

void putRows(ControlState &control, const TableRows &rows) {
    const int count = static_cast<int>(control.table.rows.size());
    control.rows = rows;
    std::erase_if(control.rows, [=](int row) { return row < 1 || row > count; });
}

std::optional<double> fieldNumber(const ControlState &control) {
    const bool exact = control.ofExact && *control.ofExact == control.text;
    return isNumberField(control.kind) && exact ? std::optional(control.exact) : std::nullopt;
}

bool commitTyped(ControlState &control) {
    if (!control.typed) {
        return false;
    }
    const std::string typed(isNumberField(control.kind) ? trimBlanks(*control.typed)
                                                        : cutToLength(control, *control.typed));
    control.typed.reset();
    if (typed == control.text) {
        return false; // also outside the limits: what the program put stays until it is edited
    }
    const bool standsForExact = control.ofExact && typed == *control.ofExact;
    control.text = typed;
    if (isNumberField(control.kind) && !standsForExact) {
        takeTypedNumber(control);
    }
    return true;
}

bool chooseEntry(ControlState &control, int index) {
    const bool changed =
        index != control.index && index >= 1 && index <= static_cast<int>(control.entries.size());
    control.index = changed ? index : control.index;
    return changed;
}

bool setCheck(ControlState &control, bool on) {
    const bool changed = control.on != on;
    control.on = on;
    return changed;
}

bool moveTrackbar(ControlState &control, int position) {
    const int held = static_cast<int>(heldInLimits(control, position));
    const bool changed = held != control.index;
    control.index = held;
    return changed;
}

bool selectRows(ControlState &control, const TableRows &rows) {
    const TableRows before = control.rows;
    putRows(control, rows);
    return control.rows != before;
}

int closeButtonOf(DialogModel &dialog) {
    for (const int button : {ButtonCancel, ButtonContinue}) {
        if (findControl(dialog, button) != nullptr) {
            return button;
        }
    }
    return dialog.defaultButton;
}

} // namespace keldrin
