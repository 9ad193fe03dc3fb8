#include "program/batch/command.h"

#include "base/clock.h"
#include "support/files.h"
#include "support/source_directory.h"
#include "support/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {
namespace {

namespace fs = std::filesystem;

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

/// What the command gave.
struct PlotOutcome {
    int code = 0;
    std::string out;
    std::string err;
};

class PlotCommandTest : public testing::Test {
  protected:
    PlotCommandTest() {
        addProject("a.std");
        fs::create_directory(directory.path("work"));
        before = fs::current_path();
        fs::current_path(directory.path("work")); // where log files would be
    }
    ~PlotCommandTest() override { fs::current_path(before); }
    PlotCommandTest(const PlotCommandTest &) = delete;
    PlotCommandTest &operator=(const PlotCommandTest &) = delete;

    // Two soundings.
    void addProject(const std::string &name) {
        fs::create_directories(fs::path(directory.path(name)).parent_path());
        fs::copy_file(std::string(SourceDirectory) + "/tests/scenarios/data/pair.std",
                      directory.path(name));
    }
    PlotOutcome plot(const std::vector<std::string> &words) {
        const std::vector<std::string_view> views(words.begin(), words.end());
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        PlotOutcome run;
        run.code = plotCommand(views);
        run.out = testing::internal::GetCapturedStdout();
        run.err = testing::internal::GetCapturedStderr();
        return run;
    }
    [[nodiscard]] std::string project(const std::string &name = "a.std") const {
        return directory.path(name);
    }

    TemporaryDirectory directory;
    fs::path before;
};

TEST_F(PlotCommandTest, PlotsAllSoundingsAsSvgAndTouchesNothingElse) {
    const std::string content = fileContent(project());
    const PlotOutcome run = plot({project()});
    EXPECT_EQ(run.code, ExitOk);
    EXPECT_EQ(run.out, project() + ": 2 soundings, 2 plot files\n");
    EXPECT_EQ(run.err, "") << "progress is for terminals";
    EXPECT_THAT(directory.files(), UnorderedElementsAre("a.std", "a0001.svg", "a0002.svg"));
    EXPECT_THAT(directory.files("work"), IsEmpty()) << "no log files";
    EXPECT_EQ(fileContent(project()), content);
    EXPECT_NE(fileContent(directory.path("a0001.svg")), fileContent(directory.path("a0002.svg")));
}

TEST_F(PlotCommandTest, FormatsPagesAndDirectoryAreChosen) {
    addProject("b.std");
    const PlotOutcome run =
        plot({"--format", "hpgl,wmf", "--plan", "--soundings", "2,1-2,2", "--out",
              directory.path("new/plots"), project(), project("b.std")});
    EXPECT_EQ(run.code, ExitOk);
    EXPECT_THAT(directory.files("new/plots"),
                UnorderedElementsAre("a0001.hpg", "a0001.wmf", "a0002.hpg", "a0002.wmf",
                                     "a_plan.hpg", "a_plan.wmf", "b0001.hpg", "b0001.wmf",
                                     "b0002.hpg", "b0002.wmf", "b_plan.hpg", "b_plan.wmf"));
    EXPECT_THAT(directory.files(), UnorderedElementsAre("a.std", "b.std"));

    EXPECT_EQ(plot({"--plan", "--soundings", "none", project()}).code, ExitOk);
    EXPECT_THAT(directory.files(), UnorderedElementsAre("a.std", "b.std", "a_plan.svg"));
    EXPECT_EQ(plot({"--section", "--profile", "--soundings", "none", project()}).code, ExitOk);
    EXPECT_THAT(directory.files(), UnorderedElementsAre("a.std", "b.std", "a_plan.svg",
                                                        "a_section.svg", "a_profile.svg"));
}

TEST_F(PlotCommandTest, TheStyleOfTheSoundingsIsChosen) {
    EXPECT_EQ(plot({"--style", "standard", "--soundings", "1", project()}).code, ExitOk);
    EXPECT_THAT(fileContent(directory.path("a0001.svg")), HasSubstr("Blue dots = observed"));
    EXPECT_EQ(plot({"--style", "presentation", "--soundings", "1", project()}).code, ExitOk);
    EXPECT_THAT(fileContent(directory.path("a0001.svg")), HasSubstr("observed, 2 standard errors"));
    const PlotOutcome refused = plot({"--style", "fancy", project()});
    EXPECT_EQ(refused.code, ExitUsage);
    EXPECT_THAT(refused.err, HasSubstr("--style takes standard or presentation"));
}

TEST_F(PlotCommandTest, WordsThatCannotBeUsedPlotNothing) {
    const std::vector<std::vector<std::string>> cases = {
        {},
        {"--plan"},
        {"--format"},
        {"--format", "svg,", project()},
        {"--format", "png", project()},
        {"--soundings", "0", project()},
        {"--soundings", "2-1", project()},
        {"--soundings", "1,,2", project()},
        {"--soundings", "1-", project()},
        {"--soundings", "-1", project()},
        {"--soundings", "1x", project()},
        {"--soundings", "99999999999", project()},
        {"--soundings", "none", project()},
        {"--quick", project()},
        {project(), "--out"},
    };
    for (const std::vector<std::string> &words : cases) {
        const PlotOutcome run = plot(words);
        EXPECT_EQ(run.code, ExitUsage) << testing::PrintToString(words);
        EXPECT_THAT(run.err, HasSubstr("keldrin-batch plot: "));
        EXPECT_EQ(run.out, "");
    }
    EXPECT_THAT(directory.files(), UnorderedElementsAre("a.std"));
}

TEST_F(PlotCommandTest, EachFailureHasItsReasonAndTheOtherPlotsAreMade) {
    putFile(directory.path("bad.std"), "no project\n");
    PlotOutcome run = plot({project("missing.std"), project("bad.std"), project()});
    EXPECT_EQ(run.code, ExitFailed);
    EXPECT_THAT(run.out, AllOf(HasSubstr("missing.std: FAILED: there is no such file\n"),
                               HasSubstr("bad.std: FAILED: "),
                               HasSubstr("a.std: 2 soundings, 2 plot files\n")));
    EXPECT_THAT(run.out, Not(HasSubstr("FAILED: \n")));

    run = plot({"--soundings", "2-2000000000", project()});
    EXPECT_EQ(run.code, ExitFailed);
    EXPECT_EQ(run.out, project() + ": 2 soundings, 1 plot files, FAILED: sounding 3 is not there, "
                                   "only 2 are\n");

    fs::create_directories(directory.path("plots/a0001.svg"));
    run = plot({"--out", directory.path("plots"), project()});
    EXPECT_EQ(run.code, ExitFailed);
    EXPECT_THAT(run.out, AllOf(HasSubstr("1 plot files, 1 could not be written, FAILED: "),
                               HasSubstr("a0001.svg: Is a directory")));
    EXPECT_THAT(directory.files("plots"), UnorderedElementsAre("a0002.svg"));

    run = plot({"--out", project() + "/plots", project()});
    EXPECT_EQ(run.code, ExitFailed);
    EXPECT_THAT(run.err, HasSubstr("cannot make"));
}

/// The project with as many soundings, each of another curve.
std::string longProject(const std::string &pair, int soundings) {
    constexpr std::string_view count = "NumStn=2";
    std::string text = pair.substr(0, pair.find("\n100,") + 1);
    text.replace(text.find(count), count.size(), "NumStn=" + std::to_string(soundings));
    for (int i = 1; i <= soundings; ++i) {
        const std::string station = std::to_string(100 + 50 * i);
        std::string key = station; // of both windows
        key.append(",1000,5000,312.4,").append(station).append(",").append(station);
        text.append(key).append(",0.1,2.000E-2,").append(std::to_string(8000 + 10 * i));
        text.append(",3,0,0,1,,25.1,\n").append(key).append(",0.2,4.000E-2,1500,3,0,0,1,,26.3,\n");
    }
    return text;
}

// Pages are encoded many at a time: the files and what is reported of them are those of one by one.
TEST_F(PlotCommandTest, ManyPagesGiveTheFilesOfSingleOnes) {
    fixClock(DateTime{2026, 5, 14, 9, 30, 0});
    putFile(project(), longProject(fileContent(project()), 150));
    for (const char *blocked : {"plots/a0003.svg", "plots/a0064.svg", "plots/a0150.svg"}) {
        fs::create_directories(directory.path(blocked));
    }
    const PlotOutcome run = plot({"--out", directory.path("plots"), project()});
    EXPECT_EQ(run.code, ExitFailed);
    EXPECT_THAT(run.out, AllOf(HasSubstr("150 soundings, 147 plot files, 3 could not be written"),
                               HasSubstr("a0003.svg: Is a directory")));
    for (const std::string number : {"1", "65", "128", "149"}) {
        EXPECT_EQ(plot({"--soundings", number, project()}).code, ExitOk);
        const std::string name = "a" + std::string(4 - number.size(), '0') + number + ".svg";
        EXPECT_EQ(fileContent(directory.path("plots/" + name)), fileContent(directory.path(name)))
            << name;
    }
    fixClock({});
}

TEST_F(PlotCommandTest, PlotsOfOneProjectDoNotReplaceThoseOfAnother) {
    addProject("other/a.std");
    PlotOutcome run = plot({"--out", directory.path("plots"), project(), project("other/a.std")});
    EXPECT_EQ(run.code, ExitFailed);
    EXPECT_THAT(run.out, HasSubstr("other/a.std: FAILED: an earlier project"));
    run = plot({project(), project("other/a.std")});
    EXPECT_EQ(run.code, ExitOk);
}

} // namespace
} // namespace keldrin
