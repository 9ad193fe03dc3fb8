#include "physics/interpolation.h"
#include "physics/table_search.h"
#include "support/message_recorder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace keldrin {
namespace {

using testing::ElementsAre;

constexpr double NotGivenSlope = 1.0e6;
constexpr std::array<double, 2> NoSlopes = {NotGivenSlope, -NotGivenSlope};

TEST(TableSearch, EveryHintGivesTheLastPointNotBeyond) {
    std::vector<double> rising = {1, 2, 2, 5, 7, 8, 11};
    std::vector<double> falling(rising.rbegin(), rising.rend());
    for (const auto &table : {rising, falling}) {
        const bool up = table.front() < table.back();
        for (int halves = 0; halves <= 24; ++halves) {
            const double x = 0.5 * halves;
            const auto last = std::count_if(table.begin(), table.end(),
                                            [&](double p) { return up ? p <= x : p >= x; });
            for (int hint = -3; hint <= 12; ++hint) {
                EXPECT_EQ(tableIndex<double>(table, x, hint), last) << x << ' ' << hint;
            }
        }
    }
    EXPECT_EQ(tableIndex<double>({}, 1.0, 0), 0);
    EXPECT_EQ(tableIndex<double>(std::vector{5.0}, 1.0, 0), 1);
}

TEST(P1Intrp, ExtendsByGivenSlopesOrTheEndInterval) {
    const std::vector<double> X = {0, 1, 3};
    const std::vector<double> Y = {10, 20, 0};
    const auto at = [&](double x, std::array<double, 2> S) {
        return P1Intrp_R8(X, Y, S, x);
    };
    EXPECT_EQ(at(0.25, NoSlopes), 12.5);
    EXPECT_EQ(at(2.5, NoSlopes), 5.0);
    EXPECT_EQ(at(-1.0, NoSlopes), 0.0);
    EXPECT_EQ(at(4.0, NoSlopes), -10.0);
    EXPECT_EQ(at(-2.0, {3.0, 0.0}), 4.0);
    EXPECT_EQ(at(9.0, {3.0, 0.0}), 0.0);
    EXPECT_EQ(at(0.0, {3.0, 0.0}), 10.0);
    EXPECT_EQ(at(3.0, {3.0, 0.0}), 0.0);
    // A falling table: every x counts as left of the first point.
    EXPECT_EQ(P1Intrp_R8(std::vector{3.0, 1.0, 0.0}, Y, {2.0, 0.0}, 1.5), 7.0);
    // Points of one place: the mean of both.
    EXPECT_EQ(P1Intrp_R8(std::vector{1.0, 1.0, 2.0}, Y, NoSlopes, 1.0), 15.0);
    EXPECT_EQ(P1Intrp_R8(std::vector{1.0, 1.0}, std::vector{4.0, 6.0}, NoSlopes, 3.0), 5.0);
}

// At a tension of 0 parabolas are exact between interior points; at 1 the slopes are the chord's.
TEST(P2Intrp, FollowsParabolasAndTension) {
    const std::vector<double> X = {0, 1, 1.5, 4, 6, 7};
    std::vector<double> Y;
    std::vector<float> X4(X.begin(), X.end());
    std::vector<float> Y4;
    const auto parabola = [](double x) {
        return 2.0 * x * x - 3.0 * x + 1.0;
    };
    for (const double x : X) {
        Y.push_back(parabola(x));
        Y4.push_back(static_cast<float>(Y.back()));
    }
    const std::array<double, 2> S = {-3.0, 25.0}; // the parabola's own
    for (int eighths = 0; eighths <= 56; ++eighths) {
        const double x = 0.125 * eighths;
        EXPECT_NEAR(P2Intrp_R8(X, Y, S, 0.0, x), parabola(x), 1e-12) << x;
        EXPECT_NEAR(P2Intrp_R4(X4, Y4, {-3.0F, 25.0F}, 0.0F, static_cast<float>(x)),
                    static_cast<float>(parabola(x)), 1e-4F)
            << x;
        EXPECT_NEAR(P2Intrp_R8(X, Y, S, 1.0, x), P1Intrp_R8(X, Y, NoSlopes, x), 1e-12) << x;
    }
    EXPECT_DOUBLE_EQ(P2Intrp_R8(X, Y, S, 0.0, -1.0), 1.0 + 3.0);
    EXPECT_DOUBLE_EQ(P2Intrp_R8(X, Y, S, 0.0, 8.0), parabola(7.0) + 25.0);
    EXPECT_DOUBLE_EQ(P2Intrp_R8(X, Y, NoSlopes, 0.0, -1.0), 2.0); // the first chord, slope -1
    const std::vector<double> close = {0.0, 1.0, 1.000001, 2.0};
    EXPECT_EQ(P2Intrp_R8(close, std::vector{0.0, 1.0, 3.0, 4.0}, NoSlopes, 0.0, 1.0000005), 2.0);
    EXPECT_EQ(P2Intrp_R8(std::vector{0.0, 2.0}, std::vector{1.0, 5.0}, S, 0.0, 3.0), 7.0);
    EXPECT_EQ(P2Intrp_R8(std::vector{1.0, 1.0}, std::vector{4.0, 6.0}, S, 0.0, 9.0), 4.0);
}

TEST(P2Intrp0DX, IsTheSameOnEvenTablesAndFlatBeyond) {
    const std::vector<double> X = {10, 12, 14, 16, 18};
    const std::vector<double> Y = {1, 4, 2, 2, 7};
    for (int quarters = 48; quarters < 64; ++quarters) {
        const double x = 0.25 * quarters;
        EXPECT_NEAR(P2Intrp0_DX_R8(10, 2, Y, 0.3, x), P2Intrp_R8(X, Y, NoSlopes, 0.3, x), 1e-12);
    }
    EXPECT_EQ(P2Intrp0_DX_R8(10, 2, Y, 0.0, 18.0), 7.0);
    EXPECT_EQ(P2Intrp0_DX_R8(10, 2, Y, 0.0, 30.5), 7.0);
    EXPECT_EQ(P2Intrp0_DX_R4(10, 2, std::vector{1.0F, 4.0F}, 0.0F, 3.5F), 1.0F);
}

TEST(Interpolation, AnEmptyTableIsReportedAndNoInputReachesBeyondTheTable) {
    MessageRecorder messages;
    EXPECT_EQ(P1Intrp_R4({}, {}, {}, 1.0F), 0.0F);
    EXPECT_EQ(P1Intrp_R8({}, {}, {}, 1.0), 0.0);
    EXPECT_EQ(P2Intrp_R4({}, {}, {}, 0.0F, 1.0F), 0.0F);
    EXPECT_EQ(P2Intrp0_DX_R8(0.0, 1.0, {}, 0.0, 1.0), 0.0);
    EXPECT_THAT(messages.errors,
                ElementsAre("P1Intrp_R4.ERROR: NP<1, no tabulated values to interpolate.",
                            "P1Intrp_R8.ERROR: NP<1, no tabulated values to interpolate.",
                            "P2Intrp_R4.ERROR: NP < 1", "P2Intrp0_DX_R8.ERROR: NP < 1"));
    constexpr double inf = std::numeric_limits<double>::infinity();
    const std::vector<double> odd = {3, -inf, 9, std::nan(""), 2};
    int hint = 77;
    for (const double x : {-inf, -1.0e300, 2.5, 1.0e300, inf, std::nan("")}) {
        P1Intrp_R8(odd, odd, NoSlopes, x, &hint);
        EXPECT_TRUE(hint >= 1 && hint <= 4);
        P2Intrp_R8(odd, odd, NoSlopes, 0.5, x, &hint);
        P2Intrp0_DX_R8(0.0, x, odd, 0.5, 1.0);
        P2Intrp0_DX_R4(0.0F, 1.0F, std::vector{1.0F, 2.0F}, 0.5F, static_cast<float>(x));
    }
    EXPECT_EQ(P1Intrp_R8(std::vector{1.0}, std::vector{8.0}, NoSlopes, 5.0), 8.0);
}

} // namespace
} // namespace keldrin
