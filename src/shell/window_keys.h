#pragma once

#include "base/program_help.h"
#include "line/page_keys.h"
#include "review/review_keys.h"

#include <array>

namespace keldrin {

// Keys and mouse, for F1 and for the manual page.

inline constexpr std::array MainWindowKeys = {
    HelpEntry{"Ctrl+N", "Make a project of field data."},
    HelpEntry{"Ctrl+O", "Open a project."},
    HelpEntry{"Ctrl+S", "Save the project."},
    HelpEntry{"Ctrl+Q", "Leave the program."},
    HelpEntry{"S, F, M", "Show the section, the profiles, the plan of the line."},
    HelpEntry{"Ctrl+E", "Export the line."},
    HelpEntry{"F1", "Show the keys; F1 again opens the manual."},
    HelpEntry{"F2", "Show the log and all messages, from a dialog too."},
    HelpEntry{"Ctrl+R", "Record what is done as a scenario, or end the record."},
    HelpEntry{"Right click", "Choose a page of the line, or one of the files opened lately."},
    HelpEntry{"Drop a file", "Open a project, or make one of field data."},
};

inline constexpr std::array DialogKeys = {
    HelpEntry{"Enter", "The default button."},
    HelpEntry{"Esc", "Cancel."},
};

inline constexpr std::array KeySections = {
    HelpSection{"keys of the main window", MainWindowKeys},
    HelpSection{"keys of the review", ReviewKeys},
    HelpSection{"keys of the pages of the line", LinePageKeys},
    HelpSection{"keys of the dialogs", DialogKeys},
};

} // namespace keldrin
