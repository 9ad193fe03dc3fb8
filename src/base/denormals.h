#pragma once

namespace keldrin {

/// Makes denormal inputs and results of this thread count as zero (x86 and ARM; elsewhere nothing).
/// Called at the start of every thread that computes.
void flushDenormals();

} // namespace keldrin
