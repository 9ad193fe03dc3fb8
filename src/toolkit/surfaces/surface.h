#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace keldrin {

/// A point in fractions of the page, 0..1, y upward.
struct PagePoint {
    float x = 0.0F;
    float y = 0.0F;
};

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
};

} // namespace keldrin
