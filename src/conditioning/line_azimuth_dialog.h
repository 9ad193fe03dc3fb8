#pragma once

namespace keldrin {

/// Lets the user settle the line azimuth when a station file disagrees with the header
/// (dialog 110).
/// trend    of the station file, degrees, or missing; shown for comparison
/// azimuth  in: the header's; out: the user's answer, whole degrees
void VerifyLineAzimuth(float trend, float &azimuth);

} // namespace keldrin
