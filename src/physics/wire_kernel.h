#pragma once

#include "physics/response.h"

namespace keldrin {

/// Horizontal field, across the wire, of a straight wire element at a receiver; value and slope
/// for each metre of wire.
/// u  distance along the wire, w  distance across it, q  diffusionScale(t, s)
///
/// With z = (u^2 + w^2) theta^2 / 2 the exact value is
/// -(mu0 theta^2 / 4 pi t) exp(-z) (I0(z) - (1 + 1/z) I1(z)), the element of the line integral
/// that by Stokes' theorem equals the radial field of the vertical magnetic dipole (Ward and
/// Hohmann 1988) integrated over the loop's area.
///
/// Errors over the sum of the magnitudes of exact value and slope (value, slope):
///   z to 0.05       rational fit               1e-7, 1e-7
///   z to 1.2        rational fit               3e-5, 4e-4 (at the upper end)
///   z to 3.75       Bessel functions           2e-6, 1e-5
///   above           scaled Bessel functions    3e-6, 5e-5 at z = 10; 2e-4, 3e-2 at z = 100
/// The last grows with z and its square: in single precision the Bessel functions cancel. Programs
/// call the integral below, tests measure these errors.
Response Wire_HKernel(float u, float w, float t, float q);

/// Integral of Wire_HKernel along the wire from a to b at the offset w, by Romberg's method. It
/// converges on the value to about 1e-5, with at most 128 intervals; the slope goes along.
Response Wire_Romberg(float a, float b, float w, float t, float q);

} // namespace keldrin
