#include "import/avg_file.h"

#include "base/ascii.h"
#include "base/paths.h"
#include "keywords/record.h"
#include "messages/message_log.h"
#include "text/decimal_commas.h"
#include "text/enumeration.h"

#include <utility>
#include <vector>

namespace keldrin {

namespace {

// Sorted by label: the search stops at the first label above the one sought.
constexpr std::array<LabelAlias, 28> AvgAliases = {{
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

constexpr std::array RequiredAvgColumns = {AvgTime, AvgMag};

// The last entry is blank: it is contained in every word, so no word ever asks the user.
constexpr std::array<std::string_view, 9> ComponentNames = {"EX", "EY",  "EZ",  "HX", "HY",
                                                            "HZ", "REF", "OFF", ""};

bool isKeywordRecord(std::string_view line) {
    return line.substr(0, 2).find('$') != std::string_view::npos;
}

// Reported as soon as data stand below the line; the data are skipped.
void reportMissingColumns(const AvgLabels &labels) {
    std::vector<MessageLine> lines;
    for (const std::string_view name : labels.missing) {
        lines.emplace_back("AVG_Read_Labels.WARNING: Could not find required column " +
                           std::string(name));
    }
    lines.emplace_back("In: " + labels.line);
    ReportError(lines);
    ReportInfoLine("Missing critical columns, skipping data section beginning at line " +
                   std::to_string(labels.record));
    ReportInfoLine(labels.line);
}

bool isComment(std::string_view line) {
    return std::string_view("\\/!\"").find(line.front()) != std::string_view::npos;
}

} // namespace

std::span<const LabelAlias> avgAliases() {
    return AvgAliases;
}

bool AvgWalk::open(const std::string &fileName) {
    name = fileNameOf(fileName);
    const bool opened = reader.open(fileName);
    if (!opened && pathExists(fileName)) {
        ReportError({"ERROR: Could not open data file", fileName, reader.errorText()});
    }
    return opened;
}

// A section without data stands for nothing: the labels before it remain in force.
void AvgWalk::takeLabels(std::string_view line) {
    LabelMatch options;
    options.maxCols = AvgMaxColumns;
    options.width = AvgLabelWidth;
    AvgLabels taken;
    taken.record = record();
    taken.line = line;
    Str_Column_Labels_Alias(line, options, AvgAliases, AvgNames, taken.columns);
    for (const AvgVariable variable : RequiredAvgColumns) {
        if (taken.columns.iVarCol[variable] == 0) {
            taken.missing.push_back(AvgNames[variable]);
        }
    }
    if (pending) {
        emptySections.note(pending->record, pending->line);
    }
    pending = std::move(taken);
}

// False for a line below labels that lack a column.
bool AvgWalk::takeDataLine(std::string_view line) {
    if (pending) {
        labels = std::move(*pending);
        pending.reset();
        LabelsValid = labels.missing.empty();
        HeaderChanged = HeaderChanged || LabelsValid;
        if (!LabelsValid && !quiet) {
            reportMissingColumns(labels);
        }
    }
    if (!LabelsValid) {
        return false;
    }
    if (!quiet && commas.count == 0 && hasDecimalCommas(line)) {
        commas.note(record(), line);
    }
    Str_Split_Columns(line, AvgMaxColumns, AvgLineLimit, cells);
    return true;
}

bool AvgWalk::nextDataLine(Metadata &metadata, std::string_view &line) {
    for (;;) {
        const LineStatus status = reader.next(line);
        if (status == LineStatus::End) {
            if (pending) {
                emptySections.note(pending->record, pending->line);
                pending.reset();
            }
            return false;
        }
        if (status == LineStatus::Fault) {
            faulted = true;
            ReportError({"ERROR while reading file near line " + std::to_string(record()),
                         reader.errorText()});
            return false;
        }
        line = trimRight(line);
        if (line.size() < 3) {
            continue;
        }
        line = trimLeft(line);
        if (isKeywordRecord(line)) {
            MDP_Read_Record(metadata, record(), line, AvgSourceLevel, quiet);
            HeaderChanged = true;
            if (recordTaken) {
                recordTaken(record(), line);
            }
        } else if (isComment(line)) {
            continue;
        } else if (startsLabelLine(line)) {
            takeLabels(line);
        } else if (takeDataLine(line)) {
            return true;
        }
    }
}

void AvgWalk::reportNotices() const {
    emptySections.report(name, "Lines of column labels without data below them",
                         "They are passed over.");
    noteDecimalCommas(commas, name);
}

int avgComponent(std::string_view text, std::string_view label) {
    int index = 0;
    Str_to_iEnumeration(cutText(trimLeft(text), 4), label, ComponentNames, index);
    return index;
}

} // namespace keldrin
