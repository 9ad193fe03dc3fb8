#pragma once

#include <array>
#include <string_view>

namespace keldrin {

// Enumerations that keywords of several groups share.

inline constexpr std::array<std::string_view, 5> AcqMethodNames = {"TIMESERIES", "STACK", "DECAY",
                                                                   "TRANSIENT", "FREQUENCY"};
inline constexpr std::array<std::string_view, 3> IPNames = {"MRAD", "MSEC", "PFE"};

} // namespace keldrin
