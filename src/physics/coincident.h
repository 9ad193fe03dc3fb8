#pragma once

#include "physics/response.h"

namespace keldrin {

/// Response of a circular loop that transmits and receives, over its whole area: V/A, not divided
/// by the area.
///
/// It is the vertical magnetic dipole (Ward and Hohmann 1988) integrated twice over the loop's
/// area, with u = theta radius: an alternating power series at late times (u below 1.5), a
/// polynomial in 1/u at early ones.
Response Loop_CoincidentZ(float radius, float t, float s);

/// The same value without slope, with coarser limits: the series below u = 1, to 1e-4.
float Loop_CoincidentFloor(float radius, float t, float s);

} // namespace keldrin
