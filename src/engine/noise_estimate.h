#pragma once

#include "engine/sounding_data.h"

#include <Eigen/Core>
#include <span>

namespace keldrin {

// A file that states the same percentage for all windows of a sounding has not measured it. Late
// windows are then often noise alone, far beyond that percentage. Their noise is estimated from
// what no model explains: the scatter of a datum about its neighbours in time. A response is smooth
// in time, and so is what a model that is still wrong leaves over; noise is not.

/// By how much each datum departs from the mean of the two beside it, in nV/(A m2), after the
/// calculated values were taken off and the decay was taken out; of the deviation of the noise when
/// that is independent between windows.
/// calculated  of the same windows, as `Residuals::calculated`
/// returns  none for fewer than three data
Eigen::VectorXd scatterOf(const SoundingData &data, const Eigen::VectorXd &calculated);

/// A sounding of a line with the scatter of its data, which is empty when its errors are measured.
struct SoundingScatter {
    const SoundingRecord *record = nullptr;
    const SoundingData *data = nullptr;
    const Eigen::VectorXd *scatter = nullptr;
};

/// Standard deviation of the noise of each datum of one sounding, in nV/(A m2): 1.48 times the
/// median of the scatter in the windows of equal time of this sounding and of two on either side,
/// and in three windows before and after each. The noise of a component where a value is the length
/// of a vector.
/// returns  zeros when the sounding has no scatter
Eigen::VectorXd noiseNear(std::span<const SoundingScatter> line, std::size_t place);

} // namespace keldrin
