#pragma once

#include "line/line_settings.h"
#include "model/survey_model.h"
#include "toolkit/toolkit.h"

#include <span>
#include <string>

namespace keldrin {

/// What the pages of the line keep between their entries.
struct ViewState {
    int page = 0;     ///< command of the page on show (line_pages.h); 0 none
    int sounding = 1; ///< ordinal of the sounding that the user is at
    LineSettings settings = {};
    bool isNew = true; ///< the user has just asked for the page; the status bar says how to go on
};

/// How the user left the pages of the line.
enum class ViewEnd {
    Left,        ///< state.page is 0
    ReviewAsked, ///< of state.sounding
    MenuChosen,  ///< a command of the menu; its event was put back
    Closed,      ///< the window was asked to close
};

/// Shows the pages of the line on the root window, state.page first: the user goes from page to
/// page and from sounding to sounding, whose mark the page shows. Blocks until the user leaves.
///
/// survey  must have soundings
/// state   page and sounding as the user leaves them
/// path    of the project; its file name stands on the pages
ViewEnd View_Loop(const SurveyModel &survey, ViewState &state, const std::string &path);

/// The entries of a context menu that show the pages of the line.
std::span<const ContextEntry> viewEntries();

} // namespace keldrin
