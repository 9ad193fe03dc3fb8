#include "base/index.h"
#include "projectfile/data_table.h"

#include "base/paths.h"
#include "messages/message_log.h"
#include "projectfile/data_columns.h"
#include "projectfile/file_content.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace keldrin {

namespace {

/// Old labels, in the byte order that the search needs.
constexpr auto OldLabels = std::to_array<LabelAlias>({
    {"UVCALC", "TEMCALC"},
    {"UVERR", "TEMERR"},
    {"UVOBS", "TEMOBS"},
    {"UVWGTX", "TEMWGTX"},
    {"UVWGTY", "TEMWGTY"},
    {"UVWGTZ", "TEMWGTZ"},
});

constexpr TableFormat Format = {DataColumns, OldLabels,
                                "ERROR while reading column labels at line "};

/// The table as far as it is read.
struct DataReading {
    SurveyModel &model;
    SoundingRecord *current = nullptr; ///< takes the next window
    double lastRxStn = MissingValue;   ///< of the row that was stored last
    double lastTxStn = MissingValue;
    BlockCount soundings = {};       ///< of all rows, also those that are not stored
    int windowsDropped = 0;          ///< beyond the 128th of a sounding
    DataTableLines *lines = nullptr; ///< where they are wanted
};

/// Notes where the window that was stored last stands.
void noteLine(const DataReading &reading, const TableScan &scan) {
    if (reading.lines == nullptr) {
        return;
    }
    DataTableLines &lines = *reading.lines;
    if (lines.labels.empty() || lines.labels.back().line != scan.labelLine) {
        lines.labels.push_back({scan.labelLine, scan.map.iVarCol});
    }
    lines.rows.push_back({scan.reader.lineNumber(), lines.labels.size() - 1});
}

/// Soundings that a file of this size can hold at most, so that a senseless NumStn cannot take
/// all memory.
int mostSoundings(const std::string &path) {
    constexpr std::uintmax_t leastRow = 8; // bytes; the shortest row has more
    constexpr std::uintmax_t fewest = 16;
    constexpr std::uintmax_t ofUnknownSize = 65536;
    std::error_code error;
    const std::uintmax_t bytes = std::filesystem::file_size(path, error);
    const std::uintmax_t most = error ? ofUnknownSize : std::max(fewest, bytes / leastRow);
    return static_cast<int>(std::min<std::uintmax_t>(most, 2147483647));
}

bool isUsable(const RowValues &values) {
    return isPresent(values[ColStation]) && isPresent(values[ColRxStn]) &&
           isPresent(values[ColTxStn]) && isPresent(values[ColTEMobs]) &&
           values[ColTWwidth] >= 0.0 && values[ColTEMerr] >= 0.0 && values[ColTWcenter] > 0.0;
}

void setReal(double &value, float real) {
    value = static_cast<double>(real);
}

/// Limits and units, in 32-bit arithmetic.
void conditionWindow(const ControlValues &control, RowValues &values) {
    const auto center = static_cast<float>(values[ColTWcenter]);
    const auto width = static_cast<float>(values[ColTWwidth]);
    setReal(values[ColTWwidth], std::max(std::min(width, center + 0.001F), 0.0001F));
    setReal(values[ColTEMerr], limited(static_cast<float>(values[ColTEMerr]), 0.1F, 9999.9F));
    if (control.TEMUnitsIndex == MicrovoltPerAmpere) {
        for (const DataColumn column : {ColTEMobs, ColTEMcalc}) {
            if (isPresent(values[column])) {
                const auto microvolts = static_cast<float>(values[column]);
                setReal(values[column], microvolts * 1000.0F / control.RxArea);
            }
        }
    }
}

void reportFullTable(const SurveyModel &model, const RowValues &values, int line) {
    constexpr std::string_view form = "(F14.3)";
    ReportError({"STD_Data_Read.WARNING: More than " + std::to_string(model.SoundingCapacity()) +
                     " soundings at line " + std::to_string(line),
                 "Tx.Stn=" + Number_Text(values[ColTxStn], form) +
                     ", Rx.Stn=" + Number_Text(values[ColRxStn], form),
                 "Excess data will be dropped."});
}

bool startsSounding(const DataReading &reading, const RowValues &values) {
    return reading.current == nullptr || !sameFileStation(values[ColRxStn], reading.lastRxStn) ||
           !sameFileStation(values[ColTxStn], reading.lastTxStn);
}

/// False when the row needs a record and there is none left.
bool storeRow(DataReading &reading, const TableScan &scan, const RowValues &values) {
    SurveyModel &model = reading.model;
    if (startsSounding(reading, values)) {
        if (model.SoundingCount >= model.SoundingCapacity()) {
            return false;
        }
        reading.current = &model.sounding(++model.SoundingCount);
        storeSoundingFields(DataColumns, values, *reading.current);
    }
    if (reading.current->NumTW >= MaxWindows) {
        ++reading.windowsDropped;
        return true;
    }
    const std::size_t window = asIndex(reading.current->NumTW++);
    storeElementFields(DataColumns, values, window, *reading.current);
    reading.current->AResSpare[window] = reading.current->TEMerr[window];
    reading.lastRxStn = values[ColRxStn];
    reading.lastTxStn = values[ColTxStn];
    noteLine(reading, scan);
    return true;
}

void readRows(DataReading &reading, TableScan &scan) {
    ControlValues &control = reading.model.control;
    RowValues values{};
    while (nextTableRow(scan, values)) {
        const bool namesTx = isPresent(values[ColTxStn]);
        settleStations(control, values);
        countSounding(values, reading.soundings);
        if (!isUsable(values)) {
            continue;
        }
        conditionWindow(control, values);
        if (!storeRow(reading, scan, values)) {
            reportFullTable(reading.model, values, scan.lineCount);
            scan.silent = true; // what follows is only counted
            countSoundings(scan, control, reading.soundings);
            return;
        }
        if (control.SurveyTypeIndex == FixedLoop && namesTx) {
            control.TxStn = values[ColTxStn];
        }
    }
}

void noteContent(const DataReading &reading, const TableScan &scan) {
    FileContent &content = reading.model.source.project.content;
    content.soundings = reading.soundings.blocks();
    content.rows = scan.rows;
    content.whole = isWholeProject(scan, reading.model.control, content);
}

std::string counted(int count, std::string_view thing) {
    return std::to_string(count) + " " + std::string(thing) + (count == 1 ? "" : "s");
}

std::string countsOf(const FileContent &content, int read) {
    const std::string announced =
        content.announced > 0 ? " of " + std::to_string(content.announced) : std::string();
    return counted(content.soundings, "sounding") + " found" + announced + ", in " +
           counted(content.rows, "row") + "; " + std::to_string(read) + " read.";
}

/// What the user must know about a file of which less is in memory than it seems to hold.
void reportFaults(const DataReading &reading, const TableScan &scan, const std::string &path) {
    const SurveyModel &model = reading.model;
    const FileContent &content = model.source.project.content;
    const bool lost = model.SoundingCount < 1;
    if (lost || !content.whole) {
        std::vector<MessageLine> lines = {lost ? "ERROR: No row of the data table can be used."
                                               : "WARNING: This project is not whole.",
                                          path, countsOf(content, model.SoundingCount)};
        if (const std::string why = wholenessText(scan); !why.empty()) {
            lines.emplace_back(why);
        }
        ReportNotice(NoticeLevel::Box, lines);
    }
    if (reading.windowsDropped > 0) {
        ReportNotice(
            NoticeLevel::Box,
            {"WARNING: More than " + std::to_string(MaxWindows) + " windows in a sounding.", path,
             counted(reading.windowsDropped, "window") + " dropped."});
    }
    if (scan.lacksEnd && content.whole && !lost) {
        ReportInfoLine("The last line has no line end: it may be cut.");
    }
}

} // namespace

const TableFormat &dataTableFormat() {
    return Format;
}

int STD_Allocate_hTrn(SurveyModel &model, int requested) {
    const int status = allocateSoundings(model, requested);
    if (status != 0) {
        ReportNotice(NoticeLevel::Box,
                     {"STD_Allocate_hTrn.ERROR",
                      "while allocating hTrn(1:" + std::to_string(requested) + ")"});
    }
    return status;
}

int STD_Data_Read(SurveyModel &model, LineReader &reader, const std::string &path,
                  DataTableLines *lines) {
    model.SoundingCount = 0;
    model.MaxTW = 0;
    model.ModelLayerCount = 0;
    model.TimeRatio = 1.0F;
    if (STD_Allocate_hTrn(model, std::min(model.control.NumStn, mostSoundings(path))) != 0) {
        return 1;
    }
    ReportInfoLine("Reading TEM data from");
    ReportInfoLine(path);
    DataReading reading{.model = model};
    reading.lines = lines;
    if (lines != nullptr) {
        *lines = {{}, {}, model.control.TEMUnitsIndex};
    }
    TableScan scan = beginTableScan(Format, reader);
    readRows(reading, scan);
    noteContent(reading, scan);
    setTEMUnits(model.control, NanovoltPerAmpereSquareMetre);
    ReportInfoLine(std::to_string(model.SoundingCount) + " TEM soundings read from " +
                   std::string(fileNameOf(path)));
    if (!reader.stopped()) {
        reportFaults(reading, scan, path);
    }
    deriveTimeRange(model);
    return model.SoundingCount < 1 ? 1 : 0;
}

} // namespace keldrin
