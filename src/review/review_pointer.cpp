#include "review/review_pointer.h"

#include "base/ascii.h"
#include "base/number_text.h"
#include "base/real.h"
#include "page/plot_scale.h"
#include "review/page_layout.h"
#include "review/sounding_plot.h"

#include <cmath>
#include <cstddef>
#include <limits>
#include <string_view>

namespace keldrin {

namespace {

constexpr float LeastResistivity = 1.0e-6F; // ohm-m; not above that a window has no such point

/// A plot of the page, with its axes.
struct PagePlot {
    PageFrame frame;
    PlotScale across;
    PlotScale upward;

    [[nodiscard]] bool isUsable() const { return across.isUsable() && upward.isUsable(); }
    [[nodiscard]] bool holds(float x, float y) const {
        return x >= frame.left && x <= frame.right && y >= frame.bottom && y <= frame.top;
    }
    [[nodiscard]] double width() const { return static_cast<double>(frame.right - frame.left); }
    [[nodiscard]] double height() const { return static_cast<double>(frame.top - frame.bottom); }
};

/// Axis values under a place of the page.
struct PlotPlace {
    double across = 0.0;
    double upward = 0.0;
};

PlotPlace placeUnder(const PagePlot &plot, float x, float y) {
    const auto part = [](float place, float start, double extent) {
        return static_cast<double>(place - start) / extent;
    };
    return {plot.across.valueAt(part(x, plot.frame.left, plot.width())),
            plot.upward.valueAt(part(y, plot.frame.bottom, plot.height()))};
}

PlotScale scaleOf(float min, float max, bool logarithmic) {
    return {static_cast<double>(min), static_cast<double>(max), logarithmic};
}

// Four digits are what a place of the page can tell.
std::string fourDigits(double value) {
    return Number_Text(value, "(1P,G14.4E2)");
}

std::string fourDigits(float value) {
    return Number_Text(value, "(1P,G14.4E2)");
}

std::string oneDecimal(double value) {
    return std::string(trimBlanks(formatReal("(F14.1)", value)));
}

// ---- Data plot

enum class PointKind { Observed, Resistivity };

struct NearestPoint {
    PlotPlace pointer; ///< axis fractions
    double best = std::numeric_limits<double>::infinity();
    std::size_t window = 0; ///< from 0
    PointKind kind = PointKind::Observed;

    [[nodiscard]] bool wasFound() const { return std::isfinite(best); }
};

// Points outside the frame are not on show, and stand for nothing under the mouse.
void offerPoint(NearestPoint &nearest, const PagePlot &plot, std::size_t window, PointKind kind,
                float time, float value) {
    const double across = plot.across.fractionOf(static_cast<double>(time));
    const double upward = plot.upward.fractionOf(static_cast<double>(ArcSinh(value)));
    if (!(across >= 0.0) || !(across <= 1.0) || !(upward >= 0.0) || !(upward <= 1.0)) {
        return;
    }
    const double distance = std::hypot((across - nearest.pointer.across) * plot.width(),
                                       (upward - nearest.pointer.upward) * plot.height());
    if (distance < nearest.best) {
        nearest.best = distance;
        nearest.window = window;
        nearest.kind = kind;
    }
}

NearestPoint nearestPoint(const SoundingRecord &sounding, const PagePlot &plot, float x, float y) {
    NearestPoint nearest;
    nearest.pointer = {static_cast<double>(x - plot.frame.left) / plot.width(),
                       static_cast<double>(y - plot.frame.bottom) / plot.height()};
    const std::size_t windows = windowCount(sounding);
    for (std::size_t i = 0; i < windows; ++i) {
        if (isPresent(sounding.TEMobs[i])) {
            offerPoint(nearest, plot, i, PointKind::Observed, sounding.TWcenter[i],
                       sounding.TEMobs[i]);
        }
        if (sounding.AResObs[i] > LeastResistivity) {
            offerPoint(nearest, plot, i, PointKind::Resistivity, sounding.TWcenter[i],
                       sounding.AResObs[i]);
        }
    }
    return nearest;
}

std::string windowText(const SoundingRecord &sounding, const NearestPoint &nearest,
                       std::string_view unit) {
    const std::size_t i = nearest.window;
    const bool observed = nearest.kind == PointKind::Observed;
    const bool skipped = isSkipped(sounding.TEMerr[i]);
    const float error = skipped ? trueError(sounding.TEMerr[i]) : sounding.TEMerr[i];
    std::string text = "   Window " + std::to_string(i + 1) + ": ";
    text += fourDigits(observed ? sounding.TEMobs[i] : sounding.AResObs[i]);
    text.append(" ").append(unit);
    text += ", error " + oneDecimal(static_cast<double>(error)) + " %";
    return text + (skipped ? ", skipped" : "");
}

std::string dataText(const SurveyModel &survey, const SoundingRecord &sounding,
                     const PagePlot &plot, float x, float y) {
    const PlotPlace place = placeUnder(plot, x, y);
    const NearestPoint nearest = nearestPoint(sounding, plot, x, y);
    const bool resistivity = nearest.wasFound() && nearest.kind == PointKind::Resistivity;
    const std::string unit = resistivity ? "ohm-m" : survey.control.TEMUnits.str();
    const std::string text = "Time " + fourDigits(place.across) + " msec   " +
                             (resistivity ? "Resistivity " : "dB/dt ") +
                             fourDigits(std::sinh(place.upward)) + " " + unit;
    return nearest.wasFound() ? text + windowText(sounding, nearest, unit) : text;
}

// ---- Model plot

// The layer whose middle is nearest, for the model is drawn through the middles.
std::string layerText(const SoundingRecord &sounding, double depth) {
    const std::size_t layers = layerCount(sounding);
    double best = std::numeric_limits<double>::infinity();
    std::size_t found = 0;
    for (std::size_t i = 0; i < layers; ++i) {
        const double distance = std::fabs(static_cast<double>(sounding.ZMid[i]) - depth);
        if (distance < best) {
            best = distance;
            found = i;
        }
    }
    return std::isfinite(best) ? "   Layer " + std::to_string(found + 1) + ": " +
                                     fourDigits(sounding.ResInv[found]) + " ohm-m"
                               : "";
}

std::string modelText(const SurveyModel &survey, const SoundingRecord &sounding,
                      const PagePlot &plot, float x, float y) {
    const PlotPlace place = placeUnder(plot, x, y);
    const std::string unit = " " + survey.control.LengthUnits.str();
    std::string text = "Resistivity " + fourDigits(place.across) + " ohm-m   Depth " +
                       oneDecimal(place.upward) + unit;
    if (isPresent(sounding.Elevation)) {
        text += "   Elevation " + oneDecimal(place.upward + sounding.Elevation) + unit;
    }
    return text + layerText(sounding, place.upward);
}

} // namespace

std::string reviewPointerText(const SurveyModel &survey, const PlotLimits &limits, int station,
                              float x, float y) {
    if (!hasSoundingPlot(survey, station)) {
        return "";
    }
    const SoundingRecord &sounding = survey.sounding(station);
    const PagePlot data = {DataFrame, scaleOf(limits.PlotTimeMin, limits.PlotTimeMax, true),
                           scaleOf(limits.PlotDataMin, limits.PlotDataMax, false)};
    const PagePlot model = {ModelFrame, scaleOf(limits.PlotResMin, limits.PlotResMax, true),
                            scaleOf(limits.PlotDepthMin, limits.PlotDepthMax, false)};
    if (data.holds(x, y) && data.isUsable()) {
        return dataText(survey, sounding, data, x, y);
    }
    if (model.holds(x, y) && model.isUsable()) {
        return modelText(survey, sounding, model, x, y);
    }
    return "";
}

} // namespace keldrin
