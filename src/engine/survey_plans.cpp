#include "engine/survey_plans.h"

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

// The distinct parts of the plans made so far; surveys have few.
struct PartsSoFar {
    std::vector<std::shared_ptr<const TimePlan>> times;
    std::vector<std::shared_ptr<const LoopPlan>> loops;

    [[nodiscard]] ResponsePlan equalTo(const LoopGeometry &loop, const WindowSet &windows) const {
        ResponsePlan plan;
        for (const auto &time : times) {
            plan.time = time->set == windows ? time : plan.time;
        }
        for (const auto &part : loops) {
            plan.loop = part->geometry == loop ? part : plan.loop;
        }
        return plan;
    }

    void add(const ResponsePlan &plan) {
        if (std::find(times.begin(), times.end(), plan.time) == times.end()) {
            times.push_back(plan.time);
        }
        if (std::find(loops.begin(), loops.end(), plan.loop) == loops.end()) {
            loops.push_back(plan.loop);
        }
    }
};

} // namespace

std::vector<SoundingPlan> planSurvey(const SurveyModel &model, const EngineRun &run) {
    const ControlValues &control = model.control;
    const double lineToLoop =
        (static_cast<double>(control.LineAzimuth) - static_cast<double>(control.TxAzimuth)) *
        RadiansPerDegree;
    std::vector<SoundingPlan> plans(model.soundings().size());
    PartsSoFar parts;
    for (std::size_t i = 0; i < plans.size() && !run.stopped(); ++i) {
        const SoundingRecord &record = model.soundings()[i];
        plans[i].cosine = std::cos(lineToLoop);
        plans[i].sine = std::sin(lineToLoop);
        const LoopGeometry loop = loopOf(control, record, lineToLoop);
        const WindowSet windows = windowsOf(control, record);
        const ResponsePlan sharing = parts.equalTo(loop, windows);
        plans[i].fault = makeResponsePlan(loop, windows, plans[i].plan, &sharing);
        if (plans[i].fault == PlanFault::None) {
            parts.add(plans[i].plan);
        }
    }
    return plans;
}

} // namespace keldrin
