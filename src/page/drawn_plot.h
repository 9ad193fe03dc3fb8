#pragma once

#include "page/surfaces/document_surface.h"

#include <memory>
#include <string>

namespace keldrin {

/// A plot file of which the page is drawn, to be encoded and written later. With many of these all
/// processors can encode pages while one thread draws them.
struct DrawnPlot {
    std::unique_ptr<Surface> device;
    DocumentSurface *document = nullptr; ///< the device when there is a file to write
    std::string path;
    std::string fault; ///< why nothing can be written; blank so far
    bool encoded = false;
};

/// Closes the open hardcopy except for its file, which is handed over. Only for one that is open.
DrawnPlot ToolkitTakeHardcopy();

/// Makes the bytes of the file, on any thread.
void encodePlot(DrawnPlot &plot);

/// Writes an encoded file; leaves ErrorOutputFile and the fault as closing its hardcopy does.
void writePlot(DrawnPlot &plot);

} // namespace keldrin
