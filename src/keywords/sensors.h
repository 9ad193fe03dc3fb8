#pragma once

#include <string_view>

namespace keldrin {

inline constexpr int DipoleSensor = 1;
inline constexpr int DBdtSensor = 2;
inline constexpr int BSensor = 3;
inline constexpr int AntennaSensor = 4;
inline constexpr int TxReference = 5;

/// The kind of a sensor from its name, in any case: the first rule that applies decides, so a
/// name with a "B" is a B sensor unless it holds "dB/dt".
/// returns  1 to 5; 0 for a name that holds none of the words and no number, which is to be read
///          as the number of an antenna
int sensorIndexOf(std::string_view name);

} // namespace keldrin
