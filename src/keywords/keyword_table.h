#pragma once

#include "keywords/limits.h"
#include "messages/message_log.h"
#include "model/metadata.h"
#include "text/value_readers.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>

namespace keldrin {

// The one mechanism of all keyword groups. A group is a table of rows; a row names a keyword and
// the reader of its value, nearly always one of the builders below with the field as a member
// pointer, so that the field's type chooses the reader. What follows no rule is a named function
// that the row points to (`irregular`).
//
// Rules that hold for every row:
//   - A value keeps the level of the record that set it. A record of a lower level is skipped
//     before its tokens are looked at; a level is stored only together with a value.
//   - A token that is blank, null or cannot be read leaves its value alone. The readers report it.
//   - A value outside its limits is reported and forced into them, or refused. The first such
//     report of a keyword is an error, later ones are warnings.
//   - What is not used of a value (after its size, after a comma, a unit that no step knows) is
//     reported once for each keyword.
//   - A quiet record reports nothing: an earlier pass over the file has done so.

/// One keyword record on its way to its group.
struct KeywordRecord {
    RecordLine where;
    std::string_view key;                     ///< as written
    std::string_view keyword;                 ///< after the group, upper case
    std::span<const std::string_view> tokens; ///< at least one; blanks around them are gone
    int level = 0;                            ///< 2 data file, 1 side file
    std::string_view value;                   ///< all after the "="
    bool cut = false;                         ///< a token was longer than a token may be
};

struct KeywordRow;
struct GroupTable;

/// What a row's reader works on.
struct Reading {
    const KeywordRecord &record;
    Metadata &metadata;
    const GroupTable &group;
    const KeywordRow &row;
};

/// Reads a record's tokens into the metadata; the result is the record's status, 0 unless stated
/// otherwise.
using RowReader = int (*)(const Reading &reading);

struct KeywordRow {
    std::string_view keyword;
    RowReader reader;
    Limits limits{};
    std::string_view label{}; ///< in messages; with "[" at its end the element's number follows;
                              ///< blank: the key as written
    std::span<const std::string_view> names{}; ///< of an enumeration
    bool contained = false;  ///< taken by every keyword that contains it, not only by an equal one
    std::string_view form{}; ///< of the value, in words for the manual; blank: a form of its own
    /// The value before any record, for the manual; null where there is none.
    std::string (*initial)(const KeywordRow &row) = nullptr;
};

struct GroupTable {
    std::string_view name; ///< as in the reader's name: "Tx" of Tx_MD_Read
    std::span<const KeywordRow> rows;
    GroupTail &(*tail)(Metadata &metadata);
};

/// Hands a record to the first row that takes its keyword. An unknown keyword is reported, the
/// first three of a group as errors, and gives status 0.
int readGroup(const GroupTable &group, const KeywordRecord &record, Metadata &metadata);

/// An error where `loud`, else a warning; nothing for a quiet record.
void reportRecord(const RecordLine &where, bool loud, std::initializer_list<MessageLine> lines);

/// Warns, once for each keyword, of a value that is used in part or not at all.
/// words  what becomes of it
void notePartlyUsed(const Reading &reading, std::string_view words);

/// Notes values that no row takes: `used` tokens were wanted, and one after them is not blank.
/// A token without a digit among numbers is taken for a unit.
void noteExcessTexts(const Reading &reading, std::size_t used);
void noteExcessNumbers(const Reading &reading, std::size_t used);

/// The group's record among all.
template <class Group>
Group &groupIn(Metadata &m) {
    return std::get<Group &>(
        std::tie(m.Job, m.Survey, m.Unit, m.Grid, m.Line, m.Stn, m.Qdr, m.Gps, m.Tx, m.Rx, m.Ch));
}
template <class Group, class Field>
Field &memberIn(Metadata &metadata, Field Group::*member) {
    return groupIn<Group>(metadata).*member;
}
template <class Group, class Field>
Group &groupOf(Metadata &metadata, Field Group::* /*member*/) {
    return groupIn<Group>(metadata);
}
template <class Group>
GroupTail &tailOf(Metadata &metadata) {
    return groupIn<Group>(metadata).tail;
}
template <class Group, std::size_t N>
constexpr GroupTable groupTable(std::string_view name, const std::array<KeywordRow, N> &rows) {
    static_assert(N <= GroupTail::MostKeywords);
    return {name, rows, tailOf<Group>};
}

template <class T>
std::span<T> elementsOf(T &value) {
    return {&value, 1};
}
template <class T, std::size_t N>
std::span<T> elementsOf(std::array<T, N> &values) {
    return values;
}

/// Keeps the source rule: `take` reads the tokens only where the record may set the field, and
/// says whether it stored a value.
template <class Field, class Take>
void keepSource(const Reading &reading, Field &field, Take take) {
    if (reading.record.level < field.level) {
        return;
    }
    if (take()) {
        field.level = reading.record.level;
    }
}

/// The label of element `index` (from 0) of `count`: the row's, else the key as written.
std::string labelOf(const Reading &reading, std::size_t index, std::size_t count);

/// Reads one token: status and value as the readers of text/value_readers.h, which report.
template <class T>
using CellReader = int (*)(const Reading &reading, std::string_view token, std::string_view label,
                           T unread, T &value);

template <class T>
int plainCell(const Reading &reading, std::string_view token, std::string_view label, T unread,
              T &value);
template <>
int plainCell<float>(const Reading &reading, std::string_view token, std::string_view label,
                     float unread, float &value);
template <>
int plainCell<double>(const Reading &reading, std::string_view token, std::string_view label,
                      double unread, double &value);
template <>
int plainCell<int>(const Reading &reading, std::string_view token, std::string_view label,
                   int unread, int &value);
/// A length in metres; a token without a unit letter has the unit of the record's last letter of
/// m or f, else Unit.Length.
int lengthCell(const Reading &reading, std::string_view token, std::string_view label, float unread,
               float &value);
int azimuthCell(const Reading &reading, std::string_view token, std::string_view label,
                float unread, float &value);

/// Hours from a real number or from hh:mm:ss.
int hoursCell(const Reading &reading, std::string_view token, std::string_view label, double unread,
              double &value);

/// Reads one token and holds it in the row's limits. False when it held no value or one that the
/// limits refuse; `value` is then as before. For float, double and int.
template <class T>
bool takeValue(const Reading &reading, CellReader<T> cell, std::string_view token,
               std::string_view label, T &value);

/// Token i into value i, as far as both go. True when one was stored.
template <class T>
bool takeValues(const Reading &reading, CellReader<T> cell,
                std::span<const std::string_view> tokens, std::span<T> values);

/// The 1-based index of a name in an enumeration, which the user may be asked for. False when
/// there is nothing to match or the user cancelled; `index` is then as before.
bool takeName(std::string_view token, std::string_view label,
              std::span<const std::string_view> names, int &index);

/// Token i into value i for enumerations: 1-based indices into the row's names.
bool takeEnumerations(const Reading &reading, std::span<int> indices);

template <class Text>
bool takeTexts(const Reading &reading, std::span<Text> texts) {
    const auto &tokens = reading.record.tokens;
    bool stored = false;
    for (std::size_t i = 0; i < std::min(tokens.size(), texts.size()); ++i) {
        if (!tokens[i].empty()) {
            texts[i] = tokens[i];
            stored = true;
            if (texts[i] != tokens[i]) {
                notePartlyUsed(reading, "is cut to \"" + texts[i].str() + "\"");
            }
        }
    }
    if (texts.size() == 1) {
        noteExcessTexts(reading, 1);
    }
    return stored;
}

// The readers of regular rows and the builders of their table rows. The field is a Sourced value,
// or a Sourced array for a list of values.

template <auto Member>
int readTexts(const Reading &reading) {
    auto &field = memberIn(reading.metadata, Member);
    keepSource(reading, field, [&] { return takeTexts(reading, elementsOf(field.value)); });
    return 0;
}

template <auto Member>
int readEnumerations(const Reading &reading) {
    auto &field = memberIn(reading.metadata, Member);
    keepSource(reading, field, [&] { return takeEnumerations(reading, elementsOf(field.value)); });
    return 0;
}

template <auto Member, auto Cell>
int readValues(const Reading &reading) {
    auto &field = memberIn(reading.metadata, Member);
    keepSource(reading, field, [&] {
        const auto values = elementsOf(field.value);
        if (values.size() == 1) {
            noteExcessNumbers(reading, 1);
        }
        return takeValues(reading, Cell, reading.record.tokens, values);
    });
    return 0;
}

/// True when neither the record nor a record of its level or above states the unit of a length.
bool assumesLengthUnit(const Reading &reading);

template <auto Member>
int readLength(const Reading &reading) {
    auto &field = memberIn(reading.metadata, Member);
    keepSource(reading, field, [&] {
        if (!takeValue(reading, lengthCell, reading.record.tokens.front(), labelOf(reading, 0, 1),
                       field.value)) {
            return false;
        }
        field.unitAssumed = assumesLengthUnit(reading);
        return true;
    });
    return 0;
}

/// Token i into value i for values with a reader of their own.
/// Take  bool(reading, token, label, value): true when it stored a value
template <auto Member, auto Take>
int readEach(const Reading &reading) {
    auto &field = memberIn(reading.metadata, Member);
    keepSource(reading, field, [&] {
        const auto values = elementsOf(field.value);
        const auto &tokens = reading.record.tokens;
        bool stored = false;
        for (std::size_t i = 0; i < std::min(tokens.size(), values.size()); ++i) {
            const std::string label = labelOf(reading, i, values.size());
            stored |= Take(reading, tokens[i], label, values[i]);
        }
        return stored;
    });
    return 0;
}

/// The type of one element of a Sourced field.
template <auto Member>
using ElementOf =
    typename decltype(elementsOf(memberIn(std::declval<Metadata &>(), Member).value))::element_type;

/// The number of its elements.
template <class T>
inline constexpr std::size_t ElementsOfType = 1;
template <class T, std::size_t N>
inline constexpr std::size_t ElementsOfType<std::array<T, N>> = N;
template <auto Member>
inline constexpr std::size_t elementCountOf = ElementsOfType<
    std::remove_reference_t<decltype(memberIn(std::declval<Metadata &>(), Member).value)>>;

/// The form of a field's values: "number", "integer", or several of them.
template <auto Member>
constexpr std::string_view numberForm() {
    constexpr bool isList = elementCountOf < Member >> 1;
    if (std::is_integral_v<ElementOf<Member>>) {
        return isList ? "integers" : "integer";
    }
    return isList ? "numbers" : "number";
}

/// A value as text; blank for one that is not set, and a name for an index into the row's names.
std::string initialText(const KeywordRow &row, double value);
std::string initialText(const KeywordRow &row, int value);
std::string initialText(const KeywordRow &row, std::string_view value);
inline std::string initialText(const KeywordRow &row, float value) {
    return initialText(row, static_cast<double>(value));
}
template <std::size_t N>
std::string initialText(const KeywordRow &row, const FixedText<N> &value) {
    return initialText(row, value.view());
}
inline std::string initialText(const KeywordRow &row, const NamedSensor &value) {
    return initialText(row, value.name.view());
}

/// What a field holds before any record: the different values of a list, separated by commas.
template <auto Member>
std::string initialOf(const KeywordRow &row) {
    Metadata metadata;
    auto &field = memberIn(metadata, Member);
    std::string all;
    std::string last;
    const auto append = [&](const auto &value) {
        const std::string text = initialText(row, value);
        all.append(text == last ? "" : (all.empty() ? "" : ", ") + text);
        last = text;
    };
    if constexpr (requires { field.value; }) {
        for (const auto &value : elementsOf(field.value)) {
            append(value);
        }
    } else {
        append(field);
    }
    return all;
}

namespace rows {

/// The first token, or a list of tokens, as text.
template <auto Member>
constexpr KeywordRow text(std::string_view keyword) {
    return {.keyword = keyword,
            .reader = readTexts<Member>,
            .form = "text",
            .initial = initialOf<Member>};
}

template <auto Member>
constexpr KeywordRow number(std::string_view keyword, Limits limits = {},
                            std::string_view label = {}) {
    return {.keyword = keyword,
            .reader = readValues<Member, &plainCell<ElementOf<Member>>>,
            .limits = limits,
            .label = label,
            .form = numberForm<Member>(),
            .initial = initialOf<Member>};
}

template <auto Member>
constexpr KeywordRow length(std::string_view keyword, Limits limits = LengthRange,
                            std::string_view label = {}) {
    return {.keyword = keyword,
            .reader = readLength<Member>,
            .limits = limits,
            .label = label,
            .form = "length",
            .initial = initialOf<Member>};
}

template <auto Member>
constexpr KeywordRow azimuth(std::string_view keyword, std::string_view label = {}) {
    return {.keyword = keyword,
            .reader = readValues<Member, &azimuthCell>,
            .limits = CircleRange,
            .label = label,
            .form = "azimuth",
            .initial = initialOf<Member>};
}

template <auto Member>
constexpr KeywordRow enumeration(std::string_view keyword, std::string_view label,
                                 std::span<const std::string_view> names) {
    return {.keyword = keyword,
            .reader = readEnumerations<Member>,
            .label = label,
            .names = names,
            .form = "name",
            .initial = initialOf<Member>};
}

constexpr KeywordRow irregular(std::string_view keyword, RowReader reader, Limits limits = {},
                               std::string_view label = {},
                               std::span<const std::string_view> names = {}) {
    return {keyword, reader, limits, label, names};
}

/// The same for a field that has a value before any record.
template <auto Member>
constexpr KeywordRow irregular(std::string_view keyword, RowReader reader, Limits limits = {},
                               std::string_view label = {},
                               std::span<const std::string_view> names = {}) {
    KeywordRow row = irregular(keyword, reader, limits, label, names);
    row.initial = initialOf<Member>;
    return row;
}

/// A known keyword whose value nobody needs.
constexpr KeywordRow dropped(std::string_view keyword) {
    return {.keyword = keyword, .reader = [](const Reading &) { return 0; }, .form = "not used"};
}

} // namespace rows

} // namespace keldrin
