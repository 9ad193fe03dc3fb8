#pragma once

#include "line/section_limits.h"

namespace keldrin {

/// What the dots of the plan are coloured by, numbered as the list of its dialog.
enum PlanQuantity : int {
    PlainDots = 1,
    SkippedShare = 2,      ///< percent of the windows
    MisfitOfSounding = 3,  ///< in units of the data errors
    ResistivityAtDepth = 4 ///< ohm-m
};

/// The part of the ground that the map shows, LengthUnits; one of the directions is widened to keep
/// both at the same scale.
struct MapLimits {
    double west = 0.0;
    double east = 1.0;
    double south = 0.0;
    double north = 1.0;

    bool operator==(const MapLimits &) const = default;
};

/// What the user chooses of a plan. Limits count where their switch is on; the page finds the
/// others itself.
struct PlanLimits {
    int quantity = PlainDots;
    float depth = 50.0F; ///< LengthUnits below the surface, where the resistivity is taken
    int colours = 1;     ///< of colourScales(), from 1
    bool setValues = false;
    AxisLimits values = {0.0F, 1.0F}; ///< of the quantity
    bool setMap = false;
    MapLimits map = {};
};

} // namespace keldrin
