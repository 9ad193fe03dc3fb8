#pragma once

#include "physics/dipole_plan.h"
#include "physics/special_functions.h"

namespace keldrin {

// The two dipole kernels, see dipole_kernels.h, at one theta and by branches. Branches are numbered
// in the order of their distances: branchOf(rho) never falls as rho rises. at<Branch>() must be
// inlined for its loops to run over vectors.
//
// dipole_lanes.cpp is compiled for several processors. What it calls is inlined always, so that no
// copy of a function for one processor serves another.

namespace dipole_branches {

inline constexpr float TwoOverRootPi = 1.128379F;

[[gnu::always_inline]] inline Response radialBesselForm(float k, float z, float i0, float i1) {
    return {k * z * ((1.0F + 2.0F * z) * i0 - 2.0F * (1.0F + z + 1.0F / z) * i1),
            k * ((2.0F + z * (2.0F + z * (1.0F + 4.0F * z))) * i1 -
                 z * (1.0F - z * (1.0F - 4.0F * z)) * i0)};
}

[[gnu::always_inline]] inline Response radialSeries(float f, float z) {
    return {f * (1.0F - z * (1.875F - z * (1.75F - z * (1.09375F - 0.515625F * z)))),
            2.0F * f *
                (1.0F -
                 z * (2.8125F - z * (3.5F - z * (2.734375F - z * (1.546875F - 0.68427736F * z)))))};
}

[[gnu::always_inline]] inline Response verticalErfForm(float u, float v, float rho5) {
    const float E = 9.0F * (1.0F - erfComplement(u));
    const float T = TwoOverRootPi * u * Exp_Single(-v);
    return {-(E - (9.0F + 6.0F * v + 4.0F * (v * v)) * T) / rho5,
            (E - (9.0F + 6.0F * v + 4.0F * (v * v * v)) * T) / rho5};
}

[[gnu::always_inline]] inline Response verticalSeries(float f, float v) {
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

[[gnu::always_inline]] inline Response verticalShortSeries(float f, float v) {
    return {f * (1.6F - v * (2.2857144F - 1.3333334F * v)),
            f * (2.4F - v * (5.714286F - v * (4.6666665F - 2.1818182F * v)))};
}

} // namespace dipole_branches

/// The radial kernel at one theta.
struct RadialKernel {
    enum Branch { TooNear, Series, Bessel, Scaled };
    float theta;

    [[nodiscard, gnu::always_inline]] float zOf(float rho) const {
        return 0.5F * ((theta * rho) * (theta * rho));
    }

    [[nodiscard, gnu::always_inline]] int branchOf(float rho) const {
        const float z = zOf(rho);
        const int branch = 1 + (z > 0.01F ? 1 : 0) + (z > BesselSplit ? 1 : 0);
        return rho < NearestDipole ? 0 : branch;
    }

    template <int B>
    [[nodiscard, gnu::always_inline]] Response at(const DipoleDistance &distance) const {
        const float z = zOf(distance.rho);
        const float k = distance.cubic;
        if constexpr (B == Series) {
            return dipole_branches::radialSeries(k * (z * z), z);
        } else if constexpr (B == Bessel) {
            return dipole_branches::radialBesselForm(k * Exp_Single(-z), z, besselSeriesI0(z),
                                                     besselSeriesI1(z));
        } else if constexpr (B == Scaled) {
            return dipole_branches::radialBesselForm(k, z, Bessel_I0Scaled(z), Bessel_I1Scaled(z));
        } else {
            return {};
        }
    }
};

/// The vertical kernel at one theta.
struct VerticalKernel {
    enum Branch { ShortSeries, Series, Erf, PowerLaw };
    float theta;

    [[nodiscard, gnu::always_inline]] int branchOf(float rho) const {
        const float u = rho * theta;
        return (u > 0.15F ? 1 : 0) + (u > 0.7F ? 1 : 0) + (u > 6.0F ? 1 : 0);
    }

    template <int B>
    [[nodiscard, gnu::always_inline]] Response at(const DipoleDistance &distance) const {
        const float u = distance.rho * theta;
        const float v = u * u;
        const float f =
            dipole_branches::TwoOverRootPi * ((theta * theta) * (theta * theta) * theta);
        if constexpr (B == ShortSeries) {
            return dipole_branches::verticalShortSeries(f, v);
        } else if constexpr (B == Series) {
            return dipole_branches::verticalSeries(f, v);
        } else if constexpr (B == Erf) {
            return dipole_branches::verticalErfForm(u, v, distance.fifth);
        } else {
            return {distance.powerLaw, -distance.powerLaw};
        }
    }
};

} // namespace keldrin
