#pragma once

#include "engine/layer_kernel.h"
#include "engine/response.h"

#include <span>

namespace keldrin {

/// layeredResponse() of a chosen kernel.
void layeredResponse(const LayerKernel &kernel, const ResponsePlan &plan,
                     std::span<const double> lnResistivity, std::span<const double> thickness,
                     ResponseWorkspace &workspace, std::span<double> data,
                     std::span<double> jacobian);

} // namespace keldrin
