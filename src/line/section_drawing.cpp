#include "base/index.h"
#include "base/number_text.h"
#include "line/colour_bar.h"
#include "line/line_drawing.h"
#include "line/section_page.h"
#include "page/colour_scales.h"
#include "page/drawing.h"
#include "page/page_colours.h"
#include "page/plot.h"
#include "page/plot_scale.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <vector>

namespace keldrin {

namespace {

constexpr float FadedPart = 0.65F; // of white
constexpr float BarLeft = 21.0F;   // of the colour bar, page cm
constexpr float BarWidth = 0.45F;
constexpr float FadedWidth = 0.2F;

/// Turns resistivities into colours.
class CellColours {
  public:
    explicit CellColours(const SectionPage &page)
        : scale_(PlotScale{static_cast<double>(page.resistivity.low),
                           static_cast<double>(page.resistivity.high), true}),
          table_(page.colours) {}

    [[nodiscard]] PageColour of(float resistivity, bool faded) const {
        const auto part = static_cast<float>(scale_.of(static_cast<double>(resistivity)));
        const PageColour colour = colourAt(table_, part);
        return faded ? fadedColour(colour, FadedPart) : colour;
    }

  private:
    AxisFractions scale_;
    int table_;
};

// Neighbours of one colour in a column are drawn as one.
void drawCells(const SectionPage &page, std::span<const SectionCell> cells) {
    const CellColours colours(page);
    std::vector<PlotRectangle> drawn;
    drawn.reserve(cells.size());
    int column = -1; // of the last one
    for (const SectionCell &cell : cells) {
        const PageColour colour = colours.of(cell.resistivity, cell.faded);
        if (cell.column == column && cell.top == drawn.back().bottom &&
            colour == drawn.back().colour) {
            drawn.back().bottom = cell.bottom;
            continue;
        }
        column = cell.column;
        const LineColumn &place = page.columns[asIndex(column)];
        drawn.push_back({place.left, cell.bottom, place.right, cell.top, colour});
    }
    PlotFillRectangles(drawn);
}

void setUp(const SectionPage &page, const SectionPlot &plot) {
    setUpLinePlot(plot.frame, {page.left, page.right}, plot.bottom, plot.top, plot.logarithmic);
}

void finish(const SectionPage &page, const SectionPlot &plot, std::string_view label, int marked) {
    for (const LineColumn &column : page.columns) {
        if (column.sounding == marked) {
            markColumn(column, plot.bottom, plot.top);
        }
    }
    PlotFrame();
    selectTextSize(NumberSize);
    PlotYAxis();
    selectTextSize(LabelSize);
    PlotYLabel(label);
}

void drawTimes(const SectionPage &page, int marked) {
    setUp(page, page.times);
    drawCells(page, page.windows);
    finish(page, page.times, "Time (msec)", marked);
    drawStations(page.columns, page.stations);
    constexpr float gap = 0.8F;
    selectTextSize(NumberSize);
    const PageFrame &frame = page.times.frame;
    ToolkitDrawText(frame.left - gap - ToolkitTextWidth("Station"), frame.top + 0.17F, "Station");
    const PageFrame above = {frame.left, frame.bottom, frame.right, frame.top + 0.45F};
    drawCaption(above, "Apparent resistivity");
}

// Steps along the tops of columns that touch.
void drawGround(const SectionPage &page) {
    std::vector<double> x;
    std::vector<double> y;
    const auto draw = [&] {
        PlotDrawLine(x.data(), y.data(), static_cast<int>(x.size()));
        x.clear();
        y.clear();
    };
    double end = 0.0;
    for (const SectionCell &cell : page.layers) {
        if (cell.index != 0) {
            continue;
        }
        const LineColumn &column = page.columns[asIndex(cell.column)];
        if (!x.empty() && column.left > end) {
            draw();
        }
        end = column.right;
        x.insert(x.end(), {column.left, column.right});
        y.insert(y.end(), {cell.top, cell.top});
    }
    draw();
}

std::string exaggerationText(double exaggeration) {
    return "Vertical exaggeration " + (exaggeration < 1.0 ? Number_Text(exaggeration, "(F14.2)")
                                                          : lineNumberText(exaggeration));
}

void drawHeights(const SectionPage &page, const SectionPlot &plot, int marked) {
    setUp(page, plot);
    drawCells(page, page.layers);
    drawGround(page);
    if (!page.hasElevations) {
        PlotUnits(page.left, -plot.bottom, page.right, -plot.top); // numbers of depths
    }
    finish(page, {plot.frame, 0.0, 0.0, false},
           (page.hasElevations ? "Elevation (" : "Depth (") + page.lengthUnits + ")", 0);
    setUp(page, plot);
    for (const LineColumn &column : page.columns) {
        if (column.sounding == marked) {
            markColumn(column, plot.bottom, plot.top);
        }
    }
    drawCaption(plot.frame, "Layered models, faded below the depth that the data see");
    drawCaption(plot.frame, exaggerationText(page.exaggeration), true);
}

void drawMisfits(const SectionPage &page, const SectionPlot &plot, int marked) {
    constexpr PageColour bars = 0x8899AA;
    setUp(page, plot);
    std::vector<PlotRectangle> drawn;
    for (std::size_t i = 0; i < page.columns.size(); ++i) {
        const auto misfit = static_cast<double>(page.misfit[i]);
        if (misfit > 0.0) {
            drawn.push_back({page.columns[i].left, 0.0, page.columns[i].right, misfit,
                             misfit > plot.top ? Colour::Red : bars});
        }
    }
    PlotFillRectangles(drawn);
    const std::array<double, 2> x = {page.left, page.right};
    const std::array<double, 2> y = {1.0, 1.0};
    PlotDrawLine(x.data(), y.data(), 2);
    finish(page, plot, "Misfit", marked);
    drawCaption(plot.frame, "Misfit in units of the stated errors");
}

void drawResistivityBar(const SectionPage &page) {
    constexpr int steps = 64;
    const SectionPlot &last = page.heights ? *page.heights : page.times;
    const PageFrame frame = {BarLeft, last.frame.bottom, BarLeft + BarWidth, page.times.frame.top};
    const PlotScale scale = {static_cast<double>(page.resistivity.low),
                             static_cast<double>(page.resistivity.high), true};
    const auto drawSteps = [&](const PageFrame &bar, bool faded) {
        setUpLinePlot(bar, {0.0, 1.0}, scale.min, scale.max, true);
        std::vector<PlotRectangle> drawn;
        for (int i = 0; i < steps; ++i) {
            const double from = scale.valueAt(static_cast<double>(i) / steps);
            const double to = scale.valueAt(static_cast<double>(i + 1) / steps);
            const float part = static_cast<float>(i) / static_cast<float>(steps - 1);
            const PageColour colour = colourAt(page.colours, part);
            drawn.push_back({0.0, from, 1.0, to, faded ? fadedColour(colour, FadedPart) : colour});
        }
        PlotFillRectangles(drawn);
        PlotFrame();
    };
    if (page.heights) {
        drawSteps({frame.left - FadedWidth, frame.bottom, frame.left, frame.top}, true);
    }
    drawSteps(frame, false);
    PlotNumberReach(1.0F);
    selectTextSize(NumberSize);
    numberRoundValues(scale);
    PlotYAxisRight();
    PlotYLabelOffset(0.1F);
    selectTextSize(LabelSize);
    PlotYLabelRight("Resistivity (ohm-m)");
}

} // namespace

bool drawSection(const SectionPage &page, int marked) {
    if (!ToolkitFillsAreas()) {
        return false;
    }
    beginReviewPage();
    drawLineTitle(page.title);
    drawResistivityBar(page);
    drawTimes(page, marked);
    if (page.heights) {
        drawHeights(page, *page.heights, marked);
    }
    if (page.misfits) {
        drawMisfits(page, *page.misfits, marked);
    }
    drawDistances(page.lengthUnits); // below the last plot
    ToolkitFlush();
    return true;
}

} // namespace keldrin
