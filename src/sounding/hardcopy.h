#pragma once

#include "model/survey_model.h"
#include "sounding/plot_limits.h"

#include <string>
#include <string_view>

namespace keldrin {

// The page of a sounding on a printer or in a plot file. A page is 24 by 18 cm; on paper it is
// made smaller where it does not fit within margins of 1.27 cm, and never larger.

/// Devices, the iPlt of the calls below.
enum PlotDevice : int {
    PlotToPrinter = 1,
    PlotToMetafile = 2,
    PlotToHpgl = 3,
    PlotToPng = 4, ///< this one and PDF on the desktop only
    PlotToPdf = 5,
    PlotToSvg = 6,
};

/// The plot file of a sounding: the project's path without its extension, the ordinal in four
/// digits, and `extension` with its point. An ordinal above 9999 gives "****", or its digits
/// where the platform has no "*" in names.
std::string plotFilePath(std::string_view projectPath, int station, std::string_view extension);

/// Where a page lies on paper, in points.
struct HardcopyPlacement {
    double scale = 1.0; ///< at most 1
    int width = 0;
    int height = 0;
    int left = 0;
    int bottom = 0;
};

/// Places a page on paper of `paperWidth` by `paperHeight` points: scaled to fit within the
/// margins, at the lower or left margin, and centred in the other direction.
HardcopyPlacement placeOnPaper(double paperWidth, double paperHeight);

/// Chooses and opens a device; what is drawn from then on goes there, until
/// IGrHardcopy(HardcopyStop). A file that cannot be created is reported, and so is a device that
/// there is not; drawing then goes nowhere. path     of the plot file; a blank for the printer
/// returns  0, or 1 when nothing is to be plotted: the printer was declined, or `iPlt` is unknown
///          (reported)
int Plot_HardcopyOpen(int iPlt, const std::string &path);

/// Says in the status bar where the hardcopy that was just closed has gone, until the mouse moves
/// over the page; nothing where it has failed.
/// path  of the plot file; a blank for the printer
void reportWhereHardcopyWent(std::string_view path);

/// Draws the page of a sounding on a device, and logs what it does.
/// station     ordinal from 1
/// path        of the project, which plot files are named after
/// date, time  as Plot_AutoLimits() gives them
/// returns     as Plot_HardcopyOpen
int QCC_Plot_Hardcopy(const SurveyModel &survey, const PlotLimits &limits, int iPlt, int station,
                      std::string_view path, std::string_view date, std::string_view time);

/// CheckGraphicsError() for a plot on a device. A file that could not be made or written is
/// reported with its path, always, and does not count towards the errors that end the program.
///
/// path  of the plot file; blank for the printer
void checkHardcopy(const std::string &path, std::string_view tag);

} // namespace keldrin
