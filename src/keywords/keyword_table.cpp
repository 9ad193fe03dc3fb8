#include "keywords/keyword_table.h"

#include "base/ascii.h"
#include "base/index.h"
#include "base/number_text.h"
#include "base/real.h"
#include "messages/message_log.h"
#include "model/enumerations.h"
#include "text/enumeration.h"

#include <cmath>
#include <limits>
#include <utility>

namespace keldrin {
namespace {

constexpr int LoudUnknownKeywords = 3;

/// Sets the mark of the record's keyword; true when it was not set.
bool isFirst(const Reading &reading, std::array<bool, GroupTail::MostKeywords> GroupTail::*marks) {
    const auto row = static_cast<std::size_t>(&reading.row - reading.group.rows.data());
    return !std::exchange((reading.group.tail(reading.metadata).*marks)[row], true);
}

/// What a reader leaves where it stored no value: no text reads as NaN or as the lowest integer.
template <class T>
constexpr T unreadValue() {
    if constexpr (std::is_floating_point_v<T>) {
        return std::numeric_limits<T>::quiet_NaN();
    } else {
        return std::numeric_limits<T>::lowest();
    }
}
template <class T>
bool isUnread(T value) {
    if constexpr (std::is_floating_point_v<T>) {
        return std::isnan(value);
    } else {
        return value == unreadValue<T>();
    }
}

/// A bound rounded to the width of the values that it limits.
template <class T>
constexpr double boundFor(double bound) {
    if constexpr (std::is_same_v<T, float>) {
        return static_cast<double>(static_cast<float>(bound));
    } else {
        return bound;
    }
}

template <class T>
std::string numberText(double value) {
    if constexpr (std::is_integral_v<T>) {
        return std::to_string(static_cast<long long>(value));
    } else {
        return messageNumber(static_cast<T>(value));
    }
}

template <class T>
std::string valueText(const Limits &limits, std::string_view label, double value) {
    const std::string key(label);
    switch (limits.form) {
    case ValueForm::AbsoluteKey:
        return "Abs|" + key + "| = " + numberText<T>(std::fabs(value));
    case ValueForm::AbsoluteValue:
        return key + " = abs|" + numberText<T>(value) + "|";
    default:
        return key + " = " + numberText<T>(value);
    }
}

template <class T>
std::string boundText(const Limits &limits, bool below) {
    if (limits.words.empty()) {
        return below ? (limits.lowExcluded ? " <= " : " < ") + numberText<T>(limits.low)
                     : " > " + numberText<T>(limits.high);
    }
    const std::string words(limits.words);
    return limits.words.back() == ' ' ? words + numberText<T>(limits.high) : words;
}

/// `key = value < low` and, after either part, the unit.
template <class T>
std::string outsideText(const Limits &limits, std::string_view label, double value, bool below) {
    const std::string shown = valueText<T>(limits, label, value);
    const std::string bound = boundText<T>(limits, below);
    const std::string unit(limits.unit);
    return limits.form == ValueForm::WithUnit ? shown + unit + bound : shown + bound + unit;
}

/// Stores `given` as the row's limits allow. False where they refuse it.
template <class T>
bool storeInLimits(const Reading &reading, std::string_view label, T given, T &value) {
    const Limits &limits = reading.row.limits;
    const auto exact = static_cast<double>(given);
    const double tested = limits.magnitude == Magnitude::Off ? exact : std::fabs(exact);
    const double low = boundFor<T>(limits.low);
    const bool below = limits.lowExcluded ? tested <= low : tested < low;
    if (!below && tested <= boundFor<T>(limits.high)) {
        value = limits.magnitude == Magnitude::Positive ? static_cast<T>(tested) : given;
        return true;
    }
    if (!limits.refused) {
        const double forced = below ? limits.forcedLow : limits.forcedHigh;
        const bool negative = limits.magnitude == Magnitude::SignKept && exact < 0.0;
        value = static_cast<T>(negative ? -forced : forced);
    }
    const std::string firstLine =
        limits.firstLine.empty()
            ? std::string(reading.group.name) + "_MD_Read.WARNING:"
            : std::string(limits.firstLine) + std::to_string(reading.record.where.number);
    reportRecord(reading.record.where, isFirst(reading, &GroupTail::outOfRange),
                 {firstLine, outsideText<T>(limits, label, exact, below),
                  std::string(label) + " will be set = " +
                      numberText<T>(static_cast<double>(value)) + std::string(limits.unit)});
    return !limits.refused;
}

void warnOfUnknownKeyword(const GroupTable &group, const KeywordRecord &record,
                          Metadata &metadata) {
    int &count = group.tail(metadata).unknownKeywords;
    const bool loud = count < LoudUnknownKeywords;
    count += loud && !record.where.quiet ? 1 : 0;
    reportRecord(record.where, loud,
                 {std::string(group.name) + "_MD_Read.WARNING:",
                  "Did not recognize keyword " + std::string(record.key) + " in record # " +
                      std::to_string(record.where.number),
                  record.where.line});
}

int lengthUnitOf(const Reading &reading) {
    int unit = reading.metadata.Unit.Length.value;
    for (const std::string_view token : reading.record.tokens) {
        for (const char c : token) {
            const char letter = lowerOf(c);
            unit = letter == 'm' ? Metres : letter == 'f' ? Feet : unit;
        }
    }
    return unit;
}

} // namespace

std::string initialText(const KeywordRow & /*row*/, double value) {
    return isPresent(value) ? messageNumber(value) : std::string();
}

std::string initialText(const KeywordRow &row, int value) {
    if (row.names.empty()) {
        return std::to_string(value);
    }
    return value > 0 ? std::string(row.names[asIndex(value - 1)]) : std::string();
}

std::string initialText(const KeywordRow & /*row*/, std::string_view value) {
    return std::string(value);
}

int readGroup(const GroupTable &group, const KeywordRecord &record, Metadata &metadata) {
    for (const KeywordRow &row : group.rows) {
        if (row.contained ? holds(record.keyword, row.keyword) : record.keyword == row.keyword) {
            const Reading reading{record, metadata, group, row};
            const int status = row.reader(reading);
            if (record.cut) {
                notePartlyUsed(reading, "has a value of more than 32 characters, which is cut");
            }
            return status;
        }
    }
    warnOfUnknownKeyword(group, record, metadata);
    return 0;
}

void reportRecord(const RecordLine &where, bool loud, std::initializer_list<MessageLine> lines) {
    if (where.quiet) {
        return;
    }
    if (loud) {
        ReportError(lines);
    } else {
        ReportWarning(lines);
    }
}

void notePartlyUsed(const Reading &reading, std::string_view words) {
    if (reading.record.where.quiet || !isFirst(reading, &GroupTail::partlyUsed)) {
        return;
    }
    ReportWarning({std::string(reading.group.name) + "_MD_Read.WARNING:",
                   std::string(reading.record.key) + " in record # " +
                       std::to_string(reading.record.where.number) + " " + std::string(words),
                   reading.record.where.line});
}

void noteExcessTexts(const Reading &reading, std::size_t used) {
    const auto &tokens = reading.record.tokens;
    if (std::any_of(tokens.begin() + static_cast<std::ptrdiff_t>(std::min(used, tokens.size())),
                    tokens.end(), [](std::string_view token) { return !token.empty(); })) {
        notePartlyUsed(reading, "is cut at a comma");
    }
}

void noteExcessNumbers(const Reading &reading, std::size_t used) {
    const auto &tokens = reading.record.tokens;
    if (std::any_of(tokens.begin() + static_cast<std::ptrdiff_t>(std::min(used, tokens.size())),
                    tokens.end(), [](std::string_view token) {
                        return std::any_of(token.begin(), token.end(), isDigit);
                    })) {
        notePartlyUsed(reading, "has more values than are used");
    }
}

bool assumesLengthUnit(const Reading &reading) {
    const auto &tokens = reading.record.tokens;
    return reading.metadata.Unit.Length.level < reading.record.level &&
           std::none_of(tokens.begin(), tokens.end(), [](std::string_view token) {
               return token.find_first_of("mMfF") != std::string_view::npos;
           });
}

std::string labelOf(const Reading &reading, std::size_t index, std::size_t count) {
    const std::string_view label = reading.row.label;
    const std::string number = std::to_string(index + 1) + "]";
    if (label.empty()) {
        const std::string key(reading.record.key);
        return count > 1 ? key + "[" + number : key;
    }
    return label.back() == '[' ? std::string(label) + number : std::string(label);
}

template <>
int plainCell<float>(const Reading &reading, std::string_view token, std::string_view label,
                     float unread, float &value) {
    return Val_Read_R4(reading.record.where, token, label, unread, value);
}
template <>
int plainCell<double>(const Reading &reading, std::string_view token, std::string_view label,
                      double unread, double &value) {
    return Val_Read_R8(reading.record.where, token, label, unread, value);
}
template <>
int plainCell<int>(const Reading &reading, std::string_view token, std::string_view label,
                   int unread, int &value) {
    return Val_Read_Int(reading.record.where, token, label, unread, value);
}

int lengthCell(const Reading &reading, std::string_view token, std::string_view label, float unread,
               float &value) {
    return Val_Read_Length(reading.record.where, token, label, lengthUnitOf(reading), unread,
                           value);
}

int azimuthCell(const Reading &reading, std::string_view token, std::string_view label,
                float unread, float &value) {
    return Val_Read_Azimuth(reading.record.where, token, label, unread, value);
}

int hoursCell(const Reading &reading, std::string_view token, std::string_view label, double unread,
              double &value) {
    return Val_Read_Hours(reading.record.where, token, label, unread, value);
}

template <class T>
bool takeValue(const Reading &reading, CellReader<T> cell, std::string_view token,
               std::string_view label, T &value) {
    T read = unreadValue<T>();
    if (cell(reading, token, label, unreadValue<T>(), read) != CellRead || isUnread(read)) {
        return false;
    }
    return storeInLimits(reading, label, read, value);
}
template bool takeValue(const Reading &, CellReader<float>, std::string_view, std::string_view,
                        float &);
template bool takeValue(const Reading &, CellReader<double>, std::string_view, std::string_view,
                        double &);
template bool takeValue(const Reading &, CellReader<int>, std::string_view, std::string_view,
                        int &);

template <class T>
bool takeValues(const Reading &reading, CellReader<T> cell,
                std::span<const std::string_view> tokens, std::span<T> values) {
    bool stored = false;
    for (std::size_t i = 0; i < std::min(tokens.size(), values.size()); ++i) {
        const std::string label = labelOf(reading, i, values.size());
        stored |= takeValue(reading, cell, tokens[i], label, values[i]);
    }
    return stored;
}
template bool takeValues(const Reading &, CellReader<float>, std::span<const std::string_view>,
                         std::span<float>);
template bool takeValues(const Reading &, CellReader<double>, std::span<const std::string_view>,
                         std::span<double>);
template bool takeValues(const Reading &, CellReader<int>, std::span<const std::string_view>,
                         std::span<int>);

bool takeName(std::string_view token, std::string_view label,
              std::span<const std::string_view> names, int &index) {
    int answer = index;
    if (Str_to_iEnumeration(token, label, names, answer) != 0) {
        return false;
    }
    // An answer that the user gave for another enumeration may lie beyond this one.
    index = limited(answer, 1, static_cast<int>(names.size()));
    return true;
}

bool takeEnumerations(const Reading &reading, std::span<int> indices) {
    const auto &tokens = reading.record.tokens;
    bool stored = false;
    for (std::size_t i = 0; i < std::min(tokens.size(), indices.size()); ++i) {
        const std::string label = labelOf(reading, i, indices.size());
        stored |= takeName(tokens[i], label, reading.row.names, indices[i]);
    }
    return stored;
}

} // namespace keldrin
