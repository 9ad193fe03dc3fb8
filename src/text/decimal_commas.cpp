#include "text/decimal_commas.h"

#include "base/ascii.h"

#include <algorithm>

namespace keldrin {

namespace {

enum class CellForm { Word, Integer, DecimalComma, Other };

std::size_t digitsAt(std::string_view cell, std::size_t at) {
    std::size_t end = at;
    while (end < cell.size() && isDigit(cell[end])) {
        ++end;
    }
    return end - at;
}

CellForm formOf(std::string_view cell) {
    if (upperOf(cell.front()) >= 'A' && upperOf(cell.front()) <= 'Z') {
        return CellForm::Word;
    }
    cell.remove_prefix(cell.front() == '+' || cell.front() == '-' ? 1 : 0);
    const std::size_t whole = digitsAt(cell, 0);
    if (whole == 0 || whole == cell.size()) {
        return whole > 0 ? CellForm::Integer : CellForm::Other;
    }
    if (whole + 1 == cell.size() && holds("NSEW", {&cell[whole], 1})) { // a station
        return CellForm::Integer;
    }
    const std::size_t decimals = cell[whole] == ',' ? digitsAt(cell, whole + 1) : 0;
    if (decimals == 0) {
        return CellForm::Other;
    }
    cell.remove_prefix(whole + 1 + decimals);
    if (cell.empty()) {
        return CellForm::DecimalComma;
    }
    const char letter = upperOf(cell.front());
    const std::size_t sign = cell.size() > 1 && (cell[1] == '+' || cell[1] == '-') ? 2 : 1;
    const bool power = (letter == 'E' || letter == 'D') && sign < cell.size() &&
                       sign + digitsAt(cell, sign) == cell.size();
    return power ? CellForm::DecimalComma : CellForm::Other;
}

} // namespace

bool hasDecimalCommas(std::string_view line) {
    if (line.find(',') == std::string_view::npos) {
        return false;
    }
    constexpr std::string_view Blanks = " \t";
    bool found = false;
    std::size_t at = line.find_first_not_of(Blanks);
    while (at != std::string_view::npos) {
        const std::size_t end = std::min(line.find_first_of(Blanks, at), line.size());
        const CellForm form = formOf(line.substr(at, end - at));
        if (form == CellForm::Other) {
            return false;
        }
        found = found || form == CellForm::DecimalComma;
        at = line.find_first_not_of(Blanks, end);
    }
    return found;
}

} // namespace keldrin
