#include "page/plot_ticks.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <span>
#include <string>
#include <string_view>

namespace keldrin {

namespace {

// Limits are often 32-bit numbers, so 0.1 may lie a little above or below: the part of an axis
// by which a tick may stand outside.
constexpr double Tolerance = 1.0e-5;

// The number nearest to digits * 10**exponent, which products of powers of ten would miss.
double decimalValue(std::int64_t digits, int exponent) {
    const std::string text = std::to_string(digits) + "e" + std::to_string(exponent);
    double value = 0.0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

// The limits in rising order.
struct Range {
    double low = 0.0;
    double high = 0.0;
};

Range risingRange(const PlotScale &scale) {
    return {std::min(scale.min, scale.max), std::max(scale.min, scale.max)};
}

struct LinearStep {
    std::int64_t mantissa = 1;
    int exponent = 0;
    std::int64_t first = 0; ///< the ticks are these multiples of the step
    std::int64_t last = -1;
};

LinearStep stepOver(const Range &range, std::int64_t mantissa, int exponent) {
    const double step = decimalValue(mantissa, exponent);
    const double slack = Tolerance * (range.high - range.low);
    LinearStep chosen{mantissa, exponent, 0, -1};
    chosen.first = static_cast<std::int64_t>(std::ceil((range.low - slack) / step));
    chosen.last = static_cast<std::int64_t>(std::floor((range.high + slack) / step));
    return chosen;
}

LinearStep chooseStep(const Range &range) {
    constexpr std::array<std::int64_t, 3> mantissas = {5, 2, 1};
    constexpr std::int64_t fewestTicks = 4;
    const int decade = static_cast<int>(std::floor(std::log10(range.high - range.low)));
    for (int exponent = decade; exponent >= decade - 2; --exponent) {
        for (const std::int64_t mantissa : mantissas) {
            const LinearStep step = stepOver(range, mantissa, exponent);
            if (step.last - step.first + 1 >= fewestTicks) {
                return step;
            }
        }
    }
    return {};
}

std::vector<PlotTick> linearTicks(const PlotScale &scale) {
    const LinearStep step = chooseStep(risingRange(scale));
    std::vector<PlotTick> ticks;
    for (std::int64_t k = step.first; k <= step.last; ++k) {
        const double value = decimalValue(k * step.mantissa, step.exponent);
        ticks.push_back({value, false, k, tickText(value)});
    }
    return ticks;
}

// Marks at 1 to 9 times each power of ten; `numbered` says which of them have numbers.
std::vector<PlotTick> decadeTicks(const PlotScale &scale, std::span<const int> numbered) {
    constexpr int mostDecadesWithSmallTicks = 15;
    const Range range = risingRange(scale);
    const double low = std::log10(range.low);
    const double high = std::log10(range.high);
    const double slack = Tolerance * (high - low);
    const bool withSmall = high - low < mostDecadesWithSmallTicks;
    std::int64_t ordinal = numbered.size() == 1 ? static_cast<std::int64_t>(std::floor(low)) : 0;
    std::vector<PlotTick> ticks;
    for (int decade = static_cast<int>(std::floor(low)); decade <= high + slack; ++decade) {
        for (int times = 1; times <= 9; ++times) {
            const bool hasNumber =
                std::find(numbered.begin(), numbered.end(), times) != numbered.end();
            const double value = decimalValue(times, decade);
            const double place = std::log10(value);
            if (place >= low - slack && place <= high + slack && (hasNumber || withSmall)) {
                ticks.push_back({value, !hasNumber, ordinal, hasNumber ? tickText(value) : ""});
            }
            ordinal += hasNumber ? 1 : 0;
        }
    }
    return ticks;
}

std::vector<PlotTick> logarithmicTicks(const PlotScale &scale) {
    constexpr std::array<int, 9> all = {1, 2, 5, 3, 4, 6, 7, 8, 9};
    constexpr std::array<std::size_t, 3> counts = {1, 3, 9};
    for (const std::size_t count : counts) {
        std::vector<PlotTick> ticks = decadeTicks(scale, std::span(all).first(count));
        const auto numbers = std::count_if(ticks.begin(), ticks.end(),
                                           [](const PlotTick &tick) { return !tick.small; });
        if (numbers >= 2) {
            return ticks;
        }
    }
    return linearTicks(scale);
}

} // namespace

std::vector<PlotTick> automaticTicks(const PlotScale &scale) {
    if (!scale.isUsable()) {
        return {};
    }
    return scale.logarithmic ? logarithmicTicks(scale) : linearTicks(scale);
}

std::string tickText(double value) {
    constexpr double leastFixed = 1.0e-4;
    constexpr double leastLarge = 1.0e7;
    const double size = std::fabs(value);
    if (size == 0.0 || !std::isfinite(value)) {
        return "0";
    }
    const bool fixed = size >= leastFixed && size < leastLarge;
    std::array<char, 64> digits{};
    const auto written =
        std::to_chars(digits.data(), digits.data() + digits.size(), value,
                      fixed ? std::chars_format::fixed : std::chars_format::scientific);
    std::string text(digits.data(), written.ptr);
    if (const std::size_t mark = text.find('e'); mark != std::string::npos) {
        const int exponent = static_cast<int>(std::floor(std::log10(size)));
        text = text.substr(0, mark) + 'e' + std::to_string(exponent);
    }
    return text;
}

std::string powerOfTenText(int exponent) {
    if (exponent == 0 || exponent == 1) {
        return exponent == 0 ? "1" : "10";
    }
    return "10^" + std::to_string(exponent);
}

} // namespace keldrin
