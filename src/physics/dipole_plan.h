#pragma once

#include "physics/dipole_grid.h"
#include "physics/response.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace keldrin {

// What a receiver sees of a loop's dipoles at all times and conductivities: made once for a
// sounding, used for each of its thousands of field values.
//
// The kernels go through the dipoles from the nearest to the farthest, for then each branch of a
// kernel is one range and its loop holds no choice. Sums go through the grid, in the order of its
// rows: single precision adds up to other bits in another order.

/// Lists of distances are filled up to whole vectors of this many, with copies of the farthest.
inline constexpr std::size_t DipoleLanes = 8;
inline constexpr std::size_t DistanceCount =
    (GridSize + DipoleLanes - 1) / DipoleLanes * DipoleLanes;
/// A range that begins inside a vector may run so far beyond the last distance.
inline constexpr std::size_t DistanceRoom = DistanceCount + DipoleLanes;
using Distances = std::array<float, DistanceRoom>;

/// Nothing nearer than this has a horizontal field, m.
inline constexpr float NearestDipole = 0.001F;

/// Factor of each dipole of the grid, twice: of the value and of the slope.
using PairedFactors = std::array<float, 2 * GridSize>;

/// Distances and factors of the dipoles.
struct DipolePlan {
    Distances rho;                            ///< m, rising
    Distances cubic;                          ///< 2 mu0 / rho^3
    Distances fifth;                          ///< rho^5
    Distances powerLaw;                       ///< -9 / rho^5
    std::array<std::uint8_t, GridSize> place; ///< of each dipole of the grid in the lists above
    PairedFactors alongX; ///< weight times cosine of the direction from dipole to receiver
    PairedFactors alongY;
    float area; ///< of the loop, m2
};

/// The powers of one distance that kernels use.
struct DipoleDistance {
    float rho;
    float cubic;
    float fifth;
    float powerLaw;
};
DipoleDistance dipoleDistance(float rho);

/// A plan for a receiver at (x, y) from the centre of a loop with these sides, m. Any arguments
/// give a plan, whose values are NaN where its distances are.
DipolePlan makeDipolePlan(float x, float y, float Lx, float Ly);

} // namespace keldrin
