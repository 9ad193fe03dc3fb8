#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace keldrin {

/// All pages are laid out in centimetres of a page of this size; windows of another shape and
/// scaled paper show it stretched, because places and sizes are fractions.
inline constexpr float PageWidthCm = 24.0F;
inline constexpr float PageHeightCm = 18.0F;
inline constexpr double PageShape =
    static_cast<double>(PageHeightCm) / static_cast<double>(PageWidthCm);
inline constexpr double CmPerInch = 2.54;

// The numbers of markers.
inline constexpr int PlusMarker = 1;
inline constexpr int DotMarker = 14;
inline constexpr int RingMarker = 15;

/// A point in fractions of the page, 0..1, y upward.
struct PagePoint {
    float x = 0.0F;
    float y = 0.0F;
};

constexpr PagePoint pagePoint(double x, double y) {
    return {static_cast<float>(x), static_cast<float>(y)};
}

/// A colour as 0x00rrggbb.
using PageColour = std::uint32_t;

/// The primitives that every drawing surface knows, and nothing else. All surfaces get the same
/// calls, already clipped and with the same text metrics, so a page is the same on each.
class Surface {
  public:
    Surface() = default;
    Surface(const Surface &) = delete;
    Surface &operator=(const Surface &) = delete;
    virtual ~Surface() = default;

    virtual void begin(float widthCm, float heightCm) = 0; ///< opens the page
    virtual bool end() = 0;                                ///< closes it; false when output failed
    virtual void clear() = 0;                              ///< background over the whole page
    virtual void setPen(PageColour colour, float widthPt) = 0;
    virtual void polyline(std::span<const PagePoint> points) = 0;
    virtual void polygon(std::span<const PagePoint> points, bool filled) = 0; ///< closed
    /// Baseline left at (x, y); character size as page fractions; degrees counter-clockwise.
    virtual void text(PagePoint at, std::string_view string, float charWidth, float charHeight,
                      float degrees) = 0;
    virtual void flush() = 0;

    /// Fills a closed area in a colour of its own, without an outline; the pen stays as it is.
    /// Areas with a common edge leave no seam. A device that cannot fill draws nothing.
    virtual void fill(std::span<const PagePoint> corners, PageColour colour) = 0;
    [[nodiscard]] virtual bool canFill() const { return true; }

    /// Which part of the next text keeps its place where the letters of a surface do not fill the
    /// width that the text was given: 0 its left end, 0.5 its middle, 1 its right end.
    virtual void textAnchor(float /*part*/) {}

    /// True: the letters of the texts that follow keep their own shape, and a text is as long as
    /// they make it. False, as at first: they are fitted into the width that the text was given.
    virtual void naturalLetters(bool /*on*/) {}

    // What the primitives mean, for surfaces that keep a list. The others draw the marker's lines
    // and polygons, which come between the two calls, like any.
    virtual void beginMarker(int /*marker*/, PagePoint /*centre*/) {}
    virtual void endMarker() {}
    virtual void pageKind(std::string_view /*kind*/) {} ///< "log", "page" or "blank"
};

} // namespace keldrin
