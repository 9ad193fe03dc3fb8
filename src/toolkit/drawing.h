#pragma once

#include <string>
#include <string_view>

namespace keldrin {

// Drawing on the root window or on a hardcopy device. IGrArea selects a part of the surface in
// fractions, IGrUnits puts user units on that part; both are the "view". Text and line widths come
// from shared tables, so a page is the same on every surface.

class Surface;

struct DrawingView {
    float area[4] = {0.0F, 0.0F, 1.0F, 1.0F};  ///< x1, y1, x2, y2 in fractions of the surface
    float units[4] = {0.0F, 0.0F, 1.0F, 1.0F}; ///< x1, y1, x2, y2 in user units
};

/// Makes drawing go to a surface; null: nowhere. The toolkit does this for screen and hardcopy.
void selectSurface(Surface *surface);

void IGrArea(float x1, float y1, float x2, float y2);
void IGrUnits(float x1, float y1, float x2, float y2);
DrawingView ToolkitSaveView();
void ToolkitRestoreView(const DrawingView &view);

/// "RED", "BLUE", "BLACK" or "WHITE" in any case; an unknown name leaves an error state.
void IGrColour(std::string_view name);
int ToolkitColourCode(std::string_view which = "#"); ///< 0x00rrggbb of the colour now set

/// Font and character size as fractions of the drawing area; a zero code keeps the font.
void WGrTextFont(int code, int weight, float width, float height);

/// Text orientation: degrees counter-clockwise from horizontal; text starts at its left baseline.
void ToolkitTextOrientation(float degrees);

float ToolkitTextMetric(int item);            ///< 3 character width, 4 height, in user units
float ToolkitTextWidth(std::string_view text); ///< drawn width in user units

void ToolkitDrawText(float x, float y, std::string_view text);
void ToolkitClearPage();                           ///< background colour over the whole surface
void ToolkitCentredText(float y, std::string_view text); ///< 0..9999 scale, y downward from the top
void ToolkitFillRectangle(float x1, float y1, float x2, float y2); ///< in the background colour
void ToolkitMoveTo(float x, float y);
void ToolkitLineTo(float x, float y);
void ToolkitLineStyle(int type);
float ToolkitAreaInfo(int item); ///< 11 left, 13 right, 12 bottom, 14 top limit of the units

/// What the page now on the screen is, for transcripts: "log", "page" or "blank".
void ToolkitPageKind(std::string_view kind);

} // namespace keldrin
