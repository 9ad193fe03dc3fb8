#include "text/value_readers.h"

#include "base/ascii.h"
#include "base/fixed_text.h"
#include "base/free_form.h"
#include "base/index.h"
#include "base/real.h"
#include "model/enumerations.h"
#include "text/cell_report.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <type_traits>

namespace keldrin {

namespace {

/// Cells of numbers are looked at for INF up to here.
constexpr std::size_t NumericWidth = 32;

/// True when a text holds INF in any case. A word such as "INFO" counts too.
bool holdsInfinity(std::string_view text) {
    for (std::size_t i = 0; i + 2 < text.size(); ++i) {
        if (upperOf(text[i]) == 'I' && upperOf(text[i + 1]) == 'N' && upperOf(text[i + 2]) == 'F') {
            return true;
        }
    }
    return false;
}

/// A null value, such as a lone comma, is a good read of the default.
template <class Number>
int readNumber(std::string_view cell, Number defaultValue, Number &result) {
    if constexpr (std::is_floating_point_v<Number>) { // most cells are just that
        if (readWholeNumber(cell, result)) {
            return CellRead;
        }
    }
    result = defaultValue;
    if (isEmptyCell(cell) || holdsInfinity(cell.substr(0, NumericWidth))) {
        return CellEmpty;
    }
    return readFreeForm(cell, result) == FreeForm::Failed ? CellFailed : CellRead;
}

constexpr bool isLetter(char c) {
    return upperOf(c) >= 'A' && upperOf(c) <= 'Z';
}

/// The unit of a length whose word has its first m or f at `letter`; 0 when it is another unit,
/// such as "cm".
int unitAt(std::string_view cell, std::size_t letter) {
    if (letter > 0 && isLetter(cell[letter - 1])) {
        return 0;
    }
    std::size_t end = letter;
    while (end < cell.size() && isLetter(cell[end])) {
        ++end;
    }
    return lengthUnitNamed(cell.substr(letter, end - letter));
}

constexpr CellWords IntegerWords = {"ERROR reading integer "};
constexpr CellWords Real4Words = {"ERROR reading real*4 "};
constexpr CellWords Real8Words = {"ERROR reading real*8 "};
constexpr CellWords YesNoWords = {"ERROR reading ", " Yes/No, True/False or 1/0 response from "};

} // namespace

int Cell_to_Int(std::string_view cell, std::int32_t defaultValue, std::int32_t &result) {
    return readNumber(cell, defaultValue, result);
}
int Cell_to_Int8(std::string_view cell, std::int64_t defaultValue, std::int64_t &result) {
    return readNumber(cell, defaultValue, result);
}
int Cell_to_R4(std::string_view cell, float defaultValue, float &result) {
    return readNumber(cell, defaultValue, result);
}
int Cell_to_R8(std::string_view cell, double defaultValue, double &result) {
    return readNumber(cell, defaultValue, result);
}

int Cell_to_Place(std::string_view cell, double defaultValue, double &result) {
    constexpr double Farthest = 1.0E9;
    const int status = Cell_to_R8(cell, defaultValue, result);
    if (status == CellRead && isPresent(result) && std::fabs(result) > Farthest) {
        result = defaultValue;
        return CellFailed;
    }
    return status;
}

int lengthUnitNamed(std::string_view word) {
    constexpr std::array<std::string_view, 5> MetreNames = {"M", "METER", "METERS", "METRE",
                                                            "METRES"};
    constexpr std::array<std::string_view, 4> FootNames = {"F", "FT", "FOOT", "FEET"};
    const auto isIn = [&](auto names) {
        return std::any_of(names.begin(), names.end(),
                           [&](std::string_view name) { return sameIgnoringCase(word, name); });
    };
    return isIn(MetreNames) ? Metres : isIn(FootNames) ? Feet : 0;
}

int Cell_to_YesNo(std::string_view cell, bool defaultValue, bool &result) {
    result = defaultValue;
    if (isEmptyCell(cell)) {
        return CellEmpty;
    }
    const char first = upperOf(trimLeft(cell).front());
    const bool yes = holds("1YT", {&first, 1});
    if (!yes && !holds("0NF", {&first, 1})) {
        return CellFailed;
    }
    result = yes;
    return CellRead;
}

int Cell_to_Length(std::string_view cell, int unitIndex, float defaultValue, float &result) {
    result = defaultValue;
    if (isEmptyCell(cell)) {
        return CellEmpty;
    }
    int unit = limited(unitIndex, Metres, Feet);
    const std::size_t letter = cell.find_first_of("mMfF");
    if (letter != std::string_view::npos) {
        unit = unitAt(cell, letter);
        if (unit == 0) {
            return CellFailed;
        }
    }
    float length = 0.0F;
    const FreeForm found = readFreeForm(cell.substr(0, letter), length);
    if (found == FreeForm::Value) {
        result = length * LengthUnitMetres[asIndex(unit - 1)];
    }
    return found == FreeForm::Failed ? CellFailed : CellRead;
}

int Val_Read_Int(const RecordLine &record, std::string_view cell, std::string_view label,
                 std::int32_t defaultValue, std::int32_t &result) {
    return reported(Cell_to_Int(cell, defaultValue, result), record, cell, label, IntegerWords,
                    defaultValue, result);
}
int Val_Read_Int8(const RecordLine &record, std::string_view cell, std::string_view label,
                  std::int64_t defaultValue, std::int64_t &result) {
    return reported(Cell_to_Int8(cell, defaultValue, result), record, cell, label, IntegerWords,
                    defaultValue, result);
}
int Val_Read_R4(const RecordLine &record, std::string_view cell, std::string_view label,
                float defaultValue, float &result) {
    return reported(Cell_to_R4(cell, defaultValue, result), record, cell, label, Real4Words,
                    defaultValue, result);
}
int Val_Read_R8(const RecordLine &record, std::string_view cell, std::string_view label,
                double defaultValue, double &result) {
    return reported(Cell_to_R8(cell, defaultValue, result), record, cell, label, Real8Words,
                    defaultValue, result);
}

int Val_Read_Place(const RecordLine &record, std::string_view cell, std::string_view label,
                   double defaultValue, double &result) {
    return reported(Cell_to_Place(cell, defaultValue, result), record, cell, label, Real8Words,
                    defaultValue, result);
}

int Val_Read_YesNo(const RecordLine &record, std::string_view cell, std::string_view label,
                   bool defaultValue, bool &result) {
    return reported(Cell_to_YesNo(cell, defaultValue, result), record, cell, label, YesNoWords,
                    defaultValue, result);
}

int Val_Read_Length(const RecordLine &record, std::string_view cell, std::string_view label,
                    int unitIndex, float defaultValue, float &result) {
    return reported(Cell_to_Length(cell, unitIndex, defaultValue, result), record, cell, label,
                    Real4Words, defaultValue, result);
}

} // namespace keldrin
