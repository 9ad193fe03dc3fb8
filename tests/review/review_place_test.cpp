#include "review/review_place.h"

#include "base/real.h"
#include "review_line.h"

#include <gtest/gtest.h>

namespace keldrin {
namespace {

constexpr std::array<TestWindow, 1> PlaceWindows = {TestWindow{0.2F, 5000.0F, 100.0F}};

SurveyModel lineOf(const std::vector<double> &stations) {
    SurveyModel survey;
    for (const double station : stations) {
        survey.hTrn.push_back(soundingOf(PlaceWindows));
        survey.hTrn.back().RxStn = station;
    }
    survey.SoundingCount = static_cast<int>(stations.size());
    return survey;
}

TEST(ReviewPlace, ANumberIsAStationAndElseAnOrdinal) {
    // 2 is the station of the third sounding and the ordinal of the second one.
    const SurveyModel survey = lineOf({1100.0, 1150.5, 2.0, 1150.5, -25.0, 12720.0625});
    const struct {
        const char *typed;
        int sounding;
    } cases[] = {
        {"1100", 1},   {" 1100.0 ", 1}, {"2", 3},   {"3", 3},         {"1", 1},          {"6", 6},
        {"1150.5", 2}, {"1150,5", 2},   {"-25", 5}, {"12720.063", 6}, {"1.1e3", 1},      {"0", 0},
        {"7", 0},      {"4.5", 0},      {"-1", 0},  {"1150", 0},      {"", 0},           {"n", 0},
        {"2 of 6", 0}, {"1e999", 0},    {"nan", 0}, {"inf", 0},       {"4294967297", 0},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(soundingNamed(survey, c.typed), c.sounding) << c.typed;
    }
}

TEST(ReviewPlace, IsShownWithItsStation) {
    const SurveyModel survey = lineOf({1100.0, 1150.5, MissingValue});
    EXPECT_EQ(placeText(survey, 1), "1 of 3  Stn 1100");
    EXPECT_EQ(placeText(survey, 2), "2 of 3  Stn 1150.5");
    EXPECT_EQ(placeText(survey, 3), "3 of 3");
}

} // namespace
} // namespace keldrin
