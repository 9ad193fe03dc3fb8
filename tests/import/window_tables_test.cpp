#include "import/window_tables.h"

#include "base/index.h"

#include <gmock/gmock.h>

#include <cmath>

namespace keldrin {
namespace {

using testing::ElementsAre;

TEST(WindowTables, AMagnitudeTakesTheMeanVarianceAndAnySkipOfItsComponents) {
    WindowTables tables;
    ASSERT_TRUE(tables.allocate(1));
    SoundingRecord record;
    record.NumTW = 2;
    for (int window = 0; window < 2; ++window) {
        mergeReading(tables.at(0, 0, window), 3.0F, 0.3F, window == 1);
        mergeReading(tables.at(0, 2, window), -4.0F, 0.5F, false);
    }
    finishWindows(record, 0, MovingLoop, tables);
    EXPECT_EQ(record.TEMobs[0], 5.0F);
    const float percent = 100.0F * std::sqrt((0.09F + 0.25F) / 2.0F) / 5.0F;
    EXPECT_NEAR(record.TEMerr[0], percent, 1.0e-3F);
    EXPECT_NEAR(record.TEMerr[1], percent + SkipOffset, 1.0e-3F);
    EXPECT_THAT(record.TEMwgt[0], ElementsAre(1, 0, 1));
    // The vertical component alone keeps its sign, its own error and its own mark.
    finishWindows(record, 0, InLoop, tables);
    EXPECT_EQ(record.TEMobs[1], -4.0F);
    EXPECT_NEAR(record.TEMerr[1], 12.5F, 1.0e-3F);
    EXPECT_THAT(record.TEMwgt[1], ElementsAre(0, 0, 1));
}

TEST(WindowTables, AWindowMatchesWithinAHundredSpacingsOfItsTime) {
    const float step = spacing(1.5F);
    SoundingRecord record;
    int index = -1;
    EXPECT_EQ(TW_Find_Or_Add(record, 1.5F, index), FindOrAdd::Added);
    EXPECT_EQ(TW_Find_Or_Add(record, 1.5F + 99.0F * step, index), FindOrAdd::Found);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(TW_Find_Or_Add(record, 1.5F - 99.0F * step, index), FindOrAdd::Found);
    EXPECT_EQ(TW_Find_Or_Add(record, 1.5F + 100.0F * step, index), FindOrAdd::Added);
    EXPECT_EQ(index, 1);
    EXPECT_EQ(record.NumTW, 2);
}

TEST(WindowTables, WindowsWithoutAReadingGoWithTheirTimeAndWidth) {
    WindowTables tables;
    ASSERT_TRUE(tables.allocate(1));
    SoundingRecord record;
    record.NumTW = 3;
    for (int window = 0; window < 3; ++window) {
        record.TWcenter[asIndex(window)] = static_cast<float>(window + 1);
        record.TWwidth[asIndex(window)] = 0.1F * static_cast<float>(window + 1);
        if (window != 1) {
            mergeReading(tables.at(0, AxisZ, window), 10.0F * static_cast<float>(window), 0.3F,
                         false);
        }
    }
    dropEmptyWindows(record, 0, InLoop, tables);
    ASSERT_EQ(record.NumTW, 2);
    EXPECT_EQ(record.TWcenter[1], 3.0F);
    EXPECT_EQ(record.TWwidth[1], 0.1F * 3.0F);
    EXPECT_EQ(tables.at(0, AxisZ, 1).WinMag, 20.0F);
}

} // namespace
} // namespace keldrin
