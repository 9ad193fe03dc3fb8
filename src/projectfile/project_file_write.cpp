#include "projectfile/project_file.h"

#include "base/paths.h"
#include "base/safe_writer.h"
#include "messages/message_log.h"
#include "projectfile/control_group.h"

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

bool anyDataLine(LineReader &reader) {
    std::string_view line;
    while (reader.next(line) == LineStatus::Line) {
        if (classifyTableLine(line) == TableLine::Data) {
            return true;
        }
    }
    return false;
}

/// True when a file holds data rows behind its control block or, where that cannot be read,
/// anywhere.
bool holdsDataRows(const std::string &path) {
    LineReader reader(MostGroupLine);
    if (!isRegularFile(path)) {
        return false;
    }
    if (!reader.open(path)) {
        return true; // what cannot be looked at is not thrown away
    }
    ControlValues control;
    ControlGroup group{control, {}};
    std::string faultyLine;
    if (readControlGroup(reader, group, faultyLine) == GroupStatus::Read) {
        return anyDataLine(reader);
    }
    LineReader again(MostGroupLine);
    return again.open(path) && anyDataLine(again);
}

} // namespace

int STD_File_Write(SurveyModel &model, const std::string &path) {
    const std::string name(fileNameOf(path));
    ReportInfoLine("");
    ReportInfoLine("Writing KELDRIN file");
    ReportInfoLine(path);
    std::string reason;
    try {
        std::string text;
        const WrittenTable written = composeProject(model, name, text);
        const bool safe = written.rows > 0 || !holdsDataRows(path) || keepOldFile(path, reason);
        if (!safe || !writeWholeFile(path, text, reason)) {
            reportWriteFailure(path, reason);
        } else if (written.leftOut > 0) {
            ReportInfoLine(std::to_string(written.leftOut) +
                           " soundings of other transmitters are not in the project file.");
        }
    } catch (const std::bad_alloc &) {
        reportWriteFailure(path, "out of memory");
    }
    return 0;
}

} // namespace keldrin
