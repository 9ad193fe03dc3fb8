#include "physics/interpolation.h"

#include "base/index.h"
#include "base/real.h"
#include "messages/message_log.h"
#include "physics/table_search.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>

namespace keldrin {

namespace {

template <class Real>
constexpr std::string_view WidthName = sizeof(Real) == sizeof(float) ? "R4" : "R8";

template <class Real>
void reportEmpty(std::string_view family, std::string_view words) {
    ReportError({std::string(family).append(WidthName<Real>).append(".ERROR: ").append(words)});
}

template <class Real>
bool isGiven(Real slope) {
    return std::fabs(slope) < Real(SlopeNotGiven);
}

/// A table with indices from 1.
template <class Real>
struct Table {
    std::span<const Real> x;
    std::span<const Real> y;

    Table(std::span<const Real> X, std::span<const Real> Y)
        : x(X.first(std::min(X.size(), Y.size()))), y(Y.first(x.size())) {}

    [[nodiscard]] int size() const { return static_cast<int>(x.size()); }
    [[nodiscard]] Real X(int i) const { return x[asIndex(i - 1)]; }
    [[nodiscard]] Real Y(int i) const { return y[asIndex(i - 1)]; }

    // The interval of x, from 1 to NP - 1 for any table and any x; the end ones beyond the ends.
    [[nodiscard]] int interval(Real at, int *hint) const {
        int index = 0;
        if (at <= X(1)) {
            index = 1;
        } else if (at >= X(size())) {
            index = size() - 1;
        } else {
            index = tableIndex(x, at, hint != nullptr ? *hint : 0);
        }
        index = limited(index, 1, size() - 1);
        if (hint != nullptr) {
            *hint = index;
        }
        return index;
    }
};

template <class Real>
Real linear(std::string_view family, const Table<Real> &table, const std::array<Real, 2> &S, Real x,
            int *hint) {
    const int NP = table.size();
    if (NP < 1) {
        reportEmpty<Real>(family, "NP<1, no tabulated values to interpolate.");
        return Real(0);
    }
    if (NP == 1) {
        return table.Y(1);
    }
    const int i = table.interval(x, hint);
    if (x <= table.X(1)) {
        if (isGiven(S[0])) {
            return table.Y(1) + (x - table.X(1)) * S[0];
        }
    } else if (x >= table.X(NP) && isGiven(S[1])) {
        return table.Y(NP) + (x - table.X(NP)) * S[1];
    }
    const Real d = table.X(i + 1) - table.X(i);
    if (std::fabs(d) <= Real(1.0e-20)) {
        return (table.Y(i) + table.Y(i + 1)) * Real(0.5);
    }
    const Real f = (x - table.X(i)) / d;
    return (Real(1) - f) * table.Y(i) + f * table.Y(i + 1);
}

constexpr double ShortestInterval = 1.0e-5;

/// One interval of a cubic: ordinates and slopes times interval at both ends.
template <class Real>
struct CubicInterval {
    Real Y1, Y2;
    Real m1h, m2h;
};

// Hermite's cubic with the end slopes (1 - T) m + T chord, at the fraction u of the interval.
template <class Real>
Real hermite(const CubicInterval<Real> &interval, Real tension, Real u) {
    const auto &[Y1, Y2, m1h, m2h] = interval;
    const Real c = Real(1) - tension;
    const Real TD = tension * (Y2 - Y1);
    const Real p = (Real(1) - u) * (Real(1) - u);
    return (((Real(3) - Real(2) * u) * Y2 + (u - Real(1)) * (c * m2h + TD)) * u +
            (c * m1h + TD) * p) *
               u +
           (Real(1) + Real(2) * u) * p * Y1;
}

// Slope at X(i) of the parabola through it and its neighbours.
template <class Real>
Real parabolaSlope(const Table<Real> &table, int i) {
    const Real before = table.X(i) - table.X(i - 1);
    const Real after = table.X(i + 1) - table.X(i);
    return -after / (before * (after + before)) * table.Y(i - 1) +
           (after - before) / (after * before) * table.Y(i) +
           before / ((after + before) * after) * table.Y(i + 1);
}

template <class Real>
Real twoPoints(const Table<Real> &table, Real x) {
    const Real h = table.X(2) - table.X(1);
    const Real slope = h <= Real(ShortestInterval) ? Real(0) : (table.Y(2) - table.Y(1)) / h;
    return table.Y(1) + (x - table.X(1)) * slope;
}

template <class Real>
Real cubic(std::string_view family, const Table<Real> &table, const std::array<Real, 2> &S,
           Real tension, Real x, int *hint) {
    const int NP = table.size();
    if (NP < 1) {
        reportEmpty<Real>(family, "NP < 1");
        return Real(0);
    }
    if (NP <= 2) {
        return NP == 1 ? table.Y(1) : twoPoints(table, x);
    }
    const int i = table.interval(x, hint);
    const Real h = table.X(i + 1) - table.X(i);
    if (h <= Real(ShortestInterval)) {
        return (table.Y(i) + table.Y(i + 1)) * Real(0.5);
    }
    const Real chord = (table.Y(i + 1) - table.Y(i)) / h;
    Real m1 = chord;
    if (i == 1) {
        m1 = isGiven(S[0]) ? S[0] : chord;
        if (x <= table.X(1)) {
            return table.Y(1) + m1 * (x - table.X(1));
        }
    } else if (table.X(i) - table.X(i - 1) > Real(ShortestInterval)) {
        m1 = parabolaSlope(table, i);
    }
    Real m2 = chord;
    if (i + 1 == NP) {
        m2 = isGiven(S[1]) ? S[1] : chord;
        if (x >= table.X(NP)) {
            return table.Y(NP) + m2 * (x - table.X(NP));
        }
    } else if (table.X(i + 2) - table.X(i + 1) > Real(ShortestInterval)) {
        m2 = parabolaSlope(table, i + 1);
    }
    const CubicInterval<Real> interval = {table.Y(i), table.Y(i + 1), h * m1, h * m2};
    return hermite(interval, tension, (x - table.X(i)) / h);
}

template <class Real>
Real evenCubic(std::string_view family, Real X1, Real DX, std::span<const Real> Y, Real tension,
               Real x) {
    if (Y.empty()) {
        reportEmpty<Real>(family, "NP < 1");
        return Real(0);
    }
    if (Y.size() == 1) {
        return Y[0];
    }
    // `before` points lie before the interval's own first one; it is not held inside the table, its
    // neighbours are.
    const Real before = std::floor((x - X1) / DX);
    const auto neighbour = [&](int k) {
        const double index = static_cast<double>(before) + static_cast<double>(k);
        const double last = static_cast<double>(Y.size());
        return Y[static_cast<std::size_t>(limited(index, 1.0, last)) - 1];
    };
    const std::array<Real, 4> y = {neighbour(0), neighbour(1), neighbour(2), neighbour(3)};
    const CubicInterval<Real> interval = {y[1], y[2], (y[2] - y[0]) * Real(0.5),
                                          (y[3] - y[1]) * Real(0.5)};
    return hermite(interval, tension, (x - (X1 + before * DX)) / DX);
}

} // namespace

float P1Intrp_R4(std::span<const float> X, std::span<const float> Y, const std::array<float, 2> &S,
                 float x, int *hint) {
    return linear("P1Intrp_", Table<float>(X, Y), S, x, hint);
}
double P1Intrp_R8(std::span<const double> X, std::span<const double> Y,
                  const std::array<double, 2> &S, double x, int *hint) {
    return linear("P1Intrp_", Table<double>(X, Y), S, x, hint);
}

float P2Intrp_R4(std::span<const float> X, std::span<const float> Y, const std::array<float, 2> &S,
                 float tension, float x, int *hint) {
    return cubic("P2Intrp_", Table<float>(X, Y), S, tension, x, hint);
}
double P2Intrp_R8(std::span<const double> X, std::span<const double> Y,
                  const std::array<double, 2> &S, double tension, double x, int *hint) {
    return cubic("P2Intrp_", Table<double>(X, Y), S, tension, x, hint);
}

float P2Intrp0_DX_R4(float X1, float DX, std::span<const float> Y, float tension, float x) {
    return evenCubic("P2Intrp0_DX_", X1, DX, Y, tension, x);
}
double P2Intrp0_DX_R8(double X1, double DX, std::span<const double> Y, double tension, double x) {
    return evenCubic("P2Intrp0_DX_", X1, DX, Y, tension, x);
}

} // namespace keldrin
