#include "text/julian_day.h"

#include "base/ascii.h"
#include "base/fixed_text.h"
#include "base/free_form.h"
#include "text/cell_report.h"

#include <algorithm>

namespace keldrin {

namespace {

struct Date {
    int year = 0;
    int month = 0;
    int day = 0;
};

/// Splits at the first and the last separator; of the first part at most four characters count.
bool readParts(std::string_view text, std::string_view separators, int &first, int &middle,
               int &last) {
    constexpr std::size_t FirstWidth = 4;
    const std::size_t p = text.find_first_of(separators);
    const std::size_t q = text.find_last_of(separators);
    if (p == std::string_view::npos || p == 0 || q <= p + 1 || q + 1 == text.size()) {
        return false;
    }
    const std::size_t begin = p - std::min(p, FirstWidth);
    return readFreeForm(text.substr(begin, p - begin), first) == FreeForm::Value &&
           readFreeForm(text.substr(p + 1, q - p - 1), middle) == FreeForm::Value &&
           readFreeForm(text.substr(q + 1), last) == FreeForm::Value;
}

bool readDate(std::string_view text, Date &date) {
    const bool read = holds(text, "/") ? readParts(text, "/", date.month, date.day, date.year)
                                       : readParts(text, "-", date.year, date.month, date.day);
    if (!read || date.month < 1 || date.month > 12 || date.day < 1 || date.day > 31 ||
        date.year < 0 || date.year > 9999) {
        return false;
    }
    date.year += date.year < 70 ? 2000 : 0;
    date.year += date.year < 100 ? 1900 : 0;
    return true;
}

/// Fliegel and Van Flandern, Communications of the ACM 11 (1968), 657; divisions toward zero.
int julianDay(const Date &date) {
    const int shift = (date.month - 14) / 12; // -1 in January and February
    return date.day - 32075 + 1461 * (date.year + 4800 + shift) / 4 +
           367 * (date.month - 2 - shift * 12) / 12 - 3 * ((date.year + 4900 + shift) / 100) / 4;
}

} // namespace

JulianDayMemo &julianDayMemo() {
    static JulianDayMemo memo;
    return memo;
}

int Str_to_iJulianDay(std::string_view text, int defaultDay, int &day) {
    day = defaultDay;
    if (isEmptyCell(text)) {
        return -1;
    }
    const std::string_view trimmed = trimBlanks(text);
    JulianDayMemo &memo = julianDayMemo();
    if (memo.text != trimmed) {
        Date date;
        memo.text = trimmed;
        memo.status = readDate(trimmed, date) ? 0 : 1;
        memo.day = memo.status == 0 ? julianDay(date) : 0;
    }
    day = memo.status == 0 ? memo.day : defaultDay;
    return memo.status;
}

} // namespace keldrin
