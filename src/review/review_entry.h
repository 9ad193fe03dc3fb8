#pragma once

#include "base/real.h"
#include "projectfile/mark_journal.h"
#include "review/plot_limits.h"
#include "review/review_auto_skip.h"
#include "review/review_history.h"
#include "review/review_loop.h"
#include "review/review_panel.h"
#include "toolkit/toolkit.h"

#include <functional>
#include <optional>
#include <span>
#include <string>

namespace keldrin {

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
    std::optional<LiveSkip> autoSkip = {}; ///< its dialog is open
    bool aimed = false;                    ///< at a mark, hit or not
    bool hit = false;                      ///< a mark has changed
    bool stays = true;
    bool panelOpen = false;
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
std::span<const ReviewBinding> autoSkipBindings();  ///< what filters would skip
std::span<const ReviewBinding> neighbourBindings(); ///< soundings behind the one on show

/// Brings a sounding on show: its ordinal is limited to those of the line.
inline void showStation(Review &review, int station) {
    review.state.ReviewStation = limited(station, 1, review.survey.SoundingCount);
}

/// Does something to marks, on purpose: one step of undo, which the journal keeps too.
void actOnMarks(Review &review, const std::function<void()> &change);

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
