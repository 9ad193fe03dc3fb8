#include "shell/save_report.h"

#include "shell/open_project.h"
#include "support/files.h"
#include "support/message_recorder.h"
#include "support/paged_document.h"
#include "support/source_directory.h"
#include "support/temporary_directory.h"
#include "toolkit/scripted/answering_backend.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace keldrin {
namespace {

/// Has PDF and a status bar, and a user who may stop long work.
class ReportBackend : public AnsweringBackend {
  public:
    std::unique_ptr<DocumentSurface> document(int driver) override {
        return driver == DriverPdf ? std::make_unique<PagedDocument>() : nullptr;
    }
    bool workStep(double fraction) override { return fraction < stopAt; }
    void setStatus(StatusPart part, std::string_view text) override {
        if (part == StatusPart::Notice) {
            notice = text;
        }
    }

    double stopAt = 2.0;
    std::string notice;
};

class SaveReport : public testing::Test {
  protected:
    SaveReport() {
        std::filesystem::copy_file(std::string(SourceDirectory) + "/examples/project/inloop.std",
                                   path);
        ToolkitInit(backend, {"keldrin"});
        WindowOpen(ResizableWindow, -1, -1, 1000, 750);
        EXPECT_EQ(OpenProject(model, path), 0);
    }
    ~SaveReport() override { ToolkitClose(); }
    SaveReport(const SaveReport &) = delete;
    SaveReport &operator=(const SaveReport &) = delete;

    MessageRecorder messages;
    TemporaryDirectory directory;
    std::string path = directory.path("inloop.std");
    std::string file = directory.path("inloop_report.pdf");
    ReportBackend backend;
    SurveyModel model;
};

TEST_F(SaveReport, AllPagesAreInOneFileBesideTheProject) {
    saveReport(model, path);
    EXPECT_EQ(countOf("</svg>", fileContent(file)), 28U) << "title, plan, profiles, section, 24";
    EXPECT_THAT(backend.notice, testing::HasSubstr("inloop_report.pdf"));
    EXPECT_THAT(messages.errors, testing::IsEmpty());
}

TEST_F(SaveReport, AStopOrAFailureLeavesNoFileAndIsTold) {
    backend.stopAt = 0.0;
    saveReport(model, path);
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_EQ(backend.notice, "Stopped; no file has been written.");

    backend.stopAt = 2.0;
    std::filesystem::create_directory(file);
    saveReport(model, path);
    ASSERT_EQ(messages.errors.size(), 1U);
    EXPECT_THAT(messages.errors[0], testing::HasSubstr("inloop_report.pdf"));
}

} // namespace
} // namespace keldrin
