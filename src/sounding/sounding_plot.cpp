#include "sounding/sounding_plot.h"

#include "base/ascii.h"
#include "base/number_text.h"
#include "base/paths.h"
#include "base/version.h"
#include "page/drawing.h"
#include "page/plot.h"
#include "page/plot_scale.h"
#include "screen/graphics_errors.h"
#include "sounding/neighbour_curves.h"
#include "sounding/page_layout.h"
#include "sounding/presentation_page.h"
#include "sounding/sounding_panels.h"
#include "sounding/sounding_plot_points.h"
#include "sounding/sounding_plot_ticks.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace keldrin {

namespace {

constexpr float TickLength = 0.25F; // of the character height
constexpr float LabelBelow = 0.5F;  // cm from the axis
constexpr float LabelBeside = 0.8F; // cm
constexpr float DepthLabelBeside = 0.1F;
constexpr float LabelRoom = 0.45F; // cm, height of a label and its gaps
constexpr float GapOfPlots = ModelFrame.left - DataFrame.right;
constexpr float RightMargin = 24.0F - ModelFrame.right;

std::string joined(std::string_view head, std::string_view middle, std::string_view tail = {}) {
    return std::string(head).append(middle).append(tail);
}

void setUpDataPlot(const PlotLimits &limits) {
    PlotNew();
    layPanel(dataPanel(limits));
    PlotMarkerSize(MarkerSize.width, MarkerSize.height);
    PlotTickLength(TickLength);
    PlotXLabelOffset(LabelBelow);
    PlotYLabelOffset(LabelBeside);
    PlotNumberReach(DataFrame.left - LabelRoom);
}

void drawDataAxes(const PlotLimits &limits, std::string_view unit) {
    PlotFrame();
    selectTextSize(NumberSize);
    PlotXAxis();
    drawDataTicks(limits.logData ? logDataAxisTicks(limits.PlotLogMin, limits.PlotLogMax)
                                 : dataAxisTicks(limits.PlotDataMin, limits.PlotDataMax));
    selectTextSize(LabelSize);
    PlotXLabel("Time (msec)");
    PlotYLabel(joined("dB/dt (", unit, ")"));
}

// A curve leaves a logarithmic axis where it is not above 0.
void drawCurve(const CurvePoints &curve, const PagePanel &panel, std::string_view colour) {
    IGrColour(colour);
    std::vector<float> places(curve.value.size());
    std::transform(curve.value.begin(), curve.value.end(), places.begin(),
                   [&](float value) { return panel.arcSinh ? ArcSinh(value) : value; });
    PlotDrawLine(curve.time.data(), places.data(), static_cast<int>(curve.time.size()));
}

// At the foot of a logarithmic axis a mark is open, and its error has no place.
void drawPoints(const std::vector<ErrorPoint> &points, const PagePanel &panel, int marker,
                std::string_view colour) {
    for (const ErrorPoint &point : points) {
        IGrColour(point.skipped ? "RED" : colour);
        const float place = panel.placeOf(point.value);
        if (panel.isAtFoot(point.value)) {
            PlotMarkers(&point.time, &place, 1, RingMarker);
            continue;
        }
        PlotMarkers(&point.time, &place, 1, marker);
        const std::array<float, 2> times = {point.time, point.time};
        const ErrorBar bar = errorBar(panel, place, point.halfBar);
        const std::array<float, 2> ends = {bar.low, bar.high};
        PlotDrawLine(times.data(), ends.data(), 2);
    }
}

void drawDataPlot(const PlotLimits &limits, const SoundingCurves &curves, std::string_view unit,
                  const NeighbourCurves &neighbours) {
    setUpDataPlot(limits);
    drawDataAxes(limits, unit);
    CheckGraphicsError("Plot_Sounding: data axes");
    const PagePanel panel = dataPanel(limits);
    drawNeighbourData(neighbours, panel);
    drawNeighbourResistivities(neighbours, resistivityPanel(limits));
    drawCurve(curves.calculated, panel, "BLACK");
    drawPoints(curves.observed, panel, PlusMarker, "BLACK");
    drawCurve(curves.calculatedResistivity, panel, "BLUE");
    drawPoints(curves.resistivity, panel, DotMarker, "BLUE");
    IGrColour("BLACK");
    if (panel.arcSinh && limits.PlotDataMin < 0.0F) {
        const std::array<float, 2> times = {limits.PlotTimeMin, limits.PlotTimeMax};
        const std::array<float, 2> zero = {0.0F, 0.0F};
        PlotDrawLine(times.data(), zero.data(), 2);
    }
    CheckGraphicsError("Plot_Sounding: data");
}

// The left axis shows the same depths as elevations. A sounding without a usable elevation has
// none.
void drawElevationAxis(const PlotLimits &limits, double elevation, std::string_view unit) {
    const PlotScale heights = {static_cast<double>(limits.PlotDepthMin) + elevation,
                               static_cast<double>(limits.PlotDepthMax) + elevation, false};
    if (!isPresent(elevation) || !heights.isUsable()) {
        return;
    }
    PlotUnits(static_cast<double>(limits.PlotResMin), heights.min,
              static_cast<double>(limits.PlotResMax), heights.max);
    PlotNumberReach(GapOfPlots - LabelRoom);
    selectTextSize(NumberSize);
    PlotYAxis();
    selectTextSize(LabelSize);
    PlotYLabel(joined("Elevation (", unit, ")"));
}

void drawModelAxes(const PlotLimits &limits, double elevation, std::string_view unit) {
    layPanel(modelPanel(limits));
    drawElevationAxis(limits, elevation, unit);
    layPanel(modelPanel(limits));
    PlotFrame();
    PlotNumberReach(RightMargin - LabelRoom);
    PlotYLabelOffset(DepthLabelBeside);
    selectTextSize(NumberSize);
    PlotXAxis();
    PlotYAxisRight();
    selectTextSize(LabelSize);
    PlotXLabel("Model Resistivity (ohm-m)");
    PlotYLabelRight(joined("Depth (", unit, ")"));
}

// From the surface to the middle of the first layer, then through the middles of all.
void drawLayers(const SoundingRecord &sounding) {
    const int layers = limited(sounding.NumLayer, 0, MaxLayers);
    if (layers < 1) {
        return;
    }
    const std::array<float, 2> top = {sounding.ResInv[0], sounding.ResInv[0]};
    const std::array<float, 2> depths = {0.0F, sounding.ZMid[0]};
    PlotDrawLine(top.data(), depths.data(), 2);
    PlotDrawLine(sounding.ResInv.data(), sounding.ZMid.data(), layers);
}

void drawModelPlot(const PlotLimits &limits, const SoundingRecord &sounding, std::string_view unit,
                   const NeighbourCurves &neighbours) {
    drawModelAxes(limits, sounding.Elevation, unit);
    CheckGraphicsError("Plot_Sounding: model axes");
    drawNeighbourModels(neighbours, modelPanel(limits));
    drawLayers(sounding);
    CheckGraphicsError("Plot_Sounding: model");
}

std::string stationText(double station) {
    return isPresent(station) ? std::string(trimBlanks(formatReal("(F14.3)", station))) : "*";
}

std::vector<std::string> titleOf(const ControlValues &control, const SoundingRecord &sounding) {
    std::vector<std::string> lines;
    if (!control.JobName.isBlank()) {
        lines.push_back(control.JobName.str());
    }
    if (!control.LineName.isBlank()) {
        lines.push_back(joined("Line ", control.LineName.view()));
    }
    if (control.SurveyTypeIndex == MovingLoop) {
        lines.push_back("Tx.Stn " + stationText(sounding.TxStn));
    }
    lines.push_back("Rx.Stn " + stationText(sounding.RxStn));
    return lines;
}

std::vector<std::string> sourceOf(const ControlValues &control, const SoundingCurves &curves,
                                  std::string_view file) {
    std::vector<std::string> lines = {joined(control.SurveyType.view(), " TEM Data"),
                                      joined("Data from ", fileNameOf(file)),
                                      "dzWeight: " + messageNumber(control.dzWeight)};
    if (curves.residual) {
        lines.push_back(joined("Residual: ", trimBlanks(formatReal("(F14.2)", *curves.residual))));
    }
    return lines;
}

// Lines below each other, a character height apart, each cut where the next column begins.
void drawColumn(float x, float y, float right, const std::vector<std::string> &lines,
                float pitch = ToolkitTextMetric(TextCharacterHeight)) {
    for (const std::string &line : lines) {
        ToolkitDrawText(x, y, ToolkitFittingText(line, right - x));
        y -= pitch;
    }
}

void drawLegend(const NeighbourCurves &neighbours) {
    selectTextSize(NumberSize);
    const float x = 1.7F;
    const float y = 2.6F;
    const float pitch = ToolkitTextMetric(TextCharacterHeight);
    if (!neighbours.curves.empty()) {
        drawColumn(x, y + pitch, DataFrame.right,
                   {"Grey lines = neighbours, " + neighbourText(neighbours)});
    }
    drawColumn(x, y, DataFrame.right,
               {"Black line = calculated dB/dT", "Black + = observed dB/dT"});
    IGrColour("BLUE");
    drawColumn(x, y - 2.0F * pitch, DataFrame.right,
               {"Blue line = calculated apparent resistivity",
                "Blue dots = observed apparent resistivity"});
    IGrColour("BLACK");
}

void drawStandardPage(const SurveyModel &survey, const PlotLimits &limits,
                      const SoundingPage &page) {
    const SoundingRecord &sounding = survey.sounding(page.station);
    const ControlValues &control = survey.control;
    const SoundingCurves curves = soundingCurves(sounding, control.ErrorFloor);
    const NeighbourCurves neighbours = neighbourCurves(survey, limits, page.station);
    drawDataPlot(limits, curves, control.TEMUnits.view(), neighbours);
    drawModelPlot(limits, sounding, control.LengthUnits.view(), neighbours);

    constexpr float top = 17.0F;
    constexpr float gap = 0.2F;
    constexpr float secondColumn = 6.5F;
    selectTextSize(LabelSize);
    drawColumn(1.7F, top, secondColumn - gap, titleOf(control, sounding));
    drawColumn(secondColumn, top, DataFrame.right - gap, sourceOf(control, curves, page.file));
    drawColumn(
        17.5F, top, ModelFrame.right - gap,
        {"Smooth-Model TEM Inversion", joined("Plotted ", page.date, joined(", ", page.time))});
    drawColumn(0.1F, 0.6F, DataFrame.right, {"Torvu Engineering", std::string(ProgramIdentity)},
               0.4F);
    drawLegend(neighbours);
    CheckGraphicsError("Plot_Sounding: texts");
}

} // namespace

bool hasSoundingPlot(const SurveyModel &survey, int station) {
    return station >= 1 && station <= survey.SoundingCount &&
           station <= survey.SoundingCapacity() && survey.sounding(station).NumTW >= 1;
}

int Plot_Sounding(const SurveyModel &survey, const PlotLimits &limits, int station,
                  std::string_view file, std::string_view date, std::string_view time) {
    if (!hasSoundingPlot(survey, station)) {
        return 1;
    }
    const SoundingPage page = {station, file, date, time};
    beginReviewPage();
    if (limits.style == PageStyle::Presentation) {
        drawPresentationPage(survey, limits, page);
    } else {
        drawStandardPage(survey, limits, page);
    }
    setUpDataPlot(limits); // mouse positions are read against the data plot
    ToolkitFlush();
    return 0;
}

} // namespace keldrin
