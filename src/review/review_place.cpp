#include "review/review_place.h"

#include "base/ascii.h"
#include "base/number_text.h"
#include "base/real.h"
#include "review/review_entry.h"
#include "toolkit/field_number.h"

#include <array>
#include <cmath>
#include <optional>
#include <span>
#include <utility>

namespace keldrin {

namespace {

std::string stationText(double station) {
    return isPresent(station) && std::isfinite(station) ? Number_Text(station, "(F15.3)") : "";
}

// Stations are typed as they are shown, rounded.
int soundingAt(const SurveyModel &survey, double station) {
    for (int sounding = 1; sounding <= survey.SoundingCount; ++sounding) {
        const double there = survey.sounding(sounding).RxStn;
        if (isPresent(there) && sameFileStation(there, station)) {
            return sounding;
        }
    }
    return 0;
}

void showNotice(std::string_view text) {
    ToolkitStatus(StatusPart::Notice, text);
}

void goTo(Review &review, std::string_view typed) {
    const SurveyModel &survey = review.survey;
    if (const int sounding = soundingNamed(survey, typed); sounding > 0) {
        showStation(review, sounding);
        showNotice("");
        return;
    }
    review.redraws = false;
    showNotice("\"" + std::string(trimBlanks(typed)) +
               "\" is neither a station of this line nor a sounding from 1 to " +
               std::to_string(survey.SoundingCount) + ".");
}

void showTyped(const Review &review) {
    showNotice(review.typedPlace.empty()
                   ? ""
                   : "Go to " + review.typedPlace + ": Enter goes there, Esc stays here.");
}

bool continuesNumber(const Review &review, const ToolkitEvent &event) {
    const bool digit = event.value >= '0' && event.value <= '9';
    const bool started = !review.typedPlace.empty();
    return event.type == EventKey && (digit || (started && event.value == '.'));
}

void followField(Review &review, const ToolkitEvent & /*event*/) {
    PanelValues panel = panelOf(review);
    if (readField(ReviewDialog, ReviewControl::Place, panel)) {
        goTo(review, panel.place);
    }
}

constexpr std::array PlaceBindings = {
    ReviewBinding{EventFieldChange, ReviewControl::Place, followField},
};

} // namespace

std::string placeText(const SurveyModel &survey, int sounding) {
    const std::string station = stationText(survey.sounding(sounding).RxStn);
    return std::to_string(sounding) + " of " + std::to_string(survey.SoundingCount) +
           (station.empty() ? "" : "  Stn " + station);
}

int soundingNamed(const SurveyModel &survey, std::string_view typed) {
    const std::optional<double> number = typedNumber(typed, ControlKind::Double);
    if (!number || !std::isfinite(*number)) {
        return 0;
    }
    if (const int sounding = soundingAt(survey, *number); sounding > 0) {
        return sounding;
    }
    const bool ordinal =
        *number >= 1.0 && *number <= survey.SoundingCount && std::trunc(*number) == *number;
    return ordinal ? static_cast<int>(*number) : 0;
}

bool servesTypedPlace(Review &review, const ToolkitEvent &event) {
    constexpr std::size_t longest = 15; // characters of a number that makes sense
    std::string &typed = review.typedPlace;
    const int key = event.type == EventKey ? event.value : 0;
    if (continuesNumber(review, event)) {
        typed += typed.size() < longest ? std::string(1, static_cast<char>(key)) : "";
    } else if (typed.empty() || event.type == EventResize || event.type == EventExposure) {
        return false;
    } else if (key == KeyBackspace) {
        typed.pop_back();
    } else {
        const std::string whole = std::exchange(typed, "");
        showTyped(review);
        review.redraws = key != KeyEscape;
        if (key == KeyEnter) {
            goTo(review, whole);
        }
        return key == KeyEnter || key == KeyEscape;
    }
    showTyped(review);
    review.redraws = false;
    return true;
}

std::string placeShown(const Review &review) {
    return review.typedPlace.empty() ? placeText(review.survey, review.state.ReviewStation)
                                     : review.typedPlace;
}

std::span<const ReviewBinding> placeBindings() {
    return PlaceBindings;
}

} // namespace keldrin
