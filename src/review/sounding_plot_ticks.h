#pragma once

#include <string>
#include <vector>

namespace keldrin {

/// Ticks of an axis in ArcSinh units; places are ArcSinh of the values that the labels show.
struct DataAxisTicks {
    std::vector<float> places;
    std::vector<std::string> labels; ///< of the places, at most 7 characters for decades
    std::vector<float> small;
};

/// Labelled ticks at 0 and at the decades from 1 to 1e11 of both signs ("-1000", "1e5"), small
/// ones at 2 to 9 times each. An axis within less than two of these has ticks at round values.
/// low, high  ArcSinh units
DataAxisTicks dataAxisTicks(float low, float high);

} // namespace keldrin
