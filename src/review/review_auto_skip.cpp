#include "review/review_auto_skip.h"

#include "conditioning/unread_fields.h"
#include "messages/message_log.h"
#include "page/drawing.h"
#include "page/plot.h"
#include "review/review_entry.h"
#include "review/review_panel.h"
#include "sounding/page_layout.h"
#include "sounding/sounding_panels.h"
#include "sounding/sounding_plot.h"
#include "toolkit/control_ids.h"

#include <array>
#include <span>
#include <utility>

namespace keldrin {

namespace {

// What the filters would do with the answers as they stand.
void planAgain(Review &review) {
    LiveSkip &live = *review.autoSkip;
    AutoSkipSettings settings = live.answers.settings;
    orderWindows(settings);
    live.plan = planAutoSkip(review.survey, settings, live.answers.cutoff, live.answers.further);
}

void countAgain(Review &review) {
    LiveSkip &live = *review.autoSkip;
    live.answers.counted = {live.plan.counts, live.plan.further,
                            marksBesidePlan(review.survey, live.plan)};
}

void openAutoSkip(Review &review, const ToolkitEvent & /*event*/) {
    if (review.autoSkip) {
        return;
    }
    LiveSkip live;
    live.answers = {review.state.autoSkip, review.survey.control.DataCutoff,
                    largestWindowCount(review.survey), review.state.furtherSkip};
    orderWindows(live.answers.settings);
    limitFields(LiveAutoSkipDialog, live.answers);
    review.autoSkip = std::move(live);
    planAgain(review);
    countAgain(review);
    openDialog(LiveAutoSkipDialog, review.autoSkip->answers, DialogModeless);
}

void logTaken(const LiveSkip &live) {
    ReportInfoLine("");
    ReportInfoLine("Applying Auto Skip filters");
    logAutoSkipCounts(live.plan.counts);
    for (const FurtherSkipFilter &filter : FurtherSkipFilters) {
        if (live.answers.further.*filter.on) {
            ReportInfoLine("Windows taken by the " + std::string(filter.name) + ": " +
                           std::to_string(live.plan.further.*filter.taken));
        }
    }
}

void takeAnswers(Review &review) {
    const std::vector<UnreadField> unread =
        readFields(LiveAutoSkipDialog, review.autoSkip->answers);
    planAgain(review);
    const LiveSkip live = *review.autoSkip;
    closeAutoSkip(review);
    reportUnreadFields(unread);
    review.state.autoSkip = live.answers.settings;
    orderWindows(review.state.autoSkip);
    review.state.furtherSkip = live.answers.further;
    logTaken(live);
    actOnMarks(review, [&] {
        review.survey.control.DataCutoff = live.answers.cutoff;
        applySkipPlan(review.survey, live.plan, live.answers.further.keepMarks);
    });
}

void serveControl(Review &review, const ToolkitEvent &event) {
    if (event.type == EventFieldChange) {
        if (readField(LiveAutoSkipDialog, event.value, review.autoSkip->answers)) {
            planAgain(review);
        }
    } else if (event.type == EventButton && event.value == ButtonContinue) {
        takeAnswers(review);
    } else if (event.type == EventButton && event.value == ButtonCancel) {
        closeAutoSkip(review);
    }
}

// Around every mark of a window that would be taken.
void ringWindows(const Review &review, const ChosenWindows &taken) {
    constexpr PageColour ringColour = 0xE07000;
    constexpr float ringLine = 1.0F; // points
    constexpr float ringSize = 2.2F; // markers
    const SoundingRecord &sounding = review.survey.sounding(review.state.ReviewStation);
    IGrColour(ringColour);
    ToolkitLineWidth(ringLine);
    PlotMarkerSize(MarkerSize.width * ringSize, MarkerSize.height * ringSize);
    for (const MarkedPanel &marks : markedPanels(review.survey.control, sounding, review.limits)) {
        layPanel(marks.panel);
        for (std::size_t i = 0; i < marks.values.size(); ++i) {
            if (taken[i] && isPresent(marks.values[i])) {
                const float place = marks.panel.placeOf(marks.values[i]);
                PlotMarkers(&sounding.TWcenter[i], &place, 1, RingMarker);
            }
        }
    }
    PlotMarkerSize(MarkerSize.width, MarkerSize.height);
    ToolkitLineWidth(0.0F);
    IGrColour("BLACK");
    layPanel(dataPanel(review.limits)); // mouse positions are read against it
}

constexpr std::array AutoSkipBindings = {
    ReviewBinding{EventKey, 'A', openAutoSkip},
    ReviewBinding{EventKey, 'a', openAutoSkip},
    ReviewBinding{EventButton, ReviewControl::AutoSkip, openAutoSkip},
};

} // namespace

bool serveAutoSkip(Review &review, const ToolkitEvent &event) {
    if (!review.autoSkip) {
        return false;
    }
    if (event.window == LiveAutoSkipDialog.number) {
        WDialogSelect(LiveAutoSkipDialog.number);
        serveControl(review, event);
        return true;
    }
    const int key = event.type == EventKey ? event.value : 0;
    if (key == KeyEscape) {
        closeAutoSkip(review);
    } else if (key == KeyEnter) { // wherever the focus is
        WDialogSelect(LiveAutoSkipDialog.number);
        takeAnswers(review);
    }
    return key == KeyEscape || key == KeyEnter;
}

void showAutoSkip(Review &review) {
    if (!review.autoSkip) {
        return;
    }
    countAgain(review);
    WDialogSelect(LiveAutoSkipDialog.number);
    for (const int id : {AutoSkipControl::Total, AutoSkipControl::Taken,
                         AutoSkipControl::TakenFurther, AutoSkipControl::OtherMarks}) {
        putField(LiveAutoSkipDialog, id, review.autoSkip->answers);
    }
    const int station = review.state.ReviewStation;
    if (hasSoundingPlot(review.survey, station)) {
        ringWindows(review, review.autoSkip->plan.taken[asIndex(station - 1)]);
    }
}

void closeAutoSkip(Review &review) {
    if (review.autoSkip) {
        review.autoSkip.reset();
        closeDialog(LiveAutoSkipDialog);
    }
}

std::span<const ReviewBinding> autoSkipBindings() {
    return AutoSkipBindings;
}

} // namespace keldrin
