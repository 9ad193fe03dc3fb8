#include "toolkit/field_number.h"

#include "base/ascii.h"
#include "base/number_text.h"
#include "base/real.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace keldrin {

namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();

/// A typed number taken apart: exact for every text, however long.
struct Parts {
    bool negative = false;
    std::string digits;     ///< of both sides of the point
    long long point = 0;    ///< digits before the point
    long long exponent = 0; ///< as typed, held far outside every range of a real
};

// Passes over digits; a point, or a comma in its place, among them is kept apart.
std::string_view takeDigits(std::string_view text, bool pointAllowed, Parts &parts) {
    bool pointSeen = false;
    std::size_t i = 0;
    for (; i < text.size(); ++i) {
        if (isDigit(text[i])) {
            parts.digits += text[i];
            parts.point += pointSeen ? 0 : 1;
        } else if ((text[i] == '.' || text[i] == ',') && pointAllowed && !pointSeen) {
            pointSeen = true;
        } else {
            break;
        }
    }
    return text.substr(i);
}

bool takeSign(std::string_view &text) {
    const bool negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        text.remove_prefix(1);
    }
    return negative;
}

// True when the whole text is an exponent.
bool takeExponent(std::string_view text, Parts &parts) {
    const char letter = text.empty() ? ' ' : upperOf(text.front());
    if (letter != 'E' && letter != 'D') {
        return false;
    }
    text.remove_prefix(1);
    const bool negative = takeSign(text);
    if (text.empty() || !std::all_of(text.begin(), text.end(), isDigit)) {
        return false;
    }
    constexpr long long farOutside = 1000000;
    for (const char digit : text) {
        parts.exponent = std::min(parts.exponent * 10 + (digit - '0'), farOutside);
    }
    parts.exponent = negative ? -parts.exponent : parts.exponent;
    return true;
}

std::optional<Parts> takeApart(std::string_view text, bool integer) {
    Parts parts;
    parts.negative = takeSign(text);
    const std::string_view rest = takeDigits(text, !integer, parts);
    if (parts.digits.empty() || (!rest.empty() && (integer || !takeExponent(rest, parts)))) {
        return std::nullopt;
    }
    return parts;
}

template <class Real>
double valueOf(const Parts &parts) {
    const std::size_t first = parts.digits.find_first_not_of('0');
    if (first == std::string::npos) {
        return 0.0;
    }
    const long long fraction = static_cast<long long>(parts.digits.size()) - parts.point;
    const std::string text = parts.digits + "e" + std::to_string(parts.exponent - fraction);
    Real value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::result_out_of_range) {
        const long long magnitude = parts.point - static_cast<long long>(first) + parts.exponent;
        return magnitude > 0 ? Infinity : 0.0;
    }
    return static_cast<double>(value);
}

} // namespace

std::optional<double> typedNumber(std::string_view text, ControlKind kind) {
    const std::optional<Parts> parts = takeApart(trimBlanks(text), kind == ControlKind::Integer);
    if (!parts) {
        return std::nullopt;
    }
    double value = kind == ControlKind::Real ? valueOf<float>(*parts) : valueOf<double>(*parts);
    if (kind == ControlKind::Integer && value > std::numeric_limits<int>::max()) {
        value = Infinity;
    }
    return parts->negative ? -value : value;
}

std::string shownNumber(double value, ControlKind kind, std::string_view format) {
    if (kind == ControlKind::Integer || kind == ControlKind::Trackbar) {
        return std::to_string(nearestInt(value));
    }
    std::string text;
    if (kind == ControlKind::Real) {
        const auto single = static_cast<float>(value);
        text = format.empty() ? messageNumber(single) : formatReal(format, single);
    } else {
        text = format.empty() ? messageNumber(value) : formatReal(format, value);
    }
    return std::string(trimBlanks(text));
}

} // namespace keldrin
