#include "sounding/hardcopy.h"

#include "base/ascii.h"
#include "base/number_text.h"
#include "base/paths.h"
#include "base/real.h"
#include "messages/message_log.h"
#include "page/hardcopy.h"
#include "page/surfaces/surface.h"
#include "screen/graphics_errors.h"
#include "sounding/sounding_plot.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <array>

namespace keldrin {

namespace {

constexpr auto PageWidth = static_cast<double>(PageWidthCm);
constexpr auto PageHeight = static_cast<double>(PageHeightCm);
constexpr double Margin = 1.27;
constexpr double PointsPerCm = 28.34646;
constexpr double PointsPerInch = 72.0;
constexpr int MarginPoints = 28;

struct FileDevice {
    int iPlt;
    int driver;
    std::string_view extension;
};

constexpr std::array FileDevices = {
    FileDevice{PlotToMetafile, DriverMetafile, ".wmf"}, FileDevice{PlotToHpgl, DriverHpgl, ".hpg"},
    FileDevice{PlotToPng, DriverPng, ".png"}, FileDevice{PlotToPdf, DriverPdf, ".pdf"},
    FileDevice{PlotToSvg, DriverSvg, ".svg"}};

const FileDevice *findFileDevice(int iPlt) {
    const auto *found = std::find_if(FileDevices.begin(), FileDevices.end(),
                                     [=](const FileDevice &d) { return d.iPlt == iPlt; });
    return found == FileDevices.end() ? nullptr : found;
}

std::string oneDecimal(double value) {
    return std::string(trimBlanks(formatReal("(F16.1)", value)));
}

std::string sizeText(double first, double second) {
    return oneDecimal(first) + " by " + oneDecimal(second);
}

int pointsOf(double cm) {
    return nearestInt(cm * PointsPerCm);
}

double cmOfPoints(double points) {
    return points * CmPerInch / PointsPerInch;
}

void selectDriver(int driver) {
    ToolkitHardcopySelect(HardcopyDevice, driver);
    ToolkitHardcopyOption(HardcopyOption5, 1);
}

HardcopyPlacement openFileDriver(const FileDevice &device, const std::string &path) {
    ReportInfoLine("Saving " + sizeText(PageHeight, PageWidth) + " cm plot in file " +
                   std::string(fileNameOf(path)));
    ReportInfoLine("This may take awhile.");
    selectDriver(device.driver);
    return {1.0, pointsOf(PageWidth), pointsOf(PageHeight), 0, 0};
}

// False when the user declined.
bool choosePrinter(HardcopyPlacement &placement) {
    ReportInfoLine("Writing " + sizeText(PageHeight, PageWidth) + " cm plot to printer.");
    selectDriver(DriverPrinter);
    WHardcopyOptions(PrinterDialog);
    if (ToolkitDialogInfo(CommonDialogOk) == 0) {
        return false;
    }
    const double width = cmOfPoints(ToolkitPageInfo(PaperWidth));
    const double height = cmOfPoints(ToolkitPageInfo(PaperHeight));
    placement = placeOnPaper(ToolkitPageInfo(PaperWidth), ToolkitPageInfo(PaperHeight));
    ReportInfoLine("Using " + sizeText(height, width) +
                   " cm paper = " + sizeText(height / CmPerInch, width / CmPerInch) + " inches.");
    if (placement.scale < 1.0) {
        ReportInfoLine("Scaling plot by " + oneDecimal(placement.scale * 100.0) +
                       "% to fit on paper (with 1.27 cm margins).");
    }
    return true;
}

void setOptions(const HardcopyPlacement &placement) {
    ToolkitHardcopyOption(HardcopyWidth, placement.width);
    ToolkitHardcopyOption(HardcopyHeight, placement.height);
    ToolkitHardcopyOption(HardcopyLeft, placement.left);
    ToolkitHardcopyOption(HardcopyBottom, placement.bottom);
    ToolkitHardcopyOption(HardcopyOption6, 0);
    ToolkitHardcopyOption(HardcopyOption9, 8);
}

} // namespace

std::string plotFilePath(std::string_view projectPath, int station, std::string_view extension) {
    constexpr std::size_t digits = 4;
    std::string ordinal = std::to_string(station);
    if (ordinal.size() <= digits) {
        ordinal.insert(0, digits - ordinal.size(), '0');
    } else {
#ifndef _WIN32
        ordinal.assign(digits, '*'); // what a field of four digits shows of a longer number
#endif
    }
    return std::string(withoutExtension(projectPath)) + ordinal + std::string(extension);
}

HardcopyPlacement placeOnPaper(double paperWidth, double paperHeight) {
    const double width = cmOfPoints(paperWidth) - 2.0 * Margin;
    const double height = cmOfPoints(paperHeight) - 2.0 * Margin;
    HardcopyPlacement place;
    place.scale = std::min({1.0, width / PageWidth, height / PageHeight});
    place.width = pointsOf(place.scale * PageWidth);
    place.height = pointsOf(place.scale * PageHeight);
    if (height / width <= PageHeight / PageWidth) {
        place.bottom = MarginPoints;
        place.left = pointsOf((width - place.scale * PageWidth) / 2.0 + Margin);
    } else {
        place.left = MarginPoints;
        place.bottom = pointsOf((height - place.scale * PageHeight) / 2.0 + Margin);
    }
    return place;
}

int Plot_HardcopyOpen(int iPlt, const std::string &path) {
    ReportInfoLine("");
    HardcopyPlacement placement;
    if (const FileDevice *device = findFileDevice(iPlt)) {
        placement = openFileDriver(*device, path);
    } else if (iPlt == PlotToPrinter) {
        if (!choosePrinter(placement)) {
            return 1;
        }
    } else {
        ReportError({"ERROR: Selected plot hardcopy driver iPlt=" + std::to_string(iPlt) +
                     " not implemented."});
        return 1;
    }
    setOptions(placement);
    IGrHardcopy(path);
    checkHardcopy(std::string(trimBlanks(path)), "Plot_HardcopyOpen");
    return 0;
}

void checkHardcopy(const std::string &path, std::string_view tag) {
    const int number = ToolkitErrorState(ErrorNumber);
    if (number == ErrorOutputFile) {
        ReportNotice(NoticeLevel::Box,
                     {"ERROR: The plot file could not be written.", path, ToolkitHardcopyFault()});
    } else if (number != 0) {
        ReportGraphicsError(number, tag);
    }
}

void reportWhereHardcopyWent(std::string_view path) {
    if (ToolkitHardcopyFault().empty()) {
        const bool printed = trimBlanks(path).empty();
        ToolkitStatus(StatusPart::Notice, printed ? "Sent to the printer."
                                                  : "Saved in " + std::string(fileNameOf(path)));
    }
}

int QCC_Plot_Hardcopy(const SurveyModel &survey, const PlotLimits &limits, int iPlt, int station,
                      std::string_view path, std::string_view date, std::string_view time) {
    std::string plotPath;
    if (const FileDevice *device = findFileDevice(iPlt)) {
        plotPath = plotFilePath(path, station, device->extension);
    } else if (iPlt == PlotToPrinter) {
        plotPath = " ";
    } else {
        ReportError(
            {"ERROR: iPlt=" + std::to_string(iPlt) + " not implemented in QCC_Plot_Hardcopy"});
    }
    const int status = Plot_HardcopyOpen(iPlt, plotPath);
    if (status != 0) {
        return status;
    }
    Plot_Sounding(survey, limits, station, path, date, time);
    IGrHardcopy(HardcopyStop);
    reportWhereHardcopyWent(plotPath);
    checkHardcopy(std::string(trimBlanks(plotPath)), "QCC_Plot_Hardcopy");
    return 0;
}

} // namespace keldrin
