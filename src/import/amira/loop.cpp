#include "import/amira/record.h"
#include "messages/message_log.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace keldrin {

namespace {

constexpr double DegreesPerRadian = 57.29577951308232;
constexpr double LargestLength = 1.0E30; ///< fits a 32-bit real

/// The area is positive for a counterclockwise loop; squared unit of the vertices.
struct LoopShape {
    double area = 0.0;
    double x = 0.0; ///< centroid
    double y = 0.0;
};

/// The vertices with coordinates, moved to the front.
std::span<LoopVertex> packVertices(AmiraRecord &record) {
    const auto end =
        std::stable_partition(record.vertices.begin(), record.vertices.end(),
                              [](const LoopVertex &v) { return isPresent(v.x) && isPresent(v.y); });
    return {record.vertices.begin(), end};
}

// Twice the area of the triangle a, b, c; positive when they lie counterclockwise.
double doubleArea(const LoopVertex &a, const LoopVertex &b, const LoopVertex &c) {
    return (a.x - c.x) * (b.y - c.y) - (b.x - c.x) * (a.y - c.y);
}

bool cross(const LoopVertex &a, const LoopVertex &b, const LoopVertex &c, const LoopVertex &d) {
    return doubleArea(a, b, c) * doubleArea(a, b, d) < 0.0 &&
           doubleArea(c, d, a) * doubleArea(c, d, b) < 0.0;
}

// Two opposite sides that cross show vertices out of order.
void uncross(std::span<LoopVertex> v) {
    if (v.size() < LoopVertices) {
        return;
    }
    const bool first = cross(v[0], v[1], v[2], v[3]);
    if (first) {
        std::swap(v[1], v[2]);
    } else if (cross(v[1], v[2], v[3], v[0])) {
        std::swap(v[2], v[3]);
    } else {
        return;
    }
    ReportWarning(
        {"AMIRA input WARNING: The sides of the transmitter loop cross.",
         first ? "Vertices 2 and 3 will be exchanged." : "Vertices 3 and 4 will be exchanged."});
}

// Area and centroid from a fan of triangles around the last vertex.
LoopShape shapeOf(std::span<const LoopVertex> v) {
    const LoopVertex &last = v.back();
    double sum = 0.0;
    double sumX = 0.0;
    double sumY = 0.0;
    LoopShape shape;
    for (std::size_t i = 1; i + 1 < v.size(); ++i) {
        const double c = doubleArea(v[i - 1], v[i], last);
        sum += c;
        sumX += (v[i - 1].x + v[i].x) * c;
        sumY += (v[i - 1].y + v[i].y) * c;
    }
    if (std::fabs(sum) > 0.1) {
        return {sum / 2.0, (last.x + sumX / sum) / 3.0, (last.y + sumY / sum) / 3.0};
    }
    shape.area = sum;
    for (const LoopVertex &vertex : v) {
        shape.x += vertex.x / static_cast<double>(v.size());
        shape.y += vertex.y / static_cast<double>(v.size());
    }
    return shape;
}

// The root mean square of two opposite sides.
double meanSide(const LoopVertex &a, const LoopVertex &b, const LoopVertex &c,
                const LoopVertex &d) {
    const double squares = (b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y) +
                           (d.x - c.x) * (d.x - c.x) + (d.y - c.y) * (d.y - c.y);
    return std::sqrt(squares / 2.0);
}

struct LoopSides {
    double first = 0.0;
    double second = 0.0;
};

// A triangle counts as the square of its area.
LoopSides sidesOf(std::span<const LoopVertex> v, double area) {
    if (v.size() < LoopVertices) {
        return {std::sqrt(std::fabs(area)), std::sqrt(std::fabs(area))};
    }
    return {meanSide(v[0], v[1], v[2], v[3]), meanSide(v[1], v[2], v[3], v[0])};
}

// The bearing of the first side, 0 up to 180 degrees.
float bearingOf(const LoopVertex &from, const LoopVertex &to) {
    const double degrees = std::atan2(to.x - from.x, to.y - from.y) * DegreesPerRadian;
    return static_cast<float>(std::fmod(degrees + 180.0, 180.0));
}

float toSingle(double length) {
    return static_cast<float>(limited(length, 0.0, LargestLength));
}

void setUndefined(double &target, double value) {
    if (!isPresent(target)) {
        target = value;
    }
}

double meanHeight(std::span<const LoopVertex> v) {
    double sum = 0.0;
    double count = 0.0;
    for (const LoopVertex &vertex : v) {
        if (isPresent(vertex.z)) {
            sum += vertex.z;
            count += 1.0;
        }
    }
    return count > 0.0 ? sum / count : static_cast<double>(MissingValue);
}

} // namespace

int AMR_Loop_Geometry(AmiraRecord &record, double metresPerUnit) {
    const std::span<LoopVertex> v = packVertices(record);
    if (v.size() < 3) {
        return 1;
    }
    uncross(v);
    const LoopShape shape = shapeOf(v);
    if (shape.area < -0.1) {
        std::reverse(v.begin(), v.end());
    }
    const LoopSides sides = sidesOf(v, shape.area);
    setUndefined(record.XTxCenter, shape.x);
    setUndefined(record.YTxCenter, shape.y);
    setUndefined(record.ZTxCenter, meanHeight(v));
    if (record.TxArea < 0.001F) {
        record.TxArea = toSingle(std::fabs(shape.area) * metresPerUnit * metresPerUnit);
    }
    if (record.XTxLength < 0.01F && record.YTxLength < 0.01F && v.size() == LoopVertices) {
        record.sideAzimuth = bearingOf(v[0], v[1]);
    }
    if (record.XTxLength < 0.01F) {
        record.XTxLength = toSingle(sides.first);
    }
    if (record.YTxLength < 0.01F) {
        record.YTxLength = toSingle(sides.second);
    }
    return 0;
}

void settleLoopSides(AmiraRecord &record) {
    if (!(record.XTxLength > 0.0F) && !(record.YTxLength > 0.0F) && record.TxArea > 0.0F) {
        record.XTxLength = std::sqrt(record.TxArea);
        record.YTxLength = record.XTxLength;
    }
    if (!(record.XTxLength > 0.0F)) {
        record.XTxLength = record.YTxLength;
    }
    if (!(record.YTxLength > 0.0F)) {
        record.YTxLength = record.XTxLength;
    }
}

} // namespace keldrin
