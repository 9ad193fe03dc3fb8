#include "sounding/plot_document.h"

#include "page/hardcopy.h"
#include "support/files.h"
#include "support/message_recorder.h"
#include "support/paged_document.h"
#include "support/printer_backend.h"
#include "support/temporary_directory.h"
#include "toolkit/toolkit_state.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

namespace keldrin {
namespace {

using testing::Contains;
using testing::ElementsAre;

/// Has PDF, and a user who stops at some step of long work.
class DocumentBackend : public PrinterBackend {
  public:
    std::unique_ptr<DocumentSurface> document(int driver) override {
        return driver == DriverPdf ? std::make_unique<PagedDocument>() : nullptr;
    }
    bool workStep(double fraction) override { return fraction < stopAt; }
    double stopAt = 2.0;
};

class PlotDocumentTest : public testing::Test {
  protected:
    PlotDocumentTest() {
        ToolkitInit(backend, {"keldrin"});
        WindowOpen(ResizableWindow, -1, -1, 800, 600);
        toolkitState().stepPause = {};
        survey.hTrn.resize(4);
        survey.SoundingCount = 4;
        for (const std::size_t i : {0U, 1U, 3U}) { // the third sounding has no windows
            survey.hTrn[i].NumTW = 1;
            survey.hTrn[i].TWcenter[0] = 1.0F;
            survey.hTrn[i].TEMobs[0] = 5.0F;
            survey.hTrn[i].RxStn = 100.0 * static_cast<double>(i + 1);
        }
    }
    ~PlotDocumentTest() override { ToolkitClose(); }
    PlotDocumentTest(const PlotDocumentTest &) = delete;
    PlotDocumentTest &operator=(const PlotDocumentTest &) = delete;

    int plotAll() { return Plot_AllSoundings(survey, limits, project, "14/05/2026", "09:30:00"); }

    DocumentBackend backend;
    MessageRecorder messages;
    TemporaryDirectory directory;
    std::string project = directory.path("line1.std");
    std::string document = directory.path("line1.pdf");
    SurveyModel survey;
    PlotLimits limits;
};

TEST_F(PlotDocumentTest, EachSoundingWithDataHasItsPage) {
    EXPECT_EQ(plotAll(), 0);
    const std::string content = fileContent(document);
    EXPECT_EQ(countOf("<svg", content), 3U);
    EXPECT_LT(content.find("Rx.Stn 100.000"), content.find("Rx.Stn 200.000"));
    EXPECT_LT(content.find("Rx.Stn 200.000"), content.find("Rx.Stn 400.000"));
    EXPECT_THAT(messages.infos, ElementsAre("", "Saving plots of 3 soundings in file line1.pdf"));
    EXPECT_TRUE(ToolkitHasSurface());

    survey.SoundingCount = 0;
    EXPECT_EQ(plotAll(), 1);
    EXPECT_EQ(fileContent(document), content);
}

TEST_F(PlotDocumentTest, StoppedPlotsLeaveNoFileAndNoHardcopy) {
    backend.stopAt = 0.5;
    EXPECT_EQ(plotAll(), 1);
    EXPECT_FALSE(std::filesystem::exists(document));
    EXPECT_TRUE(ToolkitHasSurface());
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0);
    EXPECT_THAT(messages.infos, Contains("Stopped; no file has been written."));
    backend.stopAt = 2.0;
    EXPECT_EQ(plotAll(), 0);
}

TEST_F(PlotDocumentTest, AFileThatCannotBeWrittenIsToldOnce) {
    project = directory.path("missing/line1.std");
    EXPECT_EQ(plotAll(), 0);
    EXPECT_THAT(messages.errors,
                ElementsAre("ERROR: The plot file could not be written.|" +
                            directory.path("missing/line1.pdf") + "|No such file or directory"));
    EXPECT_TRUE(ToolkitHasSurface());
}

TEST_F(PlotDocumentTest, SomebodyElsesDocumentIsNotReplaced) {
    putFile(document, "%PDF-1.7 a report about KELDRIN v4 soundings");
    EXPECT_EQ(plotDocumentPath(project), directory.path("line1_soundings.pdf"));
    const std::string ours("%PDF-1.4\n/Creator (\xFE\xFF\0K\0E\0L\0D\0R\0I\0N\0 \0v", 38);
    putFile(document, ours);
    EXPECT_EQ(plotDocumentPath(project), document);
    EXPECT_EQ(plotDocumentPath("survey.v2/line"), "survey.v2/line.pdf");
}

} // namespace
} // namespace keldrin
