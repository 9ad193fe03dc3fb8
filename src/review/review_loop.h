#pragma once

#include "conditioning/auto_skip.h"
#include "conditioning/further_skip.h"
#include "model/survey_model.h"
#include "review/review_history.h"
#include "review/review_skip.h"
#include "toolkit/toolkit.h"

#include <functional>
#include <string>

namespace keldrin {

/// What the review keeps between its entries.
struct ReviewState {
    int ReviewStation = 1;   ///< ordinal of the sounding on show, from 1
    int ReviewCount = 0;     ///< SoundingCount at the last entry; another one starts at sounding 1
    MarkHistory undone = {}; ///< marks that Redo brings back: undone or cancelled in this project
    PageStyle style = PageStyle::Standard; ///< of the page
    bool logData = false;                  ///< its data axis is the logarithmic one
    int neighbours = 0;                    ///< soundings on each side of it that are drawn in grey
    AutoSkipSettings autoSkip = {};        ///< of the last Continue of Auto Skip, here or elsewhere
    FurtherSkipSettings furtherSkip = {};
};

/// Loads the project again from disk; the path may come back changed. Returns the status of opening
/// a project, SoundingCount being 0 where that failed.
using ReloadProject = std::function<int(SurveyModel &, std::string &)>;

/// How the review goes on after pages of the line.
enum class AfterPages {
    Stays,
    Leaves, ///< as by Exit Review
    Closes, ///< as by the close box
};

/// The pages of the line that the review can show in place of its own.
struct LinePages {
    std::string_view keys = {}; ///< letters that show one, in capitals; both cases count
    /// Shows them, the one of a key first. The sounding that the user comes back with may be
    /// another one.
    std::function<AfterPages(char key, int &sounding)> show = {};
};

/// Settles the sounding that the review shows at its next entry: one of another line is the first.
void settleReview(ReviewState &state, int soundings);

/// Shows one sounding at a time on the root window with a small dialog (102) beside it: the user
/// walks the soundings, marks windows as skipped with the mouse, takes such changes back, sets the
/// plot limits and plots. Blocks until the user leaves.
///
/// survey   only skip marks change, in the stored errors
/// path     of the project. Written on exit if a mark was aimed at, and if that missed only where
///          no sounding is lost to the file; on Cancel Changes the project is reloaded instead
/// pages    of the line, by one key each; none: the keys do nothing
/// returns  0 done, also when the reload failed (SoundingCount is then 0); 1 without soundings; 3
///          or more when the window was closed, nothing being written. Not reported
int Review_Loop(SurveyModel &survey, ReviewState &state, std::string &path,
                const ReloadProject &reload, const LinePages &pages = {});

/// Follows the mouse from a press of its button and gives the box up to where it came up, within
/// the page. A click gives a box of no size.
/// box      centimetres of the page, the low corner at the lower left
/// returns  0, or 1 when anything else ended the band; the box is then of no use
int Review_Rubberband(const ToolkitEvent &event, PageBox &box);

} // namespace keldrin
