#pragma once

#include "toolkit/table_content.h"

#include <functional>
#include <iterator>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

namespace keldrin {

// How a row of a dialog's table names the value that its control shows and changes. A dialog has
// one record, and a field of it is named by the members, and indices of arrays, that lead to it
// (a member that is a pointer leads on to what it points to):
// fieldOf<&Answers::control, &ControlValues::Header, 1>. The types of the members are checked when
// the table is compiled, the type of the record when its DialogForm is (dialog_form.h).

/// Limits of a number; none when low is above high. A trackbar has a page step too.
struct FieldLimits {
    double low = 1.0;
    double high = 0.0;
    int step = 1;
};

/// What a control holds: nothing, a number (double holds every int and float), the mark of a check
/// box, a text, the selected rows of a table. The number of a list is its entry, from 1.
using FieldValue = std::variant<std::monostate, double, bool, std::string, TableRows>;

/// Stands for a type of record.
using RecordType = const void *;

template <class Record>
inline constexpr char RecordTag = 0;

template <class Record>
constexpr RecordType recordTypeOf() {
    return &RecordTag<Record>;
}

/// Something that a record gives; without a type of record it is the same for all.
template <class Value>
struct FromRecord {
    RecordType record = nullptr;
    Value (*get)(const void *) = nullptr;
};

/// A field of a record. `set` returns false when the field does not accept the value; without it
/// the control only shows. `refusal` is then said of the value: "is not above 0".
struct FieldAccess {
    RecordType record = nullptr;
    FieldValue (*get)(const void *) = nullptr;
    bool (*set)(void *, const FieldValue &) = nullptr;
    std::string_view refusal = "is not accepted";
};

namespace dialog_field {

template <class Owner, class Member>
Owner ownerOf(Member Owner::*);
template <class Owner, class Result>
Owner ownerOf(Result (*)(const Owner &));

template <auto First, auto... /*Rest*/>
struct RecordOfPath {
    using Type = decltype(ownerOf(First));
};

template <auto First, auto... Rest>
constexpr auto &follow(auto &object) {
    if constexpr (std::is_pointer_v<std::remove_cvref_t<decltype(object)>>) {
        return follow<First, Rest...>(*object);
    } else {
        auto &next = [&]() -> auto & {
            if constexpr (std::is_member_object_pointer_v<decltype(First)>) {
                return object.*First;
            } else {
                return object[First];
            }
        }
        ();
        if constexpr (sizeof...(Rest) == 0) {
            return next;
        } else {
            return follow<Rest...>(next);
        }
    }
}

template <class Field>
FieldValue valueOf(const Field &field) {
    if constexpr (std::is_same_v<Field, bool> || std::is_same_v<Field, TableRows>) {
        return field;
    } else if constexpr (std::is_arithmetic_v<Field>) {
        return static_cast<double>(field);
    } else if constexpr (requires { field.has_value(); }) {
        return field ? valueOf(*field) : FieldValue{};
    } else if constexpr (requires { field.view(); }) {
        return std::string(field.view());
    } else {
        return std::string(field);
    }
}

template <class Field>
bool store(Field &field, const FieldValue &value) {
    if constexpr (std::is_same_v<Field, bool>) {
        field = std::get<bool>(value);
    } else if constexpr (std::is_same_v<Field, TableRows>) {
        field = std::get<TableRows>(value);
    } else if constexpr (std::is_arithmetic_v<Field>) {
        field = static_cast<Field>(std::get<double>(value));
    } else if constexpr (requires { field.has_value(); }) {
        store(field.emplace(), value);
    } else {
        field = Field(std::get<std::string>(value));
    }
    return true;
}

template <auto... Path>
using RecordOf = typename RecordOfPath<Path...>::Type;

template <auto... Path>
const auto &fieldIn(const void *record) {
    return follow<Path...>(*static_cast<const RecordOf<Path...> *>(record));
}

template <auto... Path>
auto &fieldIn(void *record) {
    return follow<Path...>(*static_cast<RecordOf<Path...> *>(record));
}

} // namespace dialog_field

/// The field at the end of a path of members and indices: a number, a bool, a text, or one of
/// these that may be absent (std::optional).
template <auto... Path>
consteval FieldAccess fieldOf() {
    return {recordTypeOf<dialog_field::RecordOf<Path...>>(),
            [](const void *record) {
                return dialog_field::valueOf(dialog_field::fieldIn<Path...>(record));
            },
            [](void *record, const FieldValue &value) {
                return dialog_field::store(dialog_field::fieldIn<Path...>(record), value);
            }};
}

/// The same for a field with a rule of its own: take(field, value) stores a read value, or returns
/// false without a change when the field does not accept it.
/// refusal  what is said of such a value
template <auto take, auto... Path>
consteval FieldAccess fieldTakenBy(std::string_view refusal) {
    FieldAccess access = fieldOf<Path...>();
    access.refusal = refusal;
    access.set = [](void *record, const FieldValue &value) {
        return take(dialog_field::fieldIn<Path...>(record), value);
    };
    return access;
}

/// A text that a function makes of the record, for a control that only shows it.
template <auto textOf>
consteval FieldAccess shownBy() {
    using Record = dialog_field::RecordOf<textOf>;
    return {
        recordTypeOf<Record>(),
        [](const void *record) { return FieldValue(textOf(*static_cast<const Record *>(record))); },
        nullptr};
}

/// What a member of the record holds, or a function makes of it: limits, names of a list, whether
/// a control is enabled.
template <auto given>
consteval auto givenBy() {
    using Record = dialog_field::RecordOf<given>;
    using Value = std::remove_cvref_t<std::invoke_result_t<decltype(given), const Record &>>;
    return FromRecord<Value>{recordTypeOf<Record>(), [](const void *record) -> Value {
                                 return std::invoke(given, *static_cast<const Record *>(record));
                             }};
}

/// Names of a list that are the same for every record.
template <const auto &Names>
consteval FromRecord<std::vector<std::string>> alwaysNamed() {
    return {nullptr, [](const void *) {
                return std::vector<std::string>(std::begin(Names), std::end(Names));
            }};
}

} // namespace keldrin
