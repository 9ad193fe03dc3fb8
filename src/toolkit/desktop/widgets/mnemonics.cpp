#include "toolkit/desktop/widgets/mnemonics.h"

#include "toolkit/desktop/widgets/qt_text.h"
#include "toolkit/menu.h"

#include <set>

namespace keldrin {

namespace {

// The letter after "&"; a null one when the text has none.
QChar toldLetter(const QString &text) {
    const qsizetype mark = text.indexOf('&');
    return mark >= 0 && mark + 1 < text.size() ? text[mark + 1].toUpper() : QChar();
}

bool beginsWord(const QString &text, qsizetype at) {
    return text[at].isLetter() && (at == 0 || text[at - 1] == ' ' || text[at - 1] == '-');
}

// Where the letter stands best: at the beginning of a word. -1 when it is not in the text.
qsizetype placeOf(QChar letter, const QString &text) {
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i].toUpper() == letter && beginsWord(text, i)) {
            return i;
        }
    }
    return text.indexOf(letter, 0, Qt::CaseInsensitive);
}

QChar freeLetter(const QString &text, const std::set<QChar> &taken) {
    for (const bool wordsOnly : {true, false}) {
        for (qsizetype i = 0; i < text.size(); ++i) {
            const QChar letter = text[i].toUpper();
            const bool fits = wordsOnly ? beginsWord(text, i) : text[i].isLetter();
            if (fits && letter.unicode() < 0x80 && !taken.contains(letter)) {
                return letter;
            }
        }
    }
    return {};
}

} // namespace

Mnemonics::Mnemonics(const std::vector<MnemonicText> &texts) {
    std::set<QChar> taken;
    const auto take = [&](int id, QChar letter) {
        if (!letter.isNull() && taken.insert(letter).second) {
            letters_[id] = letter;
        }
    };
    for (const MnemonicText &text : texts) {
        take(text.id, text.literal ? QChar() : toldLetter(qtText(text.text)));
    }
    for (const bool first : {true, false}) {
        for (const MnemonicText &text : texts) {
            if (text.first == first && !letters_.contains(text.id)) {
                take(text.id, freeLetter(qtText(withoutMnemonic(text.text)), taken));
            }
        }
    }
}

QString Mnemonics::marked(int id, const std::string &text, bool literal) const {
    const QString shown = qtText(literal ? text : withoutMnemonic(text));
    const auto found = letters_.find(id);
    const qsizetype place = found == letters_.end() ? -1 : placeOf(found->second, shown);
    const auto escaped = [](QString part) {
        return part.replace("&", "&&");
    };
    return place < 0 ? escaped(shown)
                     : escaped(shown.left(place)) + '&' + escaped(shown.mid(place));
}

} // namespace keldrin
