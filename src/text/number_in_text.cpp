#include "text/number_in_text.h"

#include "base/ascii.h"
#include "base/fixed_text.h"
#include "base/free_form.h"
#include "text/cell_report.h"

#include <string>

namespace keldrin {

namespace {

constexpr CellWords NumericWords = {"ERROR reading numeric "};

/// The characters that are looked at.
std::string headWithoutBlanks(std::string_view cell) {
    constexpr std::size_t Width = 16;
    return Str_Upper(Str_No_Blanks(cell)).substr(0, Width);
}

/// A plus sign, and minus, point, slash and the digits, which stand together in ASCII.
constexpr bool ofNumber(char c) {
    return c == '+' || (c >= '-' && c <= '9');
}

std::string kept(const std::string &text, bool (*wanted)(char)) {
    std::string out;
    for (const char c : text) {
        if (wanted(c)) {
            out += c;
        }
    }
    return out;
}

/// Reads what is wanted of a cell. Nothing of it there is a good read of the default.
template <class Number>
int readKept(std::string_view cell, bool (*wanted)(char), Number defaultValue, Number &result) {
    result = defaultValue;
    if (isEmptyCell(cell)) {
        return CellEmpty;
    }
    const std::string number = kept(headWithoutBlanks(cell), wanted);
    if (number.empty()) {
        return CellRead;
    }
    return readFreeForm(number, result) == FreeForm::Failed ? CellFailed : CellRead;
}

} // namespace

int Cell_to_NumberInText(std::string_view cell, float defaultValue, float &result) {
    return readKept(cell, ofNumber, defaultValue, result);
}

int Cell_to_Digits(std::string_view cell, std::int32_t defaultValue, std::int32_t &result) {
    return readKept(cell, isDigit, defaultValue, result);
}

int Cell_to_NumberInText8(std::string_view cell, double defaultValue, double &result) {
    const int status = readKept(cell, ofNumber, defaultValue, result);
    const std::string head = headWithoutBlanks(cell);
    if (status != CellRead || !kept(head, ofNumber).empty()) {
        return status;
    }
    const std::string letters = kept(head, [](char c) { return c >= 'A' && c <= 'Z'; });
    if (!letters.empty()) {
        result = letters.front() - 'A';
    }
    return CellFailed;
}

int Val_Read_NumberInText(const RecordLine &record, std::string_view cell, std::string_view label,
                          float defaultValue, float &result) {
    return reported(Cell_to_NumberInText(cell, defaultValue, result), record, cell, label,
                    NumericWords, defaultValue, result);
}

int Val_Read_NumberInText8(const RecordLine &record, std::string_view cell, std::string_view label,
                           double defaultValue, double &result) {
    return reported(Cell_to_NumberInText8(cell, defaultValue, result), record, cell, label,
                    NumericWords, defaultValue, result);
}

int Val_Read_Digits(const RecordLine &record, std::string_view cell, std::string_view label,
                    std::int32_t defaultValue, std::int32_t &result) {
    return reported(Cell_to_Digits(cell, defaultValue, result), record, cell, label, NumericWords,
                    defaultValue, result);
}

} // namespace keldrin
