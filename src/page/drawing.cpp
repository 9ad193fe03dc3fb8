#include "page/drawing.h"

#include "base/ascii.h"
#include "base/index.h"
#include "base/utf8.h"
#include "page/drawing_clip.h"
#include "page/drawing_state.h"
#include "page/error_state.h"
#include "page/page_colours.h"
#include "page/text_metrics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <utility>

namespace keldrin {

namespace {

enum Corner : std::size_t { Left, Bottom, Right, Top };

bool allFinite(std::initializer_list<float> values) {
    return std::all_of(values.begin(), values.end(), [](float v) { return std::isfinite(v); });
}

void setRectangle(float (&rectangle)[4], float x1, float y1, float x2, float y2) {
    if (!allFinite({x1, y1, x2, y2, x2 - x1, y2 - y1}) || x1 == x2 || y1 == y2) {
        setErrorState(DrawingBadView);
        return;
    }
    const std::array<float, 4> corners = {x1, y1, x2, y2};
    std::copy(corners.begin(), corners.end(), rectangle);
}

// One coordinate from a range to another; `low` and `high` are indices of the two ends.
double rescaled(double value, const float (&from)[4], const float (&to)[4], Corner low,
                Corner high) {
    const auto at = [](const float(&range)[4], Corner corner) {
        return static_cast<double>(range[corner]);
    };
    const double part = (value - at(from, low)) / (at(from, high) - at(from, low));
    return at(to, low) + part * (at(to, high) - at(to, low));
}

double fractionX(float x) {
    const DrawingView &view = drawingState().view;
    return rescaled(static_cast<double>(x), view.units, view.area, Left, Right);
}

double fractionY(float y) {
    const DrawingView &view = drawingState().view;
    return rescaled(static_cast<double>(y), view.units, view.area, Bottom, Top);
}

// User units of a part of the surface's width or height.
float unitsOfExtent(float fraction, Corner low, Corner high) {
    const DrawingView &view = drawingState().view;
    return fraction * (view.units[high] - view.units[low]) / (view.area[high] - view.area[low]);
}

} // namespace

DrawingState &drawingState() {
    static DrawingState state;
    return state;
}

void selectSurface(Surface *surface) {
    drawingState().surface = surface;
}

Surface *selectedSurface() {
    return drawingState().surface;
}

Surface *surfaceWithPen() {
    const DrawingState &state = drawingState();
    if (state.surface != nullptr) {
        state.surface->setPen(state.colour, state.lineWidthPt);
    }
    return state.surface;
}

void IGrArea(float x1, float y1, float x2, float y2) {
    setRectangle(drawingState().view.area, x1, y1, x2, y2);
}

void IGrUnits(float x1, float y1, float x2, float y2) {
    setRectangle(drawingState().view.units, x1, y1, x2, y2);
}

DrawingView ToolkitSaveView() {
    return drawingState().view;
}

void ToolkitRestoreView(const DrawingView &view) {
    drawingState().view = view;
}

void IGrColour(std::string_view name) {
    const std::optional<PageColour> colour = colourOfName(name);
    if (!colour) {
        setErrorState(DrawingUnknownColour);
        return;
    }
    drawingState().colour = *colour;
}

void IGrColour(PageColour colour) {
    drawingState().colour = colour;
}

int ToolkitColourCode(std::string_view /*which*/) {
    return static_cast<int>(drawingState().colour);
}

void WGrTextFont(int /*code*/, int /*weight*/, float width, float height) {
    if (!allFinite({width, height}) || !(width > 0.0F) || !(height > 0.0F)) {
        setErrorState(DrawingBadView);
        return;
    }
    drawingState().characterWidth = width;
    drawingState().characterHeight = height;
}

void ToolkitTextOrientation(float degrees) {
    drawingState().degrees = std::isfinite(degrees) ? degrees : 0.0F;
}

float ToolkitTextMetric(int item) {
    const DrawingState &state = drawingState();
    switch (item) {
    case TextCharacterWidth:
        return std::fabs(unitsOfExtent(state.characterWidth, Left, Right));
    case TextCharacterHeight:
        return std::fabs(unitsOfExtent(state.characterHeight, Bottom, Top));
    default:
        return 0.0F;
    }
}

float ToolkitTextWidth(std::string_view text) {
    return textWidthInEms(text) * EmPerCharacterWidth * ToolkitTextMetric(TextCharacterWidth);
}

std::string ToolkitFittingText(std::string_view text, float width) {
    if (!(ToolkitTextWidth(text) > width)) {
        return std::string(text);
    }
    constexpr std::string_view dots = "...";
    const float room = width - ToolkitTextWidth(dots);
    std::string_view rest = text;
    std::string_view head;
    while (!rest.empty()) {
        takeCharacter(rest);
        const std::string_view longer = text.substr(0, text.size() - rest.size());
        if (ToolkitTextWidth(longer) > room) {
            break;
        }
        head = longer;
    }
    return std::string(trimBlanks(head)).append(dots);
}

void drawTextAt(double x, double y, std::string_view text, float degrees, float anchor) {
    const DrawingState &state = drawingState();
    constexpr double farthest = 1000.0; // pages away
    if (state.surface == nullptr || trimBlanks(text).empty() || !(std::fabs(x) < farthest) ||
        !(std::fabs(y) < farthest)) {
        return;
    }
    surfaceWithPen()->textAnchor(anchor);
    state.surface->naturalLetters(state.naturalLetters);
    state.surface->text(pagePoint(x, y), text, state.characterWidth, state.characterHeight,
                        degrees);
}

void ToolkitDrawText(float x, float y, std::string_view text) {
    drawTextAt(fractionX(x), fractionY(y), text, drawingState().degrees);
}

void ToolkitDrawText(float x, float y, std::string_view text, float anchor) {
    const float width = textWidthInEms(text) * EmPerCharacterWidth * drawingState().characterWidth;
    drawTextAt(fractionX(x) - static_cast<double>(anchor * width), fractionY(y), text, 0.0F,
               anchor);
}

void ToolkitNaturalLetters(bool on) {
    drawingState().naturalLetters = on;
}

void ToolkitLineWidth(float points) {
    drawingState().lineWidthPt = points > 0.0F && std::isfinite(points) ? points : LineWidthPt;
}

void ToolkitClearPage() {
    if (drawingState().surface != nullptr) {
        drawingState().surface->clear();
    }
}

void ToolkitCentredText(float y, std::string_view text) {
    constexpr double scale = 9999.0;
    constexpr double middle = 4999.0;
    const DrawingView &view = drawingState().view;
    const auto left = static_cast<double>(view.area[Left]);
    const auto top = static_cast<double>(view.area[Top]);
    const double width = static_cast<double>(view.area[Right]) - left;
    const double height = top - static_cast<double>(view.area[Bottom]);
    const std::string_view shown = trimBlanks(text);
    const auto half = static_cast<double>(textWidthInEms(shown) * EmPerCharacterWidth *
                                          drawingState().characterWidth / 2.0F);
    drawTextAt(left + middle / scale * width - half, top - static_cast<double>(y) / scale * height,
               shown, 0.0F, 0.5F);
}

void ToolkitFillRectangle(float x1, float y1, float x2, float y2) {
    Surface *surface = drawingState().surface;
    if (surface == nullptr || !allFinite({x1, y1, x2, y2})) {
        return;
    }
    const auto held = [](double fraction) {
        return std::clamp(fraction, 0.0, 1.0);
    };
    const double left = held(fractionX(x1));
    const double right = held(fractionX(x2));
    const double bottom = held(fractionY(y1));
    const double top = held(fractionY(y2));
    const std::array<PagePoint, 4> corners = {pagePoint(left, bottom), pagePoint(right, bottom),
                                              pagePoint(right, top), pagePoint(left, top)};
    surface->setPen(Colour::White, LineWidthPt);
    surface->polygon(corners, true);
}

bool ToolkitFillsAreas() {
    return drawingState().surface != nullptr && drawingState().surface->canFill();
}

bool fillAreaIn(const ClipRectangle &rectangle, std::vector<ClipPoint> corners, PageColour colour) {
    if (!ToolkitFillsAreas()) {
        return false;
    }
    const bool inside = std::all_of(corners.begin(), corners.end(), [&](const ClipPoint &corner) {
        return rectangle.holds(corner.x, corner.y);
    });
    if (!inside) {
        corners = clipPolygon(rectangle, std::move(corners));
    }
    std::vector<PagePoint> shown;
    shown.reserve(corners.size());
    for (const ClipPoint &corner : corners) {
        shown.push_back(pagePoint(corner.x, corner.y));
    }
    if (!shown.empty()) {
        drawingState().surface->fill(shown, colour);
    }
    return true;
}

bool ToolkitFillArea(const float *x, const float *y, int count, PageColour colour) {
    std::vector<ClipPoint> corners;
    corners.reserve(asIndex(std::max(count, 0)));
    for (int i = 0; i < count; ++i) {
        corners.push_back({fractionX(x[i]), fractionY(y[i])});
    }
    return fillAreaIn(ClipRectangle{}, std::move(corners), colour);
}

void ToolkitMoveTo(float x, float y) {
    drawingState().penX = fractionX(x);
    drawingState().penY = fractionY(y);
}

void ToolkitLineTo(float x, float y) {
    const DrawingState &state = drawingState();
    ClipSegment segment = {state.penX, state.penY, fractionX(x), fractionY(y)};
    ToolkitMoveTo(x, y);
    if (state.surface == nullptr || !clipSegment(ClipRectangle{}, segment)) {
        return;
    }
    const std::array<PagePoint, 2> ends = {pagePoint(segment.x1, segment.y1),
                                           pagePoint(segment.x2, segment.y2)};
    surfaceWithPen()->polyline(ends);
}

// Rubber bands are drawn by the window itself, so the mode changes nothing here.
void ToolkitLineStyle(int /*type*/) {}

float ToolkitAreaInfo(int item) {
    const DrawingView &view = drawingState().view;
    switch (item) {
    case AreaLeft:
        return view.units[Left];
    case AreaBottom:
        return view.units[Bottom];
    case AreaRight:
        return view.units[Right];
    case AreaTop:
        return view.units[Top];
    default:
        return 0.0F;
    }
}

void ToolkitPageKind(std::string_view kind) {
    if (drawingState().surface != nullptr) {
        drawingState().surface->pageKind(kind);
    }
}

void unitsFromFraction(double partX, double partY, float &x, float &y) {
    const DrawingView &view = drawingState().view;
    x = static_cast<float>(rescaled(partX, view.area, view.units, Left, Right));
    y = static_cast<float>(rescaled(partY, view.area, view.units, Bottom, Top));
}

void fractionFromUnits(float x, float y, double &partX, double &partY) {
    partX = fractionX(x);
    partY = fractionY(y);
}

} // namespace keldrin
