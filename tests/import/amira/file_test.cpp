#include "import/amira/fixture.h"
#include "import/import_steps.h"

namespace keldrin {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string Head = "LINE:7 LSIDE:100\n/CONFIG: INLOOP\n/TEMUNIT: nV/Am2\n/TXFREQ: 2.5\n";
const std::string Labels = "STATION COMP CH1 CH2 CH3\n";

TEST_F(AmiraTest, ReadsRowsIntoSoundings) {
    EXPECT_EQ(read(Head +
                   "/JOBNAME: \"Valley\t2\"\n/ a comment: with a mark\n\\ LINE:1\n! LINE:2\n" +
                   "STN LOOP EAST NORTH ELEV COMP CH0001\n"
                   "100W 3 1 2 3 Z 10 -20 30\n"
                   "200S,3,\t4 5 6 HZ, 1E1 2.0D0 3\n"),
              0);
    ASSERT_EQ(model.SoundingCount, 2);
    EXPECT_EQ(model.lines.entries[0].LineLabel.view(), "7 INL");
    EXPECT_EQ(sounding(0).RxStn, -100.0);
    EXPECT_EQ(sounding(0).TxStn, 3.0);
    EXPECT_EQ(sounding(0).East, 1.0);
    EXPECT_EQ(sounding(0).Elevation, 3.0);
    EXPECT_THAT(values(0), ElementsAre(10, -20, 30)); // the sign of Z stays
    EXPECT_THAT(times(0), ElementsAre(1, 2, 4));
    EXPECT_EQ(sounding(0).TEMerr[0], 1.0F);
    EXPECT_THAT(sounding(0).TEMwgt[0], ElementsAre(0, 0, 1));
    EXPECT_EQ(sounding(1).RxStn, -200.0);
    EXPECT_THAT(values(1), ElementsAre(10, 2, 3));
    EXPECT_EQ(model.control.JobName.view(), "Valley 2");
    EXPECT_EQ(model.control.TEMUnitsIndex, NanovoltPerAmpereSquareMetre);
    EXPECT_THAT(messages.errors, IsEmpty());
    EXPECT_THAT(messages.warnings, IsEmpty());
}

TEST_F(AmiraTest, ReadingsAreAveragedChannelByChannel) {
    EXPECT_EQ(read(Head + Labels + "1 Z 10 20 30\n2 Z 5 5 5\n1 Z 30 * 50\n1 Z 20 40\n"), 0);
    ASSERT_EQ(model.SoundingCount, 2);
    EXPECT_THAT(values(0), ElementsAre(20, 30, 40)); // the gap moves no other channel
    EXPECT_THAT(times(0), ElementsAre(1, 2, 4));
    EXPECT_THAT(messages.warnings, Contains(HasSubstr("Rows whose channels and times differ")));
}

TEST_F(AmiraTest, ComponentsOfAFixedLoopBecomeOneMagnitudeOfTheirOwnCoils) {
    EXPECT_EQ(read("/CONFIG: LTX_DHR\nTEMUNIT: uV/A RXAREAX:2000\n/RXAREA: 1000\n" + Labels +
                   "1 X 6 8\n1 Z 4 0 7\n1 C 4 0\n1 A 9 9 9\n1 Q 9 9 9\n"),
              0);
    EXPECT_THAT(model.preset.RxAreaXYZ, ElementsAre(2000, 1000, 1000));
    EXPECT_THAT(values(0), ElementsAre(5, 4, 7)); // X 6 uV/A of 2000 m2, Z 4 uV/A of 1000 m2
    EXPECT_THAT(sounding(0).TEMwgt[0], ElementsAre(1, 0, 1));
    EXPECT_THAT(sounding(0).TEMwgt[2], ElementsAre(0, 0, 1));
    EXPECT_THAT(model.lines.entries[0].ComponentTransients, ElementsAre(1, 0, 2));
    EXPECT_THAT(messages.warnings,
                Contains(HasSubstr(
                    "Rows of a component other than X, Y, Z, I and C: 2, the first on line 9")));
}

TEST_F(AmiraTest, NanoteslaAreDividedByTheCurrentOfTheirRow) {
    const std::string head = "/TEMUNIT: nT/sec\n";
    EXPECT_EQ(read(head + "STATION CURR CH1\n1 2 10\n2 4 10\n"), 0);
    EXPECT_THAT(values(0), ElementsAre(5));
    EXPECT_THAT(values(1), ElementsAre(2.5F));
    EXPECT_EQ(read(head + "STATION CH1\n1 10\n2 10\n"), 0);
    EXPECT_THAT(values(0), ElementsAre(10));
    EXPECT_THAT(messages.errors, ElementsAre(HasSubstr("nT/sec without a current")));
}

TEST_F(AmiraTest, TimesCountFromTheEndOfTheRampOfTheirRow) {
    channels = "DELAY WIDTH\n1 1.2\n0.4 0.4\n0.1\n";
    EXPECT_EQ(read(Head + "/INITDELAY: 0.1\nSTATION RAMP CH1\n1 0.2 10 20 30\n2 0.6 10 20 30\n"),
              0);
    // The geometric centre of 0.3 to 1.5; the third channel ends with the ramp.
    EXPECT_THAT(times(0), ElementsAre(testing::FloatEq(std::sqrt(0.3F * 1.5F)),
                                      testing::FloatEq(std::sqrt(0.1F * 0.5F))));
    EXPECT_THAT(values(0), ElementsAre(10, 20));
    EXPECT_EQ(sounding(0).TWwidth[0], 1.2F);
    EXPECT_THAT(times(1), ElementsAre(0.5F)); // a window that begins in the ramp keeps its centre
    EXPECT_EQ(model.control.TxRamp, 600.0F);
}

TEST_F(AmiraTest, OnlyTheChosenLineIsReadWithItsOwnKeywords) {
    const std::string text = "/TEMUNIT: nV/Am2\n/CONFIG: F\n/LINE: 7 a\n"
                             "LV1X:0 LV1Y:0 LV2X:100 LV2Y:0 LV3X:100 LV3Y:50 LV4X:0 LV4Y:50\n" +
                             Labels +
                             "1 Z 1 1 1\n/LINE: 8E\n/TURNOFF:0.5\n/JOBFOR: B\n/CONFIG: I\n" +
                             "LV1X:500 LV2X:900 LV3X:900 LV4X:500\n2 Z 2 2 2\n"
                             "3 Z 2 2 2\n";
    EXPECT_EQ(read(text), 0);
    ASSERT_EQ(model.lines.LineCount, 2);
    EXPECT_EQ(model.lines.entries[0].LineLabel.view(), "7A FXL");
    EXPECT_EQ(model.lines.entries[1].LineLabel.view(), "8E INL");
    EXPECT_THAT(messages.infos, Contains("Found 2 lines and 3 TEM transients."));
    EXPECT_EQ(model.SoundingCount, 1);
    EXPECT_EQ(model.control.LineName.view(), "7 a");
    EXPECT_EQ(model.control.LineNumber, 7.0F);
    EXPECT_EQ(model.control.SurveyTypeIndex, FixedLoop);
    EXPECT_EQ(model.control.XTxCenter, 50.0);
    EXPECT_EQ(model.control.TxRamp, 0.0F);
    EXPECT_TRUE(model.control.JobFor.isBlank());
    chosen = 1;
    EXPECT_EQ(read(text), 0);
    EXPECT_EQ(model.SoundingCount, 2);
    EXPECT_EQ(model.control.XTxLength, 400.0F);
    EXPECT_EQ(model.control.TxRamp, 500.0F);
    EXPECT_EQ(model.control.JobFor.view(), "B");
}

TEST_F(AmiraTest, ALineColumnMakesLines) {
    EXPECT_EQ(read(Head + "LINE STATION CH1 CH2\nL1200E 1 5 5\n\"L 1300 W\" 2 6 6\nL1200E 3 7 7\n"),
              0);
    EXPECT_EQ(model.lines.entries[1].LineLabel.view(), "L1300W INL");
    EXPECT_EQ(model.SoundingCount, 2);
    EXPECT_EQ(model.control.LineNumber, 1200.0F);
    EXPECT_EQ(model.control.LineName.view(), "L1200E");
}

TEST_F(AmiraTest, LabelsAmongTheRowsCanOrderThemAnew) {
    EXPECT_EQ(read(Head + Labels + "1 Z 10 20 30\nCOMP STATION CH1 CH2 CH3\nZ 2 40 50 60\n"), 0);
    EXPECT_EQ(model.lines.entries[0].Transients, 2);
    EXPECT_THAT(values(1), ElementsAre(40, 50, 60));
    EXPECT_THAT(messages.errors, IsEmpty());
}

TEST_F(AmiraTest, APositionIsTakenFromRowsOfTheStationOnly) {
    EXPECT_EQ(read(Head + "STATION EAST NORTH COMP CH1\n"
                          "1 100 7 Z 5\n1 * * Z 5\n2 * north Z 5\n"),
              0);
    EXPECT_EQ(sounding(0).East, 100.0);
    EXPECT_FALSE(isPresent(sounding(1).East));
    EXPECT_FALSE(isPresent(sounding(1).Elevation));
    EXPECT_THAT(messages.warnings, Contains(HasSubstr("cells that cannot be read: 1, the first on "
                                                      "line 9 of x.tem|2 * north Z 5")));
}

TEST_F(AmiraTest, StationsAreRescaledAndLoopsOfMovingArraysToo) {
    information = "$ Stn.Beg = 100\n$ Stn.Inc = 10\n$ Stn.QdrBeg = 1\n";
    EXPECT_EQ(read("/CONFIG: SLINGRAM\n/TEMUNIT: nV/Am2\nSTATION LOOP CH1\n3 2 5\n"), 0);
    EXPECT_EQ(sounding(0).RxStn, 120.0);
    EXPECT_EQ(sounding(0).TxStn, 110.0);
    EXPECT_EQ(read("/CONFIG: FXL\n/TEMUNIT: nV/Am2\nSTATION LOOP CH1\n3 2 5\n"), 0);
    EXPECT_EQ(sounding(0).TxStn, 2.0);
    // Without a loop number the half way between station and loop would be no place.
    EXPECT_EQ(read("/CONFIG: SLINGRAM\n/TEMUNIT: nV/Am2\nSTATION CH1\n3 5\n"), 0);
    EXPECT_EQ(sounding(0).TxStn, 120.0);
    EXPECT_THAT(messages.warnings, Contains(HasSubstr("Rows without LOOP and XRXOFFSET: 1")));
}

TEST_F(AmiraTest, RowsThatCannotBeReadAreTold) {
    EXPECT_EQ(read(Head + Labels +
                   "* Z 1 2 3\n12+5 Z 1 2 3\n1 Z 1 2 x\n2 Z 12:30 2 3\n"
                   "3 Z 4 1E30 6\n4 Z \"4 5 6\n"),
              0);
    EXPECT_EQ(model.SoundingCount, 3);
    EXPECT_THAT(values(1), ElementsAre(4, 6));
    EXPECT_THAT(values(2), ElementsAre(4)); // what an open quote holds is one cell
    EXPECT_THAT(messages.errors,
                ElementsAre("WARNING: Could not read station number in:|* Z 1 2 3",
                            "WARNING: Could not read number from 12+5|Record # 8",
                            "WARNING: Could not read station number in:|12+5 Z 1 2 3"));
    EXPECT_THAT(
        messages.warnings,
        ElementsAre("WARNING: Rows whose channels and times differ in number: 1, the first "
                    "on line 12 of x.tem|4 Z \"4 5 6|Only channels with a value and a time "
                    "are read.",
                    HasSubstr("Rows with cells that cannot be read: 2, the first on line 9"),
                    HasSubstr("Rows that hold \":\" or \"=\": 1")));
}

TEST_F(AmiraTest, FailuresHaveTheirWords) {
    EXPECT_EQ(AMR_Count(model, directory.path("none.tem")), 1);
    EXPECT_EQ(messages.errors.back(), "ERROR: Could not find file none.tem");
    EXPECT_EQ(read(Head + "1 2 3\n"), 1);
    EXPECT_EQ(messages.errors.back(), "ERROR: Did not locate expected column labels in x.tem");
    EXPECT_EQ(read(Head + "EAST NORTH\n"), 1);
    EXPECT_EQ(messages.errors.back(), "WARNING: Could not find STATION column.|"
                                      "WARNING: Could not find CH1 column.|In: EAST NORTH");
    EXPECT_EQ(read(Head + Labels + "1 A 5 5 5\n"), 1);
    EXPECT_EQ(messages.errors.back(), "AMR_Count.WARNING: found no TEM data|"
                                      "Found 0 lines and 0 TEM transients.");
    EXPECT_EQ(read(Head + "STATION NCH CH1\n1 x 5\n2 0 5\n"), 1);
    EXPECT_EQ(messages.errors.back(), "ERROR: No valid I- or Z-component data found in x.tem");
    model = SurveyModel{};
    capacity = 1;
    EXPECT_EQ(read(Head + Labels + "1 Z 5 5 5\n2 Z 5 5 5\n1 Z 7 7 7\n"), 0);
    EXPECT_EQ(messages.errors.back(), "AMR_Read_Data.ERROR|WARNING: More than 1 soundings in x.tem|"
                                      "Data will be skipped after line 8");
    EXPECT_EQ(sounding(0).RxStn, 1.0);
}

TEST_F(AmiraTest, SoundingsWithoutAWindowAreDropped) {
    EXPECT_EQ(read(Head + Labels + "1 Z 5 5 5\n2 X 5 5 5\n3 Z * * *\n"), 0);
    EXPECT_EQ(model.SoundingCount, 1);
    EXPECT_THAT(messages.warnings, Contains(HasSubstr("2 soundings without a usable window")));
}

TEST_F(AmiraTest, HostileBytesEndInAFailureOrInData) {
    EXPECT_EQ(read(""), 1);
    EXPECT_EQ(read(std::string(1'000'000, 'A')), 1);
    EXPECT_EQ(read(std::string("\0\x1A\xFF\x80", 4)), 1);
    EXPECT_EQ(read(Head + Labels + "1 Z 5" + std::string(500'000, ' ') +
                   "6\n2 Z 5 5 5\n\x1A"
                   "3 Z\n"),
              0);
    EXPECT_EQ(AMR_Count(model, directory.path()), 1);
}

TEST_F(AmiraTest, KeywordsBehindTheLastRowDoNotChangeWhatWasRead) {
    EXPECT_EQ(read(Head + Labels + "1 Z 10 20 30\n/TEMUNIT: uV/A\n/TURNOFF: 0.1\n" +
                   "/LINE: 8\n/CONFIG: FIXEDLOOP\n/JOBFOR: late\n"),
              0);
    EXPECT_THAT(values(0), ElementsAre(10, 20, 30));
    EXPECT_EQ(model.control.LineName.view(), "7");
    EXPECT_EQ(model.control.SurveyTypeIndex, InLoop);
    EXPECT_EQ(model.control.TxRamp, 0.0F);
    EXPECT_EQ(model.control.JobFor.view(), "late");
    EXPECT_THAT(messages.warnings, Contains(HasSubstr("behind the last row")));
}

TEST_F(AmiraTest, ARowWithoutALoopGoesOnWithTheOneBeforeIt) {
    EXPECT_EQ(read("/TEMUNIT: nV/Am2\nLOOP STATION COMP CH1 CH2 CH3\n"
                   "5 1 Z 1 1 1\n* 2 Z 2 2 2\n0 2 Z 3 3 3\n"),
              0);
    ASSERT_EQ(model.SoundingCount, 3); // loop 5 at 1 and 2, loop 0 at 2
    EXPECT_EQ(sounding(1).TxStn, 5.0);
    EXPECT_EQ(sounding(2).TxStn, 0.0);
    EXPECT_THAT(messages.errors, IsEmpty());
}

// The stations of the transmitters wait until the scale of the stations is known.
TEST_F(AmiraTest, WithoutALoopTheReceiverOffsetSaysWhereTheTransmitterIs) {
    const std::string text = "/CONFIG: SLINGRAM\nTEMUNIT:nV/Am2 LSIDE:50 TXFREQ:25\n/SEP: 100\n"
                             "STATION CH1 CH2 CH3\n8 1 1 1\n4 2 2 2\n";
    EXPECT_EQ(read(text), 0);
    EXPECT_THAT(messages.warnings, IsEmpty());
    EXPECT_EQ(model.control.XRxOffset, 100.0F);
    model.control.StnScale = 25.0F;
    settleTxByOffset(model);
    EXPECT_EQ(sounding(0).RxStn, 8.0);
    EXPECT_EQ(sounding(0).TxStn, 4.0);
    EXPECT_EQ(sounding(1).TxStn, 0.0);
    settleTxByOffset(model); // once
    EXPECT_EQ(sounding(0).TxStn, 4.0);
    // A loop number counts before the offset.
    EXPECT_EQ(read("/LOOP: 3\n" + text), 0);
    settleTxByOffset(model);
    EXPECT_EQ(sounding(0).TxStn, 3.0);
}

TEST_F(AmiraTest, WhatTheFileDoesNotGiveIsTold) {
    EXPECT_EQ(read("/TEMUNIT: uV/Am\n" + Labels + "1 Z 1 1 1\n"), 0);
    EXPECT_THAT(messages.warnings,
                ElementsAre(HasSubstr("the unit uV/Am is no known name"),
                            HasSubstr("x.tem gives no size of the transmitter loop|The default is "
                                      "taken: 100 by 100 m"),
                            HasSubstr("no transmitter frequency|The default is taken: 1 Hz"),
                            HasSubstr("no area of the receiver coil|The default is taken: 10000 "),
                            HasSubstr("no survey array|The default is taken: Fixed-Loop"),
                            HasSubstr("no centre of the fixed loop")));
}

struct ToldCase {
    std::string what;
    std::string channels;
    std::string text;
    std::string told;
    int soundings;
};

TEST_F(AmiraTest, WhatIsNotReadOrNotCertainIsToldOnce) {
    const std::string plain = "DELAY\n1\n2\n4\n";
    const std::string section = Head + Labels + "1 Z 5 5 5\n";
    std::string manyLines = section;
    for (int i = 0; i < 33; ++i) {
        manyLines += "/LINE: L" + std::to_string(i) + "\n2 Z 5 5 5\n";
    }
    const ToldCase cases[] = {
        {"a last line without its end", plain, section + "2 Z 5 5 5",
         "The last line of x.tem has no line end|The file may be cut.", 2},
        {"an end mark with data behind it", plain, section + "\x1A" + "2 Z 5 5 5\n",
         "x.tem has an end mark (code 26) after line 7", 1},
        {"decimal commas", plain, section + "2 Z 5,5 6,5 7\n3N Z 5,5 6,5 7\n",
         "x.tem|2 Z 5,5 6,5 7|A comma is read as the end of a column", 3},
        {"decimal commas of a station with a letter", plain, section + "3N Z 5,5 6,5 7\n",
         "commas for decimal points: 1, the first on line 8 of x.tem", 2},
        {"decimal commas in the channel file", "DELAY WIDTH\n0,5 0,1\n2,5 0,2\n4 1\n", section,
         "commas for decimal points: 1, the first on line 3 of x.chn|0,5 0,1", 1},
        {"a cut channel file", "DELAY\n1\n2\n4", section, "The last line of x.chn has no line end",
         1},
        {"lines beyond the 32nd", plain, manyLines, "Lines beyond the 32nd: 2, the first on line",
         1},
        {"lines that agree in 16 characters", plain,
         Head + "/LINE: NORTH-LINE-1234567\n" + Labels +
             "1 Z 5 5 5\n/LINE: NORTH-LINE-1234568\n2 Z 5 5 5\n"
             "/LINE: NORTH-LINE-1234567\n3 Z 5 5 5\n",
         "agree in the 16 characters that are kept: 1, the first on line 10 of x.tem|"
         "NORTH-LINE-1234568",
         3},
        {"a station too far", plain, section + "1.1e9 Z 5 5 5\n",
         "WARNING: Could not read number from 1.1e9|Record # 8", 1},
        {"a coordinate too far", plain, Head + "STATION EAST CH1 CH2 CH3\n1 -2E9 5 5 5\n",
         "WARNING: Could not read number from -2E9|Record # 7", 1},
        {"no centre of a fixed loop", plain,
         "CONFIG:FIXEDLOOP LSIDE:50 TXFREQ:25 TEMUNIT:nV/Am2\n" + Labels + "1 Z 5 5 5\n",
         "x.tem gives no centre of the fixed loop|The default is taken: East 0, North 0", 1},
    };
    for (const ToldCase &c : cases) {
        channels = c.channels;
        messages.errors.clear();
        messages.warnings.clear();
        EXPECT_EQ(read(c.text), 0) << c.what;
        EXPECT_EQ(model.SoundingCount, c.soundings) << c.what;
        std::vector<std::string> all = messages.errors;
        all.insert(all.end(), messages.warnings.begin(), messages.warnings.end());
        EXPECT_THAT(all, Contains(HasSubstr(c.told)).Times(1)) << c.what;
    }
}

// The commas of these separate columns, as their labels say.
TEST_F(AmiraTest, CommasBetweenColumnsAreNoDecimalPoints) {
    channels = "DELAY,WIDTH\n1,5\n2,5\n4,5\n";
    EXPECT_EQ(read(Head + "STATION,CH1\n1,5\n2,7\n"), 0);
    EXPECT_THAT(messages.warnings, testing::Not(Contains(HasSubstr("decimal points"))));
}

TEST_F(AmiraTest, ACellOfAnyLengthIsReadWhole) {
    EXPECT_EQ(read(Head + Labels + "1 Z 0.000000000000000000000000000000000012E36 5 5\n"), 0);
    EXPECT_THAT(values(0), ElementsAre(testing::FloatEq(12.0F), 5, 5));
}

TEST_F(AmiraTest, CoilAreasAreThoseOfTheLastRowOfTheirLine) {
    const std::string text = "CONFIG:INLOOP LSIDE:50 TXFREQ:25 TEMUNIT:uV/A\n/RXAREA: 1000\n" +
                             Labels + "1 Z 1 1 1\n/LINE: 8\n/RXAREA: 4000\n2 Z 1 1 1\n" +
                             "/RXAREA: 77\n";
    EXPECT_EQ(read(text), 0);
    EXPECT_EQ(model.lines.entries[0].scaling.RxAreaXYZ[2], 1000.0F);
    EXPECT_EQ(model.lines.entries[1].scaling.RxAreaXYZ[2], 4000.0F);
    EXPECT_THAT(values(0), ElementsAre(1, 1, 1));
    chosen = 1;
    EXPECT_EQ(read(text), 0);
    EXPECT_THAT(values(0), ElementsAre(0.25F, 0.25F, 0.25F));
}

TEST_F(AmiraTest, AnOffsetHoldsForTheRowsBelowIt) {
    EXPECT_EQ(read("CONFIG:SLINGRAM TEMUNIT:nV/Am2 LSIDE:50 TXFREQ:25\n/SEP: 100\n"
                   "STATION CH1 CH2 CH3\n8 1 1 1\n/SEP: 50\n8 2 2 2\n4 2 2 2\n"),
              0);
    ASSERT_EQ(model.SoundingCount, 3); // station 8 with both offsets
    model.control.StnScale = 25.0F;
    settleTxByOffset(model);
    EXPECT_EQ(sounding(0).TxStn, 4.0);
    EXPECT_EQ(sounding(1).TxStn, 6.0);
    EXPECT_EQ(sounding(2).TxStn, 2.0);
}

TEST_F(AmiraTest, TheCentreOfTheSurveyInformationFileIsUsed) {
    information = "$ Tx.Center = 500, 600\n";
    EXPECT_EQ(read("CONFIG:FIXEDLOOP LSIDE:50 TXFREQ:25 TEMUNIT:nV/Am2\n" + Labels + "1 Z 5 5 5\n"),
              0);
    EXPECT_EQ(model.control.XTxCenter, 500.0);
    EXPECT_EQ(model.control.YTxCenter, 600.0);
    EXPECT_THAT(messages.warnings, IsEmpty());
}

TEST_F(AmiraTest, AFrequencyThatIsANumberServesWithoutTxfreq) {
    const std::string rows = "CONFIG:INLOOP LSIDE:50 TEMUNIT:nV/Am^2\n" + Labels + "1 Z 1 1 1\n";
    EXPECT_EQ(read("/FREQUENCY: 25 Hz\n" + rows), 0);
    EXPECT_EQ(model.control.TxFreq, 25.0F);
    EXPECT_EQ(sounding(0).TxFreq, 25.0F);
    EXPECT_THAT(messages.warnings, ElementsAre(HasSubstr("FREQUENCY is a number|25 Hz is taken.")));
    messages.warnings.clear();
    EXPECT_EQ(read("/FREQUENCY: 25\n/TXFREQ: 2.5\n" + rows), 0);
    EXPECT_EQ(sounding(0).TxFreq, 2.5F);
    EXPECT_THAT(messages.warnings, IsEmpty());
    EXPECT_EQ(read("/FREQUENCY: Z1\n" + rows), 0);
    EXPECT_EQ(model.control.TxFreq, 1.0F);
}

TEST_F(AmiraTest, WindowsBeforeTheEndOfTheRampAndUnusedComponentsAreTold) {
    EXPECT_EQ(read(Head + "/DELAY: -2\n" + Labels + "1 Z 1 2 3\n2 Z 1 2 3\n2 X 1 2 3\n"), 0);
    EXPECT_THAT(times(0), ElementsAre(2));
    EXPECT_THAT(messages.warnings,
                ElementsAre(HasSubstr("Rows of components X and Y: 1, the first on line 10"),
                            HasSubstr("Windows at or before time 0: 6, the first on line 8")));
    EXPECT_EQ(read(Head + "/DELAY: -9\n" + Labels + "1 Z 1 2 3\n"), 1);
    EXPECT_THAT(messages.warnings, Contains(HasSubstr("Windows at or before time 0: 3")));
}

// Beyond them numbers in a project are asterisks, and a reader of the project loses the row.
TEST_F(AmiraTest, StationsAndTimesThatNoProjectCanHoldAreTold) {
    EXPECT_EQ(read(Head + "/DELAY: 1E30\n" + Labels + "1 Z 1 2 3\n"), 1);
    EXPECT_THAT(messages.warnings, Contains(HasSubstr("Impossible stations or times: 3")));
    messages.warnings.clear();
    information = "$ Stn.GdpBeg = 0\n$ Stn.GdpInc = 1\n$ Stn.Beg = 0\n$ Stn.Inc = 10\n";
    EXPECT_EQ(read(Head + Labels + "1 Z 1 2 3\n200000000 Z 1 2 3\n"), 0);
    EXPECT_EQ(model.SoundingCount, 1);
    EXPECT_THAT(messages.warnings, ElementsAre(HasSubstr("Impossible stations or times: 1")));
    information.clear();
    messages.warnings.clear();
    channels = "DELAY,WIDTH\n1,5\n2,1E20\n4,5\n";
    EXPECT_EQ(read(Head + Labels + "1 Z 1 2 3\n"), 0);
    EXPECT_EQ(sounding(0).TWwidth[1], 0.0F);
    EXPECT_THAT(messages.warnings, ElementsAre(HasSubstr("Windows of impossible width: 1")));
}

TEST_F(AmiraTest, ANegativeTurnOffKeepsItsSign) {
    EXPECT_EQ(read(Head + "/TURNOFF: -0.5\n" + Labels + "1 Z 1 1 1\n"), 0);
    EXPECT_THAT(times(0), ElementsAre(1.5F, 2.5F, 4.5F));
    EXPECT_EQ(model.control.TxRamp, 50.0F); // only a ramp of 0 or more is taken
}

} // namespace
} // namespace keldrin
