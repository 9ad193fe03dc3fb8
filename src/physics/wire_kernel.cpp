#include "physics/wire_kernel.h"

#include "base/real.h"
#include "physics/special_functions.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace keldrin {

namespace {

// Rational fits of exp(-z) (I0 - (1 + 1/z) I1) and of its slope
// -exp(-z) (2z I0 - (2z + 1 + 1/z) I1), which in single precision lose all digits at small z.
Response smallFit(float z) {
    const float n1 = 0.5F - z * (0.5374449F - 0.1543686F * z);
    const float d1 = 1.0F + z * (0.9251101F + 0.2839574F * z);
    const float n2 = 0.5F - z * (1.4098756F - 0.6985314F * z);
    const float d2 = 1.0F + z * (1.1802489F + 0.4930583F * z);
    return {n1 / d1, n2 / d2};
}

Response mediumFit(float z) {
    const float n1 =
        0.5F - z * (0.5249687F - z * (0.1798052F - z * (0.03725119F - 0.003395831F * z)));
    const float d1 =
        1.0F + z * (0.9500626F + z * (0.3847355F + z * (0.08026807F + 0.007479981F * z)));
    const float n2 =
        0.5F - z * (1.4631824F - z * (0.9151344F - z * (0.25205326F - 0.02947922F * z)));
    const float d2 =
        1.0F + z * (1.073635F + z * (0.4998087F + z * (0.12259811F + 0.01384863F * z)));
    return {n1 / d1, n2 / d2};
}

Response besselForm(float z, float i0, float i1) {
    const float inverse = 1.0F / z;
    return {i0 - (1.0F + inverse) * i1, -(2.0F * z * i0 - (2.0F * z + 1.0F + inverse) * i1)};
}

Response elementShape(float z) {
    if (z > 3.75F) {
        return besselForm(z, Bessel_I0Scaled(z), Bessel_I1Scaled(z));
    }
    if (z > 1.2F) {
        return Exp_Single(-z) * besselForm(z, besselSeriesI0(z), besselSeriesI1(z));
    }
    return z > 0.05F ? mediumFit(z) : smallFit(z);
}

/// Elements of one wire: the kernel as a function of the distance along it.
struct Wire {
    float w2; ///< squared offset, m2
    float theta2;
    float c;

    Wire(float w, float t, float q)
        : w2(w * w), theta2(0.25F / q), c(-(theta2 * Mu0) / (t * 12.566371F)) {}

    [[nodiscard]] Response at(float u) const {
        return c * elementShape(0.5F * ((u * u + w2) * theta2));
    }

    // Twice the values at the midpoints of `intervals` intervals of width 2 * step.
    [[nodiscard]] Response midpoints(float a, float step, int intervals) const {
        Response sum;
        for (int i = 1; i <= intervals; ++i) {
            sum = sum + 2.0F * at(a + static_cast<float>(2 * i - 1) * step);
        }
        return sum;
    }
};

} // namespace

Response Wire_HKernel(float u, float w, float t, float q) {
    return Wire(w, t, q).at(u);
}

Response Wire_Romberg(float a, float b, float w, float t, float q) {
    constexpr std::size_t mostLevels = 8;
    constexpr float tolerance = 1.0e-5F;
    const float shortestStep = 10.0F * spacing(a);
    const Wire wire(w, t, q);
    std::array<Response, mostLevels> oldRow{};
    float step = 0.5F * (b - a);
    Response sum = wire.at(a) + wire.at(b);
    oldRow[0] = step * sum;
    int intervals = 1;
    Response result = oldRow[0];
    for (std::size_t level = 1; level < mostLevels; ++level) {
        sum = sum + wire.midpoints(a, step, intervals);
        std::array<Response, mostLevels> row{};
        row[0] = (0.5F * step) * sum;
        float c = 1.0F;
        for (std::size_t j = 1; j <= level; ++j) {
            c *= 4.0F;
            row[j] = {(c * row[j - 1].R - oldRow[j - 1].R) / (c - 1.0F),
                      (c * row[j - 1].S - oldRow[j - 1].S) / (c - 1.0F)};
        }
        result = row[level];
        const float change = std::fabs(result.R - oldRow[level - 1].R);
        // The slope is not tested: it is as smooth as the value.
        if (change / (spacing(result.R) + std::fabs(result.R)) <= tolerance ||
            std::fabs(step) < shortestStep) {
            break;
        }
        oldRow = row;
        intervals *= 2;
        step *= 0.5F;
    }
    return result;
}

} // namespace keldrin
