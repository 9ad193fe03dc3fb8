#pragma once

#include "engine/response.h"

#include <cstdint>
#include <vector>

namespace keldrin {

// Window data as a linear function of the transform F of the step response at fixed complex
// frequencies: d = Im(M F). M holds the inverse Laplace transform (contour.h) and the averages over
// waveform, repetition and window (lag_density.h), which are integrals of exp(s t) times straight
// pieces and are taken in closed form.

/// Nodes of one contour: they answer for one range of lags.
struct TimeRange {
    double begin = 0.0; ///< s
    double end = 0.0;   ///< s
    std::size_t firstNode = 0;
    std::size_t endNode = 0;
    std::size_t firstWindow = 0; ///< windows that have lags in the range
    std::size_t endWindow = 0;
};

struct TimePlan {
    WindowSet set;
    std::size_t windows = 0;
    std::vector<TimeRange> ranges;
    std::vector<double> sRe, sIm; ///< nodes, 1/s
    std::vector<double> mRe, mIm; ///< a row of `windows` for each node
};

/// What is wrong with waveform or windows; None for a set that makeTimePlan takes.
PlanFault checkWindows(const WindowSet &set);

/// The plan of a set that was checked.
TimePlan makeTimePlan(const WindowSet &set);

} // namespace keldrin
