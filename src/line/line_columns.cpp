#include "line/line_columns.h"

#include "base/sorting.h"
#include "projectfile/table_file.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>

namespace keldrin {

namespace {

constexpr double WidestSpacing = 3.0; ///< of the median, beyond which there is a gap

// Median of the spacings above 0; 0 without one.
double medianSpacing(std::span<const double> places) {
    std::vector<double> spacings;
    for (std::size_t i = 1; i < places.size(); ++i) {
        if (places[i] > places[i - 1]) {
            spacings.push_back(places[i] - places[i - 1]);
        }
    }
    return upperMedian(std::move(spacings));
}

// Spacing to a neighbour, or nothing across a gap and at an end.
std::optional<double> spacingTo(std::span<const double> places, std::size_t at, bool upward,
                                double median) {
    const bool atEnd = upward ? at + 1 == places.size() : at == 0;
    if (atEnd) {
        return std::nullopt;
    }
    const double spacing = upward ? places[at + 1] - places[at] : places[at] - places[at - 1];
    return spacing > WidestSpacing * median ? std::nullopt : std::optional(spacing);
}

// Cells of places that differ.
std::vector<Stretch> distinctCells(std::span<const double> places, double lone) {
    const double median = medianSpacing(places);
    std::vector<Stretch> cells;
    cells.reserve(places.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
        const std::optional<double> down = spacingTo(places, i, false, median);
        const std::optional<double> up = spacingTo(places, i, true, median);
        const double usual = median > 0.0 ? median : lone;
        const double edge = std::min(usual, down.value_or(up.value_or(usual)));
        const double upperEdge = std::min(usual, up.value_or(down.value_or(usual)));
        cells.push_back(
            {places[i] - down.value_or(edge) / 2.0, places[i] + up.value_or(upperEdge) / 2.0});
    }
    return cells;
}

struct LinePlace {
    double x = 0.0;
    double y = 0.0;
};

bool isKnown(double value) {
    return isPresent(value) && std::isfinite(value);
}

/// How places are read from soundings.
struct PlaceSource {
    bool coordinates = true;
    double stationScale = 1.0;

    [[nodiscard]] std::optional<LinePlace> placeOf(const SoundingRecord &sounding) const {
        if (coordinates) {
            return isKnown(sounding.East) && isKnown(sounding.North)
                       ? std::optional(LinePlace{sounding.East, sounding.North})
                       : std::nullopt;
        }
        return isKnown(sounding.Station)
                   ? std::optional(LinePlace{sounding.Station * stationScale, 0.0})
                   : std::nullopt;
    }
};

// Coordinates of which all are the same say less than station numbers that differ.
PlaceSource placeSource(const SurveyModel &survey) {
    const auto scale = static_cast<double>(survey.control.StnScale);
    PlaceSource source{true, std::isfinite(scale) && scale != 0.0 ? scale : 1.0};
    const SoundingRecord *first = nullptr;
    bool differ = false;
    bool stationsDiffer = false;
    for (const SoundingRecord &sounding : survey.soundings()) {
        if (isLeftOut(survey.control, sounding)) {
            continue;
        }
        source.coordinates = source.coordinates && source.placeOf(sounding).has_value();
        first = first == nullptr ? &sounding : first;
        differ = differ || sounding.East != first->East || sounding.North != first->North;
        stationsDiffer = stationsDiffer || sounding.Station != first->Station;
    }
    source.coordinates = source.coordinates && (differ || !stationsDiffer);
    return source;
}

// Keeps the cells of both neighbours off a place between them.
void keepFree(std::vector<LineColumn> &columns, double place) {
    const auto after =
        std::upper_bound(columns.begin(), columns.end(), place,
                         [](double p, const LineColumn &column) { return p < column.place; });
    if (after != columns.end()) {
        after->left = std::max(after->left, (after->place + place) / 2.0);
    }
    if (after != columns.begin()) {
        const auto before = after - 1;
        before->right = std::min(before->right, (before->place + place) / 2.0);
    }
}

// The distance along the line at which a place beside it stands, if it lies between two soundings.
std::optional<double> distanceOf(const LinePlace &place, std::span<const LinePlace> path,
                                 std::span<const LineColumn> columns) {
    constexpr double end = 0.01; // part of a spacing that counts as the sounding's own place
    constexpr double farthest = 0.5;
    for (std::size_t i = 1; i < path.size(); ++i) {
        const LinePlace way = {path[i].x - path[i - 1].x, path[i].y - path[i - 1].y};
        const LinePlace offset = {place.x - path[i - 1].x, place.y - path[i - 1].y};
        const double square = way.x * way.x + way.y * way.y;
        const double along = (way.x * offset.x + way.y * offset.y) / square;
        const double across = std::fabs(way.x * offset.y - way.y * offset.x) / square;
        if (along > end && along < 1.0 - end && across < farthest) {
            return columns[i - 1].place + along * std::sqrt(square);
        }
    }
    return std::nullopt;
}

} // namespace

std::vector<Stretch> cellsOf(std::span<const double> places, double lone) {
    std::vector<double> distinct(places.begin(), places.end());
    distinct.erase(std::unique(distinct.begin(), distinct.end()), distinct.end());
    const std::vector<Stretch> shared = distinctCells(distinct, lone);
    std::vector<Stretch> cells;
    cells.reserve(places.size());
    for (std::size_t i = 0, group = 0; i < places.size(); ++group) {
        std::size_t end = i;
        while (end < places.size() && places[end] == places[i]) {
            ++end;
        }
        const Stretch &whole = shared[group];
        const double part = (whole.to - whole.from) / static_cast<double>(end - i);
        for (std::size_t k = 0; i < end; ++i, ++k) {
            const double from = whole.from + static_cast<double>(k) * part;
            cells.push_back({from, i + 1 == end ? whole.to : from + part});
        }
    }
    return cells;
}

std::vector<LineColumn> lineColumns(const SurveyModel &survey) {
    const PlaceSource source = placeSource(survey);
    std::vector<LineColumn> columns;
    std::vector<LinePlace> path;
    std::vector<LinePlace> leftOut;
    std::vector<double> places;
    int ordinal = 0;
    for (const SoundingRecord &sounding : survey.soundings()) {
        ++ordinal;
        const std::optional<LinePlace> place = source.placeOf(sounding);
        if (!place) {
            continue;
        }
        if (isLeftOut(survey.control, sounding)) {
            leftOut.push_back(*place);
            continue;
        }
        const double step =
            path.empty() ? 0.0 : std::hypot(place->x - path.back().x, place->y - path.back().y);
        places.push_back(places.empty() ? 0.0 : places.back() + step);
        path.push_back(*place);
        columns.push_back({ordinal, places.back(), 0.0, 0.0});
    }
    const auto loop = static_cast<double>(survey.control.XTxLength);
    const std::vector<Stretch> cells =
        cellsOf(places, std::isfinite(loop) && loop > 0 ? loop : 1.0);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        columns[i].left = cells[i].from;
        columns[i].right = cells[i].to;
    }
    for (const LinePlace &place : leftOut) {
        if (const std::optional<double> distance = distanceOf(place, path, columns)) {
            keepFree(columns, *distance);
        }
    }
    return columns;
}

int columnAt(std::span<const LineColumn> columns, double distance) {
    const auto found = std::find_if(columns.begin(), columns.end(), [=](const LineColumn &column) {
        return distance >= column.left && distance < column.right;
    });
    return found == columns.end() ? -1 : static_cast<int>(found - columns.begin());
}

} // namespace keldrin
