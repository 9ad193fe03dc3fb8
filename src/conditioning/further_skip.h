#pragma once

#include "conditioning/auto_skip.h"
#include "model/survey_model.h"

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

namespace keldrin {

// Filters beside those of auto_skip.h, all off at first. They judge windows from the first to the
// last one in use that have an observed value, by the data alone: neither marks nor other filters
// count, so the order of the filters does not matter.

/// The user's last answers, for the whole run.
struct FurtherSkipSettings {
    bool noiseFloor = false;     ///< magnitudes below noiseLevel (t / 1 msec)^noiseExponent
    float noiseLevel = 0.1F;     ///< nV/(A m2)
    float noiseExponent = -0.5F; ///< as noise of windows as wide as a part of their time falls

    bool curvature = false;   ///< peaks and dips of log data against log time
    float slopeChange = 2.0F; ///< most, from one side of a window to the other

    bool neighbours = false;      ///< difference from the median of the soundings around
    float neighbourFactor = 3.0F; ///< most, above 1

    bool andLater = false;  ///< all windows after one that any filter takes, to the last in use
    bool keepMarks = false; ///< windows that are marked stay so
};

/// How many windows each has taken in one pass.
struct FurtherSkipCounts {
    int noiseFloor = 0;
    int curvature = 0;
    int neighbours = 0;
    int later = 0; ///< by andLater alone
};

/// The filters by the names that users see, which switch each has, and what it has taken.
struct FurtherSkipFilter {
    std::string_view name;
    bool FurtherSkipSettings::*on;
    int FurtherSkipCounts::*taken;
};
inline constexpr std::array FurtherSkipFilters = {
    FurtherSkipFilter{"noise floor", &FurtherSkipSettings::noiseFloor,
                      &FurtherSkipCounts::noiseFloor},
    FurtherSkipFilter{"curvature", &FurtherSkipSettings::curvature, &FurtherSkipCounts::curvature},
    FurtherSkipFilter{"neighbours", &FurtherSkipSettings::neighbours,
                      &FurtherSkipCounts::neighbours},
    FurtherSkipFilter{"later windows", &FurtherSkipSettings::andLater, &FurtherSkipCounts::later},
};

/// Windows in use: positions from `first` up to, without, `end`.
struct WindowRange {
    std::size_t first = 0;
    std::size_t end = 0;
};

/// Windows whose magnitude lies below the noise floor.
ChosenWindows belowNoiseFloor(const SoundingRecord &sounding, const WindowRange &range,
                              const FurtherSkipSettings &settings);

/// Windows at which the slope of log dB/dt against log time changes by more than it may, and by
/// more than at the windows before and after: of a spike and the windows beside it, the spike.
/// Windows that are not above 0 are ignored.
ChosenWindows bentWindows(const SoundingRecord &sounding, const WindowRange &range,
                          const FurtherSkipSettings &settings);

/// Who lies around each sounding of a line, by index from 0: the four nearest that have its
/// frequency and, on a Fixed-Loop line, its transmitter. At an end of the line all are on one side.
std::vector<std::vector<std::size_t>> soundingsAround(const SurveyModel &model);

/// Windows that differ from the median of the soundings around, at the same time, by more than the
/// factor, or in sign. Three of these must have the window. Between the two middle values of an
/// even number nothing differs.
ChosenWindows unlikeNeighbours(const SurveyModel &model, std::size_t sounding,
                               const std::vector<std::size_t> &around, const WindowRange &range,
                               const FurtherSkipSettings &settings);

// ---- All filters over a line

/// What Auto Skip would do to a line.
struct SkipPlan {
    AutoSkipCounts counts; ///< `skipped` counts the windows of `taken`
    FurtherSkipCounts further;
    std::vector<ChosenWindows> taken; ///< by sounding
};

/// Runs all filters that are on; marks nothing. Windows before the first one in use or after the
/// last are taken by the range, and no window is later than these.
/// cutoff  error above which data are skipped, percent
SkipPlan planAutoSkip(const SurveyModel &model, const AutoSkipSettings &settings, float cutoff,
                      const FurtherSkipSettings &further);

/// How many windows are marked now that the plan does not take.
int marksBesidePlan(const SurveyModel &model, const SkipPlan &plan);

/// Marks the windows of a plan that was made of this model, and clears all others unless marks are
/// kept.
void applySkipPlan(SurveyModel &model, const SkipPlan &plan, bool keepMarks);

} // namespace keldrin
