#include "text/enumeration.h"

#include "base/ascii.h"
#include "base/index.h"
#include "base/real.h"
#include "messages/message_log.h"
#include "messages/questions.h"

#include <algorithm>
#include <string>

namespace keldrin {

namespace {

constexpr int Matched = 0;
constexpr int NothingToMatch = -1;
constexpr int Cancelled = 2;

void remember(const FixedText<64> &text, int answer) {
    auto &entries = enumerationMemo().entries;
    if (entries.size() >= EnumerationMemo::MostEntries) {
        entries.erase(entries.begin());
    }
    entries.push_back({text, answer});
}

/// Reported where the user would be asked, so once for each word; in a batch nobody can choose.
void warnOfUnknownWord(std::string_view word, std::string_view label,
                       std::span<const std::string_view> names, int choice) {
    const bool chosen = choice >= 1 && choice <= static_cast<int>(names.size());
    const std::string_view name = chosen ? names[asIndex(choice - 1)] : "";
    ReportWarning({"WARNING: " + std::string(trimBlanks(label)) + " = " + std::string(word) +
                       " matches no known name",
                   chosen ? "It is taken as " + std::string(trimRight(name))
                          : std::string("It is not used.")});
}

/// The name that equals the text, else the first one that it contains; 0 for none. A blank name is
/// contained in every text, so that it catches all words that no name matches. Names are compared
/// as they stand: one that is not in capitals equals no word, and tables may count on that.
int indexOf(std::string_view text, std::span<const std::string_view> names) {
    const auto place = [&](auto found) {
        return found == names.end() ? 0 : static_cast<int>(found - names.begin()) + 1;
    };
    const auto equal = std::find_if(names.begin(), names.end(),
                                    [&](std::string_view name) { return trimRight(name) == text; });
    if (equal != names.end()) {
        return place(equal);
    }
    return place(std::find_if(names.begin(), names.end(),
                              [&](std::string_view name) { return holds(text, trimRight(name)); }));
}

} // namespace

EnumerationMemo &enumerationMemo() {
    static EnumerationMemo memo;
    return memo;
}

int Str_to_iEnumeration(std::string_view text, std::string_view label,
                        std::span<const std::string_view> names, int &index) {
    const std::string word = Str_Upper(trimBlanks(text));
    if (word.empty() || holds(word, "*")) {
        return NothingToMatch;
    }
    const FixedText<64> asked = word;
    // by the text alone: one answer counts for every enumeration, whatever its label
    for (const EnumerationMemo::Entry &entry : enumerationMemo().entries) {
        if (entry.text == asked) {
            index = entry.answer > 0 ? entry.answer : index;
            return entry.answer > 0 ? Matched : Cancelled;
        }
    }
    if (const int found = indexOf(word, names); found > 0) {
        index = found;
        return Matched;
    }
    int choice = limited(index, 1, std::max(1, static_cast<int>(names.size())));
    const bool matched = askForName({word, trimBlanks(label), names}, choice);
    remember(asked, matched ? choice : -choice);
    if (matched) {
        index = choice;
    }
    warnOfUnknownWord(asked.view(), label, names, matched ? choice : 0);
    return matched ? Matched : Cancelled;
}

} // namespace keldrin
