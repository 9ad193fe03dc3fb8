#include "engine/line_system.h"

#include <Eigen/LU>
#include <gmock/gmock.h>

#include <random>

namespace keldrin {
namespace {

using Eigen::MatrixXd;
using Eigen::VectorXd;

/// A line whose blocks have these sizes; neighbours of one size are linked.
LineSystem randomLine(const std::vector<int> &sizes) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> number(-1.0, 1.0);
    LineSystem line;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        const int n = sizes[i];
        const MatrixXd a = MatrixXd::NullaryExpr(n, n, [&] { return number(random); });
        line.diagonal.emplace_back(a * a.transpose() + 0.3 * MatrixXd::Identity(n, n));
        line.right.emplace_back(VectorXd::NullaryExpr(n, [&] { return number(random); }));
        if (i > 0) {
            const double link = sizes[i - 1] == n ? 2.0 + number(random) : 0.0;
            line.link.push_back(link);
            line.diagonal[i - 1].diagonal().array() += link;
            line.diagonal[i].diagonal().array() += link;
        }
    }
    return line;
}

MatrixXd denseMatrix(const LineSystem &line, VectorXd &right) {
    Eigen::Index size = 0;
    for (const MatrixXd &block : line.diagonal) {
        size += block.rows();
    }
    MatrixXd dense = MatrixXd::Zero(size, size);
    right.resize(size);
    Eigen::Index at = 0;
    for (std::size_t i = 0; i < line.diagonal.size(); ++i) {
        const Eigen::Index n = line.diagonal[i].rows();
        dense.block(at, at, n, n) = line.diagonal[i];
        right.segment(at, n) = line.right[i];
        if (i > 0 && line.link[i - 1] != 0.0) {
            dense.block(at - n, at, n, n).diagonal().array() -= line.link[i - 1];
            dense.block(at, at - n, n, n).diagonal().array() -= line.link[i - 1];
        }
        at += n;
    }
    return dense;
}

VectorXd joined(const std::vector<VectorXd> &parts) {
    Eigen::Index size = 0;
    for (const VectorXd &part : parts) {
        size += part.size();
    }
    VectorXd all(size);
    Eigen::Index at = 0;
    for (const VectorXd &part : parts) {
        all.segment(at, part.size()) = part;
        at += part.size();
    }
    return all;
}

TEST(LineSystem, SolutionAndVariancesAreThoseOfTheDenseMatrix) {
    for (const std::vector<int> &sizes : {std::vector<int>{5},
                                          {4, 4},
                                          {4, 4, 4},
                                          {3, 3, 3, 3, 3, 3, 3},
                                          {4, 4, 2, 2, 2, 5, 5, 1}}) {
        const LineSystem line = randomLine(sizes);
        VectorXd right;
        const MatrixXd dense = denseMatrix(line, right);
        std::vector<VectorXd> solution;
        std::vector<VectorXd> variances;
        ASSERT_EQ(solveLine(line, {}, solution), SolveStatus::Solved);
        ASSERT_EQ(lineVariances(line, {}, variances), SolveStatus::Solved);
        const MatrixXd inverse = dense.inverse();
        EXPECT_LT((joined(solution) - inverse * right).norm(), 1e-10) << sizes.size();
        EXPECT_LT((joined(variances) - inverse.diagonal()).norm(), 1e-10) << sizes.size();
    }
}

TEST(LineSystem, ThreadsDoNotChangeABit) {
    const LineSystem line = randomLine(std::vector<int>(31, 12));
    std::vector<VectorXd> one;
    ASSERT_EQ(solveLine(line, {1}, one), SolveStatus::Solved);
    for (const int threads : {2, 5}) {
        std::vector<VectorXd> several;
        ASSERT_EQ(solveLine(line, {threads}, several), SolveStatus::Solved);
        EXPECT_EQ(joined(one), joined(several));
    }
}

TEST(LineSystem, BadBlocksAndAStopAreTold) {
    LineSystem line = randomLine({3, 3, 3, 3});
    std::vector<VectorXd> solution;
    const std::atomic<bool> stop = true;
    EXPECT_EQ(solveLine(line, {2, &stop}, solution), SolveStatus::Stopped);
    line.diagonal[0](1, 1) = -5.0;
    EXPECT_EQ(solveLine(line, {}, solution), SolveStatus::Singular);
    line = randomLine({3, 3, 3});
    line.diagonal[2](0, 0) = std::nan("");
    EXPECT_EQ(lineVariances(line, {}, solution), SolveStatus::Singular);
    EXPECT_EQ(solveLine({}, {}, solution), SolveStatus::Solved);
}

} // namespace
} // namespace keldrin
