#pragma once

#include "physics/response.h"

namespace keldrin {

/// Vertical response at the centre of the rectangular loop, from Side_ZKernel. Its errors are
/// largest where theta times half a diagonal is just above 0.3: 8e-4 for sides up to 1 to 2, 1e-2
/// for sides of 1 to 4.
Response Loop_CenterZ(float Lx, float Ly, float t, float s);

/// Vertical response at the centre of a circular loop, without slope:
/// (3 erf(u) - (2u/sqrt(pi)) (3 + 2u^2) exp(-u^2)) / (s radius^3) with u = theta radius (Ward and
/// Hohmann 1988). Up to t = 1e-8 s it is the early-time limit 3 / (s radius^3), before t = 0 it
/// is 0.
///
/// Errors of the value: rational fits for u below 0.25 (8e-6), 0.5 (5e-7) and 1.5 (5e-6), the error
/// function to 4.5 (3e-7), beyond it 3 / (s radius^3) (2e-7).
float Loop_CircleFloor(float radius, float t, float s);

} // namespace keldrin
