#pragma once

#include "engine/smoothness.h"
#include "engine/sounding_data.h"
#include "model/survey_model.h"

#include <optional>
#include <span>
#include <vector>

namespace keldrin {

/// Between which depths the data of a sounding may see.
struct DepthRange {
    double first = 0.0; ///< m, diffusion depth at the start of the first usable window
    double last = 0.0;  ///< m, at the end of the last one with an error below 30 percent
};

/// Depths of a sounding over a half-space, by the diffusion depth sqrt(2 t rho / mu0) (Ward and
/// Hohmann 1988). Late windows that are mostly noise are left out: they would draw the grid, and
/// the depth axis of every plot, far below what was seen.
/// noise    estimate for each datum, which counts where it is larger than the stated error
/// returns  none without data
std::optional<DepthRange> depthRange(const SoundingRecord &record, const SoundingData &data,
                                     const Eigen::VectorXd &noise, double resistivity);

/// One grid for a line, in m: from a quarter of the lower quartile of the first depths down to the
/// upper quartile of the last ones. Each layer is thicker than the one above by one factor. The
/// number of layers is the largest of `atLeast`, 12, and 12 a decade of depth, at most 48.
/// Without any range the grid runs from 5 m to 500 m.
std::vector<double> layerGrid(std::span<const DepthRange> ranges, int atLeast);

/// Background of the control block: Res0Layer and Res0Error over the layers of Thk0Layer, averaged
/// in logarithm over each layer of the grid. The last layer of either reaches down without end.
/// returns  false when the control block holds none; `prior` is then left as it was
bool backgroundOfControl(const ControlValues &control, LayerPrior &prior);

/// A background of one resistivity (ohm-m) with an error of 500 percent, and dzW of 1.
void setHalfSpace(double resistivity, LayerPrior &prior);

/// A prior of a sounding's block in the model file, which has two layers or more: its layers,
/// Res0, Rerr0 and dzW.
LayerPrior priorOfRecord(const ControlValues &control, const SoundingRecord &record);

/// Metres in a length unit of the project.
double metresPerUnit(const ControlValues &control);

} // namespace keldrin
