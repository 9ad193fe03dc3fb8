#include "engine/line_system.h"

#include "base/index.h"

#include <Eigen/Cholesky>

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>
#include <vector>

namespace keldrin {

namespace {

using Eigen::MatrixXd;
using Eigen::VectorXd;

/// The eliminated line. Every block but the middle one knows its neighbour towards the middle.
struct Elimination {
    int blocks;
    int middle;
    std::vector<MatrixXd> inverse; ///< first the block, then its inverse after its outer neighbours
                                   ///< were eliminated
    std::vector<VectorXd> right;   ///< the same of the right side
    std::vector<double> link;
    std::vector<char> failed;

    explicit Elimination(LineSystem &&system)
        : blocks(static_cast<int>(system.diagonal.size())), middle(blocks / 2),
          inverse(std::move(system.diagonal)), right(std::move(system.right)),
          link(std::move(system.link)), failed(inverse.size(), 0) {}

    [[nodiscard]] double linkBetween(int a, int b) const { return link[asIndex(std::min(a, b))]; }
};

void eliminate(Elimination &line, int block, std::initializer_list<int> outerNeighbours) {
    MatrixXd &matrix = line.inverse[asIndex(block)];
    for (const int outer : outerNeighbours) {
        if (outer < 0 || outer >= line.blocks) {
            continue;
        }
        const double link = line.linkBetween(block, outer);
        if (link != 0.0) {
            matrix.noalias() -= link * link * line.inverse[asIndex(outer)];
            line.right[asIndex(block)].noalias() +=
                link * (line.inverse[asIndex(outer)] * line.right[asIndex(outer)]);
        }
    }
    const Eigen::LLT<MatrixXd> factor(matrix);
    matrix = factor.solve(MatrixXd::Identity(matrix.rows(), matrix.cols()));
    line.failed[asIndex(block)] = factor.info() != Eigen::Success || !matrix.allFinite() ? 1 : 0;
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

/// The line eliminated up to its middle block, and then what each caller does outwards from there.
/// result  a vector for each block; one without blocks is solved
SolveStatus solveOutwards(LineSystem &&system, const EngineRun &run, std::vector<VectorXd> &result,
                          const std::function<void(Elimination &)> &startAtMiddle,
                          const std::function<void(Elimination &, int block, int inner)> &visit) {
    result.assign(system.diagonal.size(), VectorXd());
    if (system.diagonal.empty()) {
        return SolveStatus::Solved;
    }
    Elimination line(std::move(system));
    const SolveStatus status = eliminateLine(line, run);
    if (status != SolveStatus::Solved) {
        return status;
    }
    startAtMiddle(line);
    walkChains(line, run, false, [&](int block, int, int inner) { visit(line, block, inner); });
    return run.stopped() ? SolveStatus::Stopped : SolveStatus::Solved;
}

} // namespace

SolveStatus solveLine(LineSystem system, const EngineRun &run, std::vector<VectorXd> &solution) {
    const auto solveMiddle = [&](const Elimination &line) {
        const std::size_t middle = asIndex(line.middle);
        solution[middle] = line.inverse[middle] * line.right[middle];
    };
    const auto solveNext = [&](const Elimination &line, int block, int inner) {
        VectorXd right = line.right[asIndex(block)];
        const double link = line.linkBetween(block, inner);
        if (link != 0.0) {
            right += link * solution[asIndex(inner)];
        }
        solution[asIndex(block)].noalias() = line.inverse[asIndex(block)] * right;
    };
    return solveOutwards(std::move(system), run, solution, solveMiddle, solveNext);
}

SolveStatus lineVariances(LineSystem system, const EngineRun &run,
                          std::vector<VectorXd> &variances) {
    const auto keepDiagonal = [&](const Elimination &line, int block) {
        variances[asIndex(block)] = line.inverse[asIndex(block)].diagonal();
    };
    const auto keepMiddle = [&](const Elimination &line) {
        keepDiagonal(line, line.middle);
    };
    // The covariance of a block takes the place of its inverse.
    const auto keepNext = [&](Elimination &line, int block, int inner) {
        const double link = line.linkBetween(block, inner);
        if (link != 0.0) {
            const MatrixXd inverse = line.inverse[asIndex(block)];
            const MatrixXd product = inverse * line.inverse[asIndex(inner)];
            line.inverse[asIndex(block)].noalias() += link * link * (product * inverse);
        }
        keepDiagonal(line, block);
    };
    return solveOutwards(std::move(system), run, variances, keepMiddle, keepNext);
}

} // namespace keldrin
