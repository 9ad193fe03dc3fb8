#pragma once

#include <functional>

namespace keldrin {

// The documented searches for a root of any function. No program calls them: the apparent
// resistivities step by the slopes that their kernels give.

/// Where a search for a root ended.
struct Root {
    double root = 0.0;
    int count = 0; ///< evaluations of the function
    int error = 0; ///< 1 when nothing was found
};

using RootFunction = std::function<double(double)>;

/// Root by the secant method from x1 and x2, held between xLow and xHigh (a step beyond gives the
/// bound, without error). Once two residuals differ in sign Root_Ridder takes over. More than 30
/// passes: error 1, reported, with the last point.
Root Root_Secant(const RootFunction &f, double x1, double x2, double xLow, double xHigh,
                 double tolerance);

/// Root between x1 and x2 by Ridders' method (IEEE Trans. Circuits Syst. 26, 1979), to within
/// `tolerance`.
/// f1, f2   residuals at x1 and x2; both below or both above 0: error 1, reported
/// count    evaluations made so far
/// A residual that is NaN gives error 1. More than 60 passes are reported, without error, and give
/// the end with the smaller residual.
Root Root_Ridder(const RootFunction &f, double x1, double x2, double f1, double f2,
                 double tolerance, int count = 0);

} // namespace keldrin
