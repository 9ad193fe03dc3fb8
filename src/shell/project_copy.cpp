#include "shell/project_copy.h"

#include "base/file_operations.h"
#include "base/paths.h"
#include "base/safe_writer.h"
#include "messages/message_log.h"
#include "projectfile/file_content.h"
#include "projectfile/model_file.h"
#include "projectfile/replace_files.h"
#include "shell/invert.h"

#include <algorithm>
#include <vector>

namespace keldrin {

ProjectCopy::ProjectCopy(const std::string &projectPath) {
    project_.path = projectPath;
    project_.before = projectContent(projectPath);
    model_.path = modelPathOf(projectPath);
    model_.before = modelContent(model_.path);
    copyFile(project_);
    copyFile(model_);
}

void ProjectCopy::copyFile(File &file) {
    file.copy = copyToKeep(file.path);
    if (!file.copy.failure.empty()) {
        ReportNotice(NoticeLevel::Status,
                     {"No copy of " + std::string(fileNameOf(file.path)) +
                      " could be made before the inversion: " + file.copy.failure});
    }
}

void ProjectCopy::putBack(const File &file) {
    if (file.copy.name.empty()) {
        if (file.before.rows == 0) {
            fileOperations().remove(file.path); // the engine had begun it
        }
        return;
    }
    const WriteOutcome outcome = copyWholeFile(file.copy.name, file.path);
    if (!outcome.written) {
        reportWriteFailure(file.path, outcome.failure);
        keep_ = true;
    }
}

bool ProjectCopy::File::isTorn() const {
    return (before.whole && !now.whole) || (before.rows > 0 && now.rows == 0);
}

bool ProjectCopy::File::isGone() const {
    return before.rows > 0 && !pathExists(path);
}

bool ProjectCopy::File::isUnchanged() const {
    if (copy.name.empty()) {
        return !pathExists(path);
    }
    std::string left;
    std::string right;
    std::string failure;
    return readWholeFile(path, left, failure) && readWholeFile(copy.name, right, failure) &&
           left == right;
}

void ProjectCopy::settle(const CommandEnd &end) {
    end_ = end;
    project_.now = projectContent(project_.path);
    model_.now = modelContent(model_.path);
    torn_ = project_.isTorn() || model_.isTorn();
    less_ =
        holdsLess(project_.now, project_.before) || model_.now.soundings < model_.before.soundings;
    // The user's stop counts as torn where rows are missing; an engine may have its reasons.
    if (end.stopped && !project_.copy.name.empty() &&
        (torn_ || project_.now.rows < project_.before.rows)) {
        putBack_ = true;
        putBack(project_);
        putBack(model_);
        return;
    }
    const bool failed = end.started && !end.succeeded() && !end.stopped;
    const auto isKept = [&](const File &file, int rows) {
        FileChange change{failed && !file.isUnchanged() ? Relation::Spoiled : Relation::Left,
                          file.before, file.now};
        change.next.rows = rows;
        return keepRuleFor(change) != nullptr;
    };
    keep_ = isKept(project_, project_.now.rows) ||
            isKept(model_, std::max(model_.now.rows, model_.before.rows)); // of layers may be fewer
}

bool ProjectCopy::reportsLoss() const {
    return end_.started && !end_.stopped && keep_;
}

std::string ProjectCopy::stopText() const {
    const std::string engine(EngineName);
    return putBack_ ? "Inversion stopped while " + engine +
                          " was writing; the project is as it was before."
                    : "Inversion stopped; the project is as " + engine + " left it.";
}

std::string ProjectCopy::countsText() const {
    const auto counts = [](const FileContent &project, const FileContent &model) {
        return std::to_string(project.soundings) + " soundings, " + std::to_string(project.rows) +
               " windows, " + std::to_string(model.soundings) + " models";
    };
    return "Before: " + counts(project_.before, model_.before) +
           "; now: " + counts(project_.now, model_.now) + ".";
}

std::string ProjectCopy::causeText() const {
    const std::string engine(EngineName);
    if (end_.signal != 0) {
        return "ERROR: " + engine + " was ended by signal " + std::to_string(end_.signal) + ".";
    }
    if (end_.exitCode != 0) {
        return "ERROR: " + engine + " ended with exit code " + std::to_string(end_.exitCode) + ".";
    }
    if (project_.isGone()) {
        return "WARNING: The project was gone when " + engine + " ended.";
    }
    if (!torn_ && !less_) {
        return "WARNING: The project was not loaded again after the inversion.";
    }
    return "WARNING: " + engine +
           (torn_ ? " left a file that is not whole." : " left less than it found.");
}

std::vector<std::string> ProjectCopy::keptNames() const {
    std::vector<std::string> names;
    for (const File *file : {&project_, &model_}) {
        if (keep_ && !file->copy.name.empty()) {
            names.emplace_back(fileNameOf(file->copy.name));
        }
    }
    return names;
}

// What the engine did by itself, and where the project is as it was before.
void ProjectCopy::reportLoss() const {
    std::vector<MessageLine> lines = {causeText()};
    if (torn_ || less_) {
        lines.emplace_back(countsText());
    }
    const std::vector<std::string> names = keptNames();
    if (!keep_) {
        lines.emplace_back("The project is as it was before.");
    } else if (!names.empty()) {
        lines.emplace_back("What was there before the inversion is kept as");
        lines.insert(lines.end(), names.begin(), names.end());
    }
    ReportNotice(NoticeLevel::Box, lines);
}

void ProjectCopy::finishCopies() {
    for (File *file : {&project_, &model_}) {
        if (!keep_) {
            dropCopy(file->copy);
        } else if (!file->copy.name.empty()) {
            settleCopy(file->copy, file->path, file == &project_ ? projectContent : modelContent);
        }
    }
}

// One text, so that nothing of it is covered by the next notice.
void ProjectCopy::reportEnd(const std::string &words) const {
    std::string kept;
    for (const std::string &name : keptNames()) {
        kept.append(kept.empty() ? "Kept as it was before: " : ", ").append(name);
    }
    if (!words.empty()) {
        ReportNotice(NoticeLevel::Status, {kept + (kept.empty() ? "" : "; ") + words});
    }
}

void ProjectCopy::conclude(bool loaded, const std::string &summary) {
    keep_ = keep_ || (end_.started && !loaded);
    finishCopies();
    if (end_.stopped) {
        reportEnd(stopText());
        return;
    }
    if (end_.started && (keep_ || !end_.succeeded())) {
        reportLoss();
    }
    if (loaded && end_.succeeded()) {
        reportEnd(summary);
    }
}

} // namespace keldrin
