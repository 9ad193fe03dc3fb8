#pragma once

#include "page/surfaces/document_surface.h"

#include <string>

namespace keldrin {

/// Writes a page in the graphics language of pen plotters, HP-GL, with instructions that the
/// oldest of them know: no fills, no windows, no label origins.
///
/// One unit is 0.025 mm. Pen 1 is black, 2 red, 3 blue; a colour without a pen of its own takes the
/// nearest. Nothing can be blanked, so what is white is left out. Letters are the plotter's own,
/// all of one width; they are spaced so that a text is as long as on every other surface. Texts
/// are ASCII, with "?" for other characters. No line is longer than 200 bytes.
class HpglSurface : public DocumentSurface {
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
    void fill(std::span<const PagePoint> /*corners*/, PageColour /*colour*/) override {}
    [[nodiscard]] bool canFill() const override { return false; }

    [[nodiscard]] const std::string &document() const override { return document_; }

  private:
    void selectPen();
    void selectLetters(float widthCm, float heightCm, float degrees);
    [[nodiscard]] PagePoint shifted(PagePoint at, float cm, float degrees) const;
    void appendPlace(std::string &out, PagePoint point) const;

    float widthCm_ = PageWidthCm;
    float heightCm_ = PageHeightCm;
    int pen_ = 1;         ///< of what is drawn next; 0 draws nothing
    int selectedPen_ = 0; ///< by the last instruction
    float anchor_ = 0.0F; ///< of the next text
    bool naturalLetters_ = false;
    std::string size_;  ///< the last instruction of letter size
    std::string slope_; ///< and of text direction
    std::string body_;
    std::string document_;
};

} // namespace keldrin
