#pragma once

#include <string_view>

namespace keldrin {

// Axis plotting on a viewport of the page. The plot is laid upon the view and never changes it.

void PlotNew(); ///< forgets the settings of the last plot

/// Plot rectangle in fractions of the page.
void PlotViewport(float x1, float y1, float x2, float y2);

/// Axis limits; on a logarithmic axis the limits are the real values.
void PlotUnits(float xMin, float yMin, float xMax, float yMax);

void PlotKind(char kind);                                     ///< 'P' curve plot, 'G' plan
void PlotScales(std::string_view x, std::string_view y);      ///< each "LOG" or "LIN"
void PlotFrame();                                             ///< draws the rectangle

void PlotXLabelOffset(float value); ///< distance of the label from the axis, page centimetres
void PlotYLabelOffset(float value);
void PlotXLabel(std::string_view text);      ///< centred below the X axis
void PlotYLabel(std::string_view text);      ///< centred, rotated, left of the Y axis
void PlotYLabelRight(std::string_view text); ///< the same on the right side
void PlotTickLength(float value);            ///< as a fraction of the character height

// Draw the scale of an axis between two values: ticks inward and numbers, in the text size now set.
void PlotXAxis(float min, float max);
void PlotYAxis(float min, float max);
void PlotYAxisRight(float min, float max);

// One data set: a line through points, or a marker at each. Clipped to the plot's frame.
void PlotDrawLine(const float *x, const float *y, int count);
void PlotMarkers(const float *x, const float *y, int count, int marker);

void PlotToPage(float x, float y, float &px, float &py);   ///< axis values to page units
void PlotFromPage(float px, float py, float &x, float &y); ///< the inverse

/// One marker at page units: 1 a plus, 14 a filled dot.
/// width, height  fractions of the page
void PlotMarker(float px, float py, int marker);
void PlotMarkerSize(float width, float height);

} // namespace keldrin
