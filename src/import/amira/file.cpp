#include "import/amira/file.h"

#include "base/ascii.h"
#include "base/paths.h"
#include "messages/message_log.h"
#include "text/cell_report.h"
#include "text/decimal_commas.h"

#include <algorithm>
#include <vector>

namespace keldrin {

namespace {

constexpr std::array RequiredColumns = {AmiraStation, AmiraChannel1};

bool isKeywordLine(AmiraLine kind) {
    return kind == AmiraLine::Slash || kind == AmiraLine::Pairs;
}

// A row begins with a number, which no keyword does.
bool beginsLikeARow(std::string_view line) {
    return isDigit(line.front()) ||
           std::string_view("-+.\"").find(line.front()) != std::string_view::npos;
}

bool hasDigit(std::string_view cell) {
    return std::any_of(cell.begin(), cell.end(), isDigit);
}

} // namespace

int AmiraWalk::open(const SurveyModel &model, const std::string &fileName) {
    name = fileNameOf(fileName);
    if (!reader.open(fileName)) {
        if (pathExists(fileName)) {
            ReportError({"ERROR while opening", name, reader.errorText()});
        } else {
            ReportError({"ERROR: Could not find file " + name});
        }
        return 1;
    }
    record = AmiraRecord{};
    AMR_From_Metadata(model, record);
    return 0;
}

bool AmiraWalk::takeLabels(std::string_view line, bool reportMissing) {
    LabelMatch options;
    options.maxCols = AmiraMaxColumns;
    options.width = AmiraLabelWidth;
    ColumnMap map;
    Str_Column_Labels_Alias(line, options, amiraAliases(), AmiraNames, map);
    std::vector<MessageLine> missing;
    for (const AmiraVariable variable : RequiredColumns) {
        if (map.iVarCol[variable] == 0) {
            missing.emplace_back("WARNING: Could not find " + std::string(AmiraNames[variable]) +
                                 " column.");
        }
    }
    if (missing.empty()) {
        columns = map;
        commasSeparate = holds(line, ",");
        return true;
    }
    if (reportMissing) {
        missing.emplace_back("In: " + std::string(line));
        ReportError(missing);
    }
    return false;
}

int AmiraWalk::readHeader() {
    std::string_view line;
    for (;;) {
        const LineStatus status = reader.next(line);
        if (status == LineStatus::End) {
            if (!reader.stopped()) {
                ReportError({"ERROR: Did not locate expected column labels in " + name});
            }
            return 1;
        }
        if (status == LineStatus::Fault) {
            ReportError({"ERROR while reading file near line " + std::to_string(number()), line});
            return 1;
        }
        line = trimLeft(trimRight(line));
        if (number() == 1) {
            continue;
        }
        const AmiraLine kind = classifyAmiraLine(line, true);
        if (isKeywordLine(kind)) {
            const int stops = AMR_Read_Keyword_Line({number(), line, quiet}, kind, record);
            if (stops >= StopsFile) {
                return stops;
            }
        } else if (kind == AmiraLine::Other && startsLabelLine(line)) {
            return takeLabels(line, true) ? 0 : 1;
        }
    }
}

bool AmiraWalk::nextRow(std::string_view &line, std::size_t leastLength) {
    for (;;) {
        const LineStatus status = reader.next(line);
        if (status == LineStatus::End) {
            return false;
        }
        if (status == LineStatus::Fault) {
            ReportUnreadFile(name, {"ERROR in reading file near line " + std::to_string(number()),
                                    name, reader.errorText()});
            continue; // the reader ends next
        }
        line = trimRight(line);
        if (line.size() < leastLength) {
            continue;
        }
        line = trimLeft(line);
        const AmiraLine kind = classifyAmiraLine(line, false);
        if (isKeywordLine(kind)) {
            if (beginsLikeARow(line)) {
                rowsAsKeywords.note(number(), line);
            }
            stopStatus = AMR_Read_Keyword_Line({number(), line, quiet}, kind, record);
            if (stopStatus >= StopsFile) {
                return false;
            }
        } else if (kind == AmiraLine::Other) {
            Str_Split_Columns(line, AmiraMaxColumns, AmiraLineLimit, cells);
            // Labels may come again, where files were put together, and in another order.
            if (hasDigit(cell(AmiraStation)) || !takeLabels(line, false)) {
                if (!commasSeparate && commas.count == 0 && hasDecimalCommas(line)) {
                    commas.note(number(), line);
                }
                return true;
            }
        }
    }
}

void AmiraWalk::takeLine() {
    const FixedText<64> line = cell(AmiraLineName);
    if (isEmptyCell(line.view()) || line == record.Line) {
        return;
    }
    double number = MissingValue;
    AMR_Number({this->number(), {}, quiet}, line.view(), number);
    record.Line = line;
    record.LineNumber = static_cast<float>(number);
}

void AmiraWalk::takeLineAndComponent() {
    takeLine();
    if (hasColumn(AmiraComponent)) {
        record.Component = Str_Upper(cell(AmiraComponent).substr(0, 2));
        record.componentCode = amiraComponent(record.Component.view());
    }
}

} // namespace keldrin
