#include "base/index.h"
#include "import/import_steps.h"
#include "import/window_tables.h"
#include "import/z_file.h"
#include "messages/message_log.h"
#include "messages/watched_reading.h"

#include <array>
#include <cmath>

namespace keldrin {

namespace {

// Times in msec, so that the widths between them fit the column of a project too.
constexpr float LeastTime = 1.0E-6F;
constexpr float GreatestTime = 1.0E4F;

/// Why a reading needs a word.
enum Notice : std::size_t { EmptyField, NoTime, Impossible, WindowsFull, Notices };

constexpr std::string_view Dropped = "They are dropped.";
constexpr std::array<NoticeWords, Notices> ZNoticeTexts = {{
    {"Readings without a station or a magnitude", "What is empty counts as 0."},
    {"Readings without a time above 0", Dropped},
    {"Readings of an impossible station, time or magnitude", Dropped},
    {"Readings beyond the 128th window of their sounding", Dropped},
}};

struct ZReadPass {
    ZWalk walk;
    double lastStation = MissingValue;
    std::array<LineNotice, Notices> notices;

    void note(Notice notice, std::string_view line) {
        notices[notice].note(walk.reader.lineNumber(), line);
    }
};

// Opens the next sounding. False when the table is full (reported).
bool openSounding(ZReadPass &pass, SurveyModel &model, double station) {
    pass.lastStation = station;
    if (model.SoundingCount >= model.SoundingCapacity()) {
        ReportError({"WARNING: More than " + std::to_string(model.SoundingCapacity()) +
                         " soundings in " + pass.walk.name,
                     "Excess data will be dropped."});
        return false;
    }
    SoundingRecord &record = model.sounding(++model.SoundingCount);
    record.Station = rescaledStation(model.preset, station);
    record.Elevation = MissingValue;
    record.NumTW = 0;
    return true;
}

bool isPossible(const ImportPreset &preset, double station, float time, float dBdt) {
    return isHoldableStation(station) && isHoldableStation(rescaledStation(preset, station)) &&
           time >= LeastTime && time <= GreatestTime && std::fabs(dBdt) <= LargestReading;
}

bool addWindow(SoundingRecord &record, float time, float dBdt) {
    if (record.NumTW >= MaxWindows) {
        return false;
    }
    const std::size_t window = asIndex(record.NumTW++);
    record.TWcenter[window] = time;
    record.TEMobs[window] = dBdt;
    record.TEMerr[window] = 1.0F; // percent: this format carries no errors
    record.TEMwgt[window][AxisZ] = 1.0F;
    return true;
}

// Puts a reading into its sounding. False when the table of soundings is full.
bool takeReading(ZReadPass &pass, SurveyModel &model, const ZReading &reading,
                 std::string_view line) {
    const float dBdt = 1000.0F * reading.magnitude / model.preset.RxAreaXYZ[AxisZ];
    if (!(reading.time > 0.0F)) {
        pass.note(NoTime, line);
        return true;
    }
    if (!isPossible(model.preset, reading.station, reading.time, dBdt)) {
        pass.note(Impossible, line);
        return true;
    }
    const bool opens =
        model.SoundingCount == 0 || !sameFileStation(reading.station, pass.lastStation);
    if (opens && !openSounding(pass, model, reading.station)) {
        return false;
    }
    if (reading.hasEmptyField) {
        pass.note(EmptyField, line);
    }
    if (!addWindow(model.sounding(model.SoundingCount), reading.time, dBdt)) {
        pass.note(WindowsFull, line);
    }
    return true;
}

void readReadings(ZReadPass &pass, SurveyModel &model) {
    ReportInfoLine("Reading numerical data.");
    ZReading reading;
    std::string_view line;
    while (pass.walk.nextReading(reading, line) && takeReading(pass, model, reading, line)) {
    }
    for (std::size_t i = 0; i < Notices; ++i) {
        pass.notices[i].report(pass.walk.name, ZNoticeTexts[i].what, ZNoticeTexts[i].consequence);
    }
    if (pass.walk.linesOfOtherCode > 0) {
        ReportInfoLine("Lines that are no readings, passed over in " + pass.walk.name + ": " +
                       std::to_string(pass.walk.linesOfOtherCode));
    }
}

} // namespace

int Z_Read(SurveyModel &model, const std::string &fileName, std::string_view /*lineLabel*/) {
    model.SoundingCount = 0;
    ReportInfoLine("Reading TEM data from file");
    ReportInfoLine(fileName);
    ZReadPass pass;
    if (!pass.walk.open(fileName)) {
        return 1;
    }
    WatchedReading watched(pass.walk.reader, fileName);
    if (pass.walk.scanHead()) {
        readReadings(pass, model);
    }
    if (watched.stopped()) {
        model.SoundingCount = 0;
        return 1;
    }
    setTEMUnits(model.control, NanovoltPerAmpereSquareMetre);
    if (model.SoundingCount < 1) {
        ReportError({"ERROR while reading " + pass.walk.name});
        return 1;
    }
    GivenSettings given = givenSettings(model);
    settleLoopFromVertices(model, given);
    warnOfDefaults(pass.walk.name, given, model);
    ReportInfoLine(std::to_string(model.SoundingCount) + " soundings have been read from " +
                   pass.walk.name);
    return 0;
}

} // namespace keldrin
