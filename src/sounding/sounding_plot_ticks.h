#pragma once

#include <optional>
#include <string>
#include <vector>

namespace keldrin {

/// Ticks of an axis in ArcSinh units; places are ArcSinh of the values that the labels show.
struct DataAxisTicks {
    std::vector<float> places;
    std::vector<std::string> labels; ///< of the places, at most 7 characters for decades
    std::vector<float> small;
    std::optional<int> firstDecade; ///< of the places: 0 for 0, n for 10^(n-1), -n for its
                                    ///< negative; none where the places are round values
};

/// Labelled ticks at 0 and at the decades from 1 to 1e11 of both signs ("-1000", "1e5"), small
/// ones at 2 to 9 times each. An axis within less than two of these has ticks at round values.
/// low, high  ArcSinh units
DataAxisTicks dataAxisTicks(float low, float high);

/// Ticks of the logarithmic data axis, with large numbers as the other one has them ("1e5"). Places
/// are values.
///
/// low, high  above 0
DataAxisTicks logDataAxisTicks(float low, float high);

/// Those of dataAxisTicks() with powers of ten as "10^3" and, since late windows often lie there,
/// with ticks between 0 and 1: small ones at tenths, labelled ones at 0.5 and 0.2 as far as there
/// is room.
///
/// extent  of the axis in page cm
DataAxisTicks presentedDataTicks(float low, float high, float extent);

/// Draws the axis upward of the plot in force with its ticks.
void drawDataTicks(const DataAxisTicks &ticks);

} // namespace keldrin
