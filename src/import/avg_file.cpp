#include "import/avg_file.h"

#include "base/ascii.h"
#include "keywords/record.h"
#include "messages/message_log.h"
#include "text/enumeration.h"

#include <vector>

namespace keldrin {

namespace {

// Sorted by label: the search stops at the first label above the one sought.
constexpr std::array<LabelAlias, 28> Aliases = {{
    {"%MAG", "DBDT.%ERR"},
    {"AMP", "TX.AMP"},
    {"AMPS", "TX.AMP"},
    {"BMAG", "B.MAG"},
    {"CMP", "RX.CMP"},
    {"DEPTH", "DEPTH.IMAGE"},
    {"E.%ERR", "DBDT.%ERR"},
    {"E.ERR", "DBDT.ERR"},
    {"E.MAG", "DBDT.MAG"},
    {"E.WGT", "DBDT.WGT"},
    {"FREQ", "TX.FREQ"},
    {"MAGNITUDE", "DBDT.MAG"},
    {"RAMPAPPRES", "ARES.MAG"},
    {"REF.%ERR", "DBDT.%ERR"},
    {"REF.ERR", "DBDT.ERR"},
    {"REF.MAG", "DBDT.MAG"},
    {"REF.WGT", "DBDT.WGT"},
    {"RESISTIVITY", "ARES.MAG"},
    {"SKP", "SKIP"},
    {"STATION", "RX.QDRSTN"},
    {"TIME", "TWIN.CENTER"},
    {"TX", "TX.QDRSTN"},
    {"TX-COORD", "TX.QDRSTN"},
    {"TXAMP.%ERR", "DBDT.%ERR"},
    {"TXAMP.ERR", "DBDT.ERR"},
    {"TXAMP.MAG", "DBDT.MAG"},
    {"TXAMP.WGT", "DBDT.WGT"},
    {"WIN", "TWIN.INDEX"},
}};

constexpr std::array RequiredColumns = {AvgTime, AvgMag};

// The last entry is blank: it is contained in every word, so no word ever asks the user.
constexpr std::array<std::string_view, 9> ComponentNames = {"EX", "EY",  "EZ",  "HX", "HY",
                                                            "HZ", "REF", "OFF", ""};

bool isKeywordRecord(std::string_view line) {
    return line.substr(0, 2).find('$') != std::string_view::npos;
}

bool isComment(std::string_view line) {
    return std::string_view("\\/!\"").find(line.front()) != std::string_view::npos;
}

} // namespace

bool AVG_Read_Labels(std::string_view line, int record, ColumnMap &map) {
    LabelMatch options;
    options.maxCols = AvgMaxColumns;
    options.width = AvgCellWidth;
    Str_Column_Labels_Alias(line, options, Aliases, AvgNames, map);
    std::vector<MessageLine> missing;
    for (const AvgVariable variable : RequiredColumns) {
        if (map.iVarCol[variable] == 0) {
            missing.emplace_back("AVG_Read_Labels.WARNING: Could not find required column " +
                                 std::string(AvgNames[variable]));
        }
    }
    if (missing.empty()) {
        return true;
    }
    missing.emplace_back("In: " + std::string(line));
    ReportError(missing);
    ReportInfoLine("Missing critical columns, skipping data section beginning at line " +
                   std::to_string(record));
    ReportInfoLine(line);
    return false;
}

bool AvgWalk::nextDataLine(Metadata &metadata, std::string_view &line) {
    for (;;) {
        const LineStatus status = reader.next(line);
        if (status == LineStatus::End) {
            return false;
        }
        if (status == LineStatus::Fault) {
            faulted = true;
            ReportError({"ERROR while reading file near line " + std::to_string(record()), line});
            return false;
        }
        line = trimRight(line);
        if (line.size() < 3) {
            continue;
        }
        line = trimLeft(line);
        if (isKeywordRecord(line)) {
            MDP_Read_Record(metadata, record(), line, AvgSourceLevel);
            HeaderChanged = true;
        } else if (isComment(line)) {
            continue;
        } else if (startsLabelLine(line)) {
            LabelsValid = AVG_Read_Labels(line, record(), columns);
            HeaderChanged = HeaderChanged || LabelsValid;
        } else if (LabelsValid) {
            Str_Split_Columns(line, AvgMaxColumns, AvgCellWidth, cells);
            return true;
        }
    }
}

int avgComponent(std::string_view text, std::string_view label) {
    int index = 0;
    Str_to_iEnumeration(cutText(trimLeft(text), 4), label, ComponentNames, index);
    return index;
}

} // namespace keldrin
