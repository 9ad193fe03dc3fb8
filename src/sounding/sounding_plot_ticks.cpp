#include "sounding/sounding_plot_ticks.h"

#include "base/real.h"
#include "page/plot.h"
#include "page/plot_ticks.h"
#include "sounding/page_layout.h"

#include <algorithm>
#include <cmath>

namespace keldrin {

namespace {

constexpr int LastDecade = 12;

// -1e11 for -12, -1 for -1, 0, 1 for 1, 1e11 for 12.
float decadeValue(int n) {
    const float size = n == 0 ? 0.0F : std::pow(10.0F, static_cast<float>(std::abs(n) - 1));
    return n < 0 ? -size : size;
}

std::string decadeLabel(int n) {
    constexpr int firstWithExponent = 5;
    if (std::abs(n) < firstWithExponent) {
        return std::to_string(static_cast<int>(decadeValue(n)));
    }
    return (n < 0 ? "-1e" : "1e") + std::to_string(std::abs(n) - 1);
}

void addSmallTicks(std::vector<float> &small, float decade, float low, float high) {
    for (int times = 2; times <= 9 && decade != 0.0F; ++times) {
        const float place = ArcSinh(static_cast<float>(times) * decade);
        if (place >= low && place <= high) {
            small.push_back(place);
        }
    }
}

// For an axis so short that decades say nothing about it. Away from 0 it is nearly logarithmic,
// around 0 nearly linear; an axis of negative values is labelled as its mirror image.
void labelRoundValues(DataAxisTicks &ticks, float low, float high) {
    const bool mirrored = high < 0.0F;
    const double sign = mirrored ? -1.0 : 1.0;
    PlotScale values = {sign * std::sinh(static_cast<double>(mirrored ? high : low)),
                        sign * std::sinh(static_cast<double>(mirrored ? low : high))};
    values.logarithmic = values.min > 0.0;
    ticks = {};
    for (const PlotTick &tick : automaticTicks(values)) {
        const auto place = static_cast<float>(sign * std::asinh(tick.value));
        if (tick.small) {
            ticks.small.push_back(place);
        } else {
            ticks.places.push_back(place);
            ticks.labels.push_back(tickText(sign * tick.value));
        }
    }
}

std::string powerLabel(int n) {
    const std::string size = n == 0 ? "0" : powerOfTenText(std::abs(n) - 1);
    return n < 0 ? "-" + size : size;
}

void addTick(DataAxisTicks &ticks, float value) {
    ticks.places.push_back(ArcSinh(value));
    ticks.labels.push_back(tickText(static_cast<double>(value)));
}

// Numbers that stand between 0 and 1 without touching those.
void addTicksBelowOne(DataAxisTicks &ticks, float low, float high, float extent) {
    constexpr float room = 0.36F; // cm, of a number and the gap beside it
    const float perUnit = extent / (high - low);
    for (int tenths = -9; tenths <= 9; ++tenths) {
        const float place = ArcSinh(static_cast<float>(tenths) / 10.0F);
        if (tenths != 0 && place >= low && place <= high) {
            ticks.small.push_back(place);
        }
    }
    for (const float value : {0.5F, 0.2F}) {
        const float above = value == 0.5F ? 1.0F : 0.5F;
        const float least = std::min(ArcSinh(value), ArcSinh(above) - ArcSinh(value));
        for (const float signedValue : {value, -value}) {
            const float place = ArcSinh(signedValue);
            if (least * perUnit >= room && place >= low && place <= high) {
                addTick(ticks, signedValue);
            }
        }
    }
}

} // namespace

DataAxisTicks presentedDataTicks(float low, float high, float extent) {
    DataAxisTicks ticks = dataAxisTicks(low, high);
    if (!ticks.firstDecade) {
        return ticks;
    }
    for (std::size_t i = 0; i < ticks.labels.size(); ++i) {
        ticks.labels[i] = powerLabel(*ticks.firstDecade + static_cast<int>(i));
    }
    addTicksBelowOne(ticks, low, high, extent);
    return ticks;
}

DataAxisTicks logDataAxisTicks(float low, float high) {
    constexpr double firstWithExponent = 1.0e4;
    const PlotScale scale = {static_cast<double>(low), static_cast<double>(high), true};
    DataAxisTicks ticks;
    for (const PlotTick &tick : automaticTicks(scale)) {
        if (tick.small) {
            ticks.small.push_back(static_cast<float>(tick.value));
            continue;
        }
        const double exponent = std::floor(std::log10(tick.value) + 1.0e-9);
        ticks.places.push_back(static_cast<float>(tick.value));
        ticks.labels.push_back(tick.value < firstWithExponent
                                   ? tickText(tick.value)
                                   : tickText(tick.value / std::pow(10.0, exponent)) + "e" +
                                         std::to_string(static_cast<int>(exponent)));
    }
    return ticks;
}

DataAxisTicks dataAxisTicks(float low, float high) {
    DataAxisTicks ticks;
    for (int n = -LastDecade; n <= LastDecade; ++n) {
        const float decade = decadeValue(n);
        const float place = ArcSinh(decade);
        addSmallTicks(ticks.small, decade, low, high);
        if (place > high) {
            break;
        }
        if (place >= low) {
            ticks.firstDecade = ticks.firstDecade.value_or(n);
            ticks.places.push_back(place);
            ticks.labels.push_back(decadeLabel(n));
        }
    }
    if (ticks.places.size() < 2) {
        labelRoundValues(ticks, low, high);
    }
    return ticks;
}

void drawDataTicks(const DataAxisTicks &ticks) {
    selectTextSize(NumberSize);
    PlotTickPositions(ticks.places.data(), static_cast<int>(ticks.places.size()));
    PlotTickLabels(ticks.labels);
    PlotYAxis();
    selectTextSize(SmallTickSize);
    PlotTickPositions(ticks.small.data(), static_cast<int>(ticks.small.size()));
    PlotYAxis();
    PlotTickPositions(nullptr, -1);
}

} // namespace keldrin
