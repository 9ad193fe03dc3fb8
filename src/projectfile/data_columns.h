#pragma once

#include "projectfile/table_file.h"

namespace keldrin {

/// The columns of the data table, by their places in DataColumns.
enum DataColumn : std::size_t {
    ColStation,
    ColEast,
    ColNorth,
    ColElevation,
    ColRxStn,
    ColTxStn,
    ColTWcenter,
    ColTWwidth,
    ColTEMobs,
    ColTEMerr,
    ColTEMwgtX,
    ColTEMwgtY,
    ColTEMwgtZ,
    ColTEMcalc,
    ColAResObs,
    ColAResCalc,
    DataColumnCount
};

namespace data_formats {
inline constexpr EditDescriptor Position = editDescriptor("(F14.3)");
inline constexpr EditDescriptor Time = editDescriptor("(1P,G14.4E1)");
inline constexpr EditDescriptor Voltage = editDescriptor("(ES14.5)");
inline constexpr EditDescriptor Error = editDescriptor("(F8.2)");
inline constexpr EditDescriptor None = {};
} // namespace data_formats

namespace data_columns {
using enum CellType;
using namespace column_units;
using enum EmptyCell;
using namespace data_formats;
using Sounding = SoundingRecord;
inline constexpr double Missing = MissingValue;
} // namespace data_columns

/// label, written label, unit, field, type, format, default, position without labels, required,
/// empty
inline constexpr auto DataColumns = [] {
    using namespace data_columns;
    return std::to_array<TableColumn>({
        {"STATION", "Station", NoUnit, &Sounding::Station, R8, Position, Missing, 1, true},
        {"EAST", "East", UnitOfLengths, &Sounding::East, R8, Position, 0.0, 2, true},
        {"NORTH", "North", UnitOfLengths, &Sounding::North, R8, Position, 0.0, 3, true},
        {"ELEVATION", "Elevation", UnitOfLengths, &Sounding::Elevation, R8, Position, 0.0, 4, true},
        {"RXSTN", "RxStn", NoUnit, &Sounding::RxStn, R8, Position, Missing, 0, false},
        {"TXSTN", "TxStn", NoUnit, &Sounding::TxStn, R8, Position, Missing, 0, false},
        {"TWCENTER", "TWcenter", "msec", &Sounding::TWcenter, R4, Time, Missing, 5, true},
        {"TWWIDTH", "TWwidth", "msec", &Sounding::TWwidth, R4, Time, Missing, 6, true},
        {"TEMOBS", "TEMobs", UnitOfData, &Sounding::TEMobs, R4, Voltage, Missing, 7, true},
        {"TEMERR", "TEMerr", "%", &Sounding::TEMerr, R4, Error, Missing, 8, false},
        {"TEMWGTX", "TEMwgtX", NoUnit, WeightAxis{0}, Int, None, 0.0, 0, false},
        {"TEMWGTY", "TEMwgtY", NoUnit, WeightAxis{1}, Int, None, 0.0, 0, false},
        {"TEMWGTZ", "TEMwgtZ", NoUnit, WeightAxis{2}, Int, None, 1.0, 0, false},
        {"TEMCALC", "TEMcalc", UnitOfData, &Sounding::TEMcalc, R4, Voltage, Missing, 12, false,
         IfMissing},
        {"ARESOBS", "AResObs", "ohm-m", &Sounding::AResObs, R4, Time, Missing, 0, false,
         UnlessAboveZero},
        {"ARESCALC", "AResCalc", "ohm-m", &Sounding::AResCalc, R4, Time, Missing, 0, false,
         UnlessAboveZero},
    });
}();
static_assert(DataColumns.size() == DataColumnCount);

} // namespace keldrin
