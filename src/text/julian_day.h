#pragma once

#include <string>
#include <string_view>

namespace keldrin {

/// The date that was read last, with its result: tables hold one date for many lines.
struct JulianDayMemo {
    std::string text = "!@#$%^&"; ///< the mark for nothing read yet, never a date
    int day = 0;
    int status = 1;
};

JulianDayMemo &julianDayMemo();

/// The Julian Day Number of a date, month/day/year or year-month-day. A year below 70 is of this
/// century, one from 70 to 99 of the last one. No reader calls it, for dates of field data are kept
/// as text; it completes the documented kinds of cells.
///
/// day      out; `defaultDay` unless the date was read
/// returns  0 read, -1 blank or holds a "*", 1 no date; nothing is reported
int Str_to_iJulianDay(std::string_view text, int defaultDay, int &day);

} // namespace keldrin
