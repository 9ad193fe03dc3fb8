#include "physics/dipole_kernels.h"

#include "physics/dipole_grid.h"
#include "physics/special_functions.h"

#include <cmath>
#include <cstddef>

namespace keldrin {

namespace {

constexpr float TwoPi = 6.2831855F;
constexpr float TwoOverRootPi = 1.128379F;
constexpr float TwoMu0 = 2.5132742e-6F;
constexpr float NearestNode = 0.001F; ///< m

constexpr float cubed(float x) {
    return x * x * x;
}
constexpr float fifthPower(float x) {
    return (x * x) * (x * x) * x;
}

inline Response radialBesselForm(float k, float z, float i0, float i1) {
    return {k * z * ((1.0F + 2.0F * z) * i0 - 2.0F * (1.0F + z + 1.0F / z) * i1),
            k * ((2.0F + z * (2.0F + z * (1.0F + 4.0F * z))) * i1 -
                 z * (1.0F - z * (1.0F - 4.0F * z)) * i0)};
}

inline Response radialSeries(float f, float z) {
    return {f * (1.0F - z * (1.875F - z * (1.75F - z * (1.09375F - 0.515625F * z)))),
            2.0F * f *
                (1.0F -
                 z * (2.8125F - z * (3.5F - z * (2.734375F - z * (1.546875F - 0.68427736F * z)))))};
}

/// The radial kernel at one theta.
struct RadialKernel {
    enum Branch { Series, Bessel, Scaled, TooNear };
    float theta;

    [[nodiscard]] float zOf(float rho) const { return 0.5F * ((theta * rho) * (theta * rho)); }

    [[nodiscard]] int branchOf(float rho) const {
        const float z = zOf(rho);
        const int branch = (z > 0.01F ? 1 : 0) + (z > BesselSplit ? 1 : 0);
        return rho < NearestNode ? TooNear : branch;
    }

    template <int B>
    [[nodiscard, gnu::always_inline]] Response at(float rho) const {
        const float z = zOf(rho);
        const float k = TwoMu0 / cubed(rho);
        if constexpr (B == Series) {
            return radialSeries(k * (z * z), z);
        } else if constexpr (B == Bessel) {
            return radialBesselForm(k * Exp_Single(-z), z, besselSeriesI0(z), besselSeriesI1(z));
        } else if constexpr (B == Scaled) {
            return radialBesselForm(k, z, Bessel_I0Scaled(z), Bessel_I1Scaled(z));
        } else {
            return {};
        }
    }
};

inline Response verticalErfForm(float u, float v, float rho5) {
    const float E = 9.0F * (1.0F - erfComplement(u));
    const float T = TwoOverRootPi * u * Exp_Single(-v);
    return {-(E - (9.0F + 6.0F * v + 4.0F * (v * v)) * T) / rho5,
            (E - (9.0F + 6.0F * v + 4.0F * cubed(v)) * T) / rho5};
}

inline Response verticalSeries(float f, float v) {
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

inline Response verticalShortSeries(float f, float v) {
    return {f * (1.6F - v * (2.2857144F - 1.3333334F * v)),
            f * (2.4F - v * (5.714286F - v * (4.6666665F - 2.1818182F * v)))};
}

/// The vertical kernel at one theta.
struct VerticalKernel {
    enum Branch { ShortSeries, Series, Erf, PowerLaw };
    float theta;

    [[nodiscard]] int branchOf(float rho) const {
        const float u = rho * theta;
        return (u > 0.15F ? 1 : 0) + (u > 0.7F ? 1 : 0) + (u > 6.0F ? 1 : 0);
    }

    template <int B>
    [[nodiscard, gnu::always_inline]] Response at(float rho) const {
        const float u = rho * theta;
        const float v = u * u;
        if constexpr (B == ShortSeries) {
            return verticalShortSeries(TwoOverRootPi * fifthPower(theta), v);
        } else if constexpr (B == Series) {
            return verticalSeries(TwoOverRootPi * fifthPower(theta), v);
        } else if constexpr (B == Erf) {
            return verticalErfForm(u, v, fifthPower(rho));
        } else {
            const float a = -9.0F / fifthPower(rho);
            return {a, -a};
        }
    }
};

template <class Kernel>
Response valueOf(const Kernel &kernel, float rho) {
    switch (kernel.branchOf(rho)) {
    case 0:
        return kernel.template at<0>(rho);
    case 1:
        return kernel.template at<1>(rho);
    case 2:
        return kernel.template at<2>(rho);
    default:
        return kernel.template at<3>(rho);
    }
}

} // namespace

Response Dipole_HKernel(float rho, float theta) {
    return valueOf(RadialKernel{theta}, rho);
}

Response Dipole_ZKernel(float rho, float theta) {
    return valueOf(VerticalKernel{theta}, rho);
}

HorizontalResponse Dipole_HSum(float x, float y, float Lx, float Ly, float t, float s) {
    const DipoleOffsets offset = dipoleOffsets(x, y, Lx, Ly);
    const GridResponse field = evaluate(RadialKernel{inverseDiffusionLength(t, s)}, offset.rho);
    GridValues alongX;
    GridValues alongY;
    for (std::size_t i = 0; i < GridSize; ++i) {
        // A dipole that is too near has no field; its distance must not make 0/0 of it.
        const float rho = offset.rho[i] < NearestNode ? NearestNode : offset.rho[i];
        const float factor = LoopGrid.weight[i] / rho;
        alongX[i] = offset.x[i] * factor;
        alongY[i] = offset.y[i] * factor;
    }
    const float scale = Lx * Ly / (TwoPi * t);
    return {scale * gridSum(alongX, field), scale * gridSum(alongY, field)};
}

Response Dipole_ZSum(float x, float y, float Lx, float Ly, float t, float s) {
    const DipoleOffsets offset = dipoleOffsets(x, y, Lx, Ly);
    const GridResponse field = evaluate(VerticalKernel{inverseDiffusionLength(t, s)}, offset.rho);
    // By conductivity here, by time in the horizontal sum: the two kernels are scaled so.
    return (Lx * Ly / (TwoPi * s)) * gridSum(LoopGrid.weight, field);
}

} // namespace keldrin
