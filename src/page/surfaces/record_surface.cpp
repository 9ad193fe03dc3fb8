#include "page/surfaces/record_surface.h"

namespace keldrin {

void RecordSurface::begin(float widthCm, float heightCm) {
    widthCm_ = widthCm;
    heightCm_ = heightCm;
    clear();
}

void RecordSurface::clear() {
    items_.clear();
    inMarker_ = false;
    kind_ = "blank";
    ++changes_;
}

void RecordSurface::setPen(PageColour colour, float /*widthPt*/) {
    colour_ = colour;
}

void RecordSurface::add(RecordedItem::Kind kind, std::span<const PagePoint> points) {
    RecordedItem &item = items_.emplace_back();
    item.kind = kind;
    item.colour = colour_;
    item.points.reserve(points.size());
    for (const PagePoint &point : points) {
        item.points.push_back({point.x * widthCm_, point.y * heightCm_});
    }
    ++changes_;
}

void RecordSurface::polyline(std::span<const PagePoint> points) {
    if (!inMarker_) {
        add(RecordedItem::Kind::Line, points);
    }
}

void RecordSurface::polygon(std::span<const PagePoint> points, bool filled) {
    if (!inMarker_) {
        add(RecordedItem::Kind::Polygon, points);
        items_.back().filled = filled;
    }
}

void RecordSurface::fill(std::span<const PagePoint> corners, PageColour colour) {
    add(RecordedItem::Kind::Area, corners);
    items_.back().colour = colour;
}

void RecordSurface::text(PagePoint at, std::string_view string, float charWidth, float charHeight,
                         float degrees) {
    add(RecordedItem::Kind::Text, {&at, 1});
    RecordedItem &item = items_.back();
    item.text = string;
    item.characterWidth = charWidth * widthCm_;
    item.characterHeight = charHeight * heightCm_;
    item.degrees = degrees;
}

void RecordSurface::beginMarker(int marker, PagePoint centre) {
    add(RecordedItem::Kind::Marker, {&centre, 1});
    items_.back().marker = marker;
    inMarker_ = true;
}

void RecordSurface::endMarker() {
    inMarker_ = false;
}

void RecordSurface::pageKind(std::string_view kind) {
    if (kind_ != kind) {
        kind_ = kind;
        ++changes_;
    }
}

} // namespace keldrin
