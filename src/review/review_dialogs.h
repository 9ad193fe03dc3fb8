#pragma once

namespace keldrin {

/// Shows the selected dialog at the lower right corner of the root window, beside the data plot.
/// Returns at once for a modeless dialog.
/// mode  a DialogMode
void showAtLowerRight(int mode);

} // namespace keldrin
