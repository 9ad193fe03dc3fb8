#include "text/enumeration.h"

#include "base/ascii.h"
#include "messages/message_log.h"
#include "toolkit/control_ids.h"
#include "toolkit/dialog_specs/dialog_specs.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <string>

namespace keldrin {

namespace {

constexpr int Matched = 0;
constexpr int NothingToMatch = -1;
constexpr int Cancelled = 2;

constexpr int ControlLabel = 1061;
constexpr int ControlText = 1091;
constexpr int ControlNames = 1092;

/// Fills dialog 106 and shows it. index  in: the first choice; out: the user's
int askInDialog(std::string_view text, std::string_view label,
                std::span<const std::string_view> names, int &index) {
    std::vector<std::string> entries;
    for (const std::string_view name : names) {
        entries.emplace_back(trimRight(name));
    }
    WDialogLoad(MatchingLabelDialog);
    CheckGraphicsError("Str_to_iEnumeration_Dialog 1480");
    if (ToolkitDialogInfo(2) != Dialog::MatchingLabel) {
        return Cancelled;
    }
    WDialogPutString(ControlLabel, "Match this " + std::string(trimBlanks(label)) + " label");
    WDialogPutString(ControlText, text);
    CheckGraphicsError("Str_to_iEnumeration_Dialog 1486");
    WDialogPutMenu(ControlNames, entries, index);
    CheckGraphicsError("Str_to_iEnumeration_Dialog 1490");
    WDialogShow(-1, -1, ControlNames, DialogModal);
    CheckGraphicsError("Str_to_iEnumeration_Dialog 1505");
    int choice = index;
    const bool goOn = ToolkitDialogInfo(1) == ButtonContinue;
    if (goOn && WDialogGetMenu(ControlNames, choice) && choice >= 1 &&
        choice <= static_cast<int>(names.size())) {
        index = choice;
    }
    WDialogUnload();
    return goOn ? Matched : Cancelled;
}

int Str_to_iEnumeration_Dialog(std::string_view text, std::string_view label,
                               std::span<const std::string_view> names, int &index) {
    const int dialogBelow = ToolkitDialogInfo(2);
    const int status = askInDialog(text, label, names, index);
    if (dialogBelow != 0) {
        WDialogSelect(dialogBelow);
    }
    CheckGraphicsError("Str_to_iEnumeration_Dialog 1508");
    return status;
}

void remember(const FixedText<64> &text, int answer) {
    auto &entries = enumerationMemo().entries;
    if (entries.size() >= EnumerationMemo::MostEntries) {
        entries.erase(entries.begin());
    }
    entries.push_back({text, answer});
}

/// Told where the dialog was shown, so once for each word: a batch has nobody who could choose.
void warnOfUnknownWord(std::string_view word, std::string_view label,
                       std::span<const std::string_view> names, int choice) {
    const bool chosen = choice >= 1 && choice <= static_cast<int>(names.size());
    const std::string_view name = chosen ? names[static_cast<std::size_t>(choice - 1)] : "";
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
    int choice = std::clamp(index, 1, std::max(1, static_cast<int>(names.size())));
    const int status = Str_to_iEnumeration_Dialog(word, label, names, choice);
    remember(asked, status == Matched ? choice : -choice);
    if (status == Matched) {
        index = choice;
    }
    warnOfUnknownWord(asked.view(), label, names, status == Matched ? choice : 0);
    return status;
}

} // namespace keldrin
