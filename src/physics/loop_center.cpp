#include "physics/loop_center.h"

#include "physics/side_kernel.h"
#include "physics/special_functions.h"

#include <cmath>

namespace keldrin {

namespace {

// The bracket of the circular loop over u^5 for u below 1.5, as rational fits.
float circleFit(float u, float v) {
    if (u < 0.25F) {
        return (0.9027033F - 0.2937367F * v) / (1.0F + 0.3888889F * v);
    }
    if (u < 0.5F) {
        return (0.90270334F + v * (-0.2689133F + 0.032701194F * v)) /
               (1.0F + v * (0.41638795F + 0.055868044F * v));
    }
    return (0.90270334F +
            v * (-0.23934847F + v * (0.03821383F + v * (-0.0033335248F + 0.0001375697F * v)))) /
           (1.0F + v * (0.4491394F + v * (0.08536874F + v * (0.008281476F + 0.00035427077F * v))));
}

} // namespace

Response Loop_CenterZ(float Lx, float Ly, float t, float s) {
    const float q = diffusionScale(t, s);
    const float a = 0.5F * Lx;
    const float b = 0.5F * Ly;
    if (std::fabs(Lx - Ly) < 0.01F) {
        return 8.0F * Side_ZKernel(-a, a, s, q);
    }
    return 4.0F * (Side_ZKernel(-a, b, s, q) + Side_ZKernel(-b, a, s, q));
}

float Loop_CircleFloor(float radius, float t, float s) {
    const float D = s * (radius * radius * radius);
    if (t <= 1.0e-8F) {
        return t >= 0.0F ? 3.0F / D : 0.0F;
    }
    const float u = radius * inverseDiffusionLength(t, s);
    const float v = u * u;
    if (u < 1.5F) {
        return (v * v * u / D) * circleFit(u, v);
    }
    if (u <= 4.5F) {
        return (3.0F * Erf_Single(u) - 1.1283792F * u * (3.0F + 2.0F * v) * Exp_Single(-v)) / D;
    }
    return 3.0F / D;
}

} // namespace keldrin
