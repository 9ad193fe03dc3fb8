#pragma once

#include "model/survey_model.h"

#include <optional>
#include <vector>

namespace keldrin {

// Where soundings and the loop of a survey lie on a map. Coordinates are LengthUnits.

struct MapPoint {
    double east = 0.0;
    double north = 0.0;
};

/// East and north of points on the map.
struct MapPoints {
    std::vector<double> east;
    std::vector<double> north;

    void add(double e, double n) {
        east.push_back(e);
        north.push_back(n);
    }
    [[nodiscard]] int count() const { return static_cast<int>(east.size()); }
};

/// True for a sounding that stands on the map: it has East and North and, on a Fixed-Loop line, the
/// project's transmitter.
bool isOnMap(const ControlValues &control, const SoundingRecord &sounding);

/// The soundings that stand on the map, in their order.
MapPoints soundingsOnMap(const SurveyModel &survey);

/// The loop as a closed line: four corners and the first one again. Its x axis lies along TxAzimuth
/// and its y axis to the left of that. On a Moving-Loop line the loop is that of the first
/// sounding. Empty when its place or direction is not known. The survey must have a sounding.
MapPoints loopOutline(const SurveyModel &survey);

/// One direction of the map: the middle of what is shown and the width of the map.
struct MapSpan {
    double low = 1.0e32;
    double high = -1.0e32;
    double width = 0.0;

    void join(const std::vector<double> &values);
    [[nodiscard]] double extent() const { return high - low; }
    [[nodiscard]] double lowest() const { return (low + high - width) / 2.0; }
    [[nodiscard]] double highest() const { return (low + high + width) / 2.0; }
};

struct MapExtent {
    MapSpan east;
    MapSpan north;
};

/// The map that holds soundings and loop with a margin, at equal scale of both directions: the one
/// that the frame has room for in the other direction is widened.
/// shape  height of the frame over its width, as the user sees it
MapExtent mapExtent(const MapPoints &soundings, const MapPoints &loop, double shape);

/// A map of the given widths with one of them widened to equal scale.
MapExtent widenedTo(MapExtent map, double shape);

/// Height over width of the root window's page, PageShape without a window.
double windowShape();

/// Height over width of the page that is drawn on, the window's or that of a hardcopy.
double shownPageShape();

} // namespace keldrin
