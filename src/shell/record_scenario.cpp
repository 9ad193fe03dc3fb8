#include "shell/record_scenario.h"

#include "base/clock.h"
#include "base/paths.h"
#include "base/version.h"
#include "messages/message_log.h"
#include "projectfile/file_content.h"
#include "projectfile/kept_files.h"
#include "toolkit/scripted/recorder.h"
#include "toolkit/toolkit.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace keldrin {

namespace {

struct Record {
    Recorder recorder;
    std::string project;   ///< that is loaded; blank: none
    std::string fromStart; ///< file of a record that begins with the program
    bool saysSo = true;    ///< the status bar says that it records
    bool hasBegun = false;
};

/// One per process, as the toolkit is, which reports to it what the user does.
Record &theRecord() {
    static Record record;
    return record;
}

// The log would be drawn over the page at which the user records.
void reportFailure(const std::string &words, const std::string &path) {
    ReportWarning({words, path});
    ToolkitNotice(words);
}

void endRecord() {
    Recorder &recorder = theRecord().recorder;
    const int lines = recorder.count();
    recorder.stop();
    ToolkitStatus(StatusPart::Record, "");
    ToolkitNotice("Recorded " + std::to_string(lines) + (lines == 1 ? " line: " : " lines: ") +
                  std::string(fileNameOf(recorder.path())));
}

void endFailedRecord(const std::string &path) {
    ToolkitStatus(StatusPart::Record, "");
    reportFailure("ERROR: The record ends here, it cannot be written.", path);
}

// An older record is kept. False when it cannot be.
bool makeRoom(const std::string &path) {
    if (!pathExists(path)) {
        return true;
    }
    const std::string kept = keptName(path, 0, nullptr);
    std::error_code error;
    std::filesystem::rename(path, kept, error);
    if (!error) {
        ToolkitNotice(std::string(fileNameOf(path)) + " was kept as " +
                      std::string(fileNameOf(kept)));
    }
    return !error;
}

std::vector<std::string> heading(const std::string &path, const std::string &file) {
    const std::string words =
        std::string(fileNameOf(path)) + (file.empty() ? "" : " " + std::string(fileNameOf(file)));
    return {writerStamp(clockNow()), "Play it with: keldrin-batch play " + words,
            "in the window:  keldrin --drive " + words};
}

void beginRecord(const std::string &path, const std::string &file, bool fromStart) {
    Record &record = theRecord();
    if (!makeRoom(path) || !record.recorder.start(path, heading(path, file), fromStart)) {
        reportFailure("ERROR: The record cannot be written.", path);
        return;
    }
    record.hasBegun = true;
    if (record.saysSo) {
        ToolkitStatus(StatusPart::Record, "Recording " + std::string(fileNameOf(path)));
    }
}

void toggleRecord() {
    Record &record = theRecord();
    if (record.recorder.isOn()) {
        endRecord();
        record.saysSo = true;
    } else if (record.project.empty()) {
        ToolkitNotice("Record needs a project; open one first.");
    } else {
        beginRecord(std::string(withoutExtension(record.project)) + ".scn", record.project, false);
    }
}

} // namespace

void offerRecord() {
    Record &record = theRecord();
    record.recorder.onFailure = endFailedRecord;
    ToolkitRecord(&record.recorder, toggleRecord);
    if (!record.fromStart.empty()) {
        beginRecord(std::exchange(record.fromStart, {}), ToolkitArgument(1), true);
    }
}

void recordFromStart(const std::string &path, bool saysSo) {
    theRecord().fromStart = path;
    theRecord().saysSo = saysSo;
}

void recordRests(const std::string &project, std::vector<std::string> lines) {
    theRecord().project = project;
    theRecord().recorder.rests(std::move(lines));
}

bool recordHasBegun() {
    return std::exchange(theRecord().hasBegun, false);
}

} // namespace keldrin
