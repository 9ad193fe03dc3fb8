#include "review/review_loop.h"

#include "base/number_text.h"
#include "base/real.h"
#include "messages/message_log.h"
#include "page/drawing.h"
#include "projectfile/table_file.h"
#include "review/review_auto_skip.h"
#include "review/review_entry.h"
#include "review/review_panel.h"
#include "review/review_pointer.h"
#include "review/review_save.h"
#include "review/review_values.h"
#include "sounding/page_layout.h"
#include "sounding/plot_document.h"
#include "sounding/sounding_plot.h"
#include "toolkit/control_ids.h"

#include <algorithm>
#include <array>
#include <functional>
#include <span>
#include <string>
#include <utility>

namespace keldrin {

namespace {

void leave(Review &review, const ToolkitEvent & /*event*/) {
    review.stays = false;
}

void forgetChanges(Review &review) {
    review.aimed = false;
    review.hit = false;
}

// The marks are gone, except for Redo at the next entry.
void cancelChanges(Review &review, const ToolkitEvent &event) {
    if (review.autoSkip) { // its Cancel is meant, by the same letter
        closeAutoSkip(review);
        return;
    }
    forgetChanges(review);
    countAllAsUndone(review.history);
    dropMarkJournal(review.journal);
    const std::string project = review.path;
    const int told = messageLog().record.errors;
    const int status = review.reload(review.survey, review.path);
    if (review.path != project) { // it was gone, and another one was chosen
        review.history = {};
    }
    if (review.survey.SoundingCount < 1) {
        const bool toldWhy = messageLog().record.errors > told;
        ReportNotice(toldWhy ? NoticeLevel::Status : NoticeLevel::Box,
                     {"ERROR: The project could not be loaded again.", project,
                      "No soundings are loaded; Open tries once more."});
    }
    review.status = status >= StatusWindowClosed ? status : 0; // a failure has left no soundings
    leave(review, event);
}

void closeWindow(Review &review, const ToolkitEvent &event) {
    review.status = StatusWindowClosed;
    forgetChanges(review);
    leave(review, event);
}

constexpr std::array SessionBindings = {
    ReviewBinding{EventKey, 'X', leave},
    ReviewBinding{EventKey, 'x', leave},
    ReviewBinding{EventKey, KeyEscape, cancelChanges},
    ReviewBinding{EventButton, ReviewControl::Exit, leave},
    ReviewBinding{EventButton, ButtonCancel, cancelChanges},
};

// ---- The loop

void blankPage() {
    beginReviewPage(); // with its centimetres also where no sounding can be drawn
    ToolkitPageKind("blank");
}

void drawStation(Review &review) {
    Plot_Sounding(review.survey, review.limits, review.state.ReviewStation, review.path,
                  review.date, review.time);
    showAutoSkip(review);
}

void openPanel(Review &review) {
    review.panelOpen = true;
    ToolkitContextMenu({}); // the right button clears marks
    openDialog(ReviewDialog, panelOf(review), DialogModeless);
    openValues(review);
    ToolkitPointerText([&review](float x, float y) {
        pointAtValues(review, x, y);
        return reviewPointerText(review.survey, review.limits, review.state.ReviewStation, x, y);
    });
}

void closePanel(Review &review) {
    if (!review.panelOpen) {
        return;
    }
    review.panelOpen = false;
    closeAutoSkip(review);
    ToolkitPointerText({});
    closeValues(review);
    closeDialog(ReviewDialog);
    blankPage();
}

// The page of the line that a key shows; 0 for other events.
char pageKeyOf(const Review &review, const ToolkitEvent &event) {
    const std::string_view keys = review.pages.keys;
    const int key = event.type == EventKey ? capitalKey(event.value) : 0;
    const auto found = std::find(keys.begin(), keys.end(), key);
    return found != keys.end() ? *found : '\0';
}

void showLinePages(Review &review, char key) {
    closePanel(review);
    const AfterPages after = review.pages.show(key, review.state.ReviewStation);
    if (after == AfterPages::Closes) {
        closeWindow(review, {});
    } else if (after == AfterPages::Leaves) {
        leave(review, {});
    } else {
        openPanel(review);
    }
}

void serveEvent(Review &review, const ToolkitEvent &event) {
    if (event.type == EventClose) {
        closeWindow(review, event);
        return;
    }
    if (servesTypedPlace(review, event) || serveAutoSkip(review, event) ||
        serveValues(review, event)) {
        return;
    }
    const bool second = event.type == EventMouseDown && event.second;
    review.click.isLast = review.click.isLast && (second || event.type == EventMouseUp);
    if (const char key = pageKeyOf(review, event)) {
        showLinePages(review, key);
        return;
    }
    if (event.type == EventMouseDown && event.window != 0) {
        return;
    }
    for (const auto &bindings : {std::span<const ReviewBinding>(SessionBindings), walkBindings(),
                                 placeBindings(), markBindings(), plotBindings(), zoomBindings(),
                                 valuesBindings(), autoSkipBindings(), neighbourBindings()}) {
        const auto binding =
            std::find_if(bindings.begin(), bindings.end(), [&](const ReviewBinding &b) {
                return b.type == event.type && b.value == event.value;
            });
        if (binding != bindings.end()) {
            binding->act(review, event);
            return;
        }
    }
}

// What the user would lose with Cancel Changes.
void showUnsavedMarks(const MarkHistory &history) {
    const std::size_t count = changedMarks(history);
    const std::string windows = std::to_string(count) + (count == 1 ? " window" : " windows");
    const std::string cutoff =
        cutoffHasChanged(history) ? "Error threshold changed, not saved" : "";
    ToolkitStatus(StatusPart::Marks, count > 0 ? windows + " changed, not saved" : cutoff);
}

// Marks that were undone or cancelled at an earlier entry.
void offerUndoneMarks(Review &review) {
    review.history = std::move(review.state.undone);
    rebaseUndoneMarks(review.history, review.survey);
    if (const std::size_t steps = review.history.steps.size(); steps > 0) {
        ToolkitStatus(StatusPart::Notice, "Ctrl+Y brings back " + std::to_string(steps) +
                                              (steps == 1 ? " change" : " changes") +
                                              " of skip marks that were not saved.");
    }
}

// A miss alone must not cost the soundings of another transmitter.
void saveMarks(Review &review) {
    review.journal.file.close();
    if (review.hit || (review.aimed && writesEverySounding(review.survey))) {
        writeMarkedProject(review.survey, review.path);
    }
}

// On a Fixed-Loop line soundings of several transmitters may follow one another.
std::string transmitterText(const ControlValues &control, const SoundingRecord &sounding) {
    if (control.SurveyTypeIndex != FixedLoop) {
        return "";
    }
    const std::string transmitter = "Transmitter " + messageNumber(sounding.TxStn);
    return isLeftOut(control, sounding)
               ? transmitter + ", not part of the project, whose transmitter is " +
                     messageNumber(control.TxStn)
               : transmitter;
}

void showTransmitter(const Review &review) {
    ToolkitStatus(
        StatusPart::Sounding,
        transmitterText(review.survey.control, review.survey.sounding(review.state.ReviewStation)));
}

void serveReview(Review &review) {
    while (review.stays) {
        showUnsavedMarks(review.history);
        showTransmitter(review);
        showValues(review);
        WDialogSelect(ReviewDialog.number); // another dialog may have been selected since
        putField(ReviewDialog, ReviewControl::Station, panelOf(review));
        putField(ReviewDialog, ReviewControl::Place, panelOf(review));
        ToolkitEvent event;
        ToolkitNextEvent(event);
        review.redraws = true;
        serveEvent(review, event);
        if (review.stays && review.redraws) {
            drawStation(review);
        }
    }
}

} // namespace

void settleReview(ReviewState &state, int soundings) {
    const bool sameLine = state.ReviewCount == soundings;
    state.ReviewStation = sameLine ? limited(state.ReviewStation, 1, soundings) : 1;
    if (!sameLine) {
        state.undone = {};
    }
    state.ReviewCount = soundings;
}

int Review_Loop(SurveyModel &survey, ReviewState &state, std::string &path,
                const ReloadProject &reload, const LinePages &pages) {
    blankPage();
    if (survey.SoundingCount < 1) {
        return 1;
    }
    settleReview(state, survey.SoundingCount);
    Review review{survey, state, path, reload, pages};
    review.journal.path = markJournalPath(path);
    offerUndoneMarks(review);
    review.limits.style = state.style;
    review.limits.neighbours = state.neighbours;
    review.limits.logData = state.logData;
    Plot_AutoLimits(survey, review.limits, review.date, review.time);
    review.whole = review.limits;
    drawStation(review);
    openPanel(review);
    serveReview(review);
    closePanel(review);
    saveMarks(review);
    keepUndoneMarks(review.history);
    state.undone = std::move(review.history);
    ToolkitStatus(StatusPart::Marks, "");
    ToolkitStatus(StatusPart::Sounding, "");
    return review.status;
}

} // namespace keldrin
