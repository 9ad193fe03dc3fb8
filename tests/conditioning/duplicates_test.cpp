#include "conditioning/data_cutoff.h"
#include "conditioning/duplicates.h"
#include "conditioning/window_widths.h"
#include "support/message_recorder.h"

#include <gmock/gmock.h>

#include <cmath>
#include <utility>
#include <vector>

namespace keldrin {
namespace {

using testing::ElementsAre;

struct DuplicateWindow {
    float time, value, error;
    float weightZ = 1.0F;
};

SoundingRecord soundingOf(double tx, double rx, const std::vector<DuplicateWindow> &windows) {
    SoundingRecord record;
    record.TxStn = tx;
    record.RxStn = rx;
    record.NumTW = static_cast<int>(windows.size());
    for (std::size_t i = 0; i < windows.size(); ++i) {
        record.TWcenter[i] = windows[i].time;
        record.TWwidth[i] = windows[i].time / 10;
        record.TEMobs[i] = windows[i].value;
        record.TEMerr[i] = windows[i].error;
        record.TEMwgt[i] = {0, 0, windows[i].weightZ};
    }
    return record;
}

class DuplicatesTest : public testing::Test {
  protected:
    void load(std::vector<SoundingRecord> records) {
        model.SoundingCount = static_cast<int>(records.size());
        model.hTrn = std::move(records);
    }
    [[nodiscard]] std::vector<std::pair<double, double>> stations() const {
        std::vector<std::pair<double, double>> found;
        for (std::size_t i = 0; i < static_cast<std::size_t>(model.SoundingCount); ++i) {
            found.emplace_back(model.hTrn[i].TxStn, model.hTrn[i].RxStn);
        }
        return found;
    }
    MessageRecorder messages;
    SurveyModel model;
};

// Enough soundings for cycles of every length; each comes whole, and what lies after those in use
// stays where it is.
TEST_F(DuplicatesTest, TwentyFourShuffledSoundingsComeInOrderWithTheirData) {
    std::vector<SoundingRecord> records;
    for (int i = 0; i < 24; ++i) {
        const int place = 7 * (i + 5) % 24;
        const auto station = static_cast<double>(place);
        records.push_back(soundingOf(std::floor(station / 6.0), station,
                                     {{1.0F + static_cast<float>(place), 2.0F, 3.0F}}));
    }
    std::swap(records[3], records[20]);
    load(std::move(records));
    model.hTrn.push_back(soundingOf(-9, -9, {}));
    SortByTxRx(model);
    for (int i = 0; i < 24; ++i) {
        const SoundingRecord &record = model.hTrn[static_cast<std::size_t>(i)];
        EXPECT_EQ(record.RxStn, i);
        EXPECT_EQ(record.TxStn, i / 6); // NOLINT(bugprone-integer-division)
        EXPECT_EQ(record.TWcenter[0], static_cast<float>(1 + i));
    }
    EXPECT_EQ(model.hTrn[24].RxStn, -9.0);
}

TEST_F(DuplicatesTest, SoundingsAreSortedByTransmitterThenReceiver) {
    load({soundingOf(2, 1, {}), soundingOf(1, 9, {}), soundingOf(3, 0, {}), soundingOf(1, 2, {}),
          soundingOf(2, 0, {})});
    SortByTxRx(model);
    EXPECT_THAT(stations(),
                ElementsAre(std::pair(1.0, 2.0), std::pair(1.0, 9.0), std::pair(2.0, 0.0),
                            std::pair(2.0, 1.0), std::pair(3.0, 0.0)));
}

TEST_F(DuplicatesTest, RecordsOfOneStationPairMergeWhateverTheirFrequency) {
    SoundingRecord first = soundingOf(1, 1, {{1.0F, 10, 2}});
    SoundingRecord second = soundingOf(1, 1, {{1.0005F, 20, 2}, {0.5F, 30, 2}});
    first.TxFreq = 4;
    second.TxFreq = 8;
    load({soundingOf(5, 5, {{1.0F, 7, 2}}), first, second});
    EXPECT_EQ(AverageDuplicateTransients(model), 0);
    EXPECT_THAT(stations(), ElementsAre(std::pair(1.0, 1.0), std::pair(5.0, 5.0)));
    const SoundingRecord &merged = model.hTrn[0];
    EXPECT_EQ(merged.NumTW, 2);
    EXPECT_EQ(merged.TWcenter[0], 0.5F);
    EXPECT_FLOAT_EQ(merged.TEMobs[1], 15.0F); // equal weights
    EXPECT_FLOAT_EQ(merged.TEMerr[1], 2.0F);  // and no reduction by stacking
    EXPECT_EQ(model.hTrn[1].TEMobs[0], 7.0F);
    EXPECT_EQ(messages.infos.back(), "Averaging reduced # transients from 3 to 2");
}

// Each reading counts by its own error, the third as much as the first; the window keeps its width.
// A reading from another transmitter is another sounding.
TEST_F(DuplicatesTest, AllReadingsOfAStationPairCountAndThoseOfAnotherDoNot) {
    load({soundingOf(1, 1, {{1.0F, 10, 2}}), soundingOf(2, 1, {{1.0F, 99, 2}}),
          soundingOf(1, 1, {{1.0F, 20, 2}}), soundingOf(1, 1, {{1.0F, 60, 4}})});
    EXPECT_EQ(AverageDuplicateTransients(model), 0);
    EXPECT_THAT(stations(), ElementsAre(std::pair(1.0, 1.0), std::pair(2.0, 1.0)));
    EXPECT_FLOAT_EQ(model.hTrn[0].TEMobs[0], 20.0F); // weights 4, 4 and 1
    EXPECT_FLOAT_EQ(model.hTrn[0].TEMerr[0], std::sqrt(16.0F / 3.0F));
    EXPECT_EQ(model.hTrn[0].TWwidth[0], 0.1F);
    EXPECT_EQ(model.hTrn[1].TEMobs[0], 99.0F);
}

// A format that gives stations only must not have all its soundings merged into one.
TEST_F(DuplicatesTest, ASoundingWithoutKeysTakesThemFromItsStation) {
    std::vector<SoundingRecord> records(3);
    records[0].Station = 20;
    records[1].Station = 10;
    records[2] = soundingOf(-1.0E32, 15, {});
    records[2].Station = 99;
    load(records);
    EXPECT_EQ(AverageDuplicateTransients(model), 0);
    EXPECT_THAT(stations(),
                ElementsAre(std::pair(10.0, 10.0), std::pair(15.0, 15.0), std::pair(20.0, 20.0)));
}

TEST_F(DuplicatesTest, WindowsAreComparedWithTheFirstTimeOfTheirChain) {
    load({soundingOf(1, 1, {{1.0F, 1, 2}, {1.0009F, 2, 2}, {1.0018F, 3, 2}, {1.004F, 4, 2}})});
    MergeTransients(model.sounding(1), model.soundings().first(1));
    // 1.0009 joins 1.0; 1.0018 is 0.0018 away from 1.0, although near 1.0009
    EXPECT_EQ(model.hTrn[0].NumTW, 3);
}

TEST_F(DuplicatesTest, WeightsTravelMissingValuesAreLeftOutAndErrorsBelowOneWeighAlike) {
    load({soundingOf(1, 1,
                     {{2.0F, 10, 0.5F, 5.0F},
                      {2.0F, 20, 1.0F, 6.0F},
                      {1.0F, MissingValue, 1},
                      {0.0F, 9, 1},
                      {3.0F, 1, 1003.0F}})});
    MergeTransients(model.sounding(1), model.soundings().first(1));
    const SoundingRecord &merged = model.hTrn[0];
    ASSERT_EQ(merged.NumTW, 2);
    EXPECT_FLOAT_EQ(merged.TEMobs[0], 15.0F);
    EXPECT_GE(merged.TEMwgt[0][2], 5.0F);
    EXPECT_FLOAT_EQ(merged.TEMerr[1], 1003.0F);
    EXPECT_EQ(messages.infos.size(), 0U);
}

TEST_F(DuplicatesTest, MoreThan128MergedWindowsKeepTheEarliestWithOneWarning) {
    std::vector<DuplicateWindow> even;
    std::vector<DuplicateWindow> odd;
    for (int i = 1; i <= 100; ++i) {
        even.push_back({static_cast<float>(2 * i), 1, 2});
        odd.push_back({static_cast<float>(2 * i - 1), 1, 2});
    }
    load({soundingOf(1, 1, even), soundingOf(1, 1, odd)});
    AverageDuplicateTransients(model);
    EXPECT_EQ(model.hTrn[0].NumTW, 128);
    EXPECT_EQ(model.hTrn[0].TWcenter[127], 128.0F);
    EXPECT_EQ(messages.warnings.size(), 1U);
}

TEST_F(DuplicatesTest, CutoffMarksAtTheLimitAndNeverUnskips) {
    load({soundingOf(1, 1, {{1, 1, 99.9F}, {2, 1, 100.0F}, {3, 1, 1003.5F}})});
    model.control.DataCutoff = 100.0F;
    EXPECT_EQ(ApplyDataCutoff(model), 0);
    EXPECT_EQ(model.hTrn[0].TEMerr[0], 99.9F);
    EXPECT_EQ(model.hTrn[0].TEMerr[1], 1100.0F);
    EXPECT_EQ(model.hTrn[0].TEMerr[2], 1003.5F);
    model.SoundingCount = 0;
    EXPECT_EQ(ApplyDataCutoff(model), 1);
}

TEST_F(DuplicatesTest, WidthsMeetAtGeometricMeansAndGivenOnesStay) {
    SoundingRecord record = soundingOf(1, 1, {{1, 1, 1}, {100, 1, 1}, {400, 1, 1}});
    record.TWwidth = {0.0F, 33.0F, -1.0F};
    SoundingRecord single = soundingOf(2, 2, {{1, 1, 1}});
    load({record, single, soundingOf(3, 3, {})});
    SetWindowWidths(model);
    // The first lower edge is held at a quarter of the centre: 0.25..4, not 0.1..10.
    EXPECT_FLOAT_EQ(model.hTrn[0].TWwidth[0], 3.75F);
    EXPECT_EQ(model.hTrn[0].TWwidth[1], 33.0F);
    EXPECT_FLOAT_EQ(model.hTrn[0].TWwidth[2], 400.0F * 400.0F / 200.0F - 200.0F);
    EXPECT_EQ(model.hTrn[1].TWwidth[0], 0.0F);
}

} // namespace
} // namespace keldrin
