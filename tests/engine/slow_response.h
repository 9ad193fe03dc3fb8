#pragma once

#include "engine/response.h"

#include <array>
#include <complex>
#include <vector>

namespace keldrin::slow {

// Response of a layered earth by plain quadrature, written for the tests and sharing nothing with
// the program: Bessel functions integrated over wavenumber panel by panel, the wires summed point
// by point, a fixed Talbot contour for each time (Abate and Valko 2004), waveform and windows by
// quadrature over time. Accurate to about 1e-7 of the largest value of a decade.

struct Earth {
    std::vector<double> rho;       ///< ohm-m
    std::vector<double> thickness; ///< m, one less
};

using Field = std::array<double, 3>; ///< X Y Z, nV/(A m2)

/// A loop on an earth. Times from `earliest` (s) on can be asked for.
class StepResponse {
  public:
    StepResponse(const LoopGeometry &loop, const Earth &earth, double earliest, double latest);

    /// After a step-off at time 0.
    [[nodiscard]] Field at(double t) const;

  private:
    Earth earth;
    double smallestRho;
    std::vector<double> lambda;
    std::vector<Field> kernel; ///< of each wavenumber, the step of the quadrature included
};

/// Window data, a row of windows for each component.
std::vector<Field> windowData(const LoopGeometry &loop, const Earth &earth, const WindowSet &set);

} // namespace keldrin::slow
