#include "shell/project_copy.h"

#include "base/paths.h"
#include "messages/message_log.h"
#include "projectfile/file_content.h"
#include "projectfile/model_file.h"
#include "projectfile/replace_files.h"
#include "shell/invert.h"

#include <filesystem>
#include <system_error>

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
        ReportInfoLine("No copy of " + std::string(fileNameOf(file.path)) +
                       " could be made before the inversion: " + outcome.failure);
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

void ProjectCopy::settle(bool stopped) {
    stopped_ = stopped;
    const FileContent project = projectContent(project_.path);
    const FileContent model = modelContent(model_.path);
    const bool torn = (project_.before.whole && !project.whole) ||
                      (model_.before.whole && !model.whole) ||
                      (project_.before.rows > 0 && project.rows == 0) ||
                      (model_.before.rows > 0 && model.rows == 0);
    // An engine that ends by itself may have its reasons to leave fewer rows.
    const bool cut = stopped && project.rows < project_.before.rows;
    if (stopped && (torn || cut) && !project_.copy.empty()) {
        putBack_ = true;
        putBack(project_);
        putBack(model_);
    } else {
        keep_ = torn || (stopped && model.rows < model_.before.rows);
    }
}

void ProjectCopy::conclude(bool loaded) {
    if (stopped_) {
        const std::string engine(EngineName);
        ReportInfoLine(putBack_ ? "Inversion stopped while " + engine +
                                      " was writing; the project is as it was before."
                                : "Inversion stopped; the project is as " + engine + " left it.");
    }
    if (project_.copy.empty()) {
        return;
    }
    if (keep_ || !loaded) {
        ReportInfoLine("The project as it was before the inversion is kept in");
        ReportInfoLine(project_.copy);
        return;
    }
    removeQuietly(project_.copy);
    if (!model_.copy.empty()) {
        removeQuietly(model_.copy);
    }
}

} // namespace keldrin
