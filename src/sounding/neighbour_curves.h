#pragma once

#include "model/survey_model.h"
#include "page/surfaces/surface.h"
#include "sounding/plot_limits.h"
#include "sounding/sounding_panels.h"
#include "sounding/sounding_plot_points.h"

#include <string>
#include <vector>

namespace keldrin {

// Soundings before and after the one of a page, drawn in grey behind its data and its model. They
// follow it as the keys walk the line, whatever their transmitter.

/// What is drawn of one of them.
struct NeighbourCurve {
    CurvePoints observed;                ///< dB/dt of the windows that are not skipped
    CurvePoints resistivity;             ///< apparent, of the same, ohm-m
    std::vector<float> modelResistivity; ///< corners of the model in the style of the page, ohm-m
    std::vector<float> modelDepth;       ///< LengthUnits below the surface, negative
};

struct NeighbourCurves {
    int before = 0; ///< soundings; fewer near an end of the line than were asked for
    int after = 0;
    std::vector<NeighbourCurve> curves; ///< of both, the farthest first
};

/// The neighbours of a sounding, as many on each side as the limits say.
/// station  ordinal, from 1
NeighbourCurves neighbourCurves(const SurveyModel &survey, const PlotLimits &limits, int station);

/// How many there are: "2 before, 1 after".
std::string neighbourText(const NeighbourCurves &neighbours);

inline constexpr PageColour NeighbourColour = 0xA0A0A0;
inline constexpr float NeighbourLineWidth = 0.6F; ///< points

// Draw them on a panel, which must be the plot in force, and leave the pen black and of the usual
// width. A device that has no grey shows dashes.
void drawNeighbourData(const NeighbourCurves &neighbours, const PagePanel &panel);
void drawNeighbourResistivities(const NeighbourCurves &neighbours, const PagePanel &panel);
void drawNeighbourModels(const NeighbourCurves &neighbours, const PagePanel &panel);

} // namespace keldrin
