#include "toolkit/scripted/headless_backend.h"

#include "toolkit/dialog_model.h"

#include <algorithm>

namespace keldrin {

void HeadlessBackend::openRoot(const RootSpec &spec) {
    root_.width = spec.width;
    root_.height = spec.height;
    root_.x = spec.x >= 0 ? spec.x : std::max(0, (screen_.width - spec.width) / 2);
    root_.y = spec.y >= 0 ? spec.y : std::max(0, (screen_.height - spec.height) / 2);
    page_.begin(PageWidthCm, PageHeightCm);
}

void HeadlessBackend::loadDialog(DialogModel &dialog) {
    constexpr int width = 360;
    constexpr int rowHeight = 24;
    dialog.size = {width, rowHeight * (static_cast<int>(dialog.controls.size()) + 1)};
}

} // namespace keldrin
