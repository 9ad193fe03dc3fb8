#include "import/avg_file.h"
#include "import/survey_information.h"
#include "import/window_tables.h"
#include "projectfile/project_file.h"
#include "support/files.h"
#include "support/message_recorder.h"
#include "support/temporary_directory.h"
#include "text/enumeration.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace keldrin {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// A survey whose coil has 1000 m^2, so that a file value in uV/A is the value in nV/(A m2).
const std::string AvgHead = "$ Survey.Array = INL\n$ Line.Name = 7\n$ Rx.Area = 1000\n"
                            "$ Tx.Freq = 16\n$ Tx.Amp = 10\n$ Tx.Length = 100\n";
const std::string AvgLabelLine = "Skp Tx Station Cmp Time Magnitude %Mag\n";

class AvgTest : public testing::Test {
  protected:
    // Both passes over a text, with the first line chosen; the read pass's status.
    int read(const std::string &text) {
        const std::string path = directory.path("x.avg");
        putFile(path, text);
        MD_Init(model.metadata, true);
        STD_Init_Namelist(model);
        Mde_File_Input(model, directory.path("x.mde"));
        countStatus = AVG_Count(model, path);
        if (countStatus != 0) {
            return countStatus;
        }
        const LineEntry &entry = model.lines.entries[chosen];
        selectLine(model, static_cast<int>(chosen) + 1);
        EXPECT_EQ(STD_Allocate_hTrn(model, capacity > 0 ? capacity : soundingsNeeded(entry)), 0);
        return AVG_Read(model, path, entry.LineLabel.view());
    }
    [[nodiscard]] const SoundingRecord &sounding(std::size_t i) const { return model.hTrn[i]; }

    TemporaryDirectory directory;
    MessageRecorder messages;
    SurveyModel model;
    std::size_t chosen = 0;
    int capacity = 0;
    int countStatus = -1;
};

TEST_F(AvgTest, ReadsASectionIntoSoundings) {
    EXPECT_EQ(
        read(AvgHead + AvgLabelLine + "2 1 1 Hz 0.1 50 2\n2 1 1 Hz 0.2 -4 2\n2 2 2 Hz 0.1 40 2"),
        0);
    ASSERT_EQ(model.SoundingCount, 2);
    EXPECT_EQ(sounding(0).NumTW, 2);
    EXPECT_FLOAT_EQ(sounding(0).TEMobs[0], 50.0F);
    EXPECT_FLOAT_EQ(sounding(0).TEMobs[1], -4.0F); // the sign of Z stays
    EXPECT_NEAR(sounding(0).TEMerr[0], 2.0F, 1e-3F);
    EXPECT_THAT(sounding(0).TEMwgt[0], ElementsAre(0, 0, 1));
    EXPECT_EQ(sounding(1).RxStn, 2.0);
    EXPECT_EQ(model.control.TEMUnitsIndex, NanovoltPerAmpereSquareMetre);
    EXPECT_EQ(model.control.TxFreq, 16.0F);
    EXPECT_EQ(model.control.SurveyTypeIndex, InLoop);
    EXPECT_THAT(messages.errors, IsEmpty());
}

TEST_F(AvgTest, LinesAreClassifiedByTheirFirstCharacters) {
    EXPECT_EQ(read("x$ Tx.Freq = 8\n" // a "$" in column 2 is a keyword record
                   "  \\ comment\n/ comment\n\"comment\n! comment\n12\n" +
                   AvgHead + AvgLabelLine +
                   "2 1 1 Hz 0.1 50 2\n"
                   "\\ $ Line.Name = other\n" // and further right it is not
                   "2 1 1 Hz 0.2 40 2\r\n"),
              0);
    EXPECT_EQ(model.SoundingCount, 1);
    EXPECT_EQ(sounding(0).NumTW, 2);
    EXPECT_EQ(model.lines.LineCount, 1);
}

TEST_F(AvgTest, ReadingsOfOneStationMergeByInverseVarianceHoweverFarApart) {
    EXPECT_EQ(read(AvgHead + "Tx Station Cmp Time Magnitude E.ERR\n"
                             "1 1 Hz 0.1 10 1\n"
                             "2 2 Hz 0.1 99 1\n"
                             "1 1 Hz 0.1 20 2\n"),
              0);
    ASSERT_EQ(model.SoundingCount, 2);
    const float w1 = 1.0F / 1.0001F;
    const float w2 = 1.0F / 4.0001F;
    EXPECT_NEAR(sounding(0).TEMobs[0], (10 * w1 + 20 * w2) / (w1 + w2), 1e-4F);
    const float variance = (1 * w1 + 4 * w2) / (w1 + w2);
    EXPECT_NEAR(sounding(0).TEMerr[0], 100 * std::sqrt(variance) / sounding(0).TEMobs[0], 1e-2F);
}

TEST_F(AvgTest, SkippedReadingsFillAWindowButYieldToAGoodOne) {
    EXPECT_EQ(read(AvgHead + AvgLabelLine +
                   "0 1 1 Hz 0.1 50 2\n0 1 1 Hz 0.2 90 2\n"
                   "2 1 1 Hz 0.2 10 2\n"),
              0);
    EXPECT_TRUE(isSkipped(sounding(0).TEMerr[0]));
    EXPECT_NEAR(trueError(sounding(0).TEMerr[0]), 2.0F, 1e-3F);
    EXPECT_FALSE(isSkipped(sounding(0).TEMerr[1]));
    EXPECT_FLOAT_EQ(sounding(0).TEMobs[1], 10.0F);
}

TEST_F(AvgTest, ErrorsFallBackToPercentAndAreHeldInRange) {
    EXPECT_EQ(read(AvgHead + "Tx Station Cmp Time Magnitude E.ERR %Mag\n"
                             "1 1 Hz 0.1 1000 -1 5\n" // a negative error counts as absent
                             "1 1 Hz 0.2 1000 0 5\n"  // 0 is an error of 0, held at 1 percent
                             "1 1 Hz 0.3 0 -1 5\n"    // no division by a zero value
                             "1 1 Hz 0.4 1 100 5\n"), // held at 500 percent
              0);
    EXPECT_NEAR(sounding(0).TEMerr[0], 5.0F, 1e-3F);
    EXPECT_EQ(sounding(0).TEMerr[1], 1.0F);
    EXPECT_EQ(sounding(0).TEMerr[2], 1.0F);
    EXPECT_EQ(sounding(0).TEMerr[3], 500.0F);
}

TEST_F(AvgTest, ComponentsOfAFixedLoopBecomeOneMagnitude) {
    const std::string head = "$ Survey.Array = FXL\n$ Line.Name = 8040N\n$ Rx.Area = 1000\n"
                             "$ Stn.Beg = 100\n$ Stn.Inc = 10\n$ Stn.QdrBeg = 1\n";
    EXPECT_EQ(read(head + "Tx Station Cmp Time Magnitude\n"
                          "3E8 5 Hx 0.1 3\n3E8 5 Hx 0.2 5\n"
                          "3E8 5 Hz 0.1 4\n3E8 5 Ex 0.1 777\n"),
              0);
    ASSERT_EQ(model.SoundingCount, 1);
    EXPECT_FLOAT_EQ(sounding(0).TEMobs[0], 5.0F);
    EXPECT_THAT(sounding(0).TEMwgt[0], ElementsAre(1, 0, 1));
    EXPECT_FLOAT_EQ(sounding(0).TEMobs[1], 5.0F);
    EXPECT_THAT(sounding(0).TEMwgt[1], ElementsAre(1, 0, 0));
    EXPECT_EQ(sounding(0).RxStn, 140.0); // (5 - 1) * 10 / 1 + 100
    EXPECT_EQ(sounding(0).TxStn, 3.0E8); // a loop's number is no position
    EXPECT_THAT(model.lines.entries[0].ComponentTransients, ElementsAre(2, 0, 1));
}

TEST_F(AvgTest, OnlyTheChosenLineIsReadWithItsOwnHeader) {
    chosen = 1;
    EXPECT_EQ(read(AvgHead + AvgLabelLine + "2 1 1 Hz 0.1 50 2\n" +
                   "$ Line.Name = 8 b\n$ Job.Name = B\n" + "2 9 9 Hz 0.1 60 2\n" +
                   "$ Line.Name = 7\n2 3 3 Hz 0.1 70 2\n"),
              0);
    ASSERT_EQ(model.lines.LineCount, 2);
    EXPECT_EQ(model.lines.entries[0].LineLabel.view(), "7 INL");
    EXPECT_EQ(model.lines.entries[1].LineLabel.view(), "8B INL");
    EXPECT_EQ(model.lines.entries[0].Transients, 2);
    ASSERT_EQ(model.SoundingCount, 1);
    EXPECT_EQ(sounding(0).RxStn, 9.0);
    EXPECT_EQ(model.control.LineName.view(), "8 b");
}

TEST_F(AvgTest, OneNameWithTwoArraysIsTwoLines) {
    EXPECT_EQ(read(AvgHead + AvgLabelLine +
                   "2 1 1 Hz 0.1 50 2\n$ Survey.Array = COL\n2 1 2 Hz 0.1 60 2\n"),
              0);
    ASSERT_EQ(model.lines.LineCount, 2);
    EXPECT_EQ(model.lines.entries[1].LineLabel.view(), "7 COL");
    EXPECT_EQ(model.SoundingCount, 1);
}

TEST_F(AvgTest, CoilAreaAndStationScalingAreThoseOfTheChosenLine) {
    const std::string text = AvgHead + "$ Stn.Beg = 100\n" + AvgLabelLine + "2 1 1 Hz 0.1 50 2\n" +
                             "$ Line.Name = 8\n$ Rx.Area = 50\n$ Stn.Beg = 500\n" +
                             "2 1 1 Hz 0.1 50 2\n";
    EXPECT_EQ(read(text), 0);
    EXPECT_FLOAT_EQ(sounding(0).TEMobs[0], 50.0F);
    EXPECT_EQ(sounding(0).RxStn, 101.0);
    chosen = 1;
    EXPECT_EQ(read(text), 0);
    EXPECT_FLOAT_EQ(sounding(0).TEMobs[0], 1000.0F);
    EXPECT_EQ(sounding(0).RxStn, 501.0);
}

TEST_F(AvgTest, WhatOtherLinesSayDoesNotReachTheChosenOne) {
    EXPECT_EQ(read(AvgHead + AvgLabelLine + "2 1 1 Hz 0.1 50 2\n" +
                   "$ Line.Name = 8\n$ Tx.LengthX = 300\n$ Job.For = B\n2 9 9 Hz 0.1 60 2\n"),
              0);
    EXPECT_EQ(model.control.XTxLength, 100.0F);
    EXPECT_EQ(model.control.JobFor.view(), "B"); // the job is that of the file
    // A section before any name is a line of its own, on both passes.
    EXPECT_EQ(read("$ Survey.Array = INL\n$ Tx.Amp = 1\n" + AvgLabelLine + "2 1 1 Hz 0.1 50 2\n" +
                   "$ Line.Name = 8\n2 9 9 Hz 0.1 60 2\n"),
              0);
    EXPECT_EQ(model.lines.entries[0].LineLabel.view(), "0 INL");
    ASSERT_EQ(model.SoundingCount, 1);
    EXPECT_EQ(sounding(0).RxStn, 1.0);
}

TEST_F(AvgTest, AnEndMarkWithDataBehindItIsTold) {
    EXPECT_EQ(read(AvgHead + AvgLabelLine + "2 1 1 Hz 0.1 50 2\n\x1A" + "2 2 2 Hz 0.1 50 2\n"), 0);
    EXPECT_EQ(model.SoundingCount, 1);
    EXPECT_THAT(messages.errors, testing::ElementsAre(HasSubstr("x.avg has an end mark")));
}

TEST_F(AvgTest, TheThirtyThirdLineFallsIntoTheLastRowUnderItsLabel) {
    std::string text = AvgHead + AvgLabelLine;
    for (int i = 1; i <= 34; ++i) {
        text +=
            "$ Line.Name = L" + std::to_string(i) + "\n2 1 " + std::to_string(i) + " Hz 0.1 50 2\n";
    }
    chosen = 31;
    EXPECT_EQ(read(text), 0);
    EXPECT_EQ(model.lines.LineCount, 32);
    EXPECT_EQ(model.lines.entries[31].LineLabel.view(), "L34 INL");
    EXPECT_EQ(model.lines.entries[31].Transients, 3);
    EXPECT_EQ(model.SoundingCount, 1);
    EXPECT_THAT(messages.warnings,
                ElementsAre(HasSubstr("Lines beyond the 32nd: 2, the first on line 73 of x.avg|"
                                      "L33")));
}

TEST_F(AvgTest, RecordsWithoutTheirKeysAreDroppedInWords) {
    struct Case {
        const char *row, *words;
    };
    const Case cases[] = {
        {"2 * 1 Hz 0.1 50 2", "AVG_Read_Data.ERROR: Tx.QdrStn undefined for record 8"},
        {"2 1 INF Hz 0.1 50 2", "AVG_Read_Data.ERROR: Rx.QdrStn undefined for record 8"},
        {"2 1 1 Hz * 50 2", "AVG_Read_Data.ERROR: TWIN.Center < -1.0E32 on record 8"},
        {"2 1 1 Hz 0.1 * 2", "AVG_Read_Data.ERROR: dBdt.Mag undefined for record 8"},
        {"2 1 1 Hz 0.1 nan 2", "AVG_Read_Data.ERROR: dBdt.Mag undefined for record 8"},
        {"2 1 1 * 0.1 50 2", "AVG_Read_Data.ERROR: Rx.Cmp undefined for record 8"},
    };
    for (const Case &c : cases) {
        messages.warnings.clear();
        EXPECT_EQ(read(AvgHead + AvgLabelLine + c.row + "\n2 5 5 Hz 0.1 50 2\n"), 0) << c.row;
        ASSERT_FALSE(messages.warnings.empty()) << c.row;
        EXPECT_EQ(messages.warnings.back(),
                  std::string(c.words) + "|" + c.row + "|Dropping this data record.");
        EXPECT_EQ(model.SoundingCount, 1) << c.row;
    }
    read(AvgHead + AvgLabelLine + "2 1 1 Hz * 50 2\n2 5 5 Hz 0.1 50 2\n"); // counted, then read
    EXPECT_THAT(messages.warnings,
                testing::Contains("AVG_File_Input.ERROR: TWIN.Center < -1.0E32 on record 8|"
                                  "2 1 1 Hz * 50 2|Dropping this data record."));
    read("$ Rx.Area = 1000\n$ Tx.Freq = 1\nTx Station Cmp Freq Amp Time Magnitude\n"
         "1 1 Hz 0 1 0.1 5\n1 1 Hz 4 0 0.1 5\n");
    EXPECT_THAT(messages.warnings[messages.warnings.size() - 2],
                HasSubstr("Tx.Freq < 1.0E-6 on record 4"));
    EXPECT_THAT(messages.warnings.back(), HasSubstr("Tx.Amp < 1.0E-6 on record 5"));
}

TEST_F(AvgTest, ANullMagnitudeIsAGoodZero) {
    EXPECT_EQ(read(AvgHead + AvgLabelLine + "2 1 1 Hz 0.1 / 2\n"), 0);
    EXPECT_EQ(sounding(0).TEMobs[0], 0.0F);
}

TEST_F(AvgTest, ASectionWithoutItsColumnsIsSkippedAndTold) {
    EXPECT_EQ(read(AvgHead + "Tx Station Cmp\n1 1 1\n" + AvgLabelLine + "2 1 1 Hz 0.1 50 2\n"), 0);
    EXPECT_EQ(model.SoundingCount, 1);
    EXPECT_EQ(messages.errors.front(),
              "AVG_Read_Labels.WARNING: Could not find required column TWIN.CENTER|"
              "AVG_Read_Labels.WARNING: Could not find required column DBDT.MAG|"
              "In: Tx Station Cmp");
    // A bad last section leaves the pass failed, though earlier ones were read.
    EXPECT_EQ(read(AvgHead + AvgLabelLine + "2 1 1 Hz 0.1 50 2\nTx Station\n1 1\n"), 1);
    EXPECT_EQ(model.SoundingCount, 1);
    EXPECT_THAT(messages.errors.back(), HasSubstr("Nothing is imported from x.avg"));
}

TEST_F(AvgTest, LabelsWithoutDataArePassedOverInWords) {
    EXPECT_EQ(read(AvgHead + AvgLabelLine + "2 1 1 Hz 0.1 50 2\nOperator changed\n" + AvgLabelLine +
                   "2 2 2 Hz 0.1 50 2\nEnd of file\n"),
              0);
    EXPECT_EQ(model.SoundingCount, 2);
    EXPECT_THAT(messages.errors, IsEmpty());
    EXPECT_THAT(messages.warnings,
                ElementsAre("WARNING: Lines of column labels without data below them: 2, the first "
                            "on line 9 of x.avg|Operator changed|They are passed over."));
}

TEST_F(AvgTest, AFileThatNamesNoComponentCountsAndReadsNothing) {
    EXPECT_EQ(read(AvgHead + "Tx Station Time Magnitude\n1 1 0.1 5\n"), 1);
    EXPECT_EQ(countStatus, 0);
    EXPECT_EQ(messages.infos.back(), "0 data transients have been read from avg file");
}

TEST_F(AvgTest, AFullTableStopsTheReadAndKeepsItsLastRecord) {
    capacity = 1;
    EXPECT_EQ(read(AvgHead + AvgLabelLine + "2 1 1 Hz 0.1 50 2\n2 2 2 Hz 0.1 60 2\n"), 0);
    EXPECT_EQ(model.SoundingCount, 1);
    EXPECT_EQ(sounding(0).RxStn, 1.0);
    EXPECT_EQ(messages.errors.back(), "AVG_Read_Data.ERROR|More than 1 transients at avg file "
                                      "record 9|2 2 2 Hz 0.1 60 2");
}

TEST_F(AvgTest, WindowsPastThe128thAreDroppedWithOneWarning) {
    std::string text = AvgHead + AvgLabelLine;
    for (int i = 1; i <= 131; ++i) {
        text += "2 1 1 Hz " + std::to_string(i) + " 5 2\n";
    }
    EXPECT_EQ(read(text), 0);
    EXPECT_EQ(sounding(0).NumTW, 128);
    EXPECT_EQ(sounding(0).TWcenter[127], 128.0F);
    ASSERT_EQ(messages.warnings.size(), 1U);
    EXPECT_THAT(messages.warnings[0], HasSubstr("More than 128 time windows at avg file record "));
}

TEST_F(AvgTest, SoundingsOfTwoFrequenciesStayApart) {
    EXPECT_EQ(
        read(AvgHead + "Tx Station Cmp Freq Time Magnitude\n1 1 Hz 4 0.1 5\n1 1 Hz 8 0.05 5\n"), 0);
    EXPECT_EQ(model.SoundingCount, 2);
    EXPECT_EQ(model.lines.entries[0].Soundings, 2);
    EXPECT_EQ(sounding(0).TxFreq, 4.0F);
    EXPECT_EQ(sounding(1).TxFreq, 8.0F);
}

TEST_F(AvgTest, ATimeThatFallsBackOpensATransient) {
    EXPECT_EQ(
        read(AvgHead + AvgLabelLine + "2 1 1 Hz 0.1 5 2\n2 1 1 Hz 0.2 4 2\n2 1 1 Hz 0.1 5 2\n"), 0);
    EXPECT_EQ(model.lines.entries[0].Transients, 2);
    EXPECT_EQ(model.SoundingCount, 1);
}

TEST_F(AvgTest, EdgesGiveTheWidthAndNoWeightAMark) {
    EXPECT_EQ(read(AvgHead + "Tx Station Cmp Time TWin.Beg TWin.End Magnitude E.WGT\n"
                             "1 1 Hz 0.1 0.08 0.12 50 1\n1 1 Hz 0.2 0.18 * 40 1E-5\n"),
              0);
    EXPECT_FLOAT_EQ(sounding(0).TWwidth[0], 0.12F - 0.08F);
    EXPECT_EQ(sounding(0).TWwidth[1], 0.0F); // one edge is none
    EXPECT_FALSE(isSkipped(sounding(0).TEMerr[0]));
    EXPECT_TRUE(isSkipped(sounding(0).TEMerr[1]));
}

// What a section states holds for its rows: station, ramp, and the coil of each axis.
TEST_F(AvgTest, KeywordsStandForColumnsThatAreNotThere) {
    EXPECT_EQ(read("$ Survey.Array = FXL\n$ Tx.Ramp = 30\n$ Rx.AreaX = 500\n$ Rx.AreaZ = 1000\n"
                   "$ Tx.QdrStn = 1\n$ Rx.QdrStn = 5\nTime Cmp Magnitude\n0.1 Hx 30\n"
                   "0.2 Hz 30\n$ Rx.QdrStn = 6\n$ Tx.Ramp = 40\n0.1 Hz 20\n"),
              0);
    ASSERT_EQ(model.SoundingCount, 2);
    EXPECT_EQ(sounding(0).RxStn, 5.0);
    EXPECT_EQ(sounding(1).RxStn, 6.0);
    EXPECT_FLOAT_EQ(sounding(0).TEMobs[0], 60.0F);
    EXPECT_FLOAT_EQ(sounding(0).TEMobs[1], 30.0F);
    EXPECT_EQ(model.control.TxRamp, 40.0F) << "of the last sounding";
    // The station of the last section is not that of rows before any station.
    EXPECT_EQ(read("$ Survey.Array = INL\n$ Rx.Area = 1000\n$ Tx.QdrStn = 1\n"
                   "Time Cmp Magnitude\n0.1 Hz 30\n$ Rx.QdrStn = 6\n0.1 Hz 20\n"),
              0);
    ASSERT_EQ(model.SoundingCount, 2);
    EXPECT_EQ(sounding(0).RxStn, 0.0);
    EXPECT_EQ(sounding(1).RxStn, 6.0);
}

// Each file in a few lines, and what must be reported of it.
struct ToldAvgCase {
    const char *what;
    std::string text;
    std::string told; ///< part of one message
    int soundings;
};

TEST_F(AvgTest, WhatIsNotReadOrNotCertainIsToldOnce) {
    const std::string row = "2 1 1 Hz 0.1 50 2\n";
    const std::string section = AvgHead + AvgLabelLine + row;
    const std::string twoLines = section + "$ Line.Name = 8\n2 9 9 Hz 0.1 60 2\n";
    const ToldAvgCase cases[] = {
        {"an electric component", section + "2 1 1 Ex 0.2 50 2\n2 2 2 Ey 0.1 5 2\n",
         "Rows of a component that is not read: 2, the first on line 9 of x.avg|2 1 1 Ex 0.2", 1},
        {"a horizontal component of an in-loop line", section + "2 1 1 Hx 0.2 50 2\n",
         "Rows of a component that is not read: 1", 1},
        {"a window at time 0", section + "2 1 1 Hz 0 50 2\n2 1 1 Hz -0.1 50 2\n",
         "Rows with a window centre at or before time 0: 2, the first on line 9", 1},
        {"times that no project can hold",
         section + "2 1 1 Hz 1E10 50 2\n2 1 1 Hz 9.9E-10 50 2\n2 1 1 Hz 9.9E9 50 2\n",
         "Rows of an impossible station or time: 2, the first on line 9", 1},
        {"a station that none can hold once it is rescaled",
         "$ Stn.GdpBeg = 0\n$ Stn.GdpInc = 1\n$ Stn.Beg = 0\n$ Stn.Inc = 10\n" + section +
             "2 1 2E8 Hz 0.1 50 2\n",
         "Rows of an impossible station or time: 1, the first on line 13", 1},
        {"edges that are no window's",
         AvgHead + "Skp Tx Station Cmp Time Magnitude %Mag Twin.Beg Twin.End\n" +
             "2 1 1 Hz 0.1 50 2 0.09 1E20\n",
         "Rows with impossible edges of the window: 1, the first on line 8", 1},
        {"a last line without its end", section + "2 2 2 Hz 0.1 5",
         "The last line of x.avg has no line end|The file may be cut.", 2},
        {"decimal commas", section + "2 1 2 Hz 0,1 50,5 2\n2 1 2 Hz 0,2 50,5 2\n",
         "commas for decimal points: 1, the first on line 9", 1},
        {"no loop size",
         "$ Rx.Area = 1000\n$ Tx.Freq = 1\n$ Survey.Array = INL\n" + AvgLabelLine + row,
         "x.avg gives no size of the transmitter loop|The default is taken: 100 by 100 m", 1},
        {"no frequency",
         "$ Rx.Area = 1000\n$ Tx.Length = 1\n$ Survey.Array = INL\n" + AvgLabelLine + row,
         "x.avg gives no transmitter frequency|The default is taken: 1 Hz", 1},
        {"no coil area",
         "$ Tx.Freq = 1\n$ Tx.Length = 1\n$ Survey.Array = INL\n" + AvgLabelLine + row,
         "x.avg gives no area of the receiver coil|The default is taken: 10000 m^2", 1},
        {"no array", "$ Tx.Freq = 1\n$ Tx.Length = 1\n$ Rx.Area = 1000\n" + AvgLabelLine + row,
         "x.avg gives no survey array|The default is taken: In-Loop", 1},
        {"no centre of a fixed loop", AvgHead + "$ Survey.Array = FXL\n" + AvgLabelLine + row,
         "x.avg gives no centre of the fixed loop|The default is taken: East 0, North 0", 1},
        {"a setting behind the last row of one of two lines",
         section + "$ Tx.Length = 300\n$ Line.Name = 8\n2 9 9 Hz 0.1 60 2\n",
         "change settings of the line after its first row: 1, the first on line 9 of x.avg|$ "
         "Tx.Len",
         1},
        {"a coil area too small", "$ Rx.Area = 1e-7\n" + AvgHead + AvgLabelLine + row,
         "Rx.Area[1] = 1e-07 < 1e-06 m^2|Rx.Area[1] will be set = 1e-06 m^2", 1},
        {"a time unit", section + "$ Unit.Time = usec\n", "Unit.Time in record # 9 is not used", 1},
        {"a unit of values", "$ Unit.dBdt = uV/Am2\n" + section,
         "Unit.dBdt in record # 1 is not used: the values of AVG and Z files are read in uV/A", 1},
        {"a length unit", "$ Unit.Length = km\n" + section,
         "Unit.Length in record # 1 is not a unit of lengths here: metres are taken", 1},
        {"a text with a comma", "$ Job.Name = Valley, north\n" + section,
         "Job.Name in record # 1 is cut at a comma", 1},
        {"a text too long", "$ Line.Name = A line of 17 char\n" + section, "", 1},
        {"an unknown array", "$ Survey.Array = ROUND\n" + section,
         "Survey.Array = ROUND matches no known name", 1},
        {"lines that agree in 16 characters",
         AvgHead + AvgLabelLine + "$ Line.Name = NORTH-LINE-1234567\n" + row +
             "$ Line.Name = NORTH-LINE-1234568\n2 1 2 Hz 0.1 5 2\n"
             "$ Line.Name = NORTH-LINE-1234567\n2 1 3 Hz 0.1 5 2\n",
         "agree in the 16 characters that are kept: 1, the first on line 11 of x.avg|"
         "NORTH-LINE-1234568",
         3},
        {"a station with a plus sign", section + "2 1 0+25 Hz 0.1 5 2\n",
         "ERROR reading real*8 RX.QDRSTN value from 0+25", 1},
        {"a station too far", section + "2 1 1.1e9 Hz 0.1 5 2\n",
         "ERROR reading real*8 RX.QDRSTN value from 1.1e9", 1},
    };
    for (const ToldAvgCase &c : cases) {
        enumerationMemo().entries.clear();
        messages.errors.clear();
        messages.warnings.clear();
        EXPECT_EQ(read(c.text), 0) << c.what;
        EXPECT_EQ(model.SoundingCount, c.soundings) << c.what;
        std::vector<std::string> all = messages.errors;
        all.insert(all.end(), messages.warnings.begin(), messages.warnings.end());
        if (c.told.empty()) {
            continue;
        }
        EXPECT_EQ(std::count_if(all.begin(), all.end(),
                                [&](const std::string &message) {
                                    return message.find(c.told) != std::string::npos;
                                }),
                  1)
            << c.what << ": " << testing::PrintToString(all);
    }
}

TEST_F(AvgTest, AFileThatSaysEverythingGivesNoWarning) {
    EXPECT_EQ(read(AvgHead + AvgLabelLine + "2 1 1 Hz 0.1 50 2\n" +
                   "$ Line.Name = 8\n$ Tx.Length = 200\n2 9 9 Hz 0.1 60 2\n"),
              0);
    EXPECT_THAT(messages.errors, IsEmpty());
    EXPECT_THAT(messages.warnings, IsEmpty());
}

TEST_F(AvgTest, AnImportWithoutSoundingsSaysWhy) {
    EXPECT_EQ(
        read(AvgHead + AvgLabelLine + "2 1 1 Ex 0.1 50 2\n2 1 1 Hz 0 50 2\n2 1 1 Hz 0.1 * 2\n"), 1);
    EXPECT_THAT(messages.errors, ElementsAre("ERROR: No sounding was read from line 7 INL of x.avg|"
                                             "Rows of a component that is not read: 1|"
                                             "Rows with a window centre at or before time 0: 1|"
                                             "Rows that lack a value which is needed: 1"));
}

TEST_F(AvgTest, PlacesWithSignsNeverMerge) {
    EXPECT_EQ(read(AvgHead + AvgLabelLine +
                   "2 1 0+00 Hz 0.1 50 2\n2 1 0+25 Hz 0.1 60 2\n"
                   "2 1 200-50 Hz 0.1 70 2\n2 1 7 Hz 0.1 12+5 2\n"
                   "2 1 8 Hz 0.1 1.2E+1 2\n"),
              0);
    ASSERT_EQ(model.SoundingCount, 1);
    EXPECT_EQ(sounding(0).RxStn, 8.0);
    EXPECT_FLOAT_EQ(sounding(0).TEMobs[0], 12.0F);
}

TEST_F(AvgTest, AnAbsentErrorGivesThePercentError) {
    EXPECT_EQ(read(AvgHead + "Tx Station Cmp Time Magnitude E.ERR %Mag\n"
                             "1 1 Hz 0.1 1000 * 5\n1 1 Hz 0.2 1000 INF 5\n1 1 Hz 0.3 1000 nan 5\n"
                             "1 1 Hz 0.4 1000,,5\n1 1 Hz 0.5 1000 1e39 5\n"),
              0);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_NEAR(sounding(0).TEMerr[i], 5.0F, 1e-3F) << i;
    }
}

TEST_F(AvgTest, ThePercentErrorHasAFloorOfATenth) {
    EXPECT_EQ(read(AvgHead + "Tx Station Cmp Time Magnitude %Mag\n"
                             "1 1 Hz 0.1 1000 0.05\n1 1 Hz 0.1 2000 0.1\n"),
              0);
    const float w1 = 1.0F / (0.0001F + 1.0F); // 0.1 percent of 1000
    const float w2 = 1.0F / (0.0001F + 4.0F);
    EXPECT_NEAR(sounding(0).TEMobs[0], (1000 * w1 + 2000 * w2) / (w1 + w2), 0.1F);
}

TEST_F(AvgTest, WindowsMatchWithin100Spacings) {
    SoundingRecord record;
    int window = -1;
    const float step = spacing(1.0F);
    EXPECT_EQ(TW_Find_Or_Add(record, 1.0F, window), FindOrAdd::Added);
    EXPECT_EQ(TW_Find_Or_Add(record, 1.0F + 99.0F * step, window), FindOrAdd::Found);
    EXPECT_EQ(window, 0);
    EXPECT_EQ(TW_Find_Or_Add(record, 1.0F + 100.0F * step, window), FindOrAdd::Added);
    EXPECT_EQ(record.NumTW, 2);
}

TEST_F(AvgTest, RecordsBehindTheLastRowOfAFileOfOneLineCount) {
    EXPECT_EQ(read("$ Survey.Array = FXL\n$ Rx.North = 5\n$ Tx.Length = 100\n" + AvgLabelLine +
                   "2 1 1 Hz 0.1 50 2\n$ Rx.East = 77\n2 1 2 Hz 0.1 50 2\n"
                   "$ Line.Name = late\n$ Tx.Center = 500, 600\n$ Rx.Area = 500\n"
                   "$ Stn.Beg = 100\n$ Unit.Length = ft\n$ Rx.North = 9\n"),
              0);
    ASSERT_EQ(model.SoundingCount, 2);
    EXPECT_EQ(model.control.LineName.view(), "late");
    EXPECT_EQ(model.control.XTxCenter, 500.0);
    EXPECT_EQ(model.control.YTxCenter, 600.0);
    EXPECT_FLOAT_EQ(sounding(0).TEMobs[0], 100.0F);
    EXPECT_EQ(sounding(0).RxStn, 101.0);
    EXPECT_FLOAT_EQ(model.control.XTxLength, 100.0F); // feet, as the file says in the end
    // Positions belong to rows and do not come back from the end of the file.
    EXPECT_FALSE(isPresent(sounding(0).East));
    EXPECT_EQ(sounding(0).North, 5.0);
    EXPECT_EQ(sounding(1).East, 77.0);
}

TEST_F(AvgTest, OfSeveralLinesUnitAndJobAreThoseOfTheFile) {
    const std::string text = AvgHead + AvgLabelLine + "2 1 1 Hz 0.1 50 2\n$ Line.Name = 8\n" +
                             "2 9 9 Hz 0.1 60 2\n$ Unit.Length = ft\n$ Job.Name = Valley\n" +
                             "$ Tx.Ramp = 30\n";
    for (chosen = 0; chosen < 2; ++chosen) {
        messages.warnings.clear();
        EXPECT_EQ(read(text), 0);
        EXPECT_FLOAT_EQ(model.control.XTxLength, 100.0F) << chosen;
        EXPECT_EQ(model.control.LengthUnitsIndex, Feet);
        EXPECT_EQ(model.control.JobName.view(), "Valley");
        EXPECT_EQ(model.control.TxRamp, 50.0F); // the record of no row is reported instead
        EXPECT_EQ(messages.warnings.size(), chosen);
    }
}

TEST_F(AvgTest, ALineIsReadWithTheSettingsOfItsFirstSection) {
    EXPECT_EQ(read(AvgHead + AvgLabelLine +
                   "2 1 1 Hz 0.1 50 2\n$ Tx.Length = 300\n2 2 2 Hz 0.1 50 2\n" +
                   "$ Line.Name = 8\n2 9 9 Hz 0.1 60 2\n"),
              0);
    ASSERT_EQ(model.SoundingCount, 2);
    EXPECT_EQ(model.control.XTxLength, 100.0F);
}

TEST_F(AvgTest, VerticesGiveCentreSidesAndAzimuthWhereTheyStand) {
    const std::string head = "$ Survey.Array = FXL\n$ Tx.Freq = 1\n$ Rx.Area = 1000\n"
                             "$ Tx.XYZ1 = 0,0,0\n$ Tx.XYZ2 = 400,0,0\n$ Tx.XYZ3 = 400,200,0\n"
                             "$ Tx.XYZ4 = 0,200,0\n";
    EXPECT_EQ(read(head + AvgLabelLine + "2 1 1 Hz 0.1 50 2\n"), 0);
    EXPECT_EQ(model.control.XTxCenter, 200.0);
    EXPECT_EQ(model.control.YTxCenter, 100.0);
    EXPECT_FLOAT_EQ(model.control.XTxLength, 400.0F);
    EXPECT_FLOAT_EQ(model.control.YTxLength, 200.0F);
    EXPECT_FLOAT_EQ(model.control.TxAzimuth, 90.0F);
    EXPECT_THAT(messages.warnings, IsEmpty());
    EXPECT_EQ(read(head + "$ Tx.Azimuth = 85\n" + AvgLabelLine + "2 1 1 Hz 0.1 50 2\n"), 0);
    EXPECT_EQ(model.control.TxAzimuth, 85.0F);
    EXPECT_EQ(
        read(head + "$ Tx.CenterX = 7\n$ Tx.Length = 50\n" + AvgLabelLine + "2 1 1 Hz 0.1 50 2\n"),
        0);
    EXPECT_EQ(model.control.XTxCenter, 7.0);
    EXPECT_EQ(model.control.YTxCenter, 100.0);
    EXPECT_EQ(model.control.XTxLength, 50.0F);
}

TEST_F(AvgTest, ALineMayHave8192Bytes) {
    std::string labels = "Tx Station Cmp Time";
    std::string row = "1 1 Hz 0.1";
    for (int i = 0; i < 20; ++i) {
        labels += " C" + std::to_string(i);
        row += "   123456789.123456789";
    }
    EXPECT_EQ(read(AvgHead + labels + " Magnitude\n" + row + " 3.16E+06\n"), 0);
    EXPECT_FLOAT_EQ(sounding(0).TEMobs[0], 3.16E6F);
}

TEST_F(AvgTest, HostileBytesEndInAFailureOrInData) {
    EXPECT_EQ(read(""), 1);
    EXPECT_EQ(read(std::string(1'000'000, 'A')), 1);
    EXPECT_EQ(read(std::string("\0\x1A\xFF\x80", 4)), 1);
    EXPECT_EQ(read(AvgHead + AvgLabelLine + "2 1 1 Hz 0.1 50 2" + std::string(500'000, '9')), 0);
    EXPECT_EQ(AVG_Count(model, directory.path("missing.avg")), 1);
    EXPECT_EQ(AVG_Count(model, directory.path()), 1);
}

} // namespace
} // namespace keldrin
