#include "review/review_skip.h"

#include "base/real.h"
#include "page/plot.h"
#include "sounding/sounding_panels.h"

#include <algorithm>
#include <vector>

namespace keldrin {

namespace {

// A page box in the units of a plot, which rise to the right and upward.
struct DataBox {
    float timeLow = 0.0F;  // msec
    float valueLow = 0.0F; // of the axis
    float timeHigh = 0.0F;
    float valueHigh = 0.0F;

    [[nodiscard]] bool holdsTime(float time) const { return time >= timeLow && time <= timeHigh; }
    [[nodiscard]] bool holdsValue(float value) const {
        return value >= valueLow && value <= valueHigh;
    }
};

// The plot in force must be that of the box.
DataBox dataBox(const PageBox &box) {
    DataBox data;
    PlotFromPage(box.xLow, box.yLow, data.timeLow, data.valueLow);
    PlotFromPage(box.xHigh, box.yHigh, data.timeHigh, data.valueHigh);
    return data;
}

// Marks on the page with the range in which they are looked for.
struct SearchedMarks {
    MarkedPanel marks;
    DataBox range;

    [[nodiscard]] float placeOf(std::size_t window) const {
        return marks.panel.placeOf(marks.values[window]);
    }
    [[nodiscard]] bool holds(std::size_t window) const {
        return isPresent(marks.values[window]) && range.holdsValue(placeOf(window));
    }
};

SoundingRecord *findSounding(SurveyModel &model, int station) {
    const bool exists =
        station >= 1 && station <= model.SoundingCount && station <= model.SoundingCapacity();
    return exists ? &model.sounding(station) : nullptr;
}

void mark(float &error, int flag) {
    error = withSkipMark(error, (flag & 1) != 0);
}

// The nearest of the points that were offered to a place on the page.
struct ClickedPoint {
    float x = 0.0F;
    float y = 0.0F;
    float best = 1.0e32F;   // cm^2
    float *error = nullptr; // of its window; null when none was near

    // The plot in force must be that of the point.
    void offer(float &candidate, float time, float place) {
        float px = 0.0F;
        float py = 0.0F;
        PlotToPage(time, place, px, py);
        const float distance = (px - x) * (px - x) + (py - y) * (py - y);
        if (distance < best) {
            best = distance;
            error = &candidate;
        }
    }
};

bool isStrictlyInside(const PageFrame &frame, float x, float y) {
    return x > frame.left && x < frame.right && y > frame.bottom && y < frame.top;
}

bool isOutside(const PageFrame &frame, const PageBox &box) {
    return box.xHigh <= frame.left || box.xLow >= frame.right || box.yHigh <= frame.bottom ||
           box.yLow >= frame.top;
}

// With a hair around the frame, for points on its edge.
PageBox partInside(const PageFrame &frame, const PageBox &box) {
    constexpr float hair = 1.0e-3F; // cm
    return {std::max(box.xLow, frame.left - hair), std::max(box.yLow, frame.bottom - hair),
            std::min(box.xHigh, frame.right + hair), std::min(box.yHigh, frame.top + hair)};
}

// On the standard page a search reaches beyond the frame, and may find what is not on show.
SearchedMarks searched(MarkedPanel marks, const PageBox &box, PageStyle style) {
    layPanel(marks.panel);
    const bool beyond = style == PageStyle::Standard;
    const DataBox range = dataBox(beyond ? box : partInside(marks.panel.frame, box));
    return {std::move(marks), range};
}

} // namespace

int Review_SkipPoint(SurveyModel &model, const PlotLimits &limits, int station, int flag, float x,
                     float y, float radius) {
    SoundingRecord *sounding = findSounding(model, station);
    if (sounding == nullptr || sounding->NumTW < 1) {
        return 1;
    }
    std::vector<SearchedMarks> near;
    for (MarkedPanel &marks : markedPanels(model.control, *sounding, limits)) {
        if (isStrictlyInside(marks.panel.frame, x, y)) {
            const PageBox box = {x - radius, y - radius, x + radius, y + radius};
            near.push_back(searched(std::move(marks), box, limits.style));
        }
    }
    if (near.empty()) {
        return 1;
    }
    ClickedPoint nearest{x, y};
    for (std::size_t i = 0; i < windowCount(*sounding); ++i) {
        const float time = sounding->TWcenter[i];
        if (!near.front().range.holdsTime(time)) {
            continue;
        }
        if (!isPresent(sounding->TEMobs[i])) {
            mark(sounding->TEMerr[i], SetMark); // on purpose, whatever the click asks for
            continue;
        }
        for (const SearchedMarks &marks : near) {
            if (marks.holds(i)) {
                layPanel(marks.marks.panel);
                nearest.offer(sounding->TEMerr[i], time, marks.placeOf(i));
            }
        }
    }
    if (nearest.error != nullptr) {
        mark(*nearest.error, flag);
    }
    layPanel(dataPanel(limits));
    return 0;
}

int Review_SkipBox(SurveyModel &model, const PlotLimits &limits, int station, int flag,
                   const PageBox &box) {
    SoundingRecord *sounding = findSounding(model, station);
    if (sounding == nullptr) {
        return 1;
    }
    std::vector<SearchedMarks> met;
    for (MarkedPanel &marks : markedPanels(model.control, *sounding, limits)) {
        if (!isOutside(marks.panel.frame, box)) {
            met.push_back(searched(std::move(marks), box, limits.style));
        }
    }
    if (met.empty()) {
        return 1;
    }
    for (std::size_t i = 0; i < windowCount(*sounding); ++i) {
        if (!met.front().range.holdsTime(sounding->TWcenter[i])) {
            continue;
        }
        if (!isPresent(sounding->TEMobs[i])) {
            mark(sounding->TEMerr[i], SetMark); // on purpose, whatever the box asks for
            continue;
        }
        if (std::any_of(met.begin(), met.end(),
                        [i](const SearchedMarks &marks) { return marks.holds(i); })) {
            mark(sounding->TEMerr[i], flag);
        }
    }
    layPanel(dataPanel(limits));
    return 0;
}

} // namespace keldrin
