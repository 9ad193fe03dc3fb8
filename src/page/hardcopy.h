#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace keldrin {

class DocumentSurface;

// Drawing on a device in place of the root window: a printer or a plot file. A hardcopy is chosen
// (ToolkitHardcopySelect), set up (WHardcopyOptions of toolkit.h for a printer,
// ToolkitHardcopyOption), opened
// and closed (IGrHardcopy). While it is open all drawing goes to the device and the root window
// stays as it is.
//
// A file is written whole when the hardcopy is closed; until then an older file of its name stays.
// A file that cannot be created or written leaves the error state ErrorOutputFile, a device that
// is not there or a page without extent ErrorNoSuchDevice. Drawing then goes nowhere till the
// close, and nothing is left on the disk.

/// Errors that a hardcopy leaves, see error_state.h.
enum HardcopyError : int {
    ErrorOutputFile = 7, ///< a plot file cannot be created or written
    ErrorNoSuchDevice = 8,
};

/// The words for one of these errors.
std::string_view hardcopyErrorText(HardcopyError number);

/// The paper of the chosen printer, in points.
struct PrinterPage {
    double width = 0.0;
    double height = 0.0;
};

/// What a hardcopy asks of the program around it, which the toolkit installs. A function that is
/// not set is not called.
struct HardcopyHost {
    /// The page of a file of a driver that needs a window system; null: there is none.
    std::function<std::unique_ptr<DocumentSurface>(int driver)> document;
    /// A fact for the transcript of a scripted run.
    std::function<void(std::string_view kind, std::string_view text)> trace;
};

HardcopyHost &hardcopyHost();

enum HardcopyDriver : int {
    DriverHpgl = 1,
    DriverPrinter = 10,
    DriverMetafile = 11,
    DriverSvg = 12,
    DriverPng = 13, ///< this one and the next only where the backend has them
    DriverPdf = 14,
};

enum HardcopyOption : int {
    HardcopyWidth = 1, ///< of the page, in points; options 1 to 4 start as a page of 24 by 18 cm
    HardcopyHeight = 2,
    HardcopyLeft = 3,   ///< offset of the page from the left edge of the paper, in points
    HardcopyBottom = 4, ///< offset from its bottom edge, in points
    // Of drivers that these no longer are: stored, without an effect.
    HardcopyOption5 = 5,
    HardcopyOption6 = 6,
    HardcopyOption9 = 9,
};

inline constexpr int HardcopyDevice = 1; ///< what is selected

/// Chooses a driver and forgets the options of the last hardcopy. A driver that there is not, or a
/// hardcopy that is still open, leaves ErrorNoSuchDevice.
///
/// which  always HardcopyDevice, as documented
void ToolkitHardcopySelect(int which, int driver);

/// Sets an option; other numbers up to 9 than those above are taken and have no effect.
void ToolkitHardcopyOption(int number, int value);

enum PageItem : int { PaperWidth = 91, PaperHeight = 92 };
/// The paper of the chosen printer, by PageItem, in points; 0 without a printer.
double ToolkitPageInfo(int item);

inline constexpr std::string_view HardcopyStop = "S"; ///< closes the device

/// Opens the chosen device on a path (a blank one for a printer), or with HardcopyStop closes it,
/// after which no driver is chosen. Closing when none is open does nothing.
void IGrHardcopy(std::string_view pathOrCode);

/// Ends the page of the open hardcopy and begins an empty one in the same file, which only a PDF
/// has; elsewhere it leaves ErrorNoSuchDevice and the page goes on.
void ToolkitNextPage();

/// Gives the file of the open hardcopy a title, or its page a bookmark; only a PDF has these,
/// elsewhere nothing happens.
/// level  0, or 1 for one below the last bookmark of level 0
void ToolkitDocumentTitle(std::string_view text);
void ToolkitBookmark(std::string_view text, int level);

/// Closes the open hardcopy and drops what was drawn, so that no file is written.
void ToolkitDropHardcopy();

/// Why the last plot file could not be created or written, in the system's words.
std::string ToolkitHardcopyFault();

} // namespace keldrin
