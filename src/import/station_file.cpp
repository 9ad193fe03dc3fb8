#include "import/station_file.h"

#include "base/ascii.h"
#include "base/line_reader.h"
#include "base/number_text.h"
#include "base/paths.h"
#include "base/sorting.h"
#include "import/import_steps.h"
#include "messages/message_log.h"
#include "messages/questions.h"
#include "messages/reading_place.h"
#include "text/columns.h"
#include "text/value_readers.h"

#include <array>
#include <cmath>
#include <span>
#include <string_view>

namespace keldrin {

namespace {

constexpr std::size_t StationLineLimit = 8192;
constexpr int MaxColumns = 8;
constexpr std::size_t StationCellWidth = 32;
constexpr std::size_t MaxStations = 2048;
constexpr double LargestCoordinate = 1.0E9;
constexpr int MostSeparationWarnings = 19;

constexpr std::array<std::string_view, 4> Names = {"STATION", "EAST", "NORTH", "ELEV"};
constexpr std::array<std::string_view, 4> StationWords = {"Station", "Easting", "Northing",
                                                          "Elevation"};

struct StationReader {
    LineReader lines{StationLineLimit};
    std::string name; ///< of the file, for messages
    ColumnMap columns;
    SplitCells cells;
    bool labelsValid = true; ///< before any label line the columns stand in their own order
    bool full = false;
    int faults = 0; ///< dropped points so far: the first is an error, the others are warnings
};

void reportDropped(StationReader &reader, std::initializer_list<MessageLine> lines) {
    if (++reader.faults == 1) {
        ReportError(lines);
    } else {
        ReportWarning(lines);
    }
}

void readLabels(StationReader &reader, std::string_view line) {
    LabelMatch options;
    options.maxCols = MaxColumns;
    options.width = StationCellWidth;
    Str_Column_Labels(line, options, Names, reader.columns);
    reader.labelsValid = true;
    for (const int column : reader.columns.iVarCol) {
        reader.labelsValid = reader.labelsValid && column > 0;
    }
    if (reader.labelsValid) {
        ReportInfoLine("Have found correct column labels, now reading numerical data.");
    } else {
        ReportError({"ERROR: Missing station, easting, northing or elevation data in:", line});
    }
}

// A value too large for a coordinate drops its line, with a message.
bool isSpurious(StationReader &reader, const std::array<double, 4> &values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (!(std::fabs(values[i]) > LargestCoordinate)) {
            continue;
        }
        const MessageLine words = "ERROR: |" + std::string(StationWords[i]) + "|=|" +
                                  messageNumber(values[i]) + "| > 1.0E9 on " + reader.name +
                                  " line " + std::to_string(reader.lines.lineNumber());
        if (i + 1 == values.size()) {
            reportDropped(reader, {words, "Spurious data will be dropped."});
        } else {
            reportDropped(reader, {words});
        }
        return true;
    }
    return false;
}

void readPoint(StationReader &reader, std::string_view line, StationTable &table) {
    const RecordLine record{reader.lines.lineNumber(), line};
    Str_Split_Columns(line, MaxColumns, StationLineLimit, reader.cells);
    std::array<double, 4> values{};
    for (std::size_t i = 0; i < values.size(); ++i) {
        const int status = Val_Read_R8(record, reader.cells.column(reader.columns.iVarCol[i]),
                                       Names[i], MissingValue, values[i]);
        if (status == CellEmpty) { // the reader has no word for an empty cell
            ReportWarning({"WARNING: No " + std::string(StationWords[i]) + " on " + reader.name +
                               " line " + std::to_string(record.number),
                           line});
        }
        if (status != CellRead) {
            return;
        }
    }
    if (isSpurious(reader, values)) {
        return;
    }
    if (table.size() >= MaxStations) {
        ReportError(
            {"ERROR: More than " + std::to_string(MaxStations) + " stations in " + reader.name,
             "Data will be skipped starting with line:", line});
        reader.full = true;
        return;
    }
    table.add(values[0], values[1], values[2], values[3]);
}

void readLine(StationReader &reader, std::string_view line, StationTable &table) {
    line = trimRight(line);
    if (line.size() < 2) {
        return;
    }
    line = trimLeft(line);
    if (std::string_view("$\\/!\"").find(line.front()) != std::string_view::npos) {
        return;
    }
    if (startsLabelLine(line)) {
        readLabels(reader, line);
    } else if (reader.labelsValid) {
        readPoint(reader, line, table);
    }
}

void readLines(StationReader &reader, StationTable &table) {
    std::string_view line;
    while (!reader.full) {
        const LineStatus status = reader.lines.next(line);
        if (status == LineStatus::End) {
            return;
        }
        if (status == LineStatus::Fault) {
            ReportUnreadFile(reader.name, {"ERROR while reading data line " +
                                               std::to_string(reader.lines.lineNumber()),
                                           reader.name, reader.lines.errorText()});
        } else {
            readLine(reader, line, table);
        }
    }
}

void sortByStation(StationTable &table) {
    const std::vector<std::size_t> index = indexSort(table.stn);
    for (std::vector<double> *column : {&table.stn, &table.east, &table.north, &table.elev}) {
        permuteByIndex(std::span(*column), index);
    }
}

std::string placeText(const StationTable &table, std::size_t i) {
    return "Stn " + messageNumber(table.stn[i]) + " at " + messageNumber(table.east[i]) + " E, " +
           messageNumber(table.north[i]) + " N";
}

void warnOfSeparation(StationReader &reader, const StationTable &table, std::size_t kept,
                      std::size_t dropped) {
    if (reader.faults >= MostSeparationWarnings) {
        return;
    }
    reportDropped(reader,
                  {"WARNING: Near zero station separation between", placeText(table, kept) + " and",
                   placeText(table, dropped) + ", will drop this data."});
    ReportInfoLine("Dropping (stn,x,y,z) data from " + reader.name +
                   " due to stn-separation error.");
}

// Keeps the first of points at one place (with a warning) and of points with one station.
void dropDuplicates(StationReader &reader, StationTable &table) {
    StationTable kept;
    std::size_t k = 0;
    kept.add(table.stn[0], table.east[0], table.north[0], table.elev[0]);
    for (std::size_t i = 1; i < table.size(); ++i) {
        const double dx = table.east[i] - table.east[k];
        const double dy = table.north[i] - table.north[k];
        if (dx * dx + dy * dy < 0.001) {
            warnOfSeparation(reader, table, k, i);
        } else if (std::fabs(table.stn[i] - table.stn[k]) >= 100.0 * spacing(table.stn[k])) {
            k = i;
            kept.add(table.stn[i], table.east[i], table.north[i], table.elev[i]);
        }
    }
    table = std::move(kept);
}

void deriveTrend(StationTable &table) {
    const std::size_t n = table.size();
    if (n < 2) {
        return;
    }
    const double dx = table.east[n - 1] - table.east[0];
    const double dy = table.north[n - 1] - table.north[0];
    if (std::sqrt(dx * dx + dy * dy) > 0.1) {
        table.stnAzimuth = std::atan2(static_cast<float>(dx), static_cast<float>(dy)) * 57.29578F;
    }
    std::vector<float> ratios;
    for (std::size_t i = 1; i < n; ++i) {
        const double east = table.east[i] - table.east[i - 1];
        const double north = table.north[i] - table.north[i - 1];
        ratios.push_back(static_cast<float>(std::sqrt(east * east + north * north) /
                                            (table.stn[i] - table.stn[i - 1])));
    }
    selectKth(ratios, static_cast<int>(n + 1) / 2, table.stnScale);
}

} // namespace

void StationTable::add(double station, double easting, double northing, double elevation) {
    stn.push_back(station);
    east.push_back(easting);
    north.push_back(northing);
    elev.push_back(elevation);
}

int Stn_File_Input(std::string fileName, StationTable &table) {
    table = StationTable{};
    ReportInfoLine("Searching for file " + fileName);
    const FileQuestion question = {"Optional stn file|*.stn|",
                                   "Select optional station locations file"};
    if (!pathExists(fileName) && !askForFile(question, fileName)) {
        return 1;
    }
    StationReader reader;
    reader.name = fileNameOf(fileName);
    reader.columns.iVarCol = {1, 2, 3, 4};
    ReportInfoLine("Reading station location data from");
    ReportInfoLine(fileName);
    if (!reader.lines.open(fileName)) {
        ReportUnreadFile(reader.name, {"ERROR: Could not open station file", fileName,
                                       reader.lines.errorText()});
        return 1;
    }
    {
        const ReadingPlace place(reader.lines, fileName);
        readLines(reader, table);
    }
    noteFileEnd(reader.lines, reader.name);
    if (table.size() == 0) {
        ReportError({"ERROR: No valid data recovered from " + reader.name,
                     "Expecting space or comma separated columns of",
                     "station, easting, northing, elevation."});
        return 1;
    }
    sortByStation(table);
    dropDuplicates(reader, table);
    deriveTrend(table);
    ReportInfoLine(std::to_string(table.size()) + " points read from " + reader.name);
    return 0;
}

} // namespace keldrin
