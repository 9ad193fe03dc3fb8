#include "import/avg_file.h"
#include "import/survey_information.h"
#include "projectfile/project_file.h"
#include "support/files.h"
#include "support/message_recorder.h"
#include "support/temporary_directory.h"

#include <gmock/gmock.h>

#include <cmath>
#include <string>

namespace keldrin {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// A survey whose coil has 1000 m^2, so that a file value in uV/A is the value in nV/(A m2).
const std::string Head = "$ Survey.Array = INL\n$ Line.Name = 7\n$ Rx.Area = 1000\n"
                         "$ Tx.Freq = 16\n$ Tx.Amp = 10\n";
const std::string Labels = "Skp Tx Station Cmp Time Magnitude %Mag\n";

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
        STD_Allocate_hTrn(model, capacity > 0 ? capacity : soundingsNeeded(entry));
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
    EXPECT_EQ(read(Head + Labels + "2 1 1 Hz 0.1 50 2\n2 1 1 Hz 0.2 -4 2\n2 2 2 Hz 0.1 40 2"), 0);
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
                   Head + Labels +
                   "2 1 1 Hz 0.1 50 2\n"
                   "\\ $ Line.Name = other\n" // and further right it is not
                   "2 1 1 Hz 0.2 40 2\r\n"),
              0);
    EXPECT_EQ(model.SoundingCount, 1);
    EXPECT_EQ(sounding(0).NumTW, 2);
    EXPECT_EQ(model.lines.LineCount, 1);
}

TEST_F(AvgTest, ReadingsOfOneStationMergeByInverseVarianceHoweverFarApart) {
    EXPECT_EQ(read(Head + "Tx Station Cmp Time Magnitude E.ERR\n"
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
    EXPECT_EQ(read(Head + Labels +
                   "0 1 1 Hz 0.1 50 2\n0 1 1 Hz 0.2 90 2\n"
                   "2 1 1 Hz 0.2 10 2\n"),
              0);
    EXPECT_TRUE(isSkipped(sounding(0).TEMerr[0]));
    EXPECT_NEAR(trueError(sounding(0).TEMerr[0]), 2.0F, 1e-3F);
    EXPECT_FALSE(isSkipped(sounding(0).TEMerr[1]));
    EXPECT_FLOAT_EQ(sounding(0).TEMobs[1], 10.0F);
}

TEST_F(AvgTest, ErrorsFallBackToPercentAndAreHeldInRange) {
    EXPECT_EQ(read(Head + "Tx Station Cmp Time Magnitude E.ERR %Mag\n"
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
                          "3 5 Hx 0.1 3\n3 5 Hx 0.2 5\n"
                          "3 5 Hz 0.1 4\n3 5 Ex 0.1 777\n"),
              0);
    ASSERT_EQ(model.SoundingCount, 1);
    EXPECT_FLOAT_EQ(sounding(0).TEMobs[0], 5.0F);
    EXPECT_THAT(sounding(0).TEMwgt[0], ElementsAre(1, 0, 1));
    EXPECT_FLOAT_EQ(sounding(0).TEMobs[1], 5.0F);
    EXPECT_THAT(sounding(0).TEMwgt[1], ElementsAre(1, 0, 0));
    EXPECT_EQ(sounding(0).RxStn, 140.0); // (5 - 1) * 10 / 1 + 100
    EXPECT_EQ(sounding(0).TxStn, 3.0);   // a loop's number is no position
    EXPECT_THAT(model.lines.entries[0].ComponentTransients, ElementsAre(2, 0, 1));
}

TEST_F(AvgTest, OnlyTheChosenLineIsReadWithItsOwnHeader) {
    chosen = 1;
    EXPECT_EQ(read(Head + Labels + "2 1 1 Hz 0.1 50 2\n" + "$ Line.Name = 8 b\n$ Job.Name = B\n" +
                   "2 9 9 Hz 0.1 60 2\n" + "$ Line.Name = 7\n2 3 3 Hz 0.1 70 2\n"),
              0);
    ASSERT_EQ(model.lines.LineCount, 2);
    EXPECT_EQ(model.lines.entries[0].LineLabel.view(), "7 INL");
    EXPECT_EQ(model.lines.entries[1].LineLabel.view(), "8B INL");
    EXPECT_EQ(model.lines.entries[0].Transients, 2);
    ASSERT_EQ(model.SoundingCount, 1);
    EXPECT_EQ(sounding(0).RxStn, 9.0);
    EXPECT_EQ(model.control.LineName.view(), "8 b");
}

TEST_F(AvgTest, CoilAreaAndStationScalingAreThoseOfTheChosenLine) {
    const std::string text = Head + "$ Stn.Beg = 100\n" + Labels + "2 1 1 Hz 0.1 50 2\n" +
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
    EXPECT_EQ(read(Head + Labels + "2 1 1 Hz 0.1 50 2\n" +
                   "$ Line.Name = 8\n$ Tx.LengthX = 300\n$ Job.For = B\n2 9 9 Hz 0.1 60 2\n"),
              0);
    EXPECT_EQ(model.control.XTxLength, 100.0F);
    EXPECT_TRUE(model.control.JobFor.isBlank());
    // A section before any name is a line of its own, on both passes.
    EXPECT_EQ(read("$ Survey.Array = INL\n$ Tx.Amp = 1\n" + Labels + "2 1 1 Hz 0.1 50 2\n" +
                   "$ Line.Name = 8\n2 9 9 Hz 0.1 60 2\n"),
              0);
    EXPECT_EQ(model.lines.entries[0].LineLabel.view(), "0 INL");
    ASSERT_EQ(model.SoundingCount, 1);
    EXPECT_EQ(sounding(0).RxStn, 1.0);
}

TEST_F(AvgTest, AnEndMarkWithDataBehindItIsTold) {
    EXPECT_EQ(read(Head + Labels + "2 1 1 Hz 0.1 50 2\n\x1A" + "2 2 2 Hz 0.1 50 2\n"), 0);
    EXPECT_EQ(model.SoundingCount, 1);
    EXPECT_THAT(messages.infos, testing::Contains(HasSubstr("end mark")));
}

TEST_F(AvgTest, TheThirtyThirdLineFallsIntoTheLastRowUnderItsLabel) {
    std::string text = Head + Labels;
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
}

TEST_F(AvgTest, RecordsWithoutTheirKeysAreDroppedInWords) {
    struct Case {
        const char *row, *words;
    };
    const Case cases[] = {
        {"2 * 1 Hz 0.1 50 2", "AVG_Read_Data.ERROR: Tx.QdrStn undefined for record 7"},
        {"2 1 INF Hz 0.1 50 2", "AVG_Read_Data.ERROR: Rx.QdrStn undefined for record 7"},
        {"2 1 1 Hz * 50 2", "AVG_Read_Data.ERROR: TWIN.Center < -1.0E32 on record 7"},
        {"2 1 1 Hz 0.1 * 2", "AVG_Read_Data.ERROR: dBdt.Mag undefined for record 7"},
        {"2 1 1 Hz 0.1 nan 2", "AVG_Read_Data.ERROR: dBdt.Mag undefined for record 7"},
        {"2 1 1 * 0.1 50 2", "AVG_Read_Data.ERROR: Rx.Cmp undefined for record 7"},
    };
    for (const Case &c : cases) {
        messages.warnings.clear();
        EXPECT_EQ(read(Head + Labels + c.row + "\n2 5 5 Hz 0.1 50 2\n"), 0) << c.row;
        ASSERT_FALSE(messages.warnings.empty()) << c.row;
        EXPECT_EQ(messages.warnings.back(),
                  std::string(c.words) + "|" + c.row + "|Dropping this data record.");
        EXPECT_EQ(model.SoundingCount, 1) << c.row;
    }
    read("$ Rx.Area = 1000\n$ Tx.Freq = 1\nTx Station Cmp Freq Amp Time Magnitude\n"
         "1 1 Hz 0 1 0.1 5\n1 1 Hz 4 0 0.1 5\n");
    EXPECT_THAT(messages.warnings[messages.warnings.size() - 2],
                HasSubstr("Tx.Freq < 1.0E-6 on record 4"));
    EXPECT_THAT(messages.warnings.back(), HasSubstr("Tx.Amp < 1.0E-6 on record 5"));
}

TEST_F(AvgTest, ANullMagnitudeIsAGoodZero) {
    EXPECT_EQ(read(Head + Labels + "2 1 1 Hz 0.1 / 2\n"), 0);
    EXPECT_EQ(sounding(0).TEMobs[0], 0.0F);
}

TEST_F(AvgTest, ASectionWithoutItsColumnsIsSkippedAndTold) {
    EXPECT_EQ(read(Head + "Tx Station Cmp\n1 1 1\n" + Labels + "2 1 1 Hz 0.1 50 2\n"), 0);
    EXPECT_EQ(model.SoundingCount, 1);
    EXPECT_EQ(messages.errors.front(),
              "AVG_Read_Labels.WARNING: Could not find required column TWIN.CENTER|"
              "AVG_Read_Labels.WARNING: Could not find required column DBDT.MAG|"
              "In: Tx Station Cmp");
    // A bad last label line leaves the pass failed, though earlier sections were read.
    EXPECT_EQ(read(Head + Labels + "2 1 1 Hz 0.1 50 2\nTx Station\n"), 1);
    EXPECT_EQ(model.SoundingCount, 1);
}

TEST_F(AvgTest, AFileThatNamesNoComponentCountsAndReadsNothing) {
    EXPECT_EQ(read(Head + "Tx Station Time Magnitude\n1 1 0.1 5\n"), 1);
    EXPECT_EQ(countStatus, 0);
    EXPECT_EQ(messages.infos.back(), "0 data transients have been read from avg file");
}

TEST_F(AvgTest, AFullTableStopsTheReadAndKeepsItsLastRecord) {
    capacity = 1;
    EXPECT_EQ(read(Head + Labels + "2 1 1 Hz 0.1 50 2\n2 2 2 Hz 0.1 60 2\n"), 0);
    EXPECT_EQ(model.SoundingCount, 1);
    EXPECT_EQ(sounding(0).RxStn, 1.0);
    EXPECT_EQ(messages.errors.back(), "AVG_Read_Data.ERROR|More than 1 transients at avg file "
                                      "record 8|2 2 2 Hz 0.1 60 2");
}

TEST_F(AvgTest, WindowsPastThe128thAreDroppedWithOneWarning) {
    std::string text = Head + Labels;
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
    EXPECT_EQ(read(Head + "Tx Station Cmp Freq Time Magnitude\n1 1 Hz 4 0.1 5\n1 1 Hz 8 0.05 5\n"),
              0);
    EXPECT_EQ(model.SoundingCount, 2);
    EXPECT_EQ(model.lines.entries[0].Soundings, 2);
}

TEST_F(AvgTest, HostileBytesEndInAFailureOrInData) {
    EXPECT_EQ(read(""), 1);
    EXPECT_EQ(read(std::string(1'000'000, 'A')), 1);
    EXPECT_EQ(read(std::string("\0\x1A\xFF\x80", 4)), 1);
    EXPECT_EQ(read(Head + Labels + "2 1 1 Hz 0.1 50 2" + std::string(500'000, '9')), 0);
    EXPECT_EQ(AVG_Count(model, directory.path("missing.avg")), 1);
    EXPECT_EQ(AVG_Count(model, directory.path()), 1);
}

} // namespace
} // namespace keldrin
