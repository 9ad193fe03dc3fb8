#include "engine/noise_estimate.h"

#include "base/index.h"
#include "base/sorting.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace keldrin {

namespace {

using Eigen::Index;
using Eigen::VectorXd;

constexpr std::size_t SoundingsBeside = 2;
constexpr Index WindowsBeside = 3;

/// Size of the data, geometric mean of three neighbours, so that a decay is followed exactly.
VectorXd smoothSize(const SoundingData &data, const VectorXd &calculated) {
    constexpr double smallest = 1.0E-30;
    const Index last = calculated.size() - 1;
    const VectorXd size =
        data.observed.cwiseAbs().cwiseMax(calculated.cwiseAbs()).cwiseMax(smallest);
    VectorXd smooth(size.size());
    for (Index k = 0; k <= last; ++k) {
        const double before = std::log(size[std::max<Index>(0, k - 1)]);
        const double after = std::log(size[std::min(last, k + 1)]);
        smooth[k] = std::exp((before + std::log(size[k]) + after) / 3.0);
    }
    return smooth;
}

/// The datum of a sounding whose window has this centre; -1 when there is none.
Index datumAt(const SoundingScatter &sounding, float centre) {
    const std::vector<std::size_t> &windows = sounding.data->windows;
    const auto found = std::find_if(windows.begin(), windows.end(), [&](std::size_t window) {
        return sounding.record->TWcenter[window] == centre;
    });
    return found == windows.end() ? -1 : static_cast<Index>(found - windows.begin());
}

/// The noise of a component over the scatter of a vector's length: 1.5 where all is noise, 1 where
/// the field is much larger (Rice 1944).
double lengthFactor(double scatter) {
    constexpr double ofNoiseAlone = 0.42; // of the length: 0.67 / 1.60 for three components
    const double share = scatter < ofNoiseAlone ? scatter / ofNoiseAlone : 1.0;
    return 1.0 + 0.5 * share * share;
}

} // namespace

VectorXd scatterOf(const SoundingData &data, const VectorXd &calculated) {
    const Index count = calculated.size();
    if (count < 3) {
        return {};
    }
    const double unit = std::sqrt(1.5); // of the difference of one value and the mean of two
    const VectorXd size = smoothSize(data, calculated);
    const VectorXd relative = (data.observed - calculated).cwiseQuotient(size);
    VectorXd scatter(count);
    for (Index k = 0; k < count; ++k) {
        const Index middle = std::clamp<Index>(k, 1, count - 2);
        const double beside = 0.5 * (relative[middle - 1] + relative[middle + 1]);
        scatter[k] = size[k] * std::fabs(relative[middle] - beside) / unit;
    }
    return scatter;
}

VectorXd noiseNear(std::span<const SoundingScatter> line, std::size_t place) {
    const SoundingScatter &own = line[place];
    VectorXd noise = VectorXd::Zero(own.data->observed.size());
    if (own.scatter->size() == 0) {
        return noise;
    }
    const std::size_t from = place > SoundingsBeside ? place - SoundingsBeside : 0;
    const std::size_t to = std::min(line.size(), place + SoundingsBeside + 1);
    std::vector<double> near;
    for (Index k = 0; k < noise.size(); ++k) {
        const float centre = own.record->TWcenter[own.data->windows[asIndex(k)]];
        near.clear();
        for (const SoundingScatter &sounding : line.subspan(from, to - from)) {
            const Index last = sounding.scatter->size() - 1;
            const Index datum = last < 0 ? -1 : datumAt(sounding, centre);
            if (datum >= 0) {
                const Index first = std::max<Index>(0, datum - WindowsBeside);
                near.insert(near.end(), sounding.scatter->data() + first,
                            sounding.scatter->data() + std::min(last, datum + WindowsBeside) + 1);
            }
        }
        noise[k] = MedianToDeviation * upperMedian(near);
        if (own.data->components > 1) {
            noise[k] *= lengthFactor(noise[k] / std::fabs(own.data->observed[k]));
        }
    }
    return noise;
}

} // namespace keldrin
