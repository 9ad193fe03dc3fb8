#pragma once

#include "engine/hankel_curve.h"
#include "engine/response.h"

#include <array>
#include <vector>

namespace keldrin {

// The magnetic field of a wire loop on a layered earth as a sum over wavenumbers,
//   B = sum over j of W_j R(lambda_j),
// R the reflection coefficient. The vertical dipole at the surface has mu0/(4 pi) times the
// integrals of R lambda^2 J0(lambda r) (vertical) and R lambda^2 J1(lambda r) (radial; Ward and
// Hohmann 1988). Integrated over the loop's area they become integrals along its wires (Raiche
// 1987), d the distance of the receiver to the wire's line, positive where the loop lies on the
// receiver's side:
//   Z    lambda J1(lambda r) d/r for each metre of wire
//   X Y  lambda J0(lambda r), the sides beyond the receiver's axis less those before it
// A loop that receives, too, sees for each pair of sides of length l at the distance m
//   4 (l - u) (J0(lambda u) - J0(lambda sqrt(u^2 + m^2))), over u from 0 to l, over 4 pi area.

/// Range of j: lambda from 1e-10 to 1e3 1/m.
inline constexpr int LowestWavenumber = -10 * WavenumbersPerDecade;
inline constexpr int HighestWavenumber = 3 * WavenumbersPerDecade;
inline constexpr std::size_t WavenumberCount = HighestWavenumber - LowestWavenumber + 1;

struct LoopPlan {
    LoopGeometry geometry;
    std::size_t components = 1;     ///< 1: Z; 3: X Y Z
    double farthest = 0.0;          ///< m, from the receiver to a corner of the loop
    std::size_t used = 0;           ///< wavenumbers from here on have no weight
    std::vector<double> wavenumber; ///< 1/m, WavenumberCount and one block more
    /// nV s/(A m2), turns included; as many as `wavenumber`, 0 from `used` on.
    std::array<std::vector<double>, 3> weight;
    /// below[j] is the sum of all weights before j; the last one is the sum of all.
    std::array<std::vector<double>, 3> below;
};

/// What is wrong with a loop; None for one that makeLoopPlan takes.
PlanFault checkLoop(const LoopGeometry &loop);

/// Weights of a loop that was checked. A receiver nearer than 1 mm to a wire is placed 1 mm beside
/// it: what the ground returns is smooth there.
LoopPlan makeLoopPlan(const LoopGeometry &loop);

} // namespace keldrin
