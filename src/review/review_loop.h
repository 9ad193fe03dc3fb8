#pragma once

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
};

/// Loads the project again from disk; the path may come back changed. Returns the status of opening
/// a project, SoundingCount being 0 where that failed.
using ReloadProject = std::function<int(SurveyModel &, std::string &)>;

/// Shows one sounding at a time on the root window with a small dialog (102) beside it: the user
/// walks the soundings, marks windows as skipped with the mouse, takes such changes back, sets the
/// plot limits and plots. Blocks until the user leaves.
///
/// survey   only skip marks change, in the stored errors
/// path     of the project. Written on exit if a mark was aimed at, and if that missed only where
///          no sounding is lost to the file; on Cancel Changes the project is reloaded instead
/// returns  0 done, also when the reload failed (SoundingCount is then 0); 1 without soundings; 3
///          or more when the window was closed, nothing being written. Not reported
int Review_Loop(SurveyModel &survey, ReviewState &state, std::string &path,
                const ReloadProject &reload);

/// Follows the mouse from a press of its button and gives the box up to where it came up, within
/// the page. A click gives a box of no size.
/// box      centimetres of the page, the low corner at the lower left
/// returns  0, or 1 when anything else ended the band; the box is then of no use
int Review_Rubberband(const ToolkitEvent &event, PageBox &box);

} // namespace keldrin
