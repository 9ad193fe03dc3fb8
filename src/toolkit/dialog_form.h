#pragma once

#include "toolkit/dialog_spec.h"

#include <functional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace keldrin {

// A dialog that shows a record: its table says which control shows which field, in which form and
// within which limits. The functions here are the only way between the two; they act on the
// selected dialog, which must be the one of the table.

/// A field whose text cannot be read, or is not accepted; the record keeps its value.
struct UnreadField {
    std::string name;
    std::string typed;
    std::string why;    ///< "cannot be read", or what its rule says
    std::string stands; ///< as the control would show it, with its unit

    bool operator==(const UnreadField &) const = default;
};

/// How a user left a dialog.
struct [[nodiscard]] DialogAnswer {
    int button = 0;
    std::vector<UnreadField> unread; ///< of Continue
    [[nodiscard]] bool confirmed() const;
};

/// The table of a dialog whose rows all name fields of Record; any other row does not compile.
template <class Record>
struct DialogForm : DialogSpec {
    consteval DialogForm(const DialogSpec &spec) : DialogSpec(spec) { // NOLINT: converts on purpose
        const auto check = [](RecordType type) {
            if (type != nullptr && type != recordTypeOf<Record>()) {
                throw std::logic_error("a control shows a field of another record");
            }
        };
        for (const ControlSpec &control : spec.controls) {
            check(control.field.record);
            check(control.entries.record);
            check(control.limitsFrom.record);
            check(control.table.record);
            check(control.enabledFrom.record);
        }
    }
};

namespace dialog_form {
void putFields(const DialogSpec &spec, const void *record);
void putField(const DialogSpec &spec, int id, const void *record);
void followRecord(const DialogSpec &spec, const void *record);
std::vector<UnreadField> readFields(const DialogSpec &spec, void *record);
bool readField(const DialogSpec &spec, int id, void *record);
void limitFields(const DialogSpec &spec, void *record);
std::string typeField(const DialogSpec &spec, int id, std::string_view text, void *record);
DialogAnswer ask(const DialogSpec &spec, void *record, const std::function<void()> &filled);
void open(const DialogSpec &spec, const void *record, int mode,
          const std::function<void()> &filled);
} // namespace dialog_form

/// Fills all controls of the selected dialog and sets the limits that the record gives. A field of
/// integers shows a real as the nearest integer.
template <class Record>
void putFields(const DialogForm<Record> &form, const Record &record) {
    dialog_form::putFields(form, &record);
}

/// Fills one control. Its limits stay.
template <class Record>
void putField(const DialogForm<Record> &form, int id, const Record &record) {
    dialog_form::putField(form, id, &record);
}

/// Brings the followers of the table (DialogSpec) up to date: texts, and which controls are
/// enabled.
template <class Record>
void followRecord(const DialogForm<Record> &form, const Record &record) {
    dialog_form::followRecord(form, &record);
}

/// Reads all controls back but those that are disabled (see ControlSpec::readWhileDisabled).
/// A number whose text was not changed comes back exactly as it was put.
/// returns  the fields that keep their values, in the order of the table
template <class Record>
[[nodiscard]] std::vector<UnreadField> readFields(const DialogForm<Record> &form, Record &record) {
    return dialog_form::readFields(form, &record);
}

/// Reads one control. False when it cannot be read, or is not accepted; the field then keeps its
/// value.
template <class Record>
bool readField(const DialogForm<Record> &form, int id, Record &record) {
    return dialog_form::readField(form, id, &record);
}

/// Moves each number into the limits of its control, silently: for values that a user is to
/// confirm.
template <class Record>
void limitFields(const DialogForm<Record> &form, Record &record) {
    dialog_form::limitFields(form, &record);
}

/// Stores what a user would type into a control, or "on" or "off" for a check box, without a
/// dialog. A value outside the limits of the control is refused.
/// returns  blank, or what the field takes, and the record is as it was: "a number from 1 to 128"
template <class Record>
[[nodiscard]] std::string typeField(const DialogForm<Record> &form, int id, std::string_view text,
                                    Record &record) {
    return dialog_form::typeField(form, id, text, &record);
}

/// Loads a dialog, shows a record in it until a button ends it, and unloads it. Only Continue reads
/// the controls back.
/// filled  called before the dialog is shown
template <class Record>
DialogAnswer askDialog(const DialogForm<Record> &form, Record &record,
                       const std::function<void()> &filled = {}) {
    return dialog_form::ask(form, &record, filled);
}

/// Loads a dialog that is served by the flow's own loop of events, and shows a record in it. Until
/// closeDialog() changed fields send events; the loop reads and fills single controls with
/// readField(), putField() and followRecord(), and all at Continue with readFields().
/// mode    DialogModeless or DialogModelessAlone
/// filled  called before the dialog is shown
template <class Record>
void openDialog(const DialogForm<Record> &form, const Record &record, int mode,
                const std::function<void()> &filled = {}) {
    dialog_form::open(form, &record, mode, filled);
}

/// Unloads a dialog that was opened.
void closeDialog(const DialogSpec &spec);

/// What the user reads about fields that could not be read, one line for each.
std::vector<std::string> unreadLines(std::span<const UnreadField> fields);

} // namespace keldrin
