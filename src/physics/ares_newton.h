#pragma once

#include "base/real.h"
#include "physics/ares_context.h"

#include <algorithm>
#include <cmath>

namespace keldrin {

/// Where a search ended.
struct AResRoot {
    float x = 0.0F;
    float residual = 0.0F; ///< at x
    float slope = 0.0F;    ///< of the residual at x
    int iterations = 0;    ///< calls of the residual
    int error = 0;         ///< 2 when no solution was found in the passes allowed
};

inline constexpr int AResMostPasses = 17;

/// Shortens a rejected step, by the parabola through the misfits, to a hundredth up to a half.
inline float shortenedStep(float step, float f, float fNew, float g) {
    const float lambda = -(0.5F * g) / (0.5F * (fNew * fNew - f * f) - g);
    return step * limited(lambda, 0.01F, 0.5F); // a NaN gives the hundredth
}

/// Damped Gauss-Newton search for a root of `residual` between xLow and xHigh, from x.
///
/// It ends where the residual is within 0.01, where the step falls below 0.001 (without error: so
/// ends a search that runs into a bound, and one whose residual is not finite) or after 17 passes
/// (error 2). Does not report.
template <class Residual>
AResRoot ARes_Newton(float x, float xLow, float xHigh, Residual residual) {
    constexpr float tolerance = 0.01F;
    constexpr float smallestStep = 0.001F;
    constexpr float largestStep = 1.0F;
    AResRoot root;
    root.x = limited(x, xLow, xHigh);
    auto [f, d] = residual(root.x);
    root.residual = f;
    root.slope = d;
    root.iterations = 1;
    if (std::fabs(f) <= tolerance) {
        return root;
    }
    float mu = 1.0e-15F;
    for (int pass = 0; pass < AResMostPasses; ++pass) {
        const float g = f * d;
        const float dMin = 0.1F * (d * d);
        float step = -g / (mu + d * d);
        if (std::isnan(step)) {
            return root;
        }
        step = limited(step, -largestStep, largestStep);
        step = std::max(xLow - root.x, std::min(step, xHigh - root.x));
        while (true) {
            if (std::fabs(step) < smallestStep) {
                return root;
            }
            const float trial = limited(root.x + step, xLow, xHigh);
            const auto [fNew, dNew] = residual(trial);
            ++root.iterations;
            const bool solved = std::fabs(fNew) <= tolerance;
            if (solved || std::fabs(fNew) < std::fabs(f)) {
                root.x = trial;
                root.residual = fNew;
                root.slope = dNew;
                if (solved) {
                    return root;
                }
                f = fNew;
                d = dNew;
                break;
            }
            mu = std::max(dMin, 10.0F * mu);
            step = shortenedStep(step, f, fNew, g);
        }
        mu *= 0.5F;
    }
    root.error = 2;
    return root;
}

} // namespace keldrin
