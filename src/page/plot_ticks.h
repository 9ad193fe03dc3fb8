#pragma once

#include "page/plot_scale.h"

#include <cstdint>
#include <string>
#include <vector>

namespace keldrin {

/// One tick mark of an axis.
struct PlotTick {
    double value = 0.0;
    bool small = false;       ///< a shorter mark between numbered ones
    std::int64_t ordinal = 0; ///< where numbers are thinned out, those of even ordinals stay
    std::string label;        ///< blank: no number
};

/// Ticks in ascending order, within the given values and a hair beyond.
///
/// Linear: multiples of 1, 2 or 5 times a power of ten, the largest step that gives four ticks or
/// more. Logarithmic: numbered decades with small ticks at 2 to 9 times each; within less than two
/// decades 1, 2 and 5 or all nine are numbered, and within less than two of those the ticks are
/// the linear ones. Without a usable scale there are none.
std::vector<PlotTick> automaticTicks(const PlotScale &scale);

/// The shortest text of a number: fixed point from 1e-4 to below 1e7, else as "2.5e-6". The
/// locale plays no part.
std::string tickText(double value);

/// "1", "10", and "10^2" for other powers of ten, whose exponents PlotRaisedExponents() raises.
std::string powerOfTenText(int exponent);

} // namespace keldrin
