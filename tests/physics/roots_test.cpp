#include "physics/roots.h"
#include "support/message_recorder.h"

#include <gmock/gmock.h>

#include <cmath>

namespace keldrin {
namespace {

using testing::ElementsAre;

double cubic(double x) {
    return x * x * x - 8.0;
}

TEST(RootSecant, ReachesTheRootTheBoundOrTheEndOfItsPasses) {
    MessageRecorder messages;
    const Root found = Root_Secant(cubic, 5.0, 4.0, 0.0, 10.0, 1.0e-10);
    EXPECT_NEAR(found.root, 2.0, 1e-9);
    EXPECT_EQ(found.error, 0);
    const Root atOnce = Root_Secant(cubic, 7.0, 2.0, 0.0, 10.0, 1.0e-10);
    EXPECT_EQ(atOnce.root, 2.0);
    EXPECT_EQ(atOnce.count, 2);
    const Root low = Root_Secant(cubic, 5.0, 4.0, 3.5, 10.0, 1.0e-10);
    EXPECT_EQ(low.root, 3.5);
    EXPECT_EQ(low.error, 0);
    EXPECT_THAT(messages.errors, ElementsAre());
    // A function that only tends to 0.
    const Root never = Root_Secant([](double x) { return std::exp(-x); }, 0.0, 0.1, -1e9, 1e9, 0.0);
    EXPECT_EQ(never.error, 1);
    EXPECT_EQ(never.count, 32);
    EXPECT_THAT(messages.errors, ElementsAre("WARNING: Root_Secant exceeded 30 iterations"));
}

TEST(RootSecant, HandsOverABracketWithItsCount) {
    const Root root = Root_Secant(cubic, 0.0, 5.0, -10.0, 10.0, 1.0e-10);
    EXPECT_NEAR(root.root, 2.0, 1e-9);
    EXPECT_EQ(root.count, 2 + Root_Ridder(cubic, 0.0, 5.0, -8.0, 117.0, 1.0e-10).count);
}

TEST(RootRidder, FindsABracketedRootWhateverTheOrderOfItsEnds) {
    const Root rising = Root_Ridder(cubic, 0.0, 9.0, -8.0, 721.0, 1.0e-12);
    const Root falling = Root_Ridder(cubic, 9.0, 0.0, 721.0, -8.0, 1.0e-12);
    EXPECT_NEAR(rising.root, 2.0, 1e-10);
    EXPECT_NEAR(falling.root, 2.0, 1e-10);
    EXPECT_LT(rising.count, 30);
}

TEST(RootRidder, NoInputStopsTheProgram) {
    MessageRecorder messages;
    EXPECT_EQ(Root_Ridder(cubic, 3.0, 4.0, 19.0, 56.0, 1e-9).error, 1);
    EXPECT_EQ(Root_Ridder(cubic, 3.0, 4.0, 19.0, 56.0, 1e-9).root, 3.0);
    EXPECT_THAT(messages.errors, ElementsAre("Root_Ridder.ERROR: Initial x1 & x2 must bracket root",
                                             messages.errors[0]));
    const double nan = std::nan("");
    EXPECT_EQ(Root_Ridder([&](double) { return nan; }, 0.0, 9.0, -8.0, 721.0, 1e-9).error, 1);
    EXPECT_EQ(Root_Ridder(cubic, 0.0, 9.0, nan, 721.0, 1e-9).error, 1);
    const auto holed = [&](double x) {
        return x == 4.5 ? nan : 1.0;
    };
    const Root kept = Root_Ridder(holed, 0.0, 9.0, -8.0, 721.0, 1e-9);
    EXPECT_EQ(kept.error, 1);
    EXPECT_EQ(kept.root, 0.0);
    // An end said to be a root by a function that contradicts it.
    const Root end = Root_Ridder([](double x) { return x + 1.0; }, 0.0, 7.0, 0.0, 8.0, -1.0);
    EXPECT_EQ(end.root, 0.0);
    EXPECT_EQ(end.error, 0);
}

TEST(RootRidder, RunsOutOfPassesWithAWarningAndTheBetterEnd) {
    MessageRecorder messages;
    // A step of 1 at 0.3 and a tolerance that cannot be met.
    const auto step = [](double x) {
        return x < 0.3 ? -1.0 : 2.0;
    };
    const Root root = Root_Ridder(step, 0.0, 1.0, -1.0, 2.0, -1.0);
    EXPECT_EQ(root.error, 0);
    EXPECT_NEAR(root.root, 0.3, 1e-6);
    EXPECT_EQ(root.count, 120);
    EXPECT_THAT(messages.errors, ElementsAre("WARNING: Root_Ridder exceeded maximum # iterations"));
}

} // namespace
} // namespace keldrin
