#include "base/free_form.h"
#include "import/amira_file.h"
#include "import/amira_times.h"
#include "import/window_tables.h"
#include "messages/message_log.h"
#include "messages/watched_reading.h"
#include "projectfile/table_file.h"
#include "text/cell_report.h"
#include "text/value_readers.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace keldrin {

namespace {

constexpr std::size_t LeastLength = 3; ///< of a row
constexpr float LargestTurn = 10.0F;   ///< degrees between loop and its azimuth

/// Why the user must know of rows.
enum Notice : std::size_t { NoComponent, OtherCount, UnreadCells, NoLoop, Notices };

struct NoticeWords {
    std::string_view what;
    std::string_view consequence;
};

constexpr std::array<NoticeWords, Notices> Words = {{
    {"Rows of an unknown component", "They are passed over."},
    {"Rows whose channels and times differ in number",
     "Only channels with a value and a time are read."},
    {"Rows with cells that cannot be read", "These cells are passed over."},
    {"Rows without a loop number", "Their receiver station is taken as that of the transmitter."},
}};

struct ReadPass {
    AmiraWalk walk;
    WindowTables tables;
    std::array<LineNotice, Notices> notices;
    AmiraRecord chosen;        ///< in force at the last row of the chosen line
    bool inChosenLine = false; ///< the last row was one of it
    bool full = false;         ///< no room for another sounding
    bool noCurrentTold = false;

    void note(Notice notice, std::string_view line) { notices[notice].note(walk.number(), line); }
};

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
        if (!ToolkitFileChooser("AMIRA TEM channel time files|*.chn|", 10, path,
                                "Open file holding channel time.")) {
            ReportWarning({"WARNING: Could not find channel file " + expected});
            return StopsFile;
        }
    }
    const int status = AMR_Read_Channel_File(path, record);
    return status >= StopsFile ? status : 0; // without a channel no row will count
}

// A number of the row over the value in force.
void takeNumber(ReadPass &pass, AmiraVariable variable, std::string_view line, double &value) {
    const std::string_view cell = pass.walk.cell(variable);
    if (AMR_Number(pass.walk.number(), cell, value) == CellEmpty && !isEmptyCell(cell)) {
        pass.note(UnreadCells, line);
    }
}

void takeReal(const AmiraWalk &walk, AmiraVariable variable, std::string_view label,
              std::string_view line, float &value) {
    float read = 0.0F;
    if (walk.hasColumn(variable) &&
        Val_Read_R4({walk.number(), line}, walk.cell(variable), label, value, read) == CellRead) {
        value = read;
    }
}

struct Position {
    double east = MissingValue;
    double north = MissingValue;
    double elevation = MissingValue;
};

Position takeColumns(ReadPass &pass, std::string_view line) {
    AmiraWalk &walk = pass.walk;
    AmiraRecord &record = walk.record;
    record.hasLoop = record.hasLoop || walk.hasColumn(AmiraLoop);
    takeNumber(pass, AmiraLoop, line, record.LoopNumber);
    Position position = {record.East, record.North, record.Elevation};
    takeNumber(pass, AmiraEast, line, position.east);
    takeNumber(pass, AmiraNorth, line, position.north);
    takeNumber(pass, AmiraElevation, line, position.elevation);
    takeReal(walk, AmiraTxLength, "LSide", line, record.XTxLength);
    takeReal(walk, AmiraCurrent, "TxAmp", line, record.Current);
    takeReal(walk, AmiraTurnOff, "TurnOff", line, record.TurnOff);
    return position;
}

// Channels of the row that have times; 0 leaves the row.
int channelsOfRow(ReadPass &pass, std::string_view line) {
    const AmiraWalk &walk = pass.walk;
    const int first = walk.columns.iVarCol[AmiraChannel1];
    const int times = walk.record.times.NumChannels;
    if (times == 0) {
        return 0;
    }
    const int cells = static_cast<int>(walk.cells.cells.size()) - first + 1;
    int told = cells;
    if (walk.hasColumn(AmiraNumTimes)) {
        const int status =
            Val_Read_Int({walk.number(), line}, walk.cell(AmiraNumTimes), "NCH", cells, told);
        if (status > CellRead) {
            return 0;
        }
    }
    if (told != times || cells < told) {
        pass.note(OtherCount, line);
    }
    const int room = AmiraMaxColumns - first + 1;
    if (std::min(times, told) > room) {
        ReportError({"WARNING: Could not read all channels in:", line});
    }
    return std::max(0, std::min({times, told, room}));
}

/// Puts a coordinate of the row into its sounding. A later row without it takes nothing away.
void setCoordinate(double &target, double value, bool isNew) {
    if (isNew || isPresent(value)) {
        target = value;
    }
}

// Finds or adds the sounding of a row. Below 0 when there is no room for it (reported).
int soundingOfRow(ReadPass &pass, SurveyModel &model, double station, const Position &position,
                  std::string_view line) {
    const AmiraRecord &record = pass.walk.record;
    const double rx = rescaledStation(model.preset, station);
    double tx = record.LoopNumber;
    if (record.arrayIndex == MovingLoop && !record.hasLoop) {
        tx = rx;
        pass.note(NoLoop, line);
    } else if (record.arrayIndex > FixedLoop) {
        tx = rescaledStation(model.preset, tx);
    }
    int index = 0;
    const FindOrAdd found = findOrAddKeepingLast(model, tx, record.TxFreq, rx, index);
    if (found == FindOrAdd::Full) {
        ReportError({"AMR_Read_Data.ERROR",
                     "WARNING: More than " + std::to_string(model.SoundingCapacity()) +
                         " soundings in " + pass.walk.name,
                     "Data will be skipped after line " + std::to_string(pass.walk.number())});
        return -1;
    }
    SoundingRecord &sounding = model.hTrn[static_cast<std::size_t>(index)];
    const bool isNew = found == FindOrAdd::Added;
    sounding.Station = rx;
    sounding.RxStn = rx;
    sounding.TxStn = tx;
    setCoordinate(sounding.East, position.east, isNew);
    setCoordinate(sounding.North, position.north, isNew);
    setCoordinate(sounding.Elevation, position.elevation, isNew);
    return index;
}

/// What makes nV/(A m2) of the values of a row.
struct Conversion {
    float factor = 1.0F;
    float divisor = 1.0F;
};

Conversion conversionOfRow(ReadPass &pass, const ImportPreset &preset, int axis,
                           std::string_view line) {
    const AmiraRecord &record = pass.walk.record;
    if (record.unitIndex == AmiraMicrovolts) {
        return {1000.0F / preset.RxAreaXYZ[static_cast<std::size_t>(axis)], 1.0F};
    }
    if (record.unitIndex != AmiraNanotesla) {
        return {};
    }
    if (isPresent(record.Current) && record.Current != 0.0F) {
        return {1.0F, record.Current};
    }
    if (!pass.noCurrentTold) {
        pass.noCurrentTold = true;
        ReportError({"AMIRA input ERROR: nT/sec without a current in:", line,
                     "The values are taken as per ampere."});
    }
    return {};
}

// Averages the channels of a row into its sounding. While rows are read, the windows of a sounding
// are the channels, also those without a value, so that a row that lacks one moves no other.
void storeChannels(ReadPass &pass, SurveyModel &model, int sounding, int channels,
                   std::string_view line) {
    const AmiraWalk &walk = pass.walk;
    const ChannelTimes &times = walk.record.times;
    const int axis = std::min(walk.record.componentCode, ComponentAxes) - 1;
    const float offset = walk.record.InitDelay - walk.record.TurnOff;
    const Conversion unit = conversionOfRow(pass, model.preset, axis, line);
    SoundingRecord &record = model.hTrn[static_cast<std::size_t>(sounding)];
    bool unread = false;
    for (int channel = 0; channel < channels; ++channel) {
        const float time = channelTime(times, channel, offset);
        const std::string_view cell =
            walk.cells.column(walk.columns.iVarCol[AmiraChannel1] + channel);
        if (!(time > 0.0F) || isEmptyCell(cell)) {
            continue;
        }
        float value = 0.0F;
        const bool read = readFreeForm(cell, value) == FreeForm::Value;
        value = value * unit.factor / unit.divisor;
        if (!read || !(std::fabs(value) <= LargestReading)) {
            unread = true;
            continue;
        }
        const auto window = static_cast<std::size_t>(channel);
        record.TWcenter[window] = time;
        record.TWwidth[window] = times.values[ChannelTimes::Width][window];
        record.NumTW = std::max(record.NumTW, channel + 1);
        averageReading(pass.tables.at(sounding, axis, channel), value);
    }
    if (unread) {
        pass.note(UnreadCells, line);
    }
}

bool isOfChosenLine(AmiraWalk &walk, std::string_view lineLabel, bool wasChosen) {
    if (!walk.identity.take(walk.record.Line.view(), amiraArrayName(walk.record.arrayIndex))) {
        return wasChosen;
    }
    return walk.identity.label() == lineLabel;
}

void readRow(ReadPass &pass, SurveyModel &model, std::string_view lineLabel,
             std::string_view line) {
    AmiraWalk &walk = pass.walk;
    double station = MissingValue;
    if (AMR_Number(walk.number(), walk.cell(AmiraStation), station) != CellRead) {
        ReportError({"WARNING: Could not read station number in:", line});
        return;
    }
    walk.takeLineAndComponent();
    pass.inChosenLine = isOfChosenLine(walk, lineLabel, pass.inChosenLine);
    if (!pass.inChosenLine) {
        return;
    }
    if (walk.record.componentCode < 1) {
        pass.note(NoComponent, line);
    }
    if (walk.record.componentCode < 1 || walk.record.componentCode > AmiraLastCode) {
        return;
    }
    const Position position = takeColumns(pass, line);
    pass.chosen = walk.record;
    const int channels = channelsOfRow(pass, line);
    if (channels == 0) {
        return;
    }
    const int sounding = soundingOfRow(pass, model, station, position, line);
    pass.full = sounding < 0;
    if (!pass.full) {
        storeChannels(pass, model, sounding, channels, line);
    }
}

// Makes the soundings' windows of their channels. A sounding that is left without one is dropped.
void finishSoundings(ReadPass &pass, SurveyModel &model) {
    const int arrayIndex = pass.chosen.arrayIndex;
    for (int i = 0; i < model.SoundingCount; ++i) {
        SoundingRecord &record = model.hTrn[static_cast<std::size_t>(i)];
        dropEmptyWindows(record, i, arrayIndex, pass.tables);
        finishWindows(record, i, arrayIndex, pass.tables);
    }
    const auto first = model.hTrn.begin();
    const auto end = std::remove_if(first, first + model.SoundingCount,
                                    [](const SoundingRecord &r) { return r.NumTW == 0; });
    const int kept = static_cast<int>(end - first);
    if (kept > 0 && kept < model.SoundingCount) {
        ReportWarning({"WARNING: " + std::to_string(model.SoundingCount - kept) +
                       " soundings without a usable window are not read."});
    }
    model.SoundingCount = kept;
}

// A loop that does not lie as its azimuth tells may have its sides exchanged.
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

// What stands behind the last row of the chosen line belongs to it if no other line follows, but
// for what the rows were read by.
AmiraRecord closingRecord(const ReadPass &pass) {
    const AmiraRecord &chosen = pass.chosen;
    if (!pass.inChosenLine) {
        return chosen;
    }
    AmiraRecord record = pass.walk.record;
    if (record.unitIndex != chosen.unitIndex || record.TurnOff != chosen.TurnOff ||
        record.InitDelay != chosen.InitDelay || record.Current != chosen.Current ||
        record.TxFreq != chosen.TxFreq) {
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
    return record;
}

void finishControlValues(const ReadPass &pass, SurveyModel &model) {
    AmiraRecord record = closingRecord(pass);
    const auto unit = static_cast<std::size_t>(model.control.LengthUnitsIndex - 1);
    AMR_Loop_Geometry(record, static_cast<double>(LengthUnitMetres[unit]));
    settleLoopSides(record);
    AMR_To_Control_Values(record, model.control);
    warnOfTurnedLoop(record, model.control);
}

void reportNotices(const ReadPass &pass) {
    for (std::size_t i = 0; i < Notices; ++i) {
        pass.notices[i].report(pass.walk.name, Words[i].what, Words[i].consequence);
    }
    pass.walk.rowsAsKeywords.report(pass.walk.name, "Rows that hold \":\" or \"=\"",
                                    "They are taken as keywords.");
}

} // namespace

int AMR_Read(SurveyModel &model, const std::string &fileName, std::string_view lineLabel) {
    ReadPass pass;
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
    while (!pass.full && pass.walk.nextRow(line, LeastLength)) {
        readRow(pass, model, lineLabel, line);
    }
    if (pass.walk.stopStatus >= StopsFile) {
        return pass.walk.stopStatus;
    }
    if (watched.stopped()) {
        model.SoundingCount = 0;
        return 1;
    }
    noteEndMark(pass.walk.reader);
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
