#include "shell/project_copy.h"

#include "base/file_operations.h"
#include "base/paths.h"
#include "messages/message_log.h"
#include "projectfile/file_content.h"
#include "projectfile/model_file.h"
#include "projectfile/replace_files.h"
#include "shell/invert.h"

#include <filesystem>
#include <system_error>
#include <vector>

namespace keldrin {

namespace {

std::string copyPath(const std::string &base, const std::string &path) {
    return base + std::string(extensionOf(path));
}

// A copy that was kept before may be all that is left of a project.
std::string freeBase(const std::string &project, const std::string &model) {
    const std::string first = std::string(withoutExtension(project)) + ".before-inversion";
    std::string base = first;
    for (int n = 2; pathExists(copyPath(base, project)) || pathExists(copyPath(base, model)); ++n) {
        base = first + "-" + std::to_string(n);
    }
    return base;
}

void removeQuietly(const std::string &path) {
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
}

} // namespace

ProjectCopy::ProjectCopy(const std::string &projectPath) {
    project_.path = projectPath;
    project_.before = projectContent(projectPath);
    model_.path = modelPathOf(projectPath);
    model_.before = modelContent(model_.path);
    const std::string base = freeBase(project_.path, model_.path);
    for (File *file : {&project_, &model_}) {
        if (isRegularFile(file->path)) {
            file->copy = copyPath(base, file->path);
            copyFile(*file);
        }
    }
}

void ProjectCopy::copyFile(File &file) {
    const WriteOutcome outcome = copyWholeFile(file.path, file.copy);
    if (!outcome.written) {
        ReportNotice(NoticeLevel::Status,
                     {"No copy of " + std::string(fileNameOf(file.path)) +
                      " could be made before the inversion: " + outcome.failure});
        file.copy.clear();
    }
}

void ProjectCopy::putBack(const File &file) {
    if (file.copy.empty()) {
        if (file.before.rows == 0) {
            removeQuietly(file.path); // the engine had begun it
        }
        return;
    }
    const WriteOutcome outcome = copyWholeFile(file.copy, file.path);
    if (!outcome.written) {
        reportWriteFailure(file.path, outcome.failure);
        keep_ = true;
    }
}

bool ProjectCopy::File::isTorn() const {
    return (before.whole && !now.whole) || (before.rows > 0 && now.rows == 0);
}

bool ProjectCopy::File::isUnchanged() const {
    if (copy.empty()) {
        return !pathExists(path);
    }
    std::string left;
    std::string right;
    std::string failure;
    return readWholeFile(path, left, failure) && readWholeFile(copy, right, failure) &&
           left == right;
}

void ProjectCopy::settle(const CommandEnd &end) {
    end_ = end;
    project_.now = projectContent(project_.path);
    model_.now = modelContent(model_.path);
    torn_ = project_.isTorn() || model_.isTorn();
    less_ = holdsLess(project_.now, project_.before) ||
            model_.now.soundings < model_.before.soundings; // of layers there may be fewer
    const bool failed = end.started && !end.succeeded();
    // The user's stop counts as torn where rows are missing; an engine may have its reasons.
    if (end.stopped && !project_.copy.empty() &&
        (torn_ || project_.now.rows < project_.before.rows)) {
        putBack_ = true;
        putBack(project_);
        putBack(model_);
    } else if (torn_ || less_) {
        keep_ = true;
    } else if (failed && !end.stopped) {
        keep_ = !project_.isUnchanged() || !model_.isUnchanged();
    }
}

void ProjectCopy::tellStop() const {
    const std::string engine(EngineName);
    ReportNotice(NoticeLevel::Status,
                 {putBack_ ? "Inversion stopped while " + engine +
                                 " was writing; the project is as it was before."
                           : "Inversion stopped; the project is as " + engine + " left it."});
}

std::string ProjectCopy::countsText() const {
    const auto counts = [](const FileContent &project, const FileContent &model) {
        return std::to_string(project.soundings) + " soundings, " + std::to_string(project.rows) +
               " windows, " + std::to_string(model.soundings) + " models";
    };
    return "Before: " + counts(project_.before, model_.before) +
           "; now: " + counts(project_.now, model_.now) + ".";
}

// What the engine did by itself, and where the project is as it was before.
void ProjectCopy::tellLoss() const {
    std::vector<MessageLine> lines;
    const std::string engine(EngineName);
    if (end_.signal != 0) {
        lines.emplace_back("ERROR: " + engine + " was ended by signal " +
                           std::to_string(end_.signal) + ".");
    } else if (end_.exitCode != 0) {
        lines.emplace_back("ERROR: " + engine + " ended with exit code " +
                           std::to_string(end_.exitCode) + ".");
    } else {
        lines.emplace_back(
            "WARNING: " + engine +
            (torn_ ? " left a file that is not whole." : " left less than it found."));
    }
    if (torn_ || less_) {
        lines.emplace_back(countsText());
    }
    if (!keep_) {
        lines.emplace_back("The project is as it was before.");
    } else if (!project_.copy.empty()) {
        lines.emplace_back("The project as it was before the inversion is kept in");
        lines.emplace_back(project_.copy);
    }
    ReportNotice(NoticeLevel::Box, lines);
}

void ProjectCopy::conclude(bool loaded) {
    keep_ = keep_ || !loaded;
    if (end_.stopped) {
        tellStop();
    }
    if (keep_ && end_.stopped && !project_.copy.empty()) {
        ReportNotice(NoticeLevel::Status,
                     {"The project as it was before the inversion is kept in " +
                      std::string(fileNameOf(project_.copy))});
    } else if (end_.started && !end_.stopped && (keep_ || !end_.succeeded())) {
        tellLoss();
    }
    for (const File *file : {&project_, &model_}) {
        if (!keep_ && !file->copy.empty()) {
            removeQuietly(file->copy);
        }
    }
}

} // namespace keldrin
