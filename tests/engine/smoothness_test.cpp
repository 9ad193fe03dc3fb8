#include "engine/layer_grid.h"
#include "engine/smoothness.h"

#include <gmock/gmock.h>

#include <cmath>
#include <numeric>

namespace keldrin {
namespace {

using Eigen::MatrixXd;
using Eigen::VectorXd;
using testing::ElementsAre;

LayerPrior exampleLayers(int layers, double first, double factor) {
    LayerPrior prior;
    for (int i = 0; i < layers; ++i, first *= factor) {
        prior.thickness.push_back(first);
    }
    setHalfSpace(50.0, prior);
    return prior;
}

TEST(Smoothness, MatrixAndGradientAreTheDerivativesOfTheSum) {
    LayerPrior prior = exampleLayers(7, 2.0, 1.4);
    for (Eigen::Index k = 0; k < 7; ++k) {
        prior.dzW[k] = 0.3 + 0.2 * static_cast<double>(k);
        prior.deviation[k] = 0.5 + 0.1 * static_cast<double>(k);
    }
    const SmoothnessWeights weights{0.7, 1.0, 2.0, 4.0};
    VectorXd m(7);
    m << 1, 3, 2, 5, 4, 0, 2;
    MatrixXd matrix = MatrixXd::Zero(7, 7);
    VectorXd gradient = VectorXd::Zero(7);
    addSmoothness(prior, weights, m, matrix, gradient);
    const VectorXd step = VectorXd::LinSpaced(7, -0.5, 1.0);
    const double predicted =
        smoothnessSum(prior, weights, m) + 2.0 * gradient.dot(step) + step.dot(matrix * step);
    EXPECT_NEAR(smoothnessSum(prior, weights, m + step), predicted, 1e-9 * predicted);
    EXPECT_NEAR((matrix - matrix.transpose()).norm(), 0.0, 1e-14);
}

// The unit of the weights: one step of a factor e from one layer to the next, 1/16 decade deeper.
TEST(Smoothness, AStepOfOneWithinASixteenthOfADecadeCostsOne) {
    const double factor = std::pow(10.0, 1.0 / 16.0);
    LayerPrior prior = exampleLayers(12, 1.0, factor);
    prior.thickness[0] = factor / (factor - 1.0); // as if the sequence went on upwards
    const SmoothnessWeights onlySlope{0.0, 1.0, 3.0, 0.0};
    VectorXd m = VectorXd::Zero(12);
    m.tail(4).setOnes();
    EXPECT_NEAR(smoothnessSum(prior, onlySlope, m), 1.0, 1e-9);
    prior.dzW[8] = 0.01;
    EXPECT_NEAR(smoothnessSum(prior, onlySlope, m), 0.01, 1e-9) << "an open boundary";
    prior.dzW[8] = 1.0;
    const SmoothnessWeights onlyBackground{2.0, 1.0, 0.0, 0.0};
    m = prior.background.array() + prior.deviation[0];
    EXPECT_NEAR(smoothnessSum(prior, onlyBackground, m), 4.0, 1e-9) << "one value a sounding";
}

TEST(Smoothness, LinksJoinEqualLayersByDistance) {
    const LayerPrior grid = exampleLayers(5, 2.0, 1.4);
    LayerPrior rounded = grid;
    rounded.thickness[2] += 0.002; // as a model file rounds it
    const LayerPrior other = exampleLayers(5, 2.5, 1.4);
    const LayerPrior fewer = exampleLayers(4, 2.0, 1.4);
    const std::vector<LayerPrior> priors = {grid, rounded, grid, grid, grid, other, fewer};
    const SmoothnessWeights weights{1.0, 2.0, 3.0, 1.0};
    EXPECT_THAT(lateralLinks(priors, {50, 100, 50, 0, 1e6, 100}, weights),
                ElementsAre(9.0 * 2, 9.0, 9.0 * 2, 90.0, 0.0, 0.0))
        << "the median spacing is 100";
}

TEST(LayerGrid, GrowsByOneFactorFromAQuarterOfTheFirstDepthToTheLast) {
    const std::vector<double> grid = layerGrid(
        std::vector<DepthRange>{{20, 300}, {24, 400}, {16, 200}, {16, 400}, {12, 500}}, 8);
    EXPECT_EQ(grid.size(), 24U) << "12 a decade from 4 to 400 m";
    EXPECT_NEAR(std::accumulate(grid.begin(), grid.end(), 0.0), 400.0, 1e-6);
    EXPECT_NEAR(grid[0], 0.8, 1e-9);
    EXPECT_NEAR(grid[1] / grid[0], grid[23] / grid[22], 1e-9);
    EXPECT_EQ(layerGrid(std::vector<DepthRange>{{20, 30}}, 30).size(), 30U)
        << "as many as asked for";
    EXPECT_NEAR(std::accumulate(grid.begin(), grid.end(), 0.0), 400.0, 1e-6);
    EXPECT_EQ(layerGrid(std::vector<DepthRange>{{1e-9, 1e9}}, 2).size(), 48U);
    EXPECT_GE(layerGrid(std::vector<DepthRange>{{1e-9, 1e9}}, 2).front(), 0.1 - 1e-9)
        << "what a model file can hold";
    EXPECT_EQ(layerGrid(std::vector<DepthRange>{}, 2).size(), 24U) << "without data";
}

TEST(LayerGrid, DepthsEndAtTheLastWindowThatIsNoNoise) {
    SoundingRecord record;
    SoundingData data;
    VectorXd noise(4);
    data.observed.resize(4);
    for (std::size_t k = 0; k < 4; ++k) {
        record.TWcenter[k] = 0.1F * std::pow(2.0F, static_cast<float>(k));
        record.TWwidth[k] = 0.02F;
        record.TEMerr[k] = 3.0F;
        data.windows.push_back(k);
        data.observed[static_cast<Eigen::Index>(k)] = k == 3 ? -10.0 : 100.0;
        noise[static_cast<Eigen::Index>(k)] = 1.0;
    }
    record.TEMerr[2] = 31.0F;
    const auto depth = [](double milliseconds) { // over 50 ohm-m
        return std::sqrt(2.0 * 1.0e-3 * milliseconds * 50.0 / 1.2566370614e-6);
    };
    const auto lastDepth = [&] {
        return depthRange(record, data, noise, 50.0)->last;
    };
    EXPECT_NEAR(depthRange(record, data, noise, 50.0)->first, depth(std::hypot(0.1, 0.01) - 0.01),
                1e-4);
    EXPECT_NEAR(lastDepth(), depth(std::hypot(0.8, 0.01) + 0.01), 1e-4) << "behind a noisy one";
    noise[3] = 3.1;
    EXPECT_NEAR(lastDepth(), depth(std::hypot(0.2, 0.01) + 0.01), 1e-4) << "two noisy windows";
    data.windows.clear();
    EXPECT_FALSE(depthRange(record, data, noise, 50.0));
}

TEST(LayerGrid, BackgroundOfTheControlBlockIsAveragedInLogarithm) {
    ControlValues control;
    LayerPrior prior = exampleLayers(4, 10.0, 1.0);
    EXPECT_FALSE(backgroundOfControl(control, prior));
    control.Res0Layer[0] = 10.0F;
    control.Res0Layer[1] = 1000.0F;
    control.Thk0Layer[0] = 15.0F;
    control.Res0Error[0] = 100.0F;
    control.Res0Error[1] = 100.0F;
    ASSERT_TRUE(backgroundOfControl(control, prior));
    const VectorXd resistivity = prior.background.array().exp();
    EXPECT_NEAR(resistivity[0], 10.0, 1e-9);
    EXPECT_NEAR(resistivity[1], 100.0, 1e-9);
    EXPECT_NEAR(resistivity[3], 1000.0, 1e-9);
    EXPECT_NEAR(prior.deviation[1], std::log(2.0), 1e-9);
    setLengthUnits(control, Feet);
    ASSERT_TRUE(backgroundOfControl(control, prior));
    EXPECT_NEAR(prior.background[0], std::log(1000.0) - 0.4572 * std::log(100.0), 1e-6);
}

} // namespace
} // namespace keldrin
