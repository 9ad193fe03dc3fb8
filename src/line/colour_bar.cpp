#include "line/colour_bar.h"

#include "page/colour_scales.h"
#include "page/drawing.h"
#include "page/plot.h"
#include "page/plot_ticks.h"

#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace keldrin {

namespace {

void fillStep(const ValueColours &colours, int step, int steps) {
    const double from = colours.scale.valueAt(static_cast<double>(step) / steps);
    const double to = colours.scale.valueAt(static_cast<double>(step + 1) / steps);
    const std::array<double, 4> x = {0.0, 1.0, 1.0, 0.0};
    const std::array<double, 4> y = {from, from, to, to};
    const float part = static_cast<float>(step) / static_cast<float>(steps - 1);
    PlotFillArea(x.data(), y.data(), static_cast<int>(x.size()), colourAt(colours.colours, part));
}

} // namespace

PageColour ValueColours::of(float value) const {
    return colourAt(colours, static_cast<float>(scale.fractionOf(static_cast<double>(value))));
}

void numberRoundValues(const PlotScale &scale) {
    constexpr double longest = 1000.0; // of the limits
    constexpr double hair = 1.0e-5;
    constexpr std::array mantissas = {1.0, 2.0, 5.0};
    if (!scale.logarithmic || !scale.isUsable() || scale.max > scale.min * longest * (1.0 + hair)) {
        return;
    }
    std::vector<float> values;
    std::vector<std::string> labels;
    const int last = static_cast<int>(std::floor(std::log10(scale.max) + hair));
    for (int decade = static_cast<int>(std::floor(std::log10(scale.min))); decade <= last;
         ++decade) {
        for (const double mantissa : mantissas) {
            const double value = mantissa * std::pow(10.0, decade);
            if (value >= scale.min * (1.0 - hair) && value <= scale.max * (1.0 + hair)) {
                values.push_back(static_cast<float>(value));
                labels.push_back(tickText(value));
            }
        }
    }
    if (values.size() > 1) {
        PlotTickPositions(values.data(), static_cast<int>(values.size()));
        PlotTickLabels(labels);
    }
}

void drawColourBar(const PageFrame &frame, const ValueColours &colours, std::string_view label) {
    constexpr int steps = 64;
    constexpr float reach = 1.1F; // cm
    PlotNew();
    PlotViewport(frame.left / PageWidthCm, frame.bottom / PageHeightCm, frame.right / PageWidthCm,
                 frame.top / PageHeightCm);
    PlotUnits(0.0, colours.scale.min, 1.0, colours.scale.max);
    PlotScales("LIN", colours.scale.logarithmic ? "LOG" : "LIN");
    PlotTickLength(0.25F);
    for (int step = 0; step < steps; ++step) {
        fillStep(colours, step, steps);
    }
    PlotFrame();
    PlotNumberReach(reach);
    selectTextSize(NumberSize);
    numberRoundValues(colours.scale);
    PlotYAxisRight();
    PlotYLabelOffset(0.1F);
    selectTextSize(LabelSize);
    PlotYLabelRight(label);
}

} // namespace keldrin
