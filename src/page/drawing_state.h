#pragma once

#include "page/drawing.h"
#include "page/drawing_clip.h"
#include "page/surfaces/surface.h"

#include <vector>

namespace keldrin {

// Shared by drawing and plots only; the program's logic goes through drawing.h and plot.h.

/// Lines of all pages, where nothing else is set.
inline constexpr float LineWidthPt = 0.6F;

/// What the drawing calls remember between each other. One per process.
struct DrawingState {
    Surface *surface = nullptr;
    DrawingView view;
    std::uint32_t colour = 0x000000;
    float characterWidth = 0.00872695F; ///< fraction of the surface; starts as 10 points
    float characterHeight = 0.0196111F;
    float degrees = 0.0F;
    float lineWidthPt = LineWidthPt;
    bool naturalLetters = false;
    double penX = 0.0; ///< fraction of the surface
    double penY = 0.0;
};

DrawingState &drawingState();

/// The surface with the current colour set as its pen; null when drawing goes nowhere.
Surface *surfaceWithPen();

/// A text at a place in fractions of the surface. Blank text and a place that is not finite draw
/// nothing.
/// anchor  see Surface::textAnchor()
void drawTextAt(double x, double y, std::string_view text, float degrees, float anchor = 0.0F);

/// Fills the part of an area that lies in a rectangle; both in fractions of the surface.
/// returns  false, with nothing drawn, where the surface cannot fill or there is none
bool fillAreaIn(const ClipRectangle &rectangle, std::vector<ClipPoint> corners, PageColour colour);

} // namespace keldrin
