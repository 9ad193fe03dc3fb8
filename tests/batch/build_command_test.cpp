#include "batch/command.h"
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
        for (const char *name : {"fixedloop.avg", "movingloop.avg", "movingloop.stn"}) {
            fs::copy(fs::path(SourceDirectory) / "examples" / name, name);
        }
    }
    ~BuildCommandTest() override { fs::current_path(before_); }

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
    putFile("fixedloop_8040N.err", "of an earlier run");
    EXPECT_EQ(build({"--line", "all", "fixedloop.avg"}), ExitOk);
    for (const char *line : {"fixedloop_8040N", "fixedloop_8225N"}) {
        EXPECT_TRUE(fs::exists(std::string(line) + ".std")) << line;
        EXPECT_TRUE(fs::exists(std::string(line) + ".log")) << line;
        EXPECT_FALSE(fs::exists(std::string(line) + ".err")) << line;
    }
    EXPECT_FALSE(fs::exists("fixedloop.log"));
    EXPECT_FALSE(fs::exists("keldrin.log"));
}

TEST_F(BuildCommandTest, OneFailureFailsTheRunButNotTheOthers) {
    fs::create_directory("other");
    fs::copy("movingloop.avg", "other/movingloop.avg");
    EXPECT_EQ(build({"--out", "made", "missing.avg", "movingloop.avg", "other/movingloop.avg"}),
              ExitFailed);
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
