#pragma once

#include "toolkit/control_ids.h"
#include "toolkit/toolkit.h"

#include <array>
#include <string>
#include <string_view>

namespace keldrin {

// The one menu. Its entries stand on the menu bar itself or below one of those, in this order; "&"
// marks the key.

inline constexpr int MenuNumber = 30001;

struct MenuEntry {
    int command = 0;
    std::string_view label;
    std::string_view hint; ///< shown in the status bar
    bool greyedAtStart = false;
    int shortcut = 0; ///< key code that chooses it while the bar is in service; 0 none. A letter
                      ///< alone counts in both cases
    int below = 0;    ///< command of the entry that opens a menu with this one; 0: on the bar
};

inline constexpr std::array<MenuEntry, 10> MenuEntries = {{
    {Command::New, "&New", "Read dB/dt data and build new *.std file.", false, KeyWithCtrl | 'N'},
    {Command::Open, "&Open", "Open existing *.std (and *.m1d) file.", false, KeyWithCtrl | 'O'},
    {Command::Save, "&Save", "Save KELDRIN inversion files.", false, KeyWithCtrl | 'S'},
    {Command::Edit, "&Edit Survey Configuration",
     "Edit survey configuration and inversion control parameters.", true},
    {Command::AutoSkip, "Auto Skip", "Set skip flags automatically based on threshold criteria.",
     false},
    {Command::Invert, "&Invert", "Invert dBz/dt to smoothly varying model.", true},
    {Command::Review, "&Review Data", "Review dB/dt data and inversion model.", true},
    {Command::View, "&View", "Show the line as a whole.", false},
    {Command::Plan, "P&lan", "Show the stations of the line on a map.", true, 'L', Command::View},
    {Command::Exit, "E&xit", "Exit program", false, KeyWithCtrl | 'Q'},
}};

/// The entry of a command, or null.
const MenuEntry *findMenuEntry(int command);

/// True for an entry that opens a menu of others and does nothing else.
bool opensMenu(const MenuEntry &entry);

/// The entry that a key chooses, or null.
const MenuEntry *findShortcut(int key);

/// A label or caption without its "&" marks.
std::string withoutMnemonic(std::string_view label);

} // namespace keldrin
