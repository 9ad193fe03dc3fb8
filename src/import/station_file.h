#pragma once

#include "base/real.h"

#include <string>
#include <vector>

namespace keldrin {

/// Station positions, sorted by station: parallel columns of the same length, at most 2048 rows
/// when read from a file.
struct StationTable {
    std::vector<double> stn;
    std::vector<double> east;        ///< LengthUnits
    std::vector<double> north;       ///< LengthUnits
    std::vector<double> elev;        ///< LengthUnits
    float stnAzimuth = MissingValue; ///< trend from the lowest to the highest station, degrees
    float stnScale = MissingValue;   ///< LengthUnits per station number

    [[nodiscard]] std::size_t size() const { return stn.size(); }
    void add(double station, double easting, double northing, double elevation);
};

// Station location files (*.stn): blank- or comma-separated columns STATION, EAST, NORTH, ELEV in
// any order under a label line, in this order before the first one. Lines of at most 8192 bytes;
// comments begin with $ \ / ! or ".

/// Reads the station location file that may stand beside a data file. Points at the place or with
/// the station of the point before are dropped.
/// fileName  offered to the user to be chosen when it does not exist
/// returns   0; 1 when the user declined or no valid point was found (reported)
int Stn_File_Input(std::string fileName, StationTable &table);

} // namespace keldrin
