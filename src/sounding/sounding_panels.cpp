#include "sounding/sounding_panels.h"

#include "page/plot.h"
#include "physics/data_fit.h"

namespace keldrin {

namespace {

// The standard page, whose viewports have seven digits.
constexpr PageFrame DataViewport = {0.0625F, 0.0833333F, 0.4791667F, 0.9722222F};
constexpr PageFrame ModelViewport = {0.5625F, 0.0833333F, 0.9375F, 0.9722222F};

PlotScale scaleOf(float min, float max, bool logarithmic) {
    return {static_cast<double>(min), static_cast<double>(max), logarithmic};
}

PageFrame viewportOf(const PageFrame &frame) {
    return {frame.left / PageWidthCm, frame.bottom / PageHeightCm, frame.right / PageWidthCm,
            frame.top / PageHeightCm};
}

bool isStandard(const PlotLimits &limits) {
    return limits.style == PageStyle::Standard;
}

// A plot of the presentation over time.
PagePanel timePanel(const PlotLimits &limits, const PageFrame &frame, const PlotScale &upward) {
    return {frame, viewportOf(frame), scaleOf(limits.PlotTimeMin, limits.PlotTimeMax, true), upward,
            false};
}

std::vector<float> valuesOf(const WindowReals &stored, std::size_t windows) {
    return {stored.begin(), stored.begin() + static_cast<std::ptrdiff_t>(windows)};
}

// Below the least resistivity a window has no such mark.
std::vector<float> resistivitiesOf(const SoundingRecord &sounding) {
    std::vector<float> values = valuesOf(sounding.AResObs, windowCount(sounding));
    for (float &value : values) {
        value = value >= LeastResistivity ? value : MissingValue;
    }
    return values;
}

} // namespace

PagePanel dataPanel(const PlotLimits &limits) {
    constexpr double footHeight = 0.012; // of the plot: a mark upon the axis is seen whole
    const PlotScale values = limits.logData
                                 ? scaleOf(limits.PlotLogMin, limits.PlotLogMax, true)
                                 : scaleOf(limits.PlotDataMin, limits.PlotDataMax, false);
    PagePanel panel = timePanel(limits, PresentedDataFrame, values);
    panel.arcSinh = !limits.logData;
    panel.foot = limits.logData ? static_cast<float>(values.valueAt(footHeight)) : 0.0F;
    if (isStandard(limits)) {
        panel.frame = DataFrame;
        panel.viewport = DataViewport;
    }
    return panel;
}

PagePanel resistivityPanel(const PlotLimits &limits) {
    return isStandard(limits) ? dataPanel(limits)
                              : timePanel(limits, PresentedResistivityFrame,
                                          scaleOf(limits.PlotAResMin, limits.PlotAResMax, true));
}

PagePanel misfitPanel(const PlotLimits &limits) {
    return timePanel(limits, PresentedMisfitFrame,
                     scaleOf(-limits.PlotMisfitMax, limits.PlotMisfitMax, false));
}

PagePanel modelPanel(const PlotLimits &limits) {
    const PageFrame frame = isStandard(limits) ? ModelFrame : PresentedModelFrame;
    return {frame, isStandard(limits) ? ModelViewport : viewportOf(frame),
            scaleOf(limits.PlotResMin, limits.PlotResMax, true),
            scaleOf(limits.PlotDepthMin, limits.PlotDepthMax, false), false};
}

void layPanel(const PagePanel &panel) {
    const auto scaleName = [](const PlotScale &scale) {
        return scale.logarithmic ? "LOG" : "LIN";
    };
    PlotViewport(panel.viewport.left, panel.viewport.bottom, panel.viewport.right,
                 panel.viewport.top);
    PlotUnits(panel.across.min, panel.upward.min, panel.across.max, panel.upward.max);
    PlotScales(scaleName(panel.across), scaleName(panel.upward));
}

std::vector<MarkedPanel> markedPanels(const ControlValues &control, const SoundingRecord &sounding,
                                      const PlotLimits &limits) {
    std::vector<MarkedPanel> marks = {
        {MarkKind::Observed, dataPanel(limits), valuesOf(sounding.TEMobs, windowCount(sounding))},
        {MarkKind::Resistivity, resistivityPanel(limits), resistivitiesOf(sounding)}};
    if (!isStandard(limits)) {
        marks.push_back(
            {MarkKind::Misfit, misfitPanel(limits), soundingFit(control, sounding).residuals});
    }
    return marks;
}

} // namespace keldrin
