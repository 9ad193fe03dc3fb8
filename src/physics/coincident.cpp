#include "physics/coincident.h"

#include "physics/euler_sum.h"

#include <cmath>

namespace keldrin {

namespace {

constexpr float TwoRootPiMu0 = 4.4546623e-6F; ///< H/m
constexpr float TailQuartic = 0.02078826F;

// One digit shorter than the permeability of the other kernels; results are held to it.
float scaledRadius(float radius, float t, float s) {
    return radius * std::sqrt(1.256637e-6F * s / (4.0F * t));
}

// The series without its first term 0.2, summed until it changes by less than `tolerance`:
// value in R; in S the sum of its terms times (2n + 3).
Response seriesSum(float u2, float tolerance) {
    EulerSeries P;
    EulerSeries Q;
    float T = 0.2F;
    float previous = 0.2F;
    for (int n = 1; n < 33; ++n) {
        const int up = (4 * n + 2) * (2 * n + 3);
        const int down = -(n + 2) * n * (2 * n + 5);
        T = T * u2 * static_cast<float>(up) / static_cast<float>(down);
        Euler_Sum(P, T);
        Euler_Sum(Q, static_cast<float>(2 * n + 3) * T);
        if (std::fabs(previous - P.sum) < tolerance) {
            break;
        }
        previous = P.sum;
    }
    return {P.sum, Q.sum};
}

// Value over c, as a polynomial in w = 1/u.
float tailValue(float w) {
    return 0.1410474F +
           w * (-0.007544041F + w * (-0.1460874F + w * (0.09891401F - TailQuartic * w)));
}

float tailSlope(float w) {
    return -0.5F * w *
           (-0.007544041F + w * (-0.2921748F + w * (0.29674202F - 4.0F * TailQuartic * w)));
}

} // namespace

Response Loop_CoincidentZ(float radius, float t, float s) {
    const float u = scaledRadius(radius, t, s);
    const float c = TwoRootPiMu0 * radius / t;
    if (u < 1.5F) {
        const Response series = seriesSum(u * u, 1.0e-5F);
        const float cu3 = c * (u * u * u);
        return {(series.R + 0.2F) * cu3, 0.5F * cu3 * (series.S + 0.6F)};
    }
    const float w = 1.0F / u;
    return {c * tailValue(w), c * tailSlope(w)};
}

float Loop_CoincidentFloor(float radius, float t, float s) {
    const float u = scaledRadius(radius, t, s);
    const float c = TwoRootPiMu0 * radius / t;
    if (u < 1.0F) {
        return c * (u * u * u) * (seriesSum(u * u, 1.0e-4F).R + 0.2F);
    }
    return c * tailValue(1.0F / u);
}

} // namespace keldrin
