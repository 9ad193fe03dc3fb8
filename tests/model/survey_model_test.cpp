#include "model/survey_model.h"
#include "support/sanitizer.h"

#include <gtest/gtest.h>

#include <cmath>

namespace keldrin {
namespace {

TEST(SurveyModel, TheTableGrowsNeverShrinksAndIsReset) {
    SurveyModel model;
    EXPECT_EQ(allocateSoundings(model, 0), 0);
    EXPECT_EQ(model.SoundingCapacity(), 0);
    ASSERT_EQ(allocateSoundings(model, 5), 0);
    model.hTrn[4].NumTW = 7;
    model.SoundingCount = 5;
    ASSERT_EQ(allocateSoundings(model, 3), 0);
    EXPECT_EQ(model.SoundingCapacity(), 5);
    EXPECT_EQ(model.SoundingCount, 0);
    EXPECT_EQ(model.hTrn[4].NumTW, 0);
}

TEST(SurveyModel, ATableThatDoesNotFitIsAFailureAndLeavesNone) {
    if (UnderSanitizer) {
        GTEST_SKIP() << "the sanitizer stops at a request of this size";
    }
    SurveyModel model;
    ASSERT_EQ(allocateSoundings(model, 2), 0);
    EXPECT_EQ(allocateSoundings(model, 2'000'000'000), 1);
    EXPECT_EQ(model.SoundingCapacity(), 0);
    EXPECT_EQ(model.SoundingCount, 0);
}

TEST(SurveyModel, SoundingsAreKnownByTransmitterReceiverAndFrequency) {
    SurveyModel model;
    int index = -1;
    EXPECT_EQ(hTrn_Find_Or_Add(model, 1, 4, 1, index), FindOrAdd::Full);
    EXPECT_EQ(index, -1);
    allocateSoundings(model, 3);
    EXPECT_EQ(hTrn_Find_Or_Add(model, 100, 4, 1000, index), FindOrAdd::Added);
    EXPECT_EQ(hTrn_Find_Or_Add(model, 100, 8, 1000, index), FindOrAdd::Added);
    EXPECT_EQ(hTrn_Find_Or_Add(model, 100, 4, std::nextafter(1000.0, 0.0), index),
              FindOrAdd::Found);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(hTrn_Find_Or_Add(model, 100, 4, 1000.1, index), FindOrAdd::Added);
    EXPECT_EQ(hTrn_Find_Or_Add(model, 5, 4, 5, index), FindOrAdd::Full);
    EXPECT_EQ(index, 2);
    EXPECT_EQ(model.hTrn[2].RxStn, 5.0); // the caller decides what that means
    EXPECT_EQ(model.SoundingCount, 3);
}

TEST(SurveyModel, EnumerationsComeFromTheFirstLetters) {
    EXPECT_EQ(surveyTypeIndexOf(" in-loop"), InLoop);
    EXPECT_EQ(surveyTypeIndexOf("coil"), CoincidentLoop);
    EXPECT_EQ(surveyTypeIndexOf("f"), FixedLoop);
    EXPECT_EQ(surveyTypeIndexOf("X"), MovingLoop);
    EXPECT_EQ(surveyTypeIndexOf(""), MovingLoop);
    EXPECT_EQ(lengthUnitsIndexOf("Feet"), Feet);
    EXPECT_EQ(lengthUnitsIndexOf("yards"), Metres);
    EXPECT_EQ(TEMUnitsIndexOf("nV/Am2"), NanovoltPerAmpereSquareMetre);
    EXPECT_EQ(TEMUnitsIndexOf("pT/A"), MicrovoltPerAmpere);
    EXPECT_EQ(TEMUnitsIndexOf("uV/AnV"), MicrovoltPerAmpere); // only four characters count
}

TEST(SurveyModel, ASkipMarkKeepsTheTrueError) {
    EXPECT_TRUE(isSkipped(1003.5F));
    EXPECT_FALSE(isSkipped(1000.0F));
    EXPECT_EQ(trueError(1003.5F), 3.5F);
    EXPECT_EQ(withSkipMark(1003.5F, true), 1003.5F);
    EXPECT_EQ(withSkipMark(1003.5F, false), 3.5F);
}

TEST(SurveyModel, EightLayersADecadeOfTimeWithinLimits) {
    SurveyModel model;
    allocateSoundings(model, 1);
    model.SoundingCount = 1;
    model.hTrn[0].NumTW = 2;
    model.hTrn[0].TWcenter = {0.01F, 10.0F};
    deriveTimeRange(model);
    EXPECT_EQ(model.ModelLayerCount, 24);
    EXPECT_EQ(model.MaxTW, 2);
    model.hTrn[0].NumTW = 1;
    deriveTimeRange(model);
    EXPECT_EQ(model.ModelLayerCount, 2);
    EXPECT_EQ(model.TimeRatio, 1.0F);
}

} // namespace
} // namespace keldrin
