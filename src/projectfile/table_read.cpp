#include "projectfile/table_file.h"

#include "base/ascii.h"
#include "base/fixed_text.h"
#include "messages/message_log.h"
#include "text/value_readers.h"

#include <algorithm>

namespace keldrin {

namespace {

void reportLine(std::string_view words, const TableScan &scan) {
    ReportError({std::string(words) + std::to_string(scan.lineCount), scan.line});
}

void dealWithFault(const TableScan &scan) {
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
    options.width = MostTableCell;
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
    ReportInfoLine("Have found correct column labels, now reading numerical data.");
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
    Str_Split_Columns(scan.line, scan.format.maxCells, MostTableCell, scan.cells);
    const RecordLine record{scan.lineCount, scan.line};
    for (std::size_t i = 0; i < scan.format.columns.size(); ++i) {
        const TableColumn &column = scan.format.columns[i];
        const std::string_view cell =
            column.read ? scan.cells.column(scan.map.iVarCol[i]) : std::string_view{};
        values[i] = cell.empty() ? column.defaultValue : readCell(column, record, cell);
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

bool nextTableRow(TableScan &scan, RowValues &values) {
    LineStatus status = LineStatus::Line;
    while ((status = scan.reader.next(scan.line)) != LineStatus::End) {
        ++scan.lineCount;
        if (status == LineStatus::Fault) {
            dealWithFault(scan);
            continue;
        }
        switch (classifyTableLine(scan.line)) {
        case TableLine::Blank:
        case TableLine::Comment:
            break;
        case TableLine::Labels:
            readLabels(scan);
            break;
        case TableLine::Data:
            if (scan.labelsGood) {
                readRow(scan, values);
                return true;
            }
        }
    }
    return false;
}

bool anyRowWith(const TableFormat &format, LineReader &reader, std::size_t column) {
    TableScan scan = beginTableScan(format, reader);
    while (reader.next(scan.line) == LineStatus::Line) {
        const TableLine kind = classifyTableLine(scan.line);
        if (kind == TableLine::Labels) {
            matchLabels(scan);
        } else if (kind == TableLine::Data) {
            Str_Split_Columns(scan.line, format.maxCells, MostTableCell, scan.cells);
            const std::string_view cell = scan.cells.column(scan.map.iVarCol[column]);
            double value = MissingValue;
            if (!hasColumn(scan, column) ||
                (Cell_to_R8(cell, MissingValue, value) == CellRead && isPresent(value))) {
                return true;
            }
        }
    }
    return false;
}

void noteEndMark(const LineReader &reader) {
    if (reader.endedAtMark()) {
        ReportInfoLine("The file has an end mark (code 26); what stands behind it was not read.");
    }
}

} // namespace keldrin
