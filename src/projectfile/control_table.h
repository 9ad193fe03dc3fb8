#pragma once

#include "base/index.h"
#include "model/survey_model.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <stdexcept>
#include <string_view>
#include <type_traits>
#include <variant>

namespace keldrin {

// The values of a project file's control block. One table names them for the reader of the group,
// for the limits forced after reading and for the writer.

/// Values of older files that have no field of their own; see STD_Namelist_Read for their effect.
struct LegacyValues {
    FixedText<128> PROJECT;
    FixedText<128> CLIENT;
    FixedText<16> LINE;
    float REPRATE = -1.0F; ///< Hz; not above 0: not read
};

/// What a group is read into.
struct ControlGroup {
    ControlValues &control;
    LegacyValues legacy;
};

using HeaderLines = std::array<FixedText<128>, MaxHeaderLines>;
using WaveformReals = std::array<float, MaxWaveformPoints>;

using ControlField = std::variant<
    FixedText<128> ControlValues::*, FixedText<32> ControlValues::*, FixedText<16> ControlValues::*,
    FixedText<8> ControlValues::*, FixedText<3> ControlValues::*, HeaderLines ControlValues::*,
    float ControlValues::*, double ControlValues::*, int ControlValues::*,
    WaveformReals ControlValues::*, LayerReals ControlValues::*, FixedText<128> LegacyValues::*,
    FixedText<16> LegacyValues::*, float LegacyValues::*>;

/// Range forced on a number after reading. An empty range (low above high) forces nothing.
struct ForcedRange {
    double low = 1.0;
    double high = 0.0;
    bool onlyIfSet = false; ///< a missing value stays missing
};

struct ControlRow {
    std::string_view name;
    ControlField field;
    ForcedRange range = {}; ///< after reading, and of what a user types
    ForcedRange entry = {}; ///< before the configuration is shown; empty: `range`
};

namespace control_ranges {
inline constexpr ForcedRange Azimuth = {-360.0, 360.0, true};
inline constexpr ForcedRange Scale = {1.0E-6, 1.0E6};
inline constexpr ForcedRange ScaleAtEntry = {1.1E-6, 900000.0}; ///< tighter on purpose
inline constexpr ForcedRange LoopSide = {0.1, 990000.0};
inline constexpr ForcedRange Turns = {1, MaxWaveformPoints};
inline constexpr ForcedRange Frequency = {0.01, 1024.0};
inline constexpr ForcedRange Ramp = {0.1, 990000.0};
inline constexpr ForcedRange Position = {-990000000.0, 9.9E9};
inline constexpr ForcedRange CoilArea = {1.0, 9.9E9};
inline constexpr ForcedRange Weight = {0.01, 100.0};
inline constexpr ForcedRange Iterations = {0, 32};
inline constexpr ForcedRange Percent = {0.1, 9999.9};
inline constexpr ForcedRange SkipCutoff = {0.1, 10000.0}; ///< of DataCutoff in Auto Skip
inline constexpr ForcedRange TableSize = {16, std::numeric_limits<int>::max()};
} // namespace control_ranges

inline constexpr auto ControlTable = std::to_array<ControlRow>({
    {"ProgramVersion", &ControlValues::ProgramVersion},
    {"Header", &ControlValues::Header},
    {"JobName", &ControlValues::JobName},
    {"JobArea", &ControlValues::JobArea},
    {"JobBy", &ControlValues::JobBy},
    {"JobFor", &ControlValues::JobFor},
    {"JobNumber", &ControlValues::JobNumber},
    {"JobDate", &ControlValues::JobDate},
    {"LineName", &ControlValues::LineName},
    {"LineNumber", &ControlValues::LineNumber, {}, control_ranges::Position},
    {"LineAzimuth", &ControlValues::LineAzimuth, control_ranges::Azimuth},
    {"SurveyType", &ControlValues::SurveyType},
    {"TEMUnits", &ControlValues::TEMUnits},
    {"LengthUnits", &ControlValues::LengthUnits},
    {"StnScale", &ControlValues::StnScale, control_ranges::Scale, control_ranges::ScaleAtEntry},
    {"XTxLength", &ControlValues::XTxLength, control_ranges::LoopSide},
    {"YTxLength", &ControlValues::YTxLength, control_ranges::LoopSide},
    {"TxAzimuth", &ControlValues::TxAzimuth, control_ranges::Azimuth},
    {"NTxTurn", &ControlValues::NTxTurn, control_ranges::Turns},
    {"TxFreq", &ControlValues::TxFreq, control_ranges::Frequency},
    {"TxRamp", &ControlValues::TxRamp, control_ranges::Ramp},
    {"NTxWF", &ControlValues::NTxWF},
    {"TxWFT0", &ControlValues::TxWFT0},
    {"TxWFT", &ControlValues::TxWFT},
    {"TxWFI", &ControlValues::TxWFI},
    {"TxStn", &ControlValues::TxStn, control_ranges::Position},
    {"XTxCenter", &ControlValues::XTxCenter, control_ranges::Position},
    {"YTxCenter", &ControlValues::YTxCenter, control_ranges::Position},
    {"XRxOffset", &ControlValues::XRxOffset, control_ranges::Position},
    {"YRxOffset", &ControlValues::YRxOffset, control_ranges::Position},
    {"RxArea", &ControlValues::RxArea, control_ranges::CoilArea},
    {"dpWeight", &ControlValues::dpWeight, control_ranges::Weight},
    {"dxWeight", &ControlValues::dxWeight, control_ranges::Weight},
    {"dzWeight", &ControlValues::dzWeight, control_ranges::Weight},
    {"dzzWeight", &ControlValues::dzzWeight, control_ranges::Weight},
    {"Niteration", &ControlValues::Niteration, control_ranges::Iterations},
    {"ErrorFloor", &ControlValues::ErrorFloor, control_ranges::Percent},
    {"DataCutoff", &ControlValues::DataCutoff, control_ranges::Percent},
    {"Res0Layer", &ControlValues::Res0Layer},
    {"Res0Error", &ControlValues::Res0Error},
    {"Thk0Layer", &ControlValues::Thk0Layer},
    {"Thk0Error", &ControlValues::Thk0Error},
    {"NumLayer", &ControlValues::NumLayer},
    {"NumStn", &ControlValues::NumStn, control_ranges::TableSize},
    {"NumTW", &ControlValues::NumTW, control_ranges::TableSize},
    {"PROJECT", &LegacyValues::PROJECT},
    {"CLIENT", &LegacyValues::CLIENT},
    {"LINE", &LegacyValues::LINE},
    {"REPRATE", &LegacyValues::REPRATE},
});

/// The row of a name in the table's own spelling; an unknown name does not compile.
consteval const ControlRow *controlRow(std::string_view name) {
    for (const ControlRow &row : ControlTable) {
        if (row.name == name) {
            return &row;
        }
    }
    throw std::logic_error("no such control value");
}

/// The row of a control value; one without a row does not compile.
template <class Member>
constexpr const ControlRow &controlRowOf(Member member) {
    for (const ControlRow &row : ControlTable) {
        const Member *field = std::get_if<Member>(&row.field);
        if (field != nullptr && *field == member) {
            return row;
        }
    }
    throw std::logic_error("no such control value");
}

/// The range that the configuration brings a value into before it shows it.
constexpr const ForcedRange &entryRange(const ControlRow &row) {
    return row.entry.low > row.entry.high ? row.range : row.entry;
}

/// The row of a name without regard to case; null when there is none.
const ControlRow *findControlRow(std::string_view name);

template <class T>
constexpr bool isArrayField = false;
template <class T, std::size_t N>
constexpr bool isArrayField<std::array<T, N>> = true;

/// Calls `visitor` with the variable of a row.
template <class Visitor>
decltype(auto) visitControl(ControlGroup &group, const ControlRow &row, Visitor &&visitor) {
    return std::visit(
        [&](auto member) -> decltype(auto) {
            if constexpr (std::is_invocable_v<decltype(member), ControlValues &>) {
                return visitor(group.control.*member);
            } else {
                return visitor(group.legacy.*member);
            }
        },
        row.field);
}

/// Calls `visitor` with element `element` (from 0) of a row's variable; a variable that is no
/// array has element 0 alone. The element must exist, see elementCount().
template <class Visitor>
decltype(auto) visitControlElement(ControlGroup &group, const ControlRow &row, int element,
                                   Visitor &&visitor) {
    return visitControl(group, row, [&](auto &variable) -> decltype(auto) {
        if constexpr (isArrayField<std::remove_reference_t<decltype(variable)>>) {
            return visitor(variable[asIndex(element)]);
        } else {
            return visitor(variable);
        }
    });
}

/// Elements of a row's variable; 0 when it is no array.
int arrayLength(const ControlRow &row);

/// Elements of a row's variable, 1 when it is no array.
int elementCount(const ControlRow &row);

/// True when a row's variable holds text.
bool holdsText(const ControlRow &row);

/// Stores text in a variable, cut to its length. False when the variable is a number.
bool storeText(ControlGroup &group, const ControlRow &row, int element, std::string_view text);

/// Reads a number into a variable. False when the variable is text or the token no such number.
bool storeNumber(ControlGroup &group, const ControlRow &row, int element, std::string_view token);

/// Forces the range of one row, in the width of its variable.
void forceRange(ControlGroup &group, const ControlRow &row);

} // namespace keldrin
