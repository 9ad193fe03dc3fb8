#pragma once

#include "base/program_help.h"
#include "toolkit/toolkit.h"

#include <span>
#include <string>
#include <string_view>

namespace keldrin {

/// An entry of the one menu. The entries stand on the menu bar itself or below one of those; "&"
/// marks the key.
struct MenuEntry {
    int command = 0;
    std::string_view label;
    std::string_view hint; ///< shown in the status bar
    bool greyedAtStart = false;
    int shortcut = 0; ///< key code that chooses it while the bar is in service; 0 none. A letter
                      ///< alone counts in both cases
    int below = 0;    ///< command of the entry that opens a menu with this one; 0: on the bar
};

/// What an application puts into the main window. The toolkit itself knows no entry.
struct WindowContent {
    std::span<const MenuEntry> menu;
    std::span<const HelpSection> keys; ///< the list of keys, which F1 shows
    /// The command that is chosen for a file which the user drops on the window or takes from the
    /// recent ones; its chooser is answered with the file.
    int (*commandForFile)(std::string_view path) = nullptr;
};

/// One per process, empty until the application fills it at its start; its texts last the run.
WindowContent &windowContent();

/// The entry of a command, or null.
const MenuEntry *findMenuEntry(int command);

/// True for an entry that opens a menu of others and does nothing else.
bool opensMenu(const MenuEntry &entry);

/// The entry of this label, without its "&" and whatever the case, or null.
const MenuEntry *findMenuLabel(std::string_view label);

/// The entry that a key chooses, or null.
const MenuEntry *findShortcut(int key);

/// A label or caption without its "&" marks.
std::string withoutMnemonic(std::string_view label);

} // namespace keldrin
