#pragma once

#include "projectfile/table_file.h"

namespace keldrin {

/// The columns of the layered-model file, by their places in ModelColumns.
enum ModelColumn : std::size_t {
    ModelStation,
    ModelRxStn,
    ModelTxStn,
    ModelEast,
    ModelNorth,
    ModelZinv,
    ModelResInv,
    ModelRes0,
    ModelRerr0,
    ModeldzW,
    ModelRerr,
    ModelRsns,
    ModelColumnCount
};

namespace model_columns {
using enum CellType;
using namespace column_units;
using enum EmptyCell;
using Sounding = SoundingRecord;
inline constexpr std::monostate Computed; ///< by reader and writer
inline constexpr EditDescriptor Position = editDescriptor("(F14.3)");
inline constexpr EditDescriptor Resistivity = editDescriptor("(ES12.4E1)");
inline constexpr EditDescriptor Plain = editDescriptor("(F8.2)");
inline constexpr double Missing = MissingValue;
inline constexpr bool Unread = false;
} // namespace model_columns

/// label, written label, unit, field, type, format, default, position without labels, required,
/// empty, read; see LayerLimits of the reader for defaults that another column gives
inline constexpr auto ModelColumns = [] {
    using namespace model_columns;
    return std::to_array<TableColumn>({
        {"STATION", "Station", NoUnit, &Sounding::Station, R8, Position, Missing, 1, true},
        {"RXSTN", "RxStn", NoUnit, &Sounding::RxStn, R8, Position, Missing, 2, false},
        {"TXSTN", "TxStn", NoUnit, &Sounding::TxStn, R8, Position, Missing, 3, false},
        {"EAST", "East", UnitOfLengths, &Sounding::East, R8, Position, Missing, 4, false, Never,
         Unread},
        {"NORTH", "North", UnitOfLengths, &Sounding::North, R8, Position, Missing, 5, false, Never,
         Unread},
        {"ZINV", "Zinv", UnitOfLengths, Computed, R4, Position, Missing, 6, true},
        {"RESINV", "ResInv", "ohm-m", &Sounding::ResInv, R4, Resistivity, Missing, 7, true},
        {"RES0", "Res0", "ohm-m", &Sounding::Res0, R4, Resistivity, Missing, 8, false},
        {"RERR0", "Rerr0", "%", &Sounding::Rerr0, R4, Plain, 500.0, 9, false},
        {"DZW", "dzW", NoUnit, &Sounding::dzW, R4, Plain, 1.0, 10, false},
        {"RERR", "Rerr", "%", &Sounding::Rerr, R4, Plain, Missing, 11, false},
        {"RSNS", "Rsns", "standard deviations", &Sounding::Rsns, R4, Plain, 0.0, 12, false},
    });
}();
static_assert(ModelColumns.size() == ModelColumnCount);

inline constexpr TableFormat ModelFormat = {
    ModelColumns, {}, "ERROR while reading column labels in line ", false, 16};

} // namespace keldrin
