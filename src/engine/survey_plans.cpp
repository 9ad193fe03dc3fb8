#include "engine/survey_plans.h"

#include "base/index.h"
#include "engine/layer_grid.h"
#include "engine/loop_plan.h"
#include "engine/time_plan.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace keldrin {

namespace {

constexpr double SecondsPerMillisecond = 1.0e-3;
constexpr double RadiansPerDegree = std::numbers::pi / 180.0;

// The receiver from the loop's centre. The azimuth of a fixed loop is a compass bearing of its
// x axis; the y axis is 90 degrees to the left. A moving loop is measured along the line.
void placeReceiver(LoopGeometry &loop, const ControlValues &control, const SoundingRecord &record,
                   double lineToLoop) {
    const double unit = metresPerUnit(control);
    if (control.SurveyTypeIndex == FixedLoop) {
        const double azimuth = static_cast<double>(control.TxAzimuth) * RadiansPerDegree;
        const double east = (record.East - control.XTxCenter) * unit;
        const double north = (record.North - control.YTxCenter) * unit;
        loop.rxX = std::sin(azimuth) * east + std::cos(azimuth) * north;
        loop.rxY = -std::cos(azimuth) * east + std::sin(azimuth) * north;
    } else if (control.SurveyTypeIndex == MovingLoop) {
        const double along =
            (record.RxStn - record.TxStn) * static_cast<double>(control.StnScale) * unit;
        const double across = static_cast<double>(control.YRxOffset) * unit;
        loop.rxX = std::cos(lineToLoop) * along + std::sin(lineToLoop) * across;
        loop.rxY = -std::sin(lineToLoop) * along + std::cos(lineToLoop) * across;
    }
}

bool hasHorizontal(const SoundingRecord &record) {
    const std::size_t count = windowCount(record);
    return std::any_of(record.TEMwgt.begin(), record.TEMwgt.begin() + count,
                       [](const auto &words) { return words[0] != 0.0F || words[1] != 0.0F; });
}

LoopGeometry loopOf(const ControlValues &control, const SoundingRecord &record, double lineToLoop) {
    LoopGeometry loop;
    loop.sideX = static_cast<double>(control.XTxLength) * metresPerUnit(control);
    loop.sideY = static_cast<double>(control.YTxLength) * metresPerUnit(control);
    loop.turns = control.NTxTurn;
    loop.coincident = control.SurveyTypeIndex == CoincidentLoop;
    const bool offset =
        control.SurveyTypeIndex == FixedLoop || control.SurveyTypeIndex == MovingLoop;
    loop.horizontal = offset && hasHorizontal(record);
    placeReceiver(loop, control, record, lineToLoop);
    return loop;
}

WindowSet windowsOf(const ControlValues &control, const SoundingRecord &record) {
    WindowSet set;
    const auto points = static_cast<std::size_t>(control.NTxWF);
    for (std::size_t i = 0; i < points; ++i) {
        set.times.push_back(static_cast<double>(control.TxWFT[i]) * SecondsPerMillisecond);
        set.currents.push_back(static_cast<double>(control.TxWFI[i]));
    }
    set.origin = static_cast<double>(control.TxWFT0) * SecondsPerMillisecond;
    set.frequency = static_cast<double>(control.TxFreq);
    // The centre is the geometric mean of the window's edges and the width their difference.
    for (std::size_t k = 0; k < windowCount(record); ++k) {
        const double centre = static_cast<double>(record.TWcenter[k]);
        const double half = 0.5 * static_cast<double>(record.TWwidth[k]);
        const double middle = std::hypot(centre, half);
        set.lower.push_back((middle - half) * SecondsPerMillisecond);
        set.upper.push_back((middle + half) * SecondsPerMillisecond);
    }
    return set;
}

/// What the plan of a sounding is made from, and which soundings it shares its parts with.
struct PlanSource {
    LoopGeometry loop;
    WindowSet windows;
    PlanFault fault = PlanFault::None;
    std::size_t firstOfLoop = 0;    ///< the first sounding of an equal loop without a fault
    std::size_t firstOfWindows = 0; ///< the same of windows
};

/// The first sounding with an equal part, which is this one where there is none before it.
template <class Part>
std::size_t firstEqual(const std::vector<PlanSource> &sources, std::size_t place,
                       Part PlanSource::*part, std::vector<std::size_t> &firsts) {
    const auto found = std::find_if(firsts.rbegin(), firsts.rend(), [&](std::size_t first) {
        return sources[first].*part == sources[place].*part;
    });
    if (found != firsts.rend()) {
        return *found;
    }
    firsts.push_back(place);
    return place;
}

/// returns  fewer sources than soundings when the run was stopped
std::vector<PlanSource> planSources(const SurveyModel &model, double lineToLoop,
                                    const EngineRun &run) {
    std::vector<PlanSource> sources;
    std::vector<std::size_t> loops;
    std::vector<std::size_t> windows;
    for (const SoundingRecord &record : model.soundings()) {
        if (run.stopped()) {
            break;
        }
        const std::size_t place = sources.size();
        sources.push_back(
            {loopOf(model.control, record, lineToLoop), windowsOf(model.control, record)});
        PlanSource &source = sources.back();
        source.fault = checkResponsePlan(source.loop, source.windows);
        if (source.fault == PlanFault::None) {
            source.firstOfLoop = firstEqual(sources, place, &PlanSource::loop, loops);
            source.firstOfWindows = firstEqual(sources, place, &PlanSource::windows, windows);
        }
    }
    return sources;
}

} // namespace

std::vector<SoundingPlan> planSurvey(const SurveyModel &model, const EngineRun &run) {
    const ControlValues &control = model.control;
    const double lineToLoop =
        (static_cast<double>(control.LineAzimuth) - static_cast<double>(control.TxAzimuth)) *
        RadiansPerDegree;
    const std::vector<PlanSource> sources = planSources(model, lineToLoop, run);
    std::vector<SoundingPlan> plans(model.soundings().size());
    // Each part is made by the first sounding that has it, then lent to the others.
    (void)forEachItem(static_cast<int>(sources.size()), run, [&](int item) {
        const auto i = asIndex(item);
        const PlanSource &source = sources[i];
        plans[i].fault = source.fault;
        plans[i].cosine = std::cos(lineToLoop);
        plans[i].sine = std::sin(lineToLoop);
        if (source.fault == PlanFault::None && source.firstOfLoop == i) {
            plans[i].plan.loop = std::make_shared<const LoopPlan>(makeLoopPlan(source.loop));
        }
        if (source.fault == PlanFault::None && source.firstOfWindows == i) {
            plans[i].plan.time = std::make_shared<const TimePlan>(makeTimePlan(source.windows));
        }
    });
    for (std::size_t i = 0; i < sources.size(); ++i) {
        if (sources[i].fault == PlanFault::None) {
            plans[i].plan.loop = plans[sources[i].firstOfLoop].plan.loop;
            plans[i].plan.time = plans[sources[i].firstOfWindows].plan.time;
        }
    }
    return plans;
}

} // namespace keldrin
