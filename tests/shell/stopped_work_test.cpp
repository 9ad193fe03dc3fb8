#include "messages/message_log.h"
#include "shell/engine_dialog.h"
#include "shell/invert.h"
#include "shell/new_model.h"
#include "shell/open_project.h"
#include "support/files.h"
#include "support/message_recorder.h"
#include "support/source_directory.h"
#include "support/temporary_directory.h"
#include "support/work_backend.h"
#include "toolkit/child_process.h"
#include "toolkit/user_edits.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <map>
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
using testing::SizeIs;

const std::string StoppedExamples = std::string(SourceDirectory) + "/examples/";

/// More than a reader takes from the disk at once.
std::string manyComments() {
    std::string text;
    for (int i = 0; i < 20000; ++i) {
        text += "! nothing of interest stands in this line\n";
    }
    return text;
}

int missingResistivities(const SurveyModel &model) {
    const auto first = model.hTrn.begin();
    return static_cast<int>(
        std::count_if(first, first + model.SoundingCount,
                      [](const SoundingRecord &s) { return !isPresent(s.AResObs[0]); }));
}

/// A toolkit whose user stops things, and whose engine is a shell script.
class StopBackend : public WorkBackend {
  public:
    RunResult run(const std::vector<std::string> &command, const ChildWatch &watch) override {
        return runChild(command, engineDirectory, watch);
    }
    void setStatus(StatusPart part, std::string_view text) override { status[part] = text; }

    std::string engineDirectory;
    std::map<StatusPart, std::string> status;
};

class StoppedWork : public testing::Test {
  protected:
    StoppedWork() {
        ToolkitInit(backend, {directory.path("keldrin")});
        WorkBackend::noticeEveryStep();
    }
    ~StoppedWork() override { ToolkitClose(); }

    /// Stops the work of this number, from 1, at its first step.
    void stopWork(std::size_t number) {
        backend.works.clear();
        backend.stops = [this, number](int) {
            return backend.works.size() == number;
        };
    }
    int build(const std::string &name = "inloop.avg") {
        path = directory.path(name);
        return BuildNewModel(model, path);
    }
    /// An example survey with a pause in its middle, in which it can be stopped.
    void putLongSurvey(const std::string &name, const std::string &pause) {
        std::string text = fileContent(StoppedExamples + name);
        text.insert(text.find('\n', text.size() / 2) + 1, pause);
        putFile(directory.path(name), text);
    }

    TemporaryDirectory directory;
    MessageRecorder messages;
    StopBackend backend;
    SurveyModel model;
    std::string path;
};

TEST_F(StoppedWork, ANewModelIsWrittenWithTheResistivitiesThatAreDone) {
    std::filesystem::copy(StoppedExamples + "inloop.avg", directory.path("inloop.avg"));
    backend.stopAtStep(5);
    ASSERT_EQ(build(), 0);
    EXPECT_EQ(model.SoundingCount, 24);
    EXPECT_EQ(missingResistivities(model), 19);
    EXPECT_THAT(messages.infos, Contains(HasSubstr("stopped: 5 of 24 soundings are done.")));
    EXPECT_THAT(messages.errors, IsEmpty());
    backend.stops = {};
    ASSERT_EQ(OpenProject(model, path), 0);
    EXPECT_EQ(missingResistivities(model), 0) << "computed by the next opening";
}

TEST_F(StoppedWork, AnOpenedProjectKeepsTheResistivitiesThatAreDone) {
    std::filesystem::copy(StoppedExamples + "inloop.avg", directory.path("inloop.avg"));
    backend.stopAtStep(1);
    ASSERT_EQ(build(), 0);
    backend.stopAtStep(static_cast<int>(backend.fractions.size()) + 7);
    ASSERT_EQ(OpenProject(model, path), 0);
    EXPECT_EQ(model.SoundingCount, 24);
    EXPECT_EQ(missingResistivities(model), 17);
    EXPECT_EQ(backend.works.back().caption, "Computing apparent resistivities");
}

TEST_F(StoppedWork, AtTheVeryLastSoundingNothingIsMissing) {
    std::filesystem::copy(StoppedExamples + "inloop.avg", directory.path("inloop.avg"));
    backend.stopAtStep(24);
    ASSERT_EQ(build(), 0);
    EXPECT_EQ(missingResistivities(model), 0);
    EXPECT_THAT(messages.infos, Not(Contains(HasSubstr("stopped"))));
}

TEST_F(StoppedWork, HalfAFieldDataFileIsNoSurvey) {
    const struct {
        std::string name;
        std::string pause;
        int soundings;
    } surveys[] = {
        {"inloop.avg", manyComments(), 24},
        {"coincident.z", std::string(800000, '\n'), 15},
        {"amira_nt.tem", std::string(800000, '\n'), 25},
    };
    std::filesystem::copy(StoppedExamples + "amira_nt.chn", directory.path("amira_nt.chn"));
    for (const auto &survey : surveys) {
        putLongSurvey(survey.name, survey.pause);
        const std::string project =
            directory.path(survey.name.substr(0, survey.name.find('.'))) + ".std";
        putFile(project, "old project\n");
        for (const std::size_t pass : {1U, 2U}) {
            stopWork(pass);
            messages.infos.clear();
            messages.errors.clear();
            EXPECT_EQ(build(survey.name), 1) << survey.name << ", pass " << pass;
            EXPECT_THAT(backend.works, SizeIs(pass));
            EXPECT_EQ(backend.works.back().caption, "Reading " + survey.name);
            EXPECT_EQ(model.SoundingCount, 0);
            EXPECT_EQ(path, "");
            EXPECT_EQ(fileContent(project), "old project\n");
            EXPECT_THAT(messages.infos, Contains("Reading of " + survey.name +
                                                 " was stopped; nothing of it is used.")
                                            .Times(1));
            EXPECT_THAT(messages.errors, IsEmpty()) << "the caller reports";
        }
        backend.stops = {};
        EXPECT_EQ(build(survey.name), 0);
        EXPECT_EQ(model.SoundingCount, survey.soundings);
    }
}

TEST_F(StoppedWork, HalfAProjectIsNoProject) {
    putLongSurvey("inloop.avg", "");
    ASSERT_EQ(build(), 0);
    const std::string project = fileContent(path);
    putFile(path, project + manyComments());
    const std::string station = std::to_string(model.hTrn[0].Station);
    putFile(directory.path("inloop.m1d"),
            "Station,Zinv,ResInv\n" + station + ",50,9\n" + station + ",49,9\n" + manyComments());
    for (const std::size_t file : {1U, 2U}) {
        stopWork(file);
        messages.infos.clear();
        EXPECT_EQ(OpenProject(model, path), 1);
        EXPECT_THAT(backend.works, SizeIs(file));
        EXPECT_EQ(model.SoundingCount, 0);
        EXPECT_THAT(messages.infos, Contains(HasSubstr("was stopped; nothing of it is used.")));
        EXPECT_THAT(messages.errors, IsEmpty());
    }
    backend.stops = {};
    EXPECT_EQ(OpenProject(model, path), 0);
    EXPECT_EQ(model.hTrn[0].NumLayer, 1);
}

constexpr std::string_view StoppedProject =
    "&KELDRIN SurveyType='In-Loop' TEMUnits='nV/Am2'\n/\n"
    "Station,East,North,Elevation,TWcenter,TWwidth,TEMobs,TEMerr,"
    "AResObs\n"
    "100,1,2,50,0.1,0.02,5,3,30\n"
    "150,1,2,50,0.1,0.02,5,3,30\n";
constexpr std::string_view StoppedModels = "Station,Zinv,ResInv\n"
                                           "100,50,9\n100,49,9\n100,47,8\n150,50,9\n150,49,7\n";

class WatchedEngine : public StoppedWork {
  protected:
    WatchedEngine() {
        backend.engineDirectory = directory.path();
        path = directory.path("line.std");
        putFile(path, StoppedProject);
        putFile(directory.path("line.m1d"), StoppedModels);
        EXPECT_EQ(OpenProject(model, path), 0);
        messages.infos.clear();
        backend.works.clear();
    }

    int invertBy(const std::string &script) {
        const std::string engine = directory.path(EngineName);
        putFile(engine, "#!/bin/sh\ncd '" + directory.path() + "'\n" + script);
        std::filesystem::permissions(engine, std::filesystem::perms::owner_all);
        return Invert(model, path);
    }
    /// Stops the engine once it has said "ready".
    void stopWhenReady() {
        backend.stops = [this](int) {
            return !messages.infos.empty() && messages.infos.back() == "rkeldrin: ready";
        };
    }
    std::vector<std::string> filesThere() const {
        std::vector<std::string> names;
        for (const auto &entry : std::filesystem::directory_iterator(directory.path())) {
            if (entry.path().filename() != EngineName) {
                names.push_back(entry.path().filename().string());
            }
        }
        std::sort(names.begin(), names.end());
        return names;
    }
    std::string content(const std::string &name) const { return fileContent(directory.path(name)); }

    const std::string hang = "echo ready\nwhile :; do sleep 0.05; done\n";
};

TEST_F(WatchedEngine, ItsConsoleGoesToTheLog) {
    EXPECT_EQ(invertBy("echo reading\nprintf '10 %%\\r20 %%\\n' >&2\nprintf done\n"), 0);
    messages.infos.resize(3);
    EXPECT_THAT(messages.infos,
                ElementsAre("rkeldrin: reading", "rkeldrin: 20 %", "rkeldrin: done"));
    ASSERT_FALSE(backend.works.empty());
    EXPECT_EQ(backend.works[0].dialog, &EngineDialog);
    EXPECT_EQ(backend.works[0].words, "rkeldrin line.std");
    EXPECT_EQ(backend.fractions[0], -1.0) << "nobody knows how long it takes";
    EXPECT_THAT(filesThere(), ElementsAre("line.m1d", "line.std")) << "no copies are left";
}

TEST_F(WatchedEngine, StoppedWhatItHasLeftIsLoaded) {
    stopWhenReady();
    EXPECT_EQ(invertBy("sed 's/^150,50,9/150,50,9/; s/49,7/45,4/' line.m1d > new\n"
                       "mv new line.m1d\n" +
                       hang),
              0);
    EXPECT_EQ(model.hTrn[1].ThkInv[0], 10.0F);
    EXPECT_THAT(messages.infos.back(), "Inversion stopped; the project is as rkeldrin left it.");
    EXPECT_THAT(messages.errors, IsEmpty());
    EXPECT_THAT(filesThere(), ElementsAre("line.m1d", "line.std"));
}

TEST_F(WatchedEngine, StoppedInTheMiddleOfItsWritingTheProjectIsAsBefore) {
    const std::string_view scripts[] = {
        "head -c 40 line.std > half; cat half > line.std; rm half\n", // the control block
        "sed '$d' line.std > half; mv half line.std\n",               // a row is missing
        "head -c -9 line.std > half; mv half line.std\n",             // ends within a row
        "rm line.std\n",
        ": > line.m1d\n",
        "head -c 30 line.m1d > half; mv half line.m1d\n",
    };
    stopWhenReady();
    for (const std::string_view script : scripts) {
        messages.infos.clear();
        EXPECT_EQ(invertBy(std::string(script) + hang), 0) << script;
        EXPECT_EQ(content("line.std"), StoppedProject) << script;
        EXPECT_EQ(content("line.m1d"), StoppedModels) << script;
        EXPECT_EQ(model.SoundingCount, 2);
        EXPECT_THAT(messages.infos.back(), HasSubstr("the project is as it was before"));
        EXPECT_THAT(filesThere(), ElementsAre("line.m1d", "line.std")) << script;
    }
    EXPECT_THAT(messages.errors, IsEmpty());

    std::filesystem::remove(directory.path("line.m1d"));
    EXPECT_EQ(invertBy("echo Station, > line.m1d; : > line.std\n" + hang), 0);
    EXPECT_THAT(filesThere(), ElementsAre("line.std")) << "there was no model";
}

TEST_F(WatchedEngine, StoppedWithFewerModelsThanBeforeTheOldOnesAreKept) {
    stopWhenReady();
    EXPECT_EQ(invertBy("head -n 3 line.m1d > new; mv new line.m1d\n" + hang), 0);
    EXPECT_EQ(model.hTrn[0].NumLayer, 1);
    EXPECT_EQ(model.hTrn[1].NumLayer, 0);
    EXPECT_EQ(content("line.m1d~"), StoppedModels);
    EXPECT_THAT(messages.infos.back(), "Kept as it was before: line.std~, line.m1d~; Inversion "
                                       "stopped; the project is as rkeldrin left it.");
}

TEST_F(WatchedEngine, EndedByItselfWithTornFilesACopyIsKeptThatCanBeOpened) {
    EXPECT_EQ(invertBy("head -c -9 line.std > half; cat half > line.std; rm half\n"), 0);
    EXPECT_EQ(model.SoundingCount, 1) << "what the disk holds is loaded";
    std::string kept = directory.path("line.std~");
    EXPECT_THAT(messages.infos, Contains("line.std~"));
    EXPECT_EQ(OpenProject(model, kept), 0);
    EXPECT_EQ(model.SoundingCount, 2);
    EXPECT_EQ(model.hTrn[0].NumLayer, 2);

    EXPECT_EQ(invertBy(": > line.std\n"), 1);
    EXPECT_EQ(content("line.std~"), StoppedProject) << "it has more rows than what was torn later";
    EXPECT_TRUE(std::filesystem::exists(directory.path("line.std~2~")));
}

TEST_F(WatchedEngine, WhatWasKeptAndHowTheRunWentAreOneNotice) {
    EXPECT_EQ(invertBy("head -n 3 line.m1d > new; mv new line.m1d\n"
                       "echo '2 iterations, median misfit 0.7'\n"),
              0);
    EXPECT_EQ(messages.infos.back(),
              "Kept as it was before: line.std~, line.m1d~; 2 iterations, median misfit 0.7");
    EXPECT_THAT(messages.errors, ElementsAre(HasSubstr("left less than it found")));
}

TEST_F(WatchedEngine, ACloseRequestWaitsForItsEnd) {
    backend.stops = [](int step) {
        if (step == 1) {
            userAsksToClose();
        }
        return false;
    };
    EXPECT_EQ(invertBy("sleep 0.2; echo done\n"), 0);
    EXPECT_THAT(messages.infos, Contains("rkeldrin: done"));
    EXPECT_EQ(model.SoundingCount, 2) << "its files are loaded before the program ends";
    ToolkitEvent event;
    ToolkitNextEvent(event);
    EXPECT_EQ(event.type, EventClose);
}

TEST_F(WatchedEngine, IsMissedInTheStatusBar) {
    showEngineStatus();
    EXPECT_THAT(backend.status[StatusPart::Program], HasSubstr("rkeldrin was not found"));
    invertBy("exit 0\n");
    showEngineStatus();
    EXPECT_EQ(backend.status[StatusPart::Program], "") << "it stands beside the program";
}

} // namespace
} // namespace keldrin
