#include "engine/line_system.h"

#include <Eigen/Cholesky>

#include <algorithm>
#include <cmath>

namespace keldrin {

namespace {

using Eigen::MatrixXd;
using Eigen::VectorXd;

/// The eliminated line. Every block but the middle one knows its neighbour towards the middle.
struct Elimination {
    const LineSystem &system;
    int blocks;
    int middle;
    std::vector<MatrixXd> inverse; ///< of each block after its outer neighbours were eliminated
    std::vector<VectorXd> right;   ///< the same of the right side
    std::vector<char> failed;

    explicit Elimination(const LineSystem &s)
        : system(s), blocks(static_cast<int>(s.diagonal.size())), middle(blocks / 2),
          inverse(s.diagonal.size()), right(s.right), failed(s.diagonal.size(), 0) {}

    [[nodiscard]] double linkBetween(int a, int b) const {
        return system.link[static_cast<std::size_t>(std::min(a, b))];
    }
};

std::size_t at(int i) {
    return static_cast<std::size_t>(i);
}

void eliminate(Elimination &line, int block, std::initializer_list<int> outerNeighbours) {
    MatrixXd matrix = line.system.diagonal[at(block)];
    for (const int outer : outerNeighbours) {
        if (outer < 0 || outer >= line.blocks) {
            continue;
        }
        const double link = line.linkBetween(block, outer);
        if (link != 0.0) {
            matrix.noalias() -= link * link * line.inverse[at(outer)];
            line.right[at(block)].noalias() +=
                link * (line.inverse[at(outer)] * line.right[at(outer)]);
        }
    }
    const Eigen::LLT<MatrixXd> factor(matrix);
    line.inverse[at(block)] = factor.solve(MatrixXd::Identity(matrix.rows(), matrix.cols()));
    line.failed[at(block)] =
        factor.info() != Eigen::Success || !line.inverse[at(block)].allFinite() ? 1 : 0;
}

/// Walks both chains, outermost block first (inwards) or last (outwards). The middle block belongs
/// to neither.
void walkChains(const Elimination &line, const EngineRun &run, bool inwards,
                const std::function<void(int block, int outer, int inner)> &visit) {
    EngineRun quiet{run.threads, run.stop};
    forEachItem(2, quiet, [&](int chain) {
        const int step = chain == 0 ? 1 : -1; // towards the middle
        const int end = chain == 0 ? 0 : line.blocks - 1;
        const int count = std::abs(line.middle - end);
        for (int i = 0; i < count && !run.stopped(); ++i) {
            const int block = inwards ? end + step * i : line.middle - step * (i + 1);
            visit(block, block - step, block + step);
        }
    });
}

SolveStatus eliminateLine(Elimination &line, const EngineRun &run) {
    walkChains(line, run, true,
               [&](int block, int outer, int) { eliminate(line, block, {outer}); });
    if (run.stopped()) {
        return SolveStatus::Stopped;
    }
    eliminate(line, line.middle, {line.middle - 1, line.middle + 1});
    const bool singular = std::find(line.failed.begin(), line.failed.end(), 1) != line.failed.end();
    return singular ? SolveStatus::Singular : SolveStatus::Solved;
}

} // namespace

SolveStatus solveLine(const LineSystem &system, const EngineRun &run,
                      std::vector<VectorXd> &solution) {
    solution.assign(system.diagonal.size(), VectorXd());
    if (system.diagonal.empty()) {
        return SolveStatus::Solved;
    }
    Elimination line(system);
    const SolveStatus status = eliminateLine(line, run);
    if (status != SolveStatus::Solved) {
        return status;
    }
    solution[at(line.middle)] = line.inverse[at(line.middle)] * line.right[at(line.middle)];
    walkChains(line, run, false, [&](int block, int, int inner) {
        VectorXd right = line.right[at(block)];
        const double link = line.linkBetween(block, inner);
        if (link != 0.0) {
            right += link * solution[at(inner)];
        }
        solution[at(block)].noalias() = line.inverse[at(block)] * right;
    });
    return run.stopped() ? SolveStatus::Stopped : SolveStatus::Solved;
}

SolveStatus lineVariances(const LineSystem &system, const EngineRun &run,
                          std::vector<VectorXd> &variances) {
    variances.assign(system.diagonal.size(), VectorXd());
    if (system.diagonal.empty()) {
        return SolveStatus::Solved;
    }
    Elimination line(system);
    const SolveStatus status = eliminateLine(line, run);
    if (status != SolveStatus::Solved) {
        return status;
    }
    // The covariance of a block takes the place of its inverse.
    walkChains(line, run, false, [&](int block, int, int inner) {
        const double link = line.linkBetween(block, inner);
        if (link != 0.0) {
            const MatrixXd inverse = line.inverse[at(block)];
            const MatrixXd product = inverse * line.inverse[at(inner)];
            line.inverse[at(block)].noalias() += link * link * (product * inverse);
        }
    });
    if (run.stopped()) {
        return SolveStatus::Stopped;
    }
    for (std::size_t i = 0; i < variances.size(); ++i) {
        variances[i] = line.inverse[i].diagonal();
    }
    return SolveStatus::Solved;
}

} // namespace keldrin
