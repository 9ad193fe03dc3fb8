#include "page/hardcopy.h"

#include "base/file_operations.h"
#include "base/index.h"
#include "base/safe_writer.h"
#include "page/drawing.h"
#include "page/drawn_plot.h"
#include "page/error_state.h"
#include "page/hardcopy_state.h"
#include "page/surfaces/hpgl_surface.h"
#include "page/surfaces/null_surface.h"
#include "page/surfaces/svg_surface.h"
#include "page/surfaces/wmf_surface.h"

#include <array>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

namespace keldrin {

namespace fs = std::filesystem;

namespace {

constexpr double PointsPerCm = 72.0 / 2.54;
constexpr std::string_view CloseCode = "S";

template <class Page>
std::unique_ptr<DocumentSurface> newPage() {
    return std::make_unique<Page>();
}

struct FileDriver {
    int number;
    std::unique_ptr<DocumentSurface> (*open)();
};

constexpr std::array FileDrivers = {FileDriver{DriverHpgl, newPage<HpglSurface>},
                                    FileDriver{DriverMetafile, newPage<WmfSurface>},
                                    FileDriver{DriverSvg, newPage<SvgSurface>}};

// Null for a driver that writes no file, or that the backend has not.
std::unique_ptr<DocumentSurface> newDocument(int number) {
    for (const FileDriver &driver : FileDrivers) {
        if (driver.number == number) {
            return driver.open();
        }
    }
    const bool isAsked = number == DriverPng || number == DriverPdf;
    return isAsked && hardcopyHost().document ? hardcopyHost().document(number) : nullptr;
}

void trace(std::string_view kind, std::string_view text) {
    if (hardcopyHost().trace) {
        hardcopyHost().trace(kind, text);
    }
}

float cmOfPoints(double points) {
    return static_cast<float>(points / PointsPerCm);
}

// A page in a file is given in whole points but meant in whole millimetres: 680 is 24 cm.
float filePageCm(int points) {
    constexpr double millimetresPerCm = 10.0;
    return static_cast<float>(std::round(points / PointsPerCm * millimetresPerCm) /
                              millimetresPerCm);
}

// Asked before anything is drawn, so that the user hears of a bad path at once. An older file is
// not touched.
bool canBeWritten(const std::string &path, std::string &fault) {
    std::error_code error;
    const fs::file_type type = fs::symlink_status(path, error).type();
    const bool isNew = type == fs::file_type::not_found;
    if (!isNew && type != fs::file_type::regular && type != fs::file_type::directory) {
        return true; // a link or a device: the writer finds out
    }
    OpenFile file = openForAppending(path);
    if (!file.isOpen()) {
        fault = std::strerror(errno);
        return false;
    }
    file.close();
    if (isNew) {
        fileOperations().remove(path);
    }
    return true;
}

// Draws on the device from now on. The paper must have been begun.
void openPage(float paperWidthCm, float paperHeightCm, const PagePlacement &placement) {
    HardcopyState &state = hardcopyState();
    state.page =
        std::make_unique<PlacedSurface>(*state.device, paperWidthCm, paperHeightCm, placement);
    state.before = selectedSurface();
    selectSurface(state.page.get());
}

std::string openingWords() {
    const HardcopyState &state = hardcopyState();
    std::string words = std::to_string(state.driver);
    for (const int option : {HardcopyWidth, HardcopyHeight, HardcopyLeft, HardcopyBottom}) {
        words += " " + std::to_string(state.options[asIndex(option)]);
    }
    return words;
}

void openPrinter() {
    HardcopyState &state = hardcopyState();
    const float width = cmOfPoints(state.paper.width);
    const float height = cmOfPoints(state.paper.height);
    state.device->begin(width, height);
    openPage(width, height,
             {cmOfPoints(state.options[HardcopyLeft]), cmOfPoints(state.options[HardcopyBottom]),
              cmOfPoints(state.options[HardcopyWidth]), cmOfPoints(state.options[HardcopyHeight])});
    trace("hardcopy", openingWords());
}

void openNowhere(HardcopyError error) {
    HardcopyState &state = hardcopyState();
    setErrorState(error);
    if (state.fault.empty()) {
        state.fault = hardcopyErrorText(error);
    }
    state.device = std::make_unique<NullSurface>();
    openPage(PageWidthCm, PageHeightCm, {});
}

// A file has no paper beyond its page.
void openFile(std::string_view path) {
    HardcopyState &state = hardcopyState();
    state.path = path;
    if (!canBeWritten(state.path, state.fault)) {
        openNowhere(ErrorOutputFile);
        return;
    }
    const float width = filePageCm(state.options[HardcopyWidth]);
    const float height = filePageCm(state.options[HardcopyHeight]);
    state.document = state.file.get();
    state.device = std::move(state.file);
    state.device->begin(width, height);
    openPage(width, height, {0.0F, 0.0F, width, height});
    trace("hardcopy", openingWords());
}

void openHardcopy(std::string_view path) {
    HardcopyState &state = hardcopyState();
    if (state.isOpen()) {
        setErrorState(ErrorNoSuchDevice);
        return;
    }
    state.fault.clear();
    const bool hasExtent = state.options[HardcopyWidth] > 0 && state.options[HardcopyHeight] > 0;
    if (hasExtent && state.file != nullptr) {
        openFile(path);
    } else if (hasExtent && state.device != nullptr) {
        openPrinter();
    } else {
        openNowhere(ErrorNoSuchDevice);
    }
}

// True when the page was written, or goes nowhere.
bool finish(DrawnPlot &plot) {
    if (!plot.encoded) {
        plot.fault = "the device failed";
        return false;
    }
    if (plot.document == nullptr) {
        return true;
    }
    const std::string &content = plot.document->document();
    const WriteOutcome outcome = writeWholeFile(plot.path, content);
    if (!outcome.written) {
        plot.fault = outcome.failure;
        return false;
    }
    trace("file", plot.path + " bytes=" + std::to_string(content.size()));
    return true;
}

// What is drawn goes to where it went before. The fault of the file can still be asked for.
void forgetHardcopy() {
    HardcopyState &state = hardcopyState();
    selectSurface(state.before);
    std::string fault = std::move(state.fault);
    state = HardcopyState{};
    state.fault = std::move(fault);
}

void closeHardcopy() {
    DrawnPlot plot = ToolkitTakeHardcopy();
    encodePlot(plot);
    writePlot(plot);
}

} // namespace

HardcopyState &hardcopyState() {
    static HardcopyState state;
    return state;
}

HardcopyHost &hardcopyHost() {
    static HardcopyHost host;
    return host;
}

std::string_view hardcopyErrorText(HardcopyError number) {
    return number == ErrorOutputFile ? "The output file cannot be created or written."
                                     : "There is no such output device.";
}

void ToolkitHardcopySelect(int /*which*/, int driver) {
    HardcopyState &state = hardcopyState();
    if (state.isOpen()) {
        setErrorState(ErrorNoSuchDevice);
        return;
    }
    std::unique_ptr<DocumentSurface> file = newDocument(driver);
    if (file == nullptr && driver != DriverPrinter) {
        state = HardcopyState{};
        setErrorState(ErrorNoSuchDevice);
        return;
    }
    constexpr int pageWidth = 680; // points of 24 by 18 cm
    constexpr int pageHeight = 510;
    state = HardcopyState{};
    state.driver = driver;
    state.file = std::move(file);
    state.options[HardcopyWidth] = pageWidth;
    state.options[HardcopyHeight] = pageHeight;
}

void ToolkitHardcopyOption(int number, int value) {
    if (number >= 1 && number <= HardcopyState::MostOptions) {
        hardcopyState().options[asIndex(number)] = value;
    }
}

double ToolkitPageInfo(int item) {
    const PrinterPage &paper = hardcopyState().paper;
    return item == PaperWidth ? paper.width : item == PaperHeight ? paper.height : 0.0;
}

void IGrHardcopy(std::string_view pathOrCode) {
    if (pathOrCode != CloseCode) {
        openHardcopy(pathOrCode);
    } else if (hardcopyState().isOpen()) {
        closeHardcopy();
    }
}

void ToolkitNextPage() {
    const HardcopyState &state = hardcopyState();
    if (state.document == nullptr || !state.document->nextPage()) {
        setErrorState(ErrorNoSuchDevice);
    }
}

void ToolkitDocumentTitle(std::string_view text) {
    if (hardcopyState().document != nullptr) {
        hardcopyState().document->title(text);
    }
}

void ToolkitBookmark(std::string_view text, int level) {
    if (hardcopyState().document != nullptr) {
        hardcopyState().document->bookmark(text, level);
    }
}

DrawnPlot ToolkitTakeHardcopy() {
    HardcopyState &state = hardcopyState();
    DrawnPlot plot;
    plot.device = std::move(state.device);
    plot.document = state.document;
    plot.path = state.path;
    plot.fault = state.fault;
    forgetHardcopy();
    return plot;
}

void encodePlot(DrawnPlot &plot) {
    plot.encoded = plot.device->end();
}

void writePlot(DrawnPlot &plot) {
    if (!finish(plot)) {
        setErrorState(ErrorOutputFile);
    }
    hardcopyState().fault = plot.fault;
}

void ToolkitDropHardcopy() {
    if (hardcopyState().isOpen()) {
        forgetHardcopy();
    }
}

std::string ToolkitHardcopyFault() {
    return hardcopyState().fault;
}

} // namespace keldrin
