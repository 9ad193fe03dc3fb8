#pragma once

#include "physics/dipole_kernels.h"
#include "physics/dipole_plan.h"

namespace keldrin {

/// The sums over a loop's dipoles as compiled for one kind of processor; all give the same bits.
struct DipoleSums {
    const char *name;
    /// Weighted sums of the radial kernel along x and y.
    HorizontalResponse (*radial)(const DipolePlan &plan, float theta);
    /// Weighted sum of the vertical kernel.
    Response (*vertical)(const DipolePlan &plan, float theta);
};

extern const DipoleSums PlainDipoleSums;

/// The fastest of them that this processor runs. KELDRIN_KERNEL=plain in the environment asks for
/// the first one.
const DipoleSums &fastestDipoleSums();

/// All that this processor runs; the plain one is the first. Ends with a null. For tests, which
/// compare them.
const DipoleSums *const *availableDipoleSums();

} // namespace keldrin
