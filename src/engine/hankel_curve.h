#pragma once

#include <vector>

namespace keldrin {

// Hankel transforms by interpolation of what is transformed (Johansen and Sorensen 1979; Koefoed,
// Ghosh and Polman 1972).
//
// A function R of the wavenumber is known at lambda_j = 10^(j/WavenumbersPerDecade) and
// interpolated in x = ln(lambda) / spacing by g(x - j), g(x) = sinc(x) exp(-x^2/(2 q^2)). The
// transform of g depends on lambda_j r alone, so that the integral of R(lambda) K(lambda r) becomes
// a sum of R at the lambda_j with the weights below.

inline constexpr int WavenumbersPerDecade = 10;
inline constexpr double InterpolationWidth = 2.6; ///< q, in spacings

/// Spacing of ln(lambda).
inline constexpr double LogSpacing = 2.302585092994046 / WavenumbersPerDecade;

/// The kernels K, by their part of the transform: powers of lambda and the Bessel function.
enum class HankelKernel { LambdaJ1, LambdaJ0, J0 };

/// Transform of g for one kernel, against z = ln(lambda_j r): the integral over all x of
/// g((ln x - z)/spacing) x^(p-1) J(x) dx, where p = 2, 2, 1 for the three kernels. The integral
/// over lambda of g times K is the value divided by r^p.
///
/// Worked out once as inverse Mellin transform, on a path moved so that small lambda r keep their
/// relative accuracy, and read by cubic interpolation. Error against direct quadrature: 1e-8 of the
/// largest value, and 1e-6 of the value itself for lambda r below 1.
class HankelCurve {
  public:
    explicit HankelCurve(HankelKernel kernel);

    /// The value; 0 from LargestLog on, the leading power of x below SmallestLog.
    [[nodiscard]] double at(double z) const;

    static constexpr double SmallestLog = -8.0;
    static constexpr double LargestLog = 6.6;

  private:
    static constexpr double Step = 0.01;
    struct Knot {
        double value, slope; ///< the slope for a whole step
    };
    std::vector<Knot> knots;
    double power; ///< below the table the value is factor * exp(power z)
    double factor;
};

/// The curve that all plans share; made at the first call, in some 5 ms.
const HankelCurve &hankelCurve(HankelKernel kernel);

/// Integral of g(y/spacing) exp(p y) dy: what lambda^(p-1) becomes, over lambda_j^p.
double interpolatedPower(double p);

} // namespace keldrin
