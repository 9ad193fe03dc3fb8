#include "physics/side_kernel.h"

#include "physics/special_functions.h"

#include <cmath>

namespace keldrin {

namespace {

/// What differs between the two widths.
struct SingleWidth {
    using Real = float;
    static constexpr Real TwoPi = 6.2831855F;
    static constexpr Real TwoOverRootPi = 1.128379F;
    static constexpr Real LargeC = 3.5F;  ///< above it erf(C) is taken as 1
    static constexpr Real LargeB = 30.0F; ///< with large C, from it on exp(-B) is taken as 0
    static Real erf(Real x) { return Erf_Single(x); }
    static Real exp(Real x) { return Exp_Single(x); }
};
struct DoubleWidth {
    using Real = double;
    static constexpr Real TwoPi = 6.283185307179586;
    static constexpr Real TwoOverRootPi = 1.12837916709551;
    static constexpr Real LargeC = 5.5;
    static constexpr Real LargeB = 50.0;
    static Real erf(Real x) { return Erf_Double(x); }
    static Real exp(Real x) { return std::exp(x); }
};

template <class Real>
Response rounded(Real value, Real slope) {
    return {static_cast<float>(value), static_cast<float>(slope)};
}

// Power series of the two brackets for C of 0.3 or less, where their parts cancel.
template <class Width, class Real = typename Width::Real>
Response smallSide(Real p, Real A1, Real B, Real C) {
    const Real A = A1 * A1;
    const Real p2 = p * Width::TwoOverRootPi * A1 * (B * B);
    const Real v = Real(0.8) * p2 * Width::exp(-C * C) *
                   (Real(1) + (Real(6) * B + Real(16) * A) / Real(21) +
                    (Real(12) * (B * B) + Real(44) * A * B + Real(60) * (A * A)) / Real(189));
    const Real d = p2 * (Real(1.2) - (Real(30) * B + Real(10) * A) / Real(21) +
                         (Real(105) * (B * B) + Real(70) * A * B + Real(21) * (A * A)) / Real(135));
    return rounded(v, d);
}

template <class Width>
Response side(float along, float across, float conductivity, float q) {
    using Real = typename Width::Real;
    if (std::fabs(across) < 0.01F) {
        return {};
    }
    const Real theta = Real(0.5) / Real(std::sqrt(q));
    const Real a = Real(along);
    const Real b = Real(across);
    const Real s = Real(conductivity);
    const Real r2 = a * a + b * b;
    const Real r = std::sqrt(r2);
    const Real A1 = theta * a;
    const Real B = (theta * b) * (theta * b);
    const Real C = theta * r;
    const Real p = Real(-1) / (Width::TwoPi * s * (b * b) * b);
    if (C <= Real(0.3)) {
        return smallSide<Width>(p, A1, B, C);
    }
    const Real g = b * b / r2;
    Real G = (g + Real(2)) * (a / r);
    Real M = 0;
    if (C > Width::LargeC) {
        if (B < Width::LargeB) {
            M = Real(2) * Width::exp(-B) * Width::erf(A1);
        }
    } else {
        G = G * Width::erf(C) - Width::TwoOverRootPi * A1 * g * Width::exp(-C * C);
        M = Real(2) * Width::exp(-B) * Width::erf(A1);
    }
    return rounded(p * (G - (Real(1) + B) * M), -p * (G - (Real(1) + B + B * B) * M));
}

} // namespace

Response Side_ZKernel(float a, float b, float s, float q) {
    return side<SingleWidth>(a, b, s, q);
}

Response Side_ZKernelD(float a, float b, float s, float q) {
    return side<DoubleWidth>(a, b, s, q);
}

} // namespace keldrin
