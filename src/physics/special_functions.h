#pragma once

namespace keldrin {

/// Modified Bessel functions of the first kind for any x; they overflow beyond |x| of about 91.
/// Abramowitz and Stegun 9.8.1 to 9.8.4: polynomials in double, x in single.
float Bessel_I0(float x);
float Bessel_I1(float x);

/// exp(-|x|) times the same, for |x| of 3.75 and more only; they do not overflow.
float Bessel_I0Scaled(float x);
float Bessel_I1Scaled(float x);

/// Error function by a Chebyshev fit of its complement.
float Erf_Single(float x);

/// Error function by Cody's rational fits (Math. Comp. 23, 1969).
double Erf_Double(double x);

} // namespace keldrin
