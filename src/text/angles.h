#pragma once

#include "text/value_readers.h"

namespace keldrin {

// Angles in degrees out of text cells. Statuses and arguments as in value_readers.h, where
// Val_Read_Azimuth stands, the only one that a keyword reads; the others complete the documented
// kinds of cells.

int Cell_to_Azimuth(std::string_view cell, float defaultValue, float &result);
int Cell_to_Pitch(std::string_view cell, float defaultValue, float &result);

/// Degrees and minutes as satellite receivers write them, dddmm.mmm or ddmm.mmm. Degrees below 0
/// make the result negative.
/// degreeDigits  out: characters of the degrees, 0 where the cell has none
int Cell_to_NMEA(std::string_view cell, double defaultValue, double &result, int &degreeDigits);

/// A cell that begins with U is 90, H 0, D -90; otherwise a real number.
int Val_Read_Pitch(const RecordLine &record, std::string_view cell, std::string_view label,
                   float defaultValue, float &result);

int Val_Read_NMEA(const RecordLine &record, std::string_view cell, std::string_view label,
                  double defaultValue, double &result);

/// sign times (degrees + (minutes + seconds / 60) / 60).
double DMS_to_Degrees(double sign, double degrees, double minutes, double seconds);

} // namespace keldrin
