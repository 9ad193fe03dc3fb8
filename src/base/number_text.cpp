#include "base/number_text.h"

#include "base/decimal_digits.h"
#include "base/index.h"
#include "base/real.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

namespace keldrin {

namespace {

/// A formatted number without the blanks before it.
struct EditedText {
    std::array<char, 2 * EditDescriptor::MostWidth> chars; // NOLINT: `length` of it stand
    int length = 0;
    int blanksBehind = 0;    ///< of the G form, in place of the exponent
    bool strippable = false; ///< fixed point: trailing zeros may go

    void put(char c) { chars[asIndex(length++)] = c; }
    void put(const char *text, int count) {
        std::memcpy(chars.data() + length, text, asIndex(count));
        length += count;
    }
    void fill(char c, int count) {
        std::memset(chars.data() + length, c, asIndex(count));
        length += count;
    }
    [[nodiscard]] std::string_view view() const { return {chars.data(), asIndex(length)}; }
};

void fillWithAsterisks(EditedText &out, int width) {
    out.length = 0;
    out.blanksBehind = 0;
    out.strippable = false;
    out.fill('*', width);
}

/// Digits with a point before the last `decimals` of them, in `width` columns.
void layFixed(const DecimalDigits &digits, int decimals, bool negative, int width,
              EditedText &out) {
    const int whole = std::max(0, digits.count - decimals);
    const int needed = (negative ? 1 : 0) + whole + 1 + decimals;
    if (needed > width || (whole == 0 && decimals == 0 && needed == width)) {
        fillWithAsterisks(out, width);
        return;
    }
    if (negative) {
        out.put('-');
    }
    if (whole == 0 && needed < width) {
        out.put('0');
    }
    out.put(digits.text.data(), whole);
    out.put('.');
    const int leadingZeros = std::max(0, decimals - digits.count);
    out.fill('0', leadingZeros);
    out.put(digits.text.data() + whole, decimals - leadingZeros);
    out.strippable = true;
}

/// E, sign and exactly `count` digits; false when the exponent has more.
bool layExponent(int exponent, int count, EditedText &out) {
    out.put('E');
    out.put(exponent < 0 ? '-' : '+');
    int rest = std::abs(exponent);
    for (int i = count; i > 0; --i, rest /= 10) {
        out.chars[asIndex(out.length + i - 1)] = static_cast<char>('0' + rest % 10);
    }
    out.length += count;
    return rest == 0;
}

/// Digits with a point after the first `whole` (0 or 1) of them and an exponent.
void layScientific(const DecimalDigits &digits, int whole, bool negative,
                   const EditDescriptor &edit, EditedText &out) {
    const int needed = (negative ? 1 : 0) + digits.count + 1 + 2 + edit.exponentDigits;
    if (needed > edit.width) {
        fillWithAsterisks(out, edit.width);
        return;
    }
    if (negative) {
        out.put('-');
    }
    if (whole == 0 && needed < edit.width) {
        out.put('0');
    }
    out.put(digits.text.data(), whole);
    out.put('.');
    out.put(digits.text.data() + whole, digits.count - whole);
    const int exponent = digits.exponent + 1 - whole;
    if (!layExponent(exponent, edit.exponentDigits, out)) {
        fillWithAsterisks(out, edit.width);
    }
}

/// `count` digits of a value, which are zeros with exponent 0 for 0.
template <class Real>
DecimalDigits digitsOf(Real value, int count) {
    DecimalDigits digits;
    if (takeApart(value).mantissa == 0) {
        std::fill_n(digits.text.begin(), count, '0');
        digits.count = count;
    } else {
        significantDigits(value, count, digits);
    }
    return digits;
}

template <class Real>
void editFixed(const EditDescriptor &edit, Real value, EditedText &out) {
    // a width of 40 holds nothing above; the bound keeps the digits within their buffer
    if (!(std::fabs(value) < static_cast<Real>(1e38))) {
        fillWithAsterisks(out, edit.width);
        return;
    }
    DecimalDigits digits;
    fixedDigits(value, edit.digits + edit.scale, digits);
    layFixed(digits, edit.digits, std::signbit(value), edit.width, out);
}

template <class Real>
void editGeneral(const EditDescriptor &edit, Real value, EditedText &out) {
    const DecimalDigits digits = digitsOf(value, edit.digits);
    const int decimals = edit.digits - 1 - digits.exponent;
    if (decimals < 0 || decimals > edit.digits) {
        layScientific(digits, edit.scale, std::signbit(value), edit, out);
        return;
    }
    const int blanks = edit.exponentDigits + 2;
    if (edit.width <= blanks) {
        fillWithAsterisks(out, edit.width);
        return;
    }
    layFixed(digits, decimals, std::signbit(value), edit.width - blanks, out);
    if (out.strippable) {
        out.blanksBehind = blanks;
    } else {
        fillWithAsterisks(out, edit.width);
    }
}

template <class Real>
EditedText edited(const EditDescriptor &edit, Real value) {
    EditedText out;
    if (!std::isfinite(value)) {
        fillWithAsterisks(out, edit.width);
    } else if (edit.form == EditDescriptor::Form::Fixed) {
        editFixed(edit, value, out);
    } else if (edit.form == EditDescriptor::Form::General) {
        editGeneral(edit, value, out);
    } else {
        layScientific(digitsOf(value, edit.digits + 1), 1, std::signbit(value), edit, out);
    }
    return out;
}

template <class Real>
std::string formatted(std::string_view descriptor, Real value) {
    const EditDescriptor edit = editDescriptor(descriptor);
    if (edit.form == EditDescriptor::Form::None) {
        return {};
    }
    const EditedText text = edited(edit, value);
    const int before = edit.width - text.length - text.blanksBehind;
    std::string out(asIndex(before), ' ');
    out += text.view();
    out.append(asIndex(text.blanksBehind), ' ');
    return out;
}

constexpr int NumberTextWidth = 16;

template <class Real>
void appendNumber(std::string &out, Real value, const EditDescriptor &edit) {
    if (!isPresent(value) || edit.form == EditDescriptor::Form::None ||
        edit.width > NumberTextWidth) {
        out += '*';
        return;
    }
    const EditedText text = edited(edit, value);
    std::string_view number = text.view();
    if (!text.strippable) {
        out += number;
        return;
    }
    const std::size_t sign = number.front() == '-' ? 1 : 0;
    out += number.substr(0, sign);
    number.remove_prefix(sign);
    if (number.front() == '.') { // no room was left for the zero, so the last digit goes
        out += '0';
        number = number.substr(0, NumberTextWidth - 1 - sign);
    }
    number.remove_suffix(number.size() - 1 - number.find_last_not_of('0'));
    if (number.size() > 1 && number.back() == '.') {
        number.remove_suffix(1);
    }
    out += number;
}

template <class Real>
std::string messageText(Real value) {
    constexpr int Digits = 6;
    if (!std::isfinite(value)) {
        return std::isnan(value) ? "nan" : (value < 0 ? "-inf" : "inf");
    }
    if (takeApart(value).mantissa == 0) {
        return "0";
    }
    DecimalDigits digits;
    significantDigits(value, Digits, digits);
    std::string text(digits.text.data(), asIndex(digits.count));
    text.erase(text.find_last_not_of('0') + 1);
    const int exponent = digits.exponent;
    const int length = static_cast<int>(text.size());
    if (exponent < -5 || exponent > 6) {
        if (length > 1) {
            text.insert(1, 1, '.');
        }
        const std::string power = std::to_string(std::abs(exponent));
        text += exponent < 0 ? "e-" : "e+";
        text += power.size() < 2 ? "0" + power : power;
    } else if (exponent < 0) {
        text.insert(0, "0." + std::string(asIndex(-exponent) - 1, '0'));
    } else if (length > exponent + 1) {
        text.insert(asIndex(exponent) + 1, 1, '.');
    } else {
        text.append(asIndex(exponent + 1 - length), '0');
    }
    return std::signbit(value) ? "-" + text : text;
}

} // namespace

std::string formatReal(std::string_view descriptor, float value) {
    return formatted(descriptor, value);
}
std::string formatReal(std::string_view descriptor, double value) {
    return formatted(descriptor, value);
}

void appendNumberText(std::string &out, float value, const EditDescriptor &descriptor) {
    appendNumber(out, value, descriptor);
}
void appendNumberText(std::string &out, double value, const EditDescriptor &descriptor) {
    appendNumber(out, value, descriptor);
}
void appendNumberText(std::string &out, float value, std::string_view descriptor) {
    appendNumber(out, value, editDescriptor(descriptor));
}
void appendNumberText(std::string &out, double value, std::string_view descriptor) {
    appendNumber(out, value, editDescriptor(descriptor));
}

std::string Number_Text(float value, std::string_view descriptor) {
    std::string text;
    appendNumberText(text, value, descriptor);
    return text;
}
std::string Number_Text(double value, std::string_view descriptor) {
    std::string text;
    appendNumberText(text, value, descriptor);
    return text;
}

void appendIntText(std::string &out, std::int32_t value) {
    constexpr std::int32_t MissingInteger = -2147483646;
    if (value <= MissingInteger) {
        out += '*';
        return;
    }
    std::array<char, 12> text{};
    const auto written = std::to_chars(text.data(), text.data() + text.size(), value);
    out.append(text.data(), written.ptr);
}

std::string Int_Text(std::int32_t value) {
    std::string text;
    appendIntText(text, value);
    return text;
}

std::string messageNumber(float value) {
    return messageText(value);
}
std::string messageNumber(double value) {
    return messageText(value);
}

} // namespace keldrin
