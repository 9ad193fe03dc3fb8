#include "base/index.h"
#include "import/amira/file.h"
#include "import/amira/rows.h"
#include "import/amira/times.h"
#include "import/window_tables.h"
#include "messages/message_log.h"
#include "messages/questions.h"
#include "messages/watched_reading.h"
#include "projectfile/table_file.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <string>

namespace keldrin {

namespace {

constexpr std::size_t LeastRow = 3;  ///< of a row
constexpr float LargestTurn = 10.0F; ///< degrees between loop and its azimuth

constexpr std::array<NoticeWords, AmiraNotices> NoticeTexts = {{
    {"Rows of components X and Y", "In-Loop and Coincident-Loop data are of component Z."},
    {"Rows whose channels and times differ in number",
     "Only channels with a value and a time are read."},
    {"Rows with cells that cannot be read", "These cells are passed over."},
    {"Windows at or before time 0", "They are not read."},
    {"Impossible stations or times", "They are not read."},
    {"Windows of impossible width", "The width is taken from the centres."},
    {"Rows without LOOP and XRXOFFSET",
     "Their receiver station is taken as that of the transmitter."},
}};

// The channel file of the keyword or of the data file's name, else the lists of the header, else
// the one that the user chooses.
int readChannelTimes(const std::string &fileName, AmiraRecord &record) {
    std::string path;
    if (!findChannelFile(fileName, record.ChannelFile.view(), path)) {
        record.times.NumChannels = listedChannels(record.times);
        if (record.times.NumChannels > 0) {
            return 0;
        }
        const std::string expected = path;
        if (!askForFile({"AMIRA TEM channel time files|*.chn|", "Open file holding channel time."},
                        path)) {
            const std::string why = "WARNING: Could not find channel file " + expected;
            if (questions().existingFile) {
                ReportInfoLine(why); // the user has just declined to choose one
            } else {
                ReportError({why});
            }
            return StopsFile;
        }
    }
    const int status = AMR_Read_Channel_File(path, record);
    return status >= StopsFile ? status : 0; // without a channel no row will count
}

// Makes the soundings' windows of their channels. A sounding that is left without one is dropped.
void finishSoundings(AmiraReadPass &pass, SurveyModel &model) {
    const int arrayIndex = pass.chosen.arrayIndex;
    for (int i = 0; i < model.SoundingCount; ++i) {
        SoundingRecord &record = model.hTrn[asIndex(i)];
        dropEmptyWindows(record, i, arrayIndex, pass.tables);
        finishWindows(record, i, arrayIndex, pass.tables);
    }
    const std::span<SoundingRecord> soundings = model.soundings();
    const auto end = std::remove_if(soundings.begin(), soundings.end(),
                                    [](const SoundingRecord &r) { return r.NumTW == 0; });
    const int kept = static_cast<int>(end - soundings.begin());
    if (kept > 0 && kept < model.SoundingCount) {
        ReportWarning({"WARNING: " + std::to_string(model.SoundingCount - kept) +
                       " soundings without a usable window are not read."});
    }
    model.SoundingCount = kept;
}

// A loop that does not lie as its azimuth says may have its sides exchanged.
void warnOfTurnedLoop(const AmiraRecord &record, const ControlValues &control) {
    if (!isPresent(record.sideAzimuth) || !isPresent(control.TxAzimuth)) {
        return;
    }
    const bool isSquare =
        std::fabs(record.XTxLength - record.YTxLength) <= 0.01F * record.XTxLength;
    const float symmetry = isSquare ? 90.0F : 180.0F;
    const float turn = std::fabs(std::remainder(record.sideAzimuth - control.TxAzimuth, symmetry));
    if (turn > LargestTurn) {
        ReportWarning({"AMIRA input WARNING: the loop's first side lies at " +
                           std::to_string(nearestInt(record.sideAzimuth)) + " degrees",
                       "The azimuth of the loop is " +
                           std::to_string(nearestInt(control.TxAzimuth)) +
                           " degrees: check it and the loop size."});
    }
}

// Keywords after the last row of the chosen line belong to it if no other line follows, except
// those that affect reading the rows.
AmiraRecord closingRecord(const AmiraReadPass &pass) {
    const AmiraRecord &chosen = pass.chosen;
    if (!pass.inChosenLine) {
        return chosen;
    }
    AmiraRecord record = pass.walk.record;
    if (record.unitIndex != chosen.unitIndex || record.TurnOff != chosen.TurnOff ||
        record.InitDelay != chosen.InitDelay || record.Current != chosen.Current ||
        record.baseFrequency() != chosen.baseFrequency()) {
        ReportWarning({"AMIRA input WARNING: keywords behind the last row of " + pass.walk.name,
                       "change unit, times, current or frequency. They come too late for the rows "
                       "and are not used."});
    }
    record.Line = chosen.Line;
    record.LineNumber = chosen.LineNumber;
    record.Config = chosen.Config;
    record.arrayIndex = chosen.arrayIndex;
    record.TEMUnit = chosen.TEMUnit;
    record.unitIndex = chosen.unitIndex;
    record.TurnOff = chosen.TurnOff;
    record.TxFreq = chosen.TxFreq;
    record.hasTxFreq = chosen.hasTxFreq;
    record.frequencyNumber = chosen.frequencyNumber;
    record.unitIsGuessed = chosen.unitIsGuessed;
    record.hasConfig = chosen.hasConfig;
    return record;
}

// Areas play a part in data in uV/A only.
GivenSettings givenSettings(const AmiraRecord &record, const ImportPreset &preset) {
    GivenSettings given;
    given.loop = record.XTxLength > 0.0F;
    given.frequency = record.hasTxFreq || isPresent(record.frequencyNumber);
    given.coilArea = record.hasArea || record.unitIndex != AmiraMicrovolts ||
                     preset.RxAreaXYZ != LineScaling{}.RxAreaXYZ;
    given.array = record.hasConfig;
    given.centre = isPresent(record.XTxCenter) && isPresent(record.YTxCenter);
    return given;
}

void finishControlValues(const AmiraReadPass &pass, SurveyModel &model) {
    AmiraRecord record = closingRecord(pass);
    const std::size_t unit = asIndex(model.control.LengthUnitsIndex - 1);
    AMR_Loop_Geometry(record, static_cast<double>(LengthUnitMetres[unit]));
    settleLoopSides(record);
    AMR_To_Control_Values(record, model.control);
    warnOfTurnedLoop(record, model.control);
    warnOfGuesses(record);
    warnOfDefaults(pass.walk.name, givenSettings(record, model.preset), model);
}

void reportNotices(const AmiraReadPass &pass) {
    for (std::size_t i = 0; i < AmiraNotices; ++i) {
        pass.notices[i].report(pass.walk.name, NoticeTexts[i].what, NoticeTexts[i].consequence);
    }
    pass.walk.rowsAsKeywords.report(pass.walk.name, "Rows that hold \":\" or \"=\"",
                                    "They are taken as keywords.");
}

} // namespace

int AMR_Read(SurveyModel &model, const std::string &fileName, std::string_view lineLabel) {
    model.preset.TxByOffset.clear();
    AmiraReadPass pass;
    pass.walk.quiet = true;
    int status = pass.walk.open(model, fileName);
    if (status != 0) {
        return status;
    }
    WatchedReading watched(pass.walk.reader, fileName);
    status = pass.walk.readHeader();
    if (status == 0) {
        status = readChannelTimes(fileName, pass.walk.record);
    }
    if (status != 0) {
        return status;
    }
    if (!pass.tables.allocate(model.SoundingCapacity())) {
        ReportError({"AMR_Read.ERROR", "while allocating work tables for " +
                                           std::to_string(model.SoundingCapacity()) +
                                           " soundings"});
        return 1;
    }
    ReportInfoLine("Reading numerical data.");
    std::string_view line;
    while (!pass.full && pass.walk.nextRow(line, LeastRow)) {
        AMR_Read_Row(pass, model, lineLabel, line);
    }
    if (pass.walk.stopStatus >= StopsFile) {
        return pass.walk.stopStatus;
    }
    if (watched.stopped()) {
        model.SoundingCount = 0;
        return 1;
    }
    reportNotices(pass);
    finishSoundings(pass, model);
    if (model.SoundingCount == 0) {
        ReportError({"ERROR: No valid I- or Z-component data found in " + pass.walk.name});
        return 1;
    }
    ReportInfoLine(std::to_string(model.SoundingCount) + " soundings have been read from " +
                   pass.walk.name);
    finishControlValues(pass, model);
    return 0;
}

} // namespace keldrin
