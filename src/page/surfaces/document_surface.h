#pragma once

#include "page/surfaces/surface.h"

#include <string>
#include <string_view>

namespace keldrin {

/// A surface whose page becomes the content of a file.
class DocumentSurface : public Surface {
  public:
    /// All bytes of the file; complete once the page has ended.
    [[nodiscard]] virtual const std::string &document() const = 0;

    /// What the file is called, and an entry of its table of contents that leads to this page, for
    /// files that have these. Level 0 stands outermost, level 1 below the last one of level 0.
    virtual void title(std::string_view /*text*/) {}
    virtual void bookmark(std::string_view /*text*/, int /*level*/) {}

    /// Ends the page and opens another one in the same file; false, with nothing done, where a
    /// file holds but one.
    virtual bool nextPage() { return false; }
};

} // namespace keldrin
