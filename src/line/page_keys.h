#pragma once

#include "base/program_help.h"

#include <array>

namespace keldrin {

/// Keys and mouse of the pages of the line, for F1 and the manual page.
inline constexpr std::array LinePageKeys = {
    HelpEntry{"S, F, M", "Show the section, the profiles, the plan."},
    HelpEntry{"N, Down, Right, wheel down", "Mark the next sounding."},
    HelpEntry{"P, Up, Left, wheel up", "Mark the previous sounding."},
    HelpEntry{"Page Up, Page Down, Home, End",
              "Go ten soundings on or back, to the first, the last."},
    HelpEntry{"E", "Edit the limits of the page."},
    HelpEntry{"Enter", "Review the marked sounding."},
    HelpEntry{"Left click", "Review the sounding under the mouse."},
    HelpEntry{"Right click", "Choose one of these."},
    HelpEntry{"X, Esc", "Go back."},
};

} // namespace keldrin
