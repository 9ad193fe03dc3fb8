#include "model/metadata.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace keldrin {
namespace {

// What a file that says nothing stands for. The project file's own defaults differ from these
// (its survey type is Moving-Loop, its ramp 50 usec), and both are meant.
TEST(Metadata, DefaultsThatReachAProject) {
    const Metadata metadata;
    EXPECT_EQ(metadata.Survey.ArrayIndex, 3);
    EXPECT_EQ(metadata.Survey.Array.value, "INL");
    EXPECT_EQ(metadata.Tx.LengthX.value, 100.0F);
    EXPECT_EQ(metadata.Tx.LengthY.value, 100.0F);
    EXPECT_EQ(metadata.Tx.Freq.value, 1.0F);
    EXPECT_EQ(metadata.Tx.Ramp.value, 0.0F);
    EXPECT_EQ(metadata.Line.Azimuth.value, 90.0F);
    EXPECT_EQ(metadata.Rx.Cmp.value, "Ex");
    EXPECT_FALSE(isPresent(metadata.Rx.Area.value));
    EXPECT_FALSE(isPresent(metadata.Tx.Azimuth.value));
    EXPECT_FALSE(isPresent(metadata.Tx.CenterX.value));
    for (const SourcedPoint &corner : metadata.Tx.XYZ) {
        EXPECT_FALSE(isPresent(corner.value[2]));
    }
    EXPECT_EQ(metadata.Tx.Sense.value[15], 0.1F);
}

TEST(Metadata, DefaultsOfInstruments) {
    const Metadata metadata;
    EXPECT_EQ(metadata.Qdr.Type.value, 3);
    EXPECT_EQ(metadata.Qdr.CalVolts.value, 20.0F);
    EXPECT_TRUE(metadata.Qdr.ADCardSN.value[15].isBlank());
    EXPECT_EQ(metadata.Gps.LeapSecond.value, 16);
    EXPECT_EQ(metadata.Gps.Lat.value, 0.0);
    EXPECT_EQ(metadata.Ch.Cmp.value[0], 0);
    EXPECT_EQ(metadata.Ch.Sensor.value[15].name, "dBdt");
    EXPECT_EQ(metadata.Ch.Sensor.value[15].index, 2);
    EXPECT_EQ(metadata.Ch.Factor.value[15], 1.0F);
    EXPECT_EQ(metadata.Ch.PreAmp.value[15], 1.0F);
    EXPECT_EQ(metadata.Ch.CCap.value[15], 1.0F);
    EXPECT_EQ(metadata.Ch.Gain.value[15].code, "NONE");
    EXPECT_EQ(metadata.Ch.Gain.value[15].factor, 1.0F);
    EXPECT_EQ(metadata.Ch.Length.value[15], 0.0F);
    EXPECT_FALSE(isPresent(metadata.Ch.Rx2.value[15][2]));
}

// The records are copied whole, once for each file that is read.
static_assert(std::is_trivially_copyable_v<Metadata>);
static_assert(sizeof(Metadata) < 20000);

TEST(Metadata, ResetTakesValuesLevelsAndCounts) {
    for (const bool clear : {true, false}) {
        Metadata metadata;
        metadata.Line.Name = {"17", 2};
        metadata.Stn.QdrInc = {25.0, 1};
        metadata.Tx.XYZ[8] = {{1.0, 2.0, 3.0}, 2};
        metadata.Survey.ArrayIndex = 1;
        metadata.Job.tail.unknownKeywords = 3;
        metadata.Rx.tail.lastPointIndex = 4;
        metadata.Gps.Week = {2000, 2};
        metadata.Ch.Flip.value[3] = true;
        metadata.Ch.Flip.level = 1;
        metadata.Ch.tail.unknownKeywords = 2;
        metadata.Stn.tail.outOfRange[4] = true;

        MD_Init(metadata, clear);

        EXPECT_EQ(metadata.Line.Name.value, "0");
        EXPECT_EQ(metadata.Line.Name.level, 0);
        EXPECT_FALSE(isPresent(metadata.Stn.QdrInc.value));
        EXPECT_EQ(metadata.Tx.XYZ[8].level, 0);
        EXPECT_EQ(metadata.Survey.ArrayIndex, 3);
        EXPECT_EQ(metadata.Gps.Week.value, 0);
        EXPECT_EQ(metadata.Gps.Week.level, 0);
        EXPECT_FALSE(metadata.Ch.Flip.value[3]);
        EXPECT_EQ(metadata.Ch.Flip.level, 0);
        EXPECT_EQ(metadata.Ch.tail.unknownKeywords, clear ? 0 : 2);
        EXPECT_EQ(metadata.Job.tail.unknownKeywords, clear ? 0 : 3);
        EXPECT_EQ(metadata.Rx.tail.lastPointIndex, clear ? 0 : 4);
        EXPECT_EQ(metadata.Stn.tail.outOfRange[4], !clear);
    }
}

TEST(Metadata, RestoringKeepsWhatWasReported) {
    Metadata metadata;
    metadata.Tx.Ramp = {80.0F, 1};
    const Metadata before = metadata;
    metadata.Tx.Ramp = {100.0F, 2};
    metadata.Ch.Skip.value[15] = true;
    metadata.Tx.tail.outOfRange[24] = true;

    MD_Restore(metadata, before);

    EXPECT_EQ(metadata.Tx.Ramp.value, 80.0F);
    EXPECT_EQ(metadata.Tx.Ramp.level, 1);
    EXPECT_FALSE(metadata.Ch.Skip.value[15]);
    EXPECT_TRUE(metadata.Tx.tail.outOfRange[24]);
}

} // namespace
} // namespace keldrin
