#pragma once

#include "toolkit/dialog_form.h"

#include <optional>

namespace keldrin {

/// Lets the user settle the line azimuth when a station file disagrees with the header.
/// trend    of the station file, degrees, or missing; shown for comparison
/// azimuth  in: the header's; out: the user's answer, whole degrees
void VerifyLineAzimuth(float trend, float &azimuth);

/// What dialog 110 shows and changes; degrees.
struct LineAzimuthAnswers {
    std::optional<float> trend;
    float azimuth = 0.0F;
};

namespace LineAzimuthControl {
inline constexpr int Trend = 1060;
inline constexpr int Azimuth = 1048;
} // namespace LineAzimuthControl

extern const DialogForm<LineAzimuthAnswers> LineAzimuthDialog;

} // namespace keldrin
