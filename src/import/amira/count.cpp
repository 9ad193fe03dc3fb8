#include "base/index.h"
#include "import/amira/file.h"
#include "messages/message_log.h"
#include "messages/watched_reading.h"

#include <algorithm>
#include <array>

namespace keldrin {

namespace {

constexpr std::size_t LeastCountedRow = 2; ///< of a row

struct AmiraCountPass {
    AmiraWalk walk;
    LineEntry *entry = nullptr; ///< row of the line in force; set at the first reading
    SoundingCounter soundings;
    std::array<bool, MaxSurveyLines> carriesLoop{}; ///< of lines where a row goes on with a loop
    LineNotice notRead;                             ///< rows of a component that is not read
    LineNotices lineNotices;
    FixedText<64> notedLine; ///< in the notices, with its array
    int notedArray = 0;
    int readings = 0;
};

// Settles the line of a row, and the coil areas in force for it.
void settleAmiraLine(AmiraCountPass &pass, SurveyModel &model) {
    AmiraWalk &walk = pass.walk;
    const AmiraRecord &record = walk.record;
    const std::string_view array = amiraArrayName(record.arrayIndex);
    if (walk.identity.take(record.Line.view(), array)) {
        pass.entry = &currentLineEntry(model.lines, walk.identity, record.arrayIndex);
    }
    if (record.Line != pass.notedLine || record.arrayIndex != pass.notedArray) {
        pass.notedLine = record.Line;
        pass.notedArray = record.arrayIndex;
        pass.lineNotices.note(walk.identity.label().view(), record.Line.view(), array,
                              walk.number());
    }
    pass.entry->scaling = model.preset;
    pass.entry->scaling.RxAreaXYZ = record.RxAreaXYZ;
}

// The transmitter by which the read pass separates soundings.
double loopOfRow(const AmiraWalk &walk, double loop) {
    const AmiraRecord &record = walk.record;
    const bool byOffset =
        record.arrayIndex == MovingLoop && !record.hasLoop && !walk.hasColumn(AmiraLoop);
    return byOffset ? -static_cast<double>(record.XRxOffset) : loop;
}

void countRow(AmiraCountPass &pass, SurveyModel &model, std::string_view line) {
    LineTable &lines = model.lines;
    AmiraWalk &walk = pass.walk;
    walk.takeLineAndComponent();
    const AmiraRecord &record = walk.record;
    if (record.componentCode < 1 || record.componentCode > AmiraLastCode) {
        pass.notRead.note(walk.number(), line);
        return;
    }
    settleAmiraLine(pass, model);
    ++pass.readings;
    ++pass.entry->Transients;
    const int axis = std::min(record.componentCode, ComponentAxes) - 1;
    ++pass.entry->ComponentTransients[asIndex(axis)];
    // The read pass reports a station or loop that cannot be read.
    double station = MissingValue;
    double loop = record.LoopNumber;
    const bool hasLoop = Cell_to_AmiraNumber(walk.cell(AmiraLoop), loop) == CellRead;
    const auto entry = static_cast<std::size_t>(pass.entry - lines.entries.data());
    pass.carriesLoop[entry] = pass.carriesLoop[entry] || (walk.hasColumn(AmiraLoop) && !hasLoop);
    if (Cell_to_AmiraNumber(walk.cell(AmiraStation), station) == CellRead) {
        pass.soundings.count(lines, *pass.entry, loopOfRow(walk, loop), station,
                             record.baseFrequency());
    }
}

// A row without a loop goes on with the one before it, which depends on the lines that are read:
// all that is sure is that no more soundings than rows come of it.
void forgetUnsureCounts(const AmiraCountPass &pass, LineTable &lines) {
    for (std::size_t i = 0; i < pass.carriesLoop.size(); ++i) {
        if (pass.carriesLoop[i]) {
            lines.entries[i].Soundings = 0;
        }
    }
}

// Reports what is wrong with the header before the user is asked for a line. The values are those
// of the file's last line, so they do not stay.
void checkHeader(const AmiraRecord &record, const ControlValues &control) {
    ControlValues trial = control;
    AMR_To_Control_Values(record, trial);
}

} // namespace

int AMR_Count(SurveyModel &model, const std::string &fileName) {
    resetLines(model.lines);
    AmiraCountPass pass;
    int status = pass.walk.open(model, fileName);
    if (status != 0) {
        return status;
    }
    WatchedReading watched(pass.walk.reader, fileName);
    ReportInfoLine("Reading header lines.");
    status = pass.walk.readHeader();
    if (status != 0) {
        return status;
    }
    ReportInfoLine("Counting numerical data.");
    std::string_view line;
    while (pass.walk.nextRow(line, LeastCountedRow)) {
        countRow(pass, model, line);
    }
    if (pass.walk.stopStatus >= StopsFile) {
        return pass.walk.stopStatus;
    }
    if (watched.stopped()) {
        return 1;
    }
    noteFileEnd(pass.walk.reader, pass.walk.name);
    pass.lineNotices.report(pass.walk.name);
    noteDecimalCommas(pass.walk.commas, pass.walk.name);
    pass.notRead.report(pass.walk.name, "Rows of a component other than X, Y, Z, I and C",
                        "They are not read.");
    forgetUnsureCounts(pass, model.lines);
    status = finishCount(model.lines, pass.readings, "AMR_Count");
    if (status == 0) {
        model.preset.RxAreaXYZ = pass.walk.record.RxAreaXYZ;
        checkHeader(pass.walk.record, model.control);
    }
    return status;
}

} // namespace keldrin
