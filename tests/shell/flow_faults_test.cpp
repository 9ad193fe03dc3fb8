#include "base/clock.h"
#include "conditioning/auto_skip.h"
#include "conditioning/configuration_dialog.h"
#include "review/review_save.h"
#include "shell/edit_configuration.h"
#include "shell/invert.h"
#include "shell/new_model.h"
#include "shell/open_project.h"
#include "shell/save_project.h"
#include "sounding/hardcopy.h"
#include "sounding/plot_limits.h"
#include "support/failing_files.h"
#include "support/files.h"
#include "support/message_recorder.h"
#include "support/source_directory.h"
#include "support/temporary_directory.h"
#include "toolkit/control_ids.h"
#include "toolkit/scripted/answering_backend.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace keldrin {
namespace {

// Each flow that writes, with every call to the disk failing in turn: files are the old ones or the
// new ones, whole, the failure is reported, and nothing is left over.

constexpr std::string_view Project =
    "&KELDRIN SurveyType='In-Loop' TEMUnits='nV/Am2' XTxLength=100 YTxLength=100 TxRamp=60 "
    "TxFreq=16 NumStn=2 NumTW=1\n/\n"
    "Station,East,North,Elevation,TWcenter,TWwidth,TEMobs,TEMerr,AResObs\n"
    "100,1,2,50,0.1,0.02,5,3,30\n150,1,2,50,0.1,0.02,5,3,30\n";
constexpr std::string_view Models = "Station,Zinv,ResInv\n"
                                    "100,50,9\n100,49,9\n100,47,8\n150,50,9\n150,49,7\n";

/// A toolkit whose engine writes both files anew and whose chooser gives one file.
class FlowBackend : public AnsweringBackend {
  public:
    RunResult run(const std::vector<std::string> &command, const ChildWatch & /*watch*/) override {
        const std::string base = command[1].substr(0, command[1].size() - 4);
        putFile(base + ".std", fileContent(base + ".std") + "\n");
        putFile(base + ".m1d", fileContent(base + ".m1d") + "\n");
        return {};
    }
    std::optional<std::string> chooseFile(const FileRequest & /*request*/) override {
        return choice;
    }
    void addRecentFile(const std::string &path) override { recent.push_back(path); }

    std::optional<std::string> choice;
    std::vector<std::string> recent;
};

/// The files of a directory, by name.
using Files = std::map<std::string, std::string>;

Files filesIn(const std::string &directory) {
    Files files;
    for (const auto &entry : std::filesystem::directory_iterator(directory)) {
        files[entry.path().filename().string()] = fileContent(entry.path().string());
    }
    return files;
}

/// A project that is open, in a directory of its own.
struct OpenedProject {
    OpenedProject() {
        putFile(path, Project);
        putFile(directory.path("line.m1d"), Models);
        ToolkitInit(backend, {"keldrin"});
        backend.choice = path;
        EXPECT_EQ(OpenProject(model, path), 0);
        messages.errors.clear();
    }
    OpenedProject(const OpenedProject &) = delete;
    OpenedProject &operator=(const OpenedProject &) = delete;
    ~OpenedProject() { ToolkitClose(); }

    TemporaryDirectory directory;
    MessageRecorder messages;
    FlowBackend backend;
    SurveyModel model;
    std::string path = directory.path("line.std");
};

struct Flow {
    const char *name;
    std::function<void(OpenedProject &)> run;
};

const std::vector<Flow> &flows() {
    static const std::vector<Flow> all = {
        {"Save",
         [](OpenedProject &p) {
             p.model.control.JobName = "changed";
             SaveProject(p.model, p.path);
         }},
        {"Save under another name",
         [](OpenedProject &p) {
             p.backend.choice = p.directory.path("other.std");
             SaveProject(p.model, p.path);
         }},
        {"Auto Skip",
         [](OpenedProject &p) {
             AutoSkipSettings settings;
             p.model.control.DataCutoff = 1.0F;
             EXPECT_EQ(AutoSkip(p.model, settings), 0);
             writeMarkedProject(p.model, p.path);
         }},
        {"Edit",
         [](OpenedProject &p) {
             p.backend.beforeAnswer = [](AnsweringBackend &user, int dialog) {
                 if (dialog == ConfigurationDialog.number) {
                     user.edit(ConfigurationControl::LoopSizeX, "400");
                 }
             };
             EXPECT_EQ(EditConfiguration(p.model, p.path), 0);
         }},
        {"Edit with another name",
         [](OpenedProject &p) {
             p.backend.beforeAnswer = [](AnsweringBackend &user, int dialog) {
                 if (dialog == ConfigurationDialog.number) {
                     user.edit(ConfigurationControl::SaveAs, "renamed");
                 }
             };
             EXPECT_EQ(EditConfiguration(p.model, p.path), 0);
         }},
        {"Invert",
         [](OpenedProject &p) {
             Invert(p.model, p.path);
         }},
        {"export",
         [](OpenedProject &p) {
             PlotLimits limits;
             std::string date;
             std::string time;
             Plot_AutoLimits(p.model, limits, date, time);
             QCC_Plot_Hardcopy(p.model, limits, PlotToHpgl, 1, p.path, date, time);
         }},
    };
    return all;
}

class FlowFaults : public testing::TestWithParam<std::size_t> {
  protected:
    FlowFaults() { fixClock(DateTime{2026, 5, 14, 9, 30, 0}); }
    ~FlowFaults() override { fixClock(std::nullopt); }

    // Every file is the one from before, the one of a run without a fault, or was kept whole.
    void check(const OpenedProject &project, const std::string &where) const {
        const Files found = filesIn(project.directory.path());
        for (const auto &[name, content] : found) {
            const bool isOld = before.count(name) > 0 && content == before.at(name);
            const bool isNew = after.count(name) > 0 && content == after.at(name);
            const bool isCopy = name.find('~') != std::string::npos;
            EXPECT_TRUE(isOld || isNew || (isCopy && (content == Project || content == Models)))
                << where << ": " << name;
        }
        EXPECT_TRUE(found.count("line.std") > 0 && found.count("line.m1d") > 0) << where;
        EXPECT_TRUE(found == after || !project.messages.errors.empty())
            << where << ": nothing was told";
    }

    const Files before = {{"line.std", std::string(Project)}, {"line.m1d", std::string(Models)}};
    Files after;
};

TEST_P(FlowFaults, LeaveWholeFilesAndAreTold) {
    const Flow &flow = flows()[GetParam()];
    {
        OpenedProject project;
        flow.run(project);
        after = filesIn(project.directory.path());
        EXPECT_THAT(project.messages.errors, testing::IsEmpty()) << flow.name;
    }
    for (const FileFault fault : {FileFault::Fails, FileFault::EndsShort}) {
        std::unique_ptr<OpenedProject> project;
        const int calls = spoilEveryCall(
            fault,
            [&] {
                project.reset(); // the toolkit is one a process
                project = std::make_unique<OpenedProject>();
            },
            [&] { flow.run(*project); },
            [&](const SpoiledCall &spoiled) {
                check(*project, std::string(flow.name) + ", " + spoiled.text());
            });
        EXPECT_GT(calls, 0) << flow.name;
    }
}

INSTANTIATE_TEST_SUITE_P(Each, FlowFaults, testing::Range(std::size_t{0}, flows().size()),
                         [](const auto &flow) {
                             std::string name = flows()[flow.param].name;
                             std::erase(name, ' ');
                             return name;
                         });

/// Runs a flow with every call failing in turn: it lists its files exactly when it has succeeded.
void expectOnlyListedWhen(std::size_t files, const std::function<void(OpenedProject &)> &run,
                          const std::function<bool(const OpenedProject &)> &succeeded) {
    std::unique_ptr<OpenedProject> project;
    const int calls = spoilEveryCall(
        FileFault::Fails,
        [&] {
            project.reset();
            project = std::make_unique<OpenedProject>();
            project->backend.recent.clear();
        },
        [&] { run(*project); },
        [&](const SpoiledCall &spoiled) {
            EXPECT_EQ(project->backend.recent.size(), succeeded(*project) ? files : 0U)
                << spoiled.text();
        });
    EXPECT_GT(calls, 0);
}

TEST(RecentFiles, HoldOnlyWhatWasOpenedOrMade) {
    expectOnlyListedWhen(
        1, [](OpenedProject &p) { static_cast<void>(OpenProject(p.model, p.path)); },
        [](const OpenedProject &p) { return p.model.SoundingCount > 0; });
    expectOnlyListedWhen(
        2, // the field data and the project
        [](OpenedProject &p) {
            p.path = p.directory.path("field.avg");
            std::filesystem::copy(std::string(SourceDirectory) + "/tests/scenarios/data/tiny.avg",
                                  p.path);
            static_cast<void>(BuildNewModel(p.model, p.path));
        },
        [](const OpenedProject &p) {
            return std::filesystem::exists(p.directory.path("field.std"));
        });
}

} // namespace
} // namespace keldrin
