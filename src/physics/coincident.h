#pragma once

#include "physics/response.h"

namespace keldrin {

/// Response of a circular loop that transmits and receives, over its whole area: V/A, not divided
/// by the area.
///
/// It is the vertical magnetic dipole (Ward and Hohmann 1988) integrated twice over the loop's
/// area, with u = theta radius: an alternating power series at late times (u below 1.5), a
/// polynomial in 1/u at early ones.
///
/// Errors over the sum of the magnitudes of exact value and slope (value, slope):
///   u to 0.5        series                     3e-6, 5e-4
///   u to 1          series                     2e-4, 3e-3, for 95 of 100 arguments
///   u to 1.5        series                     2e-4, 3e-3, for 95 of 100 arguments
///   above           polynomial                 1e-3, 2e-3
/// The sum ends when it changes by less than 1e-5, which it also does by chance: then the error is
/// up to 0.02, 0.06 below u = 1 and up to 0.2, 0.7 in narrow bands above it.
Response Loop_CoincidentZ(float radius, float t, float s);

/// The same value without slope, with coarser limits: the series below u = 1, to 1e-4 (errors 3e-5
/// to u = 0.5, 2e-3 for 90 of 100 arguments to u = 1, 1e-3 above).
float Loop_CoincidentFloor(float radius, float t, float s);

} // namespace keldrin
