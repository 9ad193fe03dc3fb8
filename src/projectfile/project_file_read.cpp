#include "projectfile/project_file.h"

#include "base/paths.h"
#include "messages/message_log.h"
#include "messages/questions.h"
#include "messages/watched_reading.h"
#include "projectfile/control_group.h"
#include "projectfile/replace_files.h"
#include "projectfile/table_file.h"

#include <cmath>

namespace keldrin {

namespace {

constexpr FileQuestion ProjectQuestion = {"KELDRIN data file|*.std|", "Open KELDRIN data file."};

/// Azimuth from the first sounding to the last, in degrees; 90 when they lie together.
float trendAzimuth(const SurveyModel &model) {
    constexpr float defaultAzimuth = 90.0F;
    if (model.SoundingCount < 2) {
        return defaultAzimuth;
    }
    const SoundingRecord &first = model.soundings().front();
    const SoundingRecord &last = model.soundings().back();
    const auto east = static_cast<float>(last.East - first.East);
    const auto north = static_cast<float>(last.North - first.North);
    return east * east + north * north > 1.0F ? 57.29578F * std::atan2(east, north)
                                              : defaultAzimuth;
}

/// Fills azimuths that the file does not give.
void settleAzimuths(SurveyModel &model) {
    ControlValues &control = model.control;
    if (!isPresent(control.LineAzimuth)) {
        control.LineAzimuth =
            isPresent(control.TxAzimuth) ? control.TxAzimuth : trendAzimuth(model);
    }
    if (!isPresent(control.TxAzimuth)) {
        control.TxAzimuth = control.LineAzimuth;
    }
}

/// Reads the control block and the table.
int readParts(SurveyModel &model, LineReader &reader, const std::string &path,
              DataTableLines *lines) {
    int status = STD_Namelist_Read(model, reader, path);
    if (status == 0) {
        status = STD_Data_Read(model, reader, path, lines);
    }
    if (status == 0) {
        settleAzimuths(model);
    }
    return status;
}

int readProject(SurveyModel &model, const std::string &path) {
    LineReader reader(MostGroupLine);
    if (!reader.open(path)) {
        ReportNotice(NoticeLevel::Box,
                     {"ERROR while opening KELDRIN file", path, reader.errorText()});
        return 1;
    }
    WatchedReading watched(reader, path);
    const int status = readParts(model, reader, path, nullptr);
    if (watched.stopped()) {
        return 1;
    }
    return status;
}

} // namespace

int STD_File_Read_Text(SurveyModel &model, LineReader &reader, const std::string &path,
                       DataTableLines &lines) {
    const int status = readParts(model, reader, path, &lines);
    if (status != 0) {
        model.SoundingCount = 0;
    }
    return status;
}

int STD_File_Read(SurveyModel &model, std::string &path) {
    path = existingForm(path);
    if (!pathExists(path) && !askForFile(ProjectQuestion, path)) {
        model.SoundingCount = 0;
        return 1;
    }
    ReportInfoLine("");
    ReportInfoLine("Reading data from");
    ReportInfoLine(path);
    model.source = {};
    // Looked at before it is read: a change meanwhile must be seen by the next write.
    const SourceFile file = sourceOf(path, {});
    const int status = readProject(model, path);
    if (status == 0) {
        const FileContent content = model.source.project.content;
        model.source.project = file;
        model.source.project.content = content;
    } else {
        model.source = {};
        model.SoundingCount = 0;
    }
    return status;
}

} // namespace keldrin
