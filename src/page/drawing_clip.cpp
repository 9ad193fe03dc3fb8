#include "page/drawing_clip.h"

#include <algorithm>
#include <cmath>

namespace keldrin {

namespace {

// The part of the segment, as parameters 0..1, that is still inside.
struct InsidePart {
    double from = 0.0;
    double to = 1.0;

    // Takes off what lies beyond one edge. `delta` is the way towards the edge over the whole
    // segment, `distance` how far its start lies inside.
    bool cut(double delta, double distance) {
        if (delta == 0.0) {
            return distance >= 0.0;
        }
        const double crossing = distance / delta;
        if (delta < 0.0) {
            from = std::max(from, crossing);
        } else {
            to = std::min(to, crossing);
        }
        return from <= to;
    }
};

// What is left of a polygon on one side of an upright or level line.
/// coordinate  the one that the line holds fixed, at `edge`
/// above       keeps what has at least that coordinate, else what has at most that
std::vector<ClipPoint> cutAt(const std::vector<ClipPoint> &corners, double ClipPoint::*coordinate,
                             double edge, bool above) {
    const auto isInside = [=](const ClipPoint &corner) {
        return above ? corner.*coordinate >= edge : corner.*coordinate <= edge;
    };
    std::vector<ClipPoint> left;
    left.reserve(corners.size() + 2);
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const ClipPoint &from = corners[i == 0 ? corners.size() - 1 : i - 1];
        const ClipPoint &to = corners[i];
        if (isInside(from) != isInside(to)) {
            const double part = (edge - from.*coordinate) / (to.*coordinate - from.*coordinate);
            ClipPoint crossing = {from.x + part * (to.x - from.x), from.y + part * (to.y - from.y)};
            crossing.*coordinate = edge;
            left.push_back(crossing);
        }
        if (isInside(to)) {
            left.push_back(to);
        }
    }
    return left;
}

} // namespace

std::vector<ClipPoint> clipPolygon(const ClipRectangle &rectangle, std::vector<ClipPoint> corners) {
    constexpr std::size_t fewestCorners = 3;
    constexpr bool above = true;
    const bool finite = std::all_of(corners.begin(), corners.end(), [](const ClipPoint &corner) {
        return std::isfinite(corner.x) && std::isfinite(corner.y);
    });
    if (!finite) {
        return {};
    }
    corners = cutAt(corners, &ClipPoint::x, rectangle.left, above);
    corners = cutAt(corners, &ClipPoint::x, rectangle.right, !above);
    corners = cutAt(corners, &ClipPoint::y, rectangle.bottom, above);
    corners = cutAt(corners, &ClipPoint::y, rectangle.top, !above);
    return corners.size() < fewestCorners ? std::vector<ClipPoint>{} : corners;
}

bool clipSegment(const ClipRectangle &rectangle, ClipSegment &segment) {
    const ClipSegment whole = segment;
    const double dx = whole.x2 - whole.x1;
    const double dy = whole.y2 - whole.y1;
    if (!std::isfinite(dx) || !std::isfinite(dy)) {
        return false;
    }
    InsidePart part;
    if (!part.cut(-dx, whole.x1 - rectangle.left) || !part.cut(dx, rectangle.right - whole.x1) ||
        !part.cut(-dy, whole.y1 - rectangle.bottom) || !part.cut(dy, rectangle.top - whole.y1)) {
        return false;
    }
    // Towards an end many pages away rounding leaves more than the rectangle's size, so both ends
    // are held; one that lies inside is not changed by it.
    const auto cornerAt = [&](double along, double &x, double &y) {
        x = std::clamp(along == 1.0 ? whole.x2 : whole.x1 + along * dx, rectangle.left,
                       rectangle.right);
        y = std::clamp(along == 1.0 ? whole.y2 : whole.y1 + along * dy, rectangle.bottom,
                       rectangle.top);
    };
    cornerAt(part.from, segment.x1, segment.y1);
    cornerAt(part.to, segment.x2, segment.y2);
    return true;
}

} // namespace keldrin
