#include "toolkit/backend.h"

#include "page/surfaces/document_surface.h"

namespace keldrin {

std::unique_ptr<DocumentSurface> Backend::document(int /*driver*/) {
    return nullptr;
}

} // namespace keldrin
