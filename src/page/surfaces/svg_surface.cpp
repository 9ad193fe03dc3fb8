#include "page/surfaces/svg_surface.h"

#include "base/utf8.h"
#include "page/page_colours.h"
#include "page/surfaces/coordinate_text.h"
#include "page/text_metrics.h"

#include <cmath>

namespace keldrin {

namespace {

constexpr float SvgUnitsPerCm = 100.0F;
constexpr float SvgWidth = PageWidthCm * SvgUnitsPerCm;
constexpr float SvgHeight = PageHeightCm * SvgUnitsPerCm;
constexpr float CmPerPoint = 2.54F / 72.0F;
constexpr int SvgDecimals = 1;

void appendNumber(std::string &out, float value) {
    appendCoordinate(out, value, SvgDecimals);
}

void appendAttribute(std::string &out, std::string_view name, std::string_view value) {
    out.append(" ").append(name).append("=\"").append(value).append("\"");
}

void appendAttribute(std::string &out, std::string_view name, float value) {
    out.append(" ").append(name).append("=\"");
    appendNumber(out, value);
    out += '"';
}

std::string_view anchorName(float part) {
    if (part == 0.0F) {
        return "start";
    }
    return part == 1.0F ? "end" : "middle";
}

// XML 1.0 has no place for most control characters and for two of the last code points.
bool isXmlCharacter(char32_t character) {
    return (character >= ' ' && character != 0xFFFE && character != 0xFFFF) || character == '\t';
}

void appendEscaped(std::string &out, std::string_view text) {
    constexpr std::string_view replacement = "\xEF\xBF\xBD";
    while (!text.empty()) {
        const std::string_view before = text;
        const char32_t character = takeCharacter(text);
        if (character == ReplacementCharacter || !isXmlCharacter(character)) {
            out += replacement;
        } else if (character == '&') {
            out += "&amp;";
        } else if (character == '<') {
            out += "&lt;";
        } else if (character == '>') {
            out += "&gt;";
        } else {
            out += before.substr(0, before.size() - text.size());
        }
    }
}

} // namespace

void SvgSurface::begin(float widthCm, float heightCm) {
    widthCm_ = widthCm;
    heightCm_ = heightCm;
    document_.clear();
    clear();
}

void SvgSurface::clear() {
    body_.clear();
    crisp_ = false;
    anchor_ = 0.0F;
    naturalLetters_ = false;
}

void SvgSurface::setPen(PageColour colour, float widthPt) {
    colour_ = colour;
    penUnits_ = widthPt * CmPerPoint * SvgUnitsPerCm;
}

// Smoothed edges would show the page between areas that touch.
void SvgSurface::selectEdges(bool crisp) {
    if (crisp_ != crisp) {
        crisp_ = crisp;
        body_ += crisp ? "<g shape-rendering=\"crispEdges\">\n" : "</g>\n";
    }
}

bool SvgSurface::end() {
    selectEdges(false);
    document_ = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\" width=\"";
    appendNumber(document_, widthCm_);
    document_ += "cm\" height=\"";
    appendNumber(document_, heightCm_);
    document_ += "cm\" viewBox=\"0 0 2400 1800\" preserveAspectRatio=\"none\""
                 " font-family=\"Arial, Helvetica, 'Liberation Sans', sans-serif\""
                 " stroke-linejoin=\"round\" stroke-linecap=\"round\">\n"
                 "<rect width=\"2400\" height=\"1800\" fill=\"#ffffff\"/>\n";
    document_ += body_;
    document_ += "</svg>\n";
    return true;
}

void SvgSurface::appendPoints(std::span<const PagePoint> points) {
    body_ += " points=\"";
    for (const PagePoint &point : points) {
        body_ += &point == points.data() ? "" : " ";
        appendNumber(body_, point.x * SvgWidth);
        body_ += ',';
        appendNumber(body_, (1.0F - point.y) * SvgHeight);
    }
    body_ += '"';
}

void SvgSurface::polyline(std::span<const PagePoint> points) {
    selectEdges(false);
    body_ += "<polyline";
    appendPoints(points);
    appendAttribute(body_, "fill", "none");
    appendAttribute(body_, "stroke", colourCodeText(colour_));
    appendAttribute(body_, "stroke-width", penUnits_);
    body_ += "/>\n";
}

void SvgSurface::polygon(std::span<const PagePoint> points, bool filled) {
    selectEdges(false);
    body_ += "<polygon";
    appendPoints(points);
    appendAttribute(body_, "fill", filled ? colourCodeText(colour_) : "none");
    appendAttribute(body_, "stroke", filled ? "none" : colourCodeText(colour_));
    appendAttribute(body_, "stroke-width", penUnits_);
    body_ += "/>\n";
}

void SvgSurface::fill(std::span<const PagePoint> corners, PageColour colour) {
    selectEdges(true);
    body_ += "<polygon";
    appendPoints(corners);
    appendAttribute(body_, "fill", colourCodeText(colour));
    body_ += "/>\n";
}

void SvgSurface::text(PagePoint at, std::string_view string, float charWidth, float charHeight,
                      float degrees) {
    const float width = textWidthInEms(string) * EmPerCharacterWidth * charWidth * SvgWidth;
    selectEdges(false);
    body_ += "<text xml:space=\"preserve\" transform=\"translate(";
    appendNumber(body_, at.x * SvgWidth);
    body_ += ' ';
    appendNumber(body_, (1.0F - at.y) * SvgHeight);
    body_ += ')';
    if (degrees != 0.0F) {
        body_ += " rotate(";
        appendNumber(body_, -degrees);
        body_ += ')';
    }
    body_ += '"';
    appendAttribute(body_, "font-size", charHeight * SvgHeight);
    if (naturalLetters_) {
        appendAttribute(body_, "x", anchor_ * width);
        appendAttribute(body_, "text-anchor", anchorName(anchor_));
    } else {
        appendAttribute(body_, "textLength", width);
        appendAttribute(body_, "lengthAdjust", "spacingAndGlyphs");
    }
    anchor_ = 0.0F;
    appendAttribute(body_, "fill", colourCodeText(colour_));
    body_ += '>';
    appendEscaped(body_, string);
    body_ += "</text>\n";
}

} // namespace keldrin
