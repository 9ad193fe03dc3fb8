#include "conditioning/window_widths.h"

#include <algorithm>
#include <cmath>

namespace keldrin {

namespace {

void setWidths(SoundingRecord &record) {
    const std::size_t n = windowCount(record);
    if (n == 0) {
        return;
    }
    if (n == 1) {
        record.TWwidth[0] = 0.0F;
        return;
    }
    const WindowReals &t = record.TWcenter;
    WindowReals lower{};
    WindowReals upper{};
    for (std::size_t i = 0; i + 1 < n; ++i) {
        upper[i] = std::sqrt(t[i] * t[i + 1]);
        lower[i + 1] = upper[i];
    }
    // The first and the last centre are the geometric centres of their windows.
    lower[0] = std::max(0.25F * t[0], t[0] * t[0] / upper[0]);
    upper[0] = t[0] * t[0] / lower[0];
    upper[n - 1] = t[n - 1] * t[n - 1] / lower[n - 1];
    for (std::size_t i = 0; i < n; ++i) {
        if (record.TWwidth[i] <= 0.0F) {
            const float width = upper[i] - lower[i];
            record.TWwidth[i] = std::isfinite(width) ? width : 0.0F; // times beyond all reason
        }
    }
}

} // namespace

void SetWindowWidths(SurveyModel &model) {
    for (SoundingRecord &record : model.soundings()) {
        setWidths(record);
    }
}

} // namespace keldrin
