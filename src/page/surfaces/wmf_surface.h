#pragma once

#include "page/surfaces/document_surface.h"
#include "page/surfaces/wmf_records.h"

#include <array>
#include <string>
#include <vector>

namespace keldrin {

/// Writes a page as a placeable Windows metafile of 1000 units per inch.
///
/// The page begins with a white rectangle of its whole size, because readers that look for the
/// bounds of the ink would otherwise cut its margins off. Lines are drawn segment by segment:
/// there are readers that fill an open polyline. Texts are Windows-1252.
class WmfSurface : public DocumentSurface {
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
    void fill(std::span<const PagePoint> corners, PageColour colour) override;

    [[nodiscard]] const std::string &document() const override { return document_; }

  private:
    enum Kind : std::uint8_t { PenObject, BrushObject, FontObject, KindCount };

    /// A pen, brush or font of the file; its place in the list is its slot.
    struct Object {
        Kind kind = PenObject;
        PageColour colour = 0;
        int size = 0;  ///< width of a pen, 0 of one that draws nothing; height of a font
        int slope = 0; ///< of a font, in tenths of a degree
        bool operator==(const Object &) const = default;
    };

    void select(const Object &object);
    void create(const Object &object);
    void selectBackground(int mode);
    void selectTextColour();
    [[nodiscard]] int unitsX(float fraction) const;
    [[nodiscard]] int unitsY(float fraction) const; ///< downward from the top

    WmfPage page_;
    PageColour colour_ = 0;
    int penUnits_ = 1;
    std::vector<Object> objects_;
    std::array<int, KindCount> selected_{}; ///< slot in use of each kind, -1 none
    int background_ = 0;                    ///< mode in force
    bool textColourSet_ = false;
    PageColour textColour_ = 0;
    WmfRecords records_;
    std::string document_;
};

} // namespace keldrin
