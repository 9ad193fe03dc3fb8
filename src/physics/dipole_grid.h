#pragma once

#include "physics/gauss_rules.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace keldrin {

// A rectangular loop as 9 by 9 dipoles, row by row, filled up with copies of the last one that
// carry no weight.

inline constexpr std::size_t GridSize = 84;
using GridValues = std::array<float, GridSize>;

/// Places on the unit square and weights, which add up to 1.
struct UnitGrid {
    GridValues x{};
    GridValues y{};
    GridValues weight{};
};

constexpr UnitGrid makeUnitGrid() {
    constexpr std::size_t side = Gauss9.nodes.size();
    UnitGrid grid;
    for (std::size_t i = 0; i < GridSize; ++i) {
        const std::size_t node = std::min(i, side * side - 1);
        grid.x[i] = Gauss9.nodes[node % side];
        grid.y[i] = Gauss9.nodes[node / side];
        grid.weight[i] = node == i ? Gauss9.weights[node % side] * Gauss9.weights[node / side] : 0;
    }
    return grid;
}
inline constexpr UnitGrid LoopGrid = makeUnitGrid();

} // namespace keldrin
