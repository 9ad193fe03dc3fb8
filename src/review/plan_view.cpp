#include "review/plan_view.h"

#include "base/paths.h"
#include "base/real.h"
#include "page/drawing.h"
#include "page/plot.h"
#include "projectfile/table_file.h"
#include "review/page_layout.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <optional>
#include <string>
#include <vector>

namespace keldrin {

namespace {

constexpr PageTextSize TitleSize = {0.0104723F, 0.0235333F}; // 12 points
constexpr float FrameRight = 23.5F;                          // page cm

// East and north of points on the map, in LengthUnits.
struct MapPoints {
    std::vector<double> east;
    std::vector<double> north;

    void add(double e, double n) {
        east.push_back(e);
        north.push_back(n);
    }
    [[nodiscard]] int count() const { return static_cast<int>(east.size()); }
};

struct MapPoint {
    double east = 0.0;
    double north = 0.0;
};

bool isKnown(double value) {
    return isPresent(value) && std::isfinite(value);
}

// Sine and cosine of a bearing, clockwise from north.
struct Bearing {
    double sine = 0.0;
    double cosine = 1.0;
};

Bearing bearingOf(float azimuthDegrees) {
    const double radians = static_cast<double>(azimuthDegrees) * std::numbers::pi / 180.0;
    return {std::sin(radians), std::cos(radians)};
}

bool isShown(const ControlValues &control, const SoundingRecord &sounding) {
    return !isLeftOut(control, sounding) && isKnown(sounding.East) && isKnown(sounding.North);
}

MapPoints shownSoundings(const SurveyModel &survey) {
    MapPoints points;
    for (const SoundingRecord &sounding : survey.soundings()) {
        if (isShown(survey.control, sounding)) {
            points.add(sounding.East, sounding.North);
        }
    }
    return points;
}

// The loop lies along the line from the receiver by the difference of the stations, and across it
// by the offset.
MapPoint movingLoopCentre(const ControlValues &control, const SoundingRecord &first) {
    if (!isKnown(first.TxStn) || !isKnown(first.RxStn)) {
        return {MissingValue, MissingValue};
    }
    const double along = (first.TxStn - first.RxStn) * static_cast<double>(control.StnScale);
    const auto across = static_cast<double>(control.YRxOffset);
    if (along == 0.0 && across == 0.0) {
        return {first.East, first.North};
    }
    if (!isPresent(control.LineAzimuth)) {
        return {MissingValue, MissingValue};
    }
    const Bearing line = bearingOf(control.LineAzimuth);
    return {first.East - across * line.cosine + along * line.sine,
            along * line.cosine + first.North + line.sine * across};
}

std::optional<MapPoint> loopCentre(const SurveyModel &survey) {
    const ControlValues &control = survey.control;
    const SoundingRecord &first = survey.hTrn.front();
    MapPoint centre = {first.East, first.North};
    if (control.SurveyTypeIndex == FixedLoop) {
        centre = {control.XTxCenter, control.YTxCenter};
    } else if (!isKnown(first.East) || !isKnown(first.North)) {
        return std::nullopt;
    } else if (control.SurveyTypeIndex == MovingLoop) {
        centre = movingLoopCentre(control, first);
    }
    if (!isKnown(centre.east) || !isKnown(centre.north)) {
        return std::nullopt;
    }
    return centre;
}

// The loop as a closed line: four corners and the first one again. Its x axis lies along TxAzimuth
// and its y axis to the left of that. Empty when its place or direction is not known.
MapPoints loopOutline(const SurveyModel &survey) {
    constexpr std::array<std::array<double, 2>, 5> corners = {
        {{-1.0, -1.0}, {1.0, -1.0}, {1.0, 1.0}, {-1.0, 1.0}, {-1.0, -1.0}}};
    const ControlValues &control = survey.control;
    const std::optional<MapPoint> centre = loopCentre(survey);
    MapPoints outline;
    if (!centre || !isPresent(control.TxAzimuth)) {
        return outline;
    }
    const Bearing azimuth = bearingOf(control.TxAzimuth);
    for (const std::array<double, 2> &corner : corners) {
        const double x = corner[0] * static_cast<double>(control.XTxLength) / 2.0;
        const double y = corner[1] * static_cast<double>(control.YTxLength) / 2.0;
        outline.add(azimuth.sine * x + centre->east - azimuth.cosine * y,
                    azimuth.cosine * x + centre->north + azimuth.sine * y);
    }
    return outline;
}

// One direction of the map: the middle of what is shown and the width of the map.
struct MapSpan {
    double low = 1.0e32;
    double high = -1.0e32;
    double width = 0.0;

    void join(const std::vector<double> &values) {
        for (const double value : values) {
            low = std::min(low, value);
            high = std::max(high, value);
        }
    }
    [[nodiscard]] double extent() const { return high - low; }
    [[nodiscard]] double lowest() const { return (low + high - width) / 2.0; }
    [[nodiscard]] double highest() const { return (low + high + width) / 2.0; }
};

struct MapExtent {
    MapSpan east;
    MapSpan north;
};

double windowShape() {
    constexpr double shapeOfPage = 0.75;
    const int width = ToolkitWindowInfo(WindowWidth);
    const int height = ToolkitWindowInfo(WindowHeight);
    return width > 0 && height > 0 ? static_cast<double>(height) / width : shapeOfPage;
}

// Equal scale: the span that the window has room for in the other direction is widened.
MapExtent mapExtent(const MapPoints &soundings, const MapPoints &loop) {
    constexpr double margin = 1.05;
    constexpr double leastSpan = 1.0;
    MapExtent map;
    for (const MapPoints *points : {&soundings, &loop}) {
        map.east.join(points->east);
        map.north.join(points->north);
    }
    map.east.width = std::max(map.east.extent(), leastSpan) * margin;
    map.north.width = map.north.extent() * margin;
    const double shape = windowShape();
    if (map.north.width / map.east.width >= shape) {
        map.east.width = map.north.width / shape;
    } else {
        map.north.width = map.east.width * shape;
    }
    return map;
}

void setUpPlot(const MapExtent &map) {
    PlotNew();
    PlotViewport(0.1041667F, 0.0833333F, 0.9791667F, 0.9722222F);
    PlotUnits(map.east.lowest(), map.north.lowest(), map.east.highest(), map.north.highest());
    PlotScales("LIN", "LIN");
    PlotKind('G');
    PlotMarkerSize(MarkerSize.width, MarkerSize.height);
    PlotTickLength(0.25F);
    PlotXLabelOffset(0.7F);
    PlotYLabelOffset(0.85F);
}

void drawTitle(const ControlValues &control, std::string_view fileName) {
    std::vector<std::string> lines = {"Plan View of Survey Configuration"};
    if (!control.LineName.isBlank()) {
        const std::string line = "Line " + control.LineName.str();
        lines.push_back(control.JobName.isBlank() ? line : control.JobName.str() + " " + line);
    }
    lines.push_back("Data from " + std::string(fileName));

    selectTextSize(TitleSize);
    const float indent = 2.0F * ToolkitTextMetric(TextCharacterWidth);
    const float x = 2.5F + indent;
    float y = 17.5F;
    for (const std::string &line : lines) {
        y -= ToolkitTextMetric(TextCharacterHeight);
        ToolkitDrawText(x, y, ToolkitFittingText(line, FrameRight - indent - x));
    }
}

void drawAxes(std::string_view unit) {
    const std::string inUnit = " (" + std::string(unit) + ")";
    selectTextSize(NumberSize);
    PlotXAxis();
    PlotYAxis();
    selectTextSize(LabelSize);
    PlotXLabel("Easting" + inUnit);
    PlotYLabel("Northing" + inUnit);
}

void drawPoints(const MapPoints &points) {
    PlotMarkers(points.east.data(), points.north.data(), points.count(), DotMarker);
}

} // namespace

int Plot_PlanView(const SurveyModel &survey, std::string_view path) {
    if (survey.SoundingCount < 1 || survey.hTrn.empty()) {
        return 1;
    }
    const MapPoints soundings = shownSoundings(survey);
    const MapPoints loop = loopOutline(survey);
    const bool isMap = soundings.count() + loop.count() > 0;
    beginReviewPage();
    if (isMap) {
        setUpPlot(mapExtent(soundings, loop));
        PlotFrame();
    }
    drawTitle(survey.control, fileNameOf(path));
    if (isMap) {
        drawAxes(survey.control.LengthUnits.view());
        IGrColour("Red");
        PlotDrawLine(loop.east.data(), loop.north.data(), loop.count());
        drawPoints(loop);
        IGrColour("Black");
        drawPoints(soundings);
    }
    ToolkitFlush();
    return 0;
}

} // namespace keldrin
