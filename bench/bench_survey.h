#pragma once

#include "base/number_text.h"

#include <cmath>
#include <filesystem>
#include <string>
#include <string_view>

// Rates are given as bytes and items; the columns of --benchmark_format=csv hold no other counters.

namespace keldrin::bench {

/// A path in the temporary directory.
inline std::string scratchPath(std::string_view name) {
    return (std::filesystem::temp_directory_path() / ("keldrin-bench-" + std::string(name)))
        .string();
}

/// An In-Loop survey as a field data file: `soundings` stations of `windows` windows.
inline std::string avgText(int soundings, int windows) {
    std::string text = "$ Survey.Array = INL\n$ Line.Name = 1\n$ Rx.Area = 10000\n$ Tx.Freq = 16\n"
                       "$ Tx.Ramp = 60\n$ Tx.Amp = 10\n"
                       "Skp Tx Station Cmp Freq Amps Win Time Twin.Beg Twin.End Magnitude %Mag\n";
    for (int s = 1; s <= soundings; ++s) {
        float time = 0.03F;
        for (int w = 1; w <= windows; ++w, time *= 1.23F) {
            const float value = 6.0E2F * std::pow(time, -2.5F) *
                                (1.0F + 0.1F * std::sin(0.1F * static_cast<float>(s)));
            text += "  2 " + std::to_string(s) + " " + std::to_string(s) + " Hz 16 10.00 " +
                    std::to_string(w);
            for (const float number : {time, 0.9F * time, 1.12F * time, value}) {
                text += formatReal("(ES14.5)", number);
            }
            text += "    2.500\n";
        }
    }
    return text;
}

} // namespace keldrin::bench
