#pragma once

#include "model/survey_model.h"

#include <array>
#include <bitset>
#include <string_view>

namespace keldrin {

/// The user's last answers, for the whole run. The error threshold is the project's DataCutoff.
struct AutoSkipSettings {
    int firstWindow = 1;
    int lastWindow = 128;
    bool errorFilter = true;
    bool negativeFilter = true;
    bool slopeFilter = true;
};

/// Marks windows by the user's thresholds (dialog 104); replaces all earlier marks.
///
/// A window outside first..last is always skipped. From the first window that fails the error or
/// the slope filter on, all later ones of the sounding up to the last are skipped; the negative
/// filter skips only the window itself.
/// model    errors in percent (plus SkipOffset where skipped), dB/dt in nV/(A m2)
/// returns  0 done, 1 no soundings (reported) or cancelled
int AutoSkip(SurveyModel &model, AutoSkipSettings &settings);

/// Brings settings and cut-off into the limits that the dialog has for a line, and the first window
/// before the last.
void limitAutoSkip(const SurveyModel &model, AutoSkipSettings &settings, float &DataCutoff);

/// Lets the user change the settings and the cut-off. A first window above the last is swapped with
/// it, when the dialog opens and when it is confirmed.
/// maxWindows  largest window count of all soundings
/// returns     0, or 1 on Cancel with nothing changed
int VerifyAutoSkip(int maxWindows, AutoSkipSettings &settings, float &DataCutoff);

/// Some windows of a sounding, by position from 0.
using ChosenWindows = std::bitset<MaxWindows>;

/// How many windows each filter has taken in one pass; a window may be taken by several.
struct AutoSkipCounts {
    int outsideRange = 0;
    int error = 0; ///< from the window with the large error on
    int negative = 0;
    int slope = 0;   ///< from the rising window on
    int skipped = 0; ///< in all
    int windows = 0;
};

/// The filters by the names that users see, and what each has taken.
struct AutoSkipFilter {
    std::string_view name;
    int AutoSkipCounts::*taken;
};
inline constexpr std::array AutoSkipFilters = {
    AutoSkipFilter{"window range", &AutoSkipCounts::outsideRange},
    AutoSkipFilter{"error filter", &AutoSkipCounts::error},
    AutoSkipFilter{"negative filter", &AutoSkipCounts::negative},
    AutoSkipFilter{"slope filter", &AutoSkipCounts::slope},
};

/// The windows of a sounding that the filters take, which they add to the counts. Nothing is
/// marked.
///
/// cutoff  error above which data are skipped, percent
ChosenWindows takenByAutoSkip(const SoundingRecord &record, const AutoSkipSettings &settings,
                              float cutoff, AutoSkipCounts &counts);

/// Logs what each filter has taken.
void logAutoSkipCounts(const AutoSkipCounts &counts);

/// Windows of the sounding that has most of them; 0 without soundings.
int largestWindowCount(const SurveyModel &model);

/// Swaps a first window above the last one with it.
void orderWindows(AutoSkipSettings &settings);

/// The pass itself, without dialog and log.
AutoSkipCounts applyAutoSkip(SurveyModel &model, const AutoSkipSettings &settings);

} // namespace keldrin
