#pragma once

#include "page/surfaces/surface.h"

#include <cstdint>
#include <string>
#include <vector>

namespace keldrin {

/// One thing on a recorded page; a marker is one thing, whatever it is drawn of.
struct RecordedItem {
    enum class Kind : std::uint8_t { Text, Line, Polygon, Marker, Area };

    Kind kind = Kind::Line;
    PageColour colour = 0;
    std::vector<PagePoint> points; ///< page cm; of a text its baseline left, of a marker its centre
    bool filled = false;           ///< of a polygon
    int marker = 0;                ///< PlusMarker, DotMarker or RingMarker
    std::string text;
    float characterWidth = 0.0F;  ///< cm
    float characterHeight = 0.0F; ///< cm
    float degrees = 0.0F;
};

/// Keeps what is drawn as a list, so that scripts and tests can read a page.
class RecordSurface : public Surface {
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
    void beginMarker(int marker, PagePoint centre) override;
    void endMarker() override;
    void pageKind(std::string_view kind) override;

    [[nodiscard]] const std::vector<RecordedItem> &items() const { return items_; }

    /// What the page is: "log", "page" or "blank", which a cleared page is until it is given.
    [[nodiscard]] const std::string &kind() const { return kind_; }

    /// Grows with everything that is drawn and with every clearing of the page.
    [[nodiscard]] std::uint64_t changes() const { return changes_; }

  private:
    void add(RecordedItem::Kind kind, std::span<const PagePoint> points);

    float widthCm_ = PageWidthCm;
    float heightCm_ = PageHeightCm;
    PageColour colour_ = 0;
    bool inMarker_ = false;
    std::uint64_t changes_ = 0;
    std::string kind_ = "blank";
    std::vector<RecordedItem> items_;
};

} // namespace keldrin
