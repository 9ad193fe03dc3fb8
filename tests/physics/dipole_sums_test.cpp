#include "physics/dipole_kernels.h"
#include "physics/dipole_lanes.h"
#include "physics/loop_field.h"

#include <gmock/gmock.h>

#include <bit>
#include <cmath>
#include <cstdint>

namespace keldrin {
namespace {

struct Place {
    float x, y, Lx, Ly;
};

/// The first node of the grid of a loop with sides of 100 m.
const float FirstNode = 100.0F * LoopGrid.x[0] - 50.0F;

const Place Places[] = {
    {400, 120, 300, 300},                       // every distance of its own
    {-250, 0, 100, 100},                        // pairs of equal distances
    {0, 0, 100, 80},                            // four of each, and a dipole under the receiver
    {FirstNode, FirstNode, 100, 100},           // another one there
    {FirstNode + 5.0e-4F, FirstNode, 100, 100}, // one that is too near
    {1.0e10F, -3.0e9F, 1.0e5F, 0.1F},
};

// From one branch for all dipoles through ranges that begin inside a vector to the other end.
template <class Check>
void atManyThetas(const Check &check) {
    for (const Place &place : Places) {
        for (float theta = 1.0e-7F; theta < 3.0e4F; theta *= 1.13F) {
            check(place, theta);
        }
    }
}

std::uint32_t bits(float value) {
    return std::bit_cast<std::uint32_t>(value);
}

bool sameBits(Response a, Response b) {
    return bits(a.R) == bits(b.R) && bits(a.S) == bits(b.S);
}

/// The documented order: dipole by dipole along the rows, every fourth one into the same partial
/// sum.
template <class Kernel>
Response sumInOrder(const Place &place, float theta, const Kernel &kernel) {
    Response sum[4];
    for (std::size_t i = 0; i < GridSize; ++i) {
        const float dx = 0.5F * place.Lx + place.x - LoopGrid.x[i] * place.Lx;
        const float dy = 0.5F * place.Ly + place.y - LoopGrid.y[i] * place.Ly;
        const float rho = std::sqrt(dx * dx + dy * dy);
        sum[i % 4] = sum[i % 4] + kernel(i, dx, rho, theta);
    }
    return (sum[0] + sum[1]) + (sum[2] + sum[3]);
}

TEST(DipoleSums, KeepTheOrderOfTheGridThoughTheyGoByDistance) {
    atManyThetas([](const Place &place, float theta) {
        const DipolePlan plan = makeDipolePlan(place.x, place.y, place.Lx, place.Ly);
        const Response Z =
            sumInOrder(place, theta, [](std::size_t i, float /*dx*/, float rho, float at) {
                return LoopGrid.weight[i] * Dipole_ZKernel(rho, at);
            });
        const Response X =
            sumInOrder(place, theta, [](std::size_t i, float dx, float rho, float at) {
                const float factor = LoopGrid.weight[i] / (rho < 0.001F ? 0.001F : rho);
                return (dx * factor) * Dipole_HKernel(rho, at);
            });
        EXPECT_TRUE(sameBits(PlainDipoleSums.vertical(plan, theta), Z))
            << place.x << ' ' << place.y << ' ' << theta;
        EXPECT_TRUE(sameBits(PlainDipoleSums.radial(plan, theta).X, X))
            << place.x << ' ' << place.y << ' ' << theta;
    });
}

TEST(DipoleSums, GiveTheSameBitsOnEveryProcessor) {
    for (const DipoleSums *const *sums = availableDipoleSums(); *sums != nullptr; ++sums) {
        SCOPED_TRACE((*sums)->name);
        atManyThetas([&](const Place &place, float theta) {
            const DipolePlan plan = makeDipolePlan(place.x, place.y, place.Lx, place.Ly);
            const HorizontalResponse plain = PlainDipoleSums.radial(plan, theta);
            const HorizontalResponse other = (*sums)->radial(plan, theta);
            EXPECT_TRUE(sameBits(other.X, plain.X)) << place.x << ' ' << theta;
            EXPECT_TRUE(sameBits(other.Y, plain.Y)) << place.x << ' ' << theta;
            EXPECT_TRUE(
                sameBits((*sums)->vertical(plan, theta), PlainDipoleSums.vertical(plan, theta)))
                << place.x << ' ' << theta;
        });
    }
}

// A sounding's view serves all its windows, whatever was asked of it before.
TEST(DipoleSums, AViewGivesWhatFreshOnesGive) {
    const LoopView outside = loopView(150.0F, -40.0F, 100.0F, 80.0F);
    const LoopView inside = loopView(30.0F, -40.0F, 100.0F, 80.0F);
    for (const ComponentWords &words : {ComponentWords{1, 0, 1}, ComponentWords{0, 1, 0}}) {
        for (const float t : {1.0e-1F, 1.0e-6F, 3.0e-4F}) {
            EXPECT_TRUE(sameBits(Loop_Field(outside, t, words, 0.02F),
                                 Loop_Field(150.0F, -40.0F, 100.0F, 80.0F, t, words, 0.02F)));
            EXPECT_TRUE(sameBits(Loop_Field(inside, t, words, 0.02F),
                                 Loop_Field(30.0F, -40.0F, 100.0F, 80.0F, t, words, 0.02F)));
        }
    }
}

} // namespace
} // namespace keldrin
