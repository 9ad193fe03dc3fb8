#pragma once

#include "page/surfaces/surface.h"

namespace keldrin {

/// Where a page lies on paper; all in centimetres, from the lower left corner of the paper.
struct PagePlacement {
    float left = 0.0F;
    float bottom = 0.0F;
    float width = PageWidthCm;
    float height = PageHeightCm;
};

/// A page on a part of another surface's paper.
class PlacedSurface : public Surface {
  public:
    /// The paper must be open and must outlive the page.
    PlacedSurface(Surface &paper, float paperWidthCm, float paperHeightCm,
                  const PagePlacement &placement);

    void begin(float /*widthCm*/, float /*heightCm*/) override {}
    bool end() override { return paper_.end(); }
    void clear() override { paper_.clear(); }
    void setPen(PageColour colour, float widthPt) override;
    void polyline(std::span<const PagePoint> points) override;
    void polygon(std::span<const PagePoint> points, bool filled) override;
    void text(PagePoint at, std::string_view string, float charWidth, float charHeight,
              float degrees) override;
    void flush() override { paper_.flush(); }
    void fill(std::span<const PagePoint> corners, PageColour colour) override;
    [[nodiscard]] bool canFill() const override { return paper_.canFill(); }
    void textAnchor(float part) override { paper_.textAnchor(part); }
    void naturalLetters(bool on) override { paper_.naturalLetters(on); }
    void beginMarker(int marker, PagePoint centre) override;
    void endMarker() override { paper_.endMarker(); }
    void pageKind(std::string_view kind) override { paper_.pageKind(kind); }

  private:
    [[nodiscard]] PagePoint onPaper(PagePoint point) const;

    Surface &paper_;
    PagePoint offset_; ///< all in fractions of the paper
    PagePoint scale_;
    float penScale_ = 1.0F;
};

} // namespace keldrin
