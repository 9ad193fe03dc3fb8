#pragma once

#include <optional>
#include <string>

namespace keldrin {

/// A moment of local time, to the second.
struct DateTime {
    int year = 2000;
    int month = 1; ///< 1..12
    int day = 1;   ///< 1..31
    int hour = 0;
    int minute = 0;
    int second = 0;
};

/// The moment now: the fixed one if one is set, else the system's local time.
DateTime clockNow();

/// Makes clockNow() stand still at `moment`, for runs that must be reproducible; empty: real time.
void fixClock(std::optional<DateTime> moment);

/// True while a fixed moment is set.
bool clockIsFixed();

/// How often clockNow() was called.
int clockReads();

/// "DD/MM/YYYY"
std::string dateText(const DateTime &moment);

/// "hh:mm:ss"
std::string timeText(const DateTime &moment);

/// "From KELDRIN v4.00i  Date:DD/MM/YYYY  Time:hh:mm:ss", the first line of every file written.
std::string writerStamp(const DateTime &moment);

} // namespace keldrin
