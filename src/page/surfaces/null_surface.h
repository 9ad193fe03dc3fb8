#pragma once

#include "page/surfaces/surface.h"

namespace keldrin {

/// Takes a page and keeps nothing, for devices that could not be opened.
class NullSurface : public Surface {
  public:
    void begin(float /*widthCm*/, float /*heightCm*/) override {}
    bool end() override { return true; }
    void clear() override {}
    void setPen(PageColour /*colour*/, float /*widthPt*/) override {}
    void polyline(std::span<const PagePoint> /*points*/) override {}
    void polygon(std::span<const PagePoint> /*points*/, bool /*filled*/) override {}
    void text(PagePoint /*at*/, std::string_view /*string*/, float /*charWidth*/,
              float /*charHeight*/, float /*degrees*/) override {}
    void flush() override {}
    void fill(std::span<const PagePoint> /*corners*/, PageColour /*colour*/) override {}
};

} // namespace keldrin
