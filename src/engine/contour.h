#pragma once

#include <complex>
#include <vector>

namespace keldrin {

// Inverse Laplace transform along a hyperbola in the complex plane (Weideman and Trefethen 2007;
// Talbot 1979), one for a range of times t0 to ratio t0:
//   s = mu (1 + sin(i th - a)),  th = (k + 1/2) h,  k = 0..N-1
//   f(t) = Im sum over k of weight_k F(s_k) exp(s_k t),  weight = (h/pi) ds/dth
// with h = A/N, A = arcosh([(pi - 2a) L + 4a - pi] / [(4a - pi) sin a]),
// mu = (4 pi a - pi^2) N/(A L t0). F is real on the real axis and has its singularities on the
// negative one.

struct ContourNode {
    std::complex<double> s;      ///< 1/s, imaginary part above 0
    std::complex<double> weight; ///< 1/s
};

/// Nodes for times from t0 (s) on; `ratio` is L. The error, over the value of the transform on the
/// contour, is largest at the end of the range: 3e-5 for a ratio of 10 with 12 nodes, 5e-6 with 14,
/// and 5e-4 for a ratio of 30 with 14.
std::vector<ContourNode> hyperbolicContour(double t0, double ratio, int nodes);

} // namespace keldrin
