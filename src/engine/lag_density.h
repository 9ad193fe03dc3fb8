#pragma once

#include "engine/response.h"

#include <vector>

namespace keldrin {

// What a window measures, as an average of the step response f over lags: the time since the
// current changed. An edge of the waveform from tau_a to tau_b, averaged over a window, is the
// average of f over a trapezoid of lags from lower - tau_b to upper - tau_a; a fall of the current
// counts as positive. Earlier half periods repeat the waveform with alternating sign; a waveform
// longer than half a period repeats whole with one sign (Fitterman and Anderson 1987 for ramps).
// Where the current starts and ends at different values, the change from one repetition to the next
// counts as slow and has no response.

/// A straight piece of the density, 1/s; a piece without length is a sample of weight `from`.
struct LagPiece {
    double begin = 0.0; ///< s
    double end = 0.0;   ///< s
    double from = 0.0;  ///< density at the begin
    double to = 0.0;    ///< density at the end
};

/// The pieces of all edges and repetitions for one window; they overlap.
std::vector<LagPiece> lagDensity(const WindowSet &set, std::size_t window);

/// Longest lag of any window since the begin of the waveform's last change, s.
double longestRecentLag(const WindowSet &set);

} // namespace keldrin
