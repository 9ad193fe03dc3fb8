#include "review/review_pointer.h"

#include "base/ascii.h"
#include "base/number_text.h"
#include "base/real.h"
#include "sounding/presentation_model.h"
#include "sounding/sounding_panels.h"
#include "sounding/sounding_plot.h"

#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

namespace keldrin {

namespace {

/// Axis values under a place of the page.
struct PlotPlace {
    double across = 0.0;
    double upward = 0.0;
};

double widthOf(const PagePanel &plot) {
    return static_cast<double>(plot.frame.right - plot.frame.left);
}

double heightOf(const PagePanel &plot) {
    return static_cast<double>(plot.frame.top - plot.frame.bottom);
}

PlotPlace placeUnder(const PagePanel &plot, float x, float y) {
    const auto part = [](float place, float start, double extent) {
        return static_cast<double>(place - start) / extent;
    };
    return {plot.across.valueAt(part(x, plot.frame.left, widthOf(plot))),
            plot.upward.valueAt(part(y, plot.frame.bottom, heightOf(plot)))};
}

// Four digits are what a place of the page can resolve.
std::string fourDigits(double value) {
    return Number_Text(value, "(1P,G14.4E2)");
}

std::string fourDigits(float value) {
    return Number_Text(value, "(1P,G14.4E2)");
}

std::string oneDecimal(double value) {
    return std::string(trimBlanks(formatReal("(F14.1)", value)));
}

// ---- Plots of data

struct NearestPoint {
    PlotPlace pointer; ///< axis fractions
    double best = std::numeric_limits<double>::infinity();
    std::size_t window = 0; ///< from 0
    const MarkedPanel *marks = nullptr;
};

// Points outside the frame are not on show, and stand for nothing under the mouse.
void offerPoint(NearestPoint &nearest, const MarkedPanel &marks, std::size_t window, float time) {
    const PagePanel &plot = marks.panel;
    const double across = plot.across.fractionOf(static_cast<double>(time));
    const double upward =
        plot.upward.fractionOf(static_cast<double>(plot.placeOf(marks.values[window])));
    if (!(across >= 0.0) || !(across <= 1.0) || !(upward >= 0.0) || !(upward <= 1.0)) {
        return;
    }
    const double distance = std::hypot((across - nearest.pointer.across) * widthOf(plot),
                                       (upward - nearest.pointer.upward) * heightOf(plot));
    if (distance < nearest.best) {
        nearest.best = distance;
        nearest.window = window;
        nearest.marks = &marks;
    }
}

/// panels  all in the place of the first
NearestPoint nearestPoint(const SoundingRecord &sounding, const std::vector<MarkedPanel> &panels,
                          float x, float y) {
    const PagePanel &plot = panels.front().panel;
    NearestPoint nearest;
    nearest.pointer = {static_cast<double>(x - plot.frame.left) / widthOf(plot),
                       static_cast<double>(y - plot.frame.bottom) / heightOf(plot)};
    const std::size_t windows = windowCount(sounding);
    for (std::size_t i = 0; i < windows; ++i) {
        for (const MarkedPanel &marks : panels) {
            if (isPresent(marks.values[i])) {
                offerPoint(nearest, marks, i, sounding.TWcenter[i]);
            }
        }
    }
    return nearest;
}

/// How the status bar words the values of marks.
struct MarkWords {
    std::string quantity;
    std::string unit;
};

MarkWords wordsOf(MarkKind kind, const ControlValues &control) {
    switch (kind) {
    case MarkKind::Resistivity:
        return {"Resistivity", " ohm-m"};
    case MarkKind::Misfit:
        return {"Misfit", " standard deviations"};
    case MarkKind::Observed:
        break;
    }
    return {"dB/dt", " " + control.TEMUnits.str()};
}

std::string windowText(const SoundingRecord &sounding, const NearestPoint &nearest,
                       const std::string &unit) {
    const std::size_t i = nearest.window;
    const bool skipped = isSkipped(sounding.TEMerr[i]);
    const float error = skipped ? trueError(sounding.TEMerr[i]) : sounding.TEMerr[i];
    std::string text = "   Window " + std::to_string(i + 1) + ": ";
    text += fourDigits(nearest.marks->values[i]) + unit;
    text += ", error " + oneDecimal(static_cast<double>(error)) + " %";
    return text + (skipped ? ", skipped" : "");
}

/// panels  those under the mouse
std::string dataText(const SurveyModel &survey, const SoundingRecord &sounding,
                     const std::vector<MarkedPanel> &panels, float x, float y) {
    const PagePanel &plot = panels.front().panel;
    const PlotPlace place = placeUnder(plot, x, y);
    const NearestPoint nearest = nearestPoint(sounding, panels, x, y);
    const MarkedPanel &marks = nearest.marks != nullptr ? *nearest.marks : panels.front();
    const MarkWords words = wordsOf(marks.kind, survey.control);
    const std::string text = "Time " + fourDigits(place.across) + " msec   " + words.quantity +
                             " " + fourDigits(plot.valueAt(place.upward)) + words.unit;
    return nearest.marks != nullptr ? text + windowText(sounding, nearest, words.unit) : text;
}

// ---- Model plot

std::string layerText(const SoundingRecord &sounding, std::size_t layer) {
    return "   Layer " + std::to_string(layer + 1) + ": " + fourDigits(sounding.ResInv[layer]) +
           " ohm-m";
}

// The layer whose middle is nearest, for the standard page draws the model through the middles.
std::string nearestLayerText(const SoundingRecord &sounding, double depth) {
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
    return std::isfinite(best) ? layerText(sounding, found) : "";
}

std::string stepText(const SoundingRecord &sounding, double depth) {
    const ModelSteps model = modelSteps(sounding);
    for (std::size_t i = 0; i < model.steps.size(); ++i) {
        const LayerStep &step = model.steps[i];
        if (depth <= static_cast<double>(step.top) && depth >= static_cast<double>(step.bottom)) {
            const std::string error =
                model.hasErrors
                    ? ", error " + oneDecimal(static_cast<double>(sounding.Rerr[i])) + " %"
                    : "";
            return layerText(sounding, i) + error +
                   (step.fade > 0.0F ? ", below the depth of the data" : "");
        }
    }
    return "";
}

std::string modelText(const SurveyModel &survey, const SoundingRecord &sounding,
                      const PlotLimits &limits, float x, float y) {
    const PlotPlace place = placeUnder(modelPanel(limits), x, y);
    const std::string unit = " " + survey.control.LengthUnits.str();
    std::string text = "Resistivity " + fourDigits(place.across) + " ohm-m   Depth " +
                       oneDecimal(place.upward) + unit;
    if (isPresent(sounding.Elevation)) {
        text += "   Elevation " + oneDecimal(place.upward + sounding.Elevation) + unit;
    }
    return text + (limits.style == PageStyle::Standard ? nearestLayerText(sounding, place.upward)
                                                       : stepText(sounding, place.upward));
}

std::vector<MarkedPanel> panelsUnder(const ControlValues &control, const SoundingRecord &sounding,
                                     const PlotLimits &limits, float x, float y) {
    std::vector<MarkedPanel> panels = markedPanels(control, sounding, limits);
    std::erase_if(panels, [=](const MarkedPanel &marks) {
        return !marks.panel.holds(x, y) || !marks.panel.isUsable();
    });
    return panels;
}

} // namespace

int windowUnder(const SurveyModel &survey, const PlotLimits &limits, int station, float x,
                float y) {
    if (!hasSoundingPlot(survey, station)) {
        return 0;
    }
    const SoundingRecord &sounding = survey.sounding(station);
    const std::vector<MarkedPanel> panels = panelsUnder(survey.control, sounding, limits, x, y);
    if (panels.empty()) {
        return 0;
    }
    const NearestPoint nearest = nearestPoint(sounding, panels, x, y);
    return nearest.marks != nullptr ? static_cast<int>(nearest.window) + 1 : 0;
}

std::string reviewPointerText(const SurveyModel &survey, const PlotLimits &limits, int station,
                              float x, float y) {
    if (!hasSoundingPlot(survey, station)) {
        return "";
    }
    const SoundingRecord &sounding = survey.sounding(station);
    const std::vector<MarkedPanel> panels = panelsUnder(survey.control, sounding, limits, x, y);
    if (!panels.empty()) {
        return dataText(survey, sounding, panels, x, y);
    }
    const PagePanel model = modelPanel(limits);
    if (model.holds(x, y) && model.isUsable()) {
        return modelText(survey, sounding, limits, x, y);
    }
    return "";
}

} // namespace keldrin
