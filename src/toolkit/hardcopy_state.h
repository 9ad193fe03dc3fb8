#pragma once

#include "toolkit/backend.h"
#include "toolkit/surfaces/document_surface.h"
#include "toolkit/surfaces/placed_surface.h"

#include <array>
#include <memory>
#include <string>

namespace keldrin {

/// What the hardcopy calls remember between each other; only the toolkit's own files use it.
struct HardcopyState {
    static constexpr int MostOptions = 9;

    int driver = 0;                             ///< chosen; 0 none
    std::array<int, MostOptions + 1> options{}; ///< by number from 1
    PrinterPage paper;                          ///< of the printer
    std::unique_ptr<DocumentSurface> file;      ///< of a driver that writes one, till it is opened
    std::unique_ptr<Surface> device;            ///< the printer chosen, or the page of a file
    DocumentSurface *document = nullptr;        ///< the device while it is the page of a good file
    std::unique_ptr<PlacedSurface> page;        ///< what is drawn on; null when nothing is open
    std::string path;                           ///< of the plot file
    std::string fault;                          ///< why the last file failed

    [[nodiscard]] bool isOpen() const { return page != nullptr; }
};

} // namespace keldrin
