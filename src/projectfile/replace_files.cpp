#include "projectfile/replace_files.h"

#include "base/file_operations.h"
#include "base/file_transaction.h"
#include "base/paths.h"
#include "messages/message_log.h"
#include "projectfile/file_content.h"
#include "projectfile/mark_journal.h"

#include <algorithm>
#include <filesystem>
#include <new>
#include <system_error>

namespace keldrin {

namespace fs = std::filesystem;

namespace {

std::string settledPath(const std::string &path) {
    std::error_code error;
    const fs::path settled = fs::weakly_canonical(fs::absolute(linkTarget(path), error), error);
    return error ? path : settled.string();
}

bool sameState(const SourceFile &a, const SourceFile &b) {
    return a.path == b.path && a.bytes == b.bytes && a.modified == b.modified;
}

Relation relationOf(const FileWrite &file) {
    if (!pathExists(file.path)) {
        return Relation::Absent;
    }
    const SourceFile now = sourceOf(file.path, {});
    if (now.path != file.source->path) {
        return Relation::Other;
    }
    return sameState(now, *file.source) ? Relation::Same : Relation::Changed;
}

/// Takes a line with its end off the front of a text.
std::string_view takeLine(std::string_view &text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (!line.empty() && line.back() == '\r') {
        line.remove_suffix(1);
    }
    return line;
}

bool holdsDate(std::string_view line) {
    return line.find("From ") < 16 && line.find("  Date:") != std::string_view::npos &&
           line.find("  Time:") != std::string_view::npos;
}

bool sameButDates(std::string_view a, std::string_view b) {
    while (!a.empty() && !b.empty()) {
        const std::string_view lineA = takeLine(a);
        const std::string_view lineB = takeLine(b);
        if (lineA != lineB && !(holdsDate(lineA) && holdsDate(lineB))) {
            return false;
        }
    }
    return a.empty() && b.empty();
}

/// The files that a write keeps, while it takes place.
struct Keeping {
    FileTransaction &transaction;
    std::vector<std::string> names; ///< under which files were kept
};

bool isKeptAlready(const std::string &content, const std::string &name) {
    std::string kept;
    std::string failure;
    std::error_code error;
    return isRegularFile(name) && fs::file_size(name, error) == content.size() &&
           readWholeFile(name, kept, failure) && kept == content;
}

/// Keeps one file; a file without a byte is nothing to keep.
bool keep(Keeping &keeping, const std::string &path, int rows,
          FileContent (*examine)(const std::string &)) {
    const std::string target = linkTarget(path);
    std::string content;
    std::string failure;
    const bool known = readWholeFile(target, content, failure);
    if (known && (content.empty() || isKeptAlready(content, target + "~"))) {
        return true;
    }
    const std::string name = keptName(target, rows, examine);
    keeping.names.push_back(name);
    return keeping.transaction.keepAs(target, name);
}

/// Deals with the models beside a project. Those in memory belong to it, whatever its name is.
bool keepModels(Keeping &keeping, const FileWrite &project, Models fate) {
    const std::string &path = project.models;
    if (fate == Models::Stay || !isRegularFile(path) ||
        (fate == Models::Moved && sameState(sourceOf(path, {}), *project.modelsSource))) {
        return true;
    }
    return keep(keeping, path, modelContent(path).rows, modelContent) &&
           (fate == Models::Copied || keeping.transaction.takeAway(path));
}

bool differsInDatesAlone(const FileWrite &file) {
    std::string content;
    std::string failure;
    return readWholeFile(file.path, content, failure) && sameButDates(content, file.text);
}

bool isOfOtherSource(const FileWrite &file) {
    return settledPath(file.path) != file.source->path;
}

/// Keeps what a new file would lose, and moves models out of its way.
bool keepOld(Keeping &keeping, const FileWrite &file) {
    FileChange change{.relation = relationOf(file), .old = {}, .next = file.content};
    if (change.relation == Relation::Absent) {
        const Models fate = isOfOtherSource(file) ? Models::Moved : Models::Stay;
        return file.models.empty() || keepModels(keeping, file, fate);
    }
    change.old = change.relation == Relation::Same ? file.source->content : file.examine(file.path);
    const KeepRule *rule = keepRuleFor(change);
    if (rule == nullptr || differsInDatesAlone(file)) {
        return true;
    }
    return keep(keeping, file.path, change.old.rows, file.examine) &&
           (file.models.empty() || keepModels(keeping, file, rule->models));
}

/// Takes away the marks that a review had not saved: the project now holds them. Those of another
/// project are kept.
bool settleMarks(Keeping &keeping, const FileWrite &project) {
    const std::string marks = markJournalPath(project.path);
    if (project.models.empty() || marks.empty() || !isRegularFile(marks)) {
        return true;
    }
    const bool other = isOfOtherSource(project);
    return (!other || keep(keeping, marks, 0, nullptr)) && keeping.transaction.takeAway(marks);
}

bool stageAll(FileTransaction &transaction, std::span<const FileWrite> files) {
    return std::all_of(files.begin(), files.end(), [&](const FileWrite &file) {
        return transaction.stage(file.path, file.text);
    });
}

bool replaceAll(Keeping &keeping, std::span<const FileWrite> files) {
    return std::all_of(files.begin(), files.end(), [&](const FileWrite &file) {
        return keepOld(keeping, file) && keeping.transaction.putInPlace(file.path) &&
               settleMarks(keeping, file); // last, for a kill must not cost them
    });
}

void reportKept(const std::vector<std::string> &names) {
    std::string list;
    for (const std::string &name : names) {
        list.append(list.empty() ? "" : ", ").append(fileNameOf(name));
    }
    if (!list.empty()) {
        ReportNotice(NoticeLevel::Status, {"What stood there before is kept as " + list});
    }
}

/// Numbers that did not fit their columns: two or more asterisks where a value begins.
int overflowsIn(std::string_view text) {
    constexpr std::string_view overflow = "**";
    int count = 0;
    for (std::size_t at = text.find(overflow); at != std::string_view::npos;
         at = text.find(overflow, text.find_first_not_of('*', at))) {
        count +=
            at > 0 && std::string_view("=,\n").find(text[at - 1]) != std::string_view::npos ? 1 : 0;
    }
    return count;
}

void reportOverflows(const FileWrite &file) {
    if (const int count = overflowsIn(file.text); count > 0) {
        ReportWarning({"WARNING: " + std::to_string(count) +
                           " numbers do not fit their columns in " +
                           std::string(fileNameOf(file.path)) + " and stand there as asterisks.",
                       "They are lost when the file is read again."});
    }
}

WriteOutcome failed(FileTransaction &transaction, std::span<const FileWrite> files) {
    transaction.takeBack();
    reportWriteFailure(files.front().path, transaction.failure());
    return {.failure = transaction.failure()};
}

} // namespace

void reportWriteFailure(const std::string &path, const std::string &reason) {
    ReportNotice(NoticeLevel::Box, {WriteFailureText, path, reason});
}

SourceFile sourceOf(const std::string &path, const FileContent &content) {
    SourceFile file;
    file.path = settledPath(path);
    file.content = content;
    std::error_code error;
    file.bytes = fs::file_size(file.path, error);
    const auto changed = fs::last_write_time(file.path, error);
    file.modified = static_cast<std::int64_t>(changed.time_since_epoch().count());
    return error ? SourceFile{} : file;
}

WriteOutcome replaceFiles(std::span<const FileWrite> files) {
    FileTransaction transaction;
    Keeping keeping{transaction, {}};
    try {
        if (!stageAll(transaction, files) || !replaceAll(keeping, files) || !transaction.commit()) {
            return failed(transaction, files);
        }
    } catch (const std::bad_alloc &) {
        transaction.takeBack();
        reportWriteFailure(files.front().path, "out of memory");
        return {.failure = "out of memory"};
    }
    for (const FileWrite &file : files) {
        *file.source = sourceOf(file.path, file.content);
        reportOverflows(file);
    }
    reportKept(keeping.names);
    return {.written = true, .kept = keeping.names};
}

WriteOutcome tryFiles(std::span<const FileWrite> files) {
    FileTransaction transaction;
    if (!stageAll(transaction, files)) {
        return failed(transaction, files);
    }
    return {.written = true};
}

} // namespace keldrin
