#include "engine/layer_grid.h"

#include "base/index.h"
#include "engine/layer_kernel.h"

#include <algorithm>
#include <cmath>

namespace keldrin {

namespace {

constexpr double DefaultError = 500.0; ///< percent, of a background that nobody has stated
constexpr double ThinnestLayer = 0.1;  ///< m
constexpr double DeepestGrid = 3.0E4;  ///< m, so that any file can hold its thicknesses

double diffusionDepth(double seconds, double resistivity) {
    return std::sqrt(2.0 * seconds * resistivity / VacuumPermeability);
}

/// The value that a share of all values does not exceed.
double quantile(std::vector<double> values, double share) {
    std::sort(values.begin(), values.end());
    const double place = share * static_cast<double>(values.size() - 1);
    return values[asIndex(std::lround(place))];
}

double geometricSum(double first, double factor, int count) {
    double sum = 0.0;
    for (int i = 0; i < count; ++i, first *= factor) {
        sum += first;
    }
    return sum;
}

/// The factor by which thicknesses must grow to reach a depth.
double growthFactor(double first, double depth, int layers) {
    double low = 1.0;
    double high = 2.0;
    while (geometricSum(first, high, layers) < depth) {
        high *= 2.0;
    }
    for (int i = 0; i < 100; ++i) {
        const double middle = 0.5 * (low + high);
        (geometricSum(first, middle, layers) < depth ? low : high) = middle;
    }
    return low;
}

double deviationOf(double percent) {
    return std::log1p(percent / 100.0);
}

/// Average over a layer of what is constant within layers of another grid.
class Overlap {
  public:
    Overlap(std::vector<double> bottoms, std::vector<double> values)
        : bottoms_(std::move(bottoms)), values_(std::move(values)) {}

    [[nodiscard]] double average(double top, double bottom) const {
        double sum = 0.0;
        double from = top;
        for (std::size_t i = 0; i < values_.size() && from < bottom; ++i) {
            const bool last = i + 1 == values_.size();
            const double to = last ? bottom : std::clamp(bottoms_[i], from, bottom);
            sum += (to - from) * values_[i];
            from = to;
        }
        return sum / (bottom - top);
    }

  private:
    std::vector<double> bottoms_; ///< of all values but the last
    std::vector<double> values_;
};

} // namespace

double metresPerUnit(const ControlValues &control) {
    return control.LengthUnitsIndex == Feet ? 0.3048 : 1.0;
}

std::optional<DepthRange> depthRange(const SoundingRecord &record, const SoundingData &data,
                                     const Eigen::VectorXd &noise, double resistivity) {
    constexpr double noisy = 0.3; // of the value
    constexpr double secondsPerMillisecond = 1.0E-3;
    std::optional<DepthRange> range;
    for (std::size_t i = 0; i < data.windows.size(); ++i) {
        const std::size_t k = data.windows[i];
        const auto datum = static_cast<Eigen::Index>(i);
        const auto centre = static_cast<double>(record.TWcenter[k]);
        const double half = 0.5 * static_cast<double>(record.TWwidth[k]);
        const double middle = std::hypot(centre, half); // of the window's edges
        if (!range) {
            const double first =
                diffusionDepth((middle - half) * secondsPerMillisecond, resistivity);
            range = DepthRange{first, first};
        }
        const double stated = static_cast<double>(trueError(record.TEMerr[k])) / 100.0;
        if (stated < noisy && noise[datum] < noisy * std::fabs(data.observed[datum])) {
            range->last = diffusionDepth((middle + half) * secondsPerMillisecond, resistivity);
        }
    }
    return range;
}

std::vector<double> layerGrid(std::span<const DepthRange> ranges, int atLeast) {
    constexpr double perDecade = 12.0;
    constexpr int fewest = 12;
    double top = 5.0;
    double bottom = 500.0;
    if (!ranges.empty()) {
        std::vector<double> first;
        std::vector<double> last;
        for (const DepthRange &range : ranges) {
            first.push_back(range.first);
            last.push_back(range.last);
        }
        top = std::clamp(0.25 * quantile(first, 0.25), 5.0 * ThinnestLayer, 0.25 * DeepestGrid);
        bottom = std::clamp(quantile(last, 0.75), 4.0 * top, DeepestGrid);
    }
    const int byDepth = static_cast<int>(std::ceil(perDecade * std::log10(bottom / top)));
    const int layers = std::min(MaxLayers, std::max({atLeast, fewest, byDepth}));
    double thickness = 0.2 * top;
    const double factor = growthFactor(thickness, bottom, layers);
    std::vector<double> grid;
    for (int i = 0; i < layers; ++i, thickness *= factor) {
        grid.push_back(thickness);
    }
    return grid;
}

bool backgroundOfControl(const ControlValues &control, LayerPrior &prior) {
    const auto isSet = [&](std::size_t i) {
        return control.Res0Layer[i] > 0.0F;
    };
    if (!isSet(0)) {
        return false;
    }
    const double unit = metresPerUnit(control);
    std::vector<double> bottoms;
    std::vector<double> logarithms;
    std::vector<double> deviations;
    double depth = 0.0;
    for (std::size_t i = 0; i < MaxLayers && isSet(i); ++i) {
        logarithms.push_back(std::log(static_cast<double>(control.Res0Layer[i])));
        const double error = static_cast<double>(std::max(control.Res0Error[i], 0.1F));
        deviations.push_back(std::log(deviationOf(error)));
        if (!(control.Thk0Layer[i] > 0.0F)) {
            break; // the last layer has no thickness
        }
        depth += static_cast<double>(control.Thk0Layer[i]) * unit;
        bottoms.push_back(depth);
    }
    const Overlap resistivity(bottoms, logarithms);
    const Overlap deviation(bottoms, deviations);
    const auto layers = static_cast<Eigen::Index>(prior.thickness.size());
    prior.background.resize(layers);
    prior.deviation.resize(layers);
    prior.dzW = Eigen::VectorXd::Ones(layers);
    double top = 0.0;
    for (Eigen::Index k = 0; k < layers; ++k) {
        const double bottom = top + prior.thickness[asIndex(k)];
        prior.background[k] = resistivity.average(top, bottom);
        prior.deviation[k] = std::exp(deviation.average(top, bottom));
        top = bottom;
    }
    return true;
}

void setHalfSpace(double resistivity, LayerPrior &prior) {
    const auto layers = static_cast<Eigen::Index>(prior.thickness.size());
    prior.background = Eigen::VectorXd::Constant(layers, std::log(resistivity));
    prior.deviation = Eigen::VectorXd::Constant(layers, deviationOf(DefaultError));
    prior.dzW = Eigen::VectorXd::Ones(layers);
}

LayerPrior priorOfRecord(const ControlValues &control, const SoundingRecord &record) {
    const double unit = metresPerUnit(control);
    const auto layers = static_cast<Eigen::Index>(record.NumLayer);
    LayerPrior prior{{}, Eigen::VectorXd(layers), Eigen::VectorXd(layers), Eigen::VectorXd(layers)};
    for (Eigen::Index k = 0; k < layers; ++k) {
        const auto i = asIndex(k);
        prior.thickness.push_back(static_cast<double>(record.ThkInv[i]) * unit);
        prior.background[k] = std::log(static_cast<double>(record.Res0[i]));
        prior.deviation[k] = deviationOf(static_cast<double>(record.Rerr0[i]));
        prior.dzW[k] = static_cast<double>(record.dzW[i]);
    }
    return prior;
}

} // namespace keldrin
