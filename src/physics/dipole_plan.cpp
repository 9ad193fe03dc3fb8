#include "physics/dipole_plan.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>

namespace keldrin {

namespace {

constexpr float TwoMu0 = 2.5132742e-6F;

constexpr float cubed(float x) {
    return x * x * x;
}
constexpr float fifthPower(float x) {
    return (x * x) * (x * x) * x;
}

/// The receiver as each dipole of the grid sees it, m.
struct DipoleOffsets {
    GridValues x;
    GridValues y;
    GridValues rho;
};

DipoleOffsets dipoleOffsets(float x, float y, float Lx, float Ly) {
    const float X0 = 0.5F * Lx + x;
    const float Y0 = 0.5F * Ly + y;
    DipoleOffsets offsets;
    for (std::size_t i = 0; i < GridSize; ++i) {
        offsets.x[i] = X0 - LoopGrid.x[i] * Lx;
        offsets.y[i] = Y0 - LoopGrid.y[i] * Ly;
        offsets.rho[i] = std::sqrt(offsets.x[i] * offsets.x[i] + offsets.y[i] * offsets.y[i]);
    }
    return offsets;
}

/// The dipoles of the grid from the nearest to the farthest.
std::array<std::uint8_t, GridSize> byDistance(const GridValues &rho) {
    // NaN has no place in an order; it spoils the sums wherever it stands.
    const auto key = [&](std::uint8_t i) {
        return std::tuple(std::isnan(rho[i]) ? NearestDipole : rho[i], i);
    };
    std::array<std::uint8_t, GridSize> order{};
    std::iota(order.begin(), order.end(), std::uint8_t{0});
    std::sort(order.begin(), order.end(),
              [&](std::uint8_t a, std::uint8_t b) { return key(a) < key(b); });
    return order;
}

void setDistances(DipolePlan &plan, const GridValues &rho) {
    const auto order = byDistance(rho);
    for (std::size_t i = 0; i < DistanceRoom; ++i) {
        const std::size_t dipole = order[std::min(i, GridSize - 1)];
        if (i < GridSize) {
            plan.place[dipole] = static_cast<std::uint8_t>(i);
        }
        const DipoleDistance distance = dipoleDistance(rho[dipole]);
        plan.rho[i] = distance.rho;
        plan.cubic[i] = distance.cubic;
        plan.fifth[i] = distance.fifth;
        plan.powerLaw[i] = distance.powerLaw;
    }
}

void setDirections(DipolePlan &plan, const DipoleOffsets &offset) {
    for (std::size_t i = 0; i < GridSize; ++i) {
        // A dipole that is too near has no field; its distance must not make 0/0 of it.
        const float rho = offset.rho[i] < NearestDipole ? NearestDipole : offset.rho[i];
        const float factor = LoopGrid.weight[i] / rho;
        plan.alongX[2 * i] = plan.alongX[2 * i + 1] = offset.x[i] * factor;
        plan.alongY[2 * i] = plan.alongY[2 * i + 1] = offset.y[i] * factor;
    }
}

} // namespace

DipoleDistance dipoleDistance(float rho) {
    return {rho, TwoMu0 / cubed(rho), fifthPower(rho), -9.0F / fifthPower(rho)};
}

DipolePlan makeDipolePlan(float x, float y, float Lx, float Ly) {
    const DipoleOffsets offsets = dipoleOffsets(x, y, Lx, Ly);
    DipolePlan plan;
    setDistances(plan, offsets.rho);
    setDirections(plan, offsets);
    plan.area = Lx * Ly;
    return plan;
}

} // namespace keldrin
