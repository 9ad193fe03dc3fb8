#include "program/batch/command.h"

#include "projectfile/project_file.h"
#include "support/files.h"
#include "support/source_directory.h"
#include "support/temporary_directory.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {
namespace {

namespace fs = std::filesystem;

using testing::HasSubstr;

/// What the command gave.
struct SkipOutcome {
    int code = 0;
    std::string out;
    std::string err;
};

class SkipCommandTest : public testing::Test {
  protected:
    SkipCommandTest() { fs::copy_file(example, line); }

    static SkipOutcome run(const std::vector<std::string> &words) {
        const std::vector<std::string_view> views(words.begin(), words.end());
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        SkipOutcome outcome;
        outcome.code = skipCommand(views);
        outcome.out = testing::internal::GetCapturedStdout();
        outcome.err = testing::internal::GetCapturedStderr();
        return outcome;
    }
    /// Skipped windows of the project as it lies on the disk, and its cut-off.
    std::pair<int, float> skippedOnDisk() {
        SurveyModel model;
        EXPECT_EQ(STD_File_Read(model, line), 0);
        std::ptrdiff_t skipped = 0;
        for (const SoundingRecord &record : model.soundings()) {
            skipped += std::count_if(record.TEMerr.begin(), record.TEMerr.begin() + record.NumTW,
                                     isSkipped);
        }
        return {static_cast<int>(skipped), model.control.DataCutoff};
    }

    TemporaryDirectory directory;
    std::string example = std::string(SourceDirectory) + "/examples/project/inloop.std";
    std::string line = directory.path("line.std"); ///< 24 soundings of 26 windows
};

TEST_F(SkipCommandTest, TellsWhatEachFilterHasTakenAndWritesTheProject) {
    const SkipOutcome range = run({"--first", "3", "--last", "25", "--error", "off", "--negative",
                                   "off", "--slope", "off", line});
    EXPECT_EQ(range.code, ExitOk);
    EXPECT_EQ(range.out, line + ": 24 soundings, 624 windows, 72 skipped; window range 72, error "
                                "filter 0, negative filter 0, slope filter 0\n");
    EXPECT_EQ(skippedOnDisk(), std::pair(72, 100.0F));
    const SkipOutcome none = run({"--error", "off", "--negative", "off", "--slope", "off", line});
    EXPECT_THAT(none.out, HasSubstr(" 0 skipped; ")) << "earlier flags are replaced";
    EXPECT_EQ(skippedOnDisk().first, 0);
    EXPECT_FALSE(fs::exists(line + "~")) << "nothing is lost, so nothing is kept";
}

TEST_F(SkipCommandTest, TheCutoffIsTheProjectsUnlessOneIsGiven) {
    static_cast<void>(run({"--negative", "off", "--slope", "off", line}));
    const int byProject = skippedOnDisk().first;
    const SkipOutcome given =
        run({"--cutoff", "12.5", "--negative", "off", "--slope", "off", line});
    const auto [skipped, cutoff] = skippedOnDisk();
    EXPECT_GT(skipped, byProject);
    EXPECT_EQ(cutoff, 12.5F);
    EXPECT_THAT(given.out, HasSubstr(" " + std::to_string(skipped) +
                                     " skipped; window range 0, "
                                     "error filter " +
                                     std::to_string(skipped)));
}

TEST_F(SkipCommandTest, FurtherFiltersAreCountedWhenTheyAreOn) {
    const std::vector<std::string> none = {"--error", "off", "--negative", "off", "--slope", "off"};
    const auto with = [&](std::vector<std::string> words) {
        words.insert(words.begin(), none.begin(), none.end());
        words.push_back(line);
        return run(words).out;
    };
    EXPECT_THAT(with({"--noise", "on", "--noise-level", "1000000", "--noise-exponent", "0"}),
                HasSubstr(" 624 skipped; window range 0, error filter 0, negative filter 0, slope "
                          "filter 0, noise floor 624\n"));
    EXPECT_THAT(with({"--first", "26", "--keep", "on"}),
                HasSubstr(" 600 skipped; window range 600, error filter 0, negative filter 0, "
                          "slope filter 0; earlier flags kept 24\n"));
    EXPECT_EQ(skippedOnDisk().first, 624);
    EXPECT_THAT(with({"--curvature", "on", "--bend", "1000", "--neighbours", "on", "--factor",
                      "100000", "--later", "on"}),
                HasSubstr(", curvature 0, neighbours "));
    EXPECT_EQ(run({"--factor", "1", line}).err,
              "keldrin-batch skip: --factor takes a number from 1.01 to 1000000\n");
}

TEST_F(SkipCommandTest, AFailureOfOneProjectIsToldAndSetsTheExitCode) {
    const std::string field = directory.path("line.avg");
    fs::copy_file(example, field);
    const std::string before = fileContent(field);
    const SkipOutcome outcome = run({field, directory.path("none.std"), line});
    EXPECT_EQ(outcome.code, ExitFailed);
    EXPECT_THAT(outcome.out, HasSubstr(field + ": FAILED: only *.std files are written\n"));
    EXPECT_THAT(outcome.out, HasSubstr("none.std: FAILED: there is no such file\n"));
    EXPECT_THAT(outcome.out, HasSubstr(line + ": 24 soundings, "));
    EXPECT_EQ(fileContent(field), before);
}

// What no dialog would take is refused before any project is changed.
TEST_F(SkipCommandTest, ValuesHaveTheLimitsOfTheDialog) {
    const std::string before = fileContent(line);
    const auto fault = [this](const std::string &option, const std::string &value) {
        const SkipOutcome outcome = run({option, value, line});
        EXPECT_EQ(outcome.code, ExitUsage) << option << " " << value;
        return outcome.err;
    };
    EXPECT_EQ(fault("--first", "0"), "keldrin-batch skip: --first takes a number from 1 to 128\n");
    EXPECT_EQ(fault("--last", "2.5"), "keldrin-batch skip: --last takes a number from 1 to 128\n");
    EXPECT_EQ(fault("--cutoff", "0.05"),
              "keldrin-batch skip: --cutoff takes a number from 0.1 to 10000\n");
    EXPECT_EQ(fault("--cutoff", "none"),
              "keldrin-batch skip: --cutoff takes a number from 0.1 to 10000\n");
    EXPECT_EQ(fault("--slope", "yes"), "keldrin-batch skip: --slope takes on or off\n");
    EXPECT_EQ(run({"--first", "9", "--last", "3", line}).err,
              "keldrin-batch skip: --first is above --last\n");
    EXPECT_EQ(run({"--slope"}).err, "keldrin-batch skip: --slope takes on or off\n");
    EXPECT_EQ(fileContent(line), before);
}

} // namespace
} // namespace keldrin
