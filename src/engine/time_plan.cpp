#include "engine/time_plan.h"

#include "engine/contour.h"
#include "engine/lag_density.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <utility>

namespace keldrin {

namespace {

using Complex = std::complex<double>;

// A contour answers for lags in this ratio: since the pulse itself, and for earlier half periods,
// where the response is small and a lower accuracy will do.
constexpr double RecentRatio = 12.0;
constexpr double EarlierRatio = 30.0;
constexpr int NodesPerContour = 16;

constexpr double EarliestWindow = 1.0e-7; // s
constexpr double LatestWindow = 1.0e3;    // s

using Interval = std::pair<double, double>;

// The ranges of the lags since the last change: a whole number of equal ratios.
void addRecentRanges(std::vector<TimeRange> &ranges, double first, double last) {
    const double whole = std::log(std::max(last / first, 2.0));
    const int count = static_cast<int>(std::ceil(whole / std::log(RecentRatio)));
    const double ratio = std::exp(whole / count);
    for (int i = 0; i < count; ++i) {
        ranges.push_back({first * std::pow(ratio, i), first * std::pow(ratio, i + 1)});
    }
}

// Ranges of earlier lags, only where there are any.
void addEarlierRanges(std::vector<TimeRange> &ranges, std::vector<Interval> lags) {
    std::sort(lags.begin(), lags.end());
    for (const auto &[begin, end] : lags) {
        double from = std::max(begin, ranges.back().end);
        while (from < end || (begin == end && from <= end)) {
            ranges.push_back({from, from * EarlierRatio});
            from = ranges.back().end;
        }
    }
}

// Integrals over x from 0 to 1 of exp(z x) and of x exp(z x); the power series where these cancel.
struct Averages {
    Complex one, x;
};
Averages exponentialAverages(Complex z) {
    if (std::norm(z) > 0.5) {
        const Complex last = std::exp(z);
        const Complex one = (last - 1.0) / z;
        return {one, (last - one) / z};
    }
    Averages sum = {0.0, 0.0};
    Complex term = 1.0; // z^n / n!
    for (int n = 1; std::norm(term) > 1.0e-34; ++n) {
        sum.one += term / static_cast<double>(n);
        sum.x += term / static_cast<double>(n + 1);
        term *= z / static_cast<double>(n);
    }
    return sum;
}

// Integral of a piece times exp(s t).
Complex transformOf(const LagPiece &piece, Complex s) {
    const double length = piece.end - piece.begin;
    const Complex start = std::exp(s * piece.begin);
    if (!(length > 0.0)) {
        return piece.from * start;
    }
    const Averages average = exponentialAverages(s * length);
    return start * length * (piece.from * average.one + (piece.to - piece.from) * average.x);
}

// The part of a piece within a range; false where there is none. A sample belongs to the range that
// it begins or lies in.
bool clip(const LagPiece &piece, const TimeRange &range, bool lastRange, LagPiece &part) {
    if (!(piece.end > piece.begin)) {
        part = piece;
        return piece.begin >= range.begin &&
               (piece.begin < range.end || (lastRange && piece.begin == range.end));
    }
    part.begin = std::max(piece.begin, range.begin);
    part.end = std::min(piece.end, range.end);
    const double slope = (piece.to - piece.from) / (piece.end - piece.begin);
    part.from = piece.from + slope * (part.begin - piece.begin);
    part.to = piece.from + slope * (part.end - piece.begin);
    return part.end > part.begin;
}

std::vector<TimeRange> rangesOf(const WindowSet &set,
                                const std::vector<std::vector<LagPiece>> &densities) {
    double first = densities.front().front().begin;
    std::vector<Interval> lags;
    const double last = longestRecentLag(set);
    for (const auto &pieces : densities) {
        for (const LagPiece &piece : pieces) {
            first = std::min(first, piece.begin);
            if (piece.end > last) {
                lags.emplace_back(piece.begin, piece.end);
            }
        }
    }
    std::vector<TimeRange> ranges;
    addRecentRanges(ranges, first, last * (1.0 + 1.0e-12));
    addEarlierRanges(ranges, std::move(lags));
    return ranges;
}

void fillRange(TimePlan &plan, std::size_t index,
               const std::vector<std::vector<LagPiece>> &densities) {
    TimeRange &range = plan.ranges[index];
    const bool last = index + 1 == plan.ranges.size();
    range.firstNode = plan.sRe.size();
    for (const ContourNode &node :
         hyperbolicContour(range.begin, range.end / range.begin, NodesPerContour)) {
        plan.sRe.push_back(node.s.real());
        plan.sIm.push_back(node.s.imag());
        for (const auto &pieces : densities) {
            Complex sum = 0.0;
            LagPiece part;
            for (const LagPiece &piece : pieces) {
                sum += clip(piece, range, last, part) ? transformOf(part, node.s) : 0.0;
            }
            sum *= node.weight;
            plan.mRe.push_back(sum.real());
            plan.mIm.push_back(sum.imag());
        }
    }
    range.endNode = plan.sRe.size();
    const auto isUsed = [&](std::size_t window) {
        const std::size_t i = range.firstNode * plan.windows + window;
        return plan.mRe[i] != 0.0 || plan.mIm[i] != 0.0;
    };
    range.endWindow = plan.windows;
    while (range.endWindow > 0 && !isUsed(range.endWindow - 1)) {
        --range.endWindow;
    }
    while (range.firstWindow < range.endWindow && !isUsed(range.firstWindow)) {
        ++range.firstWindow;
    }
}

bool waveformIsGood(const WindowSet &set) {
    const std::size_t points = set.times.size();
    if (points < 2 || set.currents.size() != points || !std::isfinite(set.origin)) {
        return false;
    }
    bool changes = false;
    for (std::size_t i = 0; i < points; ++i) {
        if (!std::isfinite(set.times[i]) || !std::isfinite(set.currents[i]) ||
            set.times[i] > set.origin || (i > 0 && set.times[i] < set.times[i - 1])) {
            return false;
        }
        changes = changes || set.currents[i] != set.currents[0];
    }
    return changes;
}

} // namespace

PlanFault checkWindows(const WindowSet &set) {
    if (set.lower.empty() || set.upper.size() != set.lower.size()) {
        return PlanFault::Windows;
    }
    for (std::size_t i = 0; i < set.lower.size(); ++i) {
        if (!(set.lower[i] >= EarliestWindow && set.upper[i] >= set.lower[i] &&
              set.upper[i] <= LatestWindow)) {
            return PlanFault::Window;
        }
    }
    if (!waveformIsGood(set)) {
        return PlanFault::Waveform;
    }
    return set.frequency >= 0.0 && std::isfinite(set.frequency) ? PlanFault::None
                                                                : PlanFault::Frequency;
}

TimePlan makeTimePlan(const WindowSet &set) {
    TimePlan plan;
    plan.set = set;
    plan.windows = set.lower.size();
    std::vector<std::vector<LagPiece>> densities;
    for (std::size_t window = 0; window < plan.windows; ++window) {
        densities.push_back(lagDensity(set, window));
    }
    plan.ranges = rangesOf(set, densities);
    for (std::size_t i = 0; i < plan.ranges.size(); ++i) {
        fillRange(plan, i, densities);
    }
    return plan;
}

} // namespace keldrin
