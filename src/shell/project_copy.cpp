#include "shell/project_copy.h"

#include "base/paths.h"
#include "messages/message_log.h"
#include "projectfile/kept_file.h"
#include "projectfile/model_file.h"
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
    project_.before = projectExtent(projectPath);
    model_.path = modelPathOf(projectPath);
    model_.before = modelExtent(model_.path);
    const std::string base = freeBase(project_.path, model_.path);
    for (File *file : {&project_, &model_}) {
        if (isRegularFile(file->path)) {
            file->copy = copyPath(base, file->path);
            copyFile(*file);
        }
    }
}

void ProjectCopy::copyFile(File &file) {
    std::string reason;
    if (!copyWholeFile(file.path, file.copy, reason)) {
        ReportInfoLine("No copy of " + std::string(fileNameOf(file.path)) +
                       " could be made before the inversion: " + reason);
        file.copy.clear();
    }
}

void ProjectCopy::putBack(const File &file) {
    std::string reason;
    if (file.copy.empty()) {
        if (file.before.rows == 0) {
            removeQuietly(file.path); // the engine had begun it
        }
    } else if (!copyWholeFile(file.copy, file.path, reason)) {
        reportWriteFailure(file.path, reason);
        keep_ = true;
    }
}

void ProjectCopy::settle(bool stopped) {
    stopped_ = stopped;
    const TableExtent project = projectExtent(project_.path);
    const TableExtent model = modelExtent(model_.path);
    const bool torn = isTorn(project, project_.before) || isTorn(model, model_.before);
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
