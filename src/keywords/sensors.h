#pragma once

#include "keywords/keyword_table.h"
#include "text/cell_report.h"

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

/// Sensors by name, one or a list of channels. What is neither word nor number is an antenna, and
/// its number goes to the field that Antennas names.
template <auto Sensors, auto Antennas>
int readSensors(const Reading &reading) {
    auto &sensors = memberIn(reading.metadata, Sensors);
    auto &antennas = memberIn(reading.metadata, Antennas);
    keepSource(reading, sensors, [&] {
        const std::span<NamedSensor> list = elementsOf(sensors.value);
        const auto &tokens = reading.record.tokens;
        bool stored = false;
        for (std::size_t i = 0; i < std::min(tokens.size(), list.size()); ++i) {
            if (isEmptyCell(tokens[i])) {
                continue;
            }
            list[i] = {tokens[i], sensorIndexOf(tokens[i])};
            if (list[i].index == 0) {
                list[i].index = AntennaSensor;
                keepSource(reading, antennas, [&] {
                    return takeValue(reading, plainCell<int>, tokens[i],
                                     labelOf(reading, i, list.size()),
                                     elementsOf(antennas.value)[i]);
                });
            }
            stored = true;
        }
        return stored;
    });
    return 0;
}

} // namespace keldrin
