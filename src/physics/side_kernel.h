#pragma once

#include "physics/response.h"

namespace keldrin {

// Vertical response of a straight wire on the half-space, reckoned from the foot of the
// perpendicular to one end; a side is the difference of its two ends.
// a  distance along the wire to the end, b  distance across it, q  diffusionScale(t, s)
// |b| below 0.01 m gives 0: the receiver lies on the wire's line.
//
// With theta = 1/(2 sqrt(q)), g = b^2/(a^2+b^2), B = (theta b)^2, C^2 = theta^2 (a^2+b^2) it is
// -1/(2 pi s b^3) times (g + 2) a/r erf(C) - (2/sqrt(pi)) theta a g exp(-C^2)
// - 2 (1 + B) exp(-B) erf(theta a): the vertical magnetic dipole (Ward and Hohmann 1988)
// integrated over the triangle between the receiver and the wire.
//
// Errors over the sum of the magnitudes of exact value and slope (value, slope), for ends up to 60
// degrees from the perpendicular in single and 84 degrees in double precision:
//                      single                          double
//   C to 0.3           power series  2e-5, 1e-4        power series  3e-5, 1e-4
//   C to 1             erf           2e-3, 2e-3        erf           3e-7, 3e-7
//   C to 3.5 (5.5)     erf           4e-6, 4e-6        erf           3e-7, 3e-7
//   above              erf(C) = 1    4e-6, 4e-6        erf(C) = 1    2e-7, 2e-7
// Farther along the wire single precision loses its digits just above C = 0.3: the error is 1e-2 at
// 75 degrees and as large as the value at 84.

/// In single precision; serves where sides add up.
Response Side_ZKernel(float a, float b, float s, float q);

/// The same in double precision with its own limits for large arguments; serves where the eight
/// ends of a loop nearly cancel.
Response Side_ZKernelD(float a, float b, float s, float q);

} // namespace keldrin
