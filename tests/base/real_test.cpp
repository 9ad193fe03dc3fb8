#include "base/fixed_text.h"
#include "base/real.h"
#include "base/sorting.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace keldrin {
namespace {

using testing::ElementsAre;

TEST(FixedText, CutsAtACharacterAndForgetsTrailingBlanks) {
    EXPECT_EQ(FixedText<4>("abcdef").view(), "abcd");
    EXPECT_EQ(FixedText<4>("abc\xC3\xA9").view(), "abc");
    EXPECT_EQ(FixedText<4>("a   b").view(), "a");
    EXPECT_EQ(FixedText<8>("ab  "), FixedText<4>("ab"));
    EXPECT_TRUE(FixedText<8>("   ").isBlank());
    FixedText<8> text = "abcdef";
    text = text.view().substr(2);
    EXPECT_EQ(text.view(), "cdef");
}

TEST(Real, SpacingIsTheGapToTheNextNumber) {
    for (const double x : {1.0, 1.5, -1000.0, 0.1, 8040.0, 1.0E32}) {
        EXPECT_EQ(spacing(x), std::nextafter(std::fabs(x), 1.0E300) - std::fabs(x)) << x;
    }
    for (const float x : {1.0F, 3.75F, -16.0F, 1.0E-30F}) {
        EXPECT_EQ(spacing(x), std::nextafter(std::fabs(x), 1.0E30F) - std::fabs(x)) << x;
    }
    constexpr float least = std::numeric_limits<float>::min();
    for (const float x : {0.0F, -0.0F, 1.0E-40F, least, 8388608.0F * least, HUGE_VALF, NAN}) {
        EXPECT_EQ(spacing(x), least) << x;
    }
    EXPECT_EQ(spacing(16777216.0F * least), 2.0F * least);
    EXPECT_EQ(spacing(0.0), std::numeric_limits<double>::min());
    EXPECT_EQ(spacing(-HUGE_VAL), std::numeric_limits<double>::min());
}

TEST(Real, StationsMatchWithinAHundredSpacings) {
    EXPECT_TRUE(sameStation(std::nextafter(1000.0, 2000.0), 1000.0));
    EXPECT_FALSE(sameStation(1000.1, 1000.0));
    EXPECT_TRUE(sameFrequency(16.0F + 5 * spacing(16.0F), 16.0F));
    EXPECT_FALSE(sameFrequency(16.0F + 6 * spacing(16.0F), 16.0F));
}

// 100.001 less 100 is a little more than the 64-bit 0.001, and a little less than the 32-bit one.
TEST(Real, StationsOfAFileMatchWithinTheSinglePrecisionThousandth) {
    EXPECT_TRUE(sameFileStation(100.001, 100.0));
    EXPECT_TRUE(sameFileStation(100.0, 100.001));
    EXPECT_TRUE(sameFileStation(-0.001, 0.0));
    EXPECT_FALSE(sameFileStation(100.0011, 100.0));
}

TEST(Real, NaNIsAbsentAndLimitsToTheLowerBound) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(isPresent(nan));
    EXPECT_FALSE(isPresent(static_cast<float>(MissingValue)));
    EXPECT_EQ(limited(nan, 1.0F, 5.0F), 1.0F);
    EXPECT_EQ(nearestInt(nan), -2147483647 - 1);
    EXPECT_EQ(nearestInt(2.5F), 3);
    EXPECT_EQ(nearestInt(-2.5F), -3);
    EXPECT_EQ(nearestInt(-1.0E32F), -2147483647 - 1);
}

TEST(Sorting, KeysWithinTenSpacingsFallToTheNextKey) {
    const double close = 100.0 + 5 * spacing(100.0);
    const std::vector<std::vector<double>> keys = {{close, 100.0, 50.0}, {1.0, 2.0, 9.0}};
    EXPECT_THAT(indexSortByKeys(keys), ElementsAre(2, 0, 1));
}

TEST(Sorting, APermutationPutsEachValueWhereItsIndexSays) {
    std::vector<std::size_t> index = {0, 1, 2, 3, 4};
    do {
        std::vector<char> values = {'a', 'b', 'c', 'd', 'e'};
        permuteByIndex(std::span(values), index);
        for (std::size_t i = 0; i < index.size(); ++i) {
            ASSERT_EQ(values[i], "abcde"[index[i]]);
        }
    } while (std::next_permutation(index.begin(), index.end()));
}

TEST(Sorting, AnyOrderOfFloatsIsSortedNaNIncluded) {
    const std::vector<float> keys = {3, 1, 2, 1, std::numeric_limits<float>::quiet_NaN(), -5};
    EXPECT_EQ(indexSort(std::span(keys)).size(), keys.size());
    std::vector<float> values = {5, 1, 4, 2, 3};
    float kth = 0;
    EXPECT_EQ(selectKth(values, 3, kth), 0);
    EXPECT_EQ(kth, 3.0F);
    EXPECT_EQ(selectKth(values, 6, kth), 1);
    EXPECT_EQ(selectKth({}, 1, kth), 1);
}

} // namespace
} // namespace keldrin
