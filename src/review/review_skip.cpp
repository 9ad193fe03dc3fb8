#include "review/review_skip.h"

#include "base/real.h"
#include "page/plot.h"
#include "review/page_layout.h"

namespace keldrin {

namespace {

constexpr float LeastResistivity = 1.0e-6F; // ohm-m; below that a window has no such point

// A page box in the units of the data plot, which rise to the right and upward.
struct DataBox {
    float timeLow = 0.0F;  // msec
    float valueLow = 0.0F; // ArcSinh
    float timeHigh = 0.0F;
    float valueHigh = 0.0F;

    [[nodiscard]] bool holdsTime(float time) const { return time >= timeLow && time <= timeHigh; }
    [[nodiscard]] bool holdsValue(float value) const {
        return value >= valueLow && value <= valueHigh;
    }
};

DataBox dataBox(const PageBox &box) {
    DataBox data;
    PlotFromPage(box.xLow, box.yLow, data.timeLow, data.valueLow);
    PlotFromPage(box.xHigh, box.yHigh, data.timeHigh, data.valueHigh);
    return data;
}

SoundingRecord *findSounding(SurveyModel &model, int station) {
    const bool exists =
        station >= 1 && station <= model.SoundingCount && station <= model.SoundingCapacity();
    return exists ? &model.sounding(station) : nullptr;
}

void mark(float &error, int flag) {
    error = withSkipMark(error, (flag & 1) != 0);
}

bool hasResistivity(const SoundingRecord &sounding, std::size_t window) {
    return sounding.AResObs[window] >= LeastResistivity;
}

// The nearest of the points that were offered to a place on the page.
struct NearestPoint {
    float x = 0.0F;
    float y = 0.0F;
    float best = 1.0e32F;   // cm^2
    float *error = nullptr; // of its window; null when none was near

    void offer(float &candidate, float time, float value) {
        float px = 0.0F;
        float py = 0.0F;
        PlotToPage(time, value, px, py);
        const float distance = (px - x) * (px - x) + (py - y) * (py - y);
        if (distance < best) {
            best = distance;
            error = &candidate;
        }
    }
};

bool isInsideDataPlot(float x, float y) {
    return x > DataFrame.left && x < DataFrame.right && y > DataFrame.bottom && y < DataFrame.top;
}

bool isOutsideDataPlot(const PageBox &box) {
    return box.xHigh <= DataFrame.left || box.xLow >= DataFrame.right ||
           box.yHigh <= DataFrame.bottom || box.yLow >= DataFrame.top;
}

} // namespace

int Review_SkipPoint(SurveyModel &model, int station, int flag, float x, float y, float radius) {
    SoundingRecord *sounding = findSounding(model, station);
    if (sounding == nullptr || sounding->NumTW < 1 || !isInsideDataPlot(x, y)) {
        return 1;
    }
    const DataBox range = dataBox({x - radius, y - radius, x + radius, y + radius});
    NearestPoint nearest{x, y};
    for (std::size_t i = 0; i < windowCount(*sounding); ++i) {
        const float time = sounding->TWcenter[i];
        if (!range.holdsTime(time)) {
            continue;
        }
        if (!isPresent(sounding->TEMobs[i])) {
            mark(sounding->TEMerr[i], SetMark); // on purpose, whatever the click asks for
            continue;
        }
        if (const float value = ArcSinh(sounding->TEMobs[i]); range.holdsValue(value)) {
            nearest.offer(sounding->TEMerr[i], time, value);
        }
        const float resistivity = ArcSinh(sounding->AResObs[i]);
        if (hasResistivity(*sounding, i) && range.holdsValue(resistivity)) {
            nearest.offer(sounding->TEMerr[i], time, resistivity);
        }
    }
    if (nearest.error != nullptr) {
        mark(*nearest.error, flag);
    }
    return 0;
}

int Review_SkipBox(SurveyModel &model, int station, int flag, const PageBox &box) {
    SoundingRecord *sounding = findSounding(model, station);
    if (sounding == nullptr || isOutsideDataPlot(box)) {
        return 1;
    }
    const DataBox range = dataBox(box);
    for (std::size_t i = 0; i < windowCount(*sounding); ++i) {
        if (!range.holdsTime(sounding->TWcenter[i])) {
            continue;
        }
        if (!isPresent(sounding->TEMobs[i])) {
            mark(sounding->TEMerr[i], SetMark); // on purpose, whatever the box asks for
            continue;
        }
        const bool observed = range.holdsValue(ArcSinh(sounding->TEMobs[i]));
        const bool resistivity =
            hasResistivity(*sounding, i) && range.holdsValue(ArcSinh(sounding->AResObs[i]));
        if (observed || resistivity) {
            mark(sounding->TEMerr[i], flag);
        }
    }
    return 0;
}

} // namespace keldrin
