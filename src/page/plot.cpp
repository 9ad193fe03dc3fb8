#include "page/plot.h"

#include "base/ascii.h"
#include "page/drawing_state.h"
#include "page/error_state.h"
#include "page/plot_state.h"
#include "page/text_metrics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

namespace keldrin {

namespace {

constexpr double EdgeMargin = 1.0e-6; // a point on the frame counts as inside

// The parts of a line that lie inside the frame, each drawn as one line.
class FramedLine {
  public:
    explicit FramedLine(Surface &surface) : surface_(surface) {}

    void add(ClipSegment segment) {
        const ClipSegment whole = segment;
        const bool inside = clipSegment(frame_, segment);
        const bool entered = segment.x1 != whole.x1 || segment.y1 != whole.y1;
        const bool left = segment.x2 != whole.x2 || segment.y2 != whole.y2;
        if (!inside || entered) {
            finish();
        }
        const bool hasLength = segment.x1 != segment.x2 || segment.y1 != segment.y2;
        if (inside && hasLength) {
            if (part_.empty()) {
                part_.push_back(pagePoint(segment.x1, segment.y1));
            }
            part_.push_back(pagePoint(segment.x2, segment.y2));
        }
        if (left) {
            finish();
        }
    }

    void finish() {
        if (part_.size() > 1) {
            surface_.polyline(part_);
        }
        part_.clear();
    }

  private:
    Surface &surface_;
    ClipRectangle frame_ = plotFrameRectangle();
    std::vector<PagePoint> part_;
};

template <class Real>
void drawLine(const Real *x, const Real *y, int count) {
    Surface *surface = surfaceWithPen();
    if (!plotIsUsable() || surface == nullptr || count < 2) {
        return;
    }
    FramedLine line(*surface);
    SurfacePlace from = surfacePlace(static_cast<double>(x[0]), static_cast<double>(y[0]));
    for (int i = 1; i < count; ++i) {
        const SurfacePlace to = surfacePlace(static_cast<double>(x[i]), static_cast<double>(y[i]));
        line.add({from.x, from.y, to.x, to.y});
        from = to;
    }
    line.finish();
}

void drawPlus(Surface &surface, double x, double y, double halfWidth, double halfHeight) {
    const std::array<PagePoint, 2> across = {pagePoint(x - halfWidth, y),
                                             pagePoint(x + halfWidth, y)};
    const std::array<PagePoint, 2> upward = {pagePoint(x, y - halfHeight),
                                             pagePoint(x, y + halfHeight)};
    surface.polyline(across);
    surface.polyline(upward);
}

void drawRound(Surface &surface, double x, double y, double halfWidth, double halfHeight,
               bool filled) {
    constexpr int cornerCount = 12;
    std::array<PagePoint, cornerCount> corners{};
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const double angle = 2.0 * std::numbers::pi * static_cast<double>(i) / cornerCount;
        corners[i] = pagePoint(x + halfWidth * std::cos(angle), y + halfHeight * std::sin(angle));
    }
    surface.polygon(corners, filled);
}

void drawMarker(double x, double y, int marker) {
    Surface *surface = surfaceWithPen();
    if (surface == nullptr || !ClipRectangle{}.holds(x, y)) {
        return;
    }
    const PlotState &plot = plotState();
    constexpr double widthOfHeight = 1.0 / static_cast<double>(EmPerCharacterWidth);
    const double halfWidth = static_cast<double>(plot.markerWidth) / 2.0;
    const double halfHeight = static_cast<double>(plot.markerHeight) * widthOfHeight / 2.0;
    surface->beginMarker(marker, pagePoint(x, y));
    if (marker == PlusMarker) {
        drawPlus(*surface, x, y, halfWidth, halfHeight);
    } else {
        drawRound(*surface, x, y, halfWidth, halfHeight, marker != RingMarker);
    }
    surface->endMarker();
}

template <class Real>
void drawMarkers(const Real *x, const Real *y, int count, int marker) {
    if (!plotIsUsable()) {
        return;
    }
    const ClipRectangle frame = plotFrameRectangle();
    for (int i = 0; i < count; ++i) {
        const SurfacePlace at = surfacePlace(static_cast<double>(x[i]), static_cast<double>(y[i]));
        if (frame.holds(at.x, at.y, EdgeMargin)) {
            drawMarker(at.x, at.y, marker);
        }
    }
}

template <class Real>
bool fillArea(const Real *x, const Real *y, int count, PageColour colour) {
    if (!plotIsUsable()) {
        return ToolkitFillsAreas();
    }
    std::vector<ClipPoint> corners;
    for (int i = 0; i < count; ++i) {
        const SurfacePlace at = surfacePlace(static_cast<double>(x[i]), static_cast<double>(y[i]));
        corners.push_back({at.x, at.y});
    }
    return fillAreaIn(plotFrameRectangle(), std::move(corners), colour);
}

// From fractions of the frame to axis values and back.
double within(double low, double high, double part) {
    return low + part * (high - low);
}

void fillRectangleIn(const ClipRectangle &frame, const ClipRectangle &area, PageColour colour) {
    const std::array<ClipPoint, 4> corners = {{{area.left, area.bottom},
                                               {area.right, area.bottom},
                                               {area.right, area.top},
                                               {area.left, area.top}}};
    if (!frame.holds(area.left, area.bottom) || !frame.holds(area.right, area.top)) {
        fillAreaIn(frame, {corners.begin(), corners.end()}, colour);
        return;
    }
    std::array<PagePoint, 4> shown{};
    std::transform(corners.begin(), corners.end(), shown.begin(),
                   [](const ClipPoint &corner) { return pagePoint(corner.x, corner.y); });
    drawingState().surface->fill(shown, colour);
}

} // namespace

PlotState &plotState() {
    static PlotState state;
    return state;
}

bool plotIsUsable() {
    const bool usable = plotState().x.isUsable() && plotState().y.isUsable();
    if (!usable) {
        setErrorState(DrawingBadLimits);
    }
    return usable;
}

ClipRectangle plotFrameRectangle() {
    const DrawingView &view = drawingState().view;
    const std::array<double, 4> area = {
        static_cast<double>(view.area[0]), static_cast<double>(view.area[1]),
        static_cast<double>(view.area[2]), static_cast<double>(view.area[3])};
    const ClipRectangle &part = plotState().viewport;
    return {within(area[0], area[2], part.left), within(area[1], area[3], part.bottom),
            within(area[0], area[2], part.right), within(area[1], area[3], part.top)};
}

SurfacePlace surfacePlace(double x, double y) {
    const ClipRectangle frame = plotFrameRectangle();
    const PlotState &plot = plotState();
    return {within(frame.left, frame.right, plot.x.fractionOf(x)),
            within(frame.bottom, frame.top, plot.y.fractionOf(y))};
}

void PlotNew() {
    plotState() = PlotState{};
}

void PlotViewport(float x1, float y1, float x2, float y2) {
    if (!(x2 > x1) || !(y2 > y1) || !std::isfinite(x2 - x1) || !std::isfinite(y2 - y1)) {
        setErrorState(DrawingBadView);
        return;
    }
    plotState().viewport = {static_cast<double>(x1), static_cast<double>(y1),
                            static_cast<double>(x2), static_cast<double>(y2)};
    plotState().numberRoom = {};
}

void PlotUnits(double xMin, double yMin, double xMax, double yMax) {
    PlotState &plot = plotState();
    plot.x.min = xMin;
    plot.x.max = xMax;
    plot.y.min = yMin;
    plot.y.max = yMax;
}

void PlotKind(char kind) {
    plotState().kind = kind;
}

void PlotScales(std::string_view x, std::string_view y) {
    plotState().x.logarithmic = sameIgnoringCase(x, "LOG");
    plotState().y.logarithmic = sameIgnoringCase(y, "LOG");
}

void PlotDrawLine(const float *x, const float *y, int count) {
    drawLine(x, y, count);
}

void PlotDrawLine(const double *x, const double *y, int count) {
    drawLine(x, y, count);
}

void PlotMarkers(const float *x, const float *y, int count, int marker) {
    drawMarkers(x, y, count, marker);
}

void PlotMarkers(const double *x, const double *y, int count, int marker) {
    drawMarkers(x, y, count, marker);
}

bool PlotFillArea(const float *x, const float *y, int count, PageColour colour) {
    return fillArea(x, y, count, colour);
}

bool PlotFillArea(const double *x, const double *y, int count, PageColour colour) {
    return fillArea(x, y, count, colour);
}

bool PlotFillRectangles(std::span<const PlotRectangle> rectangles) {
    if (!plotIsUsable() || !ToolkitFillsAreas()) {
        return ToolkitFillsAreas();
    }
    const ClipRectangle frame = plotFrameRectangle();
    const AxisFractions across(plotState().x);
    const AxisFractions upward(plotState().y);
    for (const PlotRectangle &area : rectangles) {
        fillRectangleIn(frame,
                        {within(frame.left, frame.right, across.of(area.left)),
                         within(frame.bottom, frame.top, upward.of(area.bottom)),
                         within(frame.left, frame.right, across.of(area.right)),
                         within(frame.bottom, frame.top, upward.of(area.top))},
                        area.colour);
    }
    return true;
}

void PlotToPage(float x, float y, float &px, float &py) {
    const SurfacePlace at = surfacePlace(static_cast<double>(x), static_cast<double>(y));
    unitsFromFraction(at.x, at.y, px, py);
}

void PlotFromPage(float px, float py, float &x, float &y) {
    double partX = 0.0;
    double partY = 0.0;
    fractionFromUnits(px, py, partX, partY);
    const ClipRectangle frame = plotFrameRectangle();
    const PlotState &plot = plotState();
    x = static_cast<float>(plot.x.valueAt((partX - frame.left) / (frame.right - frame.left)));
    y = static_cast<float>(plot.y.valueAt((partY - frame.bottom) / (frame.top - frame.bottom)));
}

void PlotMarker(float px, float py, int marker) {
    double x = 0.0;
    double y = 0.0;
    fractionFromUnits(px, py, x, y);
    drawMarker(x, y, marker);
}

void PlotMarkerSize(float width, float height) {
    if (!(width > 0.0F) || !(height > 0.0F) || !std::isfinite(width + height)) {
        setErrorState(DrawingBadView);
        return;
    }
    plotState().markerWidth = width;
    plotState().markerHeight = height;
}

} // namespace keldrin
