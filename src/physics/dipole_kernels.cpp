#include "physics/dipole_kernels.h"

#include "physics/gauss_rules.h"
#include "physics/special_functions.h"

#include <cmath>
#include <cstddef>

namespace keldrin {

namespace {

constexpr float TwoPi = 6.2831855F;
constexpr float TwoOverRootPi = 1.128379F;
constexpr float NearestNode = 0.001F; ///< m

float cubed(float x) {
    return x * x * x;
}
float fifthPower(float x) {
    const float x2 = x * x;
    return x2 * x2 * x;
}

Response radialBesselForm(float k, float z, float i0, float i1) {
    return {k * z * ((1.0F + 2.0F * z) * i0 - 2.0F * (1.0F + z + 1.0F / z) * i1),
            k * ((2.0F + z * (2.0F + z * (1.0F + 4.0F * z))) * i1 -
                 z * (1.0F - z * (1.0F - 4.0F * z)) * i0)};
}

Response radialSeries(float k, float z) {
    const float f = k * (z * z);
    return {f * (1.0F - z * (1.875F - z * (1.75F - z * (1.09375F - 0.515625F * z)))),
            2.0F * f *
                (1.0F -
                 z * (2.8125F - z * (3.5F - z * (2.734375F - z * (1.546875F - 0.68427736F * z)))))};
}

Response verticalSeries(float f, float v) {
    return {f * (1.6F - v * (2.2857144F -
                             v * (1.3333334F -
                                  v * (0.4848485F - v * (0.12820514F - v * (0.026666667F -
                                                                            0.0045751636F * v)))))),
            f * (2.4F -
                 v * (5.714286F -
                      v * (4.6666665F -
                           v * (2.1818182F -
                                v * (0.7051282F - v * (0.17333333F -
                                                       v * (0.034313727F - 0.005680869F * v)))))))};
}

Response shortVerticalSeries(float f, float v) {
    return {f * (1.6F - v * (2.2857144F - 1.3333334F * v)),
            f * (2.4F - v * (5.714286F - v * (4.6666665F - 2.1818182F * v)))};
}

// Calls visit(xv, yv, rho, W) for the 81 dipoles: position of the receiver as the dipole sees it,
// distance, weight.
template <class Visit>
void forEachDipole(float x, float y, float Lx, float Ly, Visit visit) {
    const float X0 = 0.5F * Lx + x;
    const float Y0 = 0.5F * Ly + y;
    for (std::size_t i = 0; i < Gauss9.nodes.size(); ++i) {
        const float yv = Y0 - Gauss9.nodes[i] * Ly;
        for (std::size_t j = 0; j < Gauss9.nodes.size(); ++j) {
            const float xv = X0 - Gauss9.nodes[j] * Lx;
            visit(xv, yv, std::sqrt(xv * xv + yv * yv), Gauss9.weights[j] * Gauss9.weights[i]);
        }
    }
}

} // namespace

Response Dipole_HKernel(float rho, float theta) {
    if (rho < NearestNode) {
        return {};
    }
    const float u = theta * rho;
    const float z = 0.5F * (u * u);
    const float k = 2.5132742e-6F / cubed(rho);
    if (z > 3.75F) {
        return radialBesselForm(k, z, Bessel_I0Scaled(z), Bessel_I1Scaled(z));
    }
    if (z > 0.01F) {
        return radialBesselForm(k * std::exp(-z), z, Bessel_I0(z), Bessel_I1(z));
    }
    return radialSeries(k, z);
}

Response Dipole_ZKernel(float rho, float theta) {
    const float u = rho * theta;
    const float v = u * u;
    if (u > 6.0F) {
        const float a = -9.0F / fifthPower(rho);
        return {a, -a};
    }
    if (u > 0.7F) {
        const float E = 9.0F * Erf_Single(u);
        const float T = TwoOverRootPi * u * std::exp(-v);
        const float rho5 = fifthPower(rho);
        return {-(E - (9.0F + 6.0F * v + 4.0F * (v * v)) * T) / rho5,
                (E - (9.0F + 6.0F * v + 4.0F * cubed(v)) * T) / rho5};
    }
    const float f = TwoOverRootPi * fifthPower(theta);
    return u > 0.15F ? verticalSeries(f, v) : shortVerticalSeries(f, v);
}

HorizontalResponse Dipole_HSum(float x, float y, float Lx, float Ly, float t, float s) {
    const float theta = inverseDiffusionLength(t, s);
    HorizontalResponse sum;
    forEachDipole(x, y, Lx, Ly, [&](float xv, float yv, float rho, float weight) {
        if (rho < NearestNode) {
            return; // such a node has no weight; 0/0 must not enter the sum
        }
        const Response field = (weight / rho) * Dipole_HKernel(rho, theta);
        sum.X = sum.X + xv * field;
        sum.Y = sum.Y + yv * field;
    });
    const float scale = Lx * Ly / (TwoPi * t);
    return {scale * sum.X, scale * sum.Y};
}

Response Dipole_ZSum(float x, float y, float Lx, float Ly, float t, float s) {
    const float theta = inverseDiffusionLength(t, s);
    Response sum;
    forEachDipole(x, y, Lx, Ly, [&](float, float, float rho, float weight) {
        sum = sum + weight * Dipole_ZKernel(rho, theta);
    });
    // By conductivity here, by time in the horizontal sum: the two kernels are scaled so.
    return (Lx * Ly / (TwoPi * s)) * sum;
}

} // namespace keldrin
