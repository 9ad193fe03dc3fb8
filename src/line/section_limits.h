#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

/// The ends of an axis, the lower value first.
struct AxisLimits {
    float low = 0.0F;
    float high = 1.0F;
};

/// What the user chooses of a section. Limits count where their switch is on; the page finds the
/// others itself. A page takes limits that cannot be shown as not chosen.
struct SectionLimits {
    bool setResistivity = false;
    AxisLimits resistivity = {1.0F, 1000.0F}; ///< ohm-m, above 0
    bool setTime = false;
    AxisLimits time = {0.01F, 100.0F}; ///< msec, above 0
    bool setHeight = false;
    AxisLimits height = {-100.0F, 0.0F}; ///< elevations; without elevations minus depths
    bool setExaggeration = false;
    float exaggeration = 1.0F; ///< vertical, above 0; the lower end of the heights follows from it
    int colours = 1;           ///< of colourScales(), from 1
};

/// What the user chooses of a profile page, see SectionLimits.
struct ProfileLimits {
    int every = 0;       ///< a curve for every n-th window, from the first; 0: the page chooses
    std::string windows; ///< in place of these a list such as "1-5,9", see windowList()
    bool setData = false;
    AxisLimits data = {0.0F, 1.0e4F}; ///< dB/dt
};

/// The windows of a list, rising, each once: ordinals up to MaxWindows and ranges of them with
/// commas between. Empty for any other text.
std::vector<int> windowList(std::string_view list);

/// Round limits, 1, 2 or 5 times a power of ten, that hold values from the 2nd to the 98th
/// percentile; nearest rank. At least a factor of ten apart. 1 to 1000 without values.
/// values  above 0; others do not count
AxisLimits roundPercentiles(std::span<const float> values);

} // namespace keldrin
