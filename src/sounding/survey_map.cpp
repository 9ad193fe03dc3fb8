#include "sounding/survey_map.h"

#include "base/real.h"
#include "page/surfaces/surface.h"
#include "projectfile/table_file.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace keldrin {

namespace {

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

} // namespace

bool isOnMap(const ControlValues &control, const SoundingRecord &sounding) {
    return !isLeftOut(control, sounding) && isKnown(sounding.East) && isKnown(sounding.North);
}

MapPoints soundingsOnMap(const SurveyModel &survey) {
    MapPoints points;
    for (const SoundingRecord &sounding : survey.soundings()) {
        if (isOnMap(survey.control, sounding)) {
            points.add(sounding.East, sounding.North);
        }
    }
    return points;
}

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

void MapSpan::join(const std::vector<double> &values) {
    for (const double value : values) {
        low = std::min(low, value);
        high = std::max(high, value);
    }
}

double windowShape() {
    const int width = ToolkitWindowInfo(WindowWidth);
    const int height = ToolkitWindowInfo(WindowHeight);
    return width > 0 && height > 0 ? static_cast<double>(height) / width : PageShape;
}

double shownPageShape() {
    return ToolkitHasSurface() ? windowShape() : PageShape;
}

MapExtent mapExtent(const MapPoints &soundings, const MapPoints &loop, double shape) {
    constexpr double margin = 1.05;
    constexpr double leastSpan = 1.0;
    MapExtent map;
    for (const MapPoints *points : {&soundings, &loop}) {
        map.east.join(points->east);
        map.north.join(points->north);
    }
    map.east.width = std::max(map.east.extent(), leastSpan) * margin;
    map.north.width = map.north.extent() * margin;
    return widenedTo(map, shape);
}

MapExtent widenedTo(MapExtent map, double shape) {
    if (map.north.width / map.east.width >= shape) {
        map.east.width = map.north.width / shape;
    } else {
        map.north.width = map.east.width * shape;
    }
    return map;
}

} // namespace keldrin
