#include "sounding/presentation_page.h"

#include "base/ascii.h"
#include "base/number_text.h"
#include "base/paths.h"
#include "base/version.h"
#include "page/colour_scales.h"
#include "page/drawing.h"
#include "page/page_colours.h"
#include "page/plot.h"
#include "page/plot_ticks.h"
#include "physics/data_fit.h"
#include "screen/graphics_errors.h"
#include "sounding/neighbour_curves.h"
#include "sounding/page_layout.h"
#include "sounding/presentation_model.h"
#include "sounding/sounding_panels.h"
#include "sounding/sounding_plot_points.h"
#include "sounding/sounding_plot_ticks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace keldrin {

namespace {

constexpr PageTextSize PresentationTitleSize = textSizeOf(13.0F);
constexpr PageTextSize AxisSize = textSizeOf(9.0F);
constexpr PageTextSize SmallSize = textSizeOf(8.0F);
constexpr PageTextSize RingSize = {MarkerSize.width * 1.15F, MarkerSize.height * 1.15F};
constexpr PageTextSize DotSize = {MarkerSize.width * 0.8F, MarkerSize.height * 0.8F};

constexpr float CurveWidth = 0.9F; // points
constexpr float PresentationTick = 0.25F;
constexpr PageColour GridColour = 0xE4E4E4;
constexpr PageColour QuietColour = 0x808080; ///< of notes
constexpr PageColour SkippedColour = 0x505050;
constexpr PageColour WithinErrors = 0xEFEFEF;

/// All that the page shows of one sounding.
struct Presented {
    const ControlValues &control;
    const PlotLimits &limits;
    const SoundingRecord &sounding;
    SoundingCurves curves;
    SoundingFit fit;
    ModelSteps model;
    NeighbourCurves neighbours;
};

std::string withUnit(std::string_view quantity, std::string_view unit) {
    return std::string(quantity).append(" (").append(unit).append(")");
}

void useColour(PageColour colour, float lineWidth = 0.0F) {
    IGrColour(colour);
    ToolkitLineWidth(lineWidth);
}

// ---- Axes

// Ticks on all sides of a plot would be too much; faint lines through it lead the eye instead.
void drawGrid(const PagePanel &panel, const std::vector<float> &levels) {
    if (!ToolkitFillsAreas()) {
        return; // a plotter has no faint lines
    }
    useColour(GridColour);
    const auto low = static_cast<float>(panel.upward.min);
    const auto high = static_cast<float>(panel.upward.max);
    for (const PlotTick &tick : automaticTicks(panel.across)) {
        const std::array<float, 2> across = {static_cast<float>(tick.value),
                                             static_cast<float>(tick.value)};
        const std::array<float, 2> upward = {low, high};
        PlotDrawLine(across.data(), upward.data(), tick.small ? 0 : 2);
    }
    const std::array<float, 2> across = {static_cast<float>(panel.across.min),
                                         static_cast<float>(panel.across.max)};
    for (const float level : levels) {
        const std::array<float, 2> upward = {level, level};
        PlotDrawLine(across.data(), upward.data(), 2);
    }
}

std::vector<float> numberedTicks(const PlotScale &scale) {
    std::vector<float> values;
    for (const PlotTick &tick : automaticTicks(scale)) {
        if (!tick.small) {
            values.push_back(static_cast<float>(tick.value));
        }
    }
    return values;
}

void layPresented(const PagePanel &panel) {
    PlotNew();
    layPanel(panel);
    PlotKind('P');
    PlotTickLength(PresentationTick);
    PlotRaisedExponents(true);
    PlotXLabelOffset(0.55F);
    PlotYLabelOffset(0.85F);
    PlotNumberReach(1.1F);
}

// The time axis has its numbers below the lowest plot alone.
void drawTimeTicks(const PagePanel &panel) {
    std::array<std::vector<float>, 2> places; // long ticks, small ones
    for (const PlotTick &tick : automaticTicks(panel.across)) {
        places[tick.small ? 1 : 0].push_back(static_cast<float>(tick.value));
    }
    for (const bool small : {false, true}) {
        const std::vector<float> &ticks = places[small ? 1 : 0];
        selectTextSize(small ? SmallTickSize : SmallSize);
        PlotTickPositions(ticks.data(), static_cast<int>(ticks.size()));
        PlotXAxis();
    }
    PlotTickPositions(nullptr, -1);
}

void drawFrame(const PagePanel &panel) {
    useColour(Colour::Black);
    PlotFrame();
    drawTimeTicks(panel);
    selectTextSize(SmallSize);
}

// After the numbers, outside which it stands.
void drawSideLabel(std::string_view label) {
    selectTextSize(AxisSize);
    PlotYLabel(label);
}

// ---- Plots over time

void drawCurve(const CurvePoints &curve, const PagePanel &panel) {
    std::vector<float> places(curve.value.size());
    std::transform(curve.value.begin(), curve.value.end(), places.begin(),
                   [&](float value) { return panel.arcSinh ? ArcSinh(value) : value; });
    useColour(Colour::Blue, CurveWidth);
    PlotDrawLine(curve.time.data(), places.data(), static_cast<int>(curve.time.size()));
}

void useMark(bool skipped) {
    const PageTextSize &size = skipped ? RingSize : DotSize;
    PlotMarkerSize(size.width, size.height);
    useColour(skipped ? SkippedColour : Colour::Black, skipped ? ThinLineWidth : 0.0F);
}

void drawMark(float time, float place, bool skipped) {
    useMark(skipped);
    PlotMarkers(&time, &place, 1, skipped ? RingMarker : DotMarker);
}

void drawBar(float time, float low, float high) {
    const std::array<float, 2> times = {time, time};
    const std::array<float, 2> ends = {low, high};
    PlotDrawLine(times.data(), ends.data(), 2);
}

// A value that is not above 0, at the foot of a logarithmic axis: an open mark without its error.
void useFootMark(bool skipped) {
    useMark(true);
    useColour(skipped ? SkippedColour : Colour::Black, skipped ? ThinLineWidth : CurveWidth);
}

void drawAtFoot(const ErrorPoint &point, float place) {
    useFootMark(point.skipped);
    PlotMarkers(&point.time, &place, 1, RingMarker);
}

// Skipped ones first, so that they hide nothing.
void drawPoints(const std::vector<ErrorPoint> &points, const PagePanel &panel) {
    for (const bool skipped : {true, false}) {
        for (const ErrorPoint &point : points) {
            if (point.skipped != skipped) {
                continue;
            }
            const float place = panel.placeOf(point.value);
            if (panel.isAtFoot(point.value)) {
                drawAtFoot(point, place);
                continue;
            }
            const ErrorBar bar = errorBar(panel, place, point.halfBar);
            useMark(skipped);
            drawBar(point.time, bar.low, bar.high);
            drawMark(point.time, place, skipped);
        }
    }
}

void drawZeroLine(const PagePanel &panel) {
    if (panel.upward.min < 0.0 && panel.upward.max > 0.0) {
        const std::array<float, 2> across = {static_cast<float>(panel.across.min),
                                             static_cast<float>(panel.across.max)};
        const std::array<float, 2> zero = {0.0F, 0.0F};
        useColour(Colour::Black, ThinLineWidth);
        PlotDrawLine(across.data(), zero.data(), 2);
    }
}

// A word where a plot would be empty.
void drawNote(const PagePanel &panel, std::string_view text) {
    const PageFrame &frame = panel.frame;
    useColour(QuietColour);
    selectTextSize(AxisSize);
    ToolkitDrawText((frame.left + frame.right) / 2.0F, (frame.bottom + frame.top) / 2.0F, text,
                    0.5F);
}

void drawArcSinhFrame(const PagePanel &panel) {
    const DataAxisTicks ticks = presentedDataTicks(static_cast<float>(panel.upward.min),
                                                   static_cast<float>(panel.upward.max),
                                                   panel.frame.top - panel.frame.bottom);
    drawGrid(panel, ticks.places);
    drawFrame(panel);
    selectTextSize(SmallTickSize);
    PlotTickPositions(ticks.small.data(), static_cast<int>(ticks.small.size()));
    PlotYAxis();
    selectTextSize(SmallSize);
    PlotTickPositions(ticks.places.data(), static_cast<int>(ticks.places.size()));
    PlotTickLabels(ticks.labels);
    PlotYAxis();
}

void drawDataPlot(const Presented &page) {
    const PagePanel panel = dataPanel(page.limits);
    layPresented(panel);
    if (panel.arcSinh) {
        drawArcSinhFrame(panel);
    } else {
        drawGrid(panel, numberedTicks(panel.upward));
        drawFrame(panel);
        PlotYAxis();
    }
    drawSideLabel(withUnit("dB/dt", page.control.TEMUnits.view()));
    drawZeroLine(panel);
    drawNeighbourData(page.neighbours, panel);
    drawPoints(page.curves.observed, panel);
    drawCurve(page.curves.calculated, panel);
    if (page.curves.observed.empty() && page.curves.calculated.time.empty()) {
        drawNote(panel, "no data");
    }
    CheckGraphicsError("Plot_Sounding: data");
}

void drawResistivityPlot(const Presented &page) {
    const PagePanel panel = resistivityPanel(page.limits);
    layPresented(panel);
    drawGrid(panel, numberedTicks(panel.upward));
    drawFrame(panel);
    PlotYAxis();
    drawSideLabel("Apparent res. (ohm-m)");
    drawNeighbourResistivities(page.neighbours, panel);
    drawPoints(page.curves.resistivity, panel);
    drawCurve(page.curves.calculatedResistivity, panel);
    if (page.curves.resistivity.empty() && page.curves.calculatedResistivity.time.empty()) {
        drawNote(panel, "no apparent resistivities");
    }
    CheckGraphicsError("Plot_Sounding: apparent resistivity");
}

void fillWithinErrors(const PagePanel &panel) {
    const auto first = static_cast<float>(panel.across.min);
    const auto last = static_cast<float>(panel.across.max);
    const std::array<float, 4> across = {first, last, last, first};
    const std::array<float, 4> upward = {-1.0F, -1.0F, 1.0F, 1.0F};
    PlotFillArea(across.data(), upward.data(), 4, WithinErrors);
}

// A misfit beyond the axis is a line that leaves the plot.
void drawMisfits(const Presented &page) {
    for (std::size_t i = 0; i < page.fit.residuals.size(); ++i) {
        const float residual = page.fit.residuals[i];
        if (isPresent(residual)) {
            const bool skipped = isSkipped(page.sounding.TEMerr[i]);
            useMark(skipped);
            drawBar(page.sounding.TWcenter[i], 0.0F, residual);
            drawMark(page.sounding.TWcenter[i], residual, skipped);
        }
    }
}

void drawMisfitPlot(const Presented &page) {
    const PagePanel panel = misfitPanel(page.limits);
    layPresented(panel);
    fillWithinErrors(panel);
    drawGrid(panel, {});
    drawFrame(panel);
    PlotYAxis();
    PlotXAxis();
    drawSideLabel("Misfit");
    PlotXLabel("Time (msec)");
    const bool any = std::any_of(page.fit.residuals.begin(), page.fit.residuals.end(),
                                 [](float residual) { return isPresent(residual); });
    if (any) {
        drawZeroLine(panel);
        drawMisfits(page);
    } else {
        drawNote(panel, "no calculated data");
    }
    CheckGraphicsError("Plot_Sounding: misfit");
}

// ---- Model

void drawElevationAxis(const Presented &page, PagePanel panel) {
    const double elevation = page.sounding.Elevation;
    panel.upward.min += elevation;
    panel.upward.max += elevation;
    if (!isPresent(elevation) || !panel.upward.isUsable()) {
        return;
    }
    layPanel(panel);
    selectTextSize(SmallSize);
    PlotYAxis();
    selectTextSize(AxisSize);
    PlotYLabel(withUnit("Elevation", page.control.LengthUnits.view()));
}

void drawModelPlot(const Presented &page) {
    const PagePanel panel = modelPanel(page.limits);
    layPresented(panel);
    drawGrid(panel, numberedTicks(panel.upward));
    useColour(Colour::Black);
    drawElevationAxis(page, panel);
    layPanel(panel);
    drawModelBands(page.model);
    drawNeighbourModels(page.neighbours, panel);
    drawModelSteps(page.model, panel);
    PlotFrame();
    selectTextSize(SmallSize);
    PlotXAxis();
    PlotYAxisRight();
    selectTextSize(AxisSize);
    PlotXLabel("Resistivity (ohm-m)");
    PlotYLabelRight(withUnit("Depth", page.control.LengthUnits.view()));
    if (page.model.steps.empty()) {
        drawNote(panel, "no model");
    }
    CheckGraphicsError("Plot_Sounding: model");
}

// ---- Band of texts

std::string counted(std::size_t count, std::string_view one) {
    return std::to_string(count).append(" ").append(one).append(count == 1 ? "" : "s");
}

std::string placeText(const Presented &page) {
    std::string text;
    if (!page.control.LineName.isBlank()) {
        text = "Line " + page.control.LineName.str() + ", station ";
    } else {
        text = "Station ";
    }
    text += messageNumber(page.sounding.RxStn);
    return page.control.SurveyTypeIndex == MovingLoop
               ? text + ", transmitter " + messageNumber(page.sounding.TxStn)
               : text;
}

std::string lengthText(const Presented &page, float length) {
    return messageNumber(std::round(length)) + " " + page.control.LengthUnits.str();
}

std::string resultText(const Presented &page) {
    const std::size_t windows = windowCount(page.sounding);
    const auto skipped = static_cast<std::size_t>(
        std::count_if(page.sounding.TEMerr.begin(),
                      page.sounding.TEMerr.begin() + static_cast<std::ptrdiff_t>(windows),
                      [](float error) { return isSkipped(error); }));
    std::string text = counted(windows, "window");
    text += skipped > 0 ? ", " + std::to_string(skipped) + " skipped" : "";
    if (isPresent(page.fit.misfit)) {
        text += "; misfit " + std::string(trimBlanks(formatReal("(F14.2)", page.fit.misfit))) +
                " standard errors";
    }
    return text;
}

// ---- Legends

/// Puts entries beside each other, each a sign and its words.
class Legend {
  public:
    Legend(float left, float y) : x_(left), y_(y) { selectTextSize(SmallSize); }

    void mark(int marker, bool skipped, std::string_view words) {
        useMark(skipped);
        PlotMarker(x_ + 0.1F, middle(), marker);
        add(0.2F, words);
    }
    void footMark(bool skipped, std::string_view words) {
        useFootMark(skipped);
        PlotMarker(x_ + 0.1F, middle(), RingMarker);
        add(0.2F, words);
    }
    void line(PageColour colour, float width, std::string_view words) {
        useColour(colour, width);
        ToolkitMoveTo(x_, middle());
        ToolkitLineTo(x_ + SignWidth, middle());
        add(SignWidth, words);
    }
    void dashes(std::string_view words) {
        useColour(Colour::Black, ThinLineWidth);
        drawDashes({static_cast<double>(x_), static_cast<double>(middle()),
                    static_cast<double>(x_ + SignWidth), static_cast<double>(middle())});
        add(SignWidth, words);
    }
    /// A line with the band of its errors.
    void band(PageColour colour, PageColour line, float width, std::string_view words) {
        const std::array<float, 4> across = {x_, x_ + SignWidth, x_ + SignWidth, x_};
        const std::array<float, 4> upward = {y_ - 0.02F, y_ - 0.02F, y_ + 0.22F, y_ + 0.22F};
        if (!ToolkitFillArea(across.data(), upward.data(), 4, colour)) {
            useColour(Colour::Black, ThinLineWidth);
            for (const float level : {upward[0], upward[2]}) {
                ToolkitMoveTo(x_, level);
                ToolkitLineTo(x_ + SignWidth, level);
            }
        }
        this->line(line, width, words);
    }

  private:
    static constexpr float SignWidth = 0.7F;

    [[nodiscard]] float middle() const { return y_ + 0.1F; }
    void add(float sign, std::string_view words) {
        constexpr float gap = 0.15F;
        constexpr float between = 0.5F;
        useColour(Colour::Black);
        ToolkitDrawText(x_ + sign + gap, y_, words);
        x_ += sign + gap + ToolkitTextWidth(words) + between;
    }

    float x_;
    float y_;
};

constexpr float LegendLine = 15.5F; // page cm

void drawDataLegend(const Presented &page) {
    const auto any = [&](bool skipped) {
        return std::any_of(page.curves.observed.begin(), page.curves.observed.end(),
                           [=](const ErrorPoint &point) { return point.skipped == skipped; });
    };
    Legend legend(PresentedDataFrame.left, LegendLine);
    if (any(false)) {
        legend.mark(DotMarker, false, "observed, 2 standard errors");
    }
    if (any(true)) {
        legend.mark(RingMarker, true, "skipped");
    }
    if (!page.curves.calculated.time.empty()) {
        legend.line(Colour::Blue, CurveWidth, "calculated");
    }
    if (!page.neighbours.curves.empty()) {
        legend.line(NeighbourColour, NeighbourLineWidth, neighbourText(page.neighbours));
    }
}

// Where early windows, which are far above the foot, leave room.
void drawFootLegend(const Presented &page) {
    const PagePanel panel = dataPanel(page.limits);
    bool any = false;
    bool skipped = true;
    for (const ErrorPoint &point : page.curves.observed) {
        const bool there = panel.isAtFoot(point.value);
        any = any || there;
        skipped = skipped && (!there || point.skipped);
    }
    if (any) {
        Legend legend(panel.frame.left + 0.3F, panel.frame.bottom + 0.3F);
        legend.footMark(skipped, "at the foot: not above 0");
    }
}

void drawModelLegend(const Presented &page) {
    Legend legend(PresentedModelFrame.left, LegendLine);
    if (page.model.steps.empty()) {
        return;
    }
    if (!page.model.hasErrors) {
        legend.line(Colour::Black, ModelLineWidth, "smooth model");
        return;
    }
    const float depth = -page.model.depthOfData;
    const float fade = depth > 0.0F ? 0.0F : page.model.steps.front().fade;
    legend.band(fadedColour(BandColour, fade), fadedColour(Colour::Black, fade), ModelLineWidth,
                depth > 0.0F ? "model, standard error" : "model, not seen by the data");
    if (depth > 0.0F) {
        legend.dashes("depth of the data " + lengthText(page, depth));
    }
}

// ---- Title

// A text on the left and one on the right of a line of the band; the left one is cut.
void drawBandLine(float y, std::string_view left, std::string_view right) {
    constexpr float gap = 0.4F;
    constexpr float from = PresentedDataFrame.left;
    constexpr float to = PresentedModelFrame.right;
    const std::string shown = ToolkitFittingText(right, (to - from) / 2.0F);
    ToolkitDrawText(to, y, shown, 1.0F);
    ToolkitDrawText(from, y, ToolkitFittingText(left, to - from - ToolkitTextWidth(shown) - gap));
}

void drawBand(const Presented &page, const SoundingPage &name) {
    const ControlValues &control = page.control;
    useColour(Colour::Black);
    selectTextSize(PresentationTitleSize);
    const std::string job =
        control.JobName.isBlank() ? control.SurveyType.str() + " TEM Data" : control.JobName.str();
    drawBandLine(17.2F, job, placeText(page));
    selectTextSize(AxisSize);
    drawBandLine(16.65F,
                 control.SurveyType.str() + " TEM Data from " + std::string(fileNameOf(name.file)) +
                     "; " + resultText(page),
                 page.model.steps.empty()
                     ? ""
                     : "Smooth-Model TEM Inversion, dzWeight " + messageNumber(control.dzWeight));
    useColour(QuietColour);
    selectTextSize(SmallSize);
    drawBandLine(16.2F, "Torvu Engineering, " + std::string(ProgramIdentity),
                 "Plotted " + std::string(name.date) + ", " + std::string(name.time));
    CheckGraphicsError("Plot_Sounding: texts");
}

} // namespace

void drawPresentationPage(const SurveyModel &survey, const PlotLimits &limits,
                          const SoundingPage &page) {
    const SoundingRecord &sounding = survey.sounding(page.station);
    const ControlValues &control = survey.control;
    const Presented presented = {control,
                                 limits,
                                 sounding,
                                 soundingCurves(sounding, control.ErrorFloor),
                                 soundingFit(control, sounding),
                                 modelSteps(sounding),
                                 neighbourCurves(survey, limits, page.station)};
    ToolkitNaturalLetters(true);
    drawDataPlot(presented);
    drawResistivityPlot(presented);
    drawMisfitPlot(presented);
    drawModelPlot(presented);
    drawBand(presented, page);
    drawDataLegend(presented);
    drawFootLegend(presented);
    drawModelLegend(presented);
    ToolkitNaturalLetters(false);
    useColour(Colour::Black);
}

} // namespace keldrin
