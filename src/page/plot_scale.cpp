#include "page/plot_scale.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace keldrin {

namespace {

double stretched(double value, bool logarithmic) {
    if (!logarithmic) {
        return value;
    }
    return value > 0.0 ? std::log10(value) : std::numeric_limits<double>::quiet_NaN();
}

} // namespace

bool PlotScale::isUsable() const {
    constexpr double largest = 1.0e300;
    constexpr double smallestSpan = 1.0e-300;
    constexpr double smallestPart = 1.0e-12; // of the limits, which have about 16 digits
    const double low = stretched(min, logarithmic);
    const double high = stretched(max, logarithmic);
    const double size = std::max(std::fabs(low), std::fabs(high));
    const double span = std::fabs(high - low);
    return size < largest && span > smallestSpan && span > size * smallestPart;
}

double PlotScale::fractionOf(double value) const {
    return AxisFractions(*this).of(value);
}

double PlotScale::valueAt(double fraction) const {
    const double low = stretched(min, logarithmic);
    const double place = low + fraction * (stretched(max, logarithmic) - low);
    return logarithmic ? std::pow(10.0, place) : place;
}

AxisFractions::AxisFractions(const PlotScale &scale)
    : low_(stretched(scale.min, scale.logarithmic)),
      span_(stretched(scale.max, scale.logarithmic) - low_), logarithmic_(scale.logarithmic) {}

double AxisFractions::of(double value) const {
    return (stretched(value, logarithmic_) - low_) / span_;
}

} // namespace keldrin
