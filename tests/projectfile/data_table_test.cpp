#include "projectfile/project_case.h"
#include "support/sanitizer.h"

#include <algorithm>
#include <cstdint>

#ifdef __linux__
#include <sys/resource.h>
#endif

namespace keldrin {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

using DataTable = ProjectCase;

/// What is reported when no sounding comes out of a table.
const auto NoRowUsed = testing::StartsWith("ERROR: No row of the data table can be used.|");

/// Makes a request for terabytes fail also on a system that promises more than it has.
class MemoryLimit {
#ifdef __linux__
  public:
    MemoryLimit() {
        ::getrlimit(RLIMIT_AS, &before_);
        rlimit limit = before_;
        constexpr std::uint64_t most = std::uint64_t{1} << 36U;
        limit.rlim_cur = static_cast<rlim_t>(std::min<std::uint64_t>(before_.rlim_max, most));
        ::setrlimit(RLIMIT_AS, &limit);
    }
    MemoryLimit(const MemoryLimit &) = delete;
    MemoryLimit &operator=(const MemoryLimit &) = delete;
    ~MemoryLimit() {
        ::setrlimit(RLIMIT_AS, &before_);
    }

  private:
    rlimit before_{};
#endif
};

TEST_F(DataTable, ColumnsAreFoundByLabelsInAnyOrderAndForm) {
    ASSERT_EQ(readTable("TEMerr,station EAST;x north(m),Elevation,TWcenter TWwidth"
                        " TEMOBS(nV/Am2) note\n3 100 1 2 3 0.1 .05 5 9\n"),
              0);
    EXPECT_EQ(sounding(0).Station, 100.0);
    EXPECT_EQ(sounding(0).RxStn, 100.0) << "from Station";
    EXPECT_EQ(sounding(0).TxStn, 100.0) << "from RxStn";
    EXPECT_EQ(sounding(0).North, 2.0);
    EXPECT_EQ(sounding(0).TEMerr[0], 3.0F);
    EXPECT_EQ(sounding(0).AResSpare[0], 3.0F);
    EXPECT_EQ(sounding(0).TEMwgt[0], (std::array<float, 3>{0.0F, 0.0F, 1.0F}));
    EXPECT_FALSE(isPresent(sounding(0).TEMcalc[0]));
}

TEST_F(DataTable, PlainNumbersHaveFixedPositions) {
    ASSERT_EQ(readTable("100 1 2 3 .1 .05 5 3 7 7 7 4.5\n"), 0);
    EXPECT_EQ(sounding(0).TWcenter[0], 0.1F);
    EXPECT_EQ(sounding(0).TEMcalc[0], 4.5F);
    EXPECT_EQ(sounding(0).TEMwgt[0][0], 0.0F) << "column 9 is nobody's";
}

TEST_F(DataTable, LinesThatAreNoRows) {
    ASSERT_EQ(readTable("x\n\n$ 1 2\n! 1\n\\ 1\n\"text\n" + std::string(LabelLine) + "  " +
                        std::string(OneRow) + "/ 1 2\n5\n"),
              0);
    EXPECT_THAT(messages.errors, IsEmpty());
    EXPECT_EQ(sounding(0).NumTW, 1);
}

TEST_F(DataTable, BadLabelsSilenceTheRowsUntilGoodOnes) {
    EXPECT_EQ(readTable("Station,East,North\n" + std::string(OneRow)), 1);
    EXPECT_THAT(messages.errors,
                ElementsAre("ERROR: Missing expected column labels in line 1|Station,East,North",
                            NoRowUsed));
    EXPECT_THAT(messages.infos, Contains("0 TEM soundings read from line.std"));
    EXPECT_EQ(readTable("[x\n" + std::string(LabelLine) + std::string(OneRow)), 0);
    EXPECT_EQ(model.SoundingCount, 1);
}

TEST_F(DataTable, OldLabelsAndMicrovoltsBecomeTheNewOnes) {
    ASSERT_EQ(read("&KELDRIN TEMUnits='pT/A' RxArea=100 SurveyType='I'\n/\n"
                   "Station,East,North,Elevation,TWcenter,TWwidth,UVOBS,UVERR,UVCALC\n"
                   "1,2,3,4,0.1,0.1,-5,3,6\n1,2,3,4,0.2,0.1,5,3,\n"),
              0);
    EXPECT_EQ(sounding(0).TEMobs[0], -50.0F) << "anything but nV is uV/A";
    EXPECT_EQ(sounding(0).TEMcalc[0], 60.0F);
    EXPECT_FALSE(isPresent(sounding(0).TEMcalc[1])) << "no value, nothing to scale";
    const std::string once = written();
    EXPECT_THAT(once, testing::HasSubstr("TEMUnits='nV/Am2'"));
    ASSERT_EQ(STD_File_Read(model, path), 0);
    EXPECT_EQ(sounding(0).TEMobs[0], -50.0F) << "not scaled twice";
}

TEST_F(DataTable, TEMUnitsLooksAtFourCharacters) {
    ASSERT_EQ(read("&KELDRIN TEMUnits='pT in nV' RxArea=1000\n/\n1 2 3 4 1 1 5 3\n"), 0);
    EXPECT_EQ(sounding(0).TEMobs[0], 5.0F * 1000.0F / 1000.0F);
    ASSERT_EQ(read("&KELDRIN TEMUnits=' nv' RxArea=10\n/\n1 2 3 4 1 1 5 3\n"), 0);
    EXPECT_EQ(sounding(0).TEMobs[0], 5.0F);
}

TEST_F(DataTable, RowsAreCheckedAndLimited) {
    // position: Station East North Elevation TWcenter TWwidth TEMobs TEMerr
    for (const std::string_view row :
         {"*,2,3,4,1,1,5,3", "1,2,3,4,0,1,5,3", "1,2,3,4,1,-1,5,3", "1,2,3,4,1,1,INF,3",
          "1,2,3,4,1,1,5,-1", "1,2,3,4,1,1,5", "1,2,3,4,1,,5,3", "1,2,3,4,1,1,-1e33,3"}) {
        EXPECT_EQ(readTable(row), 1) << row;
        EXPECT_THAT(messages.errors, ElementsAre(NoRowUsed)) << row;
    }
    ASSERT_EQ(readTable("1,*,,inf,0.1,5,5,0\n1,2,3,4,0.2,0,5,99999\n1,2,3,4,0.3,.1,5,1003.5\n"), 0);
    EXPECT_EQ(sounding(0).East, 0.0);
    EXPECT_EQ(sounding(0).Elevation, 0.0);
    EXPECT_EQ(sounding(0).TWwidth[0], 0.1F + 0.001F);
    EXPECT_EQ(sounding(0).TEMerr[0], 0.1F);
    EXPECT_EQ(sounding(0).TWwidth[1], 0.0001F);
    EXPECT_EQ(sounding(0).TEMerr[1], 9999.9F);
    EXPECT_EQ(sounding(0).TEMerr[2], 1003.5F) << "the skip mark stays";
}

TEST_F(DataTable, ABadCellIsReportedAndTheRowGoesOn) {
    ASSERT_EQ(readTable("1,2x,3,4,1,1,5,3"), 0);
    EXPECT_THAT(messages.errors, ElementsAre("ERROR reading real*8 EAST value from 2x|"
                                             "Record number 1|1,2x,3,4,1,1,5,3"));
    EXPECT_EQ(sounding(0).East, 0.0);
}

TEST_F(DataTable, LongCellsAndLinesAreReadToTheirEnds) {
    const std::string zeros(300, '0');
    ASSERT_EQ(readTable("100,1,2,3,0.1,0.05,5." + zeros + "E+04,3\n"), 0);
    EXPECT_EQ(sounding(0).TEMobs[0], 5.0E4F);
    EXPECT_THAT(messages.errors, IsEmpty());
}

TEST_F(DataTable, StationsWithinAThousandthAreOneSounding) {
    const std::string labels = "Station East North Elevation RxStn TxStn TWcenter TWwidth TEMobs "
                               "TEMerr\n";
    ASSERT_EQ(readTable(labels + "1 0 0 0 100 100 1 1 5 3\n2 0 0 0 100.001 100.001 2 1 5 3\n"
                                 "3 0 0 0 100.0021 100.001 3 1 5 3\n"
                                 "4 0 0 0 100.0021 100.003 4 1 5 3\n"
                                 "5 0 0 0 100 100 5 1 5 3\n"),
              0);
    EXPECT_EQ(model.SoundingCount, 4) << "only neighbours are compared";
    EXPECT_EQ(sounding(0).NumTW, 2);
    EXPECT_EQ(sounding(0).Station, 1.0) << "of the first row";
}

TEST_F(DataTable, TransmitterOfARowFollowsTheSurveyType) {
    const std::string labels = "Station East North Elevation RxStn TxStn TWcenter TWwidth TEMobs "
                               "TEMerr\n";
    const std::string rows = labels + "1 0 0 0 10 20 1 1 5 3\n1 0 0 0 11 * 1 1 5 3\n"
                                      "1 0 0 0 12 99 1 1 5 -3\n";
    ASSERT_EQ(readTable(rows, "SurveyType='Moving'"), 0);
    EXPECT_EQ(sounding(0).TxStn, 20.0);
    EXPECT_EQ(sounding(1).TxStn, 11.0);
    ASSERT_EQ(readTable(rows, "SurveyType='In' TxStn=5"), 0);
    EXPECT_EQ(sounding(0).TxStn, 10.0);
    EXPECT_EQ(model.control.TxStn, 5.0);
    ASSERT_EQ(readTable(rows, "SurveyType='Fixed' TxStn=5"), 0);
    EXPECT_EQ(sounding(0).TxStn, 20.0);
    EXPECT_EQ(sounding(1).TxStn, 20.0) << "a missing cell takes the control value as it is now";
    EXPECT_EQ(model.control.TxStn, 20.0) << "a dropped row changes nothing";
}

TEST_F(DataTable, MoreSoundingsThanNumStnAreReportedAndDropped) {
    std::string rows;
    for (int i = 1; i <= 18; ++i) {
        rows += std::to_string(i) + " 0 0 0 1 1 5 3\n";
    }
    ASSERT_EQ(readTable(rows, "NumStn=16"), 0);
    EXPECT_EQ(model.SoundingCount, 16);
    EXPECT_THAT(messages.errors,
                ElementsAre("STD_Data_Read.WARNING: More than 16 soundings at line 17|"
                            "Tx.Stn=17, Rx.Stn=17|Excess data will be dropped."));
}

TEST_F(DataTable, ASenselessNumStnTakesNoMemory) {
    ASSERT_EQ(readTable(OneRow, "NumStn=2147483647"), 0);
    EXPECT_LE(model.SoundingCapacity(), 32);
}

TEST_F(DataTable, AFailedAllocationIsReported) {
    if (UnderSanitizer) {
        GTEST_SKIP() << "this allocator ends the program where others throw";
    }
    [[maybe_unused]] const MemoryLimit limit;
    EXPECT_EQ(STD_Allocate_hTrn(model, 2147483647), 1);
    EXPECT_THAT(messages.errors, ElementsAre("STD_Allocate_hTrn.ERROR|"
                                             "while allocating hTrn(1:2147483647)"));
    EXPECT_EQ(model.SoundingCapacity(), 0);
}

TEST_F(DataTable, ASoundingHolds128Windows) {
    std::string rows;
    for (int i = 1; i <= 129; ++i) {
        rows += "1 0 0 0 " + std::to_string(i) + " 1 5 3\n";
    }
    ASSERT_EQ(readTable(rows + "2 0 0 0 1 1 5 3\n"), 0);
    EXPECT_THAT(messages.errors, ElementsAre("WARNING: More than 128 windows in a sounding.|" +
                                             path + "|1 window dropped."));
    EXPECT_EQ(sounding(0).NumTW, 128);
    EXPECT_EQ(model.SoundingCount, 2);
    EXPECT_EQ(model.MaxTW, 128);
    EXPECT_EQ(model.TimeRatio, 128.0F);
    EXPECT_EQ(model.ModelLayerCount, 17) << "eight a decade";
}

TEST_F(DataTable, AzimuthsFollowTheLine) {
    const std::string far = "1 0 0 0 1 1 5 3\n2 10 10 0 1 1 5 3\n";
    const std::string near = "1 0 0 0 1 1 5 3\n2 0.5 0.5 0 1 1 5 3\n";
    ASSERT_EQ(readTable(far, "TxAzimuth=-1E32"), 0);
    EXPECT_FLOAT_EQ(model.control.LineAzimuth, 45.0F);
    EXPECT_FLOAT_EQ(model.control.TxAzimuth, 45.0F);
    ASSERT_EQ(readTable("1 0 0 0 1 1 5 3\n2 10 -20 0 1 1 5 3\n", "TxAzimuth=-1E32"), 0);
    EXPECT_NEAR(model.control.LineAzimuth, 153.435F, 1E-3F) << "from north over east";
    ASSERT_EQ(readTable(near, "TxAzimuth=-1E32"), 0);
    EXPECT_EQ(model.control.TxAzimuth, 90.0F);
    ASSERT_EQ(readTable(far, "TxAzimuth=-1E32 LineAzimuth=12.5"), 0);
    EXPECT_EQ(model.control.TxAzimuth, 12.5F);
}

TEST_F(DataTable, ExportAddsTheMisfit) {
    ASSERT_EQ(readTable(std::string(LabelLine) + "100,1,2,3,100,100,0.1,0.05,5,3,0,0,1,4,20,-1\n" +
                        "100,1,2,3,100,100,0.2,0.05,5,3,0,0,1,,,\n"),
              0);
    const std::string exported = directory.path("table.csv");
    EXPECT_TRUE(STD_Table_Export(model, exported).written);
    EXPECT_EQ(fileContent(exported),
              "Station,East,North,Elevation,RxStn,TxStn,TWcenter,TWwidth,TEMobs,TEMerr,"
              "TEMwgtX,TEMwgtY,TEMwgtZ,TEMcalc,TEM%diff,AResObs,AResCalc\n"
              "\"From KELDRIN v4.00i Date:14/05/2021 Time:09:30:00\"\n"
              "100,1,2,3,100,100,0.1,5.000E-2,5.00000E+00,3,0,0,1,4.00000E+00,2.00000E+01,20,\n"
              "100,1,2,3,100,100,0.2,5.000E-2,5.00000E+00,3,0,0,1,,,,\n");
}

} // namespace
} // namespace keldrin
