#include "toolkit/hardcopy.h"

#include "base/safe_writer.h"
#include "toolkit/drawing.h"
#include "toolkit/surfaces/hpgl_surface.h"
#include "toolkit/surfaces/null_surface.h"
#include "toolkit/surfaces/svg_surface.h"
#include "toolkit/surfaces/wmf_surface.h"
#include "toolkit/toolkit.h"
#include "toolkit/toolkit_state.h"

#include <array>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>

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
    Backend *backend = toolkitState().backend;
    const bool isAsked = number == DriverPng || number == DriverPdf;
    return isAsked && backend != nullptr ? backend->document(number) : nullptr;
}

HardcopyState &hardcopy() {
    return toolkitState().hardcopy;
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
    std::FILE *file = std::fopen(path.c_str(), isNew ? "wb" : "r+b");
    if (file == nullptr) {
        fault = std::strerror(errno);
        return false;
    }
    std::fclose(file);
    if (isNew) {
        fs::remove(path, error);
    }
    return true;
}

// Draws on the device from now on. The paper must have been begun.
void openPage(float paperWidthCm, float paperHeightCm, const PagePlacement &placement) {
    HardcopyState &state = hardcopy();
    state.page =
        std::make_unique<PlacedSurface>(*state.device, paperWidthCm, paperHeightCm, placement);
    selectSurface(state.page.get());
}

std::string openingWords() {
    const HardcopyState &state = hardcopy();
    std::string words = std::to_string(state.driver);
    for (const int option : {HardcopyWidth, HardcopyHeight, HardcopyLeft, HardcopyBottom}) {
        words += " " + std::to_string(state.options[static_cast<std::size_t>(option)]);
    }
    return words;
}

void openPrinter() {
    HardcopyState &state = hardcopy();
    const float width = cmOfPoints(state.paper.width);
    const float height = cmOfPoints(state.paper.height);
    state.device->begin(width, height);
    openPage(width, height,
             {cmOfPoints(state.options[HardcopyLeft]), cmOfPoints(state.options[HardcopyBottom]),
              cmOfPoints(state.options[HardcopyWidth]), cmOfPoints(state.options[HardcopyHeight])});
    ToolkitTrace("hardcopy", openingWords());
}

void openNowhere(int error) {
    HardcopyState &state = hardcopy();
    ToolkitSetError(error);
    if (state.fault.empty()) {
        state.fault = ToolkitErrorText(error);
    }
    state.device = std::make_unique<NullSurface>();
    openPage(PageWidthCm, PageHeightCm, {});
}

// A file has no paper beyond its page.
void openFile(std::string_view path) {
    HardcopyState &state = hardcopy();
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
    ToolkitTrace("hardcopy", openingWords());
}

void openHardcopy(std::string_view path) {
    HardcopyState &state = hardcopy();
    if (state.isOpen()) {
        ToolkitSetError(ErrorNoSuchDevice);
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

// True when the page is where it belongs; a page that goes nowhere is.
bool finishPage(HardcopyState &state) {
    if (!state.page->end()) {
        state.fault = "the device failed";
        return false;
    }
    if (state.document == nullptr) {
        return true;
    }
    const std::string &content = state.document->document();
    const WriteOutcome outcome = writeWholeFile(state.path, content);
    if (!outcome.written) {
        state.fault = outcome.failure;
        return false;
    }
    ToolkitTrace("file", state.path + " bytes=" + std::to_string(content.size()));
    return true;
}

// What is drawn goes to the screen again.
void forgetHardcopy() {
    ToolkitState &toolkit = toolkitState();
    selectSurface(toolkit.rootOpen ? &toolkit.backend->screen() : nullptr);
    std::string fault = std::move(toolkit.hardcopy.fault);
    toolkit.hardcopy = HardcopyState{};
    toolkit.hardcopy.fault = std::move(fault);
}

void closeHardcopy() {
    if (!finishPage(hardcopy())) {
        ToolkitSetError(ErrorOutputFile);
    }
    forgetHardcopy();
}

} // namespace

void ToolkitHardcopySelect(int /*which*/, int driver) {
    HardcopyState &state = hardcopy();
    if (state.isOpen()) {
        ToolkitSetError(ErrorNoSuchDevice);
        return;
    }
    std::unique_ptr<DocumentSurface> file = newDocument(driver);
    if (file == nullptr && driver != DriverPrinter) {
        state = HardcopyState{};
        ToolkitSetError(ErrorNoSuchDevice);
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
        hardcopy().options[static_cast<std::size_t>(number)] = value;
    }
}

void WHardcopyOptions(int /*which*/) {
    ToolkitState &toolkit = toolkitState();
    HardcopyState &state = toolkit.hardcopy;
    toolkit.lastCommonOk = false;
    if (state.isOpen() || state.driver != DriverPrinter) {
        ToolkitSetError(ErrorNoSuchDevice);
        return;
    }
    PrinterPage paper;
    std::unique_ptr<Surface> printer =
        toolkit.backend != nullptr ? toolkit.backend->printer(paper) : nullptr;
    if (printer == nullptr || !(paper.width > 0.0) || !(paper.height > 0.0)) {
        state = HardcopyState{};
        return;
    }
    state.paper = paper;
    state.device = std::move(printer);
    toolkit.lastCommonOk = true;
}

double ToolkitPageInfo(int item) {
    constexpr int paperWidth = 91;
    constexpr int paperHeight = 92;
    const PrinterPage &paper = hardcopy().paper;
    return item == paperWidth ? paper.width : item == paperHeight ? paper.height : 0.0;
}

void IGrHardcopy(std::string_view pathOrCode) {
    if (pathOrCode != CloseCode) {
        openHardcopy(pathOrCode);
    } else if (hardcopy().isOpen()) {
        closeHardcopy();
    }
}

void ToolkitNextPage() {
    const HardcopyState &state = hardcopy();
    if (state.document == nullptr || !state.document->nextPage()) {
        ToolkitSetError(ErrorNoSuchDevice);
    }
}

void ToolkitDropHardcopy() {
    if (hardcopy().isOpen()) {
        forgetHardcopy();
    }
}

std::string ToolkitHardcopyFault() {
    return hardcopy().fault;
}

} // namespace keldrin
