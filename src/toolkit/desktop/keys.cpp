#include "toolkit/desktop/keys.h"

#include "base/ascii.h"
#include "toolkit/toolkit.h"

#include <QKeyEvent>

#include <algorithm>
#include <array>

namespace keldrin {

namespace {

struct NamedKey {
    int qtKey;
    int code;
};

constexpr std::array NamedKeys = {
    NamedKey{Qt::Key_Escape, KeyEscape},
    NamedKey{Qt::Key_Return, KeyEnter},
    NamedKey{Qt::Key_Enter, KeyEnter},
    NamedKey{Qt::Key_Up, KeyUp},
    NamedKey{Qt::Key_Down, KeyDown},
    NamedKey{Qt::Key_Left, KeyLeft},
    NamedKey{Qt::Key_Right, KeyRight},
    NamedKey{Qt::Key_Home, KeyHome},
    NamedKey{Qt::Key_End, KeyEnd},
    NamedKey{Qt::Key_PageUp, KeyPageUp},
    NamedKey{Qt::Key_PageDown, KeyPageDown},
    NamedKey{Qt::Key_Backspace, KeyBackspace},
    NamedKey{Qt::Key_Delete, KeyDelete},
    NamedKey{Qt::Key_F1, KeyF1},
    NamedKey{Qt::Key_F2, KeyF2},
    NamedKey{Qt::Key_F3, KeyF3},
};

int modifiersOf(const QKeyEvent &key) {
    if (!key.modifiers().testFlag(Qt::ControlModifier)) {
        return 0; // the character says the rest
    }
    return key.modifiers().testFlag(Qt::ShiftModifier) ? KeyWithCtrl | KeyWithShift : KeyWithCtrl;
}

bool isPrintable(char32_t character) {
    return character >= U' ' && character <= U'~';
}

} // namespace

int keyCodeOf(const QKeyEvent &key) {
    const int modifiers = modifiersOf(key);
    const auto *named = std::find_if(NamedKeys.begin(), NamedKeys.end(),
                                     [&](const NamedKey &n) { return n.qtKey == key.key(); });
    if (named != NamedKeys.end()) {
        return named->code | modifiers;
    }
    if (modifiers != 0) { // the text of a key with Ctrl is a control character
        const auto code = static_cast<char32_t>(key.key());
        return isPrintable(code) ? upperOf(static_cast<char>(code)) | modifiers : 0;
    }
    const QString text = key.text();
    const char32_t character = text.size() == 1 ? text.front().unicode() : 0;
    return isPrintable(character) ? static_cast<int>(character) : 0;
}

int qtKeyOf(int code) {
    const auto *named = std::find_if(NamedKeys.begin(), NamedKeys.end(),
                                     [=](const NamedKey &n) { return n.code == code; });
    return named != NamedKeys.end() ? named->qtKey : 0;
}

} // namespace keldrin
