#pragma once

#include "model/survey_model.h"

#include <cmath>
#include <cstddef>
#include <optional>

namespace keldrin {

/// The window, from 0, of a sounding that lies at a time: windows of two soundings are the same
/// when their times agree to a thousandth.
/// time   msec
/// guess  looked at first: where windows at this time mostly are
inline std::optional<std::size_t> windowAt(const SoundingRecord &sounding, float time,
                                           std::size_t guess = 0) {
    constexpr float sameTime = 1.0e-3F; // of the time itself
    const auto isAt = [&](std::size_t window) {
        return std::fabs(sounding.TWcenter[window] - time) <= sameTime * time;
    };
    const std::size_t windows = windowCount(sounding);
    if (guess < windows && isAt(guess)) {
        return guess;
    }
    for (std::size_t i = 0; i < windows; ++i) {
        if (isAt(i)) {
            return i;
        }
    }
    return std::nullopt;
}

} // namespace keldrin
