#include "toolkit/dialog_form.h"

#include "base/fixed_text.h"
#include "base/real.h"
#include "toolkit/control_ids.h"
#include "toolkit/field_number.h"
#include "toolkit/menu.h"
#include "toolkit/toolkit.h"
#include "toolkit/toolkit_state.h"

#include <algorithm>
#include <optional>

namespace keldrin {

namespace {

const ControlSpec *findRow(const DialogSpec &spec, int id) {
    const auto found = std::find_if(spec.controls.begin(), spec.controls.end(),
                                    [=](const ControlSpec &row) { return row.id == id; });
    return found == spec.controls.end() ? nullptr : &*found;
}

bool isFollower(const DialogSpec &spec, int id) {
    return std::find(spec.followers.begin(), spec.followers.end(), id) != spec.followers.end();
}

bool isNumber(const ControlSpec &row) {
    return row.kind == ControlKind::Integer || row.kind == ControlKind::Real ||
           row.kind == ControlKind::Double;
}

void putLimitsOf(const ControlSpec &row, const void *record) {
    if (row.limitsFrom.get == nullptr) {
        return; // those of the table were set when the dialog was loaded
    }
    const FieldLimits limits = row.limitsFrom.get(record);
    if (row.kind == ControlKind::Trackbar) {
        WDialogRangeTrackbar(row.id, static_cast<int>(limits.low), static_cast<int>(limits.high),
                             limits.step);
    } else {
        WDialogRangeDouble(row.id, limits.low, limits.high);
    }
}

void putNumberOf(const ControlSpec &row, double value) {
    switch (row.kind) {
    case ControlKind::Integer:
        WDialogPutInteger(row.id, nearestInt(value));
        break;
    case ControlKind::Real:
        WDialogPutReal(row.id, static_cast<float>(value), row.format);
        break;
    case ControlKind::Trackbar:
        WDialogPutTrackbar(row.id, nearestInt(value));
        break;
    default:
        WDialogPutDouble(row.id, value, row.format);
        break;
    }
}

void putTableOf(const ControlSpec &row, const void *record) {
    WDialogPutTable(row.id, row.table.get(record));
    WDialogPutRows(row.id, std::get<TableRows>(row.field.get(record)));
}

void putRow(const ControlSpec &row, const void *record) {
    if (row.field.get == nullptr) {
        return;
    }
    if (row.kind == ControlKind::Grid) {
        putTableOf(row, record);
        return;
    }
    const FieldValue value = row.field.get(record);
    if (row.kind == ControlKind::List) {
        WDialogPutMenu(row.id, row.entries.get(record), nearestInt(std::get<double>(value)));
    } else if (const double *number = std::get_if<double>(&value)) {
        putNumberOf(row, *number);
    } else if (const bool *on = std::get_if<bool>(&value)) {
        WDialogPutCheckBox(row.id, *on);
    } else {
        const std::string *text = std::get_if<std::string>(&value);
        WDialogPutString(row.id, text != nullptr ? std::string_view(*text) : "");
    }
}

template <class Number>
std::optional<FieldValue> numberRead(bool (*get)(int, Number &), int id) {
    Number number{};
    return get(id, number) ? std::optional<FieldValue>(static_cast<double>(number)) : std::nullopt;
}

std::optional<FieldValue> shownIn(const ControlSpec &row) {
    switch (row.kind) {
    case ControlKind::Integer:
        return numberRead(WDialogGetInteger, row.id);
    case ControlKind::Real:
        return numberRead(WDialogGetReal, row.id);
    case ControlKind::Double:
        return numberRead(WDialogGetDouble, row.id);
    case ControlKind::List:
        return numberRead(WDialogGetMenu, row.id);
    case ControlKind::Trackbar:
        return numberRead(WDialogGetTrackbar, row.id);
    case ControlKind::Grid: {
        TableRows rows;
        return WDialogGetRows(row.id, rows) ? std::optional<FieldValue>(rows) : std::nullopt;
    }
    case ControlKind::Check: {
        bool on = false;
        return WDialogGetCheckBox(row.id, on) ? std::optional<FieldValue>(on) : std::nullopt;
    }
    default: {
        std::string text;
        WDialogGetString(row.id, text);
        return text;
    }
    }
}

enum class RowRead { Stored, Unreadable, Refused };

// A value that the record has already is not stored again: no rule can object to it.
RowRead readRow(const ControlSpec &row, void *record) {
    const std::optional<FieldValue> value = shownIn(row);
    if (!value) {
        return RowRead::Unreadable;
    }
    return *value == row.field.get(record) || row.field.set(record, *value) ? RowRead::Stored
                                                                            : RowRead::Refused;
}

bool isReadBack(const ControlSpec &row) {
    return row.field.set != nullptr && (row.readWhileDisabled || WDialogIsEnabled(row.id));
}

UnreadField unread(const ControlSpec &row, const void *record, RowRead result) {
    UnreadField field;
    field.name = withoutMnemonic(row.name.empty() ? row.label : row.name);
    field.why = result == RowRead::Refused ? row.field.refusal : "cannot be read";
    WDialogGetString(row.id, field.typed);
    const FieldValue kept = row.field.get(record);
    if (const double *number = std::get_if<double>(&kept)) {
        field.stands = shownNumber(*number, row.kind, row.format);
    } else if (const std::string *text = std::get_if<std::string>(&kept)) {
        field.stands = '"' + *text + '"';
    }
    if (!row.unit.empty() && isNumber(row)) {
        field.stands.append(" ").append(row.unit);
    }
    return field;
}

// At the place that the table says.
void showDialog(const DialogSpec &spec, int mode) {
    if (spec.place != DialogPlace::LowerRight) {
        WDialogShow(-1, -1, spec.firstControl, mode);
        return;
    }
    const int x = ToolkitWindowInfo(WindowX) + ToolkitWindowInfo(WindowWidth) -
                  ToolkitDialogInfo(DialogWidth);
    const int y = ToolkitWindowInfo(WindowY) + ToolkitWindowInfo(WindowHeight) -
                  ToolkitDialogInfo(DialogHeight);
    WDialogShow(std::max(x, 0) + 1, std::max(y, 0) + 1, spec.firstControl, mode);
}

// In the width of the control: the limit 0.1 of a 32-bit real is that real.
FieldLimits limitsOf(const ControlSpec &row, const void *record) {
    FieldLimits limits = row.limitsFrom.get != nullptr ? row.limitsFrom.get(record) : row.limits;
    if (row.kind == ControlKind::Real) {
        limits.low = static_cast<double>(static_cast<float>(limits.low));
        limits.high = static_cast<double>(static_cast<float>(limits.high));
    }
    return limits;
}

std::string typeNumber(const ControlSpec &row, std::string_view text, void *record) {
    const FieldLimits limits = limitsOf(row, record);
    const std::optional<double> number = typedNumber(text, row.kind);
    const bool within =
        limits.low > limits.high || (number && *number >= limits.low && *number <= limits.high);
    if (number && within && row.field.set(record, *number)) {
        return "";
    }
    return limits.low > limits.high ? "a number"
                                    : "a number from " + shownNumber(limits.low, row.kind, "") +
                                          " to " + shownNumber(limits.high, row.kind, "");
}

} // namespace

namespace dialog_form {

void putFields(const DialogSpec &spec, const void *record) {
    for (const ControlSpec &row : spec.controls) {
        putLimitsOf(row, record);
        if (row.kind != ControlKind::Static || !isFollower(spec, row.id)) {
            putRow(row, record);
        }
    }
}

void followRecord(const DialogSpec &spec, const void *record) {
    for (const int id : spec.followers) {
        const ControlSpec *row = findRow(spec, id);
        if (row != nullptr && row->kind == ControlKind::Static) {
            putRow(*row, record);
        }
        if (row != nullptr && row->enabledFrom.get != nullptr) {
            WDialogFieldState(id, row->enabledFrom.get(record));
        }
    }
}

void putField(const DialogSpec &spec, int id, const void *record) {
    if (const ControlSpec *row = findRow(spec, id)) {
        putRow(*row, record);
    }
}

std::vector<UnreadField> readFields(const DialogSpec &spec, void *record) {
    std::vector<UnreadField> faulty;
    for (const ControlSpec &row : spec.controls) {
        const bool tells = isNumber(row) || row.kind == ControlKind::Text;
        const RowRead result = isReadBack(row) ? readRow(row, record) : RowRead::Stored;
        if (result != RowRead::Stored && tells) {
            faulty.push_back(unread(row, record, result));
        }
    }
    return faulty;
}

std::string typeField(const DialogSpec &spec, int id, std::string_view text, void *record) {
    const ControlSpec *row = findRow(spec, id);
    if (row == nullptr || row->field.set == nullptr) {
        return "nothing";
    }
    if (isNumber(*row)) {
        return typeNumber(*row, text, record);
    }
    if (row->kind == ControlKind::Check) {
        const bool on = text == "on";
        return (on || text == "off") && row->field.set(record, on) ? "" : "on or off";
    }
    return row->field.set(record, std::string(text)) ? "" : "another text";
}

bool readField(const DialogSpec &spec, int id, void *record) {
    const ControlSpec *row = findRow(spec, id);
    return row != nullptr && row->field.set != nullptr && readRow(*row, record) == RowRead::Stored;
}

void limitFields(const DialogSpec &spec, void *record) {
    for (const ControlSpec &row : spec.controls) {
        if (!isNumber(row) || row.field.get == nullptr) {
            continue;
        }
        const FieldLimits limits = limitsOf(row, record);
        const FieldValue value = row.field.get(record);
        const double *number = std::get_if<double>(&value);
        if (number == nullptr || limits.low > limits.high) {
            continue;
        }
        row.field.set(record, limited(*number, limits.low, limits.high));
    }
}

namespace {

void loadFilled(const DialogSpec &spec, const void *record, const std::function<void()> &filled) {
    WDialogLoad(spec);
    putFields(spec, record);
    if (filled) {
        filled();
    }
}

} // namespace

DialogAnswer ask(const DialogSpec &spec, void *record, const std::function<void()> &filled) {
    loadFilled(spec, record, filled);
    showDialog(spec, DialogModal);
    DialogAnswer answer;
    answer.button = ToolkitDialogInfo(DialogEndButton);
    if (answer.confirmed()) {
        answer.unread = readFields(spec, record);
    }
    WDialogUnload();
    return answer;
}

void open(const DialogSpec &spec, const void *record, int mode,
          const std::function<void()> &filled) {
    loadFilled(spec, record, filled);
    ToolkitDialogOption(FieldChangeEvents, 1);
    showDialog(spec, mode);
}

} // namespace dialog_form

bool DialogAnswer::confirmed() const {
    return button == ButtonContinue;
}

void closeDialog(const DialogSpec &spec) {
    WDialogSelect(spec.number); // another one may have been selected since
    WDialogUnload();
    if (toolkitState().shown.empty()) { // another one may still send them
        ToolkitDialogOption(FieldChangeEvents, 0);
    }
}

std::vector<std::string> unreadLines(std::span<const UnreadField> fields) {
    constexpr std::size_t longest = 40; // of a typed text
    std::vector<std::string> lines;
    for (const UnreadField &field : fields) {
        const std::string_view typed = cutText(field.typed, longest);
        const char *more = typed.size() < field.typed.size() ? "..." : "";
        lines.push_back(field.name + ": \"" + std::string(typed) + more + "\" " + field.why + "; " +
                        field.stands + " stays.");
    }
    return lines;
}

} // namespace keldrin
