#include "exact_response.h"

#include "physics/coincident.h"
#include "physics/dipole_kernels.h"
#include "physics/loop_center.h"
#include "physics/loop_field.h"
#include "physics/side_kernel.h"
#include "physics/wire_kernel.h"

#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <functional>
#include <limits>

namespace keldrin {
namespace {

constexpr float LoopGround = 0.02F;
const double GroundS = static_cast<double>(LoopGround);

/// Difference to the exact value or slope, whichever is larger, over the sum of both magnitudes.
double errorOf(Response got, const std::function<double(double)> &response) {
    const double R = response(GroundS);
    const double slope = exact::slope(response, GroundS);
    return std::max(std::fabs(static_cast<double>(got.R) - R),
                    std::fabs(static_cast<double>(got.S) - slope)) /
           (std::fabs(R) + std::fabs(slope));
}

// The loop is the dipoles of its area, wherever the receiver is: that holds signs, sides, axes and
// the change from wires to dipoles in one.
TEST(LoopField, IsTheDipolesOfTheLoopsArea) {
    struct Case {
        float x, y, Lx, Ly;
        double bound;
    };
    const Case cases[] = {
        {30, 20, 100, 60, 2e-5},       // inside, off the axes
        {-49, -29, 100, 60, 5e-5},     // in a corner
        {0, -20, 100, 60, 1e-4},       // on an axis: single precision
        {30, 0, 60, 100, 1e-3},        // on the other, at the wire's line
        {0, 0, 100, 60, 5e-5},         // the centre
        {100, 35, 100, 60, 2e-5},      // x = Lx still counts as inside
        {100.01F, -35, 100, 60, 1e-5}, // beyond it
        {80, 60.01F, 100, 60, 1e-5},   // beyond y = Ly alone
        {-300, 200, 100, 60, 2e-4},
    };
    for (const Case &c : cases) {
        for (const float t : {3.0e-5F, 1.0e-3F}) {
            const auto time = static_cast<double>(t);
            const auto x = static_cast<double>(c.x);
            const auto y = static_cast<double>(c.y);
            const auto Lx = static_cast<double>(c.Lx);
            const auto Ly = static_cast<double>(c.Ly);
            const auto alongX = [=](double s) {
                return exact::loopX(x, y, Lx, Ly, time, s);
            };
            const auto alongY = [=](double s) {
                return exact::loopX(y, x, Ly, Lx, time, s);
            };
            const auto upwards = [=](double s) {
                return exact::loopZ(x, y, Lx, Ly, time, s);
            };
            const Response X = Loop_FieldX(c.x, c.y, c.Lx, c.Ly, t, LoopGround);
            const Response Y = Loop_FieldY(c.x, c.y, c.Lx, c.Ly, t, LoopGround);
            const Response Z = Loop_FieldZ(c.x, c.y, c.Lx, c.Ly, t, LoopGround);
            EXPECT_LE(errorOf(Z, upwards), c.bound) << x << ' ' << y << ' ' << t;
            if (c.x != 0) {
                EXPECT_LE(errorOf(X, alongX), 1e-3) << x << ' ' << y << ' ' << t;
            } else {
                EXPECT_EQ(X.R, 0.0F);
            }
            if (c.y != 0) {
                EXPECT_LE(errorOf(Y, alongY), 1e-3) << x << ' ' << y << ' ' << t;
            } else {
                EXPECT_EQ(Y.S, 0.0F);
            }
        }
    }
}

// The box in which the loop is four wires has the whole side lengths, its edge included.
TEST(LoopField, ChangesToDipolesBeyondTheWholeSideLengths) {
    const auto isDipoles = [](float x, float y) {
        const float t = 1.0e-4F;
        return Loop_FieldZ(x, y, 100, 60, t, LoopGround).R ==
                   Dipole_ZSum(x, y, 100, 60, t, LoopGround).R &&
               Loop_FieldX(x, y, 100, 60, t, LoopGround).R ==
                   Dipole_HSum(x, y, 100, 60, t, LoopGround).X.R;
    };
    EXPECT_FALSE(isDipoles(70, 10));
    EXPECT_FALSE(isDipoles(100, 50));
    EXPECT_FALSE(isDipoles(50, -60));
    EXPECT_TRUE(isDipoles(-100.0001F, 50));
    EXPECT_TRUE(isDipoles(50, 60.0001F));
}

TEST(LoopField, TheCentreOfSquaresAndRectangles) {
    struct Sides {
        float Lx, Ly;
    };
    for (const Sides &sides : {Sides{100, 100}, Sides{100, 50}, Sides{50, 50.009F}}) {
        for (const float t : {1.0e-6F, 3.0e-5F, 1.0e-3F, 3.0e-2F}) {
            const auto upwards = [=](double s) {
                return exact::loopZ(0, 0, static_cast<double>(sides.Lx),
                                    static_cast<double>(sides.Ly), static_cast<double>(t), s);
            };
            EXPECT_LE(errorOf(Loop_CenterZ(sides.Lx, sides.Ly, t, LoopGround), upwards), 1e-3) << t;
        }
    }
}

TEST(LoopField, MagnitudeOfTheComponentsThatAreSwitchedOn) {
    const auto field = [](ComponentWords words, float x) {
        return Loop_Field(x, -35.0F, 100.0F, 60.0F, 1.0e-4F, words, LoopGround);
    };
    for (const float x : {40.0F, 140.0F}) {
        const Response X = Loop_FieldX(x, -35.0F, 100.0F, 60.0F, 1.0e-4F, LoopGround);
        const Response Y = Loop_FieldY(x, -35.0F, 100.0F, 60.0F, 1.0e-4F, LoopGround);
        const Response Z = Loop_FieldZ(x, -35.0F, 100.0F, 60.0F, 1.0e-4F, LoopGround);
        EXPECT_EQ(field({0, -2, 0}, x).R, std::fabs(Y.R));
        EXPECT_FLOAT_EQ(field({0, -2, 0}, x).S, Y.R < 0 ? -Y.S : Y.S);
        const Response all = field({0.5F, 1, 1}, x);
        EXPECT_EQ(all.R, std::sqrt(X.R * X.R + Y.R * Y.R + Z.R * Z.R));
        EXPECT_EQ(all.S, (X.R * X.S + Y.R * Y.S + Z.R * Z.S) / all.R);
        EXPECT_EQ(field({0, 0, 0}, x).R, 0.0F);
        EXPECT_EQ(field({0, 0, 0}, x).S, 0.0F);
    }
}

// No argument makes a kernel trap or hang, and single precision overflows to infinity.
TEST(LoopField, AnyArgumentsEnd) {
    constexpr float inf = std::numeric_limits<float>::infinity();
    const std::array values = {0.0F,    1.0F,     -1.0F, 50.0F, 1.0e-30F,
                               1.0e20F, -3.0e38F, inf,   -inf,  std::nanf("")};
    float sum = 0.0F;
    for (const float x : values) {
        for (const float L : values) {
            for (const float t : values) {
                for (const float s : values) {
                    sum += Loop_Field(x, 0.3F * x, L, L, t, {1, 1, 1}, s).S;
                    sum += Loop_Field(150.0F, x, 100.0F, L, t, {1, 1, 1}, s).S;
                    sum += Loop_CenterZ(L, x, t, s).S + Loop_CoincidentZ(L, t, s).S;
                    sum += Loop_CoincidentFloor(L, t, s) + Loop_CircleFloor(L, t, s);
                    sum += Wire_Romberg(x, L, s, t, 1.0F).S + Side_ZKernelD(x, L, s, t).S;
                }
            }
        }
    }
    EXPECT_FALSE(std::isfinite(sum));
}

} // namespace
} // namespace keldrin
