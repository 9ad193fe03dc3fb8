#include "engine/smoothness.h"

#include "base/index.h"
#include "base/sorting.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace keldrin {

namespace {

/// One square: the sum of coefficient times m over up to three layers from `first`, less `target`.
struct Square {
    Eigen::Index first = 0;
    int layers = 0;
    std::array<double, 3> coefficient{};
    double target = 0.0;

    [[nodiscard]] double valueAt(const Eigen::VectorXd &m) const {
        double value = -target;
        for (int i = 0; i < layers; ++i) {
            value += coefficient[asIndex(i)] * m[first + i];
        }
        return value;
    }
};

/// What lies between layers k and k + 1.
struct Boundary {
    double v; ///< distance of the middles in 1/16 decades
    double w; ///< weight
};

std::vector<Boundary> boundariesOf(const LayerPrior &prior) {
    constexpr double perDecade = 16.0;
    constexpr double leastDistance = 0.1;
    std::vector<Boundary> boundaries;
    double top = 0.0;
    for (std::size_t k = 0; k + 1 < prior.thickness.size(); ++k) {
        const double bottom = top + prior.thickness[k];
        const double middle = 0.5 * (top + bottom);
        const double next = bottom + 0.5 * prior.thickness[k + 1];
        const auto i = static_cast<Eigen::Index>(k);
        boundaries.push_back({std::max(leastDistance, perDecade * std::log10(next / middle)),
                              std::sqrt(prior.dzW[i] * prior.dzW[i + 1])});
        top = bottom;
    }
    return boundaries;
}

template <class Visit>
void forEachSquare(const LayerPrior &prior, const SmoothnessWeights &weights, Visit visit) {
    const std::vector<Boundary> boundaries = boundariesOf(prior);
    for (std::size_t k = 0; k < boundaries.size(); ++k) {
        const double c = weights.dz / 3.0 * boundaries[k].w / std::sqrt(boundaries[k].v);
        visit(Square{static_cast<Eigen::Index>(k), 2, {-c, c, 0.0}});
    }
    for (std::size_t k = 1; k < boundaries.size(); ++k) {
        const auto [above, wAbove] = boundaries[k - 1];
        const auto [below, wBelow] = boundaries[k];
        const double c =
            weights.dzz / 3.0 * std::sqrt(wAbove * wBelow) / std::sqrt(0.5 * (above + below));
        visit(Square{
            static_cast<Eigen::Index>(k - 1), 3, {c / above, -c / above - c / below, c / below}});
    }
    const double root = std::sqrt(static_cast<double>(prior.background.size()));
    for (Eigen::Index k = 0; k < prior.background.size(); ++k) {
        const double c = weights.dp / (prior.deviation[k] * root);
        visit(Square{k, 1, {c, 0.0, 0.0}, c * prior.background[k]});
    }
}

/// Model files hold thicknesses to about 0.002 length units, twice that at high elevations.
bool sameLayers(const std::vector<double> &a, const std::vector<double> &b) {
    constexpr double relative = 0.01;
    constexpr double absolute = 0.02; // m
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](double x, double y) {
        return std::fabs(x - y) <= absolute + relative * std::max(x, y);
    });
}

double medianAboveZero(std::vector<double> values) {
    std::erase_if(values, [](double value) { return !(value > 0.0); });
    return values.empty() ? 1.0 : upperMedian(std::move(values));
}

} // namespace

SmoothnessWeights smoothnessWeights(const ControlValues &control) {
    return {static_cast<double>(control.dpWeight), static_cast<double>(control.dxWeight),
            static_cast<double>(control.dzWeight), static_cast<double>(control.dzzWeight)};
}

void addSmoothness(const LayerPrior &prior, const SmoothnessWeights &weights,
                   const Eigen::VectorXd &m, Eigen::MatrixXd &matrix, Eigen::VectorXd &gradient) {
    forEachSquare(prior, weights, [&](const Square &square) {
        const double value = square.valueAt(m);
        for (int i = 0; i < square.layers; ++i) {
            const double a = square.coefficient[asIndex(i)];
            gradient[square.first + i] += a * value;
            for (int j = 0; j < square.layers; ++j) {
                matrix(square.first + i, square.first + j) += a * square.coefficient[asIndex(j)];
            }
        }
    });
}

double smoothnessSum(const LayerPrior &prior, const SmoothnessWeights &weights,
                     const Eigen::VectorXd &m) {
    double sum = 0.0;
    forEachSquare(prior, weights, [&](const Square &square) {
        const double value = square.valueAt(m);
        sum += value * value;
    });
    return sum;
}

std::vector<double> lateralLinks(const std::vector<LayerPrior> &priors,
                                 const std::vector<double> &spacings,
                                 const SmoothnessWeights &weights) {
    constexpr double unit = 1.5;
    const double usual = medianAboveZero(spacings);
    std::vector<double> links;
    for (std::size_t i = 0; i + 1 < priors.size(); ++i) {
        const double closeness =
            spacings[i] > 0.0 ? std::clamp(usual / spacings[i], 0.1, 10.0) : 10.0;
        const double weight = unit * weights.dx;
        links.push_back(sameLayers(priors[i].thickness, priors[i + 1].thickness)
                            ? weight * weight * closeness
                            : 0.0);
    }
    return links;
}

} // namespace keldrin
