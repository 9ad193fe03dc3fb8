#include "toolkit/toolkit.h"

#include "base/real.h"
#include "page/error_state.h"
#include "toolkit/toolkit_state.h"

#include <cmath>
#include <limits>
#include <type_traits>

namespace keldrin {

namespace {

/// A control of the selected dialog; null with an error state when there is none.
struct Target {
    DialogModel *dialog = nullptr;
    ControlState *control = nullptr;
};

Target targetOf(int id) {
    DialogModel *dialog = selectedDialog();
    ControlState *control = dialog != nullptr ? findControl(*dialog, id) : nullptr;
    if (dialog != nullptr && control == nullptr) {
        ToolkitSetError(ErrorNoSuchControl);
    }
    return {dialog, control};
}

// Changes a control, and the one on the screen with it when a user can see the change.
template <class Change>
void changeControl(int id, Change change) {
    const Target target = targetOf(id);
    if (target.control == nullptr) {
        return;
    }
    ControlState &control = *target.control;
    const std::string value = shownValue(control);
    const std::string label = control.label;
    const bool enabled = control.enabled;
    const int tableChanges = control.tableChanges;
    if (!change(control)) {
        ToolkitSetError(ErrorWrongKind);
        return;
    }
    const bool seen = value != shownValue(control) || label != control.label ||
                      enabled != control.enabled || tableChanges != control.tableChanges;
    if (seen && toolkitState().backend != nullptr) {
        toolkitState().backend->refresh(*target.dialog, id);
    }
}

// The label beside a control is reached by its own id.
int idOfText(int id) {
    const ToolkitState &state = toolkitState();
    for (const auto &dialog : state.dialogs) {
        const bool here = dialog->number == state.selected;
        if (here && findControl(*dialog, id) == nullptr &&
            findControl(*dialog, id - LabelIdOffset) != nullptr) {
            return id - LabelIdOffset;
        }
    }
    return id;
}

void putNumberInto(int id, double value, std::string_view format) {
    changeControl(id, [&](ControlState &control) {
        if (!isNumberField(control.kind)) {
            return false;
        }
        putNumber(control, value, format);
        return true;
    });
}

// Reads by a function that says whether it could; its failure is an error state, which is read
// here at once, so that it cannot be taken for one of a later call. An older state stays unread.
template <class Read>
bool readControl(int id, int errorOfFailure, Read read) {
    const ErrorState earlier = errorState();
    errorState().number = 0;
    const Target target = targetOf(id);
    const auto found = target.control != nullptr ? read(*target.control) : false;
    if (target.control != nullptr && !found) {
        ToolkitSetError(errorOfFailure);
    }
    const bool good = ToolkitErrorState(ErrorNumber) == 0;
    errorState() = earlier;
    return good;
}

template <class Number>
bool readNumber(int id, Number &value) {
    Number number{};
    const bool good = readControl(id, ErrorNoNumber, [&](const ControlState &control) {
        const std::optional<double> exact = fieldNumber(control);
        if constexpr (std::is_same_v<Number, int>) {
            number = exact ? nearestInt(*exact) : 0;
            return exact && std::fabs(*exact - number) <= 0.5; // not one outside the width
        } else {
            constexpr auto largest = static_cast<double>(std::numeric_limits<Number>::max());
            const bool fits = exact && !(std::fabs(*exact) > largest);
            number = fits ? static_cast<Number>(*exact) : Number{};
            return fits;
        }
    });
    value = good ? number : value;
    return good;
}

void rangeOf(int id, double low, double high) {
    changeControl(id, [&](ControlState &control) {
        putLimits(control, low, high);
        return isNumberField(control.kind);
    });
}

} // namespace

void WDialogFieldState(int id, bool enabled) {
    changeControl(id, [&](ControlState &control) {
        control.enabled = enabled;
        return true;
    });
}

bool WDialogIsEnabled(int id) {
    const Target target = targetOf(id);
    return target.control != nullptr && target.control->enabled;
}

void WDialogPutString(int id, std::string_view text) {
    const int target = idOfText(id);
    changeControl(target, [&](ControlState &control) {
        if (target != id) {
            control.label = text;
        } else {
            putText(control, text);
        }
        return true;
    });
}

void WDialogGetString(int id, std::string &text) {
    const Target target = targetOf(id);
    if (target.control == nullptr) {
        return;
    }
    const ControlKind kind = target.control->kind;
    const bool isLabel = kind == ControlKind::Static || kind == ControlKind::Button;
    text = isLabel ? target.control->label : shownValue(*target.control);
}

void WDialogPutInteger(int id, int value) {
    putNumberInto(id, value, {});
}

void WDialogPutReal(int id, float value, std::string_view format) {
    putNumberInto(id, static_cast<double>(value), format);
}

void WDialogPutDouble(int id, double value, std::string_view format) {
    putNumberInto(id, value, format);
}

void WDialogPutCheckBox(int id, bool on) {
    changeControl(id, [&](ControlState &control) {
        control.on = on;
        return control.kind == ControlKind::Check;
    });
}

void WDialogPutMenu(int id, const std::vector<std::string> &entries, int selected) {
    changeControl(id, [&](ControlState &control) {
        putEntries(control, entries, selected);
        return control.kind == ControlKind::List;
    });
}

void WDialogPutTrackbar(int id, int value) {
    changeControl(id, [&](ControlState &control) {
        control.index = value;
        return control.kind == ControlKind::Trackbar;
    });
}

void WDialogPutTable(int id, const TableContent &table) {
    changeControl(id, [&](ControlState &control) {
        putTable(control, table);
        return control.kind == ControlKind::Grid;
    });
}

void WDialogPutRows(int id, const TableRows &rows) {
    changeControl(id, [&](ControlState &control) {
        putRows(control, rows);
        return control.kind == ControlKind::Grid;
    });
}

void WDialogPointAtRow(int id, int row) {
    const Target target = targetOf(id);
    if (target.control == nullptr || target.control->index == row) {
        return;
    }
    target.control->index = row;
    if (toolkitState().backend != nullptr) {
        toolkitState().backend->pointAtRow(*target.dialog, id);
    }
}

bool WDialogGetInteger(int id, int &value) {
    return readNumber(id, value);
}

bool WDialogGetReal(int id, float &value) {
    return readNumber(id, value);
}

bool WDialogGetDouble(int id, double &value) {
    return readNumber(id, value);
}

bool WDialogGetCheckBox(int id, bool &on) {
    bool read = false;
    const bool good = readControl(id, ErrorWrongKind, [&](const ControlState &control) {
        read = control.on;
        return control.kind == ControlKind::Check;
    });
    on = good ? read : on;
    return good;
}

bool WDialogGetMenu(int id, int &selected) {
    int read = 0;
    const bool good = readControl(id, ErrorWrongKind, [&](const ControlState &control) {
        read = control.index;
        return control.kind == ControlKind::List && control.index >= 1;
    });
    selected = good ? read : selected;
    return good;
}

bool WDialogGetTrackbar(int id, int &value) {
    int read = 0;
    const bool good = readControl(id, ErrorWrongKind, [&](const ControlState &control) {
        read = control.index;
        return control.kind == ControlKind::Trackbar;
    });
    value = good ? read : value;
    return good;
}

bool WDialogGetRows(int id, TableRows &rows) {
    return readControl(id, ErrorWrongKind, [&](const ControlState &control) {
        const bool table = control.kind == ControlKind::Grid;
        rows = table ? control.rows : rows;
        return table;
    });
}

void WDialogRangeInteger(int id, int low, int high) {
    rangeOf(id, low, high);
}

void WDialogRangeReal(int id, float low, float high) {
    rangeOf(id, static_cast<double>(low), static_cast<double>(high));
}

void WDialogRangeDouble(int id, double low, double high) {
    rangeOf(id, low, high);
}

void WDialogRangeTrackbar(int id, int low, int high, int step) {
    changeControl(id, [&](ControlState &control) {
        control.step = step;
        putLimits(control, low, high);
        return control.kind == ControlKind::Trackbar;
    });
}

} // namespace keldrin
