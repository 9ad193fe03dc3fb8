#include "page/surfaces/page_list.h"

namespace keldrin {

void PageList::begin(float widthCm, float heightCm) {
    widthCm_ = widthCm;
    heightCm_ = heightCm;
    clear();
}

void PageList::clear() {
    calls_.clear();
    points_.clear();
    penPt_ = -1.0F;
    anchor_ = 0.0F;
    naturalLetters_ = false;
    ++changes_;
}

PageList::Call &PageList::add(Kind kind, std::span<const PagePoint> points) {
    Call &call = calls_.emplace_back();
    call.kind = kind;
    call.first = static_cast<std::uint32_t>(points_.size());
    call.count = static_cast<std::uint32_t>(points.size());
    points_.insert(points_.end(), points.begin(), points.end());
    ++changes_;
    return call;
}

// The pen is set before every line, mostly to what it is.
void PageList::setPen(PageColour colour, float widthPt) {
    if (colour == colour_ && widthPt == penPt_) {
        return;
    }
    colour_ = colour;
    penPt_ = widthPt;
    Call &call = add(Kind::Pen);
    call.colour = colour;
    call.width = widthPt;
}

void PageList::polyline(std::span<const PagePoint> points) {
    add(Kind::Polyline, points);
}

void PageList::polygon(std::span<const PagePoint> points, bool filled) {
    add(Kind::Polygon, points).filled = filled;
}

void PageList::fill(std::span<const PagePoint> corners, PageColour colour) {
    add(Kind::Fill, corners).colour = colour;
}

void PageList::text(PagePoint at, std::string_view string, float charWidth, float charHeight,
                    float degrees) {
    Call &call = add(Kind::Text, {&at, 1});
    call.text = string;
    call.width = charWidth;
    call.height = charHeight;
    call.degrees = degrees;
    call.anchor = anchor_;
    call.naturalLetters = naturalLetters_;
    anchor_ = 0.0F;
}

void PageList::beginMarker(int marker, PagePoint centre) {
    add(Kind::BeginMarker, {&centre, 1}).marker = marker;
}

void PageList::endMarker() {
    add(Kind::EndMarker);
}

void PageList::pageKind(std::string_view kind) {
    if (kind_ != kind) {
        kind_ = kind;
        ++changes_;
    }
}

void PageList::make(const Call &call, Surface &surface) const {
    const std::span<const PagePoint> points = std::span(points_).subspan(call.first, call.count);
    switch (call.kind) {
    case Kind::Pen:
        surface.setPen(call.colour, call.width);
        break;
    case Kind::Polyline:
        surface.polyline(points);
        break;
    case Kind::Polygon:
        surface.polygon(points, call.filled);
        break;
    case Kind::Fill:
        surface.fill(points, call.colour);
        break;
    case Kind::Text:
        surface.textAnchor(call.anchor);
        surface.naturalLetters(call.naturalLetters);
        surface.text(points.front(), call.text, call.width, call.height, call.degrees);
        break;
    case Kind::BeginMarker:
        surface.beginMarker(call.marker, points.front());
        break;
    case Kind::EndMarker:
        surface.endMarker();
        break;
    }
}

void PageList::replay(Surface &surface) const {
    surface.begin(widthCm_, heightCm_);
    surface.clear();
    surface.pageKind(kind_);
    for (const Call &call : calls_) {
        make(call, surface);
    }
}

} // namespace keldrin
