#include "keywords/keyword_fixture.h"

namespace keldrin {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;

using SourceLevelTest = KeywordTest;

TEST_F(SourceLevelTest, HigherAndEqualLevelsReplaceLowerOnesDoNot) {
    read("$ Line.Name = side", SideFile);
    read("$ Line.Name = data");
    read("$ Line.Name = side", SideFile);
    EXPECT_EQ(metadata.Line.Name.value, "data");
    read("$ Line.Name = later");
    EXPECT_EQ(metadata.Line.Name.value, "later");
    EXPECT_EQ(metadata.Line.Name.level, DataFile);
    read("$ Line.Number = 3", SideFile); // another keyword of the group is still free
    EXPECT_EQ(metadata.Line.Number.value, 3.0);
    read("$ Line.Azimuth = 45", 0); // level 0 fills what nobody has set
    EXPECT_EQ(metadata.Line.Azimuth.value, 45.0F);
}

TEST_F(SourceLevelTest, RecordOfALowerLevelIsNotLookedAt) {
    readAll({"$ Tx.Freq = 8", "$ Tx.XYZ1 = 1,2,3", "$ Unit.Length = ft", "$ Tx.Length = 50",
             "$ Rx.Area = 9", "$ Rx.Sensor = dBdt", "$ Grid.Ref1 = 1,2,3,4"});
    readAll({"$ Tx.Freq = bad", "$ Tx.XYZ1 = bad", "$ Unit.Length = bad", "$ Tx.Length = bad",
             "$ Rx.Area = bad", "$ Rx.Sensor = bad", "$ Grid.Ref1 = bad", "$ Tx.Freq = 1e9"},
            SideFile);
    expectSilence();
    EXPECT_EQ(metadata.Tx.XYZ[1].value[0], 1.0); // not even cleared
    EXPECT_EQ(metadata.Grid.Ref1.value.pairs[3], 4.0);
}

// A record that stores nothing leaves the level, so a lower source can still fill the value.
TEST_F(SourceLevelTest, LevelIsStoredOnlyWithAValue) {
    const struct {
        std::string_view empty;
        std::string_view good;
        double (*field)(Metadata &metadata);
        double expected;
    } cases[] = {
        {"$ Tx.Freq = *", "$ Tx.Freq = 8", at<&TxMetadata::Freq>, 8},
        {"$ Tx.Freq = /", "$ Tx.Freq = 8", at<&TxMetadata::Freq>, 8},
        {"$ Tx.Freq = bad", "$ Tx.Freq = 8", at<&TxMetadata::Freq>, 8},
        {"$ Tx.Turns = 2.5", "$ Tx.Turns = 3", at<&TxMetadata::Turns>, 3},
        {"$ Line.Azimuth = bad", "$ Line.Azimuth = N45E", at<&LineMetadata::Azimuth>, 45},
        {"$ Line.Azimuth = N99E", "$ Line.Azimuth = SW", at<&LineMetadata::Azimuth>, 225},
        {"$ Tx.Length = INF", "$ Tx.Length = 30", at<&TxMetadata::LengthY>, 30},
        {"$ Tx.XYZ2 = *", "$ Tx.XYZ2 = 1,2,3", at<&TxMetadata::Center>, MissingValue},
        {"$ Unit.Time = *", "$ Unit.Time = usec", at<&UnitMetadata::Time>, 1},
        {"$ Tx.Sense = *,*", "$ Tx.Sense = 0.2", at<&TxMetadata::Sense>, 0.2},
        {"$ Rx.Area = m^2", "$ Rx.Area = 5", at<&RxMetadata::AreaZ>, 5},
    };
    for (const auto &test : cases) {
        forget();
        read(test.empty);
        read(test.good, SideFile);
        EXPECT_THAT(test.field(metadata), isNumber(test.expected)) << test.empty;
    }
    EXPECT_EQ(metadata.Rx.Area.level, SideFile);
}

// A word that the user did not want to match, and one that was answered for a longer enumeration.
TEST_F(SourceLevelTest, AnswersOfTheUser) {
    enumerationMemo().entries = {{"CUBIT", -1}, {"ELL", 7}};
    read("$ Unit.Length = cubit");
    EXPECT_EQ(metadata.Unit.Length.value, 1);
    EXPECT_EQ(metadata.Unit.Length.level, 0);
    read("$ Unit.Length = ell", SideFile);
    EXPECT_EQ(metadata.Unit.Length.value, 2); // held inside its table
    read("$ Survey.Array = cubit");
    EXPECT_EQ(metadata.Survey.Array.value, "INL");
    expectSilence();
}

TEST_F(SourceLevelTest, FailedTokenIsReportedAndLeavesItsValue) {
    read("$ Tx.Center = 1,x,3");
    EXPECT_THAT(messages.errors, ElementsAre("ERROR reading real*8 Tx.Center[2] value from x|"
                                             "Record number 1|$ Tx.Center = 1,x,3"));
    EXPECT_EQ(metadata.Tx.Center.value[0], 1.0);
    EXPECT_FALSE(isPresent(metadata.Tx.Center.value[1]));
    EXPECT_EQ(metadata.Tx.Center.value[2], 3.0);
    EXPECT_EQ(read("$ Tx.Freq = x"), 0);
    EXPECT_EQ(metadata.Tx.Freq.value, 1.0F);
}

// The first report of a keyword is an error, the later ones are warnings, each keyword for itself.
TEST_F(SourceLevelTest, RangeReportsAreCountedForEachKeyword) {
    readAll({"$ Stn.Inc = 0", "$ Stn.Inc = 0", "$ StnInc = -1e10", "$ Stn.Left = 1e10",
             "$ Stn.Left = 2e10", "$ Tx.Length = 0,0"});
    EXPECT_THAT(messages.errors, SizeIs(3));
    EXPECT_THAT(messages.warnings, SizeIs(4));
    EXPECT_THAT(messages.warnings[1], HasSubstr("Abs|StnInc| = 1e+10 > 9.9e+09"));
    EXPECT_THAT(messages.warnings[3], HasSubstr("Tx.Length[2] = 0 < 0.01 m"));
    EXPECT_EQ(metadata.Stn.Inc.value, -9.9E9);
}

TEST_F(SourceLevelTest, WordsOfRangeReports) {
    const struct {
        std::string_view line;
        std::string_view report;
    } cases[] = {
        {"$ Stn.Inc = 0",
         "Stn_MD_Read.WARNING:|Abs|Stn.Inc| = 0 < 1e-06|Stn.Inc will be set = 1e-06"},
        {"$ Stn.UnitScale = -1e10", "Stn_MD_Read.WARNING:|Stn.UnitScale = -1e+10 > 9.9e+09 m/stn#|"
                                    "Stn.UnitScale will be set = 9.9e+09 m/stn#"},
        {"$ Survey.UTMZone = 61",
         "Survey_MD_Read.WARNING: at record 1|Survey.UTMZone = abs|61| < 1 or > 60|"
         "Survey.UTMZone will be set = 0"},
        {"$ Survey.UTMZone = -61",
         "Survey_MD_Read.WARNING: at record 1|Survey.UTMZone = abs|-61| < 1 or > 60|"
         "Survey.UTMZone will be set = 0"},
        {"$ TxRamp = 20000",
         "Tx_MD_Read.WARNING:|TxRamp = 20000 > 10000 usec|TxRamp will be set = 100 usec"},
        {"$ Tx.Area = 0", "Tx_MD_Read.WARNING:|Tx.Area = 0 <= 0 m^2|Tx.Area will be set = 0 m^2"},
        {"$ Tx.NWaveform = 2",
         "Tx_MD_Read.WARNING:|Tx.NWaveform = 2 < 4 or > 2147483647|Tx.NWaveform will be set = 4"},
        {"$ Tx.HPR = 10,400",
         "Tx_MD_Read.WARNING:|Tx.HPR[2] = 400 > 360|Tx.HPR[2] will be set = 360"},
        {"$ Grid.Ref2 = 0,0,-1e10", "Grid_MD_Read.WARNING:|Grid.Ref2[2,1] = -1e+10 < -9.9e+09|"
                                    "Grid.Ref2[2,1] will be set = -9.9e+09"},
        {"$ Rx.Area = 1,0",
         "Rx_MD_Read.WARNING:|Rx.Area[2] = 0 < 1e-06 m^2|Rx.Area[2] will be set = 1e-06 m^2"},
    };
    for (const auto &test : cases) {
        forget();
        EXPECT_EQ(read(test.line), 0);
        EXPECT_THAT(messages.errors, ElementsAre(std::string(test.report)));
    }
}

} // namespace
} // namespace keldrin
