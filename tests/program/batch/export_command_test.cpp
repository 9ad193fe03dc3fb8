#include "program/batch/command.h"

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

using testing::HasSubstr;
using testing::StartsWith;

/// What the command gave.
struct Outcome {
    int code = 0;
    std::string out;
    std::string err;
};

class ExportCommandTest : public testing::Test {
  protected:
    ExportCommandTest() {
        fs::copy_file(std::string(SourceDirectory) + "/examples/project/inloop.std", line);
        fs::copy_file(std::string(SourceDirectory) + "/examples/project/inloop.m1d",
                      directory.path("line.m1d"));
        fs::copy_file(std::string(SourceDirectory) + "/tests/scenarios/data/pair.std", pair);
    }
    static Outcome run(const std::vector<std::string> &words) {
        const std::vector<std::string_view> views(words.begin(), words.end());
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        Outcome outcome;
        outcome.code = exportTablesCommand(views);
        outcome.out = testing::internal::GetCapturedStdout();
        outcome.err = testing::internal::GetCapturedStderr();
        return outcome;
    }

    TemporaryDirectory directory;
    std::string line = directory.path("line.std");
    std::string pair = directory.path("pair.std"); ///< two soundings without models
};

TEST_F(ExportCommandTest, WritesOneLineForEachProject) {
    const std::string project = fileContent(line);
    const Outcome both = run({"--format", "csv,gdf2", line, pair});
    EXPECT_EQ(both.code, ExitOk);
    EXPECT_THAT(both.out, StartsWith(line + ": 24 soundings, 624 windows, 528 layers, 5 files\n" +
                                     pair + ": 2 soundings, "));
    EXPECT_EQ(fileContent(line), project);
    const Outcome beside = run({"--format", "vtk", "--out", directory.path("made/here"), line});
    EXPECT_EQ(beside.out, line + ": 24 soundings, 624 windows, 528 layers, 1 files\n");
    EXPECT_TRUE(fs::exists(directory.path("made/here/line.vtk")));
    EXPECT_FALSE(fs::exists(directory.path("line.vtk")));
}

TEST_F(ExportCommandTest, OneFailureSetsTheExitCodeAndTheOthersAreDone) {
    const std::string none = directory.path("none.std");
    const Outcome outcome = run({"--format", "csv,vtk", none, pair, line, line});
    EXPECT_EQ(outcome.code, ExitFailed);
    EXPECT_THAT(outcome.out, HasSubstr(none + ": FAILED: there is no such file\n"));
    EXPECT_THAT(outcome.out, HasSubstr(", 3 files, FAILED: ERROR: no VTK curtain: no sounding has "
                                       "both a layered model and a position\n"));
    EXPECT_THAT(outcome.out, HasSubstr("528 layers, 4 files\n"));
    EXPECT_THAT(outcome.out,
                HasSubstr("FAILED: an earlier project has made files of these names\n"));
}

TEST_F(ExportCommandTest, TellsWhatIsWrongWithTheWords) {
    const auto fault = [](const std::vector<std::string> &words) {
        const Outcome outcome = run(words);
        EXPECT_EQ(outcome.code, ExitUsage);
        return outcome.err;
    };
    EXPECT_EQ(fault({"--format", "xls", line}), "keldrin-batch export: --format takes csv, gdf2 "
                                                "and vtk, with commas between them\n");
    EXPECT_EQ(fault({"--format"}), "keldrin-batch export: --format needs a value\n");
    EXPECT_EQ(fault({"--plan", line}), "keldrin-batch export: unknown option --plan\n");
    EXPECT_EQ(fault({"--format", "csv"}), "keldrin-batch export: no project is named\n");
}

} // namespace
} // namespace keldrin
