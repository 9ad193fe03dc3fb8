#include "keywords/points.h"

#include "base/ascii.h"
#include "messages/message_log.h"

namespace keldrin {
namespace {

constexpr std::size_t CoordinateWidth = 32;
constexpr int NoSuchIndex = 1;

std::string warningOf(const Reading &reading, std::string_view words) {
    return std::string(reading.group.name) + "_MD_READ.WARNING: " + std::string(words);
}

} // namespace

void splitAtColons(std::string_view token, std::size_t most, std::size_t width,
                   std::vector<std::string_view> &out) {
    while (out.size() < most) {
        const std::size_t colon = token.find(':');
        out.push_back(cutText(trimBlanks(token.substr(0, colon)), width));
        if (colon == std::string_view::npos) {
            return;
        }
        token.remove_prefix(colon + 1);
    }
}

PointIndex readPointIndex(const Reading &reading, int highest) {
    constexpr int noDigits = -1;
    const KeywordRecord &record = reading.record;
    PointIndex found;
    found.status = Val_Read_Digits(record.where, record.keyword, record.key, noDigits, found.index);
    if (found.status != 0 || found.index == noDigits) {
        reportRecord(record.where, false,
                     {warningOf(reading, "unable to read index value from"), record.key});
        return {noDigits, found.status};
    }
    if (found.index > highest) {
        reportRecord(
            record.where, false,
            {warningOf(reading, "out-of-range index value in"), record.key,
             "Index=" + std::to_string(found.index) + " <0 or >" + std::to_string(highest)});
        return {noDigits, NoSuchIndex};
    }
    return found;
}

bool takePoint(const Reading &reading, SourcedPoint &point) {
    std::span<const std::string_view> coordinates = reading.record.tokens;
    std::vector<std::string_view> pieces;
    if (holds(coordinates.front(), ":")) {
        splitAtColons(coordinates.front(), point.value.size(), CoordinateWidth, pieces);
        coordinates = pieces;
    }
    return takeValues(reading, plainCell<double>, coordinates, elementsOf(point.value));
}

bool takeTokenPoint(const Reading &reading, std::string_view token, std::string_view label,
                    XyzPoint &point) {
    std::vector<std::string_view> pieces;
    splitAtColons(token, point.size(), CoordinateWidth, pieces);
    bool stored = false;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        stored |= takeValue(reading, plainCell<double>, pieces[i], label, point[i]);
    }
    return stored;
}

} // namespace keldrin
