#include "engine/loop_plan.h"

#include "engine/hankel_curve.h"
#include "engine/layer_kernel.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace keldrin {

namespace {

constexpr double NearestWire = 1.0e-3;         // m
constexpr double FieldFactor = 1.0e9 * 1.0e-7; // mu0/(4 pi), in nano

// Below this lambda r the loop is a dipole; error (lambda r)^2/4.
constexpr double DipoleArgument = 1.0e-3;

// Gauss-Legendre rule of 10 points on -1..1, the positive half.
constexpr std::array<double, 5> GaussNodes = {0.1488743389816312, 0.4333953941292472,
                                              0.6794095682990244, 0.8650633666889845,
                                              0.9739065285171717};
constexpr std::array<double, 5> GaussWeights = {0.2955242247147529, 0.2692667193099963,
                                                0.2190863625159820, 0.1494513491505806,
                                                0.0666713443081376};

// Panels of half a unit in ln(r) hold two waves of the table's highest frequency.
template <class Function>
void addPanels(double from, double to, const Function &add) {
    constexpr double panel = 0.5;
    const int count = std::max(1, static_cast<int>(std::ceil(std::fabs(to - from) / panel)));
    const double half = 0.5 * (to - from) / count;
    for (int i = 0; i < count; ++i) {
        const double middle = from + (2 * i + 1) * half;
        for (std::size_t n = 0; n < GaussNodes.size(); ++n) {
            add(middle - half * GaussNodes[n], half * GaussWeights[n]);
            add(middle + half * GaussNodes[n], half * GaussWeights[n]);
        }
    }
}

/// A point of a wire as the receiver sees it.
struct WirePoint {
    double logDistance;
    double vertical;   ///< weight of the transform of lambda J1
    double horizontal; ///< weight of the transform of lambda J0
};

// One wire from a to b along its line, at the distance d from the receiver (with sign). With
// u = |d| sinh(v) and r = |d| cosh(v) a metre of wire is r dv.
std::vector<WirePoint> wirePoints(double a, double b, double d) {
    std::vector<WirePoint> points;
    const double size = std::fabs(d);
    addPanels(std::asinh(a / size), std::asinh(b / size), [&](double v, double weight) {
        const double r = size * std::cosh(v);
        points.push_back({std::log(r), weight * d / (r * r), weight / r});
    });
    return points;
}

double logWavenumber(std::size_t j) {
    return LogSpacing * (LowestWavenumber + static_cast<int>(j));
}

/// Sides of the loop as the receiver sees them.
struct Sides {
    double left, right, near, far; ///< x of the sides along y, y of the sides along x
};

double awayFromWire(double distance) {
    return std::fabs(distance) < NearestWire ? std::copysign(NearestWire, distance) : distance;
}

Sides sidesOf(const LoopGeometry &loop) {
    return {awayFromWire(-0.5 * loop.sideX - loop.rxX), awayFromWire(0.5 * loop.sideX - loop.rxX),
            awayFromWire(-0.5 * loop.sideY - loop.rxY), awayFromWire(0.5 * loop.sideY - loop.rxY)};
}

double distanceToWire(double a, double b, double d) {
    const double along = a > 0.0 ? a : (b < 0.0 ? b : 0.0);
    return std::hypot(along, d);
}

double nearestWire(const Sides &s) {
    return std::min({distanceToWire(s.near, s.far, s.left), distanceToWire(s.near, s.far, s.right),
                     distanceToWire(s.left, s.right, s.near),
                     distanceToWire(s.left, s.right, s.far)});
}

double farthestCorner(const Sides &s) {
    return std::hypot(std::max(std::fabs(s.left), std::fabs(s.right)),
                      std::max(std::fabs(s.near), std::fabs(s.far)));
}

// The first index of which the wavenumber is at least so large.
std::size_t indexFrom(double wavenumber) {
    const double j = std::ceil(std::log(wavenumber) / LogSpacing) - LowestWavenumber;
    return static_cast<std::size_t>(std::clamp(j, 0.0, static_cast<double>(WavenumberCount)));
}

// Weights of the dipole that a loop is at small wavenumbers, before the common factor.
void addDipole(LoopPlan &plan, std::size_t end) {
    const LoopGeometry &loop = plan.geometry;
    const double area = loop.sideX * loop.sideY;
    const double cubic = interpolatedPower(3.0) * area;
    const double quartic = 0.5 * interpolatedPower(4.0) * area;
    for (std::size_t j = 0; j < end; ++j) {
        const double lambda = plan.wavenumber[j];
        const double cube = lambda * lambda * lambda;
        plan.weight[plan.components - 1][j] = cubic * cube;
        if (plan.components == 3) {
            plan.weight[0][j] = quartic * cube * lambda * loop.rxX;
            plan.weight[1][j] = quartic * cube * lambda * loop.rxY;
        }
    }
}

// One wire into the vertical component and, with the sign of its outward normal, a horizontal one.
void addWire(LoopPlan &plan, std::size_t begin, double a, double b, double d, double normal,
             std::vector<double> *horizontal) {
    const HankelCurve &curveZ = hankelCurve(HankelKernel::LambdaJ1);
    const HankelCurve *curveXY =
        horizontal != nullptr ? &hankelCurve(HankelKernel::LambdaJ0) : nullptr;
    std::vector<double> &vertical = plan.weight[plan.components - 1];
    for (const WirePoint &point : wirePoints(a, b, normal * d)) {
        for (std::size_t j = begin; j < plan.used; ++j) {
            const double z = point.logDistance + logWavenumber(j);
            if (z >= HankelCurve::LargestLog) {
                break;
            }
            vertical[j] += point.vertical * curveZ.at(z);
            if (curveXY != nullptr) {
                (*horizontal)[j] += normal * point.horizontal * curveXY->at(z);
            }
        }
    }
}

void addLoop(LoopPlan &plan, std::size_t begin, const Sides &s) {
    std::vector<double> *x = plan.components == 3 ? &plan.weight[0] : nullptr;
    std::vector<double> *y = plan.components == 3 ? &plan.weight[1] : nullptr;
    addWire(plan, begin, s.near, s.far, s.left, -1.0, x);
    addWire(plan, begin, s.near, s.far, s.right, 1.0, x);
    addWire(plan, begin, s.left, s.right, s.near, -1.0, y);
    addWire(plan, begin, s.left, s.right, s.far, 1.0, y);
}

// The pair of sides of length l at the distance m from one another.
void addCoincidentPair(LoopPlan &plan, std::size_t begin, double l, double m) {
    constexpr double smallest = 1.0e-7; // of the side; what is left out is as small
    const HankelCurve &curve = hankelCurve(HankelKernel::J0);
    std::vector<double> &weight = plan.weight[0];
    const double factor = 4.0 / (l * m);
    const auto add = [&](double logDistance, double w) {
        for (std::size_t j = begin; j < plan.used; ++j) {
            weight[j] += w * curve.at(logDistance + logWavenumber(j));
        }
    };
    addPanels(std::log(smallest * l), std::log(l),
              [&](double v, double w) { add(v, factor * w * (l - std::exp(v))); });
    addPanels(0.0, std::asinh(l / m), [&](double v, double w) {
        add(std::log(m * std::cosh(v)), -factor * w * (l - m * std::sinh(v)));
    });
}

void finish(LoopPlan &plan, std::size_t component) {
    std::vector<double> &weight = plan.weight[component];
    std::vector<double> &below = plan.below[component];
    below.assign(WavenumberCount + 1, 0.0);
    for (std::size_t j = 0; j < WavenumberCount; ++j) {
        weight[j] *= FieldFactor * plan.geometry.turns;
        below[j + 1] = below[j] + weight[j];
    }
}

bool isLength(double value) {
    return value >= 1.0e-3 && value <= 1.0e6;
}
bool isPlace(double value) {
    return std::fabs(value) <= 1.0e6;
}

} // namespace

PlanFault checkLoop(const LoopGeometry &loop) {
    if (!isLength(loop.sideX) || !isLength(loop.sideY)) {
        return PlanFault::Side;
    }
    if (!loop.coincident && (!isPlace(loop.rxX) || !isPlace(loop.rxY))) {
        return PlanFault::Receiver;
    }
    return PlanFault::None;
}

LoopPlan makeLoopPlan(const LoopGeometry &loop) {
    LoopPlan plan;
    plan.geometry = loop;
    plan.components = loop.horizontal && !loop.coincident ? 3 : 1;
    for (std::size_t j = 0; j < WavenumberCount + KernelLanes; ++j) {
        plan.wavenumber.push_back(std::exp(logWavenumber(j)));
    }
    for (std::size_t c = 0; c < plan.components; ++c) {
        plan.weight[c].assign(plan.wavenumber.size(), 0.0);
    }
    const Sides sides = sidesOf(loop);
    plan.farthest = loop.coincident ? std::hypot(loop.sideX, loop.sideY) : farthestCorner(sides);
    const double largestArgument = std::exp(HankelCurve::LargestLog);
    plan.used = loop.coincident ? WavenumberCount : indexFrom(largestArgument / nearestWire(sides));
    const std::size_t begin = indexFrom(DipoleArgument / plan.farthest);
    addDipole(plan, begin);
    if (loop.coincident) {
        addCoincidentPair(plan, begin, loop.sideX, loop.sideY);
        addCoincidentPair(plan, begin, loop.sideY, loop.sideX);
    } else {
        addLoop(plan, begin, sides);
    }
    for (std::size_t c = 0; c < plan.components; ++c) {
        finish(plan, c);
    }
    return plan;
}

} // namespace keldrin
