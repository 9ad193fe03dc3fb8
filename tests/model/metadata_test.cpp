#include "model/metadata.h"

#include <gtest/gtest.h>

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

TEST(Metadata, ResetTakesValuesLevelsAndCounts) {
    for (const bool clear : {true, false}) {
        Metadata metadata;
        metadata.Line.Name = {"17", 2, 0};
        metadata.Stn.QdrInc = {25.0, 1, 3};
        metadata.Tx.XYZ[8] = {{1.0, 2.0, 3.0}, 2, 0};
        metadata.Survey.ArrayIndex = 1;
        metadata.Job.unknownKeywords = 3;
        metadata.Rx.lastPointIndex = 4;

        MD_Init(metadata, clear);

        EXPECT_EQ(metadata.Line.Name.value, "0");
        EXPECT_EQ(metadata.Line.Name.level, 0);
        EXPECT_FALSE(isPresent(metadata.Stn.QdrInc.value));
        EXPECT_EQ(metadata.Stn.QdrInc.warnings, 0);
        EXPECT_EQ(metadata.Tx.XYZ[8].level, 0);
        EXPECT_EQ(metadata.Survey.ArrayIndex, 3);
        EXPECT_EQ(metadata.Job.unknownKeywords, clear ? 0 : 3);
        EXPECT_EQ(metadata.Rx.lastPointIndex, clear ? 0 : 4);
    }
}

} // namespace
} // namespace keldrin
