#include "review/review_entry.h"

#include "review/plot_zoom.h"

#include <array>
#include <span>

namespace keldrin {

namespace {

void changeDataAxis(Review &review, const ToolkitEvent & /*event*/) {
    review.limits.logData = !review.limits.logData;
    review.state.logData = review.limits.logData;
}

constexpr std::array ZoomBindings = {
    ReviewBinding{EventKey, 'L', changeDataAxis},
    ReviewBinding{EventKey, 'l', changeDataAxis},
};

// The first press of a double click was taken for a click: it leaves no trace.
void takeClickBack(Review &review) {
    const ClickedMarks &click = review.click;
    if (click.recorded) {
        const MarkStep step = review.history.steps.back();
        forgetLastMarks(review.history, review.survey);
        if (!cutMarkJournal(review.journal, click.journalLength)) {
            journalStep(review, step); // the last line of a window counts
        }
    }
    review.aimed = click.aimedBefore;
    review.hit = click.hitBefore;
}

} // namespace

bool zoomBack(Review &review, const ToolkitEvent &event) {
    if (!event.second || !isZoomedAt(review.limits, review.whole, event.x, event.y)) {
        return false;
    }
    if (review.click.isLast) {
        takeClickBack(review);
        review.click = {};
    }
    unzoomPlot(review.limits, review.whole, event.x, event.y);
    return true;
}

std::span<const ReviewBinding> zoomBindings() {
    return ZoomBindings;
}

} // namespace keldrin
