#include "export/export_formats.h"

#include "base/ascii.h"
#include "base/sorting.h"
#include "base/utf8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <numbers>
#include <optional>
#include <string_view>

namespace keldrin {

namespace {

constexpr double WideGap = 3.0;        ///< median spacings; nothing is drawn across a wider one
constexpr double NotKnown = -1.0;      ///< an error or a sensitivity that is missing
constexpr int QuadCell = 9;            ///< number of the kind of cell
constexpr std::size_t MostTitle = 200; ///< bytes; the format allows 256

struct Place {
    double east = 0.0;
    double north = 0.0;

    Place operator+(Place other) const { return {east + other.east, north + other.north}; }
    Place operator-(Place other) const { return {east - other.east, north - other.north}; }
    Place operator*(double factor) const { return {east * factor, north * factor}; }
    bool operator==(const Place &) const = default;
};

double lengthOf(Place vector) {
    return std::hypot(vector.east, vector.north);
}

bool isCoordinate(double value) {
    return isPresent(value) && std::isfinite(value);
}

/// A sounding at its place on the line.
struct Stop {
    const ExportedSounding *sounding = nullptr;
    Place place;
};

/// Both edges of a column of layers.
struct Edges {
    Place first;
    Place last;
};

// In the order of the stations, which is not always that of the file.
std::vector<Stop> stopsAlong(const ExportedLine &line, int &unplaced) {
    std::vector<Stop> stops;
    for (const ExportedSounding &sounding : line.soundings) {
        const SoundingRecord &record = *sounding.record;
        if (isCoordinate(record.East) && isCoordinate(record.North)) {
            stops.push_back({&sounding, {record.East, record.North}});
        } else {
            unplaced += sounding.layers > 0 ? 1 : 0;
        }
    }
    std::stable_sort(stops.begin(), stops.end(), [](const Stop &a, const Stop &b) {
        return a.sounding->record->Station < b.sounding->record->Station;
    });
    return stops;
}

/// Lays out the columns of a line.
class ColumnEdges {
  public:
    ColumnEdges(const std::vector<Stop> &stops, const ControlValues &control) : control_(control) {
        for (const Stop &stop : stops) {
            if (places_.empty() || !(places_.back() == stop.place)) {
                places_.push_back(stop.place);
            }
            indices_.push_back(places_.size() - 1);
        }
        std::vector<double> spacings;
        for (std::size_t i = 1; i < places_.size(); ++i) {
            spacings.push_back(lengthOf(places_[i] - places_[i - 1]));
        }
        if (!spacings.empty()) {
            medianSpacing_ = lowerMedian(std::move(spacings));
        }
    }

    [[nodiscard]] Edges of(std::size_t stop) const {
        const std::size_t i = indices_[stop];
        if (places_.size() == 1) {
            return alone(places_[i]);
        }
        const std::optional<Place> before = i > 0 ? halfWay(i, i - 1) : std::nullopt;
        const std::optional<Place> after =
            i + 1 < places_.size() ? halfWay(i, i + 1) : std::nullopt;
        const Place here = places_[i];
        return {before ? *before : here + (here - *after),
                after ? *after : here + (here - *before)};
    }

  private:
    [[nodiscard]] std::optional<Place> halfWay(std::size_t from, std::size_t to) const {
        const Place way = places_[to] - places_[from];
        const double length = lengthOf(way);
        const double part = length > WideGap * medianSpacing_ ? medianSpacing_ / length : 1.0;
        return places_[from] + way * (0.5 * part);
    }

    // As wide as the loop, along the line where its direction is known, else to the east.
    [[nodiscard]] Edges alone(Place here) const {
        constexpr double east = 90.0;
        const double degrees =
            isPresent(control_.LineAzimuth) ? static_cast<double>(control_.LineAzimuth) : east;
        const double azimuth = degrees * std::numbers::pi / 180.0;
        const double half = 0.5 * static_cast<double>(control_.XTxLength);
        const Place way = Place{std::sin(azimuth), std::cos(azimuth)} * half;
        return {here - way, here + way};
    }

    const ControlValues &control_;
    std::vector<Place> places_;        ///< neighbours differ
    std::vector<std::size_t> indices_; ///< of each stop in places_
    double medianSpacing_ = 0.0;
};

template <class Number>
void appendNumber(std::string &out, Number value) {
    std::array<char, 64> text{};
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value);
    out.append(text.data(), end);
}

// To a tenth of a millimetre: half the way between two places is not more exact.
void appendCoordinate(std::string &out, double value) {
    constexpr int decimals = 4;
    std::array<char, 400> text{}; // of the largest number
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value,
                                            std::chars_format::fixed, decimals);
    std::string_view shown(text.data(), static_cast<std::size_t>(end - text.data()));
    while (shown.back() == '0') {
        shown.remove_suffix(1);
    }
    out += shown.back() == '.' ? shown.substr(0, shown.size() - 1) : shown;
}

/// Values of the cells, one text for each field.
enum CellField : std::size_t { Resistivity, LnError, Sensitivity, Ordinal, CellFieldCount };
constexpr std::array<std::string_view, CellFieldCount> CellFieldNames = {"resistivity", "ln_error",
                                                                         "sensitivity", "sounding"};

/// The file in the making.
struct Mesh {
    std::string points;
    std::string cells;
    std::array<std::string, CellFieldCount> values;
    int pointCount = 0;
    int cellCount = 0;

    void addPoint(Place place, double elevation) {
        appendCoordinate(points, place.east);
        appendCoordinate(points += ' ', place.north);
        appendCoordinate(points += ' ', elevation);
        points += '\n';
        ++pointCount;
    }
    void addValue(CellField field, double value) {
        appendNumber(values[field], value);
        values[field] += '\n';
    }
};

double orNotKnown(float value) {
    return isPresent(value) && std::isfinite(value) ? static_cast<double>(value) : NotKnown;
}

double lnErrorOf(float percent) {
    const double value = orNotKnown(percent);
    return value < 0.0 ? NotKnown : std::log1p(value / 100.0);
}

bool isDrawn(const ExportedSounding &sounding, std::size_t layer) {
    const float resistivity = sounding.record->ResInv[layer];
    return isPresent(resistivity) && std::isfinite(resistivity) &&
           std::isfinite(sounding.edges[layer + 1]) &&
           sounding.edges[layer + 1] > sounding.edges[layer];
}

// Left and right points of every layer's edge, then the layers between them.
void addColumn(Mesh &mesh, const ExportedSounding &sounding, const Edges &edges) {
    const SoundingRecord &record = *sounding.record;
    const double surface = isCoordinate(record.Elevation) ? record.Elevation : 0.0;
    const int first = mesh.pointCount;
    for (std::size_t k = 0; k <= sounding.layers; ++k) {
        const double edge = std::isfinite(sounding.edges[k]) ? sounding.edges[k] : 0.0;
        mesh.addPoint(edges.first, surface - edge);
        mesh.addPoint(edges.last, surface - edge);
    }
    for (std::size_t k = 0; k < sounding.layers; ++k) {
        if (!isDrawn(sounding, k)) {
            continue;
        }
        const int corner = first + 2 * static_cast<int>(k);
        mesh.cells += '4';
        for (const int point : {corner, corner + 1, corner + 3, corner + 2}) {
            appendNumber(mesh.cells += ' ', point);
        }
        mesh.cells += '\n';
        mesh.addValue(Resistivity, static_cast<double>(record.ResInv[k]));
        mesh.addValue(LnError, lnErrorOf(record.Rerr[k]));
        mesh.addValue(Sensitivity, orNotKnown(record.Rsns[k]));
        mesh.addValue(Ordinal, static_cast<double>(sounding.ordinal));
        ++mesh.cellCount;
    }
}

// One line of text.
std::string titleOf(const ControlValues &control) {
    std::string title = "KELDRIN resistivity model";
    if (!control.LineName.isBlank()) {
        title.append(", line ").append(validUtf8(control.LineName.view()));
    }
    title.append(", lengths in ").append(nameOf(LengthUnitNames, control.LengthUnitsIndex));
    std::replace_if(
        title.begin(), title.end(), [](char c) { return (c >= 0 && c < ' ') || c == '\x7F'; }, '?');
    return std::string(cutText(title, MostTitle));
}

std::string fileText(const Mesh &mesh, const ControlValues &control) {
    const std::string cells = std::to_string(mesh.cellCount);
    std::string text =
        "# vtk DataFile Version 3.0\n" + titleOf(control) + "\nASCII\nDATASET UNSTRUCTURED_GRID\n";
    text += "POINTS " + std::to_string(mesh.pointCount) + " double\n" + mesh.points;
    text += "CELLS " + cells + " " + std::to_string(5 * mesh.cellCount) + "\n" + mesh.cells;
    text += "CELL_TYPES " + cells + "\n";
    for (int i = 0; i < mesh.cellCount; ++i) {
        text += std::to_string(QuadCell) + "\n";
    }
    text += "CELL_DATA " + cells + "\n";
    for (std::size_t field = 0; field < CellFieldCount; ++field) {
        text.append("SCALARS ").append(CellFieldNames[field]).append(" double 1\n");
        text.append("LOOKUP_TABLE default\n").append(mesh.values[field]);
    }
    return text;
}

} // namespace

VtkCurtain vtkCurtain(const ExportedLine &line) {
    VtkCurtain curtain;
    const std::vector<Stop> stops = stopsAlong(line, curtain.unplaced);
    const ColumnEdges edges(stops, *line.control);
    Mesh mesh;
    for (std::size_t i = 0; i < stops.size(); ++i) {
        if (stops[i].sounding->layers > 0) {
            addColumn(mesh, *stops[i].sounding, edges.of(i));
        }
    }
    curtain.cells = mesh.cellCount;
    curtain.text = fileText(mesh, *line.control);
    return curtain;
}

} // namespace keldrin
