#include "page/plot.h"

#include "base/ascii.h"
#include "page/drawing_state.h"
#include "page/page_colours.h"
#include "page/plot_state.h"
#include "page/plot_ticks.h"
#include "page/text_metrics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace keldrin {

namespace {

// Places on the page in this file are page centimetres.
constexpr auto PageWidth = static_cast<double>(PageWidthCm);
constexpr auto PageHeight = static_cast<double>(PageHeightCm);
constexpr auto CapHeight = static_cast<double>(CapitalHeight);
constexpr auto Descent = static_cast<double>(DescenderDepth);

constexpr double SmallTickLength = 0.6; // of the others
constexpr double GapBelowAxis = 0.6;    // of the character height, from axis to numbers
constexpr double GapBesideAxis = 0.5;   // of the character width
constexpr double GapBetween = 0.5;      // of a character, between neighbouring numbers
constexpr double GapOfRaised = 0.2;     // more of it where exponents reach upward
constexpr double ExponentSize = 0.7;    // of the other digits
constexpr double ExponentRise = 0.4;    // of the character height

constexpr float LeftEnd = 0.0F; // what keeps its place of a text
constexpr float Middle = 0.5F;
constexpr float RightEnd = 1.0F;

enum class Side { Bottom, Top, Left, Right };

bool isAcross(Side side) {
    return side == Side::Bottom || side == Side::Top;
}

struct Letters {
    double width = 0.0;
    double height = 0.0;
};

Letters lettersNow() {
    return {static_cast<double>(drawingState().characterWidth) * PageWidth,
            static_cast<double>(drawingState().characterHeight) * PageHeight};
}

double widthOf(std::string_view text, const Letters &letters) {
    return static_cast<double>(textWidthInEms(text) * EmPerCharacterWidth) * letters.width;
}

void drawText(double xCm, double yCm, std::string_view text, float degrees, float anchor) {
    drawTextAt(xCm / PageWidth, yCm / PageHeight, text, degrees, anchor);
}

void drawSegment(double x1, double y1, double x2, double y2) {
    const auto at = [](double x, double y) {
        return PagePoint{static_cast<float>(x / PageWidth), static_cast<float>(y / PageHeight)};
    };
    const std::array<PagePoint, 2> ends = {at(x1, y1), at(x2, y2)};
    if (Surface *surface = surfaceWithPen(); surface != nullptr) {
        surface->polyline(ends);
    }
}

ClipRectangle frameCm() {
    const ClipRectangle frame = plotFrameRectangle();
    return {frame.left * PageWidth, frame.bottom * PageHeight, frame.right * PageWidth,
            frame.top * PageHeight};
}

// `value` held between two bounds, the lower one first where they cross.
double heldBetween(double value, double low, double high) {
    return std::max(std::min(value, high), low);
}

const PlotScale &scaleOf(Side side) {
    return isAcross(side) ? plotState().x : plotState().y;
}

// Where along its axis a value stands; NaN outside the frame.
double placeAlong(Side side, const ClipRectangle &frame, double value) {
    constexpr double margin = 1.0e-4; // of the axis, for limits of 32-bit numbers
    const double part = scaleOf(side).fractionOf(value);
    if (!(part >= -margin) || !(part <= 1.0 + margin)) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    const double held = heldBetween(part, 0.0, 1.0);
    return isAcross(side) ? frame.left + held * (frame.right - frame.left)
                          : frame.bottom + held * (frame.top - frame.bottom);
}

// A label with a raised exponent in parts, without its "^"; elsewhere the whole of it is the base.
struct LabelParts {
    std::string_view base;
    std::string_view exponent;
};

LabelParts partsOf(std::string_view label) {
    const std::size_t mark = plotState().raisedExponents ? label.find('^') : std::string_view::npos;
    if (mark == std::string_view::npos) {
        return {label, {}};
    }
    return {label.substr(0, mark), label.substr(mark + 1)};
}

double widthOfLabel(std::string_view label, const Letters &letters) {
    const LabelParts parts = partsOf(label);
    return widthOf(parts.base, letters) + ExponentSize * widthOf(parts.exponent, letters);
}

double gapBelowAxis() {
    return GapBelowAxis + (plotState().raisedExponents ? GapOfRaised : 0.0);
}

// One number of an axis: its text and the stretch it covers along the axis.
struct AxisNumber {
    std::int64_t ordinal = 0;
    std::string text;
    double from = 0.0;
    double to = 0.0;
    double width = 0.0;
};

AxisNumber numberAt(Side side, double place, const PlotTick &tick, const Letters &letters) {
    AxisNumber number{tick.ordinal, tick.label, 0.0, 0.0, widthOfLabel(tick.label, letters)};
    const bool across = isAcross(side);
    const double extent = across ? number.width : CapHeight * letters.height;
    const double most = (across ? PageWidth : PageHeight) - extent;
    number.from = heldBetween(place - extent / 2.0, 0.0, most);
    number.to = number.from + extent;
    return number;
}

bool anyTouch(const std::vector<AxisNumber> &numbers, double gap) {
    for (std::size_t i = 1; i < numbers.size(); ++i) {
        if (numbers[i].from < numbers[i - 1].to + gap) {
            return true;
        }
    }
    return false;
}

// Leaves out every other number until none touches its neighbour.
void thinOut(std::vector<AxisNumber> &numbers, double gap) {
    std::sort(numbers.begin(), numbers.end(),
              [](const AxisNumber &a, const AxisNumber &b) { return a.from < b.from; });
    constexpr std::int64_t largestStride = std::int64_t{1} << 40;
    for (std::int64_t stride = 2; anyTouch(numbers, gap) && stride < largestStride; stride *= 2) {
        std::erase_if(numbers, [stride](const AxisNumber &n) { return n.ordinal % stride != 0; });
    }
}

// The ordinals are counted from the labelled tick at 0, if there is one.
std::vector<PlotTick> ticksByHand() {
    const PlotState &plot = plotState();
    std::vector<PlotTick> ticks;
    std::int64_t ordinal = 0;
    std::int64_t ordinalOfZero = 0;
    for (std::size_t i = 0; i < plot.tickPositions.size(); ++i) {
        PlotTick tick{plot.tickPositions[i], false, ordinal, {}};
        if (i < plot.tickLabels.size()) {
            tick.label = trimBlanks(plot.tickLabels[i]);
        }
        if (!tick.label.empty()) {
            ordinalOfZero = tick.value == 0.0 ? ordinal : ordinalOfZero;
            ++ordinal;
        }
        ticks.push_back(std::move(tick));
    }
    for (PlotTick &tick : ticks) {
        tick.ordinal -= ordinalOfZero;
    }
    return ticks;
}

// The power of ten that a value is; nothing for other values.
std::optional<int> powerOfTen(double value) {
    const double power = std::log10(value);
    const double whole = std::round(power);
    constexpr double slack = 1.0e-9;
    return std::fabs(power - whole) < slack ? std::optional(static_cast<int>(whole)) : std::nullopt;
}

// Where all numbers are powers of ten; among others, plain numbers are read more easily.
void labelPowers(std::vector<PlotTick> &ticks) {
    const bool others = std::any_of(ticks.begin(), ticks.end(), [](const PlotTick &tick) {
        return !tick.label.empty() && !powerOfTen(tick.value);
    });
    for (PlotTick &tick : ticks) {
        if (!others && !tick.label.empty()) {
            tick.label = powerOfTenText(*powerOfTen(tick.value));
        }
    }
}

std::vector<PlotTick> ticksBetween(Side side, double min, double max) {
    if (plotState().ownTicks) {
        return ticksByHand();
    }
    std::vector<PlotTick> ticks = automaticTicks({min, max, scaleOf(side).logarithmic});
    if (plotState().raisedExponents && scaleOf(side).logarithmic) {
        labelPowers(ticks);
    }
    return ticks;
}

void drawTick(Side side, const ClipRectangle &frame, double place, double length) {
    switch (side) {
    case Side::Bottom:
        drawSegment(place, frame.bottom, place, frame.bottom + length);
        break;
    case Side::Top:
        drawSegment(place, frame.top, place, frame.top - length);
        break;
    case Side::Left:
        drawSegment(frame.left, place, frame.left + length, place);
        break;
    case Side::Right:
        drawSegment(frame.right, place, frame.right - length, place);
        break;
    }
}

// A smaller text size for as long as it lives.
class ReducedText {
  public:
    explicit ReducedText(float part) {
        drawingState().characterWidth *= part;
        drawingState().characterHeight *= part;
    }
    ~ReducedText() {
        drawingState().characterWidth = width_;
        drawingState().characterHeight = height_;
    }
    ReducedText(const ReducedText &) = delete;
    ReducedText &operator=(const ReducedText &) = delete;

  private:
    float width_ = drawingState().characterWidth;
    float height_ = drawingState().characterHeight;
};

// A level label at its left end; what keeps its place of it is given as for texts.
void drawLabel(double x, double y, std::string_view label, const Letters &letters, float anchor) {
    const LabelParts parts = partsOf(label);
    if (parts.exponent.empty()) {
        drawText(x, y, parts.base, 0.0F, anchor);
        return;
    }
    drawText(x, y, parts.base, 0.0F, RightEnd);
    const ReducedText reduced(static_cast<float>(ExponentSize));
    drawText(x + widthOf(parts.base, letters), y + ExponentRise * letters.height, parts.exponent,
             0.0F, LeftEnd);
}

void drawNumber(Side side, const ClipRectangle &frame, const AxisNumber &number,
                const Letters &letters) {
    const double beside = GapBesideAxis * letters.width;
    switch (side) {
    case Side::Bottom:
        drawLabel(number.from, frame.bottom - (gapBelowAxis() + CapHeight) * letters.height,
                  number.text, letters, Middle);
        break;
    case Side::Top:
        drawLabel(number.from, frame.top + GapBelowAxis * letters.height, number.text, letters,
                  Middle);
        break;
    case Side::Left:
        drawLabel(std::max(frame.left - beside - number.width, 0.0), number.from, number.text,
                  letters, RightEnd);
        break;
    case Side::Right:
        drawLabel(std::min(frame.right + beside, PageWidth - number.width), number.from,
                  number.text, letters, LeftEnd);
        break;
    }
}

// Remembers how far the numbers reach, for the label outside them.
void keepRoom(Side side, const std::vector<AxisNumber> &numbers, const Letters &letters) {
    NumberRoom &room = plotState().numberRoom;
    if (side == Side::Top) {
        return; // no label stands outside them
    }
    if (side == Side::Bottom) {
        const double reach = (gapBelowAxis() + CapHeight) * letters.height;
        room.below = std::max(room.below, numbers.empty() ? 0.0 : reach);
        return;
    }
    double &beside = side == Side::Left ? room.left : room.right;
    for (const AxisNumber &number : numbers) {
        beside = std::max(beside, GapBesideAxis * letters.width + number.width);
    }
}

// Part of the text size at which the numbers beside the frame stay within their room.
float partWithinReach(Side side, const std::vector<PlotTick> &ticks, const Letters &letters) {
    const auto most = static_cast<double>(plotState().numberReach);
    double reach = 0.0;
    for (const PlotTick &tick : ticks) {
        reach = std::max(reach, GapBesideAxis * letters.width + widthOfLabel(tick.label, letters));
    }
    const bool tooWide = !isAcross(side) && most > 0.0 && reach > most;
    return tooWide ? static_cast<float>(most / reach) : 1.0F;
}

void drawAxis(Side side) {
    if (!plotIsUsable()) {
        return;
    }
    const ClipRectangle frame = frameCm();
    const double length = static_cast<double>(plotState().tickLength) * lettersNow().height;
    const std::vector<PlotTick> ticks = ticksBetween(side, scaleOf(side).min, scaleOf(side).max);
    const ReducedText reduced(partWithinReach(side, ticks, lettersNow()));
    const Letters letters = lettersNow();
    std::vector<AxisNumber> numbers;
    for (const PlotTick &tick : ticks) {
        const double place = placeAlong(side, frame, tick.value);
        if (std::isnan(place)) {
            continue;
        }
        drawTick(side, frame, place, tick.small ? length * SmallTickLength : length);
        if (!tick.label.empty()) {
            numbers.push_back(numberAt(side, place, tick, letters));
        }
    }
    thinOut(numbers, GapBetween * (isAcross(side) ? letters.width : letters.height));
    for (const AxisNumber &number : numbers) {
        drawNumber(side, frame, number, letters);
    }
    keepRoom(side, numbers, letters);
}

// Small grey crosses where the ticks of both axes meet: enough to read coordinates, too little to
// hide data.
void drawGridMarks(const ClipRectangle &frame) {
    constexpr double half = 0.1;
    DrawingState &drawing = drawingState();
    const PageColour colour = drawing.colour;
    drawing.colour = Colour::Grey;
    for (const PlotTick &across : automaticTicks(plotState().x)) {
        const double x = placeAlong(Side::Bottom, frame, across.value);
        for (const PlotTick &upward : automaticTicks(plotState().y)) {
            const double y = placeAlong(Side::Left, frame, upward.value);
            const ClipRectangle room = {frame.left + half, frame.bottom + half, frame.right - half,
                                        frame.top - half};
            if (room.holds(x, y) && !across.small && !upward.small) {
                drawSegment(x - half, y, x + half, y);
                drawSegment(x, y - half, x, y + half);
            }
        }
    }
    drawing.colour = colour;
}

// Distance from the axis to the near edge of its label.
double labelDistance(float offset, double room, const Letters &letters) {
    return std::max(static_cast<double>(offset), room + letters.width / 2.0);
}

// A rotated label whose baseline stands at `x`.
void drawUprightLabel(double x, std::string_view text, const Letters &letters) {
    const ClipRectangle frame = frameCm();
    const double width = widthOf(text, letters);
    const double middle = (frame.bottom + frame.top) / 2.0;
    const double y = heldBetween(middle - width / 2.0, 0.0, PageHeight - width);
    const double held =
        heldBetween(x, CapHeight * letters.height, PageWidth - Descent * letters.height);
    drawText(held, y, text, 90.0F, Middle);
}

} // namespace

void PlotFrame() {
    if (!plotIsUsable()) {
        return;
    }
    if (plotState().kind == 'G') {
        drawGridMarks(frameCm());
    }
    const ClipRectangle frame = plotFrameRectangle();
    const auto at = [](double x, double y) {
        return PagePoint{static_cast<float>(x), static_cast<float>(y)};
    };
    const std::array<PagePoint, 4> corners = {
        at(frame.left, frame.bottom), at(frame.right, frame.bottom), at(frame.right, frame.top),
        at(frame.left, frame.top)};
    if (Surface *surface = surfaceWithPen(); surface != nullptr) {
        surface->polygon(corners, false);
    }
}

void PlotXAxisTop() {
    drawAxis(Side::Top);
}

void PlotXAxis() {
    drawAxis(Side::Bottom);
}

void PlotYAxis() {
    drawAxis(Side::Left);
}

void PlotYAxisRight() {
    drawAxis(Side::Right);
}

void PlotTickLength(float value) {
    plotState().tickLength = std::isfinite(value) ? value : 0.0F;
}

void PlotNumberReach(float value) {
    plotState().numberReach = std::isfinite(value) ? value : 0.0F;
}

void PlotTickPositions(const float *values, int count) {
    PlotState &plot = plotState();
    plot.tickLabels.clear();
    plot.ownTicks = count >= 0;
    plot.tickPositions.assign(values, values + std::max(count, 0));
}

void PlotRaisedExponents(bool on) {
    plotState().raisedExponents = on;
}

void PlotTickLabels(std::span<const std::string> labels) {
    plotState().tickLabels.assign(labels.begin(), labels.end());
}

void PlotXLabelOffset(float value) {
    plotState().xLabelOffset = std::isfinite(value) ? value : 0.0F;
}

void PlotYLabelOffset(float value) {
    plotState().yLabelOffset = std::isfinite(value) ? value : 0.0F;
}

void PlotXLabel(std::string_view text) {
    const Letters letters = lettersNow();
    const ClipRectangle frame = frameCm();
    const PlotState &plot = plotState();
    const double width = widthOf(text, letters);
    const double distance = labelDistance(plot.xLabelOffset, plot.numberRoom.below, letters);
    const double x = heldBetween((frame.left + frame.right - width) / 2.0, 0.0, PageWidth - width);
    const double y =
        std::max(frame.bottom - distance - CapHeight * letters.height, Descent * letters.height);
    drawText(x, y, text, 0.0F, Middle);
}

void PlotYLabel(std::string_view text) {
    const Letters letters = lettersNow();
    const PlotState &plot = plotState();
    const double distance = labelDistance(plot.yLabelOffset, plot.numberRoom.left, letters);
    drawUprightLabel(frameCm().left - distance - Descent * letters.height, text, letters);
}

void PlotYLabelRight(std::string_view text) {
    const Letters letters = lettersNow();
    const PlotState &plot = plotState();
    const double distance = labelDistance(plot.yLabelOffset, plot.numberRoom.right, letters);
    drawUprightLabel(frameCm().right + distance + CapHeight * letters.height, text, letters);
}

} // namespace keldrin
