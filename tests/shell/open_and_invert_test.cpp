#include "messages/message_log.h"
#include "shell/invert.h"
#include "shell/open_project.h"
#include "support/files.h"
#include "support/message_recorder.h"
#include "support/temporary_directory.h"
#include "toolkit/child_process.h"
#include "toolkit/scripted/answering_backend.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// A toolkit whose child process is a function and whose chooser gives one file.
class EngineBackend : public AnsweringBackend {
  public:
    RunResult run(const std::vector<std::string> &command, const ChildWatch & /*watch*/) override {
        commands.push_back(command);
        return engine ? engine(command) : RunResult{};
    }
    std::optional<std::string> chooseFile(const FileRequest & /*request*/) override {
        ++choosers;
        return choice;
    }

    std::function<RunResult(const std::vector<std::string> &)> engine;
    std::vector<std::vector<std::string>> commands;
    std::optional<std::string> choice;
    int choosers = 0;
};

constexpr std::string_view Head = "&KELDRIN SurveyType='In-Loop' TEMUnits='nV/Am2'\n/\n"
                                  "Station,East,North,Elevation,TWcenter,TWwidth,TEMobs,TEMerr,"
                                  "AResObs\n";
constexpr std::string_view InvertedModels = "Station,Zinv,ResInv\n"
                                            "100,50,9\n100,49,9\n100,47,8\n150,50,9\n150,49,7\n";

class OpenAndInvert : public testing::Test {
  protected:
    OpenAndInvert() {
        ToolkitInit(backend, {"keldrin"});
        putFile(path, project("100", "30") + "150,1,2,50,0.1,0.02,5,3,30\n");
        putFile(directory.path("line.m1d"), InvertedModels);
    }
    ~OpenAndInvert() override { ToolkitClose(); }

    static std::string project(std::string_view station, std::string_view resistivity) {
        return std::string(Head) + std::string(station) + ",1,2,50,0.1,0.02,5,3," +
               std::string(resistivity) + "\n";
    }

    TemporaryDirectory directory;
    MessageRecorder messages;
    EngineBackend backend;
    SurveyModel model;
    std::string path = directory.path("line.std");
};

TEST_F(OpenAndInvert, OpeningReadsTheModelsBesideTheProject) {
    ASSERT_EQ(OpenProject(model, path), 0);
    EXPECT_EQ(model.hTrn[0].NumLayer, 2);
    EXPECT_EQ(model.hTrn[1].NumLayer, 1);
    EXPECT_THAT(messages.infos, Not(Contains(HasSubstr("ARes done")))) << "the file has them";
    std::filesystem::remove(directory.path("line.m1d"));
    ASSERT_EQ(OpenProject(model, path), 0) << "no model file is normal";
    EXPECT_EQ(model.hTrn[0].NumLayer, 0) << "nothing stays of the project before";
    EXPECT_THAT(messages.errors, IsEmpty());
}

TEST_F(OpenAndInvert, OneMissingResistivityHasTheWholeTableComputed) {
    putFile(path, project("100", "30") + "150,1,2,50,0.1,0.02,5,3,\n");
    ASSERT_EQ(OpenProject(model, path), 0);
    EXPECT_THAT(messages.infos, Contains("Stn 1/2 ARes done"));
    EXPECT_NE(model.hTrn[0].AResObs[0], 30.0F);
    EXPECT_GT(model.hTrn[1].AResObs[0], 0.0F);
}

TEST_F(OpenAndInvert, AProjectThatCannotBeReadLosesTheOldOne) {
    ASSERT_EQ(OpenProject(model, path), 0);
    putFile(path, "no project");
    EXPECT_EQ(OpenProject(model, path), 1);
    EXPECT_EQ(model.SoundingCount, 0);
    EXPECT_THAT(messages.infos, Not(Contains("1 layered-models read from line.m1d")));
}

TEST_F(OpenAndInvert, TheEngineGetsTheTrimmedPathAsItsOnlyArgument) {
    const std::string spaced = directory.path("a line $(x).STD");
    std::filesystem::rename(path, spaced);
    path = spaced + "  ";
    EXPECT_EQ(Invert(model, path), 0);
    EXPECT_THAT(backend.commands, ElementsAre(ElementsAre("rkeldrin", spaced)));
    for (const std::string name : {"", "line", "line.avg", "line.std/x", ".std"}) {
        backend.commands.clear();
        model.SoundingCount = 1;
        std::string other = name;
        EXPECT_EQ(Invert(model, other), 0) << name;
        EXPECT_THAT(backend.commands, IsEmpty()) << name;
        EXPECT_EQ(model.SoundingCount, 1) << "nothing ran, nothing is lost";
    }
}

TEST_F(OpenAndInvert, WhatTheDiskHoldsReplacesTheModel) {
    ASSERT_EQ(OpenProject(model, path), 0);
    model.hTrn[0].TEMerr[0] =
        1003.0F; // never written, so neither the engine nor the reload sees it
    backend.engine = [this](const auto & /*command*/) {
        putFile(directory.path("line.m1d"), "Station,Zinv,ResInv\n100,50,9\n100,45,4\n");
        return RunResult{3, 0, 0};
    };
    EXPECT_EQ(Invert(model, path), 0);
    EXPECT_EQ(model.hTrn[0].TEMerr[0], 3.0F);
    EXPECT_EQ(model.hTrn[0].ThkInv[0], 10.0F);
    EXPECT_EQ(model.hTrn[1].NumLayer, 0);
    const std::string kept = directory.path("line.std~");
    EXPECT_THAT(messages.errors,
                ElementsAre("ERROR: rkeldrin ended with exit code 3.|Before: 2 soundings, 2 "
                            "windows, 2 models; now: 2 soundings, 2 windows, 1 models.|What was "
                            "there before the inversion is kept as|line.std~|line.m1d~"));
    EXPECT_THAT(messages.infos, Contains("rkeldrin ended with exit code 3."));
    EXPECT_TRUE(std::filesystem::exists(kept));
}

TEST_F(OpenAndInvert, AFailureThatChangedNothingKeepsNoCopy) {
    const struct {
        RunResult result;
        const char *told;
    } cases[] = {
        {{3, 0, 0, false, false, 0}, "ERROR: rkeldrin ended with exit code 3."},
        {{137, 0, 0, false, false, 9}, "ERROR: rkeldrin was ended by signal 9."},
    };
    for (const auto &c : cases) {
        messages.errors.clear();
        backend.engine = [&c](const auto & /*command*/) {
            return c.result;
        };
        EXPECT_EQ(Invert(model, path), 0);
        EXPECT_THAT(messages.errors,
                    ElementsAre(std::string(c.told) + "|The project is as it was before."));
        EXPECT_FALSE(std::filesystem::exists(directory.path("line.std~")));
    }
}

TEST_F(OpenAndInvert, AProjectThatIsNotOnTheDiskIsNotInverted) {
    ASSERT_EQ(OpenProject(model, path), 0);
    std::filesystem::remove(path);
    EXPECT_EQ(Invert(model, path), 0);
    EXPECT_THAT(backend.commands, IsEmpty());
    EXPECT_EQ(model.SoundingCount, 2) << "what is in memory is all there is";
    EXPECT_THAT(messages.errors, ElementsAre(HasSubstr("not on the disk")));
}

TEST_F(OpenAndInvert, ANameIsNeverTakenForAnOption) {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(directory.path());
    std::filesystem::copy(path, "-line.std");
    std::string dashed = "-line.std";
    EXPECT_EQ(Invert(model, dashed), 0);
    std::filesystem::current_path(before);
    EXPECT_THAT(backend.commands, ElementsAre(ElementsAre("rkeldrin", "./-line.std")));
    EXPECT_EQ(dashed, "-line.std");
}

TEST_F(OpenAndInvert, ARunThatFailedIsToldAndTheFilesAreLoadedAgain) {
    const std::string start = "OS command \"rkeldrin " + path + "\"|";
    const struct {
        RunResult result;
        std::vector<std::string> told;
    } cases[] = {
        {{0, ErrorCannotRun, 2, false},
         {start +
          "generated an operating-system error = 2|It was looked for in the directories of "
          "PATH, then in " +
          programDirectory("keldrin")}},
        {{0, ErrorCannotRun, 0, false}, {}},
        {{0, 7, 2, false}, {start + "generated a toolkit error = 7"}},
    };
    for (const auto &c : cases) {
        backend.engine = [&c](const auto & /*command*/) {
            return c.result;
        };
        messages.errors.clear();
        model.SoundingCount = 0;
        EXPECT_EQ(Invert(model, path), 0);
        EXPECT_EQ(model.SoundingCount, 2);
        EXPECT_EQ(messages.errors, c.told);
        EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0) << "taken, so that it is nobody else's";
    }
}

TEST_F(OpenAndInvert, AProjectThatIsGoneCanBeChosenAnew) {
    backend.engine = [this](const auto & /*command*/) {
        std::filesystem::remove(path);
        return RunResult{};
    };
    backend.choice = directory.path("second.std");
    putFile(*backend.choice, project("7", "30"));
    EXPECT_EQ(Invert(model, path), 0);
    EXPECT_EQ(path, *backend.choice);
    EXPECT_EQ(model.hTrn[0].Station, 7.0);
    backend.choice.reset();
    EXPECT_EQ(Invert(model, path), 1) << "declined";
    EXPECT_EQ(backend.choosers, 2);
    EXPECT_EQ(model.SoundingCount, 0);
    EXPECT_EQ(path, directory.path("second.std")) << "to try again by Open";
}

/// The search path for the length of a test.
class SearchPath {
  public:
    explicit SearchPath(const std::string &path) { ::setenv("PATH", path.c_str(), 1); }
    SearchPath(const SearchPath &) = delete;
    SearchPath &operator=(const SearchPath &) = delete;
    ~SearchPath() { ::setenv("PATH", before_.c_str(), 1); }

  private:
    std::string before_ = std::getenv("PATH");
};

TEST_F(OpenAndInvert, TheEngineIsFoundOnTheSearchPathThenBesideTheProgram) {
    const auto install = [this](const std::string &folder, int code) {
        std::filesystem::create_directory(directory.path(folder));
        const std::string engine = directory.path(folder + "/rkeldrin");
        putFile(engine, "#!/bin/sh\nexit " + std::to_string(code) + "\n");
        std::filesystem::permissions(engine, std::filesystem::perms::owner_all);
    };
    install("searched", 11);
    install("own", 12);
    putFile(directory.path("rkeldrin"), "not a program");
    const std::string own = directory.path("own/");
    const std::vector<std::string> command = {EngineName, path};
    {
        const SearchPath searched(directory.path() + ":" + directory.path("searched"));
        EXPECT_EQ(runChild(command, own).exitCode, 11);
    }
    {
        const std::filesystem::path before = std::filesystem::current_path();
        std::filesystem::current_path(directory.path("searched"));
        for (const char *relative : {"", ".", ":", ".:/nowhere", "../searched"}) {
            const SearchPath here(relative);
            EXPECT_EQ(runChild(command, "").systemError, ENOENT) << relative;
        }
        std::filesystem::current_path(before);
    }
    const SearchPath nowhere(directory.path());
    EXPECT_EQ(runChild(command, own).exitCode, 12);
    EXPECT_EQ(runChild(command, directory.path()).systemError, ENOENT);
}

} // namespace
} // namespace keldrin
