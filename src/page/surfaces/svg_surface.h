#pragma once

#include "page/surfaces/document_surface.h"

#include <string>

namespace keldrin {

/// Writes a page as an SVG document (W3C Recommendation "Scalable Vector Graphics (SVG) 1.1").
///
/// The unit of the document is 0.1 mm of the page of 24 by 18 cm; paper of another shape shows it
/// stretched. Texts carry their width, so that readers with another letter keep the layout;
/// those with natural letters are anchored instead.
class SvgSurface : public DocumentSurface {
  public:
    void begin(float widthCm, float heightCm) override;
    bool end() override;
    void clear() override;
    void setPen(PageColour colour, float widthPt) override;
    void polyline(std::span<const PagePoint> points) override;
    void polygon(std::span<const PagePoint> points, bool filled) override;
    void text(PagePoint at, std::string_view string, float charWidth, float charHeight,
              float degrees) override;
    void flush() override {}
    void textAnchor(float part) override { anchor_ = part; }
    void naturalLetters(bool on) override { naturalLetters_ = on; }
    void fill(std::span<const PagePoint> corners, PageColour colour) override;

    [[nodiscard]] const std::string &document() const override { return document_; }

  private:
    void selectEdges(bool crisp);
    void appendPoints(std::span<const PagePoint> points);

    float widthCm_ = PageWidthCm;
    float heightCm_ = PageHeightCm;
    PageColour colour_ = 0;
    float penUnits_ = 2.0F;
    float anchor_ = 0.0F; ///< of the next text
    bool naturalLetters_ = false;
    bool crisp_ = false; ///< within a group whose edges lie between pixels
    std::string body_;
    std::string document_;
};

} // namespace keldrin
