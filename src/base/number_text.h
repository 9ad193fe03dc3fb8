#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace keldrin {

// Numbers to text: the one rule of every file writer, dialog and message.
//
// A descriptor is a text in parentheses such as "(F14.3)", "(1P,G11.4E1)", "(0P,G12.4E1)",
// "(ES14.5)" or "(ES12.4E1)": an optional scale factor 0P or 1P, then one of F, G, ES with
// width, digits and an optional count of exponent digits. Rounding is of the exact binary value,
// half to even; a negative value that rounds to zero keeps its sign. The locale plays no part.

/// `value` in the columns of `descriptor`, right-adjusted, with leading blanks.
/// A number that does not fit its width or its exponent digits fills the field with asterisks;
/// so does a NaN or an infinity. A text that is no descriptor gives an empty string.
std::string formatReal(std::string_view descriptor, float value);
std::string formatReal(std::string_view descriptor, double value);

/// The text of a number in a project or model file: formatted, left-adjusted, a "0" put before a
/// leading point, and trailing zeros and point taken off unless an exponent or no point is in it.
/// A missing value (not above -9.9e31) and a failed conversion give "*". At most 16 characters.
std::string Number_Text(float value, std::string_view descriptor);
std::string Number_Text(double value, std::string_view descriptor);

/// An integer with the minimum width; a value not above -2147483646 gives "*".
std::string Int_Text(std::int32_t value);

// The same, appended to a text that is being built, for writers of large tables.
void appendNumberText(std::string &out, float value, std::string_view descriptor);
void appendNumberText(std::string &out, double value, std::string_view descriptor);
void appendIntText(std::string &out, std::int32_t value);

/// A real as messages show it: the shortest form, at most six significant digits.
std::string messageNumber(float value);
std::string messageNumber(double value);

} // namespace keldrin
