#include "shell/questions_on_screen.h"

#include "base/fixed_text.h"
#include "messages/questions.h"
#include "screen/graphics_errors.h"
#include "toolkit/control_ids.h"
#include "toolkit/dialog_specs/dialog_specs.h"
#include "toolkit/toolkit.h"

#include <string>
#include <vector>

namespace keldrin {

namespace {

constexpr int ControlLabel = 1061;
constexpr int ControlText = 1091;
constexpr int ControlNames = 1092;

/// Fills dialog 106 and shows it. index  in: the first choice; out: the user's
bool askInDialog(const NameQuestion &question, int &index) {
    std::vector<std::string> entries;
    for (const std::string_view name : question.names) {
        entries.emplace_back(trimRight(name));
    }
    WDialogLoad(MatchingLabelDialog);
    CheckGraphicsError("Str_to_iEnumeration_Dialog 1480");
    if (ToolkitDialogInfo(2) != Dialog::MatchingLabel) {
        return false;
    }
    WDialogPutString(ControlLabel, "Match this " + std::string(question.label) + " label");
    WDialogPutString(ControlText, question.word);
    CheckGraphicsError("Str_to_iEnumeration_Dialog 1486");
    WDialogPutMenu(ControlNames, entries, index);
    CheckGraphicsError("Str_to_iEnumeration_Dialog 1490");
    WDialogShow(-1, -1, ControlNames, DialogModal);
    CheckGraphicsError("Str_to_iEnumeration_Dialog 1505");
    int choice = index;
    const bool goOn = ToolkitDialogInfo(1) == ButtonContinue;
    if (goOn && WDialogGetMenu(ControlNames, choice) && choice >= 1 &&
        choice <= static_cast<int>(entries.size())) {
        index = choice;
    }
    WDialogUnload();
    return goOn;
}

bool chooseName(const NameQuestion &question, int &index) {
    const int dialogBelow = ToolkitDialogInfo(2);
    const bool chosen = askInDialog(question, index);
    if (dialogBelow != 0) {
        WDialogSelect(dialogBelow);
    }
    CheckGraphicsError("Str_to_iEnumeration_Dialog 1508");
    return chosen;
}

bool chooseFile(const FileQuestion &question, std::string &path) {
    constexpr int openExisting = 10;
    return ToolkitFileChooser(question.filter, openExisting, path, question.title);
}

} // namespace

void askQuestionsOnScreen() {
    questions() = {chooseFile, chooseName};
}

} // namespace keldrin
