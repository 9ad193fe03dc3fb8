#pragma once

#include "sounding/page_layout.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace keldrin {

// Where labels stand beside points of a page, so that each can be read. All in page centimetres.

/// The parts of a frame that are taken, to a tenth of a centimetre.
class PageRoom {
  public:
    explicit PageRoom(const PageFrame &frame);

    /// True for a box inside the frame that touches nothing taken.
    [[nodiscard]] bool isFree(const PageFrame &box) const;
    void take(const PageFrame &box);
    /// Takes a straight line.
    void takeLine(float x1, float y1, float x2, float y2);

  private:
    struct Cells {
        int left = 0;
        int bottom = 0;
        int right = 0;
        int top = 0;
    };
    [[nodiscard]] Cells cellsOf(const PageFrame &box) const;

    PageFrame frame_;
    int across_ = 0;
    int upward_ = 0;
    std::vector<bool> taken_;
};

/// A point with the label that it is to have; blank: none.
struct LabelledPoint {
    float x = 0.0F;
    float y = 0.0F;
    std::string text = {};
    float width = 0.0F; ///< drawn width of the text
};

/// Where the label of a point stands.
struct LabelPlace {
    std::size_t point = 0;
    float x = 0.0F; ///< left end of the baseline
    float y = 0.0F;
};

/// A free place beside a box of a label's width and height, above it first, and takes it.
std::optional<LabelPlace> placeBeside(PageRoom &room, const PageFrame &box, float width,
                                      float height);

/// Places for the labels of every n-th point, the smallest n of 1, 2 or 5 times a power of ten for
/// which nine of ten have room. Points with the same label at one
/// place count once.
std::vector<LabelPlace> placeLabels(PageRoom &room, std::span<const LabelledPoint> points,
                                    float height);

} // namespace keldrin
