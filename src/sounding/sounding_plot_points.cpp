#include "sounding/sounding_plot_points.h"

#include "sounding/plot_limits.h"

#include <algorithm>
#include <cmath>

namespace keldrin {

namespace {

struct SquareSum {
    float sum = 0.0F;
    int count = 0;

    void add(float value) {
        if (std::isfinite(value)) {
            sum += value * value;
            ++count;
        }
    }
};

bool isShown(float value) {
    return isPresent(value) && std::isfinite(value);
}

bool isResistivity(float value) {
    return value > LeastResistivity && std::isfinite(value);
}

void addCorner(CurvePoints &curve, float time, float value) {
    curve.time.push_back(time);
    curve.value.push_back(value);
}

} // namespace

SoundingCurves soundingCurves(const SoundingRecord &sounding, float errorFloor) {
    const std::size_t windows = windowCount(sounding);
    SoundingCurves curves;
    SquareSum misfit;
    for (std::size_t i = 0; i < windows; ++i) {
        ErrorPoint point;
        point.time = sounding.TWcenter[i];
        point.skipped = isSkipped(sounding.TEMerr[i]);
        const float error = point.skipped ? trueError(sounding.TEMerr[i]) : sounding.TEMerr[i];
        point.halfBar = std::log(1.0F + std::max(errorFloor, error) / 50.0F);
        if (isShown(sounding.TEMobs[i])) {
            point.value = sounding.TEMobs[i];
            curves.observed.push_back(point);
        }
        if (isShown(sounding.TEMcalc[i])) {
            addCorner(curves.calculated, point.time, sounding.TEMcalc[i]);
        }
        if (isShown(sounding.TEMobs[i]) && isShown(sounding.TEMcalc[i])) {
            misfit.add((ArcSinh(sounding.TEMobs[i]) - ArcSinh(sounding.TEMcalc[i])) /
                       point.halfBar);
        }
        if (isResistivity(sounding.AResObs[i])) {
            point.value = sounding.AResObs[i];
            curves.resistivity.push_back(point);
        }
        if (isResistivity(sounding.AResCalc[i])) {
            addCorner(curves.calculatedResistivity, point.time, sounding.AResCalc[i]);
        }
    }
    if (misfit.count > 0) {
        curves.residual = std::sqrt(misfit.sum / static_cast<float>(misfit.count));
    }
    return curves;
}

} // namespace keldrin
