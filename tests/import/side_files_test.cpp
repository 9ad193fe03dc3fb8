#include "import/station_file.h"
#include "import/survey_information.h"
#include "support/files.h"
#include "support/message_recorder.h"
#include "support/temporary_directory.h"

#include <gmock/gmock.h>

#include <string>

namespace keldrin {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class SideFilesTest : public testing::Test {
  protected:
    int readStations(const std::string &text) {
        putFile(directory.path("x.stn"), text);
        return Stn_File_Input(directory.path("x.stn"), table);
    }
    void readSurvey(const std::string &text) {
        putFile(directory.path("x.mde"), text);
        model = SurveyModel{};
        MD_Init(model.metadata, true);
        STD_Init_Namelist(model);
        EXPECT_EQ(Mde_File_Input(model, directory.path("x.mde")), 0);
    }

    TemporaryDirectory directory;
    MessageRecorder messages;
    StationTable table;
    SurveyModel model;
};

TEST_F(SideFilesTest, StationsAreReadWithAndWithoutLabelsAndSorted) {
    EXPECT_EQ(readStations("! comment\n300, 30, 0, 3\n100 10 0 1\n"
                           "ELEV NORTH EAST STATION\n2 0 20 200\n"),
              0);
    EXPECT_THAT(table.stn, ElementsAre(100, 200, 300));
    EXPECT_THAT(table.east, ElementsAre(10, 20, 30));
    EXPECT_THAT(table.elev, ElementsAre(1, 2, 3));
    EXPECT_FLOAT_EQ(table.stnAzimuth, 90.0F);
    EXPECT_FLOAT_EQ(table.stnScale, 0.1F);
    EXPECT_THAT(messages.errors, IsEmpty());
}

TEST_F(SideFilesTest, TheScaleIsTheLowerMedianOfTheRatios) {
    // n = 4 points, ratios 1, 2, 9: k = (4 + 1) / 2 = 2
    EXPECT_EQ(readStations("0 0 0 0\n1 1 0 0\n2 3 0 0\n3 12 0 0\n"), 0);
    EXPECT_FLOAT_EQ(table.stnScale, 2.0F);
    // n = 5 points, ratios 1, 2, 3, 9: k = 3
    EXPECT_EQ(readStations("0 0 0 0\n1 1 0 0\n2 3 0 0\n3 6 0 0\n4 15 0 0\n"), 0);
    EXPECT_FLOAT_EQ(table.stnScale, 3.0F);
}

TEST_F(SideFilesTest, DuplicatePlacesAreDroppedInWordsDuplicateStationsInSilence) {
    EXPECT_EQ(readStations("1 10 0 0\n2 10 0.01 0\n3 20 0 0\n3 30 0 0\n4 10 0 0\n"), 0);
    EXPECT_THAT(table.stn, ElementsAre(1, 3, 4));
    ASSERT_THAT(messages.errors, SizeIs(1));
    EXPECT_EQ(messages.errors[0], "WARNING: Near zero station separation between|"
                                  "Stn 1 at 10 E, 0 N and|Stn 2 at 10 E, 0.01 N, will drop this "
                                  "data.");
    EXPECT_THAT(messages.infos, testing::Contains("Dropping (stn,x,y,z) data from x.stn due to "
                                                  "stn-separation error."));
}

TEST_F(SideFilesTest, PointsAreOneWhereTheSquareOfTheirDistanceIsBelowAThousandth) {
    EXPECT_EQ(readStations("1 0.0000 0 0\n2 0.0316 0 0\n3 0.0317 0 0\n"), 0);
    EXPECT_THAT(table.stn, ElementsAre(1, 3)); // 0.0316^2 < 0.001 < 0.0317^2
}

TEST_F(SideFilesTest, PlacesThatCannotBeRightAreTold) {
    EXPECT_EQ(readStations("0+25 1 1 1\n2 2e9 2 2\n3 1e9 -1e9 3\n4 4 4 4"), 0);
    EXPECT_THAT(table.stn, ElementsAre(3, 4)); // 1e9 itself is a place
    EXPECT_THAT(messages.errors,
                ElementsAre(HasSubstr("ERROR reading real*8 STATION value from 0+25"),
                            HasSubstr("ERROR: |Easting|=|2e+09| > 1.0E9 on x.stn line 2")));
    EXPECT_THAT(messages.warnings,
                ElementsAre(HasSubstr("The last line of x.stn has no line end")));
}

TEST_F(SideFilesTest, AWrongLabelLineSkipsItsRowsAndASpuriousValueItsLine) {
    EXPECT_EQ(readStations("STATION EAST NORTH ELEVATION\n1 1 1 1\nSTATION EAST NORTH ELEV\n"
                           "2 2 2 2\n3 3E12 3 3\n4 4 4 4E13\n5 5 * 5\n6 6 6 6\n"),
              0);
    EXPECT_THAT(table.stn, ElementsAre(2, 6));
    ASSERT_THAT(messages.errors, SizeIs(2));
    EXPECT_EQ(messages.errors[0], "ERROR: Missing station, easting, northing or elevation data in:|"
                                  "STATION EAST NORTH ELEVATION");
    EXPECT_THAT(messages.errors[1], HasSubstr("ERROR: |Easting|=|"));
    ASSERT_THAT(messages.warnings, SizeIs(2)); // the second spurious value, the empty cell
    EXPECT_THAT(messages.warnings[0], HasSubstr("|Spurious data will be dropped."));
}

TEST_F(SideFilesTest, TwoThousandAndFortyEightStationsAreRead) {
    std::string text;
    for (int i = 1; i <= 2049; ++i) {
        text += std::to_string(i) + " " + std::to_string(10 * i) + " 0 0\n";
        if (i == 2048) {
            EXPECT_EQ(readStations(text), 0);
            EXPECT_EQ(table.size(), 2048U);
            EXPECT_THAT(messages.errors, IsEmpty());
        }
    }
    EXPECT_EQ(readStations(text), 0);
    EXPECT_EQ(table.stn.back(), 2048.0);
    EXPECT_THAT(messages.errors, ElementsAre("ERROR: More than 2048 stations in x.stn|"
                                             "Data will be skipped starting with line:|"
                                             "2049 20490 0 0"));
}

TEST_F(SideFilesTest, OnePointHasNoTrendAndNoneIsAFailure) {
    EXPECT_EQ(readStations("1 10 0 0\n"), 0);
    EXPECT_FALSE(isPresent(table.stnAzimuth));
    EXPECT_FALSE(isPresent(table.stnScale));
    EXPECT_EQ(readStations("nothing\n"), 1);
    EXPECT_EQ(Stn_File_Input(directory.path("missing.stn"), table), 1); // the chooser is declined
}

TEST_F(SideFilesTest, SurveyInformationSettlesScalingAndAreas) {
    readSurvey("Job.Name = ignored\n 7 ignored\n  $ Job.Name = Valley\n$ Stn.QdrInc = 2\n"
               "$ Stn.Beg = 1000\n$ Survey.Array = COL\n");
    EXPECT_EQ(model.control.JobName.view(), "Valley");
    EXPECT_EQ(model.control.SurveyTypeIndex, CoincidentLoop);
    EXPECT_EQ(model.preset.StnRescaleQdr.begin, 0.0);
    EXPECT_EQ(model.preset.StnRescaleQdr.increment, 2.0);
    EXPECT_EQ(model.preset.StnRescaleClient.begin, 1000.0);
    EXPECT_EQ(model.preset.StnRescaleClient.increment, 2.0); // takes that of the file's numbers
    EXPECT_THAT(model.preset.RxAreaXYZ, ElementsAre(10000.0F, 10000.0F, 10000.0F));
}

// Stations may fall along the line; those of the client are the receiver's where none are stated.
TEST_F(SideFilesTest, ClientStationsFollowTheReceiversAlsoWhereTheseFall) {
    readSurvey("$ Stn.QdrBeg = 500\n$ Stn.QdrInc = -2\n");
    EXPECT_EQ(model.preset.StnRescaleQdr.begin, 500.0);
    EXPECT_EQ(model.preset.StnRescaleQdr.increment, -2.0);
    EXPECT_EQ(model.preset.StnRescaleClient.begin, 500.0);
    EXPECT_EQ(model.preset.StnRescaleClient.increment, -2.0);
}

TEST_F(SideFilesTest, WithoutSurveyInformationTheDefaultsAreSettledAllTheSame) {
    MD_Init(model.metadata, true);
    EXPECT_EQ(Mde_File_Input(model, directory.path("missing.mde")), 0);
    EXPECT_EQ(model.control.SurveyTypeIndex, InLoop); // of the metadata, not of the project
    EXPECT_EQ(model.preset.StnRescaleQdr.increment, 1.0);
    EXPECT_EQ(model.preset.SelectedArrayIndex, InLoop);
}

TEST_F(SideFilesTest, ALengthTakesTheUnitThatTheFileStatesBehindIt) {
    readSurvey("$ Tx.Length = 100\n$ Rx.Length = 10\n$ Unit.Length = ft\n");
    EXPECT_FLOAT_EQ(model.control.XTxLength, 100.0F);
    EXPECT_FLOAT_EQ(model.control.YTxLength, 100.0F);
    EXPECT_EQ(model.control.LengthUnitsIndex, Feet);
    // A unit that was stated, of the record or of the file, stands.
    readSurvey("$ Tx.LengthX = 100m\n$ Unit.Length = ft\n");
    EXPECT_NEAR(model.control.XTxLength, 328.084F, 1e-3F);
    readSurvey("$ Unit.Length = m\n$ Tx.LengthX = 100\n$ Unit.Length = ft\n");
    EXPECT_NEAR(model.control.XTxLength, 328.084F, 1e-3F);
}

TEST_F(SideFilesTest, AnEndMarkWithRecordsBehindItIsTold) {
    readSurvey("$ Job.Name = Valley\n\x1A$ Job.For = nobody\n");
    EXPECT_THAT(messages.errors, ElementsAre(HasSubstr("x.mde has an end mark")));
}

} // namespace
} // namespace keldrin
