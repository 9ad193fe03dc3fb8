#include "base/index.h"
#include "base/real.h"
#include "line/line_drawing.h"
#include "line/profile_page.h"
#include "page/colour_scales.h"
#include "page/drawing.h"
#include "page/plot.h"
#include "page/text_metrics.h"
#include "sounding/sounding_plot_ticks.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

namespace keldrin {

namespace {

constexpr std::size_t MostDots = 150; ///< soundings; of more the dots would hide the curves

// Early windows dark, late ones bright; the brightest colours of the scale are too pale for lines.
PageColour curveColour(const ProfilePage &page, std::size_t curve) {
    constexpr int darkToBright = 1;
    constexpr float brightest = 0.85F;
    const auto last = static_cast<float>(std::max<std::size_t>(page.curves.size(), 2) - 1);
    return colourAt(darkToBright, brightest * static_cast<float>(curve) / last);
}

/// Part of a curve without a break.
struct Run {
    std::vector<double> distance;
    std::vector<double> value; ///< ArcSinh
};

// A curve goes on from a point to that of the next column if both touch and neither is skipped.
std::vector<Run> runsOf(const ProfilePage &page, const ProfileCurve &curve) {
    std::vector<Run> runs;
    const ProfilePoint *previous = nullptr;
    for (const ProfilePoint &point : curve.points) {
        if (point.skipped) {
            previous = nullptr;
            continue;
        }
        const LineColumn &column = page.columns[asIndex(point.column)];
        const bool goesOn = previous != nullptr && previous->column + 1 == point.column &&
                            !(page.columns[asIndex(previous->column)].right < column.left);
        if (!goesOn) {
            runs.emplace_back();
        }
        runs.back().distance.push_back(column.place);
        runs.back().value.push_back(static_cast<double>(ArcSinh(point.value)));
        previous = &point;
    }
    return runs;
}

void drawCurve(const ProfilePage &page, const ProfileCurve &curve) {
    for (const Run &run : runsOf(page, curve)) {
        const auto count = static_cast<int>(run.distance.size());
        PlotDrawLine(run.distance.data(), run.value.data(), count);
        if (count == 1 || page.columns.size() <= MostDots) {
            PlotMarkers(run.distance.data(), run.value.data(), count, DotMarker);
        }
    }
    for (const ProfilePoint &point : curve.points) {
        if (point.skipped) {
            const double x = page.columns[asIndex(point.column)].place;
            const auto y = static_cast<double>(ArcSinh(point.value));
            PlotMarkers(&x, &y, 1, RingMarker);
        }
    }
}

void drawAxes(const ProfilePage &page) {
    drawDataTicks(dataAxisTicks(page.bottom, page.top));
    selectTextSize(LabelSize);
    PlotYLabel("dB/dt (" + page.dataUnits + ")");
    drawDistances(page.lengthUnits);
    drawStations(page.columns, page.stations);
}

/// The time of a curve, beside its end.
struct TimeLabel {
    std::size_t curve = 0;
    float y = 0.0F; ///< page cm
};

// Beside the last points of the curves, pushed apart where they would touch, from the bottom up and
// then, if that leads beyond the frame, from the top down.
std::vector<TimeLabel> timeLabels(const ProfilePage &page) {
    const float pitch = ToolkitTextMetric(TextCharacterHeight) * 1.1F;
    std::vector<TimeLabel> labels;
    for (std::size_t i = 0; i < page.curves.size(); ++i) {
        const std::vector<ProfilePoint> &points = page.curves[i].points;
        const auto last = std::find_if(points.rbegin(), points.rend(),
                                       [](const ProfilePoint &point) { return !point.skipped; });
        if (last != points.rend()) {
            const float part = (ArcSinh(last->value) - page.bottom) / (page.top - page.bottom);
            labels.push_back({i, page.frame.bottom + limited(part, 0.0F, 1.0F) *
                                                         (page.frame.top - page.frame.bottom)});
        }
    }
    std::stable_sort(labels.begin(), labels.end(),
                     [](const TimeLabel &a, const TimeLabel &b) { return a.y < b.y; });
    for (std::size_t i = 1; i < labels.size(); ++i) {
        labels[i].y = std::max(labels[i].y, labels[i - 1].y + pitch);
    }
    float highest = page.frame.top;
    for (auto label = labels.rbegin(); label != labels.rend(); ++label) {
        label->y = std::min(label->y, highest);
        highest = label->y - pitch;
    }
    return labels;
}

void drawTimeLabels(const ProfilePage &page) {
    constexpr float gap = 0.25F;
    const float x = page.frame.right + gap;
    selectTextSize(NumberSize);
    drawCaption({x, 0.0F, x, page.frame.top + 0.45F}, "Time (msec)");
    const float half = CapitalHeight * ToolkitTextMetric(TextCharacterHeight) / 2.0F;
    for (const TimeLabel &label : timeLabels(page)) {
        IGrColour(curveColour(page, label.curve));
        ToolkitDrawText(x, label.y - half,
                        lineNumberText(static_cast<double>(page.curves[label.curve].time)));
    }
    IGrColour("BLACK");
}

std::string choiceText(int every) {
    return every == 0   ? "Chosen windows"
           : every == 1 ? "All windows"
                        : "One window in " + std::to_string(every);
}

} // namespace

void drawProfile(const ProfilePage &page, int marked) {
    beginReviewPage();
    drawLineTitle(page.title);
    setUpLinePlot(page.frame, {page.left, page.right}, static_cast<double>(page.bottom),
                  static_cast<double>(page.top), false);
    for (const LineColumn &column : page.columns) {
        if (column.sounding == marked) {
            markColumn(column, static_cast<double>(page.bottom), static_cast<double>(page.top));
        }
    }
    if (page.bottom < 0.0F) {
        const std::array<double, 2> x = {page.left, page.right};
        const std::array<double, 2> zero = {0.0, 0.0};
        PlotDrawLine(x.data(), zero.data(), 2);
    }
    for (std::size_t i = 0; i < page.curves.size(); ++i) {
        IGrColour(curveColour(page, i));
        drawCurve(page, page.curves[i]);
    }
    IGrColour("BLACK");
    PlotFrame();
    drawAxes(page);
    drawTimeLabels(page);
    PageFrame above = page.frame;
    above.top += 0.45F;
    drawCaption(above, choiceText(page.every) + "; rings are skipped");
    ToolkitFlush();
}

} // namespace keldrin
