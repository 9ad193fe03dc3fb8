#include "base/clock.h"
#include "program/batch/command.h"
#include "support/failing_files.h"
#include "support/files.h"
#include "support/source_directory.h"
#include "support/temporary_directory.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {
namespace {

namespace fs = std::filesystem;

// The command runs in a directory of its own that holds the example surveys.
class BuildCommandTest : public testing::Test {
  protected:
    BuildCommandTest() : before_(fs::current_path()) {
        fs::current_path(directory_.path());
        for (const char *name :
             {"fixedloop.avg", "movingloop.avg", "movingloop.stn", "movingloop.mde"}) {
            copyExample(name);
        }
    }
    ~BuildCommandTest() override { fs::current_path(before_); }

    static void copyExample(const char *name) {
        fs::copy(fs::path(SourceDirectory) / "examples" / name, name);
    }
    static int build(const std::vector<std::string_view> &words) { return buildCommand(words); }

  private:
    TemporaryDirectory directory_;
    fs::path before_;
};

TEST_F(BuildCommandTest, MessagesLieBesideTheProjectUnderItsName) {
    putFile("movingloop.avg", fileContent("movingloop.avg") + "$ Tx.Foo = 1\n");
    EXPECT_EQ(build({"movingloop.avg"}), ExitOk);
    EXPECT_TRUE(fs::exists("movingloop.std"));
    EXPECT_TRUE(fs::exists("movingloop.log"));
    EXPECT_THAT(fileContent("movingloop.err"), testing::HasSubstr("Did not recognize keyword"));
    putFile("fixedloop_8040N.err", " keldrin v4.00i\n\n of an earlier run\n");
    EXPECT_EQ(build({"--line", "all", "fixedloop.avg"}), ExitOk);
    for (const char *line : {"fixedloop_8040N", "fixedloop_8225N"}) {
        EXPECT_TRUE(fs::exists(std::string(line) + ".std")) << line;
        EXPECT_TRUE(fs::exists(std::string(line) + ".log")) << line;
        EXPECT_FALSE(fs::exists(std::string(line) + ".err")) << line;
    }
    EXPECT_FALSE(fs::exists("fixedloop.log"));
    EXPECT_FALSE(fs::exists("keldrin.log"));
}

TEST_F(BuildCommandTest, NothingOfTheUsersOrOfTheSameRunIsReplaced) {
    std::string twice = fileContent("fixedloop.avg");
    for (std::size_t at = 0; (at = twice.find("8040N", at)) != std::string::npos; ++at) {
        twice.replace(at, 5, "A/1");
    }
    for (std::size_t at = 0; (at = twice.find("8225N", at)) != std::string::npos; ++at) {
        twice.replace(at, 5, "A-1");
    }
    putFile("twice.avg", twice);
    putFile("twice.log", "my own notes of the day\n");
    putFile("twice_A-1.log", "more notes\n");
    putFile("twice_A-1.err", "known faults of the coil\n");
    EXPECT_EQ(build({"--line", "all", "twice.avg"}), ExitOk);
    EXPECT_TRUE(fs::exists("twice_A-1.std"));
    EXPECT_TRUE(fs::exists("twice_A-1_2.std"));
    EXPECT_NE(fileContent("twice_A-1.std"), fileContent("twice_A-1_2.std"));
    EXPECT_EQ(fileContent("twice.log"), "my own notes of the day\n");
    EXPECT_EQ(fileContent("twice_A-1.log~"), "more notes\n");
    EXPECT_EQ(fileContent("twice_A-1.err"), "known faults of the coil\n");
}

TEST_F(BuildCommandTest, AnEarlierProjectOfOtherDataIsKeptWithItsModels) {
    EXPECT_EQ(build({"movingloop.avg"}), ExitOk);
    std::string edited = fileContent("movingloop.std");
    edited.replace(edited.find("JobName=\""), 9, "JobName=\"Edited ");
    putFile("movingloop.std", edited);
    putFile("movingloop.m1d", "models\n");
    EXPECT_EQ(build({"movingloop.avg"}), ExitOk);
    EXPECT_EQ(fileContent("movingloop.std~"), edited);
    EXPECT_EQ(fileContent("movingloop.m1d~"), "models\n");
    EXPECT_FALSE(fs::exists("movingloop.m1d"));
}

TEST_F(BuildCommandTest, AFailingCallLeavesOldOrNewAndFailsTheRun) {
    fixClock(DateTime{2021, 5, 14, 9, 30, 0});
    copyExample("inloop.avg");
    copyExample("inloop.mde");
    EXPECT_EQ(build({"inloop.avg"}), ExitOk);
    const std::string good = fileContent("inloop.std");
    const std::string old = "an old project\n1,2,3\n";
    int code = ExitOk;
    const int calls = spoilEveryCall(
        FileFault::Fails,
        [&] {
            for (const char *name : {"inloop.std~", "inloop.err", "inloop.log"}) {
                fs::remove(name);
            }
            putFile("inloop.std", old);
        },
        [&] { code = build({"inloop.avg"}); },
        [&](const SpoiledCall &spoiled) {
            const std::string left = fileContent("inloop.std");
            EXPECT_TRUE(left == old || fileContent("inloop.std~") == old) << spoiled.text();
            EXPECT_TRUE(left != old || code == ExitFailed) << spoiled.text();
            // A side file that cannot be read leaves another project, and fails the run.
            EXPECT_TRUE(left == good || code == ExitFailed) << spoiled.text();
            EXPECT_TRUE(left == old || left == good || fs::exists("inloop.err")) << spoiled.text();
            for (const auto &entry : fs::directory_iterator(".")) {
                const std::string name = entry.path().filename().string();
                EXPECT_NE(name.substr(0, 9), ".keldrin-") << name << ": " << spoiled.text();
            }
        });
    fixClock({});
    EXPECT_GE(calls, 15);
}

TEST_F(BuildCommandTest, AFileWithoutItsChannelFileSaysSo) {
    fs::copy(fs::path(SourceDirectory) / "examples" / "amira_nt.tem", "amira_nt.tem");
    testing::internal::CaptureStdout();
    EXPECT_EQ(build({"amira_nt.tem"}), ExitFailed);
    EXPECT_THAT(testing::internal::GetCapturedStdout(),
                testing::HasSubstr("FAILED: WARNING: Could not find channel file amira_nt.chn"));
}

// A directory in the place of a side file is there and cannot be read.
TEST_F(BuildCommandTest, AnUnreadableSideFileIsNamedAndFailsTheRun) {
    for (const char *extension : {".avg", ".stn", ".mde"}) {
        fs::copy(fs::path(SourceDirectory) / "examples" / ("inloop" + std::string(extension)),
                 "inloop" + std::string(extension));
    }
    for (const char *side : {"inloop.stn", "inloop.mde"}) {
        const std::string content = fileContent(side);
        fs::remove(side);
        fs::create_directory(side);
        testing::internal::CaptureStdout();
        EXPECT_EQ(build({"inloop.avg"}), ExitFailed) << side;
        EXPECT_THAT(testing::internal::GetCapturedStdout(),
                    testing::HasSubstr(std::string(", FAILED to read ") + side));
        EXPECT_TRUE(fs::exists("inloop.std"));
        fs::remove(side);
        putFile(side, content);
    }
    EXPECT_EQ(build({"inloop.avg"}), ExitOk);
}

TEST_F(BuildCommandTest, FilesOfOneNameGetNamesOfTheirOwn) {
    for (const char *directory : {"a", "b", "c", "d"}) {
        fs::create_directory(directory);
        fs::copy("movingloop.avg", std::string(directory) + "/line.avg");
    }
    putFile("c/line.avg", "no data\n");
    EXPECT_EQ(build({"a/line.avg", "b/line.avg", "c/line.avg", "d/line.avg", "--out", "made"}),
              ExitFailed);
    EXPECT_TRUE(fs::exists("made/line.std"));
    EXPECT_TRUE(fs::exists("made/line_2.std"));
    EXPECT_FALSE(fs::exists("made/line_3.std"));
    EXPECT_THAT(fileContent("made/line_3.err"), testing::HasSubstr("found no TEM data"));
    EXPECT_TRUE(fs::exists("made/line_4.std"));
}

TEST_F(BuildCommandTest, OneFailureFailsTheRunButNotTheOthers) {
    EXPECT_EQ(build({"--out", "made", "missing.avg", "movingloop.avg"}), ExitFailed);
    EXPECT_TRUE(fs::exists("made/movingloop.std"));
    EXPECT_TRUE(fs::exists("made/missing.err"));
    EXPECT_EQ(build({"--line", "3", "fixedloop.avg"}), ExitFailed);
    EXPECT_EQ(build({"--line", "0", "fixedloop.avg"}), ExitUsage);
    EXPECT_EQ(build({"--speed", "fixedloop.avg"}), ExitUsage);
    EXPECT_EQ(build({"--out"}), ExitUsage);
    EXPECT_EQ(build({}), ExitUsage);
}

} // namespace
} // namespace keldrin
