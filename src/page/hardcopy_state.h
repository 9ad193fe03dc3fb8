#pragma once

#include "page/hardcopy.h"
#include "page/surfaces/document_surface.h"
#include "page/surfaces/placed_surface.h"

#include <array>
#include <memory>
#include <string>

namespace keldrin {

/// What the hardcopy calls remember between each other. One per process, which the
/// toolkit resets at its start and end; only page and toolkit use it.
struct HardcopyState {
    static constexpr int MostOptions = 9;

    int driver = 0;                             ///< chosen; 0 none
    std::array<int, MostOptions + 1> options{}; ///< by number from 1
    PrinterPage paper;                          ///< of the printer
    std::unique_ptr<DocumentSurface> file;      ///< of a driver that writes one, till it is opened
    std::unique_ptr<Surface> device;            ///< the printer chosen, or the page of a file
    DocumentSurface *document = nullptr;        ///< the device while it is the page of a good file
    std::unique_ptr<PlacedSurface> page;        ///< what is drawn on; null when nothing is open
    Surface *before = nullptr;                  ///< drawn on before the page was opened
    std::string path;                           ///< of the plot file
    std::string fault;                          ///< why the last file failed

    [[nodiscard]] bool isOpen() const { return page != nullptr; }
};

HardcopyState &hardcopyState();

} // namespace keldrin
