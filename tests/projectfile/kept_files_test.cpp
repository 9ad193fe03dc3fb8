// What a write keeps of the files in its place: one table of cases, after replace_files.h.

#include "projectfile/file_content.h"
#include "projectfile/model_file.h"
#include "projectfile/project_case.h"
#include "support/source_directory.h"

#include <filesystem>
#include <functional>
#include <set>

namespace keldrin {
namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

const std::string KeptExample = std::string(SourceDirectory) + "/examples/project/inloop";

class KeptFiles : public ProjectCase {
  protected:
    /// The example on the disk and in memory.
    void layOut() {
        fs::remove_all(directory.path("d"));
        fs::create_directory(directory.path("d"));
        path = directory.path("d/line.std");
        putFile(path, oldProject);
        putFile(modelsAt("line"), oldModels);
        model = SurveyModel{};
        ASSERT_EQ(STD_File_Read(model, path), 0);
        ASSERT_EQ(M1D_File_Read(model, modelsAt("line")), 0);
    }

    std::string modelsAt(std::string_view base) const {
        return directory.path("d/" + std::string(base) + ".m1d");
    }

    Names filesThere() const {
        Names names;
        for (const auto &entry : fs::directory_iterator(directory.path("d"))) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }

    std::string oldProject = fileContent(KeptExample + ".std");
    std::string oldModels = fileContent(KeptExample + ".m1d");
};

TEST_F(KeptFiles, WhatAWriteOfAProjectKeeps) {
    const Names plain = {"line.m1d", "line.std"};
    const Names copied = {"line.m1d", "line.m1d~", "line.std", "line.std~"};
    const Names moved = {"line.m1d~", "line.std", "line.std~"};
    const struct {
        const char *what;
        std::function<void()> change;
        Names left;
    } cases[] = {
        {"as it was", [] {}, plain},
        {"other values", [&] { model.hTrn[0].TEMerr[0] = 1003.0F; }, plain},
        {"fewer soundings", [&] { model.SoundingCount = 23; }, copied},
        {"fewer windows", [&] { --model.hTrn[3].NumTW; }, copied},
        {"data of no file",
         [&] {
             model.source = {};
             model.hTrn[0].TEMobs[0] = 7.0F;
         },
         moved},
        {"the same data of no file", [&] { model.source = {}; }, plain},
        {"changed since",
         [&] { putFile(path, fileContent(path) + "2150,1,1,1,2150,2150,1,1,1\n"); }, copied},
        {"gone since", [&] { fs::remove(path); }, plain},
        {"empty since", [&] { putFile(path, ""); }, {"line.m1d", "line.m1d~", "line.std"}},
        {"not whole when it was read",
         [&] {
             putFile(path, oldProject.substr(0, oldProject.size() - 40));
             EXPECT_EQ(STD_File_Read(model, path), 0);
         },
         copied},
        {"data of another file",
         [&] {
             std::string other = KeptExample + ".std";
             EXPECT_EQ(STD_File_Read(model, other), 0);
             model.control.JobName = "other";
         },
         moved},
    };
    for (const auto &c : cases) {
        layOut();
        c.change();
        const std::string before = fileContent(path);
        ASSERT_TRUE(STD_File_Write(model, path).written) << c.what;
        const Names left = filesThere();
        EXPECT_EQ(left, c.left) << c.what;
        if (left.count("line.std~") > 0) {
            EXPECT_EQ(fileContent(path + "~"), before) << c.what;
        }
        if (left.count("line.m1d~") > 0) {
            EXPECT_EQ(fileContent(modelsAt("line") + "~"), oldModels) << c.what;
        }
        ASSERT_TRUE(STD_File_Write(model, path).written) << c.what;
        EXPECT_EQ(filesThere(), left) << c.what << ", written again";
    }
}

TEST_F(KeptFiles, ANewProjectNeverMeetsTheModelsOfAnotherOne) {
    layOut();
    putFile(modelsAt("new"), "models of long ago\n1,2,3\n");
    const std::string project = directory.path("d/new.std");
    ASSERT_TRUE(Project_Files_Write(model, project).written);
    EXPECT_EQ(filesThere(), (Names{"line.m1d", "line.std", "new.m1d", "new.m1d~", "new.std"}));
    EXPECT_EQ(fileContent(modelsAt("new")), oldModels);
    EXPECT_EQ(model.source.project.path, fs::canonical(project).string());
}

TEST_F(KeptFiles, AKeptProjectIsOpenedWithTheModelsKeptWithIt) {
    EXPECT_EQ(modelPathOf("d/line.std~"), "d/line.m1d~");
    EXPECT_EQ(modelPathOf("d/line.std~12~"), "d/line.m1d~12~");
    EXPECT_EQ(modelPathOf("d/line.std"), "d/line.m1d");
    EXPECT_EQ(modelPathOf("d/line~.std"), "d/line~.m1d");
    EXPECT_EQ(modelPathOf("d/line.std12~"), "d/line.m1d~");
}

TEST_F(KeptFiles, AKeptFileGivesWayOnlyToOneWithAsManyRows) {
    layOut();
    const std::string more = oldProject + "2150,1,1,1,2150,2150,1,1,1\n";
    putFile(path + "~", more);
    model.SoundingCount = 20;
    WriteOutcome outcome = STD_File_Write(model, path);
    EXPECT_EQ(fileContent(path + "~"), more);
    EXPECT_EQ(fileContent(path + "~2~"), oldProject);
    EXPECT_THAT(outcome.kept, testing::Contains(path + "~2~"));
    EXPECT_THAT(messages.infos, testing::Contains(testing::HasSubstr("line.std~2~")));
    putFile(path + "~", oldProject);
    const std::string twenty = fileContent(path);
    model.SoundingCount = 10;
    outcome = STD_File_Write(model, path);
    EXPECT_EQ(fileContent(path + "~3~"), twenty);
    putFile(path + "~", "no rows\n");
    const std::string ten = fileContent(path);
    model.SoundingCount = 5;
    outcome = STD_File_Write(model, path);
    EXPECT_EQ(fileContent(path + "~"), ten);
}

TEST_F(KeptFiles, WhatAFileHoldsIsCountedAsItsReaderDoes) {
    layOut();
    const auto same = [](const FileContent &a, const FileContent &b) {
        return a.soundings == b.soundings && a.rows == b.rows && a.whole == b.whole &&
               a.announced == b.announced;
    };
    EXPECT_TRUE(same(projectContent(path), model.source.project.content));
    EXPECT_TRUE(same(modelContent(modelsAt("line")), model.source.models.content));
    EXPECT_EQ(model.source.project.content.soundings, 24);
    EXPECT_EQ(model.source.project.content.rows, 24 * 26);
    EXPECT_EQ(model.source.models.content.soundings, 24);
    EXPECT_FALSE(projectContent(directory.path()).whole);
    EXPECT_EQ(projectContent(directory.path("none.std")).rows, 0);
}

} // namespace
} // namespace keldrin
