#pragma once

#include "page/surfaces/document_surface.h"

#include <memory>

namespace keldrin {

/// The page of a plot file that the window system draws: a picture (DriverPng) of 200 dots per
/// inch, or pages with texts that can be searched (DriverPdf), one or many. Null for other drivers.
///
/// The same pages give the same bytes; a PDF is dated by the program's own clock. There must be a
/// QGuiApplication, on any platform.
std::unique_ptr<DocumentSurface> desktopDocument(int driver);

} // namespace keldrin
