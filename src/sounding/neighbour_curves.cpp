#include "sounding/neighbour_curves.h"

#include "page/drawing.h"
#include "page/drawing_clip.h"
#include "page/plot.h"
#include "sounding/presentation_model.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace keldrin {

namespace {

CurvePoints usedPoints(const std::vector<ErrorPoint> &points) {
    CurvePoints curve;
    for (const ErrorPoint &point : points) {
        if (!point.skipped) {
            curve.time.push_back(point.time);
            curve.value.push_back(point.value);
        }
    }
    return curve;
}

void addCorner(NeighbourCurve &curve, float resistivity, float depth) {
    curve.modelResistivity.push_back(resistivity);
    curve.modelDepth.push_back(depth);
}

// Through the middles of the layers, or in steps.
void addModel(NeighbourCurve &curve, const SoundingRecord &sounding, PageStyle style) {
    if (style == PageStyle::Presentation) {
        for (const LayerStep &step : modelSteps(sounding).steps) {
            addCorner(curve, step.resistivity, step.top);
            addCorner(curve, step.resistivity, step.bottom);
        }
        return;
    }
    const std::size_t layers = layerCount(sounding);
    for (std::size_t i = 0; i < layers; ++i) {
        if (i == 0) {
            addCorner(curve, sounding.ResInv[i], 0.0F);
        }
        addCorner(curve, sounding.ResInv[i], sounding.ZMid[i]);
    }
}

NeighbourCurve curveOf(const SurveyModel &survey, int station, PageStyle style) {
    const SoundingRecord &sounding = survey.sounding(station);
    const SoundingCurves curves = soundingCurves(sounding, survey.control.ErrorFloor);
    NeighbourCurve curve;
    curve.observed = usedPoints(curves.observed);
    curve.resistivity = usedPoints(curves.resistivity);
    addModel(curve, sounding, style);
    return curve;
}

void drawDashed(const std::vector<float> &across, const std::vector<float> &upward,
                const PagePanel &panel) {
    const ClipRectangle frame = {
        static_cast<double>(panel.frame.left), static_cast<double>(panel.frame.bottom),
        static_cast<double>(panel.frame.right), static_cast<double>(panel.frame.top)};
    for (std::size_t i = 1; i < across.size(); ++i) {
        std::array<float, 4> ends{};
        PlotToPage(across[i - 1], upward[i - 1], ends[0], ends[1]);
        PlotToPage(across[i], upward[i], ends[2], ends[3]);
        ClipSegment line = {static_cast<double>(ends[0]), static_cast<double>(ends[1]),
                            static_cast<double>(ends[2]), static_cast<double>(ends[3])};
        const bool finite =
            std::all_of(ends.begin(), ends.end(), [](float end) { return std::isfinite(end); });
        if (finite && clipSegment(frame, line)) {
            drawDashes(line);
        }
    }
}

void drawGrey(const std::vector<float> &across, const std::vector<float> &upward,
              const PagePanel &panel) {
    IGrColour(NeighbourColour);
    ToolkitLineWidth(NeighbourLineWidth);
    if (ToolkitFillsAreas()) {
        PlotDrawLine(across.data(), upward.data(), static_cast<int>(across.size()));
    } else {
        drawDashed(across, upward, panel);
    }
    ToolkitLineWidth(0.0F);
    IGrColour("BLACK");
}

void drawOverTime(const NeighbourCurves &neighbours, CurvePoints NeighbourCurve::*which,
                  const PagePanel &panel) {
    for (const NeighbourCurve &neighbour : neighbours.curves) {
        const CurvePoints &curve = neighbour.*which;
        std::vector<float> places(curve.value.size());
        std::transform(curve.value.begin(), curve.value.end(), places.begin(),
                       [&](float value) { return panel.placeOf(value); });
        drawGrey(curve.time, places, panel);
    }
}

} // namespace

NeighbourCurves neighbourCurves(const SurveyModel &survey, const PlotLimits &limits, int station) {
    NeighbourCurves neighbours;
    neighbours.before = limited(limits.neighbours, 0, std::max(station - 1, 0));
    neighbours.after = limited(limits.neighbours, 0, std::max(survey.SoundingCount - station, 0));
    for (int away = limits.neighbours; away >= 1; --away) {
        if (away <= neighbours.before) {
            neighbours.curves.push_back(curveOf(survey, station - away, limits.style));
        }
        if (away <= neighbours.after) {
            neighbours.curves.push_back(curveOf(survey, station + away, limits.style));
        }
    }
    return neighbours;
}

std::string neighbourText(const NeighbourCurves &neighbours) {
    return std::to_string(neighbours.before) + " before, " + std::to_string(neighbours.after) +
           " after";
}

void drawNeighbourData(const NeighbourCurves &neighbours, const PagePanel &panel) {
    drawOverTime(neighbours, &NeighbourCurve::observed, panel);
}

void drawNeighbourResistivities(const NeighbourCurves &neighbours, const PagePanel &panel) {
    drawOverTime(neighbours, &NeighbourCurve::resistivity, panel);
}

void drawNeighbourModels(const NeighbourCurves &neighbours, const PagePanel &panel) {
    for (const NeighbourCurve &neighbour : neighbours.curves) {
        drawGrey(neighbour.modelResistivity, neighbour.modelDepth, panel);
    }
}

} // namespace keldrin
