#include "physics/data_fit.h"

#include "base/index.h"
#include "base/sorting.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace keldrin {

namespace {

constexpr double LargestValue = 1.0E18;  ///< nV/(A m2); above it a value is a dummy
constexpr double AbsoluteFloor = 1.0E-4; ///< (nV/(A m2))^2
constexpr float LeastSensitivity = 3.0F; ///< of a layer that the data see

bool isVectorArray(int surveyType) {
    return surveyType == FixedLoop || surveyType == MovingLoop;
}

/// The upper median of the sizes; 0 for an empty list.
double medianSize(std::span<const double> residuals) {
    std::vector<double> sizes(residuals.size());
    std::transform(residuals.begin(), residuals.end(), sizes.begin(),
                   [](double r) { return std::fabs(r); });
    return upperMedian(std::move(sizes));
}

bool isValue(float value) {
    return isPresent(value) && std::fabs(static_cast<double>(value)) < LargestValue;
}

} // namespace

DataKind dataKind(const ControlValues &control, const SoundingRecord &record) {
    if (!isVectorArray(control.SurveyTypeIndex)) {
        return DataKind::Signed;
    }
    int most = 0;
    bool negative = false;
    for (std::size_t k = 0; k < windowCount(record); ++k) {
        most = std::max(most, componentCount(switchedOn(control, record, k)));
        negative = negative || record.TEMobs[k] < 0.0F;
    }
    return most == 1 && negative ? DataKind::Signed : DataKind::Magnitude;
}

std::array<bool, ComponentAxes> switchedOn(const ControlValues &control,
                                           const SoundingRecord &record, std::size_t window) {
    if (!isVectorArray(control.SurveyTypeIndex)) {
        return {false, false, true};
    }
    const auto &weights = record.TEMwgt[window];
    return {weights[0] != 0.0F, weights[1] != 0.0F, weights[2] != 0.0F};
}

int componentCount(const std::array<bool, ComponentAxes> &on) {
    return static_cast<int>(std::count(on.begin(), on.end(), true));
}

bool isUsable(const ControlValues &control, const SoundingRecord &record, std::size_t window) {
    const float error = record.TEMerr[window];
    return !isSkipped(error) && trueError(error) < control.DataCutoff &&
           std::fabs(static_cast<double>(record.TEMobs[window])) < LargestValue &&
           componentCount(switchedOn(control, record, window)) > 0;
}

double errorPercent(const ControlValues &control, const SoundingRecord &record,
                    std::size_t window) {
    return static_cast<double>(std::max(trueError(record.TEMerr[window]), control.ErrorFloor));
}

double standardError(const ControlValues &control, const SoundingRecord &record,
                     std::size_t window) {
    const auto value = static_cast<double>(record.TEMobs[window]);
    return errorPercent(control, record, window) / 100.0 * std::sqrt(value * value + AbsoluteFloor);
}

double residual(double observed, double calculated, double error) {
    const double slope = std::sqrt(observed * observed + 4.0 * error * error) / error;
    return (std::asinh(observed / (2.0 * error)) - std::asinh(calculated / (2.0 * error))) * slope;
}

double noisyMagnitude(double magnitude, int components, double error) {
    return std::sqrt(magnitude * magnitude + components * error * error);
}

double huberThreshold(std::span<const double> residuals) {
    return residuals.empty()
               ? UsualThreshold
               : UsualThreshold * std::max(1.0, MedianToDeviation * medianSize(residuals));
}

double huberWeight(double residual, double threshold) {
    const double size = std::fabs(residual);
    return size <= threshold ? 1.0 : threshold / size;
}

double misfitOf(std::span<const double> residuals) {
    if (residuals.empty()) {
        return 0.0;
    }
    const double threshold = huberThreshold(residuals);
    double sum = 0.0;
    for (const double r : residuals) {
        sum += huberWeight(r, threshold) * r * r;
    }
    return std::sqrt(sum / static_cast<double>(residuals.size()));
}

SoundingFit soundingFit(const ControlValues &control, const SoundingRecord &record) {
    SoundingFit fit;
    const std::size_t windows = windowCount(record);
    const DataKind kind = dataKind(control, record);
    fit.residuals.assign(windows, MissingValue);
    std::vector<double> usable;
    for (std::size_t k = 0; k < windows; ++k) {
        if (!isValue(record.TEMobs[k]) || !isValue(record.TEMcalc[k])) {
            continue;
        }
        const double error = standardError(control, record, k);
        auto calculated = static_cast<double>(record.TEMcalc[k]);
        if (kind == DataKind::Magnitude) {
            calculated =
                noisyMagnitude(calculated, componentCount(switchedOn(control, record, k)), error);
        }
        const double r = residual(static_cast<double>(record.TEMobs[k]), calculated, error);
        if (!std::isfinite(r)) {
            continue;
        }
        fit.residuals[k] = static_cast<float>(r);
        if (isUsable(control, record, k)) {
            usable.push_back(r);
        }
    }
    if (!usable.empty()) {
        fit.misfit = static_cast<float>(misfitOf(usable));
        fit.median = static_cast<float>(medianSize(usable));
    }
    return fit;
}

int seenLayers(const SoundingRecord &record) {
    const int layers = limited(record.NumLayer, 0, MaxLayers);
    int seen = 0;
    while (seen < layers && record.Rsns[asIndex(seen)] >= LeastSensitivity) {
        ++seen;
    }
    return seen;
}

} // namespace keldrin
