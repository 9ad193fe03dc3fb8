#include "page/surfaces/hpgl_surface.h"

#include "base/real.h"
#include "base/utf8.h"
#include "page/surfaces/coordinate_text.h"
#include "page/text_metrics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <vector>

namespace keldrin {

namespace {

constexpr float HpglUnitsPerCm = 400.0F;
constexpr int FarthestUnit = 32767; ///< plotters count in 16 bits
constexpr std::size_t LongestLine = 190;
constexpr std::size_t LongestLabel = 150;
constexpr char EndOfText = '\x03';

enum Pen : int { NoPen = 0, BlackPen = 1, RedPen = 2, BluePen = 3 };

Pen penOfColour(PageColour colour) {
    constexpr int distinct = 64; // a channel that stands out by this much is the colour's name
    constexpr int nearlyWhite = 0xF0;
    const int red = static_cast<int>(colour >> 16U & 0xFFU);
    const int green = static_cast<int>(colour >> 8U & 0xFFU);
    const int blue = static_cast<int>(colour & 0xFFU);
    if (red >= nearlyWhite && green >= nearlyWhite && blue >= nearlyWhite) {
        return NoPen;
    }
    if (red - std::max(green, blue) >= distinct) {
        return RedPen;
    }
    return blue - std::max(red, green) >= distinct ? BluePen : BlackPen;
}

std::string unitText(float units) {
    return std::to_string(limited(nearestInt(units), -FarthestUnit, FarthestUnit));
}

std::string asciiLabel(std::string_view text) {
    std::string label;
    while (!text.empty()) {
        const char32_t character = takeCharacter(text);
        if (character >= ' ' && character != 0x7F) {
            label += character < 0x7F ? static_cast<char>(character) : '?';
        }
    }
    return label;
}

// The outline drawn smaller towards its centre, near enough for a pen to fill it.
std::vector<PagePoint> ring(std::span<const PagePoint> outline, float part) {
    PagePoint centre;
    for (const PagePoint &point : outline) {
        centre.x += point.x / static_cast<float>(outline.size());
        centre.y += point.y / static_cast<float>(outline.size());
    }
    std::vector<PagePoint> points;
    points.reserve(outline.size() + 1);
    for (const PagePoint &point : outline) {
        points.push_back(
            {centre.x + part * (point.x - centre.x), centre.y + part * (point.y - centre.y)});
    }
    points.push_back(points.front());
    return points;
}

} // namespace

void HpglSurface::begin(float widthCm, float heightCm) {
    widthCm_ = widthCm;
    heightCm_ = heightCm;
    document_.clear();
    clear();
}

void HpglSurface::clear() {
    body_.clear();
    size_.clear();
    slope_.clear();
    anchor_ = 0.0F;
    naturalLetters_ = false;
    selectedPen_ = NoPen;
}

bool HpglSurface::end() {
    const std::string right = unitText(widthCm_ * HpglUnitsPerCm);
    const std::string top = unitText(heightCm_ * HpglUnitsPerCm);
    document_ = "IN;IP0,0," + right + "," + top + ";SC0," + right + ",0," + top + ";PA;\n";
    document_ += body_ + "PU;SP0;\n";
    return true;
}

void HpglSurface::setPen(PageColour colour, float /*widthPt*/) {
    pen_ = penOfColour(colour);
}

void HpglSurface::selectPen() {
    if (pen_ != selectedPen_) {
        selectedPen_ = pen_;
        body_ += "SP" + std::to_string(pen_) + ";\n";
    }
}

void HpglSurface::appendPlace(std::string &out, PagePoint point) const {
    out += unitText(point.x * widthCm_ * HpglUnitsPerCm) + "," +
           unitText(point.y * heightCm_ * HpglUnitsPerCm);
}

void HpglSurface::polyline(std::span<const PagePoint> points) {
    if (points.empty() || pen_ == NoPen) {
        return;
    }
    selectPen();
    std::string line = "PU";
    appendPlace(line, points.front());
    line += ";PD";
    bool first = true;
    // A single point is a dot: the pen goes down where it is.
    for (const PagePoint &point : points.size() > 1 ? points.subspan(1) : points) {
        if (line.size() > LongestLine - 2 * std::string_view("-32767,").size()) {
            body_ += line + ";\n";
            line = "PD";
            first = true;
        }
        line += first ? "" : ",";
        appendPlace(line, point);
        first = false;
    }
    body_ += line + ";PU;\n";
}

void HpglSurface::polygon(std::span<const PagePoint> points, bool filled) {
    constexpr std::array<float, 3> fillingRings = {1.0F, 2.0F / 3.0F, 1.0F / 3.0F};
    if (points.empty()) {
        return;
    }
    for (const float part : std::span(fillingRings).first(filled ? fillingRings.size() : 1)) {
        polyline(ring(points, part));
    }
}

void HpglSurface::selectLetters(float widthCm, float heightCm, float degrees) {
    constexpr int sizeDecimals = 3;
    constexpr int slopeDecimals = 4;
    std::string size = "SI";
    appendCoordinate(size, widthCm, sizeDecimals);
    size += ',';
    appendCoordinate(size, heightCm, sizeDecimals);
    const float radians = degrees * std::numbers::pi_v<float> / 180.0F;
    std::string slope = "DI";
    appendCoordinate(slope, std::cos(radians), slopeDecimals);
    slope += ',';
    appendCoordinate(slope, std::sin(radians), slopeDecimals);
    if (size != size_) {
        size_ = size;
        body_ += size + ";\n";
    }
    if (slope != slope_) {
        slope_ = slope;
        body_ += slope + ";\n";
    }
}

// A place moved along a text.
PagePoint HpglSurface::shifted(PagePoint at, float cm, float degrees) const {
    const float radians = degrees * std::numbers::pi_v<float> / 180.0F;
    return {at.x + cm * std::cos(radians) / widthCm_, at.y + cm * std::sin(radians) / heightCm_};
}

void HpglSurface::text(PagePoint at, std::string_view string, float charWidth, float charHeight,
                       float degrees) {
    constexpr float cellWidth = 1.5F;   // of a plotter's letter, which is 1 wide and 1 high
    constexpr float cellHeight = 2.0F;  // with the room between lines
    constexpr float naturalCell = 0.5F; // of an em: about the width of an average letter
    const std::string label = asciiLabel(string);
    if (label.empty() || pen_ == NoPen) {
        return;
    }
    selectPen();
    const float em = EmPerCharacterWidth * charWidth * widthCm_;
    const auto letters = static_cast<float>(label.size());
    const float told = textWidthInEms(string) * em;
    const float length = naturalLetters_ ? naturalCell * em * letters : told;
    selectLetters(length / letters / cellWidth, charHeight * heightCm_ / cellHeight, degrees);
    body_ += "PU";
    appendPlace(body_, shifted(at, anchor_ * (told - length), degrees));
    anchor_ = 0.0F;
    body_ += ';';
    // The pen stays after the last letter, where the next label goes on.
    for (std::size_t i = 0; i < label.size(); i += LongestLabel) {
        body_ += "LB" + label.substr(i, LongestLabel) + EndOfText + "\n";
    }
}

} // namespace keldrin
