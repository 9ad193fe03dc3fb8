#include "review/review_loop.h"

#include "base/ascii.h"
#include "base/number_text.h"
#include "base/real.h"
#include "conditioning/unread_fields.h"
#include "messages/message_log.h"
#include "page/drawing.h"
#include "projectfile/mark_journal.h"
#include "projectfile/table_file.h"
#include "review/copy_marks_dialog.h"
#include "review/hardcopy.h"
#include "review/mark_travel.h"
#include "review/page_layout.h"
#include "review/plot_document.h"
#include "review/plot_limits.h"
#include "review/review_history.h"
#include "review/review_limits.h"
#include "review/review_panel.h"
#include "review/review_pointer.h"
#include "review/review_save.h"
#include "review/sounding_plot.h"
#include "toolkit/control_ids.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace keldrin {

namespace {

constexpr int WindowClosed = 3; ///< a status of this or more leaves the program

/// One entry of the review.
struct Review {
    SurveyModel &survey;
    ReviewState &state;
    std::string &path;
    const ReloadProject &reload;
    const LinePages &pages;
    PlotLimits limits = {};
    std::string date = {}; ///< of the entry
    std::string time = {};
    MarkHistory history = {};
    MarkJournal journal = {};
    bool aimed = false; ///< at a mark, hit or not
    bool hit = false;   ///< a mark has changed
    bool stays = true;
    bool panelOpen = false;
    bool redraws = true; ///< the page is drawn anew after this event
    int status = 0;
};

// ---- Actions of keys, buttons and the mouse

void showStation(Review &review, int station) {
    review.state.ReviewStation = limited(station, 1, review.survey.SoundingCount);
}

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

PanelValues panelOf(const Review &review) {
    return {review.state.ReviewStation, review.survey.SoundingCount};
}

void followTrackbar(Review &review, const ToolkitEvent & /*event*/) {
    PanelValues panel = panelOf(review);
    if (readField(ReviewDialog, ReviewControl::Station, panel)) {
        showStation(review,
                    panel.station); // with one sounding the trackbar still has a second place
    }
}

void leave(Review &review, const ToolkitEvent & /*event*/) {
    review.stays = false;
}

void forgetChanges(Review &review) {
    review.aimed = false;
    review.hit = false;
}

// The marks are gone, but for Redo at the next entry.
void cancelChanges(Review &review, const ToolkitEvent &event) {
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
    review.status = status >= WindowClosed ? status : 0; // a failure has left no soundings
    leave(review, event);
}

void closeWindow(Review &review, const ToolkitEvent &event) {
    review.status = WindowClosed;
    forgetChanges(review);
    leave(review, event);
}

template <PlotDevice device>
void plotOn(Review &review, const ToolkitEvent & /*event*/) {
    QCC_Plot_Hardcopy(review.survey, review.limits, device, review.state.ReviewStation, review.path,
                      review.date, review.time);
}

void plotAll(Review &review, const ToolkitEvent & /*event*/) {
    Plot_AllSoundings(review.survey, review.limits, review.path, review.date, review.time);
}

void editLimits(Review &review, const ToolkitEvent & /*event*/) {
    Review_EditLimits(review.survey, review.limits);
    review.state.style = review.limits.style;
}

// The marks of a step as they now are, on the disk.
void journalStep(Review &review, const MarkStep &step) {
    for (auto change = step.changes.begin(); change != step.changes.end();) {
        const int station = change->station;
        std::vector<std::size_t> windows;
        for (; change != step.changes.end() && change->station == station; ++change) {
            windows.push_back(change->window);
        }
        appendMarks(review.journal, review.survey.sounding(station), windows);
    }
}

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

// One step of undo for whatever an action does to marks.
void act(Review &review, const std::function<void()> &change) {
    MarkStep step = changesOf(review.survey, review.state.ReviewStation, change);
    if (recordMarks(review.history, std::move(step))) {
        review.hit = true;
        journalStep(review, review.history.steps.back());
    }
    review.aimed = true; // on purpose also when no point was hit
}

void changeMarks(Review &review, int flag, const PageBox &box) {
    constexpr float leastBox = 0.1F; // cm^2; a smaller one is a click
    constexpr float clickRadius = 0.5F;
    const float area = std::fabs(box.xHigh - box.xLow) * std::fabs(box.yHigh - box.yLow);
    const int station = review.state.ReviewStation;
    if (area >= leastBox) {
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

template <int flag, Reach reach = Reach::Windows>
void markByMouse(Review &review, const ToolkitEvent &event) {
    PageBox box;
    if (Review_Rubberband(event, box) != 0) {
        review.redraws = false;
        return;
    }
    act(review, [&] {
        if (reach == Reach::Windows) {
            changeMarks(review, flag, box);
        } else {
            changeFarther(review, flag, reach, box);
        }
    });
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
        act(review, [&] { copyMarks(review.survey, station, *list); });
    }
}

struct Binding {
    int type;
    int value;
    void (*act)(Review &, const ToolkitEvent &);
};

constexpr int withKey(int button, int key) {
    return button | key;
}

constexpr std::array Bindings = {
    Binding{EventKey, 'P', showPrevious},
    Binding{EventKey, 'p', showPrevious},
    Binding{EventKey, KeyUp, showPrevious},
    Binding{EventKey, KeyLeft, showPrevious},
    Binding{EventKey, 'N', showNext},
    Binding{EventKey, 'n', showNext},
    Binding{EventKey, KeyDown, showNext},
    Binding{EventKey, KeyRight, showNext},
    Binding{EventKey, KeyPageUp, showFarther<-LongStep>},
    Binding{EventKey, KeyPageDown, showFarther<LongStep>},
    Binding{EventKey, KeyHome, showFirst},
    Binding{EventKey, KeyEnd, showLast},
    Binding{EventKey, 'C', copyMarksElsewhere},
    Binding{EventKey, 'c', copyMarksElsewhere},
    Binding{EventKey, 'X', leave},
    Binding{EventKey, 'x', leave},
    Binding{EventKey, KeyEscape, cancelChanges},
    Binding{EventKey, KeyWithCtrl | 'Z', undo},
    Binding{EventKey, KeyWithCtrl | 'Y', redo},
    Binding{EventKey, KeyWithCtrl | KeyWithShift | 'Z', redo},
    Binding{EventKey, KeyWithCtrl | 'P', plotOn<PlotToPrinter>},
    Binding{EventButton, ReviewControl::Previous, showPrevious},
    Binding{EventButton, ReviewControl::Next, showNext},
    Binding{EventButton, ReviewControl::PrinterPlot, plotOn<PlotToPrinter>},
    Binding{EventButton, ReviewControl::ToMetafile, plotOn<PlotToMetafile>},
    Binding{EventButton, ReviewControl::ToHpgl, plotOn<PlotToHpgl>},
    Binding{EventButton, ReviewControl::ToPng, plotOn<PlotToPng>},
    Binding{EventButton, ReviewControl::ToPdf, plotOn<PlotToPdf>},
    Binding{EventButton, ReviewControl::ToSvg, plotOn<PlotToSvg>},
    Binding{EventButton, ReviewControl::AllToPdf, plotAll},
    Binding{EventButton, ReviewControl::EditLimits, editLimits},
    Binding{EventButton, ReviewControl::Exit, leave},
    Binding{EventButton, ButtonCancel, cancelChanges},
    Binding{EventMouseDown, MouseLeft, markByMouse<SetMark>},
    Binding{EventMouseDown, MouseRight, markByMouse<ClearMark>},
    Binding{EventMouseDown, withKey(MouseLeft, KeyWithShift),
            markByMouse<SetMark, Reach::AndLater>},
    Binding{EventMouseDown, withKey(MouseRight, KeyWithShift),
            markByMouse<ClearMark, Reach::AndLater>},
    Binding{EventMouseDown, withKey(MouseLeft, KeyWithCtrl),
            markByMouse<SetMark, Reach::InAllSoundings>},
    Binding{EventMouseDown, withKey(MouseRight, KeyWithCtrl),
            markByMouse<ClearMark, Reach::InAllSoundings>},
    Binding{EventMouseDown, WheelUp, showPrevious},
    Binding{EventMouseDown, WheelDown, showNext},
    Binding{EventFieldChange, ReviewControl::Station, followTrackbar},
};

// ---- The loop

void blankPage() {
    beginReviewPage(); // with its centimetres also where no sounding can be drawn
    ToolkitPageKind("blank");
}

void drawStation(const Review &review) {
    Plot_Sounding(review.survey, review.limits, review.state.ReviewStation, review.path,
                  review.date, review.time);
}

void openPanel(Review &review) {
    review.panelOpen = true;
    openDialog(ReviewDialog, panelOf(review), DialogModeless);
    ToolkitPointerText([&review](float x, float y) {
        return reviewPointerText(review.survey, review.limits, review.state.ReviewStation, x, y);
    });
}

void closePanel(Review &review) {
    if (!review.panelOpen) {
        return;
    }
    review.panelOpen = false;
    ToolkitPointerText({});
    closeDialog(ReviewDialog);
    blankPage();
}

// The page of the line that a key shows; 0 for other events.
char pageKeyOf(const Review &review, const ToolkitEvent &event) {
    constexpr int characters = 128;
    const bool letter = event.type == EventKey && event.value < characters;
    const char key = letter ? upperOf(static_cast<char>(event.value)) : '\0';
    return letter && review.pages.keys.find(key) != std::string_view::npos ? key : '\0';
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
    if (const char key = pageKeyOf(review, event)) {
        showLinePages(review, key);
        return;
    }
    if (event.type == EventMouseDown && event.window != 0) {
        return;
    }
    const auto *binding = std::find_if(Bindings.begin(), Bindings.end(), [&](const Binding &b) {
        return b.type == event.type && b.value == event.value;
    });
    if (binding != Bindings.end()) {
        binding->act(review, event);
    }
}

// What the user would lose with Cancel Changes.
void showUnsavedMarks(const MarkHistory &history) {
    const std::size_t count = changedMarks(history);
    const std::string windows = std::to_string(count) + (count == 1 ? " window" : " windows");
    ToolkitStatus(StatusPart::Marks, count > 0 ? windows + " changed, not saved" : "");
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
        WDialogSelect(ReviewDialog.number); // another dialog may have been selected since
        putField(ReviewDialog, ReviewControl::Station, panelOf(review));
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

int Review_Rubberband(const ToolkitEvent &event, PageBox &box) {
    IGrColour("RED");
    ToolkitLineStyle(0);
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
    Plot_AutoLimits(survey, review.limits, review.date, review.time);
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
