// Writes of projects and model files when a call to the system fails, ends short or ends the
// process: the old files are whole or the new ones are, the failure is reported, nothing is left
// over.

#include "projectfile/model_file.h"
#include "projectfile/project_case.h"
#include "support/failing_files.h"
#include "support/source_directory.h"

#include <filesystem>
#include <set>

namespace keldrin {
namespace {

namespace fs = std::filesystem;
using testing::StartsWith;

const std::string Examples = std::string(SourceDirectory) + "/examples/project/inloop";

class FileFaults : public ProjectCase {
  protected:
    FileFaults() {
        std::string example = Examples + ".std";
        EXPECT_EQ(STD_File_Read(model, example), 0);
        EXPECT_EQ(M1D_File_Read(model, Examples + ".m1d"), 0);
        model.SoundingCount = 4;
        EXPECT_TRUE(Project_Files_Write(model, path).written);
        oldProject = fileContent(path);
        oldModels = fileContent(directory.path("line.m1d"));
    }

    /// An inverted project on the disk and in memory; half of it is to be written.
    void layOut() {
        fs::remove_all(directory.path("d"));
        fs::create_directory(directory.path("d"));
        path = directory.path("d/line.std");
        modelPath = directory.path("d/line.m1d");
        putFile(path, oldProject);
        putFile(modelPath, oldModels);
        model = SurveyModel{};
        ASSERT_EQ(STD_File_Read(model, path), 0);
        ASSERT_EQ(M1D_File_Read(model, modelPath), 0);
        model.control.JobName = "changed";
        model.SoundingCount = 2;
        messages.errors.clear();
    }

    std::set<std::string> filesThere() const {
        std::set<std::string> names;
        for (const auto &entry : fs::directory_iterator(directory.path("d"))) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }

    /// What an undisturbed write leaves.
    void noteGoodWrite(const std::function<WriteOutcome()> &write) {
        layOut();
        ASSERT_TRUE(write().written);
        newProject = fileContent(path);
        newModels = fileContent(modelPath);
        newFiles = filesThere();
    }

    std::string oldProject, oldModels;
    std::string newProject, newModels;
    std::set<std::string> newFiles;
    std::string modelPath;
};

TEST_F(FileFaults, AFailingCallLeavesOldOrNewAndIsTold) {
    const struct {
        const char *what;
        std::function<WriteOutcome()> write;
        int leastCalls;
    } cases[] = {
        {"project", [&] { return STD_File_Write(model, path); }, 15},
        {"models", [&] { return M1D_File_Write(model, modelPath); }, 10},
        {"both", [&] { return Project_Files_Write(model, path); }, 20},
    };
    for (const auto &c : cases) {
        noteGoodWrite(c.write);
        WriteOutcome outcome;
        const std::string reported = c.what == std::string("models") ? modelPath : path;
        const int calls = spoilEveryCall(
            FileFault::Fails, [&] { layOut(); }, [&] { outcome = c.write(); },
            [&](const SpoiledCall &spoiled) {
                EXPECT_EQ(fileContent(path), outcome.written ? newProject : oldProject)
                    << c.what << ": " << spoiled.text();
                EXPECT_EQ(fileContent(modelPath), outcome.written ? newModels : oldModels)
                    << c.what << ": " << spoiled.text();
                EXPECT_EQ(filesThere(), outcome.written
                                            ? newFiles
                                            : (std::set<std::string>{"line.m1d", "line.std"}))
                    << c.what << ": " << spoiled.text();
                if (!outcome.written) {
                    EXPECT_THAT(messages.errors,
                                testing::ElementsAre(
                                    StartsWith("ERROR while writing KELDRIN file|" + reported)))
                        << c.what << ": " << spoiled.text();
                }
                EXPECT_EQ(messages.errors.empty(), outcome.written)
                    << c.what << ": " << spoiled.text();
            });
        EXPECT_GE(calls, c.leastCalls) << c.what;
        spoilEveryCall(
            FileFault::EndsShort, [&] { layOut(); }, [&] { outcome = c.write(); },
            [&](const SpoiledCall &spoiled) {
                EXPECT_TRUE(outcome.written) << c.what << ": " << spoiled.text();
                EXPECT_EQ(filesThere(), newFiles) << c.what << ": " << spoiled.text();
            });
    }
}

#ifndef _WIN32
TEST_F(FileFaults, AKilledWriteLeavesWholeFilesAndTheNextOneCleansUp) {
    noteGoodWrite([&] { return Project_Files_Write(model, path); });
    const int kills = killAtEveryCall(
        [&] { layOut(); }, [&] { static_cast<void>(Project_Files_Write(model, path)); },
        [&](const SpoiledCall &spoiled) {
            const std::string project = fileContent(path);
            const std::string models = fileContent(modelPath);
            EXPECT_TRUE(project == oldProject || project == newProject) << spoiled.text();
            EXPECT_TRUE(models == oldModels || models == newModels) << spoiled.text();
            EXPECT_TRUE(project == oldProject || fileContent(path + "~") == oldProject)
                << spoiled.text();
            EXPECT_TRUE(models == oldModels || fileContent(modelPath + "~") == oldModels)
                << spoiled.text();
            EXPECT_TRUE(writeWholeFile(directory.path("d/note.txt"), "x").written);
            for (const std::string &name : filesThere()) {
                EXPECT_EQ(name.find(".part"), std::string::npos) << name << " " << spoiled.text();
            }
        });
    EXPECT_GE(kills, 20);
}
#endif

TEST_F(FileFaults, AModelFileThatCannotBeReadToItsEndIsKeptByTheNextSave) {
    bool wasTold = false;
    layOut();
    spoilEveryCall(
        FileFault::Fails,
        [&] {
            layOut();
            model.SoundingCount = 4;
        },
        [&] { static_cast<void>(M1D_File_Read(model, modelPath)); },
        [&](const SpoiledCall &spoiled) {
            wasTold = wasTold || !messages.errors.empty();
            ASSERT_TRUE(Project_Files_Write(model, path).written) << spoiled.text();
            const bool kept = fileContent(modelPath + "~") == oldModels;
            EXPECT_TRUE(kept || fileContent(modelPath) == oldModels) << spoiled.text();
        });
    EXPECT_TRUE(wasTold);
}

} // namespace
} // namespace keldrin
