#include "text/times.h"

#include "base/ascii.h"
#include "base/fixed_text.h"
#include "base/free_form.h"
#include "base/index.h"
#include "base/real.h"
#include "messages/message_log.h"
#include "text/cell_report.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <initializer_list>
#include <vector>

namespace keldrin {

namespace {

struct TimeTexts {
    std::string_view hours;
    std::string_view minutes;
    std::string_view seconds;
};

/// Splits at the first and the last colon; false where one of the three parts is empty.
bool splitAtColons(std::string_view cell, TimeTexts &parts) {
    const std::string_view text = trimRight(cell);
    const std::size_t first = text.find(':');
    const std::size_t last = text.rfind(':');
    if (first == std::string_view::npos || first == 0 || last <= first + 1 ||
        last + 1 == text.size()) {
        return false;
    }
    parts = {text.substr(0, first), text.substr(first + 1, last - first - 1),
             text.substr(last + 1)};
    return true;
}

struct TimeValues {
    int hours = 0;
    int minutes = 0;
    double seconds = 0.0;
};

bool readTime(const TimeTexts &parts, TimeValues &time) {
    return readFreeForm(parts.hours, time.hours) == FreeForm::Value &&
           readFreeForm(parts.minutes, time.minutes) == FreeForm::Value &&
           readFreeForm(parts.seconds, time.seconds) == FreeForm::Value;
}

double inHours(double hours, const TimeValues &time) {
    return hours + (time.minutes + time.seconds / 60.0) / 60.0;
}

void reportTime(const RecordLine &record, std::initializer_list<std::string> words) {
    std::vector<MessageLine> lines(words.begin(), words.end());
    lines.emplace_back("Record number " + std::to_string(record.number));
    lines.emplace_back(trimBlanks(record.line));
    ReportError(lines);
}

/// Hours in whole parts; the rounding to milliseconds carries through all of them.
struct ClockParts {
    int hours = 0;
    int minutes = 0;
    int seconds = 0;
    int milliseconds = 0;
};

ClockParts clockParts(double hours) {
    constexpr double MostHours = 100000.0;
    const auto total = std::llround(limited(std::fabs(hours), 0.0, MostHours) * 3600000.0);
    return {static_cast<int>(total / 3600000), static_cast<int>(total / 60000 % 60),
            static_cast<int>(total / 1000 % 60), static_cast<int>(total % 1000)};
}

std::string padded(int number, std::size_t digits) {
    const std::string text = std::to_string(number);
    return text.size() < digits ? std::string(digits - text.size(), '0') + text : text;
}

void writeTime(double hours, int decimals, std::string_view separator, std::string &text) {
    const ClockParts time = clockParts(hours);
    if (!std::isfinite(hours) || time.hours > 999) {
        ReportError(
            {"dHours_to_sHHMMSS.IOERR = 1",
             "iHour=" + std::to_string(time.hours) + ", iMin=" + std::to_string(time.minutes),
             "iSec=" + std::to_string(time.seconds) +
                 ", MSec=" + std::to_string(time.milliseconds)});
        text.clear();
        return;
    }
    text = hours < 0.0 ? "-" : "";
    text += padded(time.hours, 2);
    text.append(separator).append(padded(time.minutes, 2));
    text.append(separator).append(padded(time.seconds, 2));
    const int kept = limited(decimals, 0, 3);
    if (kept > 0) {
        text += '.' + padded(time.milliseconds, 3).substr(0, asIndex(kept));
    }
}

} // namespace

int Cell_to_Hours(std::string_view cell, double defaultValue, double &result) {
    result = defaultValue;
    if (isEmptyCell(cell)) {
        return CellEmpty;
    }
    if (readFreeForm(cell, result) != FreeForm::Failed) {
        return CellRead;
    }
    TimeTexts parts;
    TimeValues time;
    if (!splitAtColons(cell, parts)) {
        return CellFailed;
    }
    parts.hours.remove_prefix(parts.hours.size() - std::min<std::size_t>(2, parts.hours.size()));
    if (!readTime(parts, time)) {
        return CellFailed;
    }
    result = inHours(time.hours, time);
    return CellRead;
}

int Cell_to_HHMMSS(std::string_view cell, double defaultValue, double &result) {
    constexpr std::size_t Width = 16;
    result = defaultValue;
    if (isEmptyCell(cell)) {
        return CellEmpty;
    }
    const std::string_view text = trimBlanks(cell).substr(0, Width);
    TimeValues time;
    if (text.size() < 5 ||
        !readTime({text.substr(0, 2), text.substr(2, 2), text.substr(4)}, time)) {
        return CellFailed;
    }
    const double hours = inHours(std::abs(time.hours), time);
    result = time.hours < 0 ? -hours : hours;
    return CellRead;
}

int Val_Read_Hours(const RecordLine &record, std::string_view cell, std::string_view label,
                   double defaultValue, double &result) {
    constexpr CellWords Words = {"ERROR reading hh:mm:ss ", " value from ", true};
    return reported(Cell_to_Hours(cell, defaultValue, result), record, cell, label, Words,
                    defaultValue, result);
}

int Val_Read_HHMMSS(const RecordLine &record, std::string_view cell, std::string_view label,
                    double defaultValue, double &result) {
    constexpr CellWords Words = {"ERROR reading hhmmss.ss "};
    return reported(Cell_to_HHMMSS(cell, defaultValue, result), record, cell, label, Words,
                    defaultValue, result);
}

int Val_Read_TimeOfDay(const RecordLine &record, std::string_view cell, std::string_view /*label*/,
                       double defaultValue, double &result) {
    result = defaultValue;
    if (isEmptyCell(cell)) {
        return CellEmpty;
    }
    const std::string shown(trimRight(cell));
    const std::string words = "ERROR reading hh:mm:ss.s value from " + shown;
    if (!holds(cell, ":")) {
        double seconds = 0.0;
        const FreeForm found = readFreeForm(cell, seconds);
        if (found == FreeForm::Value) {
            result = seconds / 3600.0;
        } else if (found == FreeForm::Failed) {
            reportTime(record, {words, "Was also unable to read as seconds."});
        }
        return CellRead; // also after the report: the default stands for the seconds
    }
    TimeTexts parts;
    if (!splitAtColons(cell, parts)) {
        reportTime(record, {"ERROR: Did not find expected hh:mm:ss.s format in \"" + shown + "\""});
        return CellFailed;
    }
    TimeValues time;
    if (!readTime(parts, time)) {
        reportTime(record, {words});
        return CellFailed;
    }
    const double hours = inHours(std::abs(static_cast<double>(time.hours)), time);
    result = holds(parts.hours, "-") ? -hours : hours;
    return CellRead;
}

void dHours_to_sHHMMSS(double hours, int decimals, std::string &text) {
    writeTime(hours, decimals, ":", text);
}

void dHours_to_HHMMSS(double hours, int decimals, std::string &text) {
    writeTime(hours, decimals, "", text);
}
void dHours_to_HHMMSS(float hours, int decimals, std::string &text) {
    writeTime(static_cast<double>(hours), decimals, "", text);
}

} // namespace keldrin
