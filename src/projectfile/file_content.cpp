#include "projectfile/file_content.h"

#include "base/paths.h"
#include "projectfile/control_group.h"
#include "projectfile/data_columns.h"
#include "projectfile/data_table.h"
#include "projectfile/model_columns.h"
#include "text/value_readers.h"

namespace keldrin {

namespace {

/// The three stations of a row, by their places in the column table.
struct KeyColumns {
    std::size_t station, rxStn, txStn;
};

double stationIn(const TableScan &scan, std::size_t column) {
    double value = MissingValue;
    Cell_to_R8(scan.cells.column(scan.map.iVarCol[column]), MissingValue, value);
    return value;
}

void readStations(TableScan &scan, const KeyColumns &columns, RowValues &values) {
    splitTableRow(scan);
    for (const std::size_t column : {columns.station, columns.rxStn, columns.txStn}) {
        values[column] = stationIn(scan, column);
    }
}

FileContent unreadable() {
    return {.whole = false};
}

/// All rows of a file of which nothing is known but that it has some.
FileContent countAnyRows(const std::string &path) {
    LineReader reader(MostGroupLine);
    FileContent content = unreadable();
    std::string_view line;
    if (reader.open(path)) {
        while (reader.next(line) == LineStatus::Line) {
            content.rows += classifyTableLine(line) == TableLine::Data ? 1 : 0;
        }
    }
    return content;
}

} // namespace

void BlockCount::add(const StationKeys &keys) {
    if (blocks_ > 0 && sameKeys(keys, keys_)) {
        ++rows_;
        return;
    }
    if (rows_ > 1) {
        allAlike_ = allAlike_ && (withLayers_ == 0 || rows_ == usualRows_);
        usualRows_ = rows_;
        ++withLayers_;
    }
    keys_ = keys;
    ++blocks_;
    rows_ = 1;
}

bool BlockCount::lastIsShort() const {
    constexpr int enough = 2;
    return withLayers_ >= enough && allAlike_ && rows_ > 1 && rows_ < usualRows_;
}

void settleStations(const ControlValues &control, RowValues &values) {
    if (!isPresent(values[ColRxStn])) {
        values[ColRxStn] = values[ColStation];
    }
    const bool absent = !isPresent(values[ColTxStn]);
    switch (control.SurveyTypeIndex) {
    case FixedLoop:
        values[ColTxStn] = absent ? control.TxStn : values[ColTxStn];
        break;
    case MovingLoop:
        values[ColTxStn] = absent ? values[ColRxStn] : values[ColTxStn];
        break;
    default: // the receiver lies in its loop
        values[ColTxStn] = values[ColRxStn];
    }
}

void countSounding(const RowValues &values, BlockCount &soundings) {
    if (isPresent(values[ColRxStn]) && isPresent(values[ColTxStn])) {
        soundings.add({0.0, values[ColRxStn], values[ColTxStn]});
    }
}

void countSoundings(TableScan &scan, const ControlValues &control, BlockCount &soundings) {
    RowValues values{};
    while (nextDataLine(scan)) {
        readStations(scan, {ColStation, ColRxStn, ColTxStn}, values);
        settleStations(control, values);
        countSounding(values, soundings);
    }
}

bool isWholeProject(const TableScan &scan, const ControlValues &control,
                    const FileContent &content) {
    // The writer leaves the soundings of other transmitters out, and still counts them.
    const bool fewer =
        control.SurveyTypeIndex != FixedLoop && content.soundings < content.announced;
    return isWholeTable(scan) && !fewer;
}

FileContent projectContent(const std::string &path) {
    if (!pathExists(path)) {
        return {};
    }
    LineReader reader(MostGroupLine);
    ControlValues control;
    control.NumStn = 0;
    ControlGroup group{control, {}};
    std::string faultyLine;
    if (!reader.open(path)) {
        return unreadable();
    }
    if (readControlGroup(reader, group, faultyLine) != GroupStatus::Read) {
        return countAnyRows(path);
    }
    setSurveyType(control, surveyTypeIndexOf(control.SurveyType.view()));
    TableScan scan = beginTableScan(dataTableFormat(), reader);
    scan.silent = true;
    BlockCount soundings;
    countSoundings(scan, control, soundings);
    FileContent content;
    content.announced = control.NumStn;
    content.soundings = soundings.blocks();
    content.rows = scan.rows;
    content.whole = isWholeProject(scan, control, content);
    return content;
}

FileContent modelContent(const std::string &path) {
    if (!pathExists(path)) {
        return {};
    }
    LineReader reader(MostTableLine);
    if (!reader.open(path)) {
        return unreadable();
    }
    TableScan scan = beginTableScan(ModelFormat, reader);
    scan.silent = true;
    BlockCount blocks;
    RowValues values{};
    while (nextDataLine(scan)) {
        readStations(scan, {ModelStation, ModelRxStn, ModelTxStn}, values);
        blocks.add({values[ModelStation], values[ModelRxStn], values[ModelTxStn]});
    }
    return {.soundings = blocks.withLayers(),
            .rows = scan.rows,
            .whole = isWholeTable(scan) && !blocks.lastIsShort()};
}

} // namespace keldrin
