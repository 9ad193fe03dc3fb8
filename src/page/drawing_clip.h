#pragma once

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

/// Cuts a segment to the part inside a rectangle, edges included, by the parametric method of
/// Liang and Barsky (ACM Transactions on Graphics 3, 1984).
/// returns  false when nothing is inside, or an end is not finite; the segment is then unchanged
bool clipSegment(const ClipRectangle &rectangle, ClipSegment &segment);

} // namespace keldrin
