#pragma once

#include <array>
#include <cstddef>
#include <span>

namespace keldrin {

// Gauss-Legendre rules on the unit interval, to seven digits (Abramowitz and Stegun, table 25.4).

template <std::size_t N>
struct GaussRule {
    std::array<float, N> nodes;
    std::array<float, N> weights;
};

inline constexpr GaussRule<1> Gauss1 = {{0.5F}, {1.0F}};

inline constexpr GaussRule<3> Gauss3 = {{0.1127017F, 0.5F, 0.8872983F},
                                        {0.2777778F, 0.4444444F, 0.2777778F}};

inline constexpr GaussRule<5> Gauss5 = {
    {0.0469101F, 0.2307653F, 0.5F, 0.7692347F, 0.9530899F},
    {0.1184634F, 0.2393144F, 0.2844444F, 0.2393144F, 0.1184634F}};

inline constexpr GaussRule<9> Gauss9 = {{0.0159199F, 0.0819844F, 0.1933143F, 0.3378733F, 0.5F,
                                         0.6621267F, 0.8066857F, 0.9180156F, 0.9840801F},
                                        {0.0406372F, 0.0903241F, 0.1303053F, 0.1561735F, 0.1651198F,
                                         0.1561735F, 0.1303053F, 0.0903241F, 0.0406372F}};

/// A rule of any number of points, for choosing one at run time.
struct GaussRuleView {
    std::span<const float> nodes;
    std::span<const float> weights;
};

template <std::size_t N>
constexpr GaussRuleView viewOf(const GaussRule<N> &rule) {
    return {rule.nodes, rule.weights};
}

} // namespace keldrin
