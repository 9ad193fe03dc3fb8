#include "base/index.h"
#include "import/avg_file.h"
#include "keywords/length_units.h"
#include "messages/message_log.h"
#include "messages/watched_reading.h"
#include "text/value_readers.h"

#include <string>

namespace keldrin {

namespace {

/// One data line as the count pass looks at it.
struct CountedReading {
    double tx = MissingValue;
    double rx = MissingValue;
    float time = MissingValue;
    float freq = MissingValue;
    int component = 0; ///< see avgComponent()
};

struct AvgCountPass {
    AvgWalk walk;
    LineEntry *entry = nullptr; ///< row of the line in force; set at the first data line
    double LastTx = MissingValue;
    double LastRx = MissingValue;
    float LastTime = MissingValue;
    int LastCmp = 0;
    int transients = 0;
    SoundingCounter soundings;
    LineNotices lineNotices;
};

// Reads the cells that identify a reading; what has no column comes from the keyword records.
CountedReading readCountedCells(const AvgWalk &walk, const Metadata &metadata,
                                std::string_view line) {
    const RecordLine record{walk.record(), line};
    CountedReading reading{metadata.Tx.QdrStn.value, metadata.Rx.QdrStn.value, MissingValue,
                           metadata.Tx.Freq.value, 0};
    std::string_view component = metadata.Rx.Cmp.value.view();
    if (walk.hasColumn(AvgTxStn)) {
        Val_Read_Place(record, walk.cell(AvgTxStn), AvgNames[AvgTxStn], MissingValue, reading.tx);
    }
    if (walk.hasColumn(AvgRxStn)) {
        Val_Read_Place(record, walk.cell(AvgRxStn), AvgNames[AvgRxStn], MissingValue, reading.rx);
    }
    if (walk.hasColumn(AvgComponent)) {
        component = walk.cell(AvgComponent);
    }
    if (walk.hasColumn(AvgTime)) {
        Val_Read_R4(record, walk.cell(AvgTime), AvgNames[AvgTime], MissingValue, reading.time);
    }
    if (walk.hasColumn(AvgFreq)) { // the read pass reports a bad one
        Cell_to_R4(walk.cell(AvgFreq), 0.0F, reading.freq);
    }
    reading.component = avgComponent(component, "CH.Cmp");
    return reading;
}

bool reportUndefined(const CountedReading &reading, int record, std::string_view line) {
    const char *what = !isPresent(reading.tx)     ? "Tx.QdrStn undefined for"
                       : !isPresent(reading.rx)   ? "Rx.QdrStn undefined for"
                       : !isPresent(reading.time) ? "TWIN.Center < -1.0E32 on"
                                                  : nullptr;
    if (what == nullptr) {
        return false;
    }
    ReportWarning(
        {"AVG_File_Input.ERROR: " + std::string(what) + " record " + std::to_string(record), line,
         "Dropping this data record."});
    return true;
}

// Counts a transient if the line opens one.
void AVG_File_Input(AvgCountPass &pass, const LineTable &lines, const CountedReading &reading) {
    const int axis = (reading.component - 1) % ComponentAxes + 1;
    const bool NewTransient = axis != pass.LastCmp || !sameStation(reading.tx, pass.LastTx) ||
                              !sameStation(reading.rx, pass.LastRx) || pass.LastTime > reading.time;
    pass.LastCmp = axis;
    pass.LastTx = reading.tx;
    pass.LastRx = reading.rx;
    pass.LastTime = reading.time;
    pass.soundings.count(lines, *pass.entry, reading.tx, reading.rx, reading.freq);
    if (NewTransient) {
        ++pass.transients;
        ++pass.entry->Transients;
        ++pass.entry->ComponentTransients[asIndex(axis - 1)];
    }
}

// Settles the line that a data line belongs to, and what is in force for it.
void settleAvgLine(AvgCountPass &pass, SurveyModel &model) {
    if (!pass.walk.HeaderChanged) {
        return;
    }
    pass.walk.HeaderChanged = false;
    const Metadata &metadata = model.metadata;
    if (pass.walk.identity.take(metadata)) {
        pass.entry = &currentLineEntry(model.lines, pass.walk.identity, metadata);
    }
    pass.lineNotices.note(pass.walk.identity.label().view(), metadata.Line.fullName.view(),
                          metadata.Survey.Array.value.view(), pass.walk.record());
    pass.entry->scaling = scalingFromMetadata(model.metadata);
}

// The positions of the receiver belong to rows: each section states its own.
void restoreRowPositions(RxMetadata &rx, const RxMetadata &before) {
    rx.QdrStn = before.QdrStn;
    rx.Stn = before.Stn;
    rx.PltXYZ = before.PltXYZ;
    rx.PltUTM = before.PltUTM;
    rx.PltSXYZ = before.PltSXYZ;
    rx.PltSZXYZ = before.PltSZXYZ;
    rx.PltSLZXYZ = before.PltSLZXYZ;
    rx.XYZ = before.XYZ;
    rx.UTM = before.UTM;
    rx.Center = before.Center;
    rx.East = before.East;
    rx.North = before.North;
    rx.Elev = before.Elev;
    rx.Depth = before.Depth;
}

// What the read pass starts from. In a file of one line all records belong to it, including those
// after its last row. Of several lines none may reach another, but units and job are those of the
// file.
void prepareReadPass(SurveyModel &model, const Metadata &before) {
    Metadata &metadata = model.metadata;
    if (model.lines.LineCount == 1) {
        LineEntry &entry = model.lines.entries[0];
        entry.scaling = scalingFromMetadata(metadata);
        entry.ArrayIndex = metadata.Survey.ArrayIndex;
        restoreRowPositions(metadata.Rx, before.Rx);
        return;
    }
    const UnitMetadata units = metadata.Unit;
    const JobMetadata job = metadata.Job;
    MD_Restore(metadata, before);
    metadata.Job = job;
    adoptUnits(metadata, units);
}

} // namespace

int AVG_Count(SurveyModel &model, const std::string &fileName) {
    const Metadata before = model.metadata;
    resetLines(model.lines);
    AvgCountPass pass;
    if (!pass.walk.open(fileName)) {
        return 1;
    }
    WatchedReading watched(pass.walk.reader, fileName);
    std::string_view line;
    while (pass.walk.nextDataLine(model.metadata, line)) {
        settleAvgLine(pass, model);
        const CountedReading reading = readCountedCells(pass.walk, model.metadata, line);
        if (!reportUndefined(reading, pass.walk.record(), line) && reading.component > 0) {
            AVG_File_Input(pass, model.lines, reading);
        }
    }
    if (pass.walk.faulted || watched.stopped()) {
        return 1;
    }
    noteFileEnd(pass.walk.reader, pass.walk.name);
    pass.walk.reportNotices();
    pass.lineNotices.report(pass.walk.name);
    presetFromMetadata(model);
    prepareReadPass(model, before);
    return finishCount(model.lines, pass.transients, "AVG_Count");
}

} // namespace keldrin
