#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <numbers>
#include <vector>

namespace keldrin::exact {

// Half-space responses in double precision, from the closed forms of the vertical magnetic dipole
// (Ward and Hohmann 1988) and numeric integration alone. All are minus dB/dt after step-off, T/s
// per ampere and square metre; s is the conductivity, S/m.

inline constexpr double Mu0 = 4.0e-7 * std::numbers::pi;
inline constexpr double TwoOverRootPi = 2.0 * std::numbers::inv_sqrtpi;

inline double theta(double t, double s) {
    return std::sqrt(Mu0 * s / (4.0 * t));
}

/// exp(-z) I_n(z), as the mean of exp(z (cos a - 1)) cos(n a) over half of the circle.
inline double besselScaled(int n, double z) {
    const int parts = 12 + static_cast<int>(5.0 * std::sqrt(z));
    double sum = 0.5 * (1.0 + std::exp(-2.0 * z) * (n % 2 == 0 ? 1.0 : -1.0));
    for (int i = 1; i < parts; ++i) {
        const double angle = std::numbers::pi * i / parts;
        sum += std::exp(z * (std::cos(angle) - 1.0)) * std::cos(n * angle);
    }
    return sum / parts;
}

/// erf(u) - (2u/sqrt(pi)) exp(-u^2) (1 + 2v/3 + ... up to `taken` terms), without cancellation:
/// the remaining terms of the series of erf.
inline double erfRemainder(double u, int taken) {
    const double v = u * u;
    double term = TwoOverRootPi * u * std::exp(-v);
    double sum = 0.0;
    for (int n = 0; term > 1.0e-18 * sum || n <= taken; ++n) {
        sum += n >= taken ? term : 0.0;
        term *= 2.0 * v / (2 * n + 3);
    }
    return sum;
}

/// Vertical field of a vertical dipole.
inline double verticalDipole(double rho, double t, double s) {
    const double u = theta(t, s) * rho;
    const double v = u * u;
    const double gauss = TwoOverRootPi * u * std::exp(-v);
    // 9 erf(u) - gauss (9 + 6v + 4v^2), and 9 times the third term of erf is 2.4 v^2.
    const double bracket = u > 4.0 ? 9.0 * std::erf(u) - gauss * (9.0 + 6.0 * v + 4.0 * v * v)
                                   : 9.0 * erfRemainder(u, 3) + gauss * (2.4 - 4.0) * v * v;
    const double theta5 = std::pow(theta(t, s), 5);
    const double scaled = u < 1.0e-5 ? -1.6 * TwoOverRootPi * theta5 : bracket / std::pow(rho, 5);
    return -scaled / (2.0 * std::numbers::pi * s);
}

/// Radial field of a vertical dipole.
inline double radialDipole(double rho, double t, double s) {
    const double th = theta(t, s);
    const double z = 0.5 * th * th * rho * rho;
    const double bracket =
        (1.0 + 2.0 * z) * besselScaled(0, z) - 2.0 * (1.0 + z + 1.0 / z) * besselScaled(1, z);
    return Mu0 * th * th / (2.0 * std::numbers::pi * rho * t) * bracket;
}

/// Horizontal field across one metre of straight wire at the distance rho.
inline double wireElement(double rho, double t, double s) {
    const double th = theta(t, s);
    const double z = 0.5 * th * th * rho * rho;
    return -Mu0 * th * th / (4.0 * std::numbers::pi * t) *
           (besselScaled(0, z) - (1.0 + 1.0 / z) * besselScaled(1, z));
}

/// Vertical field at the centre of a circular loop.
inline double circleCentre(double radius, double t, double s) {
    const double u = theta(t, s) * radius;
    const double v = u * u;
    const double gauss = TwoOverRootPi * u * std::exp(-v);
    // 3 erf(u) - gauss (3 + 2v): the first two terms of erf fall out.
    const double bracket =
        u > 4.0 ? 3.0 * std::erf(u) - gauss * (3.0 + 2.0 * v) : 3.0 * erfRemainder(u, 2);
    return bracket / (s * radius * radius * radius);
}

/// Derivative of response(s) by ln(s), to the fourth order.
inline double slope(const std::function<double(double)> &response, double s) {
    constexpr double h = 0.01;
    const auto at = [&](double steps) {
        return response(s * std::exp(steps * h));
    };
    return (8.0 * (at(1) - at(-1)) - (at(2) - at(-2))) / (12.0 * h);
}

/// Points and weights of an integral from a to b.
struct Quadrature {
    std::vector<double> nodes;
    std::vector<double> weights;

    /// Adds a Gauss-Legendre rule of 8 points over one panel.
    void addPanel(double a, double b) {
        constexpr double node[] = {0.1834346424956498, 0.5255324099163290, 0.7966664774136267,
                                   0.9602898564975363};
        constexpr double weight[] = {0.3626837833783620, 0.3137066458778873, 0.2223810344533745,
                                     0.1012285362903763};
        for (int i = 0; i < 4; ++i) {
            for (const double sign : {-1.0, 1.0}) {
                nodes.push_back(0.5 * (a + b) + sign * 0.5 * (b - a) * node[i]);
                weights.push_back(0.5 * (b - a) * weight[i]);
            }
        }
    }
};

/// Panels that shrink towards `centre` by halves, where it lies between a and b.
inline Quadrature gradedQuadrature(double a, double b, double centre) {
    constexpr int halvings = 6;
    Quadrature rule;
    if (centre <= a || centre >= b) {
        for (int i = 0; i < 4; ++i) {
            rule.addPanel(a + (b - a) * i / 4.0, a + (b - a) * (i + 1) / 4.0);
        }
        return rule;
    }
    for (const double end : {a, b}) {
        double outer = end - centre;
        for (int i = 0; i < halvings; ++i, outer *= 0.5) {
            rule.addPanel(centre + std::min(outer, 0.5 * outer),
                          centre + std::max(outer, 0.5 * outer));
        }
        rule.addPanel(centre + std::min(outer, 0.0), centre + std::max(outer, 0.0));
    }
    return rule;
}

/// Vertical field of the triangle between the receiver, the foot of its perpendicular on a straight
/// wire and the point a along the wire, at the distance b: sectors of circles in all directions.
/// Odd in a and b, negative where both are positive.
inline double wireSide(double a, double b, double t, double s) {
    Quadrature rule;
    const double widest = std::atan2(std::fabs(a), std::fabs(b));
    constexpr int panels = 12;
    for (int i = 0; i < panels; ++i) {
        rule.addPanel(widest * i / panels, widest * (i + 1) / panels);
    }
    double sum = 0.0;
    for (std::size_t i = 0; i < rule.nodes.size(); ++i) {
        sum += rule.weights[i] * circleCentre(std::fabs(b) / std::cos(rule.nodes[i]), t, s);
    }
    return (a * b > 0.0 ? -sum : sum) / (2.0 * std::numbers::pi);
}

/// Integral of dipole(dx, dy), the receiver as the dipole sees it, over the loop's area.
inline double overLoop(double x, double y, double Lx, double Ly,
                       const std::function<double(double, double)> &dipole) {
    const Quadrature alongX = gradedQuadrature(-0.5 * Lx, 0.5 * Lx, x);
    const Quadrature alongY = gradedQuadrature(-0.5 * Ly, 0.5 * Ly, y);
    double sum = 0.0;
    for (std::size_t i = 0; i < alongX.nodes.size(); ++i) {
        for (std::size_t j = 0; j < alongY.nodes.size(); ++j) {
            sum += alongX.weights[i] * alongY.weights[j] *
                   dipole(x - alongX.nodes[i], y - alongY.nodes[j]);
        }
    }
    return sum;
}

inline double loopZ(double x, double y, double Lx, double Ly, double t, double s) {
    return overLoop(x, y, Lx, Ly,
                    [=](double dx, double dy) { return verticalDipole(std::hypot(dx, dy), t, s); });
}

inline double loopX(double x, double y, double Lx, double Ly, double t, double s) {
    return overLoop(x, y, Lx, Ly, [=](double dx, double dy) {
        const double rho = std::hypot(dx, dy);
        return radialDipole(rho, t, s) * dx / rho;
    });
}

/// A circular loop that transmits and receives: the dipole over the area twice, which is its
/// integral over the distance of two points of the disk.
inline double coincidentCircle(double radius, double t, double s) {
    const Quadrature rule = gradedQuadrature(-2.0 * radius, 2.0 * radius, 0.0);
    double sum = 0.0;
    for (std::size_t i = 0; i < rule.nodes.size(); ++i) {
        const double rho = rule.nodes[i];
        if (rho > 0.0) {
            const double commonArea = 2.0 * radius * radius * std::acos(0.5 * rho / radius) -
                                      0.5 * rho * std::sqrt(4.0 * radius * radius - rho * rho);
            sum += rule.weights[i] * verticalDipole(rho, t, s) * 2.0 * std::numbers::pi * rho *
                   commonArea;
        }
    }
    return sum;
}

} // namespace keldrin::exact
