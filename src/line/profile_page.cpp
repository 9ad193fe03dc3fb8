#include "line/profile_page.h"

#include "base/index.h"
#include "base/real.h"
#include "line/line_drawing.h"
#include "line/sounding_text.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <span>

namespace keldrin {

namespace {

constexpr PageFrame ProfileFrame = {SectionLeft, 1.7F, SectionRight, 16.1F};

std::span<const float> timesOf(const SoundingRecord &sounding) {
    return std::span(sounding.TWcenter).first(windowCount(sounding));
}

bool isTime(float time) {
    return time > 0.0F && std::isfinite(time);
}

// Times of the sounding with most windows.
std::vector<float> windowTimes(const SurveyModel &survey, std::span<const LineColumn> columns) {
    std::vector<float> times;
    for (const LineColumn &column : columns) {
        const std::span<const float> own = timesOf(survey.sounding(column.sounding));
        if (own.size() > times.size()) {
            times.assign(own.begin(), own.end());
        }
    }
    return times;
}

// How far off a time may lie, as a logarithm, and be that of this window.
float reachOf(std::span<const float> times, std::size_t window) {
    constexpr float lone = 0.1F;
    float reach = lone;
    for (const std::size_t other : {window - 1, window + 1}) {
        if (other < times.size() && isTime(times[other])) {
            reach = std::min(reach, std::fabs(std::log(times[other] / times[window])) / 2.0F);
        }
    }
    return reach;
}

std::optional<std::size_t> windowAt(const SoundingRecord &sounding, float time, float reach) {
    std::optional<std::size_t> found;
    const std::span<const float> times = timesOf(sounding);
    for (std::size_t k = 0; k < times.size(); ++k) {
        const float off = isTime(times[k]) ? std::fabs(std::log(times[k] / time)) : reach + 1.0F;
        if (off <= reach) {
            reach = off;
            found = k;
        }
    }
    return found;
}

ProfileCurve curveOf(const SurveyModel &survey, std::span<const LineColumn> columns,
                     std::span<const float> times, std::size_t window) {
    const float reach = reachOf(times, window);
    ProfileCurve curve = {times[window], {}};
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const SoundingRecord &sounding = survey.sounding(columns[i].sounding);
        const std::optional<std::size_t> k = windowAt(sounding, times[window], reach);
        if (k && isPresent(sounding.TEMobs[*k]) && std::isfinite(ArcSinh(sounding.TEMobs[*k]))) {
            curve.points.push_back({static_cast<int>(i), static_cast<int>(*k), sounding.TEMobs[*k],
                                    isSkipped(sounding.TEMerr[*k])});
        }
    }
    return curve;
}

// Indices of the windows that have curves.
std::vector<std::size_t> chosenWindows(std::size_t windows, const ProfileLimits &limits,
                                       ProfilePage &page) {
    constexpr std::size_t most = 10;
    std::vector<std::size_t> chosen;
    for (const int window : windowList(limits.windows)) {
        chosen.push_back(asIndex(window - 1));
    }
    page.every = 0;
    if (chosen.empty()) {
        const std::size_t own = std::max<std::size_t>((windows + most - 1) / most, 1);
        const std::size_t step = limits.every > 0 ? asIndex(limits.every) : own;
        page.every = static_cast<int>(step);
        for (std::size_t k = 0; k < windows; k += step) {
            chosen.push_back(k);
        }
    }
    return chosen;
}

void addCurves(ProfilePage &page, const SurveyModel &survey, const ProfileLimits &limits) {
    const std::vector<float> times = windowTimes(survey, page.columns);
    for (const std::size_t k : chosenWindows(times.size(), limits, page)) {
        if (k < times.size() && isTime(times[k])) {
            page.curves.push_back(curveOf(survey, page.columns, times, k));
        }
    }
}

// The power of ten, at least 1, that holds a size.
float decadeOver(float size) {
    constexpr float highest = 18.0F;
    const float decade = std::ceil(std::log10(std::max(size, 1.0F)));
    return std::pow(10.0F, std::min(decade, highest));
}

void setData(ProfilePage &page, const ProfileLimits &limits) {
    float low = 0.0F;
    float high = 1.0F;
    for (const ProfileCurve &curve : page.curves) {
        for (const ProfilePoint &point : curve.points) {
            low = point.skipped ? low : std::min(low, point.value);
            high = point.skipped ? high : std::max(high, point.value);
        }
    }
    page.bottom = low < 0.0F ? ArcSinh(-decadeOver(-low)) : 0.0F;
    page.top = ArcSinh(decadeOver(high));
    const float chosenLow = ArcSinh(limits.data.low);
    const float chosenHigh = ArcSinh(limits.data.high);
    if (limits.setData && chosenHigh > chosenLow && std::isfinite(chosenHigh - chosenLow)) {
        page.bottom = chosenLow;
        page.top = chosenHigh;
    }
}

} // namespace

ProfilePage profilePage(const SurveyModel &survey, const ProfileLimits &limits,
                        std::string_view path) {
    ProfilePage page;
    page.title = lineTitle(survey.control, "Profiles", path);
    page.lengthUnits = survey.control.LengthUnits.str();
    page.dataUnits = survey.control.TEMUnits.str();
    page.frame = ProfileFrame;
    page.columns = lineColumns(survey);
    for (const LineColumn &column : page.columns) {
        page.stations.push_back(stationText(survey.sounding(column.sounding).Station));
    }
    if (!page.columns.empty()) {
        const auto [left, right] = distanceLimits(page.columns);
        page.left = left;
        page.right = right;
    }
    addCurves(page, survey, limits);
    setData(page, limits);
    return page;
}

LineHit profileHit(const ProfilePage &page, float x, float y) {
    constexpr double reach = 0.3; // cm
    const PageFrame &frame = page.frame;
    LineHit hit;
    if (x < frame.left || x > frame.right || y < frame.bottom || y > frame.top) {
        return hit;
    }
    const double perDistance =
        static_cast<double>(frame.right - frame.left) / (page.right - page.left);
    const auto perData = static_cast<double>((frame.top - frame.bottom) / (page.top - page.bottom));
    const double distance = page.left + static_cast<double>(x - frame.left) / perDistance;
    const int column = columnAt(page.columns, distance);
    if (column >= 0) {
        hit.sounding = page.columns[asIndex(column)].sounding;
    }
    double nearest = reach;
    for (const ProfileCurve &curve : page.curves) {
        for (const ProfilePoint &point : curve.points) {
            const LineColumn &at = page.columns[asIndex(point.column)];
            const double right = (at.place - distance) * perDistance;
            const double up = static_cast<double>(frame.bottom - y) +
                              static_cast<double>(ArcSinh(point.value) - page.bottom) * perData;
            const double away = std::hypot(right, up);
            if (away < nearest) {
                nearest = away;
                hit = {
                    at.sounding, LineHit::Kind::Window,           point.window,
                    point.value, static_cast<double>(curve.time), static_cast<double>(curve.time)};
            }
        }
    }
    return hit;
}

std::string profileText(const ProfilePage &page, const LineHit &hit) {
    return hit.kind != LineHit::Kind::Window
               ? ""
               : "Window " + std::to_string(hit.index + 1) + ": " + lineNumberText(hit.top) +
                     " msec   " + lineNumberText(static_cast<double>(hit.value)) + " " +
                     page.dataUnits;
}

} // namespace keldrin
