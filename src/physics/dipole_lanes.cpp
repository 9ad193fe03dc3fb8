// This file is compiled once for each kind of processor, with a name of its own for what it
// exports.

#include "physics/dipole_lanes.h"

#include "physics/dipole_branches.h"

#include <array>
#include <cstddef>
#include <cstring>

#ifndef KELDRIN_DIPOLE_SUMS
#define KELDRIN_DIPOLE_SUMS PlainDipoleSums
#define KELDRIN_DIPOLE_SUMS_NAME "plain"
#endif

namespace keldrin {

namespace {

// A kernel at every dipole: value and slope in turn.
struct alignas(32) PairedField {
    float pair[2 * DistanceRoom];
};

constexpr PairedFactors pairedWeights() {
    PairedFactors factors{};
    for (std::size_t i = 0; i < GridSize; ++i) {
        factors[2 * i] = factors[2 * i + 1] = LoopGrid.weight[i];
    }
    return factors;
}
constexpr PairedFactors Weights = pairedWeights();

// Evaluates one branch in whole vectors; what runs over its end is overwritten by the next branch.
template <int Branch, class Kernel>
void evaluateRange(const Kernel &kernel, const DipolePlan &plan, std::size_t begin, std::size_t end,
                   PairedField &__restrict field) {
    const float *const rho = plan.rho.data() + begin;
    const float *const cubic = plan.cubic.data() + begin;
    const float *const fifth = plan.fifth.data() + begin;
    const float *const powerLaw = plan.powerLaw.data() + begin;
    float *__restrict const pair = field.pair + 2 * begin;
    const std::size_t count = (end - begin + DipoleLanes - 1) / DipoleLanes * DipoleLanes;
    for (std::size_t i = 0; i < count; ++i) {
        const Response value =
            kernel.template at<Branch>(DipoleDistance{rho[i], cubic[i], fifth[i], powerLaw[i]});
        pair[2 * i] = value.R;
        pair[2 * i + 1] = value.S;
    }
}

// From the order of distances to that of the grid.
void orderAsGrid(const DipolePlan &plan, const PairedField &byDistance, PairedField &field) {
    for (std::size_t i = 0; i < GridSize; ++i) {
        const std::size_t place = plan.place.data()[i];
        std::memcpy(field.pair + 2 * i, byDistance.pair + 2 * place, 2 * sizeof(float));
    }
}

// Distances in the branches before this one.
template <int Branch, class Kernel>
std::size_t countBefore(const Kernel &kernel, const DipolePlan &plan) {
    const float *const rho = plan.rho.data();
    int count = 0;
    for (std::size_t i = 0; i < DistanceCount; ++i) {
        count += static_cast<int>(kernel.branchOf(rho[i]) < Branch);
    }
    return static_cast<std::size_t>(count);
}

template <class Kernel>
void evaluate(const Kernel &kernel, const DipolePlan &plan, PairedField &field) {
    const std::size_t first1 = countBefore<1>(kernel, plan);
    const std::size_t first2 = countBefore<2>(kernel, plan);
    const std::size_t first3 = countBefore<3>(kernel, plan);
    PairedField byDistance;
    evaluateRange<0>(kernel, plan, 0, first1, byDistance);
    evaluateRange<1>(kernel, plan, first1, first2, byDistance);
    evaluateRange<2>(kernel, plan, first2, first3, byDistance);
    evaluateRange<3>(kernel, plan, first3, DistanceCount, byDistance);
    orderAsGrid(plan, byDistance, field);
}

// Sum of factor * value over the grid, in four partial sums so that it is the same however it is
// compiled.
Response gridSum(const PairedFactors &factors, const PairedField &field) {
    constexpr std::size_t pairs = 4;
    const float *const factor = factors.data();
    float sum[2 * pairs] = {};
    for (std::size_t i = 0; i < 2 * GridSize; i += 2 * pairs) {
        for (std::size_t lane = 0; lane < 2 * pairs; ++lane) {
            sum[lane] += factor[i + lane] * field.pair[i + lane];
        }
    }
    return {(sum[0] + sum[2]) + (sum[4] + sum[6]), (sum[1] + sum[3]) + (sum[5] + sum[7])};
}

HorizontalResponse radialSums(const DipolePlan &plan, float theta) {
    PairedField field;
    evaluate(RadialKernel{theta}, plan, field);
    return {gridSum(plan.alongX, field), gridSum(plan.alongY, field)};
}

Response verticalSum(const DipolePlan &plan, float theta) {
    PairedField field;
    evaluate(VerticalKernel{theta}, plan, field);
    return gridSum(Weights, field);
}

} // namespace

extern const DipoleSums KELDRIN_DIPOLE_SUMS;
const DipoleSums KELDRIN_DIPOLE_SUMS = {KELDRIN_DIPOLE_SUMS_NAME, radialSums, verticalSum};

} // namespace keldrin
