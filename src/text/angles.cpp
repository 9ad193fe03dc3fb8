#include "text/angles.h"

#include "base/ascii.h"
#include "base/fixed_text.h"
#include "base/free_form.h"
#include "text/cell_report.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

namespace keldrin {

namespace {

struct CompassWord {
    std::string_view word;
    std::string_view bearing;
};

/// Words that stand anywhere in a bearing, the first that fits. "NORTHEAST" holds NORTH and so is
/// 0.
constexpr std::array<CompassWord, 8> WordsInside = {{{"NORTH", "N00E"},
                                                     {"SOUTH", "S00W"},
                                                     {"EAST", "N90E"},
                                                     {"WEST", "N90W"},
                                                     {"NE", "N45E"},
                                                     {"NW", "N45W"},
                                                     {"SE", "S45E"},
                                                     {"SW", "S45W"}}};
constexpr std::array<CompassWord, 4> WholeWords = {
    {{"N", "N00E"}, {"S", "S00W"}, {"E", "N90E"}, {"W", "N90W"}}};

std::string bearingOf(const std::string &text) {
    for (const CompassWord &entry : WordsInside) {
        if (holds(text, entry.word)) {
            return std::string(entry.bearing);
        }
    }
    for (const CompassWord &entry : WholeWords) {
        if (text == entry.word) {
            return std::string(entry.bearing);
        }
    }
    return Str_No_Blanks(text);
}

/// A pole, two characters of degrees and a side, such as N45E.
int readBearing(std::string_view bearing, float &result) {
    int whole = 0;
    if (bearing.size() < 4 || readFreeForm(bearing.substr(1, 2), whole) != FreeForm::Value ||
        whole > 90) {
        return CellFailed;
    }
    const auto degrees = static_cast<float>(whole);
    const std::string sides = {bearing[0], bearing[3]};
    if (sides == "NE") {
        result = degrees;
    } else if (sides == "NW") {
        result = 360.0F - degrees;
    } else if (sides == "SE") {
        result = 180.0F - degrees;
    } else if (sides == "SW") {
        result = 180.0F + degrees;
    } else {
        return CellFailed;
    }
    return CellRead;
}

/// The left-adjusted, upper-case head of a cell.
std::string headOf(std::string_view cell, std::size_t width) {
    return Str_Upper(trimRight(trimBlanks(cell).substr(0, width)));
}

} // namespace

int Cell_to_Azimuth(std::string_view cell, float defaultValue, float &result) {
    result = defaultValue;
    if (isEmptyCell(cell)) {
        return CellEmpty;
    }
    const std::string text = headOf(cell, 8);
    if (text.substr(0, 2).find_first_of("NSEW") == std::string::npos) {
        readFreeForm(text, result); // text that is not a number is ignored
        return CellRead;
    }
    return readBearing(bearingOf(text), result);
}

int Cell_to_Pitch(std::string_view cell, float defaultValue, float &result) {
    result = defaultValue;
    if (isEmptyCell(cell)) {
        return CellEmpty;
    }
    const std::string text = headOf(cell, 16);
    switch (text.front()) {
    case 'U':
        result = 90.0F;
        return CellRead;
    case 'H':
        result = 0.0F;
        return CellRead;
    case 'D':
        result = -90.0F;
        return CellRead;
    default:
        return readFreeForm(text, result) == FreeForm::Failed ? CellFailed : CellRead;
    }
}

int Cell_to_NMEA(std::string_view cell, double defaultValue, double &result, int &degreeDigits) {
    constexpr std::size_t Width = 16;
    result = defaultValue;
    degreeDigits = 0;
    if (isEmptyCell(cell)) {
        return CellEmpty;
    }
    const std::string text = headOf(cell, Width);
    const std::size_t point = std::min(text.find('.'), text.size());
    if (point < 3) {
        return CellFailed;
    }
    degreeDigits = static_cast<int>(point) - 2;
    int degrees = 0;
    double minutes = 0.0;
    if (readFreeForm(std::string_view(text).substr(0, point - 2), degrees) != FreeForm::Value ||
        readFreeForm(std::string_view(text).substr(point - 2), minutes) != FreeForm::Value) {
        return CellFailed;
    }
    result = std::copysign(std::fabs(static_cast<double>(degrees)) + minutes / 60.0, degrees);
    return CellRead;
}

int Val_Read_Azimuth(const RecordLine &record, std::string_view cell, std::string_view label,
                     float defaultValue, float &result) {
    constexpr CellWords Words = {"ERROR reading azimuth or bearing "};
    return reported(Cell_to_Azimuth(cell, defaultValue, result), record, cell, label, Words,
                    defaultValue, result);
}

int Val_Read_Pitch(const RecordLine &record, std::string_view cell, std::string_view label,
                   float defaultValue, float &result) {
    constexpr CellWords Words = {"ERROR reading pitch "};
    return reported(Cell_to_Pitch(cell, defaultValue, result), record, cell, label, Words,
                    defaultValue, result);
}

int Val_Read_NMEA(const RecordLine &record, std::string_view cell, std::string_view label,
                  double defaultValue, double &result) {
    int degreeDigits = 0;
    const int status = Cell_to_NMEA(cell, defaultValue, result, degreeDigits);
    const CellWords words = {degreeDigits < 3 ? "ERROR reading NMEA-format ddmm.mmm "
                                              : "ERROR reading NMEA-format dddmm.mmm "};
    return reported(status, record, cell, label, words, defaultValue, result);
}

double DMS_to_Degrees(double sign, double degrees, double minutes, double seconds) {
    return sign * (degrees + (minutes + seconds / 60.0) / 60.0);
}

} // namespace keldrin
