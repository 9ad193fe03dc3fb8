#include "sounding/plan_view.h"

#include "base/paths.h"
#include "page/drawing.h"
#include "page/plot.h"
#include "sounding/map_plot.h"
#include "sounding/page_layout.h"
#include "sounding/survey_map.h"
#include "toolkit/toolkit.h"

#include <string>
#include <vector>

namespace keldrin {

namespace {

constexpr PageFrame Viewport = {0.1041667F, 0.0833333F, 0.9791667F, 0.9722222F};
constexpr float FrameRight = 23.5F; // page cm

void drawTitle(const ControlValues &control, std::string_view fileName) {
    std::vector<std::string> lines = {"Plan View of Survey Configuration"};
    if (!control.LineName.isBlank()) {
        const std::string line = "Line " + control.LineName.str();
        lines.push_back(control.JobName.isBlank() ? line : control.JobName.str() + " " + line);
    }
    lines.push_back("Data from " + std::string(fileName));

    selectTextSize(TitleSize);
    const float indent = 2.0F * ToolkitTextMetric(TextCharacterWidth);
    const float x = 2.5F + indent;
    float y = 17.5F;
    for (const std::string &line : lines) {
        y -= ToolkitTextMetric(TextCharacterHeight);
        ToolkitDrawText(x, y, ToolkitFittingText(line, FrameRight - indent - x));
    }
}

void drawPoints(const MapPoints &points) {
    PlotMarkers(points.east.data(), points.north.data(), points.count(), DotMarker);
}

} // namespace

int Plot_PlanView(const SurveyModel &survey, std::string_view path) {
    if (survey.SoundingCount < 1 || survey.hTrn.empty()) {
        return 1;
    }
    const MapPoints soundings = soundingsOnMap(survey);
    const MapPoints loop = loopOutline(survey);
    const bool isMap = soundings.count() + loop.count() > 0;
    beginReviewPage();
    if (isMap) {
        beginMapPlot(Viewport, mapExtent(soundings, loop, windowShape()));
        PlotFrame();
    }
    drawTitle(survey.control, fileNameOf(path));
    if (isMap) {
        drawMapAxes(survey.control.LengthUnits.view());
        IGrColour("Red");
        PlotDrawLine(loop.east.data(), loop.north.data(), loop.count());
        drawPoints(loop);
        IGrColour("Black");
        drawPoints(soundings);
    }
    ToolkitFlush();
    return 0;
}

} // namespace keldrin
