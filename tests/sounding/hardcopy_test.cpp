#include "sounding/hardcopy.h"

#include "page/drawing.h"
#include "page/hardcopy.h"
#include "support/files.h"
#include "support/message_recorder.h"
#include "support/printer_backend.h"
#include "support/temporary_directory.h"
#include "toolkit/toolkit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace keldrin {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

TEST(PlotFilePath, IsTheProjectWithFourDigits) {
    EXPECT_EQ(plotFilePath("survey.v2/line1.std", 7, ".wmf"), "survey.v2/line10007.wmf");
    EXPECT_EQ(plotFilePath("C:\\survey.v2\\line1", 9999, ".hpg"), "C:\\survey.v2\\line19999.hpg");
#ifdef _WIN32
    EXPECT_EQ(plotFilePath("line1.std", 10000, ".hpg"), "line110000.hpg");
#else
    EXPECT_EQ(plotFilePath("line1.std", 10000, ".hpg"), "line1****.hpg");
#endif
}

TEST(PlaceOnPaper, FitsThePageAndCentresItOneWay) {
    struct Case {
        std::string paper;
        double paperWidth;
        double paperHeight;
        double scale;
        int width, height, left, bottom;
    };
    const Case cases[] = {
        // 25.40 by 19.05 cm within the margins: 0.75 exactly, which counts as the wider paper.
        {"Letter landscape", 792.0, 612.0, 1.0, 680, 510, 56, 28},
        {"Letter portrait", 612.0, 792.0, 19.05 / 24.0, 540, 405, 28, 194},
        {"A4 landscape", 842.0, 595.0, 1.0, 680, 510, 81, 28},
        {"A4 portrait", 595.0, 842.0, 0.768762, 523, 392, 28, 225},
        {"A3 landscape is not filled", 1191.0, 842.0, 1.0, 680, 510, 255, 28},
        {"Long strip", 2000.0, 300.0, 0.446852, 304, 228, 848, 28},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.paper);
        const HardcopyPlacement place = placeOnPaper(c.paperWidth, c.paperHeight);
        EXPECT_NEAR(place.scale, c.scale, 1e-6);
        EXPECT_EQ(place.width, c.width);
        EXPECT_EQ(place.height, c.height);
        EXPECT_EQ(place.left, c.left);
        EXPECT_EQ(place.bottom, c.bottom);
    }
}

class ReviewHardcopyTest : public testing::Test {
  protected:
    ReviewHardcopyTest() {
        ToolkitInit(backend, {"keldrin"});
        WindowOpen(ResizableWindow, -1, -1, 800, 600);
        survey.hTrn.resize(1);
        survey.SoundingCount = 1;
        SoundingRecord &sounding = survey.hTrn.front();
        sounding.NumTW = 1;
        sounding.TWcenter[0] = 1.0F;
        sounding.TEMobs[0] = 5.0F;
        sounding.TEMerr[0] = 1.0F;
        survey.control.JobName = "Jos\xC3\xA9";
    }
    ~ReviewHardcopyTest() override { ToolkitClose(); }
    ReviewHardcopyTest(const ReviewHardcopyTest &) = delete;
    ReviewHardcopyTest &operator=(const ReviewHardcopyTest &) = delete;

    int plot(int iPlt, const std::string &project) {
        return QCC_Plot_Hardcopy(survey, limits, iPlt, 1, project, "14/05/2026", "09:30:00");
    }

    PrinterBackend backend;
    MessageRecorder messages;
    TemporaryDirectory directory;
    SurveyModel survey;
    PlotLimits limits;
};

TEST_F(ReviewHardcopyTest, APlotFileIsLoggedAndWrittenBesideTheProject) {
    const std::string project = directory.path("line1.std");
    EXPECT_EQ(plot(PlotToHpgl, project), 0);
    EXPECT_EQ(plot(PlotToMetafile, project), 0);
    EXPECT_THAT(messages.infos, ElementsAre("", "Saving 18.0 by 24.0 cm plot in file line10001.hpg",
                                            "This may take awhile.", "",
                                            "Saving 18.0 by 24.0 cm plot in file line10001.wmf",
                                            "This may take awhile."));
    EXPECT_THAT(backend.traced,
                ElementsAre("hardcopy 1 680 510 0 0",
                            StartsWith("file " + directory.path("line10001.hpg bytes=")),
                            "hardcopy 11 680 510 0 0",
                            StartsWith("file " + directory.path("line10001.wmf bytes="))));
    const std::string plotter = fileContent(directory.path("line10001.hpg"));
    EXPECT_THAT(plotter, HasSubstr("LBJos?\x03"));
    EXPECT_THAT(plotter, HasSubstr("LBPlotted 14/05/2026, 09:30:00\x03"));
    EXPECT_THAT(fileContent(directory.path("line10001.wmf")), HasSubstr("Jos\xE9"));
    EXPECT_THAT(messages.errors, IsEmpty());
}

TEST_F(ReviewHardcopyTest, TheLogIsShownBeforeAndThePageIsNotOnIt) {
    EXPECT_EQ(plot(PlotToHpgl, directory.path("line1.std")), 0);
    EXPECT_EQ(backend.page().kind(), "log");
    for (const RecordedItem &item : backend.page().items()) {
        EXPECT_EQ(item.kind, RecordedItem::Kind::Text);
    }
    EXPECT_TRUE(ToolkitHasSurface());
    EXPECT_EQ(ToolkitAreaInfo(AreaRight), 24.0F) << "the view is the page's for the mouse";
}

TEST_F(ReviewHardcopyTest, AFileThatCannotBeCreatedIsReportedOnce) {
    EXPECT_EQ(plot(PlotToMetafile, directory.path("missing/line1.std")), 0);
    EXPECT_THAT(messages.errors, ElementsAre("ERROR: The plot file could not be written.|" +
                                             directory.path("missing/line10001.wmf") +
                                             "|No such file or directory"));
    EXPECT_EQ(messageLog().GraphicsErrorCount, 0) << "many of these must not end the program";
    EXPECT_TRUE(ToolkitHasSurface());
    EXPECT_EQ(plot(PlotToMetafile, directory.path("line1.std")), 0);
    EXPECT_TRUE(std::filesystem::exists(directory.path("line10001.wmf")));
}

TEST_F(ReviewHardcopyTest, PaperOfThePrinterIsToldAndThePageScaledToIt) {
    backend.paper = {595.0, 842.0};
    EXPECT_EQ(plot(PlotToPrinter, "line1.std"), 0);
    EXPECT_THAT(messages.infos,
                ElementsAre("", "Writing 18.0 by 24.0 cm plot to printer.",
                            "Using 29.7 by 21.0 cm paper = 11.7 by 8.3 inches.",
                            "Scaling plot by 76.9% to fit on paper (with 1.27 cm margins)."));
    EXPECT_THAT(backend.traced, ElementsAre("hardcopy 10 523 392 28 225"));
    EXPECT_THAT(backend.printed, Contains(HasSubstr("Plotted 14/05/2026")));

    messages.infos.clear();
    backend.paper = {792.0, 612.0};
    EXPECT_EQ(plot(PlotToPrinter, "line1.std"), 0);
    EXPECT_THAT(messages.infos, ElementsAre("", "Writing 18.0 by 24.0 cm plot to printer.",
                                            "Using 21.6 by 27.9 cm paper = 8.5 by 11.0 inches."));
}

TEST_F(ReviewHardcopyTest, ADeclinedPrinterEndsInSilence) {
    backend.accepts = false;
    EXPECT_EQ(plot(PlotToPrinter, "line1.std"), 1);
    EXPECT_THAT(messages.infos, ElementsAre("", "Writing 18.0 by 24.0 cm plot to printer."));
    EXPECT_THAT(messages.errors, IsEmpty());
    EXPECT_THAT(backend.traced, IsEmpty());
    EXPECT_TRUE(ToolkitHasSurface());
}

TEST_F(ReviewHardcopyTest, PaperWithoutRoomForAPageIsReported) {
    backend.paper = {60.0, 60.0};
    EXPECT_EQ(plot(PlotToPrinter, "line1.std"), 0);
    EXPECT_THAT(messages.errors,
                ElementsAre("Graphics ERROR: from Plot_HardcopyOpen|There is no such output "
                            "device."));
    EXPECT_THAT(backend.printed, IsEmpty());
    EXPECT_TRUE(ToolkitHasSurface());
}

TEST_F(ReviewHardcopyTest, AnUnknownDeviceIsRefusedByBothSteps) {
    EXPECT_EQ(plot(7, "line1.std"), 1);
    EXPECT_THAT(messages.errors,
                ElementsAre("ERROR: iPlt=7 not implemented in QCC_Plot_Hardcopy",
                            "ERROR: Selected plot hardcopy driver iPlt=7 not implemented."));
    EXPECT_THAT(messages.infos, ElementsAre(""));
}

} // namespace
} // namespace keldrin
