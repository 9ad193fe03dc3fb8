#include "line/section_page.h"

#include "base/index.h"
#include "base/number_text.h"
#include "base/paths.h"
#include "base/real.h"
#include "base/sorting.h"
#include "line/line_drawing.h"
#include "line/sounding_text.h"
#include "page/plot_scale.h"
#include "page/surfaces/surface.h"
#include "page/text_metrics.h"
#include "physics/data_fit.h"
#include "sounding/plot_limits.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <span>
#include <utility>

namespace keldrin {

namespace {

constexpr float FrameTop = 16.1F;
constexpr float FrameFoot = 1.7F;
constexpr PageFrame TimesFrame = {SectionLeft, 11.2F, SectionRight, FrameTop};
constexpr PageFrame TimesAlone = {SectionLeft, FrameFoot, SectionRight, FrameTop};
constexpr PageFrame HeightsFrame = {SectionLeft, 4.4F, SectionRight, 10.5F};
constexpr PageFrame MisfitsFrame = {SectionLeft, FrameFoot, SectionRight, 3.6F};

bool isResistivity(float value) {
    return value > LeastResistivity && std::isfinite(value);
}

bool isUsable(const AxisLimits &limits, bool logarithmic) {
    const PlotScale scale = {static_cast<double>(limits.low), static_cast<double>(limits.high),
                             logarithmic};
    return limits.high > limits.low && scale.isUsable();
}

/// The windows of a sounding as cells.
struct WindowCells {
    std::vector<float> centers;       ///< of all windows
    std::vector<std::size_t> indices; ///< of the windows that have a cell
    std::vector<Stretch> cells;       ///< msec
};

// Between the geometric means of neighbouring times, with the rule for gaps on the logarithmic
// axis. Mostly they are those of the sounding before.
void makeWindowCells(WindowCells &made, const SoundingRecord &sounding) {
    constexpr double lone = 0.2; // of the logarithm
    const auto centers = std::span(sounding.TWcenter).first(windowCount(sounding));
    if (std::equal(centers.begin(), centers.end(), made.centers.begin(), made.centers.end())) {
        return;
    }
    made = {{centers.begin(), centers.end()}, {}, {}};
    std::vector<double> places;
    for (std::size_t k = 0; k < centers.size(); ++k) {
        const auto time = static_cast<double>(centers[k]);
        const double place = std::log(time);
        if (time > 0.0 && std::isfinite(time) && (places.empty() || place > places.back())) {
            places.push_back(place);
            made.indices.push_back(k);
        }
    }
    for (const Stretch &cell : cellsOf(places, lone)) {
        made.cells.push_back({std::exp(cell.from), std::exp(cell.to)});
    }
}

void addWindows(SectionPage &page, int column, const SoundingRecord &sounding,
                const WindowCells &windows) {
    for (std::size_t i = 0; i < windows.indices.size(); ++i) {
        const std::size_t k = windows.indices[i];
        if (!isSkipped(sounding.TEMerr[k]) && isResistivity(sounding.AResObs[k])) {
            page.windows.push_back({column, static_cast<int>(k), windows.cells[i].to,
                                    windows.cells[i].from, sounding.AResObs[k], false});
        }
    }
}

// Missing if no elevation on Earth has this value, in metres or feet.
double elevationOf(const SoundingRecord &sounding) {
    constexpr double farthest = 1.0e6;
    return std::fabs(sounding.Elevation) < farthest ? sounding.Elevation : MissingValue;
}

// Downward from the ground; layers below the depth that the data see are faded.
void addLayers(SectionPage &page, int column, const SoundingRecord &sounding) {
    const double ground = page.ground[asIndex(column)];
    const int seen = seenLayers(sounding);
    double top = ground;
    for (std::size_t i = 0; i < layerCount(sounding) && isPresent(ground); ++i) {
        const auto thickness = static_cast<double>(sounding.ThkInv[i]);
        if (!(thickness > 0.0) || !std::isfinite(thickness)) {
            break;
        }
        const double bottom = top - thickness;
        if (isResistivity(sounding.ResInv[i])) {
            page.layers.push_back({column, static_cast<int>(i), bottom, top, sounding.ResInv[i],
                                   static_cast<int>(i) >= seen});
        }
        top = bottom;
    }
}

void addCells(SectionPage &page, const SurveyModel &survey) {
    page.hasElevations =
        std::any_of(page.columns.begin(), page.columns.end(), [&](const LineColumn &column) {
            const double elevation = elevationOf(survey.sounding(column.sounding));
            return isPresent(elevation) && elevation != 0.0;
        });
    WindowCells windows;
    for (std::size_t i = 0; i < page.columns.size(); ++i) {
        const SoundingRecord &sounding = survey.sounding(page.columns[i].sounding);
        page.stations.push_back(stationText(sounding.Station));
        page.ground.push_back(page.hasElevations ? elevationOf(sounding) : 0.0);
        page.misfit.push_back(soundingFit(survey.control, sounding).misfit);
        makeWindowCells(windows, sounding);
        addWindows(page, static_cast<int>(i), sounding, windows);
        addLayers(page, static_cast<int>(i), sounding);
    }
}

// Whole decades or halves of them would leave much of the plot empty, so the axis ends where the
// cells end.
void setTimes(SectionPage &page, const SectionLimits &limits) {
    AxisLimits time = {0.0F, 0.0F};
    for (const SectionCell &cell : page.windows) {
        const auto early = static_cast<float>(cell.top);
        const auto late = static_cast<float>(cell.bottom);
        time.low = time.low > 0.0F ? std::min(time.low, early) : early;
        time.high = std::max(time.high, late);
    }
    if (limits.setTime && isUsable(limits.time, true)) {
        time = limits.time;
    } else if (!isUsable(time, true)) {
        time = SectionLimits{}.time;
    }
    page.times = {page.layers.empty() ? TimesAlone : TimesFrame, static_cast<double>(time.high),
                  static_cast<double>(time.low), true};
}

// Depths of the columns down to which the data see; 0 where they see nothing.
std::vector<float> seenDepths(const SectionPage &page) {
    std::vector<float> depths(page.columns.size(), 0.0F);
    for (const SectionCell &cell : page.layers) {
        const auto column = asIndex(cell.column);
        if (!cell.faded) {
            depths[column] =
                std::max(depths[column], static_cast<float>(page.ground[column] - cell.bottom));
        }
    }
    return depths;
}

// Page centimetres of a unit of height over those of a unit of distance.
double exaggerationOf(const SectionPage &page, const SectionPlot &heights, double pageShape) {
    const PageFrame &frame = heights.frame;
    const double across = static_cast<double>(frame.right - frame.left) / (page.right - page.left);
    const double upward =
        static_cast<double>(frame.top - frame.bottom) / (heights.top - heights.bottom);
    return upward / across * pageShape / PageShape;
}

// From the highest ground down to a little below what the data see, at each column no deeper than
// `most`; all layers where the data see nothing.
SectionPlot seenHeights(const SectionPage &page, std::span<const float> depths, float most) {
    constexpr float below = 1.15F;
    double highest = -1.0e32;
    double lowest = 1.0e32;
    for (const SectionCell &cell : page.layers) {
        const auto column = asIndex(cell.column);
        const double ground = page.ground[column];
        const auto depth = static_cast<double>(std::min(depths[column] * below, most));
        highest = std::max(highest, ground);
        lowest = std::min(lowest, most > 0.0F ? ground - depth : cell.bottom);
    }
    return {HeightsFrame, lowest, highest, false};
}

// Few soundings that see much deeper than the others, as resistive ground lets them, do not squeeze
// the rest. Where the section is flatter than the ground itself, a quarter of the soundings decides
// how deep it goes: the others see far into ground of which there is nothing to tell.
AxisLimits ownHeights(const SectionPage &page) {
    constexpr double margin = 0.03;
    constexpr float mostOfUsual = 1.4F;
    const std::vector<float> depths = seenDepths(page);
    std::vector<float> seeing;
    std::copy_if(depths.begin(), depths.end(), std::back_inserter(seeing),
                 [](float depth) { return depth > 0.0F; });
    std::sort(seeing.begin(), seeing.end());
    const auto most = [&](std::size_t part) {
        return seeing.empty() ? 0.0F : mostOfUsual * seeing[seeing.size() / part];
    };
    SectionPlot heights = seenHeights(page, depths, most(2));
    const double flatness = exaggerationOf(page, heights, PageShape);
    if (flatness < 1.0) {
        const double trueToScale = heights.top - (heights.top - heights.bottom) * flatness;
        heights.bottom = std::min(seenHeights(page, depths, most(4)).bottom, trueToScale);
    }
    const double air = margin * (heights.top - heights.bottom);
    return {static_cast<float>(heights.bottom), static_cast<float>(heights.top + air)};
}

void setHeights(SectionPage &page, const SectionLimits &limits, double pageShape) {
    if (page.layers.empty()) {
        return;
    }
    const bool chosen = limits.setHeight && isUsable(limits.height, false);
    const AxisLimits height = chosen ? limits.height : ownHeights(page);
    SectionPlot plot = {HeightsFrame, static_cast<double>(height.low),
                        static_cast<double>(height.high), false};
    if (!PlotScale{plot.bottom, plot.top, false}.isUsable()) {
        plot.bottom = plot.top - 1.0;
    }
    page.exaggeration = exaggerationOf(page, plot, pageShape);
    const auto wanted = static_cast<double>(limits.exaggeration);
    if (limits.setExaggeration && wanted > 0.0 && std::isfinite(wanted)) {
        plot.bottom = plot.top - (plot.top - plot.bottom) * page.exaggeration / wanted;
        page.exaggeration = wanted;
    }
    page.heights = plot;
}

void setResistivity(SectionPage &page, const SectionLimits &limits) {
    page.colours = limits.colours - 1;
    if (limits.setResistivity && isUsable(limits.resistivity, true)) {
        page.resistivity = limits.resistivity;
        return;
    }
    std::vector<float> values;
    for (const SectionCell &cell : page.windows) {
        values.push_back(cell.resistivity);
    }
    for (const SectionCell &cell : page.layers) {
        if (!cell.faded) {
            values.push_back(cell.resistivity);
        }
    }
    page.resistivity = roundPercentiles(values);
}

// An outlier must not press the others to the ground: the axis reaches to five times the median at
// the most, and its bar to the frame.
void setMisfits(SectionPage &page) {
    constexpr float most = 5.0F;
    constexpr float least = 2.0F;
    std::vector<float> values;
    std::copy_if(page.misfit.begin(), page.misfit.end(), std::back_inserter(values),
                 [](float misfit) { return isPresent(misfit) && std::isfinite(misfit); });
    if (page.layers.empty() || values.empty()) {
        return;
    }
    const float highest = *std::max_element(values.begin(), values.end());
    const float top = std::min(highest * 1.1F, most * upperMedian(std::move(values)));
    page.misfits = {MisfitsFrame, 0.0, static_cast<double>(std::max(top, least)), false};
}

bool holds(const PageFrame &frame, float x, float y) {
    return x >= frame.left && x <= frame.right && y >= frame.bottom && y <= frame.top;
}

double heightAt(const SectionPlot &plot, float y) {
    const PlotScale scale = {plot.bottom, plot.top, plot.logarithmic};
    const float part = (y - plot.frame.bottom) / (plot.frame.top - plot.frame.bottom);
    return scale.valueAt(static_cast<double>(part));
}

void findCell(std::span<const SectionCell> cells, int column, double value, LineHit &hit,
              LineHit::Kind kind) {
    for (const SectionCell &cell : cells) {
        const double low = std::min(cell.bottom, cell.top);
        const double high = std::max(cell.bottom, cell.top);
        if (cell.column == column && value >= low && value <= high) {
            hit.kind = kind;
            hit.index = cell.index;
            hit.value = cell.resistivity;
            hit.bottom = cell.bottom;
            hit.top = cell.top;
            return;
        }
    }
}

std::string number(double value) {
    return lineNumberText(value);
}

} // namespace

SectionPage sectionPage(const SurveyModel &survey, const SectionLimits &limits,
                        std::string_view path, double pageShape) {
    SectionPage page;
    page.title = lineTitle(survey.control, "Section", path);
    page.lengthUnits = survey.control.LengthUnits.str();
    page.columns = lineColumns(survey);
    if (!page.columns.empty()) {
        const auto [left, right] = distanceLimits(page.columns);
        page.left = left;
        page.right = right;
    }
    addCells(page, survey);
    setTimes(page, limits);
    setHeights(page, limits, pageShape);
    setResistivity(page, limits);
    setMisfits(page);
    return page;
}

LineHit sectionHit(const SectionPage &page, float x, float y) {
    const PlotScale distances = {page.left, page.right, false};
    const double distance = distances.valueAt(static_cast<double>(
        (x - page.times.frame.left) / (page.times.frame.right - page.times.frame.left)));
    const int column = columnAt(page.columns, distance);
    LineHit hit;
    const auto isIn = [&](const SectionPlot &plot) {
        if (column < 0 || !holds(plot.frame, x, y)) {
            return false;
        }
        hit.sounding = page.columns[asIndex(column)].sounding;
        return true;
    };
    if (isIn(page.times)) {
        findCell(page.windows, column, heightAt(page.times, y), hit, LineHit::Kind::Window);
    } else if (page.heights && isIn(*page.heights)) {
        findCell(page.layers, column, heightAt(*page.heights, y), hit, LineHit::Kind::Layer);
    } else if (page.misfits && isIn(*page.misfits)) {
        const float misfit = page.misfit[asIndex(column)];
        hit.kind = isPresent(misfit) ? LineHit::Kind::Misfit : LineHit::Kind::Nothing;
        hit.value = isPresent(misfit) ? misfit : 0.0F;
    }
    return hit;
}

std::string sectionText(const SectionPage &page, const LineHit &hit) {
    const auto value = static_cast<double>(hit.value);
    switch (hit.kind) {
    case LineHit::Kind::Window:
        return "Window " + std::to_string(hit.index + 1) + ": " +
               number(std::sqrt(hit.bottom * hit.top)) + " msec   " + number(value) + " ohm-m";
    case LineHit::Kind::Layer:
        return "Layer " + std::to_string(hit.index + 1) + ": " +
               (page.hasElevations ? number(hit.bottom) + " to " + number(hit.top)
                                   : number(-hit.top) + " to " + number(-hit.bottom)) +
               " " + page.lengthUnits + "   " + number(value) + " ohm-m";
    case LineHit::Kind::Misfit:
        return "Misfit " + number(value);
    case LineHit::Kind::Nothing:
        break;
    }
    return "";
}

} // namespace keldrin
