#include "model/survey_model.h"
#include "support/sanitizer.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>

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

// The rule itself: the first record that matches.
int plainSearch(const SurveyModel &model, double tx, float freq, double rx) {
    for (int i = 0; i < model.SoundingCount; ++i) {
        const SoundingRecord &record = model.hTrn[static_cast<std::size_t>(i)];
        if (sameStation(record.RxStn, rx) && sameStation(record.TxStn, tx) &&
            sameFrequency(record.TxFreq, freq)) {
            return i;
        }
    }
    return -1;
}

// A station of a small set, moved by up to 120 spacings: some are the same station and some are
// not, on both sides of a step of the single-precision numbers and of a power of two.
double randomStation(std::mt19937 &random) {
    static constexpr std::array Places = {
        0.0,        100.0,    -100.0,      1024.0,  -1024.0,
        16777217.0, 1.0E9,    -1.0E30,     1.0E300, 1.0E-30,
        1.0E-5,     0.1,      -16777219.0, 1.0E38,  double{MissingValue},
        -1.0E-31,   3.0E-320, 25.5};
    const double place = Places[random() % Places.size()];
    const auto steps = static_cast<double>(random() % 241) - 120.0;
    return place + steps * spacing(place);
}

TEST(SurveyModel, TheIndexFindsWhatASearchThroughAllRecordsFinds) {
    std::mt19937 random(20);
    int added = 0;
    for (int run = 0; run < 20; ++run) {
        SurveyModel model;
        allocateSoundings(model, 300);
        for (int i = 0; i < 1500; ++i) {
            const double tx = randomStation(random);
            const double rx = random() % 500 == 0 ? std::nan("") : randomStation(random);
            const float freq = random() % 2 == 0 ? 4.0F : 8.0F;
            const int expected = plainSearch(model, tx, freq, rx);
            int index = -1;
            const FindOrAdd result = hTrn_Find_Or_Add(model, tx, freq, rx, index);
            ASSERT_EQ(result == FindOrAdd::Found, expected >= 0) << tx << ' ' << rx;
            if (expected >= 0) {
                ASSERT_EQ(index, expected);
            }
            added += result == FindOrAdd::Added ? 1 : 0;
            if (random() % 4 == 0) { // as a reader does that keeps the stations of the last row
                hTrn_Set_Stations(model, index, tx, rx);
            }
        }
        model.SoundingCount /= 2;
        ASSERT_EQ(hTrn_Find(model, 25.5, 4.0F, 25.5), plainSearch(model, 25.5, 4.0F, 25.5));
    }
    EXPECT_GT(added, 2000);
}

TEST(SurveyModel, EnumerationsComeFromTheFirstLetters) {
    EXPECT_EQ(surveyTypeIndexOf(" in-loop"), InLoop);
    EXPECT_EQ(surveyTypeIndexOf("coil"), CoincidentLoop);
    EXPECT_EQ(surveyTypeIndexOf("f"), FixedLoop);
    EXPECT_EQ(surveyTypeIndexOf("X"), MovingLoop);
    EXPECT_EQ(surveyTypeIndexOf(""), MovingLoop);
    EXPECT_EQ(lengthUnitsIndexOf("Feet"), Feet);
    EXPECT_EQ(lengthUnitsIndexOf("yards"), Metres);
    EXPECT_EQ(temUnitsIndexOf("nV/Am2"), NanovoltPerAmpereSquareMetre);
    EXPECT_EQ(temUnitsIndexOf("pT/A"), MicrovoltPerAmpere);
    EXPECT_EQ(temUnitsIndexOf("uV/AnV"), MicrovoltPerAmpere); // only four characters count
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
