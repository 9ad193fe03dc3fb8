#include "review/review_entry.h"

#include "base/real.h"
#include "conditioning/unread_fields.h"
#include "page/drawing.h"
#include "review/copy_marks_dialog.h"
#include "review/mark_travel.h"
#include "review/plot_zoom.h"
#include "review/review_skip.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace keldrin {

namespace {

// The sounding that was changed comes on show.
void showChanged(Review &review, const MarkStep *step) {
    if (step != nullptr) {
        review.hit = true;
        journalStep(review, *step);
        showStation(review, step->station);
    }
}

void undo(Review &review, const ToolkitEvent & /*event*/) {
    showChanged(review, undoMarks(review.history, review.survey));
}

void redo(Review &review, const ToolkitEvent & /*event*/) {
    showChanged(review, redoMarks(review.history, review.survey));
}

bool isClick(const PageBox &box) {
    constexpr float leastBox = 0.1F; // cm^2
    return std::fabs(box.xHigh - box.xLow) * std::fabs(box.yHigh - box.yLow) < leastBox;
}

void changeMarks(Review &review, int flag, const PageBox &box) {
    constexpr float clickRadius = 0.5F;
    const int station = review.state.ReviewStation;
    if (!isClick(box)) {
        Review_SkipBox(review.survey, review.limits, station, flag, box);
    } else {
        Review_SkipPoint(review.survey, review.limits, station, flag, box.xLow, box.yLow,
                         clickRadius);
    }
}

// What the mouse aims at, and what becomes of it.
enum class Reach { Windows, AndLater, InAllSoundings };

void changeFarther(Review &review, int flag, Reach reach, const PageBox &box) {
    const int station = review.state.ReviewStation;
    SoundingRecord &sounding = review.survey.sounding(station);
    const std::vector<std::size_t> windows =
        windowsAimedAt(sounding, [&] { changeMarks(review, SetMark, box); });
    if (reach == Reach::InAllSoundings) {
        markInAll(review.survey, station, windows, flag);
    } else if (!windows.empty()) {
        markFrom(sounding, windows.front(), flag);
    }
}

// Follows the mouse; what else ends the band leaves everything as it is.
bool followMouse(Review &review, const ToolkitEvent &event, PageBox &box) {
    review.redraws = Review_Rubberband(event, box) == 0;
    return review.redraws;
}

template <int flag, Reach reach>
void markInBox(Review &review, const PageBox &box) {
    actOnMarks(review, [&] {
        if (reach == Reach::Windows) {
            changeMarks(review, flag, box);
        } else {
            changeFarther(review, flag, reach, box);
        }
    });
}

template <int flag, Reach reach = Reach::Windows>
void markByMouse(Review &review, const ToolkitEvent &event) {
    PageBox box;
    if (followMouse(review, event, box)) {
        markInBox<flag, reach>(review, box);
    }
}

// A click may be the first of two, see zoomBack().
void pressLeft(Review &review, const ToolkitEvent &event) {
    PageBox box;
    if (zoomBack(review, event) || !followMouse(review, event, box)) {
        return;
    }
    const std::size_t steps = review.history.applied;
    const ClickedMarks before = {isClick(box), false, review.aimed, review.hit,
                                 markJournalLength(review.journal)};
    markInBox<SetMark, Reach::Windows>(review, box);
    review.click = before;
    review.click.recorded = review.history.applied > steps;
}

void zoomByMouse(Review &review, const ToolkitEvent &event) {
    PageBox box;
    if (!followMouse(review, event, box)) {
        return;
    }
    if (isClick(box)) {
        markInBox<SetMark, Reach::InAllSoundings>(review, box);
    } else {
        zoomPlot(review.limits, box);
    }
}

void reportMissing(const Review &review, const std::vector<OrdinalRange> &list) {
    const int count = review.survey.SoundingCount;
    if (std::any_of(list.begin(), list.end(),
                    [count](const OrdinalRange &range) { return range.last > count; })) {
        ToolkitStatus(StatusPart::Notice, "The line has " + std::to_string(count) +
                                              " soundings; the others of the list do not exist.");
    }
}

void copyMarksElsewhere(Review &review, const ToolkitEvent & /*event*/) {
    const int station = review.state.ReviewStation;
    ToolkitStatus(StatusPart::Notice, "");
    CopyMarksAnswers answers{"sounding " + std::to_string(station), ""};
    const DialogAnswer answer = askDialog(CopyMarksDialog, answers);
    const auto list = readOrdinalList(answers.to);
    if (!answer.confirmed()) {
        return;
    }
    reportUnreadFields(answer.unread);
    if (list) {
        actOnMarks(review, [&] { copyMarks(review.survey, station, *list); });
        reportMissing(review, *list);
    }
}

constexpr int withKey(int button, int key) {
    return button | key;
}

constexpr std::array MarkBindings = {
    ReviewBinding{EventKey, 'C', copyMarksElsewhere},
    ReviewBinding{EventKey, 'c', copyMarksElsewhere},
    ReviewBinding{EventKey, KeyWithCtrl | 'Z', undo},
    ReviewBinding{EventKey, KeyWithCtrl | 'Y', redo},
    ReviewBinding{EventKey, KeyWithCtrl | KeyWithShift | 'Z', redo},
    ReviewBinding{EventMouseDown, MouseLeft, pressLeft},
    ReviewBinding{EventMouseDown, MouseRight, markByMouse<ClearMark>},
    ReviewBinding{EventMouseDown, withKey(MouseLeft, KeyWithShift),
                  markByMouse<SetMark, Reach::AndLater>},
    ReviewBinding{EventMouseDown, withKey(MouseRight, KeyWithShift),
                  markByMouse<ClearMark, Reach::AndLater>},
    ReviewBinding{EventMouseDown, withKey(MouseLeft, KeyWithCtrl), zoomByMouse},
    ReviewBinding{EventMouseDown, withKey(MouseRight, KeyWithCtrl),
                  markByMouse<ClearMark, Reach::InAllSoundings>},
};

} // namespace

void journalStep(Review &review, const MarkStep &step) {
    std::vector<LineWindow> windows;
    windows.reserve(step.changes.size());
    for (const MarkChange &change : step.changes) {
        windows.push_back({change.station, change.window});
    }
    const bool cutoff = step.cutoff.before != step.cutoff.after;
    appendMarks(review.journal, review.survey, windows,
                cutoff ? std::optional(review.survey.control.DataCutoff) : std::nullopt);
}

void actOnMarks(Review &review, const std::function<void()> &change) {
    MarkStep step = changesOf(review.survey, review.state.ReviewStation, change);
    if (recordMarks(review.history, std::move(step))) {
        review.hit = true;
        journalStep(review, review.history.steps.back());
    }
    review.aimed = true; // on purpose also when no point was hit
}

int Review_Rubberband(const ToolkitEvent &event, PageBox &box) {
    IGrColour("RED");
    ToolkitLineStyle(SolidLine);
    float x = event.x;
    float y = event.y;
    int end = EventNone;
    WGrInput(RubberRectangle, x, y, end);
    IGrColour("BLACK");
    const auto held = [](float place, int lowItem, int highItem) {
        return limited(place, ToolkitAreaInfo(lowItem), ToolkitAreaInfo(highItem));
    };
    box.xLow = held(std::min(event.x, x), AreaLeft, AreaRight);
    box.xHigh = held(std::max(event.x, x), AreaLeft, AreaRight);
    box.yLow = held(std::min(event.y, y), AreaBottom, AreaTop);
    box.yHigh = held(std::max(event.y, y), AreaBottom, AreaTop);
    return end == EventMouseUp ? 0 : 1;
}

std::span<const ReviewBinding> markBindings() {
    return MarkBindings;
}

} // namespace keldrin
