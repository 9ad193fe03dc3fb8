#pragma once

#include "line/line_page.h"
#include "line/line_settings.h"
#include "model/survey_model.h"

#include <span>
#include <string_view>

namespace keldrin {

// The pages that show the line as a whole, as a table. Keys, menus and help refer to the pages by
// their commands.

/// A kind of page.
struct LinePageKind {
    int command = 0;       ///< of the menu, which shows it
    char key = 0;          ///< shows it too, in both cases
    std::string_view name; ///< for the user
    LinePage (*make)(const SurveyModel &survey, const LineSettings &settings,
                     std::string_view path);
    /// Asks for the limits of the page; true when the user confirmed.
    bool (*editLimits)(const SurveyModel &survey, LineSettings &settings);
};

std::span<const LinePageKind> linePageKinds();

/// The keys of all kinds.
std::string_view linePageKeys();

/// The command of the page that a key shows, a letter in capitals; 0 for another key.
int linePageOfKey(int key);

/// The kind with a command, or null.
const LinePageKind *findLinePage(int command);

} // namespace keldrin
