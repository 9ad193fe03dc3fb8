#pragma once

#include "sounding/page_layout.h"
#include "sounding/survey_map.h"

#include <string_view>

namespace keldrin {

/// Begins the plot of a map.
/// viewport  of the plot, in parts of the page instead of centimetres
void beginMapPlot(const PageFrame &viewport, const MapExtent &map);

/// Draws the axes of the map and their names.
/// unit  of the coordinates
void drawMapAxes(std::string_view unit);

} // namespace keldrin
