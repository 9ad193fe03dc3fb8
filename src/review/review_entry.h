#pragma once

#include "base/real.h"
#include "projectfile/mark_journal.h"
#include "review/review_auto_skip.h"
#include "review/review_history.h"
#include "review/review_loop.h"
#include "review/review_panel.h"
#include "sounding/plot_limits.h"
#include "toolkit/toolkit.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>

namespace keldrin {

/// What a click has done to marks, for a second press that makes it a double click.
struct ClickedMarks {
    bool isLast = false;   ///< nothing was done since
    bool recorded = false; ///< it is the last step of the history
    bool aimedBefore = false;
    bool hitBefore = false;
    std::optional<std::uintmax_t> journalLength = {}; ///< before it
};

/// One entry of the review.
struct Review {
    SurveyModel &survey;
    ReviewState &state;
    std::string &path;
    const ReloadProject &reload;
    const LinePages &pages;
    PlotLimits limits = {}; ///< on show
    PlotLimits whole = {};  ///< the same before all zooms
    std::string date = {};  ///< of the entry
    std::string time = {};
    MarkHistory history = {};
    MarkJournal journal = {};
    std::optional<LiveSkip> autoSkip = {}; ///< its dialog is open
    ClickedMarks click = {};
    bool aimed = false; ///< at a mark, hit or not
    bool hit = false;   ///< a mark has changed
    bool stays = true;
    bool panelOpen = false;
    bool valuesWanted = false; ///< the table of values is on show with the panel
    bool valuesOpen = false;
    int valuesStation = 0;       ///< ordinal of the sounding in the table
    bool redraws = true;         ///< the page is drawn anew after this event
    std::string typedPlace = {}; ///< a number that is being typed on the page, see review_place.h
    int status = 0;
};

/// What the review does on an event. Each group of actions gives a table of its own.
struct ReviewBinding {
    int type;  ///< of the event
    int value; ///< of the event
    void (*act)(Review &, const ToolkitEvent &);
};

std::span<const ReviewBinding> walkBindings();      ///< from sounding to sounding
std::span<const ReviewBinding> placeBindings();     ///< to a station or an ordinal
std::span<const ReviewBinding> markBindings();      ///< skip marks, undo
std::span<const ReviewBinding> plotBindings();      ///< limits, printing, files
std::span<const ReviewBinding> zoomBindings();      ///< kind of the data axis
std::span<const ReviewBinding> autoSkipBindings();  ///< what filters would skip
std::span<const ReviewBinding> neighbourBindings(); ///< neighbouring soundings in grey

/// Brings a sounding on show: its ordinal is limited to those of the line.
inline void showStation(Review &review, int station) {
    review.state.ReviewStation = limited(station, 1, review.survey.SoundingCount);
}

/// Does something to marks, on purpose: one step of undo, which the journal keeps too.
void actOnMarks(Review &review, const std::function<void()> &change);

/// The marks of a step as they now are, on the disk.
void journalStep(Review &review, const MarkStep &step);

/// The second press of a double click gives the zoomed plot under it its whole axes again, and
/// takes back what the first press has marked, exactly. False, with nothing done, for any other
/// press.
bool zoomBack(Review &review, const ToolkitEvent &event);

/// Digits begin a number that Enter goes to, wherever the focus is; Backspace and Esc take one or
/// all of them back, and whatever else the user does forgets them.
/// returns  true for an event that was meant for the number alone
bool servesTypedPlace(Review &review, const ToolkitEvent &event);

/// What the panel's field of places shows: the number that is being typed, or where the sounding
/// on show stands.
std::string placeShown(const Review &review);

/// What the panel shows.
inline PanelValues panelOf(const Review &review) {
    return {review.state.ReviewStation, review.survey.SoundingCount, placeShown(review)};
}

} // namespace keldrin
