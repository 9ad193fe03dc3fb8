#include "line/section_limits.h"

#include "base/index.h"
#include "base/real.h"
#include "model/survey_model.h"
#include "sounding/plot_limits.h"
#include "text/ordinal_list.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <set>
#include <vector>

namespace keldrin {

namespace {

// The largest round value not above, or the smallest not below, a value above 0. A hair beyond a
// round value still is that value.
float roundValue(float value, bool above) {
    constexpr std::array<double, 4> mantissas = {1.0, 2.0, 5.0, 10.0};
    constexpr double hair = 1.0e-5;
    const double decade = std::floor(std::log10(static_cast<double>(value)));
    const double mantissa = static_cast<double>(value) / std::pow(10.0, decade);
    double chosen = above ? mantissas.back() : mantissas.front();
    for (const double m : mantissas) {
        if (above && m >= mantissa * (1.0 - hair)) {
            chosen = std::min(chosen, m);
        } else if (!above && m <= mantissa * (1.0 + hair)) {
            chosen = std::max(chosen, m);
        }
    }
    return static_cast<float>(chosen * std::pow(10.0, decade));
}

// Nearest rank of a share of the values, which change their order.
float percentile(std::vector<float> &values, double share) {
    const auto count = static_cast<double>(values.size());
    const int rank =
        limited(static_cast<int>(std::ceil(share * count)), 1, static_cast<int>(values.size()));
    const auto place = values.begin() + (rank - 1);
    std::nth_element(values.begin(), place, values.end());
    return *place;
}

} // namespace

std::vector<int> windowList(std::string_view list) {
    std::set<int> windows;
    for (const OrdinalRange &range : readOrdinalList(list).value_or(std::vector<OrdinalRange>{})) {
        if (range.last > MaxWindows) {
            return {};
        }
        for (int window = range.first; window <= range.last; ++window) {
            windows.insert(window);
        }
    }
    return {windows.begin(), windows.end()};
}

AxisLimits roundPercentiles(std::span<const float> values) {
    constexpr double lowest = 0.02;
    constexpr double highest = 0.98;
    constexpr float leastRatio = 10.0F;
    constexpr AxisLimits none = {1.0F, 1000.0F};
    constexpr float largest = 1.0e12F; // ohm-m; above it a value is no resistivity
    std::vector<float> resistivities;
    for (const float value : values) {
        if (value >= LeastResistivity && value <= largest) {
            resistivities.push_back(value);
        }
    }
    if (resistivities.empty()) {
        return none;
    }
    AxisLimits limits = {roundValue(percentile(resistivities, lowest), false),
                         roundValue(percentile(resistivities, highest), true)};
    for (bool upward = true; limits.high < leastRatio * limits.low * 0.999F; upward = !upward) {
        constexpr float next = 1.5F; // enough to reach the next round value
        if (upward) {
            limits.high = roundValue(limits.high * next, true);
        } else {
            limits.low = roundValue(limits.low / next, false);
        }
    }
    return limits;
}

} // namespace keldrin
