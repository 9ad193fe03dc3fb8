#pragma once

#include "base/ascii.h"

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
//
//   F    fixed point, `digits` decimals; 1P shows ten times the value
//   ES   one digit before the point, `digits` after it, and an exponent (two digits by default)
//   G    `digits` significant digits: fixed point where the rounded value lies from 0.1 to below
//        10**digits or is 0, with blanks in place of the exponent; otherwise an exponent, after
//        0.ddd with 0P and after d.ddd, of as many digits in all, with 1P
//
// A number that does not fit its width or its exponent digits fills the field with asterisks, and
// so does a NaN or an infinity. The "0" before a leading point is the first thing that gives way.

/// A descriptor taken apart. Writers of large tables keep these.
struct EditDescriptor {
    enum class Form : std::uint8_t { None, Fixed, General, Scientific };
    static constexpr int MostWidth = 40;
    static constexpr int MostDigits = 30;

    Form form = Form::None; ///< None: the text was no descriptor
    std::uint8_t width = 0;
    std::uint8_t digits = 0;
    std::uint8_t exponentDigits = 2;
    std::uint8_t scale = 0; ///< of 0P or 1P
};

/// Parses a descriptor; form None if the text is not one.
constexpr EditDescriptor editDescriptor(std::string_view text);

/// `value` in the columns of `descriptor`, right-adjusted, with leading blanks.
/// A text that is no descriptor gives an empty string.
std::string formatReal(std::string_view descriptor, float value);
std::string formatReal(std::string_view descriptor, double value);

/// The text of a number in a project or model file: formatted, left-adjusted, a "0" put before a
/// leading point, and trailing zeros and point taken off unless an exponent or no point is in it.
/// A missing value (not above -9.9e31) and a failed conversion (no descriptor, or more than 16
/// columns) give "*". At most 16 characters.
std::string Number_Text(float value, std::string_view descriptor);
std::string Number_Text(double value, std::string_view descriptor);

/// An integer with the minimum width; a value not above -2147483646 gives "*".
std::string Int_Text(std::int32_t value);

// The same, appended to a text that is being built, for writers of large tables.
void appendNumberText(std::string &out, float value, const EditDescriptor &descriptor);
void appendNumberText(std::string &out, double value, const EditDescriptor &descriptor);
void appendNumberText(std::string &out, float value, std::string_view descriptor);
void appendNumberText(std::string &out, double value, std::string_view descriptor);
void appendIntText(std::string &out, std::int32_t value);

/// A real as messages show it: at most six significant digits without trailing zeros, fixed point
/// from 1e-5 to below 1e7 ("0.001", "1000000"), otherwise with an exponent ("1e+07").
std::string messageNumber(float value);
std::string messageNumber(double value);

namespace descriptor {

/// Takes a number of at most two digits off the front; -1 when there is none or it is longer.
constexpr int takeNumber(std::string_view &text) {
    int number = -1;
    for (int length = 0; !text.empty() && isDigit(text.front()); text.remove_prefix(1)) {
        number = ++length > 2 ? -1 : (number < 0 ? 0 : number) * 10 + (text.front() - '0');
        if (number < 0) {
            break;
        }
    }
    return number;
}

/// Takes a letter, in either case, off the front when it is there.
constexpr bool take(std::string_view &text, char letter) {
    const bool there = !text.empty() && upperOf(text.front()) == letter;
    text.remove_prefix(there ? 1 : 0);
    return there;
}

} // namespace descriptor

constexpr EditDescriptor editDescriptor(std::string_view text) {
    using descriptor::take;
    using descriptor::takeNumber;
    EditDescriptor edit;
    const bool opened = take(text, '(');
    if (const int scale = takeNumber(text); scale >= 0) {
        if (scale > 1 || !take(text, 'P')) {
            return {};
        }
        edit.scale = static_cast<std::uint8_t>(scale);
        take(text, ',');
    }
    auto form = EditDescriptor::Form::None;
    if (take(text, 'F')) {
        form = EditDescriptor::Form::Fixed;
    } else if (take(text, 'G')) {
        form = EditDescriptor::Form::General;
    } else if (take(text, 'E') && take(text, 'S')) {
        form = EditDescriptor::Form::Scientific;
    }
    const int width = takeNumber(text);
    const int digits = take(text, '.') ? takeNumber(text) : -1;
    if (form != EditDescriptor::Form::Fixed && take(text, 'E')) {
        const int exponentDigits = takeNumber(text);
        edit.exponentDigits = static_cast<std::uint8_t>(
            exponentDigits < 1 || exponentDigits > 4 ? 0 : exponentDigits);
    }
    const bool closed = take(text, ')') && text.empty();
    const int fewest = form == EditDescriptor::Form::General ? 1 : 0;
    if (!opened || !closed || width < 1 || width > EditDescriptor::MostWidth || digits < fewest ||
        digits > EditDescriptor::MostDigits || edit.exponentDigits == 0) {
        return {};
    }
    edit.form = form;
    edit.width = static_cast<std::uint8_t>(width);
    edit.digits = static_cast<std::uint8_t>(digits);
    return edit;
}

} // namespace keldrin
