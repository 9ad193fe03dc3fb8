#pragma once

#include "base/real.h"
#include "model/survey_model.h"
#include "sounding/page_layout.h"

#include <cmath>
#include <cstddef>
#include <span>

namespace keldrin {

/// A place on the page, in centimetres.
struct PagePlace {
    float x = 0.0F;
    float y = 0.0F;
};

/// Where the data plot shows a value, worked out from its frame alone: four decades of time from
/// `firstTime` (msec) on, and values from 0 to 1e4 on the ArcSinh axis.
inline PagePlace placeOf(float time, float value, float firstTime) {
    constexpr float decades = 4.0F;
    constexpr float highest = 1.0e4F;
    const float across = std::log10(time / firstTime) / decades;
    const float upward = std::asinh(value) / std::asinh(highest);
    return {DataFrame.left + across * (DataFrame.right - DataFrame.left),
            DataFrame.bottom + upward * (DataFrame.top - DataFrame.bottom)};
}

/// One time window of a sounding that a test makes up.
struct TestWindow {
    float time = 1.0F; ///< msec
    float observed = MissingValue;
    float resistivity = MissingValue;
    float error = 2.0F; ///< percent
};

inline SoundingRecord soundingOf(std::span<const TestWindow> windows) {
    SoundingRecord sounding;
    sounding.NumTW = static_cast<int>(windows.size());
    for (std::size_t i = 0; i < windows.size(); ++i) {
        sounding.TWcenter[i] = windows[i].time;
        sounding.TEMobs[i] = windows[i].observed;
        sounding.AResObs[i] = windows[i].resistivity;
        sounding.TEMerr[i] = windows[i].error;
    }
    return sounding;
}

} // namespace keldrin
