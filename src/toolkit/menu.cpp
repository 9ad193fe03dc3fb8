#include "toolkit/menu.h"

#include "base/ascii.h"

#include <algorithm>

namespace keldrin {

namespace {

template <class Matches>
const MenuEntry *findEntry(Matches matches) {
    const std::span<const MenuEntry> menu = windowContent().menu;
    const auto entry = std::find_if(menu.begin(), menu.end(), matches);
    return entry == menu.end() ? nullptr : &*entry;
}

} // namespace

WindowContent &windowContent() {
    static WindowContent content;
    return content;
}

const MenuEntry *findMenuEntry(int command) {
    return findEntry([=](const MenuEntry &entry) { return entry.command == command; });
}

const MenuEntry *findMenuLabel(std::string_view label) {
    return findEntry([=](const MenuEntry &entry) {
        return sameIgnoringCase(withoutMnemonic(entry.label), label);
    });
}

bool opensMenu(const MenuEntry &entry) {
    return findEntry([&](const MenuEntry &e) { return e.below == entry.command; }) != nullptr;
}

int capitalKey(int code) {
    constexpr int characters = 128;
    return code < characters ? upperOf(static_cast<char>(code)) : code;
}

const MenuEntry *findShortcut(int key) {
    const int code = capitalKey(key);
    return key == 0 ? nullptr
                    : findEntry([=](const MenuEntry &entry) { return entry.shortcut == code; });
}

std::string withoutMnemonic(std::string_view label) {
    std::string text(label);
    text.erase(std::remove(text.begin(), text.end(), '&'), text.end());
    return text;
}

} // namespace keldrin
