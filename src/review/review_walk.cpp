#include "review/review_entry.h"

#include "review/review_panel.h"
#include "toolkit/control_ids.h"

#include <array>
#include <span>

namespace keldrin {

namespace {

void showPrevious(Review &review, const ToolkitEvent & /*event*/) {
    showStation(review, review.state.ReviewStation - 1);
}

void showNext(Review &review, const ToolkitEvent & /*event*/) {
    showStation(review, review.state.ReviewStation + 1);
}

constexpr int LongStep = 10; ///< soundings

template <int step>
void showFarther(Review &review, const ToolkitEvent & /*event*/) {
    showStation(review, review.state.ReviewStation + step);
}

void showFirst(Review &review, const ToolkitEvent & /*event*/) {
    showStation(review, 1);
}

void showLast(Review &review, const ToolkitEvent & /*event*/) {
    showStation(review, review.survey.SoundingCount);
}

void followTrackbar(Review &review, const ToolkitEvent & /*event*/) {
    PanelValues panel = panelOf(review);
    if (readField(ReviewDialog, ReviewControl::Station, panel)) {
        showStation(review,
                    panel.station); // with one sounding the trackbar still has a second place
    }
}

constexpr std::array WalkBindings = {
    ReviewBinding{EventKey, 'P', showPrevious},
    ReviewBinding{EventKey, 'p', showPrevious},
    ReviewBinding{EventKey, KeyUp, showPrevious},
    ReviewBinding{EventKey, KeyLeft, showPrevious},
    ReviewBinding{EventKey, 'N', showNext},
    ReviewBinding{EventKey, 'n', showNext},
    ReviewBinding{EventKey, KeyDown, showNext},
    ReviewBinding{EventKey, KeyRight, showNext},
    ReviewBinding{EventKey, KeyPageUp, showFarther<-LongStep>},
    ReviewBinding{EventKey, KeyPageDown, showFarther<LongStep>},
    ReviewBinding{EventKey, KeyHome, showFirst},
    ReviewBinding{EventKey, KeyEnd, showLast},
    ReviewBinding{EventButton, ReviewControl::Previous, showPrevious},
    ReviewBinding{EventButton, ReviewControl::Next, showNext},
    ReviewBinding{EventMouseDown, WheelUp, showPrevious},
    ReviewBinding{EventMouseDown, WheelDown, showNext},
    ReviewBinding{EventFieldChange, ReviewControl::Station, followTrackbar},
};

} // namespace

std::span<const ReviewBinding> walkBindings() {
    return WalkBindings;
}

} // namespace keldrin
