#include "base/clock.h"

#include "base/version.h"

#include <array>
#include <cstdio>
#include <ctime>

namespace keldrin {

namespace {

std::optional<DateTime> &fixedMoment() {
    static std::optional<DateTime> moment;
    return moment;
}

int &reads() {
    static int count = 0;
    return count;
}

} // namespace

DateTime clockNow() {
    ++reads();
    if (fixedMoment()) {
        return *fixedMoment();
    }
    const std::time_t seconds = std::time(nullptr);
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &seconds);
#else
    localtime_r(&seconds, &local);
#endif
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
            local.tm_hour,        local.tm_min,     local.tm_sec};
}

void fixClock(std::optional<DateTime> moment) {
    fixedMoment() = moment;
}

bool clockIsFixed() {
    return fixedMoment().has_value();
}

int clockReads() {
    return reads();
}

std::string dateText(const DateTime &moment) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%02d/%02d/%04d", moment.day, moment.month,
                  moment.year);
    return text.data();
}

std::string timeText(const DateTime &moment) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%02d:%02d:%02d", moment.hour, moment.minute,
                  moment.second);
    return text.data();
}

std::string writerStamp(const DateTime &moment) {
    return "From " + std::string(ProgramIdentity) + "  Date:" + dateText(moment) +
           "  Time:" + timeText(moment);
}

} // namespace keldrin
