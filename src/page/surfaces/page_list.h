#pragma once

#include "page/surfaces/surface.h"

#include <cstdint>
#include <string>
#include <vector>

namespace keldrin {

/// Keeps every call of a page, so that it can be drawn again without the program's logic: by a
/// window that repaints itself, or on a device that is opened later.
///
/// Clearing the page forgets what was drawn before, so a list is as long as its page.
class PageList : public Surface {
  public:
    void begin(float widthCm, float heightCm) override;
    bool end() override { return true; }
    void clear() override;
    void setPen(PageColour colour, float widthPt) override;
    void polyline(std::span<const PagePoint> points) override;
    void polygon(std::span<const PagePoint> points, bool filled) override;
    void text(PagePoint at, std::string_view string, float charWidth, float charHeight,
              float degrees) override;
    void flush() override {}
    void fill(std::span<const PagePoint> corners, PageColour colour) override;
    void textAnchor(float part) override { anchor_ = part; }
    void naturalLetters(bool on) override { naturalLetters_ = on; }
    void beginMarker(int marker, PagePoint centre) override;
    void endMarker() override;
    void pageKind(std::string_view kind) override;

    /// Draws the list: begins the page, then clears it and makes all calls again. The page is left
    /// open.
    void replay(Surface &surface) const;

    [[nodiscard]] bool isEmpty() const { return calls_.empty(); }

    /// Grows with every call, so that a window knows whether it shows the list as it is.
    [[nodiscard]] std::uint64_t changes() const { return changes_; }

  private:
    enum class Kind : std::uint8_t { Pen, Polyline, Polygon, Fill, Text, BeginMarker, EndMarker };

    struct Call {
        Kind kind = Kind::Pen;
        bool filled = false;
        bool naturalLetters = false;
        int marker = 0;
        PageColour colour = 0;
        float width = 0.0F;  ///< of the pen in points, of a character as a fraction
        float height = 0.0F; ///< of a character
        float degrees = 0.0F;
        float anchor = 0.0F;
        std::uint32_t first = 0; ///< of its points in points_
        std::uint32_t count = 0;
        std::string text;
    };

    Call &add(Kind kind, std::span<const PagePoint> points = {});
    void make(const Call &call, Surface &surface) const;

    float widthCm_ = PageWidthCm;
    float heightCm_ = PageHeightCm;
    PageColour colour_ = 0; ///< of the pen that was set last
    float penPt_ = -1.0F;   ///< below 0: none was set on this page
    float anchor_ = 0.0F;   ///< of the next text
    bool naturalLetters_ = false;
    std::uint64_t changes_ = 0;
    std::string kind_;
    std::vector<Call> calls_;
    std::vector<PagePoint> points_; ///< of all calls
};

} // namespace keldrin
