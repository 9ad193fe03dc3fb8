#pragma once

#include "physics/response.h"

namespace keldrin {

/// Vertical response at the centre of the rectangular loop.
Response Loop_CenterZ(float Lx, float Ly, float t, float s);

/// Vertical response at the centre of a circular loop, without slope:
/// (3 erf(u) - (2u/sqrt(pi)) (3 + 2u^2) exp(-u^2)) / (s radius^3) with u = theta radius (Ward and
/// Hohmann 1988). Up to t = 1e-8 s it is the early-time limit 3 / (s radius^3), before t = 0 it
/// is 0.
float Loop_CircleFloor(float radius, float t, float s);

} // namespace keldrin
