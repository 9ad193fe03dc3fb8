#include "engine/noise_estimate.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace keldrin {
namespace {

using Eigen::VectorXd;

constexpr int NoiseWindows = 24;

/// A line of decays with noise of 2 percent and a floor, and a model that is wrong by up to 40
/// percent, smoothly in time.
struct NoisyLine {
    explicit NoisyLine(double scale = 1.0) {
        std::mt19937 random(7);
        std::normal_distribution<double> normal;
        for (std::size_t i = 0; i < records.size(); ++i) {
            data[i].observed.resize(NoiseWindows);
            VectorXd calculated(NoiseWindows);
            deviation.resize(NoiseWindows);
            for (int k = 0; k < NoiseWindows; ++k) {
                const double time = 0.01 * std::pow(1.35, k);
                records[i].TWcenter[static_cast<std::size_t>(k)] = static_cast<float>(time);
                data[i].windows.push_back(static_cast<std::size_t>(k));
                const double field = 0.1 * std::pow(time, -2.5);
                deviation[k] = scale * std::hypot(0.02 * field, 0.05);
                data[i].observed[k] = field + deviation[k] * normal(random);
                calculated[k] = field * (1.0 + 0.4 * std::sin(0.4 * k + 0.2));
            }
            scatters[i] = scatterOf(data[i], calculated);
            line[i] = {&records[i], &data[i], &scatters[i]};
        }
    }

    std::array<SoundingRecord, 7> records;
    std::array<SoundingData, 7> data;
    std::array<VectorXd, 7> scatters;
    std::array<SoundingScatter, 7> line;
    VectorXd deviation;
};

TEST(NoiseEstimate, FindsProportionalNoiseAndAFloorUnderAWrongModel) {
    const NoisyLine line;
    for (std::size_t i = 0; i < line.line.size(); ++i) {
        const VectorXd noise = noiseNear(line.line, i);
        for (int k = 0; k < NoiseWindows; ++k) {
            // Windows at the ends have neighbours on one side, of larger or smaller values.
            const double factor = k < 3 ? 6.0 : 2.5;
            EXPECT_LT(noise[k], factor * line.deviation[k]) << i << " window " << k;
            EXPECT_GT(noise[k], line.deviation[k] / factor) << i << " window " << k;
        }
    }
}

TEST(NoiseEstimate, AWrongModelAloneIsLittleNoise) {
    const NoisyLine line(1.0E-6);
    const VectorXd noise = noiseNear(line.line, 3);
    for (int k = 3; k < NoiseWindows; ++k) {
        EXPECT_LT(noise[k], 0.2 * line.data[3].observed[k]) << k;
    }
}

TEST(NoiseEstimate, MeasuredErrorsAndTooFewDataHaveNone) {
    NoisyLine line;
    line.scatters[3] = {};
    EXPECT_EQ(noiseNear(line.line, 3), VectorXd::Zero(NoiseWindows));
    EXPECT_GT(noiseNear(line.line, 4)[0], 0.0) << "its neighbours still have";
    SoundingData two;
    two.observed = VectorXd::Ones(2);
    EXPECT_EQ(scatterOf(two, VectorXd::Zero(2)).size(), 0);
}

} // namespace
} // namespace keldrin
