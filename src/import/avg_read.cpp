#include "base/index.h"
#include "import/avg_file.h"
#include "import/window_tables.h"
#include "messages/message_log.h"
#include "messages/watched_reading.h"
#include "projectfile/control_block.h"
#include "text/value_readers.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <tuple>
#include <vector>

namespace keldrin {

namespace {

constexpr int GoodReading = 2; ///< of the SKIP column

/// One data line of the chosen survey line.
struct AvgReading {
    double tx = MissingValue;
    double rx = MissingValue;
    float freq = 0.0F;
    float amp = MissingValue;
    float time = MissingValue;
    float timeBeg = MissingValue;
    float timeEnd = MissingValue;
    float mag = 0.0F;
    float err = MissingValue;
    float percentErr = 1.0F;
    float weight = 1.0F;
    int skip = GoodReading;
    bool hasMag = false;
    std::string_view component;
};

// What the control values and the preset take of the keyword records, where one set holds for a
// whole line. (The frequency belongs to each sounding.)
auto lineSettings(const Metadata &from) {
    const LineScaling scaling = scalingFromMetadata(from);
    return std::make_tuple(from.Line.Number.value, from.Line.Azimuth.value, from.Tx.Stn.value,
                           from.Tx.Turns.value, from.Tx.LengthX.value, from.Tx.LengthY.value,
                           from.Tx.CenterX.value, from.Tx.CenterY.value, from.Tx.Azimuth.value,
                           from.Tx.Ramp.value, from.Rx.Area.value, scaling.RxAreaXYZ,
                           scaling.StnRescaleQdr.begin, scaling.StnRescaleQdr.increment,
                           scaling.StnRescaleClient.begin, scaling.StnRescaleClient.increment);
}

struct AvgReadPass {
    AvgWalk walk;
    bool oneLine = false; ///< the file's only line: every section belongs to it
    decltype(lineSettings(Metadata{})) settings;
    bool otherLineBegun = false; ///< keyword records since the last row belong to another line
    LineNotice lateRecords;      ///< change settings after the chosen line's first row
    LineNotice otherComponents;
    LineNotice earlyWindows;
    LineNotice impossible; ///< stations and times
    LineNotice impossibleEdges;
    LineNotice droppedRows;
    GivenSettings given;
    WindowTables tables;
    int arrayIndex = FixedLoop;
    bool LineSelected = false;
    bool stopped = false;     ///< the table is full
    bool windowsFull = false; ///< dropped windows have been reported
    double LastTx = MissingValue;
    double LastRx = MissingValue;
    float LastTime = MissingValue;
    int sounding = -1; ///< 0-based; the one found last
};

/// A real column of the data line: what an absent column and an unreadable cell give.
struct RealColumn {
    AvgVariable variable;
    float AvgReading::*field; ///< null: tested for form and not used
    float unreadable;
};

constexpr std::array RealColumns = {
    RealColumn{AvgFreq, &AvgReading::freq, 0.0F},
    RealColumn{AvgAmp, &AvgReading::amp, MissingValue},
    RealColumn{AvgTime, &AvgReading::time, MissingValue},
    RealColumn{AvgTimeBeg, &AvgReading::timeBeg, MissingValue},
    RealColumn{AvgTimeEnd, &AvgReading::timeEnd, MissingValue},
    RealColumn{AvgErr, &AvgReading::err, MissingValue},
    RealColumn{AvgPercentErr, &AvgReading::percentErr, 0.0F},
    RealColumn{AvgWeight, &AvgReading::weight, 0.0F},
    RealColumn{AvgARes, nullptr, 0.0F},
    RealColumn{AvgDepth, nullptr, 0.0F},
    RealColumn{AvgB, nullptr, 0.0F},
};

AvgReading readCells(const AvgWalk &walk, const Metadata &metadata, std::string_view line) {
    const RecordLine record{walk.record(), line};
    const RecordLine known{walk.record(), line, true}; // the count pass has reported these cells
    AvgReading reading;
    reading.tx = metadata.Tx.QdrStn.value;
    reading.rx = metadata.Rx.QdrStn.value;
    reading.freq = metadata.Tx.Freq.value;
    reading.amp = metadata.Tx.Amp.value;
    reading.component = metadata.Rx.Cmp.value.view();
    if (walk.hasColumn(AvgSkip)) {
        Val_Read_Int(record, walk.cell(AvgSkip), AvgNames[AvgSkip], GoodReading, reading.skip);
    }
    if (walk.hasColumn(AvgTxStn)) {
        Val_Read_Place(known, walk.cell(AvgTxStn), AvgNames[AvgTxStn], MissingValue, reading.tx);
    }
    if (walk.hasColumn(AvgRxStn)) {
        Val_Read_Place(known, walk.cell(AvgRxStn), AvgNames[AvgRxStn], MissingValue, reading.rx);
    }
    if (walk.hasColumn(AvgComponent)) {
        reading.component = walk.cell(AvgComponent);
    }
    for (const RealColumn &column : RealColumns) {
        if (walk.hasColumn(column.variable)) {
            float value = 0.0F;
            Val_Read_R4(column.variable == AvgTime ? known : record, walk.cell(column.variable),
                        AvgNames[column.variable], column.unreadable, value);
            if (column.field != nullptr) {
                reading.*column.field = value;
            }
        }
    }
    // A null cell ("/") reads as a good 0, anything else that is no number is no reading.
    reading.hasMag =
        Val_Read_R4(record, walk.cell(AvgMag), AvgNames[AvgMag], 0.0F, reading.mag) == CellRead;
    return reading;
}

void dropRecord(AvgReadPass &pass, std::string_view words, std::string_view line) {
    const int record = pass.walk.record();
    pass.droppedRows.note(record, line);
    ReportWarning(
        {"AVG_Read_Data.ERROR: " + std::string(words) + " record " + std::to_string(record), line,
         "Dropping this data record."});
}

// The first rule that a reading breaks, in words; empty for a good one. area in m^2
std::string_view faultOf(const AvgReading &reading, float area) {
    if (!isPresent(reading.tx)) {
        return "Tx.QdrStn undefined for";
    }
    if (!(area >= 0.001F)) {
        return "Rx.Area undefined for";
    }
    if (!isPresent(reading.rx)) {
        return "Rx.QdrStn undefined for";
    }
    if (!(reading.freq >= 1.0E-6F)) {
        return "Tx.Freq < 1.0E-6 on";
    }
    if (!(reading.amp >= 1.0E-6F)) {
        return "Tx.Amp < 1.0E-6 on";
    }
    if (!isPresent(reading.time)) {
        return "TWIN.Center < -1.0E32 on";
    }
    if (!reading.hasMag || !(std::fabs(1000.0F * reading.mag / area) <= LargestReading)) {
        return "dBdt.Mag undefined for";
    }
    return {};
}

bool opensGroup(AvgReadPass &pass, const AvgReading &reading, bool noSounding) {
    if (noSounding) {
        pass.LastRx = MissingValue;
    }
    const bool opens = !sameStation(reading.tx, pass.LastTx) ||
                       !sameStation(reading.rx, pass.LastRx) || pass.LastTime > reading.time;
    pass.LastTx = reading.tx;
    pass.LastRx = reading.rx;
    pass.LastTime = reading.time;
    return opens;
}

void reportFullTable(const SurveyModel &model, const AvgWalk &walk, std::string_view line) {
    ReportError({"AVG_Read_Data.ERROR",
                 "More than " + std::to_string(model.SoundingCapacity()) +
                     " transients at avg file record " + std::to_string(walk.record()),
                 line});
}

// A fixed loop's transmitter is an identifier, not a position.
double transmitterOf(const AvgReadPass &pass, const LineScaling &scaling,
                     const AvgReading &reading) {
    return pass.arrayIndex == FixedLoop ? reading.tx : rescaledStation(scaling, reading.tx);
}

// Finds or adds the sounding of a reading and takes the header values in force. False when the
// table is full; the last record is then as it was.
bool openSounding(AvgReadPass &pass, SurveyModel &model, const AvgReading &reading) {
    const double rx = rescaledStation(model.preset, reading.rx);
    const double tx = transmitterOf(pass, model.preset, reading);
    if (findOrAddKeepingLast(model, tx, reading.freq, rx, pass.sounding) == FindOrAdd::Full) {
        return false;
    }
    const Metadata &metadata = model.metadata;
    if (metadata.Tx.Ramp.value > 0.0F) {
        model.control.TxRamp = metadata.Tx.Ramp.value;
    }
    model.control.RxArea = model.preset.RxAreaXYZ[AxisZ];
    model.control.TxFreq = reading.freq;
    SoundingRecord &record = model.hTrn[asIndex(pass.sounding)];
    record.TxFreq = reading.freq;
    record.Station = rx;
    hTrn_Set_Stations(model, pass.sounding, tx, rx);
    record.East = metadata.Rx.East.value;
    record.North = metadata.Rx.North.value;
    record.Elevation = metadata.Rx.Elev.value;
    return true;
}

// Of the window, in msec; 0, to be taken from the centres, where the edges give none.
float widthOf(AvgReadPass &pass, const AvgReading &reading, std::string_view line) {
    if (!isPresent(reading.timeBeg) || !isPresent(reading.timeEnd)) {
        return 0.0F;
    }
    const float width = reading.timeEnd - reading.timeBeg;
    if (width > 0.0F && !isHoldableTime(width)) {
        pass.impossibleEdges.note(pass.walk.record(), line);
        return 0.0F;
    }
    return width;
}

// Puts a good reading into its window. area in m^2, axis from 0
void storeReading(AvgReadPass &pass, SurveyModel &model, const AvgReading &reading, int axis,
                  float area, std::string_view line) {
    SoundingRecord &record = model.hTrn[asIndex(pass.sounding)];
    int window = 0;
    if (TW_Find_Or_Add(record, reading.time, window) == FindOrAdd::Full) {
        if (!pass.windowsFull) {
            pass.windowsFull = true;
            ReportWarning({"AVG_Read_Data.WARNING: More than " + std::to_string(MaxWindows) +
                               " time windows at avg file record " +
                               std::to_string(pass.walk.record()),
                           line, "Excess windows will be dropped."});
        }
        return;
    }
    record.TWwidth[asIndex(window)] = widthOf(pass, reading, line);
    const float dBdt = 1000.0F * reading.mag / area;
    const float error = reading.err >= 0.0F
                            ? reading.err
                            : std::max(0.1F, reading.percentErr) * 0.01F * reading.mag;
    const float sigma = limited(std::fabs(1000.0F * error / area), 0.0F, LargestReading);
    const bool skip = !(reading.skip == GoodReading && reading.weight > 1.0E-5F);
    mergeReading(pass.tables.at(pass.sounding, axis, window), dBdt, sigma, skip);
}

void AVG_Read_Data(AvgReadPass &pass, SurveyModel &model, std::string_view line) {
    const AvgReading reading = readCells(pass.walk, model.metadata, line);
    const int component = avgComponent(reading.component, "EM.Cmp");
    if (component == 0) {
        dropRecord(pass, "Rx.Cmp undefined for", line);
        return;
    }
    const int axis = component - FirstMagneticComponent;
    if (component < FirstMagneticComponent || component > LastMagneticComponent ||
        (pass.arrayIndex >= InLoop && axis != AxisZ)) {
        pass.otherComponents.note(pass.walk.record(), line);
        return;
    }
    const float area = model.preset.RxAreaXYZ[asIndex(axis)];
    const std::string_view fault = faultOf(reading, area);
    if (!fault.empty()) {
        dropRecord(pass, fault, line);
        return;
    }
    if (!(reading.time > 0.0F)) {
        pass.earlyWindows.note(pass.walk.record(), line);
        return;
    }
    if (!isHoldableStation(transmitterOf(pass, model.preset, reading)) ||
        !isHoldableStation(rescaledStation(model.preset, reading.rx)) ||
        !isHoldableTime(reading.time)) {
        pass.impossible.note(pass.walk.record(), line);
        return;
    }
    pass.given.frequency = pass.given.frequency || pass.walk.hasColumn(AvgFreq);
    if (opensGroup(pass, reading, model.SoundingCount == 0) &&
        !openSounding(pass, model, reading)) {
        reportFullTable(model, pass.walk, line);
        pass.stopped = true;
        return;
    }
    storeReading(pass, model, reading, axis, area, line);
}

// Takes the settings in force at the first row of the chosen line.
void takeSettings(AvgReadPass &pass, SurveyModel &model) {
    Control_From_Metadata(model);
    pass.settings = lineSettings(model.metadata);
    pass.given = givenSettings(model);
    settleLoopFromVertices(model, pass.given);
}

// Settles whether the section that a data line stands in belongs to the chosen line.
void settleLine(AvgReadPass &pass, SurveyModel &model, std::string_view lineLabel) {
    if (!pass.walk.HeaderChanged) {
        return;
    }
    pass.walk.HeaderChanged = false;
    pass.otherLineBegun = false;
    if (!pass.walk.identity.take(model.metadata)) {
        return;
    }
    pass.LineSelected = pass.oneLine || pass.walk.identity.label() == lineLabel;
    if (pass.LineSelected) {
        takeSettings(pass, model);
    }
}

// A record after the first row of the chosen line comes too late for a setting of the whole line.
void noteLateRecord(AvgReadPass &pass, const Metadata &metadata, int record,
                    std::string_view line) {
    LineIdentity identity = pass.walk.identity;
    pass.otherLineBegun = pass.otherLineBegun || (!pass.oneLine && identity.take(metadata));
    if (!pass.LineSelected || pass.otherLineBegun) {
        return;
    }
    const auto settings = lineSettings(metadata);
    if (settings != pass.settings) {
        pass.settings = settings;
        pass.lateRecords.note(record, line);
    }
}

void reportNotices(const AvgReadPass &pass, const SurveyModel &model) {
    const std::string &name = pass.walk.name;
    pass.otherComponents.report(name, "Rows of a component that is not read",
                                pass.arrayIndex >= InLoop ? "Of this array only Hz is read."
                                                          : "Hx, Hy and Hz are read.");
    pass.earlyWindows.report(name, "Rows with a window centre at or before time 0",
                             "They are dropped.");
    pass.impossible.report(name, "Rows of an impossible station or time", "They are dropped.");
    pass.impossibleEdges.report(name, "Rows with impossible edges of the window",
                                "The width is taken from the centres.");
    pass.lateRecords.report(name, "Records that change settings of the line after its first row",
                            "A line is read with one set of settings.");
    if (model.SoundingCount > 0) {
        warnOfDefaults(name, pass.given, model);
    }
}

// Says why nothing was read; each cause has been reported with its first row.
void reportNoSounding(const AvgReadPass &pass, std::string_view lineLabel) {
    std::vector<MessageLine> lines = {"ERROR: No sounding was read from line " +
                                      std::string(lineLabel) + " of " + pass.walk.name};
    const auto add = [&](const LineNotice &notice, const char *what) {
        if (notice.count > 0) {
            lines.emplace_back("Rows " + std::string(what) + ": " + std::to_string(notice.count));
        }
    };
    add(pass.otherComponents, "of a component that is not read");
    add(pass.earlyWindows, "with a window centre at or before time 0");
    add(pass.impossible, "of an impossible station or time");
    add(pass.droppedRows, "that lack a value which is needed");
    ReportError(lines);
}

void finishPass(AvgReadPass &pass, SurveyModel &model) {
    for (int i = 0; i < model.SoundingCount; ++i) {
        finishWindows(model.hTrn[asIndex(i)], i, pass.arrayIndex, pass.tables);
    }
}

} // namespace

int AVG_Read(SurveyModel &model, const std::string &fileName, std::string_view lineLabel) {
    AvgReadPass pass;
    if (!pass.walk.open(fileName)) {
        return 1;
    }
    pass.walk.quiet = true;
    pass.oneLine = model.lines.LineCount == 1;
    pass.walk.recordTaken = [&](int record, std::string_view text) {
        noteLateRecord(pass, model.metadata, record, text);
    };
    pass.arrayIndex = heldArrayIndex(model.preset.SelectedArrayIndex);
    if (!pass.tables.allocate(model.SoundingCapacity())) {
        ReportError({"AVG_Read.ERROR", "while allocating work tables for " +
                                           std::to_string(model.SoundingCapacity()) +
                                           " soundings"});
        return 1;
    }
    WatchedReading watched(pass.walk.reader, fileName);
    std::string_view line;
    while (!pass.stopped && pass.walk.nextDataLine(model.metadata, line)) {
        settleLine(pass, model, lineLabel);
        if (pass.LineSelected) {
            AVG_Read_Data(pass, model, line);
        }
    }
    if (watched.stopped()) {
        model.SoundingCount = 0;
        return 1;
    }
    finishPass(pass, model);
    reportNotices(pass, model);
    if (pass.walk.faulted) {
        return 1;
    }
    setTEMUnits(model.control, NanovoltPerAmpereSquareMetre);
    ReportInfoLine(std::to_string(model.SoundingCount) +
                   " data transients have been read from avg file");
    if (model.SoundingCount < 1) {
        reportNoSounding(pass, lineLabel);
        return 1;
    }
    if (!pass.walk.LabelsValid) {
        ReportError({"ERROR: Nothing is imported from " + pass.walk.name,
                     "The column labels of its last data section lack a required column."});
        return 1;
    }
    return 0;
}

} // namespace keldrin
