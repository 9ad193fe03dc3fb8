#include "base/clock.h"
#include "projectfile/project_file.h"
#include "shell/main_loop.h"
#include "shell/new_model.h"

#include "conditioning/configuration_dialog.h"
#include "conditioning/data_input_dialog.h"
#include "shell/sounding_positions.h"
#include "support/failing_files.h"
#include "support/files.h"
#include "support/message_recorder.h"
#include "support/source_directory.h"
#include "support/temporary_directory.h"
#include "toolkit/control_ids.h"
#include "toolkit/scripted/answering_backend.h"
#include "toolkit/toolkit.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

namespace keldrin {
namespace {

using testing::HasSubstr;
using testing::SizeIs;

const std::string Examples = std::string(SourceDirectory) + "/examples/";

class NewModelTest : public testing::Test {
  protected:
    NewModelTest() {
        ToolkitInit(backend, {"test"});
        for (const char *name : {"inloop", "fixedloop", "movingloop"}) {
            for (const char *extension : {".avg", ".stn", ".mde"}) {
                take(std::string(name) + extension);
            }
        }
    }
    ~NewModelTest() override { ToolkitClose(); }

    void take(const std::string &example) const {
        std::filesystem::copy(Examples + example, directory.path(example));
    }
    int build(const std::string &name) {
        path = directory.path(name);
        return BuildNewModel(model, path);
    }

    TemporaryDirectory directory;
    MessageRecorder messages;
    AnsweringBackend backend;
    SurveyModel model;
    std::string path;
};

// The section has 12 ohm-m cover on 60 ohm-m and a 150 ohm-m basement at the first station.
TEST_F(NewModelTest, InLoopSurveyGivesTheResistivitiesOfItsEarth) {
    ASSERT_EQ(build("inloop.avg"), 0);
    EXPECT_EQ(path, directory.path("inloop.std"));
    ASSERT_EQ(model.SoundingCount, 24);
    const SoundingRecord &first = model.hTrn[0];
    EXPECT_EQ(first.Station, 1000.0); // rescaled by the survey information file
    EXPECT_EQ(first.East, 402000.0);
    EXPECT_EQ(first.Elevation, 312.0);
    EXPECT_EQ(first.NumTW, 26);
    EXPECT_NEAR(first.AResObs[0], 12.0F, 1.0F);
    EXPECT_NEAR(first.AResObs[17], 60.0F, 10.0F);
    EXPECT_TRUE(std::is_sorted(first.AResObs.begin(), first.AResObs.begin() + 20));
    EXPECT_EQ(model.control.TxRamp, 60.0F);
    EXPECT_EQ(model.control.TxAzimuth, 86.0F); // follows the line
    EXPECT_EQ(model.control.Header[1].view(), "Gravel Flat water survey  Line 4");
    EXPECT_EQ(model.control.Header[3].view(), "Data from inloop.avg");
    EXPECT_EQ(model.ModelLayerCount, nearestInt(3.47436F * std::log(10.5F / 0.0299998F)));
    EXPECT_THAT(messages.errors, SizeIs(0));
}

TEST_F(NewModelTest, AProjectThatCannotBeWrittenStaysInMemoryWithoutAPath) {
    for (const int number : {1, 2}) { // the trial at Continue, and the last write
        messages.errors.clear();
        WriteOutcome outcome;
        path = directory.path("inloop.avg");
        {
            const FailingFiles disk({FileCall::Sync, FileFault::Fails, number});
            EXPECT_EQ(BuildNewModel(model, path, {"", &outcome}), 0);
            EXPECT_TRUE(disk.struck());
        }
        EXPECT_FALSE(outcome.written);
        EXPECT_EQ(path, "");
        EXPECT_EQ(model.SoundingCount, 24);
        EXPECT_THAT(messages.errors, SizeIs(1)) << "told once";
        EXPECT_FALSE(std::filesystem::exists(directory.path("inloop.std")));
    }
}

TEST_F(NewModelTest, FixedLoopTakesPositionsFromTheDataAndKeepsItsLoopNumber) {
    backend.beforeAnswer = [](AnsweringBackend &user, int dialog) {
        if (dialog == DataInputDialog.number) {
            user.edit(1082, "#2");
        }
    };
    ASSERT_EQ(build("fixedloop.avg"), 0);
    ASSERT_EQ(model.SoundingCount, 20);
    EXPECT_EQ(model.hTrn[0].North, 8225.0); // and not that of the other line's station file
    EXPECT_EQ(model.hTrn[0].TxStn, 1.0);
    EXPECT_EQ(model.control.TxStn, 1.0);
    EXPECT_EQ(model.control.XTxCenter, 5000.0);
}

TEST_F(NewModelTest, MovingLoopIsPlottedAtTheMiddle) {
    ASSERT_EQ(build("movingloop.avg"), 0);
    ASSERT_EQ(model.SoundingCount, 18);
    EXPECT_EQ(model.hTrn[0].Station, 13.0); // of transmitter 10 and receiver 16
    EXPECT_NEAR(model.control.StnScale, 25.0F, 1e-3F);
}

// The same readings in two formats. One gives the edges of its windows, the other has to derive
// them, and rounds times and values.
TEST_F(NewModelTest, AReportFileGivesTheResistivitiesOfItsAveragedRecords) {
    for (const char *name : {"coincident", "coincident_avg"}) {
        take(std::string(name) + ".stn");
        take(std::string(name) + ".mde");
    }
    take("coincident.z");
    take("coincident_avg.avg");
    ASSERT_EQ(build("coincident_avg.avg"), 0);
    const std::vector<SoundingRecord> records = model.hTrn;
    ASSERT_EQ(build("coincident.z"), 0);
    ASSERT_EQ(model.SoundingCount, 15);
    EXPECT_EQ(model.control.LineName.view(), "C7");
    for (std::size_t i = 0; i < 15; ++i) {
        const SoundingRecord &report = model.hTrn[i];
        EXPECT_EQ(report.Station, records[i].Station);
        EXPECT_EQ(report.East, records[i].East);
        EXPECT_EQ(report.Elevation, records[i].Elevation); // both of the station file
        ASSERT_EQ(report.NumTW, 22);
        for (std::size_t w = 0; w < 22; ++w) {
            EXPECT_NEAR(report.AResObs[w], records[i].AResObs[w],
                        0.002F * std::fabs(records[i].AResObs[w]));
        }
    }
    EXPECT_THAT(messages.errors, SizeIs(0));
}

TEST_F(NewModelTest, AWrittenProjectReadAndWrittenAgainIsTheSame) {
    take("coincident.z");
    for (const char *name : {"inloop.avg", "fixedloop.avg", "movingloop.avg", "coincident.z"}) {
        fixClock(DateTime{2026, 5, 14, 9, 30, 0});
        ASSERT_EQ(build(name), 0);
        const std::string first = fileContent(path);
        SurveyModel again;
        ASSERT_EQ(STD_File_Read(again, path), 0);
        fixClock(DateTime{2027, 1, 1, 0, 0, 0});
        static_cast<void>(STD_File_Write(again, path));
        const std::string second = fileContent(path);
        EXPECT_EQ(first.substr(first.find('\n')), second.substr(second.find('\n'))) << name;
        EXPECT_NE(first.substr(0, first.find('\n')), second.substr(0, second.find('\n')));
    }
    fixClock({});
}

TEST_F(NewModelTest, WhatCannotBeBuiltLeavesNoSoundingNoPathAndNoFile) {
    std::filesystem::create_directory(directory.path("d.avg"));
    putFile(directory.path("empty.avg"), "");
    putFile(directory.path("x.zip"), "PK");
    for (const char *name : {"missing.avg", "d.avg", "empty.avg", "x.zip", "x.txt"}) {
        messages.errors.clear();
        EXPECT_EQ(build(name), 1) << name;
        EXPECT_EQ(path, "") << name;
        EXPECT_EQ(model.SoundingCount, 0) << name;
        EXPECT_FALSE(messages.errors.empty()) << name;
    }
    EXPECT_THAT(messages.errors.front(), HasSubstr("x.txt is not a recognizable data file."));
    backend.beforeAnswer = [](AnsweringBackend &user, int dialog) {
        if (dialog == ConfigurationDialog.number) {
            user.pressInstead(ButtonCancel);
        }
    };
    EXPECT_EQ(build("inloop.avg"), 1);
    EXPECT_EQ(model.SoundingCount, 0);
    EXPECT_FALSE(std::filesystem::exists(directory.path("inloop.std")));
}

TEST_F(NewModelTest, AWriteThatFailsIsToldAndKeepsTheOldFile) {
    std::filesystem::create_directory(directory.path("inloop.std"));
    EXPECT_EQ(build("inloop.avg"), 0);
    ASSERT_FALSE(messages.errors.empty());
    EXPECT_THAT(messages.errors.back(), HasSubstr("ERROR while writing KELDRIN file|"));
}

TEST(SoundingPositions, EndSegmentsCarryCoordinatesOnAndElevationIsHeld) {
    SurveyModel model;
    model.hTrn.resize(2);
    model.SoundingCount = 2;
    model.hTrn[0].RxStn = -10;
    model.hTrn[1].RxStn = 30;
    model.hTrn[1].East = 7;
    for (SoundingRecord &record : model.hTrn) {
        record.Elevation = MissingValue;
    }
    model.control.SurveyTypeIndex = InLoop;
    StationTable table;
    table.add(0, 100, 0, 5);
    table.add(10, 120, 1, 6);
    table.add(20, 160, 2, 9);
    positionSoundings(model, table);
    EXPECT_DOUBLE_EQ(model.hTrn[0].East, 80.0);
    EXPECT_DOUBLE_EQ(model.hTrn[0].Elevation, 5.0);
    EXPECT_EQ(model.hTrn[1].East, 7.0); // what the data gave stays
    EXPECT_DOUBLE_EQ(model.hTrn[1].North, 3.0);
    EXPECT_DOUBLE_EQ(model.hTrn[1].Elevation, 9.0);
}

TEST(RootWindow, IsLimitedByTheScreenInBothDirections) {
    EXPECT_EQ(rootWindowSize(1600, 1000).width, 1062);
    EXPECT_EQ(rootWindowSize(1600, 1000).height, 850);
    EXPECT_EQ(rootWindowSize(600, 1000).width, 600);
    EXPECT_EQ(rootWindowSize(600, 1000).height, 480);
}

} // namespace
} // namespace keldrin
