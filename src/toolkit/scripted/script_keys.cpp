#include "toolkit/scripted/script_keys.h"

#include "base/ascii.h"
#include "toolkit/toolkit.h"

#include <array>

namespace keldrin {

namespace {

struct NamedKey {
    std::string_view name;
    int code;
};

constexpr std::array NamedKeys = {
    NamedKey{"Escape", KeyEscape},
    NamedKey{"Up", KeyUp},
    NamedKey{"Down", KeyDown},
    NamedKey{"Left", KeyLeft},
    NamedKey{"Right", KeyRight},
    NamedKey{"Enter", KeyEnter},
    NamedKey{"Home", KeyHome},
    NamedKey{"End", KeyEnd},
    NamedKey{"PageUp", KeyPageUp},
    NamedKey{"PageDown", KeyPageDown},
    NamedKey{"Delete", KeyDelete},
    NamedKey{"F1", KeyF1},
    NamedKey{"F2", KeyF2},
    NamedKey{"F3", KeyF3},
    NamedKey{"Backspace", KeyBackspace},
};

bool takePrefix(std::string_view &text, std::string_view prefix) {
    const bool there = text.size() > prefix.size() && text.substr(0, prefix.size()) == prefix;
    text.remove_prefix(there ? prefix.size() : 0);
    return there;
}

} // namespace

std::vector<std::string_view> scriptKeyNames() {
    std::vector<std::string_view> names;
    names.reserve(std::size(NamedKeys));
    for (const NamedKey &key : NamedKeys) {
        names.push_back(key.name);
    }
    return names;
}

std::optional<int> keyCodeOf(std::string_view name) {
    int modifiers = 0;
    if (takePrefix(name, "Ctrl+Shift+")) {
        modifiers = KeyWithCtrl | KeyWithShift;
    } else if (takePrefix(name, "Ctrl+")) {
        modifiers = KeyWithCtrl;
    }
    for (const NamedKey &key : NamedKeys) {
        if (key.name == name) {
            return key.code | modifiers;
        }
    }
    const bool printable = name.size() == 1 && name.front() >= ' ' && name.front() <= '~';
    if (!printable) {
        return std::nullopt;
    }
    return (modifiers != 0 ? upperOf(name.front()) : name.front()) | modifiers;
}

std::string keyNameOf(int code) {
    const int plain = code & ~(KeyWithCtrl | KeyWithShift);
    std::string name;
    if ((code & KeyWithCtrl) != 0) {
        name = (code & KeyWithShift) != 0 ? "Ctrl+Shift+" : "Ctrl+";
    }
    for (const NamedKey &key : NamedKeys) {
        if (key.code == plain) {
            return name.append(key.name);
        }
    }
    return plain >= ' ' && plain <= '~' ? name + static_cast<char>(plain) : "";
}

} // namespace keldrin
