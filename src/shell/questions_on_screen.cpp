#include "shell/questions_on_screen.h"

#include "base/fixed_text.h"
#include "messages/questions.h"
#include "screen/graphics_errors.h"
#include "shell/matching_label_dialog.h"
#include "toolkit/toolkit.h"

#include <string>
#include <vector>

namespace keldrin {

namespace {

bool chooseName(const NameQuestion &question, int &index) {
    const int dialogBelow = ToolkitDialogInfo(DialogSelected);
    MatchingLabelAnswers answers;
    answers.label = question.label;
    answers.word = question.word;
    answers.choice = index;
    for (const std::string_view name : question.names) {
        answers.names.emplace_back(trimRight(name));
    }
    const bool chosen = askDialog(MatchingLabelDialog, answers, [] {
                            CheckGraphicsError("Str_to_iEnumeration_Dialog fill");
                        }).confirmed();
    if (chosen && answers.choice >= 1 && answers.choice <= static_cast<int>(answers.names.size())) {
        index = answers.choice;
    }
    if (dialogBelow != 0) {
        WDialogSelect(dialogBelow);
    }
    CheckGraphicsError("Str_to_iEnumeration_Dialog");
    return chosen;
}

bool chooseFile(const FileQuestion &question, std::string &path) {
    return ToolkitFileChooser(question.filter, ChooseExisting, path, question.title);
}

} // namespace

void askQuestionsOnScreen() {
    questions() = {chooseFile, chooseName};
}

} // namespace keldrin
