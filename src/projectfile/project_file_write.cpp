#include "projectfile/project_file.h"

#include "base/paths.h"
#include "messages/message_log.h"
#include "projectfile/file_content.h"
#include "projectfile/model_file.h"
#include "projectfile/replace_files.h"

#include <array>
#include <new>

namespace keldrin {

namespace {

WrittenTable composeProject(SurveyModel &model, const std::string &name, std::string &text) {
    ReportInfoLine("Writing inversion control information to " + name);
    text.reserve(4096 + dataTableRoom(model));
    STD_Namelist_Write(model, text);
    appendLabelLine(text, dataTableFormat().columns);
    ReportInfoLine("Writing TEM data to file " + name);
    return appendDataRows(text, model);
}

/// A project that is ready to be written.
struct ProjectWrite {
    FileWrite file;
    int leftOut = 0; ///< soundings of other transmitters
};

ProjectWrite prepareProject(SurveyModel &model, const std::string &path) {
    ReportInfoLine("");
    ReportInfoLine("Writing KELDRIN file");
    ReportInfoLine(path);
    ProjectWrite project;
    const WrittenTable written =
        composeProject(model, std::string(fileNameOf(path)), project.file.text);
    project.leftOut = written.leftOut;
    project.file.path = path;
    project.file.content = {
        .soundings = written.soundings, .rows = written.rows, .announced = model.SoundingCount};
    project.file.source = &model.source.project;
    project.file.examine = projectContent;
    project.file.models = modelPathOf(path);
    project.file.modelsSource = &model.source.models;
    return project;
}

void reportLeftOut(const WriteOutcome &outcome, int leftOut) {
    if (outcome.written && leftOut > 0) {
        ReportNotice(NoticeLevel::Status,
                     {std::to_string(leftOut) +
                      " soundings of other transmitters are not in the project file."});
    }
}

WriteOutcome outOfMemory(const std::string &path) {
    reportWriteFailure(path, "out of memory");
    return {.failure = "out of memory"};
}

} // namespace

WriteOutcome STD_File_Write(SurveyModel &model, const std::string &path, WriteKind kind) {
    try {
        const ProjectWrite project = prepareProject(model, path);
        const std::span files(&project.file, 1);
        WriteOutcome outcome = kind == WriteKind::Trial ? tryFiles(files) : replaceFiles(files);
        reportLeftOut(outcome, project.leftOut);
        return outcome;
    } catch (const std::bad_alloc &) {
        return outOfMemory(path);
    }
}

WriteOutcome Project_Files_Write(SurveyModel &model, const std::string &path) {
    try {
        ProjectWrite project = prepareProject(model, path);
        const std::array files = {std::move(project.file), prepareModels(model, modelPathOf(path))};
        WriteOutcome outcome = replaceFiles(files);
        reportLeftOut(outcome, project.leftOut);
        return outcome;
    } catch (const std::bad_alloc &) {
        return outOfMemory(path);
    }
}

} // namespace keldrin
