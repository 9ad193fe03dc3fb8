#pragma once

#include "page/surfaces/surface.h"

#include <string>

namespace keldrin {

/// A surface whose page becomes the content of a file.
class DocumentSurface : public Surface {
  public:
    /// All bytes of the file; complete once the page has ended.
    [[nodiscard]] virtual const std::string &document() const = 0;

    /// Ends the page and opens another one in the same file; false, with nothing done, where a
    /// file holds but one.
    virtual bool nextPage() { return false; }
};

} // namespace keldrin
