#include "sounding/presentation_model.h"

#include "base/index.h"
#include "base/real.h"
#include "page/colour_scales.h"
#include "page/drawing.h"
#include "page/page_colours.h"
#include "page/plot.h"
#include "physics/data_fit.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace keldrin {

namespace {

// Of a layer below the depth of the data: the less they see of it, the paler it is.
float fadeOf(float sensitivity) {
    constexpr float seen = 3.0F;
    constexpr float least = 0.45F;
    constexpr float most = 0.8F;
    constexpr float decades = 1.5F; // of sensitivity, from the least to the most
    const float part = std::log10(seen / std::max(sensitivity, 1.0e-3F)) / decades;
    return least + (most - least) * limited(part, 0.0F, 1.0F);
}

bool tellsErrors(const SoundingRecord &sounding, std::size_t layers) {
    for (std::size_t i = 0; i < layers; ++i) {
        if (sounding.Rsns[i] > 0.0F || sounding.Rerr[i] != sounding.Rerr0[i]) {
            return true;
        }
    }
    return false;
}

LayerStep stepOf(const SoundingRecord &sounding, std::size_t layer, float top) {
    const float resistivity = sounding.ResInv[layer];
    const float factor = 1.0F + std::max(sounding.Rerr[layer], 0.0F) / 100.0F;
    return {
        top, top - sounding.ThkInv[layer], resistivity, resistivity / factor, resistivity * factor,
        0.0F};
}

bool isStep(const LayerStep &step) {
    return std::isfinite(step.bottom) && step.bottom < step.top && step.resistivity > 0.0F &&
           std::isfinite(step.high) && step.low > 0.0F;
}

ClipRectangle rectangleOf(const PageFrame &frame) {
    return {static_cast<double>(frame.left), static_cast<double>(frame.bottom),
            static_cast<double>(frame.right), static_cast<double>(frame.top)};
}

ClipSegment onPage(float x1, float y1, float x2, float y2) {
    std::array<float, 4> places{};
    PlotToPage(x1, y1, places[0], places[1]);
    PlotToPage(x2, y2, places[2], places[3]);
    return {static_cast<double>(places[0]), static_cast<double>(places[1]),
            static_cast<double>(places[2]), static_cast<double>(places[3])};
}

// A part of the stepped line, from one resistivity and depth to another.
void drawPart(const std::array<float, 2> &across, const std::array<float, 2> &depths, bool dashed,
              const PagePanel &panel) {
    if (!dashed) {
        PlotDrawLine(across.data(), depths.data(), 2);
        return;
    }
    ClipSegment line = onPage(across[0], depths[0], across[1], depths[1]);
    if (clipSegment(rectangleOf(panel.frame), line)) {
        drawDashes(line);
    }
}

void fillBand(const LayerStep &step) {
    const std::array<float, 4> across = {step.low, step.high, step.high, step.low};
    const std::array<float, 4> depths = {step.top, step.top, step.bottom, step.bottom};
    PlotFillArea(across.data(), depths.data(), 4, fadedColour(BandColour, step.fade));
}

// Both edges of the band as lines in steps.
void outlineBand(const ModelSteps &model) {
    for (float LayerStep::*edge : {&LayerStep::low, &LayerStep::high}) {
        std::vector<float> across;
        std::vector<float> depths;
        for (const LayerStep &step : model.steps) {
            if (step.fade > 0.0F) {
                break;
            }
            across.insert(across.end(), {step.*edge, step.*edge});
            depths.insert(depths.end(), {step.top, step.bottom});
        }
        PlotDrawLine(across.data(), depths.data(), static_cast<int>(across.size()));
    }
}

void drawSteps(const ModelSteps &model, const PagePanel &panel) {
    const bool fades = ToolkitFillsAreas();
    ToolkitLineWidth(ModelLineWidth);
    const LayerStep *above = nullptr;
    for (const LayerStep &step : model.steps) {
        const bool dashed = !fades && step.fade > 0.0F;
        IGrColour(fadedColour(Colour::Black, step.fade));
        if (above != nullptr) {
            drawPart({above->resistivity, step.resistivity}, {step.top, step.top}, dashed, panel);
        }
        drawPart({step.resistivity, step.resistivity}, {step.top, step.bottom}, dashed, panel);
        above = &step;
    }
}

void drawDepthOfData(float depth, const PagePanel &panel) {
    const auto low = static_cast<float>(panel.across.min);
    const auto high = static_cast<float>(panel.across.max);
    IGrColour("BLACK");
    ToolkitLineWidth(ThinLineWidth);
    drawPart({low, high}, {depth, depth}, true, panel);
}

} // namespace

ModelSteps modelSteps(const SoundingRecord &sounding) {
    ModelSteps model;
    const std::size_t layers = layerCount(sounding);
    model.hasErrors = tellsErrors(sounding, layers);
    const auto seen = asIndex(seenLayers(sounding));
    float top = 0.0F;
    for (std::size_t i = 0; i < layers; ++i) {
        LayerStep step = stepOf(sounding, i, top);
        if (!isStep(step)) {
            break;
        }
        if (!model.hasErrors) {
            step.low = step.high = step.resistivity;
        } else if (i >= seen) {
            step.fade = fadeOf(sounding.Rsns[i]);
        } else {
            model.depthOfData = step.bottom;
        }
        model.steps.push_back(step);
        top = step.bottom;
    }
    return model;
}

void drawModelBands(const ModelSteps &model) {
    if (!model.hasErrors) {
        return;
    }
    if (ToolkitFillsAreas()) {
        std::for_each(model.steps.begin(), model.steps.end(), fillBand);
        return;
    }
    IGrColour("BLACK");
    ToolkitLineWidth(ThinLineWidth);
    outlineBand(model);
}

void drawModelSteps(const ModelSteps &model, const PagePanel &panel) {
    drawSteps(model, panel);
    if (model.depthOfData < 0.0F) {
        drawDepthOfData(model.depthOfData, panel);
    }
    ToolkitLineWidth(0.0F);
    IGrColour("BLACK");
}

void drawDashes(const ClipSegment &line) {
    constexpr double dash = 0.2; // cm
    constexpr double period = 0.32;
    const double length = std::hypot(line.x2 - line.x1, line.y2 - line.y1);
    const auto goTo = [&](void (*go)(float, float), double distance) {
        const double part = std::min(distance / length, 1.0);
        go(static_cast<float>(line.x1 + part * (line.x2 - line.x1)),
           static_cast<float>(line.y1 + part * (line.y2 - line.y1)));
    };
    for (int i = 0; static_cast<double>(i) * period < length; ++i) {
        const double start = static_cast<double>(i) * period;
        goTo(ToolkitMoveTo, start);
        goTo(ToolkitLineTo, start + dash);
    }
}

} // namespace keldrin
