#pragma once

#include "page/surfaces/svg_surface.h"

#include <string>

namespace keldrin {

/// Stands for a PDF where there is no window system: its pages are SVG, one after the other.
class PagedDocument : public SvgSurface {
  public:
    bool nextPage() override {
        keepPage();
        clear();
        return true;
    }
    bool end() override {
        keepPage();
        return true;
    }
    [[nodiscard]] const std::string &document() const override { return pages_; }

  private:
    void keepPage() {
        SvgSurface::end();
        pages_ += SvgSurface::document();
    }

    std::string pages_;
};

/// How often a text stands in another one.
inline std::size_t countOf(const std::string &part, const std::string &text) {
    std::size_t count = 0;
    for (std::size_t i = text.find(part); i != std::string::npos; i = text.find(part, i + 1)) {
        ++count;
    }
    return count;
}

} // namespace keldrin
