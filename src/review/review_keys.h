#pragma once

#include "base/program_help.h"

#include <array>

namespace keldrin {

/// Keys and mouse of the review, for F1 and the manual page.
inline constexpr std::array ReviewKeys = {
    HelpEntry{"N, Down, Right, wheel down", "Next sounding."},
    HelpEntry{"P, Up, Left, wheel up", "Previous sounding."},
    HelpEntry{"Page Up, Page Down, Home, End",
              "Go ten soundings on or back, to the first, the last."},
    HelpEntry{"Digits, Enter", "Go to a station, or else to the sounding of that ordinal."},
    HelpEntry{"Left click or drag", "Set the skip flag of a window, or of all in a box."},
    HelpEntry{"Right click or drag", "Clear the skip flags."},
    HelpEntry{"Shift and a click", "The same for the window and all later ones."},
    HelpEntry{"Ctrl and a click", "The same for the window in all soundings."},
    HelpEntry{"Ctrl and a drag", "Zoom the plot to the box; a double click goes back."},
    HelpEntry{"L", "Draw dB/dt on a logarithmic axis, or on the usual one."},
    HelpEntry{"T", "Show the values of the windows as a table, or close it."},
    HelpEntry{"Delete, Ctrl+Delete", "In the table: set or clear the flags of the selected rows."},
    HelpEntry{"Ctrl+C", "Copy the selected rows of the table, or all."},
    HelpEntry{"C", "Copy the flags to other soundings."},
    HelpEntry{"A", "Auto Skip: see what filters would skip while you walk the line; Enter sets the "
                   "flags, Esc does not."},
    HelpEntry{"Ctrl+Z", "Take the last change of flags back."},
    HelpEntry{"Ctrl+Y, Ctrl+Shift+Z", "Bring it again."},
    HelpEntry{"Drag the panel's title", "Move the panel, or dock it at an edge."},
    HelpEntry{"Double click on it", "Dock the panel, or let it float upon the page."},
    HelpEntry{"F3", "Roll the panel up to a strip, or show it again."},
    HelpEntry{"G", "Draw 1, 2, 5 soundings on each side in grey, or none; plots show them too."},
    HelpEntry{"Ctrl+P", "Print the sounding."},
    HelpEntry{"S, F, M", "Show the section, the profiles, the plan; Esc comes back."},
    HelpEntry{"X", "Leave the review and keep the changes."},
    HelpEntry{"Esc", "Leave the review without the changes."},
};

} // namespace keldrin
