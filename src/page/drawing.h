#pragma once

#include "page/surfaces/surface.h"

#include <string>
#include <string_view>

namespace keldrin {

// Drawing on the root window or on a hardcopy device. IGrArea selects a part of the surface in
// fractions, IGrUnits puts user units on that part; both are the "view". Text and line widths come
// from shared tables, so a page is the same on every surface.
//
// Without a surface every call is harmless and keeps its settings. A call with a number that is
// not finite draws nothing.

/// Error states that drawing and plots leave.
enum DrawingError : int {
    DrawingUnknownColour = 31,
    DrawingBadView = 32,  ///< area, units or character size without extent
    DrawingBadLimits = 33 ///< axis limits that are equal, not finite, or not above 0 on a log axis
};

struct DrawingView {
    float area[4] = {0.0F, 0.0F, 1.0F, 1.0F};  ///< x1, y1, x2, y2 in fractions of the surface
    float units[4] = {0.0F, 0.0F, 1.0F, 1.0F}; ///< x1, y1, x2, y2 in user units
};

/// Makes drawing go to a surface, whose page is open; null: nowhere. The toolkit selects
/// the screen, an open hardcopy itself.
void selectSurface(Surface *surface);
Surface *selectedSurface();

// Area and units without extent leave an error state and change nothing.
void IGrArea(float x1, float y1, float x2, float y2);
void IGrUnits(float x1, float y1, float x2, float y2);
DrawingView ToolkitSaveView();
void ToolkitRestoreView(const DrawingView &view);

/// "RED", "BLUE", "BLACK", "GREY" or "WHITE" in any case; an unknown name leaves an error state.
void IGrColour(std::string_view name);
void IGrColour(PageColour colour);
/// 0x00rrggbb of the colour now set; for tests.
///
/// which  always "#", as documented
int ToolkitColourCode(std::string_view which = "#");

/// Font and character size as fractions of the surface; a zero code keeps the font. All codes are
/// the one proportional letter of text_metrics.h.
void WGrTextFont(int code, int weight, float width, float height);

/// Text orientation: degrees counter-clockwise from horizontal; text starts at its left baseline.
void ToolkitTextOrientation(float degrees);

enum TextItem : int { TextCharacterWidth = 3, TextCharacterHeight = 4 };
float ToolkitTextMetric(int item);             ///< of a TextItem, in user units
float ToolkitTextWidth(std::string_view text); ///< drawn width of horizontal text in user units

/// The text itself where it is at most `width` user units wide, else its head and "...".
std::string ToolkitFittingText(std::string_view text, float width);

void ToolkitDrawText(float x, float y, std::string_view text);
/// A level text of which a part stands at `x`: 0 its left end, 0.5 its middle, 1 its right end.
void ToolkitDrawText(float x, float y, std::string_view text, float anchor);

/// Whether the letters that follow keep their own shape; else, as at first, each text is fitted
/// into the width that ToolkitTextWidth() gives.
void ToolkitNaturalLetters(bool on);

/// Width of the lines that follow, in points on a page of 24 by 18 cm; 0: as all pages have it.
void ToolkitLineWidth(float points);

void ToolkitClearPage(); ///< background colour over the whole surface

/// A centred line on the 0..9999 scale, y downward from the top. Blanks at its ends do not count.
void ToolkitCentredText(float y, std::string_view text);
/// In the background colour. No page calls it; it completes the documented set.
void ToolkitFillRectangle(float x1, float y1, float x2, float y2);

/// False where drawing goes to a device without filled areas, or nowhere.
bool ToolkitFillsAreas();

/// Fills the area between corners, cut off at the edges of the surface, in a colour of its own.
/// returns  false, with nothing drawn, where there are no filled areas
bool ToolkitFillArea(const float *x, const float *y, int count, PageColour colour);

// Straight lines, cut off at the edges of the surface.
void ToolkitMoveTo(float x, float y);
void ToolkitLineTo(float x, float y);
inline constexpr int SolidLine = 0;
void ToolkitLineStyle(int type); ///< as documented; all lines are solid, whatever the type

enum AreaItem : int { AreaLeft = 11, AreaBottom = 12, AreaRight = 13, AreaTop = 14 };
float ToolkitAreaInfo(int item); ///< the limit of the units at a side

/// What the page now on the screen is, for transcripts: "log", "page" or "blank".
void ToolkitPageKind(std::string_view kind);

// Mouse positions. The surface fills the root window, whatever its shape.

/// Fractions of the surface, y upward from the bottom, as user units in force, and back.
void unitsFromFraction(double fractionX, double fractionY, float &x, float &y);
void fractionFromUnits(float x, float y, double &fractionX, double &fractionY);

} // namespace keldrin
