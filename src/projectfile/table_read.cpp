#include "projectfile/table_file.h"

#include "base/ascii.h"
#include "base/fixed_text.h"
#include "messages/message_log.h"
#include "text/value_readers.h"

#include <algorithm>

namespace keldrin {

namespace {

void reportLine(std::string_view words, const TableScan &scan) {
    if (scan.silent) {
        return;
    }
    ReportError({std::string(words) + std::to_string(scan.lineCount), scan.line});
}

void dealWithFault(const TableScan &scan) {
    if (scan.silent) {
        return;
    }
    const std::string words = "ERROR while reading data line " + std::to_string(scan.lineCount);
    if (scan.format.faultIsError) {
        ReportError({words, scan.line});
    } else {
        ReportInfoLine(words);
        ReportInfoLine(scan.line);
    }
}

int matchLabels(TableScan &scan) {
    LabelMatch options;
    options.exactMatch = false; // "TEMOBS(nV/Am2)" is "TEMOBS"
    options.maxCols = scan.format.maxCells;
    options.width = MostTableLabel;
    return scan.format.aliases.empty()
               ? Str_Column_Labels(scan.line, options, scan.labels, scan.map)
               : Str_Column_Labels_Alias(scan.line, options, scan.format.aliases, scan.labels,
                                         scan.map);
}

void readLabels(TableScan &scan) {
    scan.labelsGood = false;
    if (matchLabels(scan) != 0) {
        reportLine(scan.format.labelFailure, scan);
        return;
    }
    for (std::size_t i = 0; i < scan.format.columns.size(); ++i) {
        if (scan.format.columns[i].required && !hasColumn(scan, i)) {
            reportLine("ERROR: Missing expected column labels in line ", scan);
            return;
        }
    }
    scan.labelsGood = true;
    scan.labelLine = scan.reader.lineNumber();
    if (!scan.silent) {
        ReportInfoLine("Have found correct column labels, now reading numerical data.");
    }
}

double readCell(const TableColumn &column, const RecordLine &record, std::string_view cell) {
    switch (column.type) {
    case CellType::R8: {
        double value = 0.0;
        Val_Read_R8(record, cell, column.label, column.defaultValue, value);
        return value;
    }
    case CellType::R4: {
        float value = 0.0F;
        Val_Read_R4(record, cell, column.label, static_cast<float>(column.defaultValue), value);
        return static_cast<double>(value);
    }
    case CellType::Int:
        break;
    }
    int value = 0;
    Val_Read_Int(record, cell, column.label, static_cast<int>(column.defaultValue), value);
    return value;
}

void readRow(TableScan &scan, RowValues &values) {
    splitTableRow(scan);
    const RecordLine record{scan.lineCount, scan.line};
    for (std::size_t i = 0; i < scan.format.columns.size(); ++i) {
        const TableColumn &column = scan.format.columns[i];
        const std::string_view cell =
            column.read ? scan.cells.column(scan.map.iVarCol[i]) : std::string_view{};
        values[i] = cell.empty() ? column.defaultValue : readCell(column, record, cell);
    }
}

RowShape shapeOf(std::string_view line, TableScan &scan) {
    const auto commas = std::count(line.begin(), line.end(), ',');
    if (commas > 0) {
        return {static_cast<int>(commas) + 1, line.back() == ','};
    }
    splitTableRow(scan);
    return {static_cast<int>(scan.cells.cells.size()), false};
}

bool lastCellIsNumber(TableScan &scan) {
    splitTableRow(scan);
    double value = 0.0;
    return !scan.cells.cells.empty() &&
           Cell_to_R8(scan.cells.cells.back(), MissingValue, value) != CellFailed;
}

// A row is full when it has as many fields as the one before it and, where that one did not, does
// not end in an empty one. What stands in its last cell cannot be judged further.
bool isFull(const RowShape &shape, const RowShape &usual, TableScan &scan) {
    const bool lost = shape.endsBlank && !usual.endsBlank;
    return shape.fields >= usual.fields && !lost && (shape.endsBlank || lastCellIsNumber(scan));
}

void noteShape(TableScan &scan, TableLine kind) {
    scan.lacksEnd = scan.reader.endedInLine();
    if (kind == TableLine::Labels) {
        scan.shape = {shapeOf(scan.line, scan).fields, true};
    } else if (kind == TableLine::Data) {
        const RowShape shape = shapeOf(scan.line, scan);
        scan.endsCut = scan.lacksEnd && !isFull(shape, scan.shape, scan);
        scan.rows += scan.endsCut ? 0 : 1;
        scan.shape = shape;
    } else if (kind == TableLine::Blank && scan.lacksEnd && scan.line.size() == 1) {
        scan.endsCut = true; // all that is left of a row
    }
}

} // namespace

TableScan beginTableScan(const TableFormat &format, LineReader &reader) {
    TableScan scan{format, reader, {}, {}, {}, true, 0, 0, {}};
    for (const TableColumn &column : format.columns) {
        scan.labels.push_back(column.label);
        scan.map.iVarCol.push_back(column.position);
    }
    return scan;
}

TableLine classifyTableLine(std::string_view &line) {
    constexpr std::string_view commentMarks = "$\\/!\"";
    line = trimRight(cutText(line, MostTableLine));
    const bool tooShort = line.size() < 2; // blanks in front still count
    line = trimLeft(line);
    if (tooShort || line.empty()) {
        return TableLine::Blank;
    }
    if (holds(commentMarks, line.substr(0, 1))) {
        return TableLine::Comment;
    }
    return startsLabelLine(line) ? TableLine::Labels : TableLine::Data;
}

void splitTableRow(TableScan &scan) {
    Str_Split_Columns(scan.line, scan.format.maxCells, MostTableLine, scan.cells);
}

bool nextDataLine(TableScan &scan) {
    LineStatus status = LineStatus::Line;
    while ((status = scan.reader.next(scan.line)) != LineStatus::End) {
        ++scan.lineCount;
        if (status == LineStatus::Fault) {
            dealWithFault(scan);
            continue;
        }
        const TableLine kind = classifyTableLine(scan.line);
        noteShape(scan, kind);
        if (kind == TableLine::Labels) {
            readLabels(scan);
        } else if (kind == TableLine::Data && scan.labelsGood && !scan.endsCut) {
            return true;
        }
    }
    return false;
}

bool nextTableRow(TableScan &scan, RowValues &values) {
    if (!nextDataLine(scan)) {
        return false;
    }
    readRow(scan, values);
    return true;
}

bool isWholeTable(const TableScan &scan) {
    return !scan.endsCut && !scan.reader.failed() && !scan.reader.endedAtMark();
}

std::string wholenessText(const TableScan &scan) {
    if (scan.reader.failed()) {
        return "It could not be read to its end: " + scan.reader.errorText();
    }
    if (scan.reader.endedAtMark()) {
        return "It has an end mark (code 26); what follows it was not read.";
    }
    return scan.endsCut ? "Its last row is cut and was left out." : "";
}

} // namespace keldrin
