#include "line/line_columns.h"

#include "line_survey.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace keldrin {

void PrintTo(const Stretch &stretch, std::ostream *out) {
    *out << stretch.from << " to " << stretch.to;
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

MATCHER_P2(Spans, from, to, "") {
    return std::fabs(arg.from - from) < 1e-9 && std::fabs(arg.to - to) < 1e-9;
}
MATCHER_P3(Column, sounding, left, right, "") {
    return arg.sounding == sounding && std::fabs(arg.left - left) < 1e-6 &&
           std::fabs(arg.right - right) < 1e-6;
}

std::vector<Stretch> cells(const std::vector<double> &places) {
    return cellsOf(places, 4.0);
}

TEST(CellsOf, ReachHalfWayButNotAcrossGaps) {
    EXPECT_THAT(cells({}), IsEmpty());
    EXPECT_THAT(cells({7.0}), ElementsAre(Spans(5.0, 9.0)));
    EXPECT_THAT(cells({0.0, 10.0}), ElementsAre(Spans(-5.0, 5.0), Spans(5.0, 15.0)));
    // Three times the median is no gap, a little more is one; cells end there as at the ends.
    EXPECT_THAT(cells({0.0, 10.0, 20.0, 50.0}), ElementsAre(Spans(-5.0, 5.0), Spans(5.0, 15.0),
                                                            Spans(15.0, 35.0), Spans(35.0, 55.0)));
    EXPECT_THAT(cells({0.0, 10.0, 20.0, 50.1}), ElementsAre(Spans(-5.0, 5.0), Spans(5.0, 15.0),
                                                            Spans(15.0, 25.0), Spans(45.1, 55.1)));
    // Close neighbours at the edge of a gap keep their own spacing.
    EXPECT_THAT(cells({0.0, 10.0, 20.0, 22.0, 90.0, 100.0})[3], Spans(21.0, 23.0));
}

TEST(CellsOf, EqualPlacesShareTheirCell) {
    EXPECT_THAT(cells({0.0, 10.0, 10.0, 20.0}), ElementsAre(Spans(-5.0, 5.0), Spans(5.0, 10.0),
                                                            Spans(10.0, 15.0), Spans(15.0, 25.0)));
    EXPECT_THAT(cells({3.0, 3.0}), ElementsAre(Spans(1.0, 3.0), Spans(3.0, 5.0)));
}

TEST(LineColumns, GoOnAlongALineThatDoublesBack) {
    SurveyModel survey = lineSurvey(5);
    const double east[] = {0.0, 30.0, 60.0, 30.0, 0.0};
    for (int i = 0; i < 5; ++i) {
        survey.sounding(i + 1).East = east[i];
        survey.sounding(i + 1).North = i < 2 ? 0.0 : 40.0 * (i - 1); // 0 0 40 80 120
    }
    EXPECT_THAT(lineColumns(survey),
                ElementsAre(Column(1, -15.0, 15.0), Column(2, 15.0, 55.0), Column(3, 55.0, 105.0),
                            Column(4, 105.0, 155.0), Column(5, 155.0, 205.0)));
}

TEST(LineColumns, StandByStationsWhereCoordinatesSayNothing) {
    SurveyModel survey = lineSurvey(3);
    survey.control.StnScale = 2.0F;
    survey.sounding(2).East = MissingValue;
    EXPECT_THAT(lineColumns(survey), ElementsAre(Column(1, -50.0, 50.0), Column(2, 50.0, 150.0),
                                                 Column(3, 150.0, 250.0)));
    for (SoundingRecord &sounding : survey.soundings()) {
        sounding.East = 0.0;
    }
    EXPECT_THAT(lineColumns(survey).back(), Column(3, 150.0, 250.0));
    survey.sounding(2).Station = MissingValue;
    survey.sounding(2).East = MissingValue;
    EXPECT_THAT(lineColumns(survey),
                ElementsAre(Column(1, -100.0, 100.0), Column(3, 100.0, 300.0)));
}

TEST(LineColumns, OneSoundingIsAsWideAsItsLoop) {
    SurveyModel survey = lineSurvey(1);
    survey.control.XTxLength = 80.0F;
    EXPECT_THAT(lineColumns(survey), ElementsAre(Column(1, -40.0, 40.0)));
    survey.control.XTxLength = std::numeric_limits<float>::quiet_NaN();
    EXPECT_THAT(lineColumns(survey), ElementsAre(Column(1, -0.5, 0.5)));
    EXPECT_THAT(lineColumns(SurveyModel{}), IsEmpty());
}

TEST(LineColumns, SoundingsOfAnotherTransmitterStayEmpty) {
    SurveyModel survey = lineSurvey(5);
    setSurveyType(survey.control, FixedLoop);
    survey.control.TxStn = 1.0;
    for (SoundingRecord &sounding : survey.soundings()) {
        sounding.TxStn = 1.0;
    }
    survey.sounding(3).TxStn = 2.0;
    EXPECT_THAT(lineColumns(survey), ElementsAre(Column(1, -25.0, 25.0), Column(2, 25.0, 75.0),
                                                 Column(4, 125.0, 175.0), Column(5, 175.0, 225.0)));
    survey.sounding(3).East = survey.sounding(2).East; // stands where one of this loop stands
    EXPECT_THAT(lineColumns(survey)[1], Column(2, 25.0, 100.0));
}

TEST(LineColumns, AreFoundByDistance) {
    const SurveyModel survey = lineSurvey(3);
    const std::vector<LineColumn> columns = lineColumns(survey);
    EXPECT_EQ(columnAt(columns, -26.0), -1);
    EXPECT_EQ(columnAt(columns, -24.0), 0);
    EXPECT_EQ(columnAt(columns, 26.0), 1);
    EXPECT_EQ(columnAt(columns, 126.0), -1);
}

} // namespace
} // namespace keldrin
