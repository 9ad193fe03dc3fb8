#pragma once

#include "page/surfaces/record_surface.h"

#include <array>
#include <cstddef>
#include <string>

namespace keldrin {

/// How much ink lies on each square centimetre of a page of 24 by 18 cm: 0 blank, 1 black all over.
/// Coarse on purpose, so that readers of plot files may differ in letters and in edges of lines.
struct InkMap {
    static constexpr std::size_t Across = 24;
    static constexpr std::size_t Down = 18;

    std::array<double, Across * Down> ink{};
    double red = 0.0; ///< sum over the page of ink that is red
    double blue = 0.0;

    double &at(std::size_t column, std::size_t row) { return ink[row * Across + column]; }
    [[nodiscard]] double at(std::size_t column, std::size_t row) const {
        return ink[row * Across + column];
    }
    [[nodiscard]] double total() const;
};

/// A picture of the page, as a binary PPM or PGM file holds it.
class Picture {
  public:
    static constexpr std::size_t PixelsPerCm = 40;

    Picture() : width_(InkMap::Across * PixelsPerCm), height_(InkMap::Down * PixelsPerCm) {
        bytes_.assign(width_ * height_ * channels_, '\xFF');
    }

    /// Reads a file's content; false when it is no picture.
    bool read(const std::string &content);

    [[nodiscard]] InkMap inkMap() const;

    // Painting, in page centimetres from the lower left corner.

    void dot(double x, double y, PageColour colour, double darkness = 1.0);
    void stroke(const PagePoint &from, const PagePoint &to, PageColour colour);
    void box(double left, double bottom, double right, double top, PageColour colour,
             double darkness);

  private:
    [[nodiscard]] double channel(std::size_t x, std::size_t y, std::size_t i) const {
        return static_cast<unsigned char>(bytes_[(y * width_ + x) * channels_ + i]) / 255.0;
    }

    std::size_t width_;
    std::size_t height_;
    std::size_t channels_ = 3;
    std::string bytes_;
};

/// Paints what was recorded: letters as grey boxes, as dark as letters are on the average.
Picture pictureOf(const RecordSurface &page);

/// Of all cells; 1 when one map is the other times a factor.
double correlation(const InkMap &a, const InkMap &b);

/// Cells with ink in one map and none in or beside them in the other.
std::string inkWithoutCounterpart(const InkMap &a, const InkMap &b);

} // namespace keldrin
