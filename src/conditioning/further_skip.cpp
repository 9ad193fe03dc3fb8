#include "conditioning/further_skip.h"

#include "base/real.h"
#include "model/same_window.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <map>
#include <utility>

namespace keldrin {

namespace {

bool hasValue(const SoundingRecord &sounding, std::size_t window) {
    return isPresent(sounding.TEMobs[window]) && std::isfinite(sounding.TEMobs[window]);
}

WindowRange rangeOf(const SoundingRecord &sounding, const AutoSkipSettings &settings) {
    const int windows = static_cast<int>(windowCount(sounding));
    const int first = limited(settings.firstWindow, 1, windows + 1);
    return {asIndex(first - 1), asIndex(limited(settings.lastWindow, first - 1, windows))};
}

// ---- Curvature

/// A window on logarithmic axes.
struct LogPoint {
    std::size_t window = 0;
    float time = 0.0F;
    float value = 0.0F;
};

std::vector<LogPoint> logPoints(const SoundingRecord &sounding, const WindowRange &range) {
    std::vector<LogPoint> points;
    points.reserve(range.end - range.first);
    for (std::size_t i = range.first; i < range.end; ++i) {
        const float time = sounding.TWcenter[i];
        if (hasValue(sounding, i) && sounding.TEMobs[i] > 0.0F && time > 0.0F) {
            points.push_back({i, std::log10(time), std::log10(sounding.TEMobs[i])});
        }
    }
    return points;
}

// How much the slope changes at a point; 0 at the ends, and where times do not rise.
float bendAt(const std::vector<LogPoint> &points, std::size_t at) {
    if (at == 0 || at + 1 >= points.size()) {
        return 0.0F;
    }
    const LogPoint &before = points[at - 1];
    const LogPoint &point = points[at];
    const LogPoint &after = points[at + 1];
    if (point.time <= before.time || after.time <= point.time) {
        return 0.0F;
    }
    return std::fabs((after.value - point.value) / (after.time - point.time) -
                     (point.value - before.value) / (point.time - before.time));
}

// ---- Neighbours

constexpr std::size_t SoundingsAround = 4;
constexpr std::size_t LeastAround = 3;

// Soundings with like keys can be compared with each other.
using SeriesKey = std::pair<std::uint32_t, std::uint64_t>;

SeriesKey seriesOf(const ControlValues &control, const SoundingRecord &sounding) {
    const double transmitter = control.SurveyTypeIndex == FixedLoop ? sounding.TxStn : 0.0;
    return {std::bit_cast<std::uint32_t>(sounding.TxFreq),
            std::bit_cast<std::uint64_t>(transmitter)};
}

/// Values of the soundings around, in rising order.
struct ValuesAround {
    std::array<float, SoundingsAround> values{};
    std::size_t count = 0;

    void add(float value) {
        if (count == values.size()) {
            return;
        }
        std::size_t place = count++;
        for (; place > 0 && values[place - 1] > value; --place) {
            values[place] = values[place - 1];
        }
        values[place] = value;
    }
    /// The nearer one of the two middle values, or the value itself between them.
    [[nodiscard]] float nearestMedian(float value) const {
        return limited(value, values[(count - 1) / 2], values[count / 2]);
    }
};

bool differs(float value, float median, float factor) {
    if (value == median) {
        return false;
    }
    const bool otherSign = (value > 0.0F) != (median > 0.0F);
    const float low = std::min(std::fabs(value), std::fabs(median));
    const float high = std::max(std::fabs(value), std::fabs(median));
    return otherSign || high > factor * low;
}

// ---- All of them

ChosenWindows furtherTaken(const SurveyModel &model, std::size_t index,
                           const std::vector<std::size_t> *around, const WindowRange &range,
                           const FurtherSkipSettings &settings, FurtherSkipCounts &counts) {
    const SoundingRecord &sounding = model.soundings()[index];
    ChosenWindows taken;
    const auto take = [&taken](const ChosenWindows &windows, int &count) {
        taken |= windows;
        count += static_cast<int>(windows.count());
    };
    if (settings.noiseFloor) {
        take(belowNoiseFloor(sounding, range, settings), counts.noiseFloor);
    }
    if (settings.curvature) {
        take(bentWindows(sounding, range, settings), counts.curvature);
    }
    if (around != nullptr) {
        take(unlikeNeighbours(model, index, *around, range, settings), counts.neighbours);
    }
    return taken;
}

// The windows in use after the first one that is taken, and that are not taken themselves.
ChosenWindows laterThan(const ChosenWindows &taken, const WindowRange &range) {
    ChosenWindows later;
    bool after = false;
    for (std::size_t i = range.first; i < range.end; ++i) {
        later[i] = after && !taken[i];
        after = after || taken[i];
    }
    return later;
}

} // namespace

ChosenWindows belowNoiseFloor(const SoundingRecord &sounding, const WindowRange &range,
                              const FurtherSkipSettings &settings) {
    ChosenWindows taken;
    for (std::size_t i = range.first; i < range.end; ++i) {
        const float time = sounding.TWcenter[i];
        taken[i] = hasValue(sounding, i) && time > 0.0F &&
                   std::fabs(sounding.TEMobs[i]) <
                       settings.noiseLevel * std::pow(time, settings.noiseExponent);
    }
    return taken;
}

ChosenWindows bentWindows(const SoundingRecord &sounding, const WindowRange &range,
                          const FurtherSkipSettings &settings) {
    const std::vector<LogPoint> points = logPoints(sounding, range);
    ChosenWindows taken;
    float before = 0.0F;
    float bend = 0.0F;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const float after = bendAt(points, i + 1);
        taken[points[i].window] = bend > settings.slopeChange && bend >= before && bend >= after;
        before = bend;
        bend = after;
    }
    return taken;
}

std::vector<std::vector<std::size_t>> soundingsAround(const SurveyModel &model) {
    std::map<SeriesKey, std::vector<std::size_t>> series;
    for (std::size_t i = 0; i < model.soundings().size(); ++i) {
        series[seriesOf(model.control, model.soundings()[i])].push_back(i);
    }
    std::vector<std::vector<std::size_t>> around(model.soundings().size());
    for (const auto &[key, members] : series) {
        const std::size_t wanted = std::min(SoundingsAround + 1, members.size());
        for (std::size_t place = 0; place < members.size(); ++place) {
            const std::size_t reach = SoundingsAround / 2;
            const std::size_t first =
                std::min(place - std::min(place, reach), members.size() - wanted);
            for (std::size_t other = first; other < first + wanted; ++other) {
                if (other != place) {
                    around[members[place]].push_back(members[other]);
                }
            }
        }
    }
    return around;
}

ChosenWindows unlikeNeighbours(const SurveyModel &model, std::size_t sounding,
                               const std::vector<std::size_t> &around, const WindowRange &range,
                               const FurtherSkipSettings &settings) {
    const SoundingRecord &judged = model.soundings()[sounding];
    ChosenWindows taken;
    for (std::size_t i = range.first; i < range.end; ++i) {
        if (!hasValue(judged, i)) {
            continue;
        }
        ValuesAround found;
        for (const std::size_t other : around) {
            const SoundingRecord &neighbour = model.soundings()[other];
            const auto window = windowAt(neighbour, judged.TWcenter[i], i);
            if (window && hasValue(neighbour, *window)) {
                found.add(neighbour.TEMobs[*window]);
            }
        }
        const float value = judged.TEMobs[i];
        taken[i] = found.count >= LeastAround &&
                   differs(value, found.nearestMedian(value), settings.neighbourFactor);
    }
    return taken;
}

SkipPlan planAutoSkip(const SurveyModel &model, const AutoSkipSettings &settings, float cutoff,
                      const FurtherSkipSettings &further) {
    SkipPlan plan;
    plan.taken.reserve(model.soundings().size());
    const std::vector<std::vector<std::size_t>> around =
        further.neighbours ? soundingsAround(model) : std::vector<std::vector<std::size_t>>{};
    for (std::size_t i = 0; i < model.soundings().size(); ++i) {
        const SoundingRecord &sounding = model.soundings()[i];
        const WindowRange range = rangeOf(sounding, settings);
        ChosenWindows taken = takenByAutoSkip(sounding, settings, cutoff, plan.counts);
        taken |= furtherTaken(model, i, further.neighbours ? &around[i] : nullptr, range, further,
                              plan.further);
        if (further.andLater) {
            const ChosenWindows later = laterThan(taken, range);
            plan.further.later += static_cast<int>(later.count());
            taken |= later;
        }
        plan.taken.push_back(taken);
    }
    plan.counts.skipped = 0;
    for (const ChosenWindows &taken : plan.taken) {
        plan.counts.skipped += static_cast<int>(taken.count());
    }
    return plan;
}

int marksBesidePlan(const SurveyModel &model, const SkipPlan &plan) {
    int marks = 0;
    for (std::size_t k = 0; k < plan.taken.size(); ++k) {
        const SoundingRecord &sounding = model.soundings()[k];
        const std::size_t windows = windowCount(sounding);
        for (std::size_t i = 0; i < windows; ++i) {
            marks += isSkipped(sounding.TEMerr[i]) && !plan.taken[k][i] ? 1 : 0;
        }
    }
    return marks;
}

void applySkipPlan(SurveyModel &model, const SkipPlan &plan, bool keepMarks) {
    for (std::size_t k = 0; k < plan.taken.size(); ++k) {
        SoundingRecord &sounding = model.soundings()[k];
        const std::size_t windows = windowCount(sounding);
        for (std::size_t i = 0; i < windows; ++i) {
            float &error = sounding.TEMerr[i];
            const bool kept = keepMarks && isSkipped(error);
            error = withSkipMark(error, plan.taken[k][i] || kept);
        }
    }
}

} // namespace keldrin
