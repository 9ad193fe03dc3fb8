#include "review/review_dialogs.h"

#include "toolkit/toolkit.h"

#include <algorithm>

namespace keldrin {

void showAtLowerRight(int mode) {
    const int x = ToolkitWindowInfo(5) + ToolkitWindowInfo(1) - ToolkitDialogInfo(8);
    const int y = ToolkitWindowInfo(6) + ToolkitWindowInfo(2) - ToolkitDialogInfo(9);
    WDialogShow(std::max(x, 0) + 1, std::max(y, 0) + 1, 0, mode);
}

} // namespace keldrin
