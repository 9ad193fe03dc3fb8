#pragma once

#include "engine/engine_run.h"

#include <Eigen/Core>
#include <vector>

namespace keldrin {

/// The normal equations of a line: one block for each sounding, and links between neighbours.
///
/// The matrix is symmetric and positive definite. Its diagonal blocks are `diagonal`; the block
/// that joins soundings i and i + 1 is -link[i] times the unit matrix. A link of 0 separates
/// neighbours, and only those may have different numbers of layers.
struct LineSystem {
    std::vector<Eigen::MatrixXd> diagonal;
    std::vector<double> link; ///< one fewer than blocks
    std::vector<Eigen::VectorXd> right;
};

enum class SolveStatus {
    Solved,
    Stopped,  ///< the run was stopped
    Singular, ///< a block is not positive definite, or holds no finite numbers
};

/// Solves the equations by block elimination from both ends to the middle and back.
/// The two chains are the same for any number of threads, and so is every bit of the result.
SolveStatus solveLine(LineSystem system, const EngineRun &run,
                      std::vector<Eigen::VectorXd> &solution);

/// The diagonal of the inverse matrix, by the same elimination and its backward pass for
/// covariances (Rauch, Tung and Striebel 1965): with V the inverse of an eliminated block and P the
/// covariance of its neighbour towards the middle, P' = V + link^2 V P V.
SolveStatus lineVariances(LineSystem system, const EngineRun &run,
                          std::vector<Eigen::VectorXd> &variances);

} // namespace keldrin
