#pragma once

#include "page/surfaces/surface.h"

#include <span>
#include <string>
#include <string_view>

namespace keldrin {

// Axis plotting on a viewport of the page. The plot is laid upon the view and never changes it.
//
// With axis limits that allow no plot (equal, not finite, not above 0 on a logarithmic axis) every
// call that would draw leaves an error state and draws nothing. Points that are not finite, or
// that a logarithmic axis lacks, are left out.
//
// Map coordinates need more digits than a 32-bit real has; the calls for them exist in both widths.

void PlotNew(); ///< forgets the settings of the last plot

/// Plot rectangle in fractions of the page.
void PlotViewport(float x1, float y1, float x2, float y2);

/// Axis limits; on a logarithmic axis the limits are the real values. A lower limit above the
/// upper one turns the axis round.
void PlotUnits(double xMin, double yMin, double xMax, double yMax);

void PlotKind(char kind); ///< 'P' curve plot, 'G' plan: the frame has faint grid marks
void PlotScales(std::string_view x, std::string_view y); ///< each "LOG" or "LIN"
void PlotFrame();                                        ///< draws the rectangle

// Draw the scale of a whole axis: ticks inward and numbers, in the text size now set. Numbers that
// would touch are thinned out.
void PlotXAxis();
void PlotXAxisTop();
void PlotYAxis();
void PlotYAxisRight();
void PlotTickLength(float value); ///< as a fraction of the character height

/// Room for the numbers beside the plot, in page centimetres from the axis: an axis whose numbers
/// would reach farther has them in a smaller size. 0: no limit.
void PlotNumberReach(float value);

/// Places for the ticks of the axes that follow, without numbers; count -1 restores the
/// automatic ticks.
void PlotTickPositions(const float *values, int count);
/// Whether the numbers of the axes that follow have true exponents: a logarithmic axis whose
/// numbers are all powers of ten writes them as 10 with a raised exponent, 1 and 10 as they are,
/// and of the labels below what stands after a "^" is raised. Not after PlotNew().
void PlotRaisedExponents(bool on);

/// Labels of the positions, in their order; blank or none: a tick alone. Where labels are thinned
/// out the one at value 0 stays.
void PlotTickLabels(std::span<const std::string> labels);

// Axis labels, centred along the frame, in the text size now set. A label stands at its offset
// from the axis or, where that is more, half a character outside the numbers of the axis: so draw
// the axis first. It is moved back onto the page where it would leave it.
void PlotXLabelOffset(float value); ///< page centimetres
void PlotYLabelOffset(float value);
void PlotXLabel(std::string_view text);      ///< below the X axis
void PlotYLabel(std::string_view text);      ///< rotated, left of the Y axis
void PlotYLabelRight(std::string_view text); ///< rotated, right of the frame

// One data set: a line through points, or a marker (PlusMarker, DotMarker, RingMarker) at each. A
// line is cut off at the frame; a marker whose centre lies outside is left out.
void PlotDrawLine(const float *x, const float *y, int count);
void PlotDrawLine(const double *x, const double *y, int count);
void PlotMarkers(const float *x, const float *y, int count, int marker);
void PlotMarkers(const double *x, const double *y, int count, int marker);

/// Fills the area between corners, cut off at the frame, in a colour of its own. An area with a
/// corner that a logarithmic axis lacks is left out.
/// returns  false, with nothing drawn, where there are no filled areas
bool PlotFillArea(const float *x, const float *y, int count, PageColour colour);
bool PlotFillArea(const double *x, const double *y, int count, PageColour colour);

/// A rectangle between values of the axes.
struct PlotRectangle {
    double left = 0.0;
    double bottom = 0.0;
    double right = 0.0;
    double top = 0.0;
    PageColour colour = 0;
};
/// PlotFillArea() of many rectangles, one after the other.
bool PlotFillRectangles(std::span<const PlotRectangle> rectangles);

// Axis values to page units, and the inverse; NaN where there is no such place.
void PlotToPage(float x, float y, float &px, float &py);
void PlotFromPage(float px, float py, float &x, float &y);

/// One marker at page units, wherever it lies: 1 a plus, 14 a filled dot, 15 a ring.
void PlotMarker(float px, float py, int marker);

/// Size of the markers that follow, given like a character's as fractions of the page: a marker is
/// as wide as the character, and as high as it is wide on a page of 24 by 18 cm.
void PlotMarkerSize(float width, float height);

} // namespace keldrin
