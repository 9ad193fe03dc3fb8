#include "toolkit/menu.h"

#include "base/ascii.h"

#include <algorithm>

namespace keldrin {

const MenuEntry *findMenuEntry(int command) {
    const auto *entry = std::find_if(MenuEntries.begin(), MenuEntries.end(),
                                     [=](const MenuEntry &e) { return e.command == command; });
    return entry == MenuEntries.end() ? nullptr : entry;
}

bool opensMenu(const MenuEntry &entry) {
    return std::any_of(MenuEntries.begin(), MenuEntries.end(),
                       [&](const MenuEntry &e) { return e.below == entry.command; });
}

const MenuEntry *findShortcut(int key) {
    constexpr int characters = 128;
    const int code = key < characters ? upperOf(static_cast<char>(key)) : key;
    const auto *entry = std::find_if(MenuEntries.begin(), MenuEntries.end(),
                                     [=](const MenuEntry &e) { return e.shortcut == code; });
    return entry == MenuEntries.end() || key == 0 ? nullptr : entry;
}

std::string withoutMnemonic(std::string_view label) {
    std::string text(label);
    text.erase(std::remove(text.begin(), text.end(), '&'), text.end());
    return text;
}

} // namespace keldrin
