#pragma once

#include "physics/response.h"

namespace keldrin {

/// Both horizontal components of a loop.
struct HorizontalResponse {
    Response X;
    Response Y;
};

/// Radial field of a vertical magnetic dipole of unit moment, times 2 pi t: value and slope.
/// rho  distance, theta  inverseDiffusionLength(t, s); nothing nearer than 0.001 m.
///
/// With z = (theta rho)^2 / 2 it is (2 mu0 z / rho^3) exp(-z) ((1 + 2z) I0 - 2 (1 + z + 1/z) I1)
/// (Ward and Hohmann 1988).
Response Dipole_HKernel(float rho, float theta);

/// Vertical field of a vertical magnetic dipole of unit moment, times 2 pi s: value and slope.
///
/// With u = theta rho it is -(9 erf(u) - (2u/sqrt(pi)) (9 + 6u^2 + 4u^4) exp(-u^2)) / rho^5
/// (Ward and Hohmann 1988).
Response Dipole_ZKernel(float rho, float theta);

/// A loop seen from outside as a grid of 9 by 9 dipoles, weighted by the Gauss-Legendre rule.
HorizontalResponse Dipole_HSum(float x, float y, float Lx, float Ly, float t, float s);
Response Dipole_ZSum(float x, float y, float Lx, float Ly, float t, float s);

} // namespace keldrin
