#pragma once

#include "page/drawing_clip.h"
#include "page/plot_scale.h"
#include "page/surfaces/surface.h"

#include <string>
#include <vector>

namespace keldrin {

// Shared by the sources of the plot calls only.

/// How far, in page cm, numbers reach from an axis.
struct NumberRoom {
    double below = 0.0;
    double left = 0.0;
    double right = 0.0;
};

/// The settings of the plot in work. One per process.
struct PlotState {
    ClipRectangle viewport = {0.1, 0.1, 0.9, 0.9}; ///< fractions of the view's area
    PlotScale x;
    PlotScale y;
    char kind = 'P';
    float xLabelOffset = 0.5F; ///< page cm
    float yLabelOffset = 0.5F; ///< page cm
    float tickLength = 0.25F;  ///< of the character height
    float numberReach = 0.0F;  ///< page cm beside the frame; 0: no limit
    float markerWidth = 0.00523617F;
    float markerHeight = 0.0117667F;
    bool ownTicks = false; ///< ticks by hand, else automatic ones
    std::vector<double> tickPositions;
    std::vector<std::string> tickLabels;
    bool raisedExponents = false;
    NumberRoom numberRoom;
};

PlotState &plotState();

/// False, with an error state, when the axis limits allow no plot.
bool plotIsUsable();

/// The frame in fractions of the surface.
ClipRectangle plotFrameRectangle();

/// Axis values as fractions of the surface, unbounded; NaN where an axis has no such value.
struct SurfacePlace {
    double x = 0.0;
    double y = 0.0;
};
SurfacePlace surfacePlace(double x, double y);

} // namespace keldrin
