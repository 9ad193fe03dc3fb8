#pragma once

#include <string>
#include <string_view>

namespace keldrin {

// Character tests and case folding that touch ASCII only and know no locale.

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
constexpr char upperOf(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
constexpr char lowerOf(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// A copy with `a` to `z` turned into `A` to `Z`; nothing else is touched.
std::string Str_Upper(std::string_view text);

/// A copy without blanks and tabs.
std::string Str_No_Blanks(std::string_view text);

/// Without leading blanks; a tab is no blank here.
std::string_view trimLeft(std::string_view text);

/// Without leading and trailing blanks.
std::string_view trimBlanks(std::string_view text);

/// True when `text` holds `part` (an empty part is held by every text).
constexpr bool holds(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

/// True when two texts are the same without regard to the case of a to z.
bool sameIgnoringCase(std::string_view a, std::string_view b);

/// True when a line opens a label line in every table format: a code from `A` to `z`.
constexpr bool startsLabelLine(std::string_view line) {
    return !line.empty() && line.front() >= 'A' && line.front() <= 'z';
}

} // namespace keldrin
