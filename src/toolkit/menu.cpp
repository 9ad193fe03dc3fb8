#include "toolkit/menu.h"

#include <algorithm>

namespace keldrin {

const MenuEntry *findMenuEntry(int command) {
    const auto *entry = std::find_if(MenuEntries.begin(), MenuEntries.end(),
                                     [=](const MenuEntry &e) { return e.command == command; });
    return entry == MenuEntries.end() ? nullptr : entry;
}

const MenuEntry *findShortcut(int key) {
    const auto *entry = std::find_if(MenuEntries.begin(), MenuEntries.end(),
                                     [=](const MenuEntry &e) { return e.shortcut == key; });
    return entry == MenuEntries.end() || key == 0 ? nullptr : entry;
}

std::string withoutMnemonic(std::string_view label) {
    std::string text(label);
    text.erase(std::remove(text.begin(), text.end(), '&'), text.end());
    return text;
}

} // namespace keldrin
