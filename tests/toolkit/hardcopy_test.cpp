#include "page/hardcopy.h"

#include "page/drawing.h"
#include "support/files.h"
#include "support/paged_document.h"
#include "support/printer_backend.h"
#include "support/temporary_directory.h"
#include "toolkit/toolkit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

namespace keldrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class HardcopyTest : public testing::Test {
  protected:
    HardcopyTest() {
        ToolkitInit(backend, {"keldrin"});
        WindowOpen(ResizableWindow, -1, -1, 800, 600);
        IGrArea(0.0F, 0.0F, 1.0F, 1.0F);
        IGrUnits(0.0F, 0.0F, 24.0F, 18.0F);
        IGrColour("BLACK");
    }
    ~HardcopyTest() override { ToolkitClose(); }
    HardcopyTest(const HardcopyTest &) = delete;
    HardcopyTest &operator=(const HardcopyTest &) = delete;

    static void drawLine() {
        ToolkitMoveTo(0.0F, 0.0F);
        ToolkitLineTo(24.0F, 18.0F);
    }
    [[nodiscard]] std::size_t onScreen() { return backend.page().items().size(); }

    PrinterBackend backend;
    TemporaryDirectory directory;
};

TEST_F(HardcopyTest, DrawingGoesToTheFileUntilItIsClosed) {
    const std::string path = directory.path("a.hpg");
    putFile(path, "old");
    ToolkitHardcopySelect(HardcopyDevice, DriverHpgl);
    EXPECT_TRUE(ToolkitHasSurface());
    IGrHardcopy(path);
    EXPECT_FALSE(ToolkitHasSurface()); // the log must not land on the page
    drawLine();
    EXPECT_EQ(fileContent(path), "old") << "a file is written whole at the end";
    IGrHardcopy(HardcopyStop);
    EXPECT_TRUE(ToolkitHasSurface());
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0);
    EXPECT_EQ(onScreen(), 0U);
    const std::string content = fileContent(path);
    EXPECT_THAT(content, testing::HasSubstr("PU0,0;PD9600,7200;PU;"));
    EXPECT_THAT(backend.traced,
                ElementsAre("hardcopy 1 680 510 0 0",
                            "file " + path + " bytes=" + std::to_string(content.size())));
    drawLine();
    EXPECT_EQ(onScreen(), 1U);
    IGrHardcopy(HardcopyStop); // nothing is open
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0);
}

TEST_F(HardcopyTest, EachDriverWritesItsFormatAndAsksForItsPageAnew) {
    const struct {
        int driver;
        std::string start;
    } cases[] = {{DriverHpgl, "IN;IP0,0,9600,7200;"},
                 {DriverMetafile, "\xD7\xCD\xC6\x9A"},
                 {DriverSvg, "<?xml"}};
    for (const auto &c : cases) {
        const std::string path = directory.path("page");
        ToolkitHardcopyOption(HardcopyWidth, 100); // of a hardcopy that is not the next one
        ToolkitHardcopySelect(HardcopyDevice, c.driver);
        for (const int ignored : {0, 5, 6, 9, 10, -1}) {
            ToolkitHardcopyOption(ignored, 3);
        }
        IGrHardcopy(path);
        drawLine();
        IGrHardcopy(HardcopyStop);
        EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0);
        EXPECT_EQ(fileContent(path).substr(0, c.start.size()), c.start);
    }
}

TEST_F(HardcopyTest, AFileThatCannotBeCreatedLeavesAnErrorAndDrawingGoesNowhere) {
    const std::string paths[] = {directory.path("missing/a.wmf"), directory.path(), ""};
    for (const std::string &path : paths) {
        ToolkitHardcopySelect(HardcopyDevice, DriverMetafile);
        IGrHardcopy(path);
        EXPECT_EQ(ToolkitErrorState(ErrorNumber), ErrorOutputFile) << path;
        EXPECT_NE(ToolkitHardcopyFault(), "");
        drawLine();
        IGrHardcopy(HardcopyStop);
        EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0) << "it is told once";
        EXPECT_EQ(onScreen(), 0U);
    }
    EXPECT_THAT(backend.traced, IsEmpty());
}

TEST_F(HardcopyTest, AFileThatCannotBeWrittenIsToldAtTheEnd) {
    std::filesystem::create_directory(directory.path("gone"));
    const std::string path = directory.path("gone/a.svg");
    ToolkitHardcopySelect(HardcopyDevice, DriverSvg);
    IGrHardcopy(path);
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0);
    EXPECT_FALSE(std::filesystem::exists(path));
    std::filesystem::remove(directory.path("gone"));
    IGrHardcopy(HardcopyStop);
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), ErrorOutputFile);
    EXPECT_NE(ToolkitHardcopyFault(), "");
    EXPECT_TRUE(ToolkitHasSurface());
}

TEST_F(HardcopyTest, APageIsPlacedOnThePaperOfThePrinter) {
    ToolkitHardcopySelect(HardcopyDevice, DriverPrinter);
    WHardcopyOptions(PrinterDialog);
    EXPECT_NE(ToolkitDialogInfo(CommonDialogOk), 0);
    EXPECT_EQ(ToolkitPageInfo(PaperWidth), 720.0);
    EXPECT_EQ(ToolkitPageInfo(PaperHeight), 1440.0);
    ToolkitHardcopyOption(HardcopyWidth, 360);
    ToolkitHardcopyOption(HardcopyHeight, 288);
    ToolkitHardcopyOption(HardcopyLeft, 72);
    ToolkitHardcopyOption(HardcopyBottom, 144);
    IGrHardcopy(" ");
    drawLine();
    WGrTextFont(0, 0, 0.01F, 0.1F);
    ToolkitDrawText(12.0F, 9.0F, "x");
    IGrHardcopy(HardcopyStop);
    EXPECT_THAT(backend.printed, ElementsAre("line BLACK 2 2.54 5.08 15.24 15.24",
                                             "text 8.89 10.16 1.02 0 BLACK \"x\""));
    EXPECT_THAT(backend.traced, ElementsAre("hardcopy 10 360 288 72 144"));
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0);
    EXPECT_EQ(ToolkitPageInfo(PaperWidth), 0.0);
}

TEST_F(HardcopyTest, ADeclinedOrBrokenPrinterLeavesTheScreenToTheProgram) {
    backend.accepts = false;
    ToolkitHardcopySelect(HardcopyDevice, DriverPrinter);
    WHardcopyOptions(PrinterDialog);
    EXPECT_EQ(ToolkitDialogInfo(CommonDialogOk), 0);
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0);
    drawLine();
    EXPECT_EQ(onScreen(), 1U);

    backend.accepts = true;
    backend.works = false;
    ToolkitHardcopySelect(HardcopyDevice, DriverPrinter);
    WHardcopyOptions(PrinterDialog);
    IGrHardcopy(" ");
    IGrHardcopy(HardcopyStop);
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), ErrorOutputFile);
    EXPECT_TRUE(ToolkitHasSurface());
}

TEST_F(HardcopyTest, DevicesThatAreNotThereAreRefused) {
    ToolkitHardcopySelect(HardcopyDevice, 99);
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), ErrorNoSuchDevice);
    ToolkitHardcopySelect(HardcopyDevice, DriverHpgl);
    WHardcopyOptions(PrinterDialog); // has no dialog
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), ErrorNoSuchDevice);

    // No driver, a printer that was not chosen, and a page without extent: drawing goes nowhere.
    const std::string path = directory.path("a");
    const auto open = [&](int driver, int width) {
        ToolkitHardcopySelect(HardcopyDevice, driver);
        ToolkitHardcopyOption(HardcopyWidth, width);
        IGrHardcopy(path);
        EXPECT_EQ(ToolkitErrorState(ErrorNumber), ErrorNoSuchDevice);
        ToolkitHardcopySelect(HardcopyDevice, DriverHpgl); // not while one is open
        EXPECT_EQ(ToolkitErrorState(ErrorNumber), ErrorNoSuchDevice);
        drawLine();
        IGrHardcopy(HardcopyStop);
        EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0);
    };
    open(DriverPrinter, 680);
    open(DriverHpgl, 0);
    open(DriverHpgl, -5);
    EXPECT_EQ(onScreen(), 0U);
    EXPECT_FALSE(std::filesystem::exists(path));
}

/// Has a document of several pages.
class DocumentBackend : public PrinterBackend {
  public:
    std::unique_ptr<DocumentSurface> document(int driver) override {
        return driver == DriverPdf ? std::make_unique<PagedDocument>() : nullptr;
    }
};

TEST(HardcopyOfTheWindowSystem, ADocumentHoldsSeveralPagesAndMayBeDropped) {
    const TemporaryDirectory directory;
    const std::string path = directory.path("a.pdf");
    DocumentBackend backend;
    ToolkitInit(backend, {"keldrin"});
    WindowOpen(ResizableWindow, -1, -1, 800, 600);
    ToolkitNextPage(); // of nothing
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), ErrorNoSuchDevice);

    ToolkitHardcopySelect(HardcopyDevice, DriverPdf);
    IGrHardcopy(path);
    ToolkitMoveTo(0.0F, 0.0F);
    ToolkitLineTo(24.0F, 18.0F);
    ToolkitNextPage();
    ToolkitNextPage();
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0);
    ToolkitDropHardcopy();
    EXPECT_TRUE(ToolkitHasSurface());
    EXPECT_FALSE(std::filesystem::exists(path));

    ToolkitHardcopySelect(HardcopyDevice, DriverPdf);
    IGrHardcopy(path);
    ToolkitNextPage();
    IGrHardcopy(HardcopyStop);
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0);
    EXPECT_EQ(countOf("<svg", fileContent(path)), 2U);
    ToolkitDropHardcopy(); // nothing is open
    EXPECT_TRUE(std::filesystem::exists(path));

    ToolkitHardcopySelect(HardcopyDevice, DriverSvg);
    IGrHardcopy(directory.path("a.svg"));
    ToolkitNextPage();
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), ErrorNoSuchDevice) << "one page a file";
    IGrHardcopy(HardcopyStop);
    EXPECT_EQ(countOf("<svg", fileContent(directory.path("a.svg"))), 1U);

    ToolkitHardcopySelect(HardcopyDevice, DriverPng);
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), ErrorNoSuchDevice);
    IGrHardcopy(directory.path("a.png")); // not the device chosen before
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), ErrorNoSuchDevice);
    EXPECT_NE(ToolkitHardcopyFault(), "");
    IGrHardcopy(HardcopyStop);
    EXPECT_FALSE(std::filesystem::exists(directory.path("a.png")));
    ToolkitClose();
}

TEST(HardcopyWithoutWindow, PagesAreWrittenAllTheSame) {
    const TemporaryDirectory directory;
    const std::string path = directory.path("a.svg");
    ToolkitHardcopySelect(HardcopyDevice, DriverPrinter);
    WHardcopyOptions(PrinterDialog);
    EXPECT_EQ(ToolkitDialogInfo(CommonDialogOk), 0);
    ToolkitHardcopySelect(HardcopyDevice, DriverSvg);
    IGrHardcopy(path);
    IGrHardcopy(HardcopyStop);
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0);
    EXPECT_NE(fileContent(path), "");
}

} // namespace
} // namespace keldrin
