#pragma once

#include "base/index.h"
#include "keywords/keyword_table.h"

#include <vector>

namespace keldrin {

// Points: coordinates that a record writes as tokens or as one token with colons ("10:20:5").

/// Appends the pieces of a token between its colons to `out`, without blanks around them and cut
/// to `width`, until `out` has `most` pieces.
void splitAtColons(std::string_view token, std::size_t most, std::size_t width,
                   std::vector<std::string_view> &out);

struct PointIndex {
    int index = -1; ///< below 0: none that exists, reported
    int status = 0; ///< of the record
};

/// The index that stands as digits in the record's keyword, all of them together, in 0..highest.
PointIndex readPointIndex(const Reading &reading, int highest);

/// Reads the coordinates of a point: the record's tokens, or the pieces of its first one where that
/// has colons. True when one was stored.
bool takePoint(const Reading &reading, SourcedPoint &point);

/// Reads the coordinates that one token has between its colons; one without colons is x.
bool takeTokenPoint(const Reading &reading, std::string_view token, std::string_view label,
                    XyzPoint &point);

template <auto Member>
int readPoint(const Reading &reading) {
    SourcedPoint &point = memberIn(reading.metadata, Member);
    keepSource(reading, point, [&] { return takePoint(reading, point); });
    return 0;
}

/// One of a group's indexed points: the keyword of `$ Tx.XYZ3 = x, y, z` holds the index. The point
/// is cleared first. Each has its own source level.
template <auto Member>
int readIndexedPoint(const Reading &reading) {
    auto &points = memberIn(reading.metadata, Member);
    const PointIndex found = readPointIndex(reading, static_cast<int>(points.size()) - 1);
    if (found.index < 0) {
        return found.status;
    }
    SourcedPoint &point = points[asIndex(found.index)];
    keepSource(reading, point, [&] {
        groupOf(reading.metadata, Member).tail.lastPointIndex = found.index;
        point.value = MissingPoint;
        return takePoint(reading, point);
    });
    return 0;
}

namespace rows {

/// Every keyword that contains `keyword` names one of these points.
template <auto Member>
constexpr KeywordRow indexedPoint(std::string_view keyword, Limits limits) {
    return {.keyword = keyword,
            .reader = readIndexedPoint<Member>,
            .limits = limits,
            .contained = true,
            .form = "x, y, z"};
}

} // namespace rows
} // namespace keldrin
