#include "line/line_drawing.h"

#include "base/ascii.h"
#include "base/number_text.h"
#include "base/paths.h"
#include "base/real.h"
#include "page/drawing.h"
#include "page/plot.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace keldrin {

namespace {

constexpr float TickLength = 0.25F; // of the character height

// The smallest of 1, 2 or 5 times a power of ten by which at most so many of a count are taken.
std::size_t roundStride(std::size_t count, std::size_t most) {
    for (std::size_t decade = 1;; decade *= 10) {
        for (const std::size_t stride : {decade, 2 * decade, 5 * decade}) {
            if ((count + stride - 1) / stride <= most) {
                return stride;
            }
        }
    }
}

} // namespace

std::string lineNumberText(double value) {
    constexpr double large = 1.0e6;
    constexpr double small = 1.0e-3;
    const double size = std::fabs(value);
    if (size != 0.0 && (size >= large || size < small)) {
        return std::string(trimBlanks(formatReal("(ES12.2)", value)));
    }
    return size >= 100.0  ? std::to_string(nearestInt(value))
           : size >= 10.0 ? Number_Text(value, "(F14.1)")
           : size >= 1.0  ? Number_Text(value, "(F14.2)")
                          : Number_Text(value, "(F14.4)");
}

std::vector<std::string> lineTitle(const ControlValues &control, std::string_view what,
                                   std::string_view path) {
    std::string head(what);
    if (!control.LineName.isBlank()) {
        head += " of Line " + control.LineName.str();
    }
    if (!control.JobName.isBlank()) {
        head += ", " + control.JobName.str();
    }
    return {head, control.SurveyType.str() + " TEM Data from " + std::string(fileNameOf(path))};
}

void drawLineTitle(std::span<const std::string> title) {
    constexpr float top = 17.95F;
    constexpr float right = 23.5F;
    float y = top;
    for (std::size_t i = 0; i < title.size(); ++i) {
        selectTextSize(i == 0 ? TitleSize : NumberSize);
        y -= ToolkitTextMetric(TextCharacterHeight) * 1.15F;
        ToolkitDrawText(SectionLeft, y, ToolkitFittingText(title[i], right - SectionLeft));
    }
}

Stretch distanceLimits(std::span<const LineColumn> columns) {
    Stretch limits = {columns.front().left, columns.front().right};
    for (const LineColumn &column : columns) {
        limits.from = std::min(limits.from, column.left);
        limits.to = std::max(limits.to, column.right);
    }
    return limits;
}

void setUpLinePlot(const PageFrame &frame, const Stretch &distances, double bottom, double top,
                   bool logarithmic) {
    constexpr float labelBeside = 1.1F; // cm, one for all plots of a page, so that they line up
    constexpr float labelBelow = 0.5F;
    PlotNew();
    PlotViewport(frame.left / PageWidthCm, frame.bottom / PageHeightCm, frame.right / PageWidthCm,
                 frame.top / PageHeightCm);
    PlotUnits(distances.from, bottom, distances.to, top);
    PlotScales("LIN", logarithmic ? "LOG" : "LIN");
    PlotKind('P');
    PlotMarkerSize(MarkerSize.width, MarkerSize.height);
    PlotTickLength(TickLength);
    PlotXLabelOffset(labelBelow);
    PlotYLabelOffset(labelBeside);
    PlotNumberReach(labelBeside);
}

void drawStations(std::span<const LineColumn> columns, std::span<const std::string> stations) {
    constexpr std::size_t mostTicks = 250;
    selectTextSize(NumberSize);
    float widest = 0.0F;
    for (const std::string &station : stations) {
        widest = std::max(widest, ToolkitTextWidth(station + "0"));
    }
    const auto room =
        static_cast<std::size_t>((SectionRight - SectionLeft) / std::max(widest, 0.1F));
    const std::size_t labelled = roundStride(columns.size(), std::max<std::size_t>(room, 1));
    const std::size_t ticked = columns.size() <= mostTicks ? 1 : labelled;
    std::vector<float> places;
    std::vector<std::string> labels;
    for (std::size_t i = 0; i < columns.size(); i += ticked) {
        places.push_back(static_cast<float>((columns[i].left + columns[i].right) / 2.0));
        labels.push_back(i % labelled == 0 ? stations[i] : "");
    }
    PlotTickPositions(places.data(), static_cast<int>(places.size()));
    PlotTickLabels(labels);
    PlotXAxisTop();
    PlotTickPositions(nullptr, -1);
}

void drawDistances(std::string_view lengthUnits) {
    selectTextSize(NumberSize);
    PlotXAxis();
    selectTextSize(LabelSize);
    PlotXLabel("Distance along the line (" + std::string(lengthUnits) + ")");
}

void drawCaption(const PageFrame &frame, std::string_view text, bool right) {
    constexpr float above = 0.12F;
    selectTextSize(NumberSize);
    const float width = ToolkitTextWidth(text);
    ToolkitDrawText(right ? frame.right - width : frame.left, frame.top + above, text);
}

void markColumn(const LineColumn &column, double bottom, double top) {
    IGrColour("RED");
    for (const double side : {column.left, column.right}) {
        const std::array<double, 2> x = {side, side};
        const std::array<double, 2> y = {bottom, top};
        PlotDrawLine(x.data(), y.data(), 2);
    }
    IGrColour("BLACK");
}

} // namespace keldrin
