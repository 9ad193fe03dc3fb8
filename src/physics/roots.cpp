#include "physics/roots.h"

#include "messages/message_log.h"

#include <cmath>
#include <utility>

namespace keldrin {

namespace {

// A zero differs from nothing.
bool differInSign(double a, double b) {
    return (a < 0.0 && b > 0.0) || (a > 0.0 && b < 0.0);
}

struct Bracket {
    double x1, x2, f1, f2;

    [[nodiscard]] double best() const { return std::fabs(f1) < std::fabs(f2) ? x1 : x2; }

    // Takes in the midpoint and a better point; false when no two residuals differ in sign.
    bool shrink(double xm, double fm, double xNew, double fNew) {
        if (differInSign(fm, fNew)) {
            *this = {xm, xNew, fm, fNew};
        } else if (differInSign(f1, fNew)) {
            x2 = xNew;
            f2 = fNew;
        } else if (differInSign(f2, fNew)) {
            x1 = xNew;
            f1 = fNew;
        } else {
            return false;
        }
        return true;
    }
};

} // namespace

Root Root_Ridder(const RootFunction &f, double x1, double x2, double f1, double f2,
                 double tolerance, int count) {
    constexpr int mostPasses = 60;
    constexpr double smallestRoot = 1.0e-12;
    Bracket bracket = {x1, x2, f1, f2};
    Root result = {bracket.best(), count, 0};
    if ((f1 < 0.0 && f2 < 0.0) || (f1 > 0.0 && f2 > 0.0)) {
        ReportError({"Root_Ridder.ERROR: Initial x1 & x2 must bracket root"});
        result.error = 1;
        return result;
    }
    for (int pass = 0; pass < mostPasses; ++pass) {
        const auto &b = bracket;
        const double xm = (b.x1 + b.x2) * 0.5;
        const double fm = f(xm);
        ++result.count;
        if (std::isnan(fm) || std::isnan(b.f1) || std::isnan(b.f2)) {
            result.error = 1; // without a number no bracket can be kept
            return result;
        }
        const double s = std::sqrt(fm * fm - b.f1 * b.f2);
        if (std::fabs(s) < smallestRoot) {
            return result;
        }
        const double sign = b.f1 - b.f2 < 0.0 ? -1.0 : 1.0;
        const double xNew = xm + (xm - b.x1) * sign * fm / s;
        const bool settled = std::fabs(xNew - result.root) <= tolerance;
        const double oldRoot = std::exchange(result.root, xNew);
        if (settled) {
            return result;
        }
        const double fNew = f(xNew);
        ++result.count;
        if (fNew == 0.0) {
            return result;
        }
        if (std::isnan(xNew) || std::isnan(fNew)) {
            return {oldRoot, result.count, 1};
        }
        if (b.f1 == 0.0 || b.f2 == 0.0) {
            result.root = b.best(); // an end that is a root itself; the other rules pass it over
            return result;
        }
        if (!bracket.shrink(xm, fm, xNew, fNew)) {
            // Not to be reached: f1 and f2 differ in sign and fNew is a number other than 0, so it
            // differs from one of them.
            ReportError({"ERROR: fRoot_Ridder should never get here!"});
            ShutDown();
        }
        if (std::fabs(bracket.x2 - bracket.x1) <= tolerance) {
            return result;
        }
    }
    ReportError({"WARNING: Root_Ridder exceeded maximum # iterations"});
    result.root = bracket.best();
    return result;
}

Root Root_Secant(const RootFunction &f, double x1, double x2, double xLow, double xHigh,
                 double tolerance) {
    constexpr int mostPasses = 30;
    double f1 = f(x1);
    double f2 = f(x2);
    if (std::fabs(f2) < std::fabs(f1)) {
        std::swap(x1, x2);
        std::swap(f1, f2);
    }
    Root result = {x1, 2, 0};
    if (std::fabs(x2 - x1) < tolerance || f1 == 0.0) {
        return result;
    }
    for (int pass = 0; pass < mostPasses; ++pass) {
        if (differInSign(f1, f2)) {
            return Root_Ridder(f, x1, x2, f1, f2, tolerance, result.count);
        }
        const double delta = (x2 - x1) * f1 / (f1 - f2);
        const double xNew = x1 + delta;
        if (xNew < xLow || xNew > xHigh) {
            result.root = xNew < xLow ? xLow : xHigh;
            return result;
        }
        x2 = std::exchange(x1, xNew);
        f2 = std::exchange(f1, f(xNew));
        ++result.count;
        result.root = x1;
        if (std::fabs(delta) < tolerance || f1 == 0.0) {
            return result;
        }
    }
    ReportError({"WARNING: Root_Secant exceeded 30 iterations"});
    result.error = 1;
    return result;
}

} // namespace keldrin
