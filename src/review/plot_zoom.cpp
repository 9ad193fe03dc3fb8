#include "review/plot_zoom.h"

#include "sounding/sounding_panels.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <vector>

namespace keldrin {

namespace {

/// The limits of an axis.
struct Axis {
    float PlotLimits::*minimum = nullptr; ///< null: an axis that is not zoomed
    float PlotLimits::*maximum = nullptr;
};

constexpr Axis Time = {&PlotLimits::PlotTimeMin, &PlotLimits::PlotTimeMax};
constexpr Axis ArcSinhData = {&PlotLimits::PlotDataMin, &PlotLimits::PlotDataMax};
constexpr Axis LogData = {&PlotLimits::PlotLogMin, &PlotLimits::PlotLogMax};
constexpr Axis Apparent = {&PlotLimits::PlotAResMin, &PlotLimits::PlotAResMax};
constexpr Axis Resistivity = {&PlotLimits::PlotResMin, &PlotLimits::PlotResMax};
constexpr Axis Depth = {&PlotLimits::PlotDepthMin, &PlotLimits::PlotDepthMax};

// What belongs to the plots over time, and to the model.
constexpr std::array DataAxes = {Time, ArcSinhData, LogData, Apparent};
constexpr std::array ModelAxes = {Resistivity, Depth};

/// A plot of the page, the axes that a zoom of it narrows, and those that come back with it.
struct ZoomedPlot {
    PagePanel panel;
    Axis across;
    Axis upward;
    std::span<const Axis> all;
};

std::vector<ZoomedPlot> plotsOf(const PlotLimits &limits) {
    std::vector<ZoomedPlot> plots = {
        {dataPanel(limits), Time, limits.logData ? LogData : ArcSinhData, DataAxes},
        {modelPanel(limits), Resistivity, Depth, ModelAxes}};
    if (limits.style == PageStyle::Presentation) {
        plots.push_back({resistivityPanel(limits), Time, Apparent, DataAxes});
        plots.push_back({misfitPanel(limits), Time, {}, DataAxes}); // always around 0
    }
    return plots;
}

PageBox partIn(const PageFrame &frame, const PageBox &box) {
    return {std::max(box.xLow, frame.left), std::max(box.yLow, frame.bottom),
            std::min(box.xHigh, frame.right), std::min(box.yHigh, frame.top)};
}

float areaOf(const PageBox &box) {
    return std::max(box.xHigh - box.xLow, 0.0F) * std::max(box.yHigh - box.yLow, 0.0F);
}

struct AxisEnd {
    float minimum = 0.0F;
    float maximum = 0.0F;
};

// What an axis has between two places of its frame.
AxisEnd between(const PlotScale &scale, float start, float end, float low, float high) {
    const auto value = [&](float place) {
        return static_cast<float>(
            scale.valueAt(static_cast<double>(place - start) / static_cast<double>(end - start)));
    };
    return {value(low), value(high)};
}

// Single precision must tell the ticks of the narrow axis apart.
bool canBeRead(const AxisEnd &ends, bool logarithmic) {
    constexpr double leastPart = 1.0e-4;
    const auto low = static_cast<double>(ends.minimum);
    const auto high = static_cast<double>(ends.maximum);
    const PlotScale scale = {low, high, logarithmic};
    return scale.isUsable() && high - low > leastPart * std::max(std::fabs(low), std::fabs(high));
}

void setAxis(PlotLimits &limits, const Axis &axis, const AxisEnd &ends) {
    limits.*axis.minimum = ends.minimum;
    limits.*axis.maximum = ends.maximum;
}

bool differs(const Axis &axis, const PlotLimits &left, const PlotLimits &right) {
    return left.*axis.minimum != right.*axis.minimum || left.*axis.maximum != right.*axis.maximum;
}

std::span<const Axis> axesAt(const PlotLimits &limits, float x, float y) {
    for (const ZoomedPlot &plot : plotsOf(limits)) {
        if (plot.panel.holds(x, y)) {
            return plot.all;
        }
    }
    return {};
}

void copyAxis(const Axis &axis, const PlotLimits &from, PlotLimits &to) {
    setAxis(to, axis, {from.*axis.minimum, from.*axis.maximum});
}

} // namespace

bool zoomPlot(PlotLimits &limits, const PageBox &box) {
    constexpr float least = 0.1F; // cm
    const std::vector<ZoomedPlot> plots = plotsOf(limits);
    const auto most =
        std::max_element(plots.begin(), plots.end(), [&](const auto &left, const auto &right) {
            return areaOf(partIn(left.panel.frame, box)) < areaOf(partIn(right.panel.frame, box));
        });
    const PagePanel &panel = most->panel;
    const PageBox part = partIn(panel.frame, box);
    if (part.xHigh - part.xLow < least || part.yHigh - part.yLow < least || !panel.isUsable()) {
        return false;
    }
    const AxisEnd across =
        between(panel.across, panel.frame.left, panel.frame.right, part.xLow, part.xHigh);
    const AxisEnd upward =
        between(panel.upward, panel.frame.bottom, panel.frame.top, part.yLow, part.yHigh);
    if (!canBeRead(across, panel.across.logarithmic) ||
        !canBeRead(upward, panel.upward.logarithmic)) {
        return false;
    }
    setAxis(limits, most->across, across);
    if (most->upward.minimum != nullptr) {
        setAxis(limits, most->upward, upward);
    }
    return true;
}

bool isZoomedAt(const PlotLimits &limits, const PlotLimits &whole, float x, float y) {
    const std::span<const Axis> axes = axesAt(limits, x, y);
    return std::any_of(axes.begin(), axes.end(),
                       [&](const Axis &axis) { return differs(axis, limits, whole); });
}

void unzoomPlot(PlotLimits &limits, const PlotLimits &whole, float x, float y) {
    for (const Axis &axis : axesAt(limits, x, y)) {
        copyAxis(axis, whole, limits);
    }
}

void keepSetLimits(PlotLimits &whole, const PlotLimits &before, const PlotLimits &after) {
    for (const std::span<const Axis> axes :
         {std::span<const Axis>(DataAxes), std::span<const Axis>(ModelAxes)}) {
        for (const Axis &axis : axes) {
            if (differs(axis, before, after)) {
                copyAxis(axis, after, whole);
            }
        }
    }
}

} // namespace keldrin
