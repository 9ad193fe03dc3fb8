#include "line/plan_page.h"

#include "base/index.h"
#include "base/number_text.h"
#include "base/paths.h"
#include "line/colour_bar.h"
#include "line/label_places.h"
#include "line/plan_limits_dialog.h"
#include "line/plan_values.h"
#include "line/sounding_text.h"
#include "page/drawing.h"
#include "page/page_colours.h"
#include "page/plot.h"
#include "page/plot_scale.h"
#include "sounding/map_plot.h"
#include "sounding/page_layout.h"
#include "sounding/survey_map.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <numbers>
#include <vector>

namespace keldrin {

namespace {

constexpr PageFrame WholeFrame = {2.5F, 1.7F, 23.3F, 16.2F}; // cm
constexpr PageFrame FrameBesideBar = {2.5F, 1.7F, 20.8F, 16.2F};
constexpr PageFrame ColourBar = {21.4F, 1.7F, 21.85F, 16.2F};

/// A place on the page, in centimetres.
struct Place {
    float x = 0.0F;
    float y = 0.0F;
};

/// What the page shows, worked out once.
struct PlanPage {
    const SurveyModel &survey;
    std::string file;
    std::vector<int> soundings; ///< ordinals of those on the map
    MapPoints points;           ///< of these
    MapPoints loop;
    MapExtent map;
    PlanValues values; ///< of the soundings
    ValueColours colours;
    PageFrame frame = WholeFrame;

    [[nodiscard]] bool isColoured() const { return !values.label.empty(); }
    [[nodiscard]] bool isEmpty() const { return points.count() + loop.count() == 0; }
    [[nodiscard]] PlotScale east() const { return {map.east.lowest(), map.east.highest(), false}; }
    [[nodiscard]] PlotScale north() const {
        return {map.north.lowest(), map.north.highest(), false};
    }
    [[nodiscard]] Place placeOf(double e, double n) const {
        const double across = east().fractionOf(e);
        const double upward = north().fractionOf(n);
        return {frame.left + static_cast<float>(across) * (frame.right - frame.left),
                frame.bottom + static_cast<float>(upward) * (frame.top - frame.bottom)};
    }
    [[nodiscard]] Place placeOf(const MapPoints &set, std::size_t i) const {
        return placeOf(set.east[i], set.north[i]);
    }
};

// Height over width of the map's frame, as it is seen.
double frameShape(const PageFrame &frame) {
    const auto width = static_cast<double>((frame.right - frame.left) / PageWidthCm);
    const auto height = static_cast<double>((frame.top - frame.bottom) / PageHeightCm);
    return shownPageShape() * height / width;
}

bool holdsPlace(const PageFrame &frame, const Place &place) {
    return place.x >= frame.left && place.x <= frame.right && place.y >= frame.bottom &&
           place.y <= frame.top;
}

MapSpan spanOf(double low, double high) {
    return {low, high, high - low};
}

bool isUsable(const MapSpan &span) {
    return span.width > 0.0 && PlotScale{span.lowest(), span.highest(), false}.isUsable();
}

// What the user has chosen, or all that there is.
MapExtent shownMap(const PlanPage &plan, const PlanLimits &limits) {
    const double shape = frameShape(plan.frame);
    MapExtent chosen = {spanOf(limits.map.west, limits.map.east),
                        spanOf(limits.map.south, limits.map.north)};
    if (limits.setMap && isUsable(chosen.east) && isUsable(chosen.north)) {
        return widenedTo(chosen, shape);
    }
    return mapExtent(plan.points, plan.loop, shape);
}

PlanPage planOf(const SurveyModel &survey, const PlanLimits &limits, std::string_view path) {
    PlanPage plan{survey, std::string(fileNameOf(path)), {}, {}, {}, {}, {}, {}};
    for (int i = 1; i <= survey.SoundingCount; ++i) {
        const SoundingRecord &sounding = survey.sounding(i);
        if (isOnMap(survey.control, sounding)) {
            plan.soundings.push_back(i);
            plan.points.add(sounding.East, sounding.North);
        }
    }
    plan.values = planValues(survey, limits, plan.soundings);
    const AxisLimits &ends = plan.values.limits;
    plan.colours = {
        {static_cast<double>(ends.low), static_cast<double>(ends.high), plan.values.logarithmic},
        limits.colours - 1};
    plan.frame = plan.isColoured() ? FrameBesideBar : WholeFrame;
    if (survey.SoundingCount > 0) {
        plan.loop = loopOutline(survey);
    }
    if (!plan.isEmpty()) {
        plan.map = shownMap(plan, limits);
    }
    return plan;
}

// ---- Drawing

bool hasColour(float value) {
    return isPresent(value) && std::isfinite(value);
}

void drawTitle(const PlanPage &plan) {
    const ControlValues &control = plan.survey.control;
    std::string title = "Plan";
    if (!control.LineName.isBlank()) {
        title += " of line " + control.LineName.str();
    }
    title += control.JobName.isBlank() ? "" : "   " + control.JobName.str();
    constexpr float left = WholeFrame.left;
    constexpr float right = WholeFrame.right - 1.5F; // where the arrow stands
    selectTextSize(TitleSize);
    ToolkitDrawText(left, 17.25F, ToolkitFittingText(title, right - left));
    selectTextSize(LabelSize);
    std::string source = "Data from " + plan.file + "   " + std::to_string(plan.soundings.size()) +
                         " of " + std::to_string(plan.survey.SoundingCount) + " soundings";
    const std::vector<float> &values = plan.values.values;
    if (std::any_of(values.begin(), values.end(), [](float v) { return !hasColour(v); })) {
        source += "   + without a value";
    }
    ToolkitDrawText(left, 16.55F, ToolkitFittingText(source, right - left));
}

void drawLine(Place from, Place to) {
    ToolkitMoveTo(from.x, from.y);
    ToolkitLineTo(to.x, to.y);
}

// Above the frame, so that it covers nothing of the map.
void drawNorthArrow() {
    constexpr Place foot = {22.7F, 16.45F};
    constexpr Place head = {22.7F, 17.55F};
    constexpr float barb = 0.18F;
    drawLine(foot, head);
    drawLine({head.x - barb, head.y - 2.0F * barb}, head);
    drawLine({head.x + barb, head.y - 2.0F * barb}, head);
    selectTextSize(LabelSize);
    ToolkitDrawText(head.x + 0.25F, 16.8F, "N");
}

void setUpPlot(const PlanPage &plan) {
    const PageFrame &frame = plan.frame;
    beginMapPlot({frame.left / PageWidthCm, frame.bottom / PageHeightCm, frame.right / PageWidthCm,
                  frame.top / PageHeightCm},
                 plan.map);
}

float textHeight() {
    return ToolkitTextMetric(TextCharacterHeight);
}

// On a line whose loop moves it is that of the first sounding alone.
std::string loopName(const SurveyModel &survey) {
    const SoundingRecord &first = survey.hTrn.front();
    const bool fixed = survey.control.SurveyTypeIndex == FixedLoop;
    const std::string station = stationText(fixed ? survey.control.TxStn : first.TxStn);
    const std::string name = fixed ? "Loop" : "First loop";
    return station.empty() ? name : name + (fixed ? " " : ", station ") + station;
}

PageFrame boxAround(const PlanPage &plan, const MapPoints &set) {
    constexpr float far = std::numeric_limits<float>::max();
    PageFrame box = {far, far, -far, -far};
    for (std::size_t i = 0; i < set.east.size(); ++i) {
        const Place place = plan.placeOf(set, i);
        box = {std::min(box.left, place.x), std::min(box.bottom, place.y),
               std::max(box.right, place.x), std::max(box.top, place.y)};
    }
    return box;
}

void takeLoop(const PlanPage &plan, PageRoom &room) {
    for (std::size_t i = 1; i < plan.loop.east.size(); ++i) {
        const Place from = plan.placeOf(plan.loop, i - 1);
        const Place to = plan.placeOf(plan.loop, i);
        room.takeLine(from.x, from.y, to.x, to.y);
    }
}

void drawLoop(const PlanPage &plan, PageRoom &room) {
    if (plan.loop.count() == 0) {
        return;
    }
    IGrColour("RED");
    PlotDrawLine(plan.loop.east.data(), plan.loop.north.data(), plan.loop.count());
    PlotMarkers(plan.loop.east.data(), plan.loop.north.data(), plan.loop.count(), DotMarker);
    const std::string name = loopName(plan.survey);
    if (const auto place =
            placeBeside(room, boxAround(plan, plan.loop), ToolkitTextWidth(name), textHeight())) {
        ToolkitDrawText(place->x, place->y, name);
    }
    IGrColour("BLACK");
}

std::vector<LabelledPoint> labelledPoints(const PlanPage &plan) {
    std::vector<LabelledPoint> labelled;
    for (std::size_t i = 0; i < plan.soundings.size(); ++i) {
        const Place place = plan.placeOf(plan.points, i);
        if (!holdsPlace(plan.frame, place)) {
            continue;
        }
        std::string text = stationText(plan.survey.sounding(plan.soundings[i]).RxStn);
        const float width = ToolkitTextWidth(text);
        labelled.push_back({place.x, place.y, std::move(text), width});
    }
    return labelled;
}

void drawStationNumbers(PageRoom &room, const std::vector<LabelledPoint> &points) {
    for (const LabelPlace &place : placeLabels(room, points, textHeight())) {
        ToolkitDrawText(place.x, place.y, points[place.point].text);
    }
}

// A ring around the sounding that the user is at.
void drawMark(const PlanPage &plan, int marked) {
    constexpr int corners = 24;
    constexpr double radius = 0.22; // cm
    const auto found = std::find(plan.soundings.begin(), plan.soundings.end(), marked);
    if (found == plan.soundings.end()) {
        return;
    }
    const auto i = asIndex(found - plan.soundings.begin());
    const PageFrame &frame = plan.frame;
    const double across =
        radius * plan.map.east.width / static_cast<double>(frame.right - frame.left);
    const double upward =
        radius * plan.map.north.width / static_cast<double>(frame.top - frame.bottom);
    MapPoints ring;
    for (int corner = 0; corner <= corners; ++corner) {
        const double angle = 2.0 * std::numbers::pi * corner / corners;
        ring.add(plan.points.east[i] + across * std::cos(angle),
                 plan.points.north[i] + upward * std::sin(angle));
    }
    IGrColour("RED");
    PlotDrawLine(ring.east.data(), ring.north.data(), ring.count());
    IGrColour("BLACK");
}

// A plus stands for a sounding without a value.
void drawDots(const PlanPage &plan) {
    if (!plan.isColoured()) {
        PlotMarkers(plan.points.east.data(), plan.points.north.data(), plan.points.count(),
                    DotMarker);
        return;
    }
    constexpr float larger = 1.6F;
    PlotMarkerSize(larger * MarkerSize.width, larger * MarkerSize.height);
    for (std::size_t i = 0; i < plan.soundings.size(); ++i) {
        const float value = plan.values.values[i];
        IGrColour(hasColour(value) ? plan.colours.of(value) : Colour::Black);
        PlotMarkers(&plan.points.east[i], &plan.points.north[i], 1,
                    hasColour(value) ? DotMarker : PlusMarker);
    }
    IGrColour("BLACK");
}

void drawMap(const PlanPage &plan, int marked) {
    setUpPlot(plan);
    PlotFrame();
    drawMapAxes(plan.survey.control.LengthUnits.view());
    selectTextSize(NumberSize);
    PageRoom room(plan.frame);
    takeLoop(plan, room);
    const std::vector<LabelledPoint> points = labelledPoints(plan);
    drawStationNumbers(room, points);
    drawLoop(plan, room);
    drawDots(plan);
    drawMark(plan, marked);
}

void drawPlan(const PlanPage &plan, int marked) {
    beginReviewPage();
    drawTitle(plan);
    if (plan.isEmpty()) {
        selectTextSize(LabelSize);
        ToolkitDrawText(WholeFrame.left, 9.0F, "No sounding has coordinates.");
    } else {
        drawNorthArrow();
        if (plan.isColoured()) {
            drawColourBar(ColourBar, plan.colours, plan.values.label);
        }
        drawMap(plan, marked);
    }
    ToolkitFlush();
}

// ---- Under the mouse

// The nearest dot within reach; of dots at one place the first.
int soundingAt(const PlanPage &plan, float x, float y) {
    constexpr float reach = 0.5F; // cm
    float best = reach * reach;
    int found = 0;
    for (std::size_t i = 0; i < plan.soundings.size() && holdsPlace(plan.frame, {x, y}); ++i) {
        const Place place = plan.placeOf(plan.points, i);
        const float dx = place.x - x;
        const float dy = place.y - y;
        const float distance = dx * dx + dy * dy;
        if (distance < best) {
            best = distance;
            found = plan.soundings[i];
        }
    }
    return found;
}

std::string oneDecimal(double value) {
    return Number_Text(value, "(F15.1)");
}

// The value that the dot of a sounding is coloured by.
std::string valueText(const PlanPage &plan, int sounding) {
    const auto found = std::find(plan.soundings.begin(), plan.soundings.end(), sounding);
    const auto i = asIndex(found - plan.soundings.begin());
    if (plan.values.unit.empty() || !hasColour(plan.values.values[i])) {
        return "";
    }
    return "   " + Number_Text(plan.values.values[i], "(1P,G14.4E2)") + " " + plan.values.unit;
}

std::string pointerText(const PlanPage &plan, float x, float y) {
    const PageFrame &frame = plan.frame;
    if (!holdsPlace(frame, {x, y}) || plan.isEmpty()) {
        return "";
    }
    const std::string unit = " " + plan.survey.control.LengthUnits.str();
    if (const int sounding = soundingAt(plan, x, y); sounding > 0) {
        const SoundingRecord &record = plan.survey.sounding(sounding);
        const std::string height =
            isPresent(record.Elevation) ? "   Elevation " + oneDecimal(record.Elevation) : "";
        return soundingText(plan.survey, sounding) + valueText(plan, sounding) + "   East " +
               oneDecimal(record.East) + "   North " + oneDecimal(record.North) + height + unit;
    }
    const auto part = [](float place, float start, float end) {
        return static_cast<double>((place - start) / (end - start));
    };
    return "East " + oneDecimal(plan.east().valueAt(part(x, frame.left, frame.right))) +
           "   North " + oneDecimal(plan.north().valueAt(part(y, frame.bottom, frame.top))) + unit;
}

} // namespace

LinePage makePlanPage(const SurveyModel &survey, const LineSettings &settings,
                      std::string_view path) {
    const auto plan = std::make_shared<const PlanPage>(planOf(survey, settings.plan, path));
    return {[plan](int marked) { drawPlan(*plan, marked); },
            [plan](float x, float y) { return soundingAt(*plan, x, y); },
            [plan](float x, float y) {
                return pointerText(*plan, x, y);
            }};
}

bool editPlanLimits(const SurveyModel &survey, LineSettings &settings) {
    PlanLimits limits = settings.plan;
    const PlanPage plan = planOf(survey, limits, "");
    limits.values = plan.isColoured() ? plan.values.limits : limits.values;
    if (!plan.isEmpty()) {
        limits.map = {plan.map.east.lowest(), plan.map.east.highest(), plan.map.north.lowest(),
                      plan.map.north.highest()};
    }
    const bool confirmed = Plan_EditLimits(limits, survey.control.LengthUnits.view());
    settings.plan = confirmed ? limits : settings.plan;
    return confirmed;
}

} // namespace keldrin
