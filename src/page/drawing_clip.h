#pragma once

#include <vector>

namespace keldrin {

struct ClipRectangle {
    double left = 0.0;
    double bottom = 0.0;
    double right = 1.0;
    double top = 1.0;

    /// True inside and on the edge, within `margin`.
    [[nodiscard]] bool holds(double x, double y, double margin = 0.0) const {
        return x >= left - margin && x <= right + margin && y >= bottom - margin &&
               y <= top + margin;
    }
};

struct ClipSegment {
    double x1 = 0.0;
    double y1 = 0.0;
    double x2 = 0.0;
    double y2 = 0.0;
};

struct ClipPoint {
    double x = 0.0;
    double y = 0.0;
};

/// Cuts a segment to the part inside a rectangle, edges included, by the parametric method of
/// Liang and Barsky (ACM Transactions on Graphics 3, 1984).
/// returns  false when nothing is inside, or an end is not finite; the segment is then unchanged
bool clipSegment(const ClipRectangle &rectangle, ClipSegment &segment);

/// Cuts a polygon to the part inside a rectangle, edge by edge, by the method of Sutherland and
/// Hodgman (Communications of the ACM 17, 1974). The corners are in order, the last one joined to
/// the first. Of a polygon that the cut leaves in several parts these hang together by lines along
/// the edges, which have no area.
/// returns  the corners that are left; none when nothing is inside, or a corner is not finite
std::vector<ClipPoint> clipPolygon(const ClipRectangle &rectangle, std::vector<ClipPoint> corners);

} // namespace keldrin
