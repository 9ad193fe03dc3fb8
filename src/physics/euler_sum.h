#pragma once

#include <array>
#include <cmath>
#include <cstddef>

namespace keldrin {

/// An alternating series under Euler's transformation, as far as its terms have arrived.
struct EulerSeries {
    static constexpr std::size_t MostTerms = 32;

    float sum = 0.0F;
    std::size_t terms = 0; ///< length of the row in use; 0 before the first term
    std::array<float, MostTerms> work{};
};

/// Takes the next term of an alternating series and improves its sum (van Wijngaarden's form of
/// Euler's transformation). Terms beyond the 32nd are not taken.
inline void Euler_Sum(EulerSeries &series, float term) {
    auto &[sum, terms, work] = series;
    if (terms == 0) {
        work[0] = term;
        terms = 1;
        sum = 0.5F * term;
        return;
    }
    if (terms == EulerSeries::MostTerms) {
        return;
    }
    // Builds the next row of repeated averages in place; `above` is the old row's entry.
    float above = work[0];
    work[0] = term;
    for (std::size_t i = 1; i < terms; ++i) {
        const float hold = work[i];
        work[i] = 0.5F * (work[i - 1] + above);
        above = hold;
    }
    work[terms] = 0.5F * (work[terms - 1] + above);
    if (std::fabs(work[terms]) <= std::fabs(work[terms - 1])) {
        sum += 0.5F * work[terms];
        ++terms;
    } else {
        sum += work[terms];
    }
}

} // namespace keldrin
