#pragma once

#include <cstdint>
#include <string_view>

namespace keldrin {

// Text cells to values. A reader never stops a file: on anything but a good cell the result is the
// caller's default and the status says what happened.
//
//   0         read
//   -1        nothing to read: blank, holds a "*" or, for plain numbers, holds "INF"
//   above 0   could not be converted; the Val_... wrappers report it with record number and line
//
// Each wrapper has a core without messages, named Cell_to_.... The label is the name of the value
// in the message. Numbers are read in free form (base/free_form.h); a null value, such as a lone
// comma, is a good read of the default. More readers stand in number_in_text.h, angles.h and
// times.h.

inline constexpr int CellRead = 0;
inline constexpr int CellEmpty = -1;
inline constexpr int CellFailed = 1;

/// Where a cell stands: the number of its record and the whole line, for messages.
struct RecordLine {
    int number = 0;
    std::string_view line;
    bool quiet = false; ///< an earlier pass has reported its faults: nothing is reported
};

int Cell_to_Int(std::string_view cell, std::int32_t defaultValue, std::int32_t &result);
int Cell_to_Int8(std::string_view cell, std::int64_t defaultValue, std::int64_t &result);
int Cell_to_R4(std::string_view cell, float defaultValue, float &result);
int Cell_to_R8(std::string_view cell, double defaultValue, double &result);
/// A station or a coordinate: one above 1.0E9 in size cannot be read.
int Cell_to_Place(std::string_view cell, double defaultValue, double &result);
int Cell_to_YesNo(std::string_view cell, bool defaultValue, bool &result);
int Cell_to_Length(std::string_view cell, int unitIndex, float defaultValue, float &result);

int Val_Read_Int(const RecordLine &record, std::string_view cell, std::string_view label,
                 std::int32_t defaultValue, std::int32_t &result);
/// Of 64 bits; no keyword has one, it completes the documented kinds.
int Val_Read_Int8(const RecordLine &record, std::string_view cell, std::string_view label,
                  std::int64_t defaultValue, std::int64_t &result);
int Val_Read_R4(const RecordLine &record, std::string_view cell, std::string_view label,
                float defaultValue, float &result);
int Val_Read_R8(const RecordLine &record, std::string_view cell, std::string_view label,
                double defaultValue, double &result);

int Val_Read_Place(const RecordLine &record, std::string_view cell, std::string_view label,
                   double defaultValue, double &result);

/// Only the first character decides: 1, Y, T are true; 0, N, F are false.
int Val_Read_YesNo(const RecordLine &record, std::string_view cell, std::string_view label,
                   bool defaultValue, bool &result);

/// A length in metres: metres or feet, as a letter m or f of the cell begins their name, else
/// `unitIndex` (1 m, 2 ft, held to that range). A length in another unit cannot be read.
int Val_Read_Length(const RecordLine &record, std::string_view cell, std::string_view label,
                    int unitIndex, float defaultValue, float &result);

/// The digits of a cell as one integer; sign and point are lost.
int Val_Read_Digits(const RecordLine &record, std::string_view cell, std::string_view label,
                    std::int32_t defaultValue, std::int32_t &result);

/// The length unit that a word names in any case: 1 for m, meter(s) and metre(s), 2 for f, ft, foot
/// and feet, 0 for any other.
int lengthUnitNamed(std::string_view word);

/// Degrees from a plain number, a bearing such as N45E or a compass word. A plain number that
/// cannot be read leaves the default with status 0.
int Val_Read_Azimuth(const RecordLine &record, std::string_view cell, std::string_view label,
                     float defaultValue, float &result);

/// Hours from a real number or from hh:mm:ss.
int Val_Read_Hours(const RecordLine &record, std::string_view cell, std::string_view label,
                   double defaultValue, double &result);

} // namespace keldrin
