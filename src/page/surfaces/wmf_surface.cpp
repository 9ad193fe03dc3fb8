#include "page/surfaces/wmf_surface.h"

#include "base/real.h"
#include "page/page_colours.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>
#include <utility>

namespace keldrin {

namespace {

constexpr int UnitsPerInch = 1000;
constexpr float PointsPerInch = 72.0F;
constexpr int LargestPage = 32767; // units; a word holds no more
constexpr PageColour White = Colour::White;

// Letters leave what is behind them; there are readers that fill polygons half transparent unless
// the background is opaque.
constexpr int TransparentBackground = 1;
constexpr int OpaqueBackground = 2;
constexpr int AnisotropicMapMode = 8;
constexpr int BaselineLeft = 24;

int unitsOfCm(float cm) {
    return limited(
        nearestInt(cm / static_cast<float>(CmPerInch) * static_cast<float>(UnitsPerInch)), 1,
        LargestPage);
}

// The file's colours are 0x00bbggrr, in two words.
int lowWord(PageColour colour) {
    return static_cast<int>((colour & 0x00FF00U) | (colour >> 16U & 0xFFU));
}
int highWord(PageColour colour) {
    return static_cast<int>(colour & 0xFFU);
}

// A font of a character height, with its slope in tenths of a degree.
std::vector<std::uint16_t> fontWords(int height, int slope) {
    constexpr int normalWeight = 400;
    constexpr int swissVariable = 0x2200; // high byte; the low one is the quality
    constexpr std::size_t faceBytes = 32;
    // A height below zero is that of the letters without the room between lines; a width of 0
    // keeps their natural shape.
    std::vector<std::uint16_t> words;
    for (const int value : {-height, 0, slope, slope, normalWeight, 0, 0, 0, swissVariable}) {
        words.push_back(wmfWord(value));
    }
    std::string face = "Arial";
    face.resize(faceBytes, '\0');
    appendBytes(words, face);
    return words;
}

} // namespace

void WmfSurface::begin(float widthCm, float heightCm) {
    page_ = {unitsOfCm(widthCm), unitsOfCm(heightCm), UnitsPerInch};
    document_.clear();
    clear();
}

void WmfSurface::clear() {
    records_.clear();
    objects_.clear();
    selected_.fill(-1);
    textColourSet_ = false;
    background_ = 0;
    records_.add(WmfFunction::SetMapMode, {AnisotropicMapMode});
    records_.add(WmfFunction::SetWindowOrg, {0, 0});
    records_.add(WmfFunction::SetWindowExt, {page_.height, page_.width});
    records_.add(WmfFunction::SetTextAlign, {BaselineLeft});
    selectBackground(OpaqueBackground);
    select({PenObject, White, 0, 0});
    select({BrushObject, White, 0, 0});
    records_.add(WmfFunction::Rectangle, {page_.height, page_.width, 0, 0});
}

bool WmfSurface::end() {
    document_ = records_.file(page_, objects_.size());
    return true;
}

void WmfSurface::setPen(PageColour colour, float widthPt) {
    colour_ = colour;
    penUnits_ = std::max(1, nearestInt(widthPt / PointsPerInch * static_cast<float>(UnitsPerInch)));
}

int WmfSurface::unitsX(float fraction) const {
    return nearestInt(fraction * static_cast<float>(page_.width));
}

int WmfSurface::unitsY(float fraction) const {
    return nearestInt((1.0F - fraction) * static_cast<float>(page_.height));
}

void WmfSurface::create(const Object &object) {
    constexpr int solid = 0;
    constexpr int drawsNothing = 5;
    const int low = lowWord(object.colour);
    const int high = highWord(object.colour);
    switch (object.kind) {
    case PenObject:
        records_.add(WmfFunction::CreatePenIndirect,
                     {object.size > 0 ? solid : drawsNothing, object.size, object.size, low, high});
        break;
    case BrushObject:
        records_.add(WmfFunction::CreateBrushIndirect, {solid, low, high, 0});
        break;
    default:
        records_.add(WmfFunction::CreateFontIndirect, fontWords(object.size, object.slope));
    }
}

void WmfSurface::select(const Object &object) {
    auto slot =
        static_cast<int>(std::find(objects_.begin(), objects_.end(), object) - objects_.begin());
    if (slot == static_cast<int>(objects_.size())) {
        objects_.push_back(object);
        create(object);
    }
    if (selected_[object.kind] != slot) {
        selected_[object.kind] = slot;
        records_.add(WmfFunction::SelectObject, {slot});
    }
}

void WmfSurface::polyline(std::span<const PagePoint> points) {
    if (points.empty()) {
        return;
    }
    const auto place = [this](const PagePoint &point) {
        return std::pair{wmfWord(unitsY(point.y)), wmfWord(unitsX(point.x))};
    };
    select({PenObject, colour_, penUnits_, 0});
    const auto [startY, startX] = place(points.front());
    records_.add(WmfFunction::MoveTo, {startY, startX});
    for (const PagePoint &point : points.subspan(1)) {
        const auto [y, x] = place(point);
        records_.add(WmfFunction::LineTo, {y, x});
    }
}

void WmfSurface::polygon(std::span<const PagePoint> points, bool filled) {
    if (points.empty()) {
        return;
    }
    if (filled) {
        fill(points, colour_);
        return;
    }
    std::vector<PagePoint> closed(points.begin(), points.end());
    closed.push_back(points.front());
    polyline(closed);
}

void WmfSurface::fill(std::span<const PagePoint> corners, PageColour colour) {
    constexpr std::size_t mostCorners = 30000;
    if (corners.empty() || corners.size() > mostCorners) {
        return;
    }
    selectBackground(OpaqueBackground);
    select({PenObject, White, 0, 0});
    select({BrushObject, colour, 0, 0});
    std::vector<std::uint16_t> words = {static_cast<std::uint16_t>(corners.size())};
    for (const PagePoint &corner : corners) {
        words.push_back(wmfWord(unitsX(corner.x)));
        words.push_back(wmfWord(unitsY(corner.y)));
    }
    records_.add(WmfFunction::Polygon, words);
}

void WmfSurface::selectBackground(int mode) {
    if (background_ != mode) {
        background_ = mode;
        records_.add(WmfFunction::SetBkMode, {mode});
    }
}

void WmfSurface::selectTextColour() {
    if (!textColourSet_ || textColour_ != colour_) {
        textColourSet_ = true;
        textColour_ = colour_;
        records_.add(WmfFunction::SetTextColor, {lowWord(colour_), highWord(colour_)});
    }
}

void WmfSurface::text(PagePoint at, std::string_view string, float /*charWidth*/, float charHeight,
                      float degrees) {
    constexpr float tenths = 10.0F;
    constexpr std::size_t mostBytes = 32000;
    const std::string bytes = windows1252(string).substr(0, mostBytes);
    if (bytes.empty()) {
        return;
    }
    select({FontObject, 0, std::max(1, nearestInt(charHeight * static_cast<float>(page_.height))),
            nearestInt(degrees * tenths)});
    selectTextColour();
    selectBackground(TransparentBackground);
    std::vector<std::uint16_t> words = {static_cast<std::uint16_t>(bytes.size())};
    appendBytes(words, bytes);
    words.push_back(wmfWord(unitsY(at.y)));
    words.push_back(wmfWord(unitsX(at.x)));
    records_.add(WmfFunction::TextOut, words);
}

} // namespace keldrin
