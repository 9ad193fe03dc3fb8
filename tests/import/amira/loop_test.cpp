#include "import/amira/fixture.h"

namespace keldrin {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Corners of a loop 400 m east by 300 m north around (200, 150).
constexpr LoopVertex SW = {0, 0, 10};
constexpr LoopVertex SE = {400, 0, 20};
constexpr LoopVertex NE = {400, 300, 30};
constexpr LoopVertex NW = {0, 300, MissingValue};

AmiraRecord loopOf(std::array<LoopVertex, LoopVertices> vertices) {
    AmiraRecord record;
    record.vertices = vertices;
    EXPECT_EQ(AMR_Loop_Geometry(record, 1.0), 0);
    return record;
}

TEST(AmiraLoopTest, SidesCentreAndAreaOfItsVertices) {
    MessageRecorder messages;
    const AmiraRecord record = loopOf({SW, SE, NE, NW});
    EXPECT_DOUBLE_EQ(record.XTxCenter, 200.0);
    EXPECT_DOUBLE_EQ(record.YTxCenter, 150.0);
    EXPECT_DOUBLE_EQ(record.ZTxCenter, 20.0);
    EXPECT_EQ(record.TxArea, 120000.0F);
    EXPECT_EQ(record.XTxLength, 400.0F);
    EXPECT_EQ(record.YTxLength, 300.0F);
    EXPECT_EQ(record.sideAzimuth, 90.0F);
    EXPECT_THAT(messages.warnings, IsEmpty());
}

TEST(AmiraLoopTest, AClockwiseLoopIsReversed) {
    const AmiraRecord record = loopOf({SW, NW, NE, SE});
    EXPECT_EQ(record.TxArea, 120000.0F);
    EXPECT_EQ(record.vertices[0].x, 400.0);
    EXPECT_EQ(record.XTxLength, 300.0F); // from south-east to north-east
    EXPECT_EQ(record.sideAzimuth, 0.0F);
}

TEST(AmiraLoopTest, VerticesOutOfOrderAreExchanged) {
    const std::pair<std::array<LoopVertex, LoopVertices>, const char *> cases[] = {
        {{SW, NE, SE, NW}, "Vertices 2 and 3"}, {{SW, SE, NW, NE}, "Vertices 3 and 4"}};
    for (const auto &[vertices, exchanged] : cases) {
        MessageRecorder messages;
        const AmiraRecord record = loopOf(vertices);
        EXPECT_EQ(record.XTxLength, 400.0F);
        EXPECT_EQ(record.YTxLength, 300.0F);
        EXPECT_DOUBLE_EQ(record.XTxCenter, 200.0);
        EXPECT_THAT(messages.warnings,
                    ElementsAre(testing::AllOf(HasSubstr("loop cross"), HasSubstr(exchanged))));
    }
}

TEST(AmiraLoopTest, AbsentVerticesAreLeftOut) {
    const AmiraRecord triangle = loopOf({SW, {}, NE, NW});
    EXPECT_EQ(triangle.TxArea, 60000.0F);
    EXPECT_FLOAT_EQ(triangle.XTxLength, std::sqrt(60000.0F));
    EXPECT_EQ(triangle.XTxLength, triangle.YTxLength);
    AmiraRecord record;
    record.vertices = {SW, {5.0, MissingValue, 0.0}, NE, {}};
    EXPECT_EQ(AMR_Loop_Geometry(record, 1.0), 1);
    EXPECT_EQ(record.XTxLength, 0.0F);
}

TEST(AmiraLoopTest, TheCentreIsThatOfTheAreaAndNotOfTheCorners) {
    const AmiraRecord record = loopOf({{{0, 0, 0}, {400, 0, 0}, {200, 100, 0}, {0, 100, 0}}});
    EXPECT_DOUBLE_EQ(record.XTxCenter, 1400.0 / 9.0); // the corners have 150, 50
    EXPECT_DOUBLE_EQ(record.YTxCenter, 400.0 / 9.0);
    EXPECT_EQ(record.TxArea, 30000.0F);
}

TEST(AmiraLoopTest, ALoopWithoutAreaHasItsCentreInTheMiddle) {
    const AmiraRecord record = loopOf({SW, SE, SE, SW});
    EXPECT_DOUBLE_EQ(record.XTxCenter, 200.0);
    EXPECT_EQ(record.XTxLength, 400.0F);
    EXPECT_EQ(record.YTxLength, 0.0F);
}

TEST(AmiraLoopTest, WhatKeywordsHaveSaidStands) {
    AmiraRecord record;
    record.vertices = {SW, SE, NE, NW};
    record.XTxCenter = 7.0;
    record.YTxLength = 50.0F;
    AMR_Loop_Geometry(record, 0.3048);
    EXPECT_EQ(record.XTxCenter, 7.0);
    EXPECT_EQ(record.XTxLength, 400.0F);
    EXPECT_EQ(record.YTxLength, 50.0F);
    EXPECT_FLOAT_EQ(record.TxArea, 120000.0F * 0.3048F * 0.3048F); // coordinates in feet
}

TEST(AmiraLoopTest, UnknownSidesAreThoseOfASquare) {
    AmiraRecord record;
    record.TxArea = 2500.0F;
    settleLoopSides(record);
    EXPECT_EQ(record.YTxLength, 50.0F);
    record.XTxLength = 0.0F;
    record.YTxLength = 70.0F;
    settleLoopSides(record);
    EXPECT_EQ(record.XTxLength, 70.0F);
}

const std::string Rows =
    "TEMUNIT:nV/Am2 CONFIG:FIXEDLOOP TXFREQ:25\nSTATION CH1 CH2 CH3\n1 10 20 30\n";
const std::string Clockwise = "LV1X:0 LV1Y:0 LV2X:0 LV2Y:300 LV3X:400 LV3Y:300 LV4X:400 LV4Y:0\n";

TEST_F(AmiraTest, ALoopThatDoesNotLieAlongItsAzimuthIsTold) {
    EXPECT_EQ(read(Clockwise + "/AZIMUTH: 95\n" + Rows), 0);
    EXPECT_EQ(model.control.TxAzimuth, 95.0F);
    EXPECT_EQ(model.control.XTxLength, 300.0F);
    EXPECT_THAT(messages.warnings, ElementsAre(HasSubstr("first side lies at 0 degrees")));
    // Without an azimuth the vertices give it.
    EXPECT_EQ(read(Clockwise + Rows), 0);
    EXPECT_EQ(model.control.TxAzimuth, 0.0F);
    EXPECT_EQ(messages.warnings.size(), 1U);
}

TEST_F(AmiraTest, SurveyInformationIsTheDefault) {
    information = "$ Survey.Array = FXL\n$ Job.Number = GF-21\n$ Line.Name = 12N\n"
                  "$ Line.Azimuth = 45\n$ Tx.Azimuth = 30\n$ Tx.Length = 200,100\n$ Tx.Ramp = 80\n"
                  "$ Tx.XYZ1 = 0,0,0\n$ Tx.XYZ2 = 100,0,0\n$ Tx.XYZ3 = 100,60,0\n"
                  "$ Tx.Turns = 2\n$ Rx.Area = 500\n$ Tx.Amp = 4\n$ Tx.Freq = 25\n";
    EXPECT_EQ(read("/TEMUNIT: nT/sec\nCONFIG:\nYTXLENGTH=90\nSTATION CH1\n1 8\n"), 0);
    EXPECT_EQ(model.lines.entries[0].LineLabel.view(), "12N FXL");
    EXPECT_THAT(values(0), ElementsAre(2));
    EXPECT_THAT(model.preset.RxAreaXYZ, ElementsAre(500, 500, 500));
    const ControlValues &control = model.control;
    EXPECT_EQ(control.JobNumber.view(), "GF-21");
    EXPECT_EQ(control.LineAzimuth, 45.0F);
    EXPECT_EQ(control.TxAzimuth, 30.0F);
    EXPECT_EQ(control.XTxLength, 200.0F);
    EXPECT_EQ(control.YTxLength, 90.0F);
    EXPECT_FLOAT_EQ(static_cast<float>(control.XTxCenter), 200.0F / 3.0F);
    EXPECT_EQ(control.NTxTurn, 2);
    EXPECT_FLOAT_EQ(control.TxRamp, 80.0F);
    EXPECT_EQ(control.TxFreq, 25.0F);
    EXPECT_EQ(control.RxArea, 500.0F);
}

TEST_F(AmiraTest, AnUnknownUnitLeavesTheValuesAndIsTold) {
    EXPECT_EQ(read("STATION CH1\n1 8\n"), 0);
    EXPECT_THAT(values(0), ElementsAre(8));
    EXPECT_EQ(messages.errors.back(),
              "AMIRA input ERROR:|File's TEM units =  not uV/A, nV/Am2 or nT/sec");
    EXPECT_EQ(model.control.TEMUnitsIndex, MicrovoltPerAmpere);
}

} // namespace
} // namespace keldrin
