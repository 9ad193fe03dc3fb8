#pragma once

#include "page/surfaces/surface.h"
#include "toolkit/backend.h"

#include <memory>

class QPrinter;
class QWidget;

namespace keldrin {

/// Asks the user for a printer, or a PDF file to print into, by the system's dialog.
/// page     the paper, whole, in points
/// returns  the paper to draw on, which is printed at its end; null when the user declined
std::unique_ptr<Surface> choosePrinter(QWidget *parent, PrinterPage &page);

/// The whole paper of a printer, as choosePrinter() gives it.
std::unique_ptr<Surface> printerSurface(std::unique_ptr<QPrinter> printer, PrinterPage &page);

} // namespace keldrin
