#include "shell/sounding_positions.h"

#include "base/real.h"
#include "physics/interpolation.h"

#include <array>
#include <cmath>

namespace keldrin {

namespace {

constexpr std::array<double, 2> NotGiven = {1.0E32, 1.0E32}; ///< end slopes
constexpr std::array<double, 2> HeldFlat = {0.0, 0.0};

/// A coordinate of a sounding, its column of the table and the slopes beyond the table's ends.
struct Coordinate {
    double SoundingRecord::*field;
    std::vector<double> StationTable::*column;
    std::array<double, 2> endSlopes;
};

const std::array Coordinates = {
    Coordinate{&SoundingRecord::East, &StationTable::east, NotGiven},
    Coordinate{&SoundingRecord::North, &StationTable::north, NotGiven},
    Coordinate{&SoundingRecord::Elevation, &StationTable::elev, HeldFlat},
};

} // namespace

StationTable tableFromSoundings(SurveyModel &model) {
    ControlValues &control = model.control;
    if (!(control.LineAzimuth >= -360.0F && control.LineAzimuth <= 360.0F)) {
        control.LineAzimuth = 90.0F;
    }
    const float azimuth = control.LineAzimuth * Degree;
    const auto scale = static_cast<double>(control.StnScale);
    const auto eastPart = static_cast<double>(std::fabs(std::sin(azimuth)));
    const auto northPart = static_cast<double>(std::fabs(std::cos(azimuth)));
    StationTable table;
    for (const SoundingRecord &record : model.soundings()) {
        const double station = record.Station;
        table.add(station, station * scale * eastPart, station * scale * northPart, 0.0);
    }
    return table;
}

void positionSoundings(SurveyModel &model, const StationTable &table) {
    for (SoundingRecord &record : model.soundings()) {
        record.Station = model.control.SurveyTypeIndex == MovingLoop
                             ? (record.RxStn + record.TxStn) * 0.5
                             : record.RxStn;
        for (const Coordinate &coordinate : Coordinates) {
            double &value = record.*coordinate.field;
            if (!isPresent(value)) {
                value = P1Intrp_R8(table.stn, table.*coordinate.column, coordinate.endSlopes,
                                   record.Station);
            }
        }
    }
}

} // namespace keldrin
