#include "sounding/plot_limits.h"

#include "base/clock.h"
#include "physics/data_fit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <vector>

namespace keldrin {

namespace {

// The least and the largest of the values that count.
struct ValueRange {
    float low = 1.0e30F;
    float high = -1.0e30F;

    void add(float value) {
        if (isPresent(value) && std::isfinite(value)) {
            low = std::min(low, value);
            high = std::max(high, value);
        }
    }
    [[nodiscard]] bool isEmpty() const { return low > high; }
};

struct LineRanges {
    ValueRange time;        // msec
    ValueRange data;        // dB/dt
    ValueRange positive;    // dB/dt above 0
    ValueRange resistivity; // ohm-m of the layers
    ValueRange apparent;    // ohm-m
    ValueRange misfit;      // standard deviations
    float depth = 1.0e30F;  // of the deepest layer's lower edge; positive: no models
};

// Ten to a whole power; a logarithm of nothing is held where 32-bit reals still have room.
float powerOfTen(float exponent, float highest = 30.0F) {
    return std::pow(10.0F, limited(exponent, -30.0F, highest));
}

// The first and the last window's time. A time of 0 has no place on a logarithmic axis, so the
// next window stands in.
void addTimes(ValueRange &range, std::span<const float> times) {
    const auto counts = [](float time) {
        return isPresent(time) && std::isfinite(time) && time != 0.0F;
    };
    const auto first = std::find_if(times.begin(), times.end(), counts);
    if (first != times.end()) {
        range.add(*first);
        range.add(*std::find_if(times.rbegin(), times.rend(), counts));
    }
}

void addData(LineRanges &ranges, const SoundingRecord &sounding, std::size_t windows) {
    const auto add = [&](float value) {
        ranges.data.add(value);
        ranges.positive.add(value > 0.0F ? value : MissingValue);
    };
    for (std::size_t i = 0; i < windows; ++i) {
        if (!isSkipped(sounding.TEMerr[i])) {
            add(sounding.TEMobs[i]);
        }
        add(sounding.TEMcalc[i]);
    }
}

// On a logarithmic axis; windows that are not shown as resistivities do not count.
void addApparent(ValueRange &range, const SoundingRecord &sounding, std::size_t windows) {
    for (std::size_t i = 0; i < windows; ++i) {
        const bool counts = !isSkipped(sounding.TEMerr[i]) && isPresent(sounding.TEMobs[i]);
        for (const float value : {sounding.AResObs[i], sounding.AResCalc[i]}) {
            range.add(counts && value > LeastResistivity ? value : MissingValue);
        }
    }
}

void addMisfit(ValueRange &range, const ControlValues &control, const SoundingRecord &sounding) {
    const std::vector<float> residuals = soundingFit(control, sounding).residuals;
    for (std::size_t i = 0; i < residuals.size(); ++i) {
        const bool counts = isPresent(residuals[i]) && isUsable(control, sounding, i);
        range.add(counts ? std::fabs(residuals[i]) : MissingValue);
    }
}

void addModel(LineRanges &ranges, const SoundingRecord &sounding) {
    const std::size_t layers = layerCount(sounding);
    if (layers < 1) {
        return;
    }
    for (const float resistivity : std::span(sounding.ResInv).first(layers)) {
        ranges.resistivity.add(resistivity);
    }
    const std::size_t last = layers - 1;
    const float thickness = isPresent(sounding.ThkInv[last]) ? sounding.ThkInv[last] : 0.0F;
    const float edge = sounding.ZMid[last] - thickness / 2.0F;
    if (isPresent(edge)) {
        ranges.depth = std::min(ranges.depth, edge);
    }
}

LineRanges rangesOf(const SurveyModel &survey) {
    LineRanges ranges;
    for (const SoundingRecord &sounding : survey.soundings()) {
        const std::size_t windows = windowCount(sounding);
        addTimes(ranges.time, std::span(sounding.TWcenter).first(windows));
        addData(ranges, sounding, windows);
        addApparent(ranges.apparent, sounding, windows);
        addMisfit(ranges.misfit, survey.control, sounding);
        addModel(ranges, sounding);
    }
    return ranges;
}

void setTimeLimits(PlotLimits &limits, const ValueRange &time) {
    constexpr float slack = 0.01F; // of a decade
    constexpr float leastRatio = 10000.0F;
    if (time.isEmpty()) {
        return;
    }
    limits.PlotTimeMin = powerOfTen(std::floor(std::log10(std::fabs(time.low)) + slack));
    limits.PlotTimeMax = std::max(powerOfTen(std::ceil(std::log10(std::fabs(time.high)) - slack)),
                                  limits.PlotTimeMin * leastRatio);
}

// The power of ten that holds a value of dB/dt. Squares of 1e18 still fit a 32-bit real.
float decadeOver(float value) {
    return limited(std::ceil(std::log10(std::fabs(value) + 0.5F)), 0.0F, 18.0F);
}

// With negative data the axis reaches so far up that they cannot squeeze the positive ones out.
void setDataLimits(PlotLimits &limits, const ValueRange &data) {
    constexpr float leastDecade = 4.0F;
    if (data.isEmpty()) {
        return;
    }
    const float upper = decadeOver(data.high);
    if (ArcSinh(data.low) < 0.0F) {
        const float lower = decadeOver(data.low);
        limits.PlotDataMin = ArcSinh(-powerOfTen(lower));
        limits.PlotDataMax = ArcSinh(powerOfTen(std::max(5.0F - lower, upper)));
    } else {
        limits.PlotDataMin = 0.0F;
        limits.PlotDataMax = ArcSinh(powerOfTen(std::max(leastDecade, upper)));
    }
}

// Full decades of what is above 0, two of them at least. What noise leaves far below the data does
// not count.
void setLogDataLimits(PlotLimits &limits, const ValueRange &positive) {
    constexpr float leastRatio = 100.0F;
    constexpr float mostDecades = 8.0F;
    if (positive.isEmpty()) {
        return;
    }
    const float upper = std::ceil(std::log10(positive.high));
    const float lower = std::max(std::floor(std::log10(positive.low)), upper - mostDecades);
    limits.PlotLogMin = powerOfTen(lower, 28.0F);
    limits.PlotLogMax = std::max(powerOfTen(upper), limits.PlotLogMin * leastRatio);
}

// Full decades of resistivity, two of them at least.
void setResistivityLimits(float &low, float &high, const ValueRange &range) {
    constexpr float leastRatio = 100.0F;
    if (range.isEmpty()) {
        return;
    }
    low = powerOfTen(std::floor(std::log10(std::fabs(range.low + 0.01F))));
    high = powerOfTen(std::ceil(std::log10(std::fabs(range.high))));
    if (high / low < leastRatio) {
        high = leastRatio * low;
    }
}

// The same for all pages, so that they can be compared; what lies farther out is seen to leave.
void setMisfitLimit(PlotLimits &limits, const ValueRange &misfit) {
    constexpr std::array sizes = {3.0F, 5.0F, 10.0F};
    const auto *holding = std::find_if(sizes.begin(), sizes.end() - 1,
                                       [&](float size) { return misfit.high <= size; });
    limits.PlotMisfitMax = *holding;
}

void setModelLimits(PlotLimits &limits, const LineRanges &ranges) {
    constexpr float leastDepth = -10.0F;
    if (ranges.depth > 0.0F) {
        return;
    }
    limits.PlotDepthMin = std::min(ranges.depth, leastDepth);
    setResistivityLimits(limits.PlotResMin, limits.PlotResMax, ranges.resistivity);
}

} // namespace

int Plot_AutoLimits(const SurveyModel &survey, PlotLimits &limits, std::string &date,
                    std::string &time) {
    const DateTime now = clockNow();
    date = dateText(now);
    time = timeText(now);
    const PlotLimits before = limits;
    limits = PlotLimits{};
    limits.style = before.style;
    limits.logData = before.logData;
    limits.neighbours = before.neighbours;
    if (survey.SoundingCount < 1) {
        return 1;
    }
    const LineRanges ranges = rangesOf(survey);
    setTimeLimits(limits, ranges.time);
    setDataLimits(limits, ranges.data);
    setLogDataLimits(limits, ranges.positive);
    setModelLimits(limits, ranges);
    setResistivityLimits(limits.PlotAResMin, limits.PlotAResMax, ranges.apparent);
    setMisfitLimit(limits, ranges.misfit);
    return 0;
}

} // namespace keldrin
