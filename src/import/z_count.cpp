#include "import/import_steps.h"
#include "import/z_file.h"
#include "messages/message_log.h"
#include "messages/watched_reading.h"

namespace keldrin {

namespace {

LineEntry &onlyLine(SurveyModel &model) {
    LineIdentity identity;
    identity.take(model.metadata);
    return currentLineEntry(model.lines, identity, model.metadata);
}

void countReadings(ZWalk &walk, LineEntry &entry) {
    ReportInfoLine("Counting numerical data.");
    double lastStation = MissingValue;
    ZReading reading;
    std::string_view line;
    while (walk.nextReading(reading, line)) {
        if (!sameFileStation(reading.station, lastStation)) {
            lastStation = reading.station;
            ++entry.Transients;
            ++entry.ComponentTransients[AxisZ];
        }
    }
}

// A station 9999.0 ends a file as its end line does; what stands after it is not lost silently.
void warnOfReadingsBehindEnd(ZWalk &walk) {
    LineNotice notice;
    ZReading reading;
    std::string_view line;
    while (walk.reader.next(line) == LineStatus::Line) {
        if (readZFields(line, reading) && reading.code == ZReadingCode) {
            notice.note(walk.reader.lineNumber(), line);
        }
    }
    notice.report(walk.name, "Readings behind the line that ends the data", "They are not read.");
}

} // namespace

int Z_Count(SurveyModel &model, const std::string &fileName) {
    resetLines(model.lines);
    ReportInfoLine("Counting TEM data in file");
    ReportInfoLine(fileName);
    ZWalk walk;
    if (!walk.open(fileName)) {
        return 1;
    }
    WatchedReading watched(walk.reader, fileName);
    LineEntry &entry = onlyLine(model);
    if (walk.scanHead()) {
        countReadings(walk, entry);
    }
    if (watched.stopped()) {
        return 1;
    }
    if (walk.ended) {
        warnOfReadingsBehindEnd(walk);
    }
    noteFileEnd(walk.reader, walk.name);
    walk.commas.report(walk.name, "Readings with commas for decimal points",
                       "They cannot be read.");
    if (entry.Transients < 1) {
        ReportError({"ERROR while reading " + walk.name, "Found no valid data"});
        return 1;
    }
    entry.scaling = model.preset;
    ReportInfoLine("Found 1 line and " + std::to_string(entry.Transients) + " transients in " +
                   walk.name);
    return 0;
}

} // namespace keldrin
