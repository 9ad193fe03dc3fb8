#include "engine/line_setup.h"

#include "base/index.h"
#include "base/number_text.h"
#include "base/sorting.h"
#include "engine/layer_grid.h"
#include "engine/noise_estimate.h"
#include "physics/ares_check.h"
#include "projectfile/table_file.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace keldrin {

namespace {

constexpr int FewestFileLayers = 2;

/// Why a sounding cannot be computed; blank when it can. The limits are those of apparent
/// resistivity, so that a sounding has both or neither.
std::string refusalOf(const ControlValues &control, const SoundingRecord &record,
                      const SoundingPlan &plan) {
    const auto unit = static_cast<float>(metresPerUnit(control));
    AResInput input;
    input.iTemArray = control.SurveyTypeIndex;
    input.xLength = control.XTxLength * unit;
    input.yLength = control.YTxLength * unit;
    input.ramp = control.TxRamp;
    input.freq = control.TxFreq;
    input.ntw = record.NumTW;
    input.twCenter = record.TWcenter;
    input.twWidth = record.TWwidth;
    input.weights = record.TEMwgt;
    const AResFailure failure = ARes_Check(input);
    if (failure.fault != AResFault::None) {
        return failureText(failure);
    }
    return plan.fault == PlanFault::None ? "" : planFaultText(plan.fault);
}

/// Distance of neighbours: by coordinates, else by stations.
double spacingOf(const SoundingRecord &a, const SoundingRecord &b) {
    const double distance = std::hypot(a.East - b.East, a.North - b.North);
    return std::isfinite(distance) && distance > 0.0 ? distance : std::fabs(a.Station - b.Station);
}

constexpr int HalfSpaces = 28;
double halfSpaceResistivity(int index) {
    constexpr double least = 0.3; // ohm-m
    constexpr double most = 1.0E4;
    return least * std::pow(most / least, static_cast<double>(index) / (HalfSpaces - 1));
}

/// What a sounding is without layers.
struct HalfSpaceFit {
    std::optional<double> resistivity; ///< ohm-m; none without data
    Eigen::VectorXd scatter;           ///< see scatterOf(); empty when errors are measured
};

/// The half-space with the smallest sum of residuals that count linearly from 2.5 on: the best of
/// fixed ones, then a golden section search between its neighbours.
HalfSpaceFit bestHalfSpace(const LineSounding &sounding) {
    thread_local ResponseRoom room;
    constexpr int refinements = 14; // to 0.1 percent
    constexpr double golden = 0.6180339887498949;
    if (sounding.data.windows.empty()) {
        return {};
    }
    Residuals residuals;
    const std::vector<double> noThickness;
    const auto misfitAt = [&](double lnResistivity) {
        const Eigen::VectorXd m = Eigen::VectorXd::Constant(1, lnResistivity);
        computeResiduals(*sounding.record, *sounding.plan, sounding.data, {m, noThickness}, false,
                         room, residuals);
        return huberSum(residuals.r, UsualThreshold);
    };
    double least = std::numeric_limits<double>::infinity();
    int best = -1;
    for (int i = 0; i < HalfSpaces; ++i) {
        const double sum = misfitAt(std::log(halfSpaceResistivity(i)));
        if (sum < least) {
            least = sum;
            best = i;
        }
    }
    if (best < 0) {
        return {};
    }
    double low = std::log(halfSpaceResistivity(std::max(0, best - 1)));
    double high = std::log(halfSpaceResistivity(std::min(HalfSpaces - 1, best + 1)));
    for (int i = 0; i < refinements; ++i) {
        const double reach = golden * (high - low);
        if (misfitAt(high - reach) < misfitAt(low + reach)) {
            high = low + reach;
        } else {
            low = high - reach;
        }
    }
    const double middle = 0.5 * (low + high);
    HalfSpaceFit fit{std::exp(middle), {}};
    if (sounding.data.uniform) {
        misfitAt(middle);
        fit.scatter = scatterOf(sounding.data, residuals.calculated);
    }
    return fit;
}

/// Between which depths the data of each sounding see, where it has a half-space.
std::vector<DepthRange> depthRanges(const LineInversion &line,
                                    const std::vector<HalfSpaceFit> &halfSpaces) {
    std::vector<SoundingScatter> scatters;
    for (std::size_t i = 0; i < halfSpaces.size(); ++i) {
        scatters.push_back(
            {line.soundings[i].record, &line.soundings[i].data, &halfSpaces[i].scatter});
    }
    std::vector<DepthRange> ranges;
    for (std::size_t i = 0; i < halfSpaces.size(); ++i) {
        if (const std::optional<double> resistivity = halfSpaces[i].resistivity) {
            const auto range = depthRange(*scatters[i].record, *scatters[i].data,
                                          noiseNear(scatters, i), *resistivity);
            ranges.insert(ranges.end(), range ? 1 : 0, range.value_or(DepthRange{}));
        }
    }
    return ranges;
}

/// Median of up to five neighbours; soundings without a value take part in none.
double medianNear(const std::vector<HalfSpaceFit> &values, std::size_t place) {
    constexpr double withoutAny = 100.0; // ohm-m
    std::vector<double> known;
    for (std::size_t reach = 2; known.empty() && reach < values.size() + 2; ++reach) {
        const std::size_t from = place > reach ? place - reach : 0;
        for (std::size_t i = from; i < std::min(values.size(), place + reach + 1); ++i) {
            if (values[i].resistivity) {
                known.push_back(*values[i].resistivity);
            }
        }
    }
    return known.empty() ? withoutAny : upperMedian(std::move(known));
}

bool hasFileModel(const SoundingRecord &record) {
    return record.NumLayer >= FewestFileLayers;
}

Eigen::VectorXd fileModel(const SoundingRecord &record) {
    Eigen::VectorXd m(record.NumLayer);
    for (Eigen::Index k = 0; k < m.size(); ++k) {
        m[k] = std::log(static_cast<double>(record.ResInv[asIndex(k)]));
    }
    return m;
}

/// Layers of the soundings that have none from the model file.
class NewLayers {
  public:
    NewLayers(const LineInversion &line, const std::vector<HalfSpaceFit> &halfSpaces, int atLeast)
        : line_(line), grid_(layerGrid(depthRanges(line, halfSpaces), atLeast)) {
        const int most = mostLayers(line);
        for (const LineSounding &sounding : line.soundings) {
            fromFile_.push_back(hasFileModel(*sounding.record) &&
                                sounding.record->NumLayer == most);
        }
    }

    /// Those of the nearest sounding with a block, else the grid.
    [[nodiscard]] const std::vector<double> &at(std::size_t place) const {
        for (std::size_t reach = 1; reach < fromFile_.size(); ++reach) {
            if (place >= reach && fromFile_[place - reach]) {
                return line_.soundings[place - reach].prior.thickness;
            }
            if (place + reach < fromFile_.size() && fromFile_[place + reach]) {
                return line_.soundings[place + reach].prior.thickness;
            }
        }
        return grid_;
    }

  private:
    static int mostLayers(const LineInversion &line) {
        int most = 0;
        for (const LineSounding &sounding : line.soundings) {
            most = std::max(most, sounding.record->NumLayer);
        }
        return most;
    }

    const LineInversion &line_;
    std::vector<bool> fromFile_; ///< blocks with as many layers as any
    std::vector<double> grid_;
};

void linkNeighbours(LineInversion &line) {
    std::vector<LayerPrior> priors;
    std::vector<double> spacings;
    for (std::size_t i = 0; i < line.soundings.size(); ++i) {
        priors.push_back(line.soundings[i].prior);
        if (i > 0) {
            spacings.push_back(spacingOf(*line.soundings[i - 1].record, *line.soundings[i].record));
        }
    }
    line.links = lateralLinks(priors, spacings, line.weights);
}

float percentOf(double deviation) {
    constexpr double most = 9999.9;
    return static_cast<float>(std::clamp(100.0 * std::expm1(deviation), 0.1, most));
}

void storeModel(const ControlValues &control, const LineSounding &sounding,
                SoundingRecord &record) {
    constexpr double mostSensitivity = 100.0;
    const double unit = metresPerUnit(control);
    record.NumLayer = static_cast<int>(sounding.m.size());
    double depth = 0.0;
    for (Eigen::Index k = 0; k < sounding.m.size(); ++k) {
        const auto i = asIndex(k);
        const double thickness = sounding.prior.thickness[i] / unit;
        record.ThkInv[i] = static_cast<float>(thickness);
        record.ZMid[i] = static_cast<float>(-(depth + 0.5 * thickness));
        depth += thickness;
        record.ResInv[i] = static_cast<float>(std::exp(sounding.m[k]));
        record.Res0[i] = static_cast<float>(std::exp(sounding.prior.background[k]));
        record.Rerr0[i] = percentOf(sounding.prior.deviation[k]);
        record.dzW[i] = static_cast<float>(sounding.prior.dzW[k]);
        record.Rerr[i] = percentOf(sounding.deviation[k]);
        record.Rsns[i] = static_cast<float>(std::min(mostSensitivity, sounding.sensitivity[k]));
    }
}

} // namespace

LineChoice chooseSoundings(const SurveyModel &model, const std::vector<SoundingPlan> &plans) {
    LineChoice choice;
    for (std::size_t i = 0; i < plans.size(); ++i) {
        const SoundingRecord &record = model.soundings()[i];
        if (isLeftOut(model.control, record)) {
            ++choice.ofOtherTransmitters;
            continue;
        }
        const std::string refusal = refusalOf(model.control, record, plans[i]);
        if (refusal.empty()) {
            choice.soundings.push_back(i);
        } else if (choice.refused++ == 0) {
            choice.firstRefusal = "station " + messageNumber(record.Station) + ": " + refusal;
        }
    }
    return choice;
}

bool prepareLine(const SurveyModel &model, const std::vector<SoundingPlan> &plans,
                 const LineChoice &choice, int atLeast, const EngineRun &run, LineInversion &line,
                 LineStart &start) {
    line.weights = smoothnessWeights(model.control);
    line.iterations = model.control.Niteration;
    line.soundings.resize(choice.soundings.size());
    std::vector<HalfSpaceFit> halfSpaces(line.soundings.size());
    const bool complete = forEachItem(static_cast<int>(halfSpaces.size()), run, [&](int item) {
        const auto i = asIndex(item);
        LineSounding &sounding = line.soundings[i];
        sounding.record = &model.hTrn[choice.soundings[i]];
        sounding.plan = &plans[choice.soundings[i]];
        sounding.data = usableData(model.control, *sounding.record);
        if (hasFileModel(*sounding.record)) {
            sounding.prior = priorOfRecord(model.control, *sounding.record);
            sounding.m = fileModel(*sounding.record);
        } else {
            halfSpaces[i] = bestHalfSpace(sounding);
        }
    });
    if (!complete) {
        return false;
    }
    const NewLayers layers(line, halfSpaces, atLeast);
    for (std::size_t i = 0; i < line.soundings.size(); ++i) {
        LineSounding &sounding = line.soundings[i];
        start.withoutData += sounding.data.windows.empty() ? 1 : 0;
        if (hasFileModel(*sounding.record)) {
            ++start.fromModelFile;
            if (!isHeldModel(sounding.m)) {
                ++start.outOfRange;
                // Steps from such values do not come back to those of the ground.
                sounding.m = line.iterations > 0 ? sounding.prior.background : sounding.m;
            }
            continue;
        }
        sounding.prior.thickness = layers.at(i);
        if (!backgroundOfControl(model.control, sounding.prior)) {
            setHalfSpace(medianNear(halfSpaces, i), sounding.prior);
        }
        sounding.m = sounding.prior.background;
    }
    linkNeighbours(line);
    if (!line.soundings.empty()) {
        const std::vector<double> &thickness = line.soundings.front().prior.thickness;
        start.layers = static_cast<int>(thickness.size());
        start.depth = 0.0;
        for (const double one : thickness) {
            start.depth += one;
        }
    }
    return true;
}

void storeModels(const LineInversion &line, const LineChoice &choice, bool keepModels,
                 SurveyModel &model) {
    for (std::size_t i = 0; i < line.soundings.size(); ++i) {
        SoundingRecord &record = model.hTrn[choice.soundings[i]];
        if (!keepModels || !hasFileModel(record)) {
            storeModel(model.control, line.soundings[i], record);
        }
    }
}

bool storeCalculated(const LineInversion &line, const LineChoice &choice, const EngineRun &run,
                     SurveyModel &model) {
    return forEachItem(static_cast<int>(line.soundings.size()), run, [&](int item) {
        thread_local ResponseRoom room;
        const auto i = asIndex(item);
        const LineSounding &sounding = line.soundings[i];
        SoundingRecord &record = model.hTrn[choice.soundings[i]];
        const std::vector<float> values =
            calculatedData(record, *sounding.plan, sounding.data.kind,
                           {sounding.m, sounding.prior.thickness}, room);
        std::copy(values.begin(), values.end(), record.TEMcalc.begin());
    });
}

} // namespace keldrin
