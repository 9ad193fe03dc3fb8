#include "base/free_form.h"

#include "base/ascii.h"
#include "base/index.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <system_error>

namespace keldrin {

namespace {

constexpr bool endsValue(char c) {
    return c == ' ' || c == '\t' || c == ',' || c == '/';
}

/// Passes over blanks and finds what a value can begin with. Value: `at` stands on it.
FreeForm findValue(const char *&at, const char *end) {
    while (at != end && (*at == ' ' || *at == '\t')) {
        ++at;
    }
    if (at == end) {
        return FreeForm::Failed;
    }
    return *at == ',' || *at == '/' ? FreeForm::Null : FreeForm::Value;
}

template <class Integer>
FreeForm readInteger(std::string_view text, Integer &value) {
    const char *at = text.data();
    const char *const end = at + text.size();
    if (const FreeForm found = findValue(at, end); found != FreeForm::Value) {
        return found;
    }
    if (*at == '+' && end - at > 1 && at[1] != '-') {
        ++at;
    }
    Integer read = 0;
    const auto [stop, error] = std::from_chars(at, end, read);
    if (error != std::errc{} || (stop != end && !endsValue(*stop))) {
        return FreeForm::Failed;
    }
    value = read;
    return FreeForm::Value;
}

/// A decimal number as it stands in a text: digits times ten to the power of exponent.
struct ScannedReal {
    bool negative = false;
    std::uint64_t digits = 0;          ///< the first 19 significant digits
    int significant = 0;               ///< digits from the first other than 0
    std::int64_t exponent = 0;         ///< power of ten that belongs to `digits`
    const char *begin = nullptr;       ///< after the sign
    const char *mantissaEnd = nullptr; ///< where an exponent begins
    const char *powerBegin = nullptr;  ///< the exponent without its letter; null when there is none
    const char *end = nullptr;
};

constexpr int MostDigits = 19;

/// Digits of any mantissa, of which those after the 19th count for the power of ten alone.
void scanManyDigits(const char *at, const char *end, ScannedReal &real) {
    bool behindPoint = false;
    for (; at != end; ++at) {
        if (*at == '.') {
            behindPoint = true;
            continue;
        }
        const bool kept = real.significant < MostDigits;
        if (kept) {
            real.digits = real.digits * 10 + static_cast<std::uint64_t>(*at - '0');
        }
        real.significant += real.digits != 0 ? 1 : 0;
        real.exponent += (kept ? 0 : 1) - (behindPoint ? 1 : 0);
    }
}

/// Passes over digits and takes them in; the number may overflow.
const char *takeDigits(const char *at, const char *end, std::uint64_t &digits) {
    for (; at != end && isDigit(*at); ++at) {
        digits = digits * 10 + static_cast<std::uint64_t>(*at - '0');
    }
    return at;
}

/// Digits of the mantissa. Returns false when there are none.
bool scanMantissa(const char *&at, const char *end, ScannedReal &real) {
    const char *const begin = at;
    std::uint64_t digits = 0;
    at = takeDigits(at, end, digits);
    std::ptrdiff_t count = at - begin;
    std::ptrdiff_t decimals = 0;
    if (at != end && *at == '.') {
        const char *const point = at;
        at = takeDigits(at + 1, end, digits);
        decimals = at - point - 1;
        count += decimals;
    }
    if (count > MostDigits) {
        scanManyDigits(begin, at, real);
        return true;
    }
    const char *zero = begin;
    std::ptrdiff_t leading = 0;
    for (; zero != at && (*zero == '0' || *zero == '.'); ++zero) {
        leading += *zero == '0' ? 1 : 0;
    }
    real.digits = digits;
    real.significant = static_cast<int>(count - leading);
    real.exponent = -decimals;
    return count > 0;
}

/// An exponent: a letter E or D with an optional sign, then digits. A sign without a letter does
/// not begin one: "1+25" is a place on a line.
bool scanExponent(const char *&at, const char *end, ScannedReal &real) {
    constexpr std::int64_t Huge = 1000000;
    const char letter = upperOf(*at);
    if (letter != 'E' && letter != 'D') {
        return false;
    }
    ++at;
    real.powerBegin = at;
    const bool negative = at != end && *at == '-';
    if (at != end && (*at == '-' || *at == '+')) {
        ++at;
    }
    const char *const first = at;
    std::int64_t power = 0;
    for (; at != end && isDigit(*at); ++at) {
        power = std::min(Huge, power * 10 + (*at - '0'));
    }
    real.exponent += negative ? -power : power;
    return at != first;
}

/// Takes a value apart; false when it is no number or something follows that ends no value.
bool scanReal(const char *at, const char *end, ScannedReal &real) {
    real.negative = *at == '-';
    if (*at == '-' || *at == '+') {
        ++at;
    }
    real.begin = at;
    if (!scanMantissa(at, end, real)) {
        return false;
    }
    real.mantissaEnd = at;
    if (at != end && !endsValue(*at) && !scanExponent(at, end, real)) {
        return false;
    }
    real.end = at;
    return at == end || endsValue(*at);
}

/// The short cut for numbers of few digits: an integer and a power of ten that are both exact in
/// 64 bits give the nearest value by one operation.
bool fromFewDigits(const ScannedReal &real, double &value) {
    constexpr std::array<double, 23> PowersOfTen = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                    1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                    1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    constexpr int MostPower = 22;
    if (real.significant > 15 || real.exponent > MostPower || real.exponent < -MostPower) {
        return false;
    }
    const auto digits = static_cast<double>(real.digits);
    value = real.exponent < 0 ? digits / PowersOfTen[asIndex(-real.exponent)]
                              : digits * PowersOfTen[asIndex(real.exponent)];
    return true;
}

bool shortCut(const ScannedReal &real, double &value) {
    return fromFewDigits(real, value);
}

/// For 32 bits the 64-bit value is rounded once more, which goes wrong only where it stands half
/// way between two 32-bit values, and outside the normal range.
bool shortCut(const ScannedReal &real, float &value) {
    constexpr std::uint64_t LowBits = 0x1FFFFFFFU;
    constexpr std::uint64_t HalfWay = 0x10000000U;
    double wide = 0.0;
    if (!fromFewDigits(real, wide) || (std::bit_cast<std::uint64_t>(wide) & LowBits) == HalfWay ||
        (wide != 0.0 && (wide < 1.2e-38 || wide > 3.4e38))) {
        return false;
    }
    value = static_cast<float>(wide);
    return true;
}

/// The full conversion, in the spelling that the standard library reads.
template <class Real>
bool convert(const ScannedReal &real, Real &value) {
    if (real.digits == 0) {
        value = 0;
        return true;
    }
    std::string spelled(real.begin, real.mantissaEnd);
    if (real.powerBegin != nullptr) {
        spelled += 'e';
        spelled.append(real.powerBegin, real.end);
    }
    // a power beyond every range is settled here, whatever the library makes of it
    constexpr std::int64_t FarOut = 5000;
    const std::int64_t magnitude = real.exponent + std::min(real.significant, 19);
    if (magnitude < -FarOut || magnitude > FarOut) {
        value = 0;
        return magnitude < 0;
    }
    const auto [stop, error] =
        std::from_chars(spelled.data(), spelled.data() + spelled.size(), value);
    if (error == std::errc::result_out_of_range && magnitude < 0) {
        value = 0;
        return true;
    }
    return error == std::errc{} && std::isfinite(value);
}

/// The value of a number that was taken apart; false when it overflows.
template <class Real>
bool valueOf(const ScannedReal &real, Real &value) {
    Real read = 0;
    if (!shortCut(real, read) && !convert(real, read)) {
        return false;
    }
    if (read < std::numeric_limits<Real>::min()) { // denormals count as zero
        read = 0;
    }
    value = real.negative ? -read : read;
    return true;
}

template <class Real>
FreeForm readReal(std::string_view text, Real &value) {
    const char *at = text.data();
    const char *const end = at + text.size();
    if (const FreeForm found = findValue(at, end); found != FreeForm::Value) {
        return found;
    }
    ScannedReal real;
    return scanReal(at, end, real) && valueOf(real, value) ? FreeForm::Value : FreeForm::Failed;
}

template <class Real>
bool readWholeReal(std::string_view text, Real &value) {
    const char *const end = text.data() + text.size();
    ScannedReal real;
    return !text.empty() && scanReal(text.data(), end, real) && real.end == end &&
           valueOf(real, value);
}

} // namespace

FreeForm readFreeForm(std::string_view text, float &value) {
    return readReal(text, value);
}
FreeForm readFreeForm(std::string_view text, double &value) {
    return readReal(text, value);
}
bool readWholeNumber(std::string_view text, float &value) {
    return readWholeReal(text, value);
}
bool readWholeNumber(std::string_view text, double &value) {
    return readWholeReal(text, value);
}
FreeForm readFreeForm(std::string_view text, std::int32_t &value) {
    return readInteger(text, value);
}
FreeForm readFreeForm(std::string_view text, std::int64_t &value) {
    return readInteger(text, value);
}

} // namespace keldrin
