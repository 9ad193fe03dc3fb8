#include "engine/lag_density.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace keldrin {

namespace {

// The alternating sum is cut after ten terms; the weights of the last two take the middle of its
// last swings.
constexpr std::array<double, 10> TermWeights = {1, 1, 1, 1, 1, 1, 1, 1, 0.75, 0.25};

void addPiece(std::vector<LagPiece> &pieces, double begin, double end, double from, double to) {
    if (end > begin) {
        pieces.push_back({begin, end, from, to});
    }
}

// Trapezoid of the two lengths from `begin` on, of the area `weight`.
void addTrapezoid(std::vector<LagPiece> &pieces, double begin, double edge, double window,
                  double weight) {
    const double flank = std::min(edge, window);
    const double base = std::max(edge, window);
    if (!(base > 0.0)) {
        pieces.push_back({begin, begin, weight, weight});
        return;
    }
    const double height = weight / base;
    addPiece(pieces, begin, begin + flank, 0.0, height);
    addPiece(pieces, begin + flank, begin + base, height, height);
    addPiece(pieces, begin + base, begin + base + flank, height, 0.0);
}

struct Repetition {
    double period = 0.0; ///< s, from one term to the next; 0: none
    double sign = 1.0;   ///< of each term against the one before
};

Repetition repetitionOf(const WindowSet &set) {
    if (!(set.frequency > 0.0)) {
        return {};
    }
    const double period = 1.0 / set.frequency;
    const double span = set.times.back() - set.times.front();
    // Points of exactly half a period come back from single precision a little longer.
    if (span <= 0.5 * period * (1.0 + 1.0e-5)) {
        return {0.5 * period, -1.0};
    }
    return {period * std::ceil(span / period * (1.0 - 1.0e-5)), 1.0};
}

} // namespace

std::vector<LagPiece> lagDensity(const WindowSet &set, std::size_t window) {
    std::vector<LagPiece> pieces;
    const Repetition repetition = repetitionOf(set);
    const double length = set.upper[window] - set.lower[window];
    double sign = 1.0;
    for (std::size_t n = 0; n < TermWeights.size(); ++n, sign *= repetition.sign) {
        const double shift = static_cast<double>(n) * repetition.period;
        for (std::size_t i = 0; i + 1 < set.times.size(); ++i) {
            const double fall = set.currents[i] - set.currents[i + 1];
            if (fall != 0.0) {
                const double lag = (set.origin - set.times[i + 1]) + set.lower[window] + shift;
                addTrapezoid(pieces, lag, set.times[i + 1] - set.times[i], length,
                             fall * sign * TermWeights[n]);
            }
        }
        if (!(repetition.period > 0.0)) {
            break;
        }
    }
    return pieces;
}

double longestRecentLag(const WindowSet &set) {
    const double upper = *std::max_element(set.upper.begin(), set.upper.end());
    for (std::size_t i = set.times.size() - 1; i > 0; --i) {
        if (set.currents[i] != set.currents[i - 1]) {
            return (set.origin - set.times[i - 1]) + upper;
        }
    }
    return (set.origin - set.times.back()) + upper;
}

} // namespace keldrin
