#include "import/z_file.h"

#include "base/ascii.h"
#include "base/free_form.h"
#include "base/paths.h"
#include "messages/message_log.h"
#include "text/decimal_commas.h"

namespace keldrin {

namespace {

constexpr std::string_view EndText = "9999.0";
constexpr std::size_t EndTextColumns = 10;

/// A field of fixed columns, the first counted from 0.
struct Columns {
    std::size_t first;
    std::size_t width;
};

constexpr Columns CodeColumns = {0, 2};
constexpr Columns StationColumns = {2, 8};
constexpr Columns TimeColumns = {10, 8};
constexpr Columns MagnitudeColumns = {18, 12};

// What stands in the columns, without blanks: these do not count, not even between digits.
std::string fieldText(std::string_view line, Columns columns) {
    std::string text;
    if (line.size() > columns.first) {
        for (const char c : line.substr(columns.first, columns.width)) {
            if (c != ' ') {
                text += c;
            }
        }
    }
    return text;
}

// A separator of free-form numbers is no part of a fixed field: "1,5" is no 1.
template <class Number>
bool readNumber(const std::string &text, Number &value) {
    value = 0;
    return text.empty() || (text.find_first_of(",/\t") == std::string::npos &&
                            readFreeForm(text, value) == FreeForm::Value);
}

bool isEndLine(std::string_view line) {
    return holds(line.substr(0, EndTextColumns), EndText);
}

bool isBlankLine(std::string_view line) {
    return line.find_first_not_of(" \t") == std::string_view::npos;
}

} // namespace

bool readZFields(std::string_view line, ZReading &reading) {
    const std::string station = fieldText(line, StationColumns);
    const std::string magnitude = fieldText(line, MagnitudeColumns);
    reading.hasEmptyField = station.empty() || magnitude.empty();
    return readNumber(fieldText(line, CodeColumns), reading.code) &&
           readNumber(station, reading.station) &&
           readNumber(fieldText(line, TimeColumns), reading.time) &&
           readNumber(magnitude, reading.magnitude);
}

bool ZWalk::open(const std::string &fileName) {
    name = fileNameOf(fileName);
    if (!reader.open(fileName)) {
        ReportError({"ERROR: Could not find " + name});
        return false;
    }
    return true;
}

bool ZWalk::scanHead() {
    ReportInfoLine("Scanning for beginning of numerical data.");
    bool hasMark = false;
    std::string_view line;
    for (;;) {
        const LineStatus status = reader.next(line);
        if (status == LineStatus::End) {
            return false;
        }
        if (status == LineStatus::Fault) {
            ReportError({"ERROR while reading data from:", name, reader.errorText()});
            return false;
        }
        ReportInfoLine(" >" + std::string(line));
        const std::string upper = Str_Upper(line);
        hasMark = hasMark || holds(upper, "MAGNITUDE") || holds(upper, "DBZ/DT");
        if (isEndLine(upper)) {
            ended = true;
            return false;
        }
        if (upper.compare(0, 3, "IIX") == 0) {
            break;
        }
    }
    if (!hasMark) {
        ReportError({"ERROR: Could not find correct data type in " + name});
    }
    return hasMark;
}

bool ZWalk::nextReading(ZReading &reading, std::string_view &line) {
    for (;;) {
        const LineStatus status = reader.next(line);
        if (status == LineStatus::End) {
            return false;
        }
        if (status == LineStatus::Fault) {
            ReportUnreadFile(name, {"ERROR while reading data from:", name, reader.errorText()});
            continue; // the reader ends next
        }
        if (isEndLine(line)) {
            ended = true;
            return false;
        }
        if (isBlankLine(line)) {
            continue;
        }
        if (!readZFields(line, reading)) {
            if (hasDecimalCommas(line)) {
                commas.note(reader.lineNumber(), line);
                continue;
            }
            ReportError({"ERROR while reading data from:", trimBlanks(line)});
        } else if (reading.code == ZReadingCode) {
            return true;
        } else {
            ++linesOfOtherCode;
        }
    }
}

} // namespace keldrin
