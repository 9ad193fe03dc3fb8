#include "import/amira/times.h"

#include "base/ascii.h"
#include "base/index.h"
#include "base/line_reader.h"
#include "base/number_text.h"
#include "base/paths.h"
#include "import/amira/keywords.h"
#include "import/import_steps.h"
#include "messages/message_log.h"
#include "text/columns.h"
#include "text/decimal_commas.h"
#include "text/value_readers.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace keldrin {

namespace {

constexpr std::string_view TimesWarning = "AMR_Read_Keyword_Value.WARNING:";
constexpr std::size_t ListCellWidth = 32;
constexpr float LongestTime = 1.0E7F; ///< in the unit of the file

constexpr std::size_t ListLineLimit = 80;
constexpr int MostLines = 256;
constexpr std::array<std::string_view, 2> Labels = {"DELAY", "WIDTH"};
constexpr int LabelColumns = 2;

struct TimeUnit {
    std::string_view mark;
    float milliseconds;
};
constexpr std::array Units = {TimeUnit{"(US)", 0.001F}, TimeUnit{"(MS)", 1.0F},
                              TimeUnit{"(S)", 1000.0F}, TimeUnit{"(SEC)", 1000.0F}};
constexpr float DefaultUnit = 1000.0F;

struct ListKind {
    std::string_view mark;
    ChannelTimes::List list;
};
constexpr std::array Kinds = {ListKind{"START", ChannelTimes::Begin},
                              ListKind{"END", ChannelTimes::End},
                              ListKind{"WIDTH", ChannelTimes::Width}};

float millisecondsPerUnit(const RecordLine &where, std::string_view keyword,
                          std::string_view pair) {
    for (const TimeUnit &unit : Units) {
        if (holds(keyword, unit.mark)) {
            return unit.milliseconds;
        }
    }
    if (holds(keyword, "(")) {
        warnAt(where,
               {TimesWarning, pair, "The unit is none of (US), (MS) or (S); times count as sec."});
    }
    return DefaultUnit;
}

ChannelTimes::List listOf(std::string_view keyword) {
    for (const ListKind &kind : Kinds) {
        if (holds(keyword, kind.mark)) {
            return kind.list;
        }
    }
    return ChannelTimes::Center;
}

// Commas separate; a list without any is one of blanks.
void splitList(std::string_view value, SplitCells &cells) {
    if (holds(value, ",")) {
        Str_Split_Csv(value, MaxWindows, value.size(), cells);
    } else {
        Str_Split_Columns(value, MaxWindows, value.size(), cells);
    }
}

// A window that would end before it begins has no width.
void setWidthsOfEnds(const RecordLine &where, ChannelTimes &times, std::string_view pair) {
    const int windows =
        std::min(times.listed[ChannelTimes::Begin], times.listed[ChannelTimes::End]);
    if (times.listed[ChannelTimes::Width] > 0) {
        return;
    }
    bool reversed = false;
    for (std::size_t i = 0; i < asIndex(windows); ++i) {
        const float width =
            times.values[ChannelTimes::End][i] - times.values[ChannelTimes::Begin][i];
        reversed = reversed || width < 0.0F;
        times.values[ChannelTimes::Width][i] = std::max(width, 0.0F);
    }
    if (reversed) {
        warnAt(where, {TimesWarning, pair, "Windows that end before they begin get no width."});
    }
}

/// One reading of a channel file.
struct ChannelFile {
    LineReader reader{ListLineLimit};
    std::string name; ///< for messages
    ColumnMap columns;
    SplitCells cells;
    bool hasLabels = false;
    bool full = false;
    bool commasSeparate = false; ///< the labels are separated by commas
    LineNotice commas;           ///< the first row with decimal commas
    LineNotice noTime;           ///< rows whose centre cannot be read
    LineNotice noWidth;          ///< rows whose width cannot be read
    int rows = 0;
    int timed = 0; ///< of these
};

void storeChannel(ChannelTimes &times, std::size_t channel, float delay, float width) {
    const bool hasWidth = width >= 0.0F;
    times.values[ChannelTimes::Center][channel] = delay;
    times.values[ChannelTimes::Width][channel] = isPresent(width) ? width : 0.0F;
    times.values[ChannelTimes::Begin][channel] = hasWidth ? delay - width / 2.0F : MissingValue;
    times.values[ChannelTimes::End][channel] = hasWidth ? delay + width / 2.0F : MissingValue;
}

bool isRule(std::string_view line) {
    return line.find_first_not_of("-_ \t") == std::string_view::npos;
}

// Every row is a channel, so that one without a time moves no other.
void readRow(ChannelFile &file, std::string_view line, ChannelTimes &times) {
    if (isRule(line)) {
        return;
    }
    const int number = file.reader.lineNumber();
    if (!file.commasSeparate && file.commas.count == 0 && hasDecimalCommas(line)) {
        file.commas.note(number, line);
    }
    Str_Split_Columns(line, LabelColumns, ListLineLimit, file.cells);
    float delay = MissingValue;
    float width = MissingValue;
    if (file.rows == MaxWindows) {
        ReportWarning(
            {"WARNING: More than " + std::to_string(MaxWindows) + " channel times in " + file.name,
             "Times will be skipped starting with line " + std::to_string(number), line});
        file.full = true;
        return;
    }
    if (Cell_to_R4(file.cells.column(file.columns.iVarCol[0]), MissingValue, delay) != CellRead) {
        file.noTime.note(number, line);
        delay = MissingValue;
    } else if (Cell_to_R4(file.cells.column(file.columns.iVarCol[1]), MissingValue, width) >
               CellRead) {
        file.noWidth.note(number, line);
        width = MissingValue;
    }
    storeChannel(times, asIndex(file.rows), delay, width);
    times.NumChannels = ++file.rows;
    file.timed += isPresent(delay) ? 1 : 0;
}

// A line that begins with a letter. Below labels it may be a row ("NaN 0.1").
void readLabels(ChannelFile &file, std::string_view line, ChannelTimes &times) {
    LabelMatch options;
    options.maxCols = LabelColumns;
    options.width = ListCellWidth;
    ColumnMap columns;
    Str_Column_Labels(line, options, Labels, columns);
    if (columns.iVarCol[0] == 0) { // labels above stay in force
        if (file.hasLabels) {
            readRow(file, line, times);
            return;
        }
        ReportError({"WARNING: Could not find DELAY column.", "In: " + std::string(line)});
        return;
    }
    file.columns = columns;
    file.hasLabels = true;
    file.commasSeparate = holds(line, ",");
    Str_Split_Columns(line, LabelColumns + 1, ListCellWidth, file.cells);
    if (file.cells.cells.size() > LabelColumns) {
        ReportWarning({"WARNING: Only the first two columns are read in " + file.name,
                       "In: " + std::string(line)});
    }
}

// Reads a line. 2 or more when a keyword stops the import.
int readLine(ChannelFile &file, std::string_view line, AmiraRecord &record) {
    line = trimBlanks(line);
    const AmiraLine kind = classifyAmiraLine(line, false);
    if (kind == AmiraLine::Slash || kind == AmiraLine::Pairs) {
        return AMR_Read_Keyword_Line({file.reader.lineNumber(), line}, kind, record);
    }
    if (kind == AmiraLine::Other && startsLabelLine(line)) {
        readLabels(file, line, record.times);
    } else if (kind == AmiraLine::Other && file.hasLabels) {
        readRow(file, line, record.times);
    }
    return 0;
}

int readLines(ChannelFile &file, AmiraRecord &record) {
    std::string_view line;
    while (!file.full) {
        const LineStatus status = file.reader.next(line);
        const int number = file.reader.lineNumber();
        if (status == LineStatus::End) {
            break;
        }
        if (status == LineStatus::Fault) {
            ReportUnreadFile(file.name,
                             {"ERROR while reading file near line " + std::to_string(number),
                              file.name, file.reader.errorText()});
        } else if (number > MostLines) {
            ReportWarning(
                {"WARNING: More than " + std::to_string(MostLines) + " lines in " + file.name,
                 "The others are not read."});
            break;
        } else if (number > 1) {
            const int stops = readLine(file, line, record);
            if (stops >= StopsFile) {
                return stops;
            }
        }
    }
    return 0;
}

// A file of that name beside the data file, found without regard to case.
std::string besideData(const std::string &dataFile, std::string_view name) {
    const std::string path = existingForm(joinPath(directoryOf(dataFile), name));
    const std::string_view extension = extensionOf(path);
    return sideFilePath(path, extension.empty() ? ".chn" : extension);
}

} // namespace

int AMR_Read_Times(const RecordLine &where, std::string_view keyword, std::string_view value,
                   ChannelTimes &times) {
    const std::string pair = std::string(keyword) + ":" + std::string(value);
    SplitCells cells;
    splitList(value, cells);
    if (cells.cells.empty()) {
        reportAt(where, {TimesWarning, pair, "did not recover any value time-window values."});
        return 1;
    }
    const float scale = millisecondsPerUnit(where, keyword, pair);
    const ChannelTimes::List list = listOf(keyword);
    WindowReals values = times.values[list];
    for (std::size_t i = 0; i < cells.cells.size(); ++i) {
        float time = MissingValue;
        const bool read = Cell_to_R4(cells.cells[i], MissingValue, time) == CellRead;
        if (!read || !(time >= 0.0F && time <= LongestTime)) {
            reportAt(where, {TimesWarning, pair,
                             "TWF(" + std::to_string(i + 1) + ")=" + messageNumber(time) +
                                 " < 0 or > " + messageNumber(LongestTime)});
            return 1;
        }
        values[i] = time * scale;
    }
    times.values[list] = values;
    times.listed[list] = static_cast<int>(cells.cells.size());
    if (list == ChannelTimes::Begin || list == ChannelTimes::End) {
        setWidthsOfEnds(where, times, pair);
    }
    times.NumChannels = std::min(times.NumChannels, times.listed[list]);
    return 0;
}

int listedChannels(const ChannelTimes &times) {
    const int centers = times.listed[ChannelTimes::Center];
    return centers > 0
               ? centers
               : std::min(times.listed[ChannelTimes::Begin], times.listed[ChannelTimes::End]);
}

bool findChannelFile(const std::string &dataFile, std::string_view named, std::string &path) {
    if (trimBlanks(named).empty()) {
        path = sideFilePath(dataFile, ".chn");
        return pathExists(path);
    }
    path = existingForm(std::string(trimBlanks(named)));
    if (pathExists(path)) {
        return true;
    }
    for (const std::string_view name : {std::string_view(path), fileNameOf(path)}) {
        const std::string beside = besideData(dataFile, name);
        if (pathExists(beside)) {
            path = beside;
            return true;
        }
    }
    return false;
}

int AMR_Read_Channel_File(const std::string &path, AmiraRecord &record) {
    ChannelFile file;
    file.name = fileNameOf(path);
    record.times.NumChannels = 0;
    ReportInfoLine("Reading channel-file times from");
    ReportInfoLine(path);
    if (!file.reader.open(path)) {
        ReportUnreadFile(file.name, {"ERROR while opening", file.name, file.reader.errorText()});
        return 1;
    }
    const int status = readLines(file, record);
    noteFileEnd(file.reader, file.name);
    noteDecimalCommas(file.commas, file.name);
    file.noTime.report(file.name, "Channels whose DELAY cannot be read",
                       "Their values are passed over.");
    file.noWidth.report(file.name, "Channels whose WIDTH cannot be read",
                        "Their widths are made from the times around them.");
    if (status != 0) {
        return status;
    }
    if (file.timed == 0) {
        record.times.NumChannels = 0;
        ReportError(
            {"AMIRA Chn file input WARNING:", "No valid channel times read from " + file.name});
        return 1;
    }
    ReportInfoLine("  " + std::to_string(file.timed) + " times read from " + file.name);
    return 0;
}

bool hasTime(const ChannelTimes &times, int channel) {
    const std::size_t i = asIndex(channel);
    return isPresent(times.values[ChannelTimes::Center][i]) ||
           (isPresent(times.values[ChannelTimes::Begin][i]) &&
            isPresent(times.values[ChannelTimes::End][i]));
}

float channelTime(const ChannelTimes &times, int channel, float offset) {
    const std::size_t i = asIndex(channel);
    const float begin = times.values[ChannelTimes::Begin][i] + offset;
    const float end = times.values[ChannelTimes::End][i] + offset;
    return begin > 0.0F && end > 0.0F ? std::sqrt(begin * end)
                                      : times.values[ChannelTimes::Center][i] + offset;
}

} // namespace keldrin
