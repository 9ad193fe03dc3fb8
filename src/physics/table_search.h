#pragma once

#include "base/index.h"

#include <cstddef>
#include <span>

namespace keldrin {

/// Index (from 1) of the last point of a rising or falling table that does not lie beyond x: 0
/// when all do, NP when none does. A table of less than two points gives NP.
/// hint  where to begin, usually an earlier result; any value will do, and a monotonic table gives
///       the same index for all of them
template <class Real>
int tableIndex(std::span<const Real> X, Real x, int hint) {
    const int NP = static_cast<int>(X.size());
    if (NP < 2) {
        return NP;
    }
    const bool rising = X.front() < X.back();
    const auto isReached = [&](int i) {
        const Real point = X[asIndex(i - 1)];
        return rising ? point <= x : point >= x;
    };
    int low = 0;
    int high = NP + 1;
    if (hint >= 1 && hint <= NP) {
        // Steps that double, from the hint towards x, until they pass it or the table ends.
        int step = 1;
        if (isReached(hint)) {
            low = hint;
            while (step <= NP - low && isReached(low + step)) {
                low += step;
                step *= 2;
            }
            high = step <= NP - low ? low + step : NP + 1;
        } else {
            high = hint;
            while (step < high && !isReached(high - step)) {
                high -= step;
                step *= 2;
            }
            low = step < high ? high - step : 0;
        }
    }
    while (high - low > 1) {
        const int mid = low + (high - low) / 2;
        (isReached(mid) ? low : high) = mid;
    }
    return low;
}

} // namespace keldrin
