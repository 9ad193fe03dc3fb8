#include "text/edit_distance.h"
#include "text/julian_day.h"

#include <gtest/gtest.h>

#include <utility>

namespace keldrin {
namespace {

TEST(JulianDay, KnownDays) {
    const std::pair<const char *, int> cases[] = {
        {"2000-01-01", 2451545}, {"1/1/2000", 2451545},   {"1858-11-17", 2400001},
        {"1900-02-28", 2415079}, {"1900-03-01", 2415080}, {"2020-02-29", 2458909},
        {"3/1/20", 2458910},     {"1970-01-01", 2440588}, {"70-1-1", 2440588},
        {" 12/31/69", 2477112},  {"1/1/2000 ", 2451545}};
    for (const auto &[text, expected] : cases) {
        int day = 0;
        EXPECT_EQ(Str_to_iJulianDay(text, -5, day), 0) << text;
        EXPECT_EQ(day, expected) << text;
    }
}

TEST(JulianDay, FailuresGiveTheDefaultAlsoFromTheMemo) {
    julianDayMemo() = {};
    for (const char *text : {"!@#$%^&", "2020-01", "-1-2", "2020--1", "1/2/", "13/1/2000",
                             "2020-1-32", "a/b/c", "a/b/c", "1/1/99999999"}) {
        int day = 0;
        EXPECT_EQ(Str_to_iJulianDay(text, -5, day), 1) << text;
        EXPECT_EQ(day, -5) << text;
    }
    int day = 0;
    EXPECT_EQ(Str_to_iJulianDay(" ", -5, day), -1);
    EXPECT_EQ(Str_to_iJulianDay("****", -5, day), -1);
}

TEST(EditDistance, OptimalStringAlignment) {
    EXPECT_EQ(Str_Edit_Distance("Station", "STATION "), 0);
    EXPECT_EQ(Str_Edit_Distance("kitten", "sitting"), 3);
    EXPECT_EQ(Str_Edit_Distance("ab", "ba"), 1);
    EXPECT_EQ(Str_Edit_Distance("CA", "ABC"), 3); // no text is edited twice
    EXPECT_EQ(Str_Edit_Distance("", "abc"), 0);
    EXPECT_EQ(Str_Edit_Distance("abc", "  "), 0);
}

} // namespace
} // namespace keldrin
