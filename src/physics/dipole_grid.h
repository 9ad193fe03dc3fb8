#pragma once

#include "physics/gauss_rules.h"
#include "physics/response.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace keldrin {

// A rectangular loop as 9 by 9 dipoles, row by row, filled up with copies of the last one that
// carry no weight. All loops run over whole vectors of four and hold no branches.

inline constexpr std::size_t GridLanes = 4;
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

/// The receiver as each dipole sees it, m.
struct DipoleOffsets {
    GridValues x;
    GridValues y;
    GridValues rho;
};

inline DipoleOffsets dipoleOffsets(float x, float y, float Lx, float Ly) {
    const float X0 = 0.5F * Lx + x;
    const float Y0 = 0.5F * Ly + y;
    DipoleOffsets offsets;
    for (std::size_t i = 0; i < GridSize; ++i) {
        offsets.x[i] = X0 - LoopGrid.x[i] * Lx;
        offsets.y[i] = Y0 - LoopGrid.y[i] * Ly;
        offsets.rho[i] = std::sqrt(offsets.x[i] * offsets.x[i] + offsets.y[i] * offsets.y[i]);
    }
    return offsets;
}

/// A kernel at every dipole.
struct GridResponse {
    GridValues R;
    GridValues S;
};

/// Which branch of a kernel holds for each dipole.
struct GridBranches {
    std::array<int, GridSize> of;
    int lowest;
    int highest;
};

template <class Kernel>
GridBranches branchesOf(const Kernel &kernel, const GridValues &rho) {
    GridBranches branches;
    for (std::size_t i = 0; i < GridSize; ++i) {
        branches.of[i] = kernel.branchOf(rho[i]);
    }
    branches.lowest = *std::min_element(branches.of.begin(), branches.of.end());
    branches.highest = *std::max_element(branches.of.begin(), branches.of.end());
    return branches;
}

template <int Branch, class Kernel>
void evaluateRow(const Kernel &kernel, const GridValues &rho, std::size_t count,
                 GridResponse &field) {
    for (std::size_t i = 0; i < count; ++i) {
        const Response value = kernel.template at<Branch>(rho[i]);
        field.R[i] = value.R;
        field.S[i] = value.S;
    }
}

// Moves the dipoles of one branch together, evaluates them and puts the results in their places.
template <int Branch, class Kernel>
void evaluateBranch(const Kernel &kernel, const GridBranches &branches, const GridValues &rho,
                    GridResponse &field) {
    if (Branch < branches.lowest || Branch > branches.highest) {
        return;
    }
    if (branches.lowest == branches.highest) {
        evaluateRow<Branch>(kernel, rho, GridSize, field);
        return;
    }
    std::array<std::size_t, GridSize> place{};
    GridValues row{};
    std::size_t count = 0;
    for (std::size_t i = 0; i < GridSize; ++i) {
        if (branches.of[i] == Branch) {
            place[count] = i;
            row[count++] = rho[i];
        }
    }
    const std::size_t whole = (count + GridLanes - 1) / GridLanes * GridLanes;
    std::fill(row.begin() + count, row.begin() + whole, row[0]);
    GridResponse together;
    evaluateRow<Branch>(kernel, row, whole, together);
    for (std::size_t i = 0; i < count; ++i) {
        field.R[place[i]] = together.R[i];
        field.S[place[i]] = together.S[i];
    }
}

/// The kernel at every dipole; the numbers are those of single calls to the bit. A kernel has
/// branches 0 to 3: branchOf(rho) says which one holds, at<Branch>(rho) gives its value
/// and must be inlined for its loop to run over vectors.
template <class Kernel>
GridResponse evaluate(const Kernel &kernel, const GridValues &rho) {
    const GridBranches branches = branchesOf(kernel, rho);
    GridResponse field;
    evaluateBranch<0>(kernel, branches, rho, field);
    evaluateBranch<1>(kernel, branches, rho, field);
    evaluateBranch<2>(kernel, branches, rho, field);
    evaluateBranch<3>(kernel, branches, rho, field);
    return field;
}

/// Sum of factor * value, in four partial sums so that it is the same however it is compiled.
inline float gridSum(const GridValues &factor, const GridValues &value) {
    std::array<float, GridLanes> sum{};
    for (std::size_t i = 0; i < GridSize; i += GridLanes) {
        for (std::size_t lane = 0; lane < GridLanes; ++lane) {
            sum[lane] += factor[i + lane] * value[i + lane];
        }
    }
    return (sum[0] + sum[1]) + (sum[2] + sum[3]);
}

inline Response gridSum(const GridValues &factor, const GridResponse &field) {
    return {gridSum(factor, field.R), gridSum(factor, field.S)};
}

} // namespace keldrin
