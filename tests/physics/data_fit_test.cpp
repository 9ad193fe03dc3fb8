#include "physics/data_fit.h"
#include "physics/loop_field.h"

#include <gmock/gmock.h>

#include <array>
#include <cmath>

namespace keldrin {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;

/// A sounding of an array whose windows have an error of 2 percent and the components given.
SoundingRecord soundingOf(std::initializer_list<float> observed, ComponentWords weights) {
    SoundingRecord record;
    for (const float value : observed) {
        const auto k = static_cast<std::size_t>(record.NumTW++);
        record.TEMobs[k] = value;
        record.TEMerr[k] = 2.0F;
        record.TEMwgt[k] = weights;
    }
    return record;
}

ControlValues controlOf(int array) {
    ControlValues control;
    setSurveyType(control, array);
    control.ErrorFloor = 1.0F;
    control.DataCutoff = 100.0F;
    return control;
}

TEST(DataFit, AValueHasItsSignUnlessItMayBeALength) {
    const ControlValues inLoop = controlOf(InLoop);
    const ControlValues moving = controlOf(MovingLoop);
    const SoundingRecord oneSigned = soundingOf({5.0F, -1.0F}, {0, 0, 1});
    const SoundingRecord one = soundingOf({5.0F, 1.0F}, {0, 0, 1});
    const SoundingRecord two = soundingOf({5.0F, -1.0F}, {1, 0, 1});
    EXPECT_EQ(dataKind(inLoop, one), DataKind::Signed);
    EXPECT_EQ(dataKind(moving, oneSigned), DataKind::Signed);
    EXPECT_EQ(dataKind(moving, one), DataKind::Magnitude);
    EXPECT_EQ(dataKind(moving, two), DataKind::Magnitude);
    EXPECT_THAT(switchedOn(moving, two, 0), ElementsAre(true, false, true));
    EXPECT_THAT(switchedOn(inLoop, two, 0), ElementsAre(false, false, true));
}

TEST(DataFit, AWindowIsFittedBelowTheCutoffAlone) {
    ControlValues control = controlOf(FixedLoop);
    SoundingRecord record = soundingOf({5.0F, 5.0F, 5.0F, 2.0E18F, MissingValue, 5.0F}, {1, 0, 0});
    control.DataCutoff = 2.0F;
    record.TEMerr[0] = 1.99F;
    record.TEMerr[2] = 1001.0F;
    record.TEMerr[3] = record.TEMerr[4] = record.TEMerr[5] = 1.0F;
    record.TEMwgt[5] = {0.0F, 0.0F, 0.0F};
    EXPECT_TRUE(isUsable(control, record, 0));
    EXPECT_FALSE(isUsable(control, record, 1)) << "an error of the cutoff itself";
    EXPECT_FALSE(isUsable(control, record, 2)) << "skipped";
    EXPECT_FALSE(isUsable(control, record, 3)) << "a dummy value";
    EXPECT_FALSE(isUsable(control, record, 4));
    EXPECT_FALSE(isUsable(control, record, 5)) << "no component";
    EXPECT_TRUE(isUsable(controlOf(InLoop), record, 5)) << "which is Z there";
}

TEST(DataFit, TheErrorHasItsFloorAndAZeroValueHasOne) {
    ControlValues control = controlOf(InLoop);
    SoundingRecord record = soundingOf({50.0F, 50.0F, 0.0F}, {0, 0, 1});
    record.TEMerr[1] = 1000.5F; // 0.5 percent, skipped
    EXPECT_NEAR(standardError(control, record, 0), 1.0, 1.0E-6);
    EXPECT_NEAR(standardError(control, record, 1), 0.5, 1.0E-6);
    EXPECT_NEAR(standardError(control, record, 2), 2.0E-4, 1.0E-9);
}

TEST(DataFit, ResidualsAreDifferencesOfNoiseAndRatiosOfGoodData) {
    EXPECT_NEAR(residual(0.0, 0.01, 1.0), -0.01, 1.0E-6);
    EXPECT_NEAR(residual(100.0, 90.0, 1.0E-3), std::log(100.0 / 90.0) * 1.0E5, 0.1);
    EXPECT_EQ(noisyMagnitude(3.0, 1, 4.0), 5.0);
    EXPECT_EQ(noisyMagnitude(1.0, 3, 1.0), 2.0);
}

TEST(DataFit, AnOutlierCountsLinearly) {
    EXPECT_EQ(huberThreshold({}), 2.5);
    EXPECT_DOUBLE_EQ(huberThreshold(std::array{-4.0, 1.0, 3.0}), 2.5 * 1.48 * 3.0);
    EXPECT_EQ(huberWeight(-2.5, 2.5), 1.0);
    EXPECT_EQ(huberWeight(-10.0, 2.5), 0.25);
    EXPECT_EQ(misfitOf({}), 0.0);
    EXPECT_NEAR(misfitOf(std::array{0.5, -0.5, 0.5, 10.0}), std::sqrt((0.75 + 25.0) / 4.0), 1E-12);
}

TEST(DataFit, ASoundingTellsTheFitOfItsUsableWindows) {
    const ControlValues control = controlOf(MovingLoop);
    SoundingRecord record = soundingOf({100.0F, 100.0F, 100.0F, 100.0F}, {1, 0, 1});
    record.TEMcalc = {98.0F, 90.0F, MissingValue, 110.0F};
    record.TEMerr[1] = 1002.0F;
    const SoundingFit fit = soundingFit(control, record);
    ASSERT_EQ(fit.residuals.size(), 4U);
    // the calculated length has the noise of two components
    const double first = residual(100.0, std::sqrt(98.0 * 98.0 + 2.0 * 4.0), 2.0);
    EXPECT_NEAR(fit.residuals[0], first, 1.0E-4);
    EXPECT_GT(fit.residuals[1], 4.0F) << "skipped, and told all the same";
    EXPECT_FALSE(isPresent(fit.residuals[2]));
    EXPECT_FLOAT_EQ(fit.median, -fit.residuals[3]) << "the larger of two";
    const std::array usable = {first, static_cast<double>(fit.residuals[3])};
    EXPECT_THAT(static_cast<double>(fit.misfit), DoubleNear(misfitOf(usable), 1.0E-4));
}

TEST(DataFit, TheDataSeeDownToTheFirstLayerBelowThree) {
    SoundingRecord record;
    record.NumLayer = 5;
    record.Rsns = {90.0F, 3.0F, 2.9F, 5.0F, 9.0F};
    EXPECT_EQ(seenLayers(record), 2);
    record.Rsns[2] = 3.0F;
    EXPECT_EQ(seenLayers(record), 5);
    record.NumLayer = 0;
    EXPECT_EQ(seenLayers(record), 0);
}

} // namespace
} // namespace keldrin
