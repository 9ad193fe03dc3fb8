#pragma once

#include "physics/dipole_plan.h"
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
///
/// Errors over the sum of the magnitudes of exact value and slope (value, slope):
///   z to 0.01       power series               2e-7, 4e-7
///   z to 3.75       Bessel functions           5e-6, 4e-5
///   above           scaled Bessel functions    5e-5, 9e-4 at z = 10; 0.004, 0.5 at z = 50
/// The last grows with the square and cube of z: in single precision the Bessel functions cancel,
/// and from z of about 60 on the slope is noise.
///
/// This and the next one at a single place serve the tests, which measure these errors; programs
/// call the sums below.
Response Dipole_HKernel(float rho, float theta);

/// Vertical field of a vertical magnetic dipole of unit moment, times 2 pi s: value and slope.
///
/// With u = theta rho it is -(9 erf(u) - (2u/sqrt(pi)) (9 + 6u^2 + 4u^4) exp(-u^2)) / rho^5
/// (Ward and Hohmann 1988).
///
/// Errors over the sum of the magnitudes of exact value and slope (value, slope):
///   u to 0.15       power series               2e-6, 2e-7
///   u to 0.7        power series               4e-6, 2e-6
///   u to 6          error function             8e-6, 6e-6 (at the lower end)
///   above           power law                  1e-7, 1e-7; the slope is minus the value
Response Dipole_ZKernel(float rho, float theta);

/// A loop seen from outside as a grid of 9 by 9 dipoles, weighted by the Gauss-Legendre rule. Just
/// beyond |x| = Lx the vertical sum is within 3e-6 of the integral over the loop's area at all
/// times; the horizontal one has the error of its kernel.
HorizontalResponse Dipole_HSum(const DipolePlan &plan, float t, float s);
Response Dipole_ZSum(const DipolePlan &plan, float t, float s);

/// The same for one value, with a plan of its own; for tests.
HorizontalResponse Dipole_HSum(float x, float y, float Lx, float Ly, float t, float s);
Response Dipole_ZSum(float x, float y, float Lx, float Ly, float t, float s);

} // namespace keldrin
