#include "shell/unsaved_marks.h"

#include "base/paths.h"
#include "base/safe_writer.h"
#include "messages/message_log.h"
#include "projectfile/kept_files.h"
#include "projectfile/mark_journal.h"
#include "review/review_save.h"
#include "toolkit/toolkit.h"

#include <array>
#include <charconv>

namespace keldrin {

namespace {

// "22 Nov 00:41" of "22/11/2026 00:41:07".
std::string shortDate(const std::string &date) {
    constexpr std::array months = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                   "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    std::size_t month = 0;
    std::from_chars(date.data() + 3, date.data() + 5, month);
    return month >= 1 && month <= months.size()
               ? date.substr(0, 2) + " " + months[month - 1] + date.substr(10, 6)
               : date;
}

bool askToTake(int count, const UnsavedMarks &marks) {
    const std::string changes = std::to_string(count) + (count == 1 ? " change" : " changes");
    const std::string text = changes + " of " + shortDate(marks.date) +
                             (count == 1 ? " was" : " were") + " not saved. Take " +
                             (count == 1 ? "it?" : "them?") +
                             "\r\rOK puts the skip marks into the project.\r"
                             "Cancel leaves the project as it is.";
    return WMessageBox(BoxOkAndCancel, BoxNoteIcon, BoxOk, text, "Skip marks of a review",
                       BoxDuty::AlwaysShown) == BoxOk;
}

// What was declined, and marks of windows that are gone, are kept beside the project.
void keepAside(const std::string &journal) {
    const std::string name = keptName(journal, 0, nullptr);
    if (copyWholeFile(journal, name).written) {
        ReportNotice(NoticeLevel::Status, {"Skip marks that are not in the project are kept as " +
                                           std::string(fileNameOf(name))});
    }
}

} // namespace

void offerUnsavedMarks(SurveyModel &model, const std::string &path) {
    MarkJournal journal{markJournalPath(path)};
    UnsavedMarks marks;
    if (!readMarkJournal(journal.path, marks)) {
        return;
    }
    const UnsavedCount count = countUnsavedMarks(model, marks);
    const bool taken = count.changes > 0 && askToTake(count.changes, marks);
    if (count.unknown > 0 || (count.changes > 0 && !taken)) {
        keepAside(journal.path);
    }
    if (taken) {
        takeUnsavedMarks(model, marks);
        writeMarkedProject(model, path); // which removes the journal
    } else {
        dropMarkJournal(journal);
    }
}

} // namespace keldrin
