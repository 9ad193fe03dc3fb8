#include "sounding/map_plot.h"

#include "page/plot.h"

#include <string>

namespace keldrin {

void beginMapPlot(const PageFrame &viewport, const MapExtent &map) {
    PlotNew();
    PlotViewport(viewport.left, viewport.bottom, viewport.right, viewport.top);
    PlotUnits(map.east.lowest(), map.north.lowest(), map.east.highest(), map.north.highest());
    PlotScales("LIN", "LIN");
    PlotKind('G');
    PlotMarkerSize(MarkerSize.width, MarkerSize.height);
    PlotTickLength(0.25F);
    PlotXLabelOffset(0.7F);
    PlotYLabelOffset(0.85F);
}

void drawMapAxes(std::string_view unit) {
    const std::string inUnit = " (" + std::string(unit) + ")";
    selectTextSize(NumberSize);
    PlotXAxis();
    PlotYAxis();
    selectTextSize(LabelSize);
    PlotXLabel("Easting" + inUnit);
    PlotYLabel("Northing" + inUnit);
}

} // namespace keldrin
