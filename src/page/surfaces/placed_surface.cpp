#include "page/surfaces/placed_surface.h"

#include <vector>

namespace keldrin {

namespace {

std::vector<PagePoint> mapped(std::span<const PagePoint> points, PagePoint offset,
                              PagePoint scale) {
    std::vector<PagePoint> onPaper;
    onPaper.reserve(points.size());
    for (const PagePoint &point : points) {
        onPaper.push_back({offset.x + point.x * scale.x, offset.y + point.y * scale.y});
    }
    return onPaper;
}

} // namespace

PlacedSurface::PlacedSurface(Surface &paper, float paperWidthCm, float paperHeightCm,
                             const PagePlacement &placement)
    : paper_(paper), offset_{placement.left / paperWidthCm, placement.bottom / paperHeightCm},
      scale_{placement.width / paperWidthCm, placement.height / paperHeightCm},
      penScale_(placement.width / PageWidthCm) {}

PagePoint PlacedSurface::onPaper(PagePoint point) const {
    return mapped({&point, 1}, offset_, scale_).front();
}

void PlacedSurface::setPen(PageColour colour, float widthPt) {
    paper_.setPen(colour, widthPt * penScale_);
}

void PlacedSurface::polyline(std::span<const PagePoint> points) {
    paper_.polyline(mapped(points, offset_, scale_));
}

void PlacedSurface::polygon(std::span<const PagePoint> points, bool filled) {
    paper_.polygon(mapped(points, offset_, scale_), filled);
}

void PlacedSurface::text(PagePoint at, std::string_view string, float charWidth, float charHeight,
                         float degrees) {
    paper_.text(onPaper(at), string, charWidth * scale_.x, charHeight * scale_.y, degrees);
}

void PlacedSurface::fill(std::span<const PagePoint> corners, PageColour colour) {
    paper_.fill(mapped(corners, offset_, scale_), colour);
}

void PlacedSurface::beginMarker(int marker, PagePoint centre) {
    paper_.beginMarker(marker, onPaper(centre));
}

} // namespace keldrin
