#pragma once

#include "base/index.h"

#include <array>
#include <string_view>

namespace keldrin {

// The fixed tables of the project's enumerations. Indices are 1-based; the index is the truth for
// the program and the text is rewritten from the table whenever the index changes.

inline constexpr int FixedLoop = 1;
inline constexpr int MovingLoop = 2;
inline constexpr int InLoop = 3;
inline constexpr int CoincidentLoop = 4;

inline constexpr std::array<std::string_view, 4> SurveyTypeNames = {"Fixed-Loop", "Moving-Loop",
                                                                    "In-Loop", "Coincident-Loop"};

inline constexpr int Metres = 1;
inline constexpr int Feet = 2;

inline constexpr std::array<std::string_view, 2> LengthUnitNames = {"m", "ft"};
inline constexpr std::array<float, 2> LengthUnitMetres = {1.0F, 0.3048F};

inline constexpr int MicrovoltPerAmpere = 1;
inline constexpr int NanovoltPerAmpereSquareMetre = 2;

/// The third unit stands in the table only; no reader and no dialog chooses it.
inline constexpr std::array<std::string_view, 3> TEMUnitNames = {"uV/A", "nV/Am2", "pT/A"};

/// The entry of a 1-based index, which is held inside the table.
template <std::size_t N>
constexpr std::string_view nameOf(const std::array<std::string_view, N> &names, int index) {
    const int held = index < 1 ? 1 : (index > static_cast<int>(N) ? static_cast<int>(N) : index);
    return names[asIndex(held - 1)];
}

} // namespace keldrin
