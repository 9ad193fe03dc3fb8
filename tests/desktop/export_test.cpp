#include "support/files.h"
#include "support/source_directory.h"
#include "support/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#ifndef _WIN32
#include <sys/wait.h>
#endif

namespace keldrin {
namespace {

namespace fs = std::filesystem;

using testing::AllOf;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

/// What a run of the program gave.
struct Outcome {
    int code = 0;
    std::string out;
    std::string err;
};

/// Runs keldrin --export where there is no display.
class ExportTest : public testing::Test {
  protected:
    ExportTest() {
        fs::copy_file(std::string(SourceDirectory) + "/tests/scenarios/data/pair.std",
                      directory.path("a.std"));
    }
    Outcome run(const std::string &words) {
        const std::string command = "cd '" + directory.path() +
                                    "' && env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM "
                                    "'" KELDRIN_PROGRAM "' --export " +
                                    words + " >out.txt 2>err.txt";
        const int status = std::system(command.c_str());
        Outcome outcome{WEXITSTATUS(status), fileContent(directory.path("out.txt")),
                        fileContent(directory.path("err.txt"))};
        fs::remove(directory.path("out.txt"));
        fs::remove(directory.path("err.txt"));
        return outcome;
    }
    [[nodiscard]] std::string head(const std::string &name) const {
        return fileContent(directory.path(name)).substr(0, 4);
    }

    TemporaryDirectory directory;
};

/// What a program prints; blank when it is not installed or fails.
std::string printed(const std::string &command, const std::string &to) {
    const bool good = std::system((command + " >'" + to + "' 2>&1").c_str()) == 0;
    std::string text = good ? fileContent(to) : "";
    fs::remove(to);
    return text;
}

TEST_F(ExportTest, AReportHasTitleBookmarksAndAllPages) {
    for (const std::string name : {"inloop.std", "inloop.m1d"}) {
        fs::copy_file(std::string(SourceDirectory) + "/examples/project/" + name,
                      directory.path(name));
    }
    const Outcome outcome = run("report inloop.std");
    EXPECT_EQ(outcome.out, "inloop.std: 24 soundings, 1 plot files\n");
    const std::string report = directory.path("inloop_report.pdf");
    const std::string told = directory.path("told");
    EXPECT_THAT(printed("pdfinfo '" + report + "'", told),
                AllOf(HasSubstr("Title:           Gravel Flat water survey, line 4\n"),
                      HasSubstr("Pages:           28\n")));
    EXPECT_THAT(printed("pdftotext -f 28 -l 28 '" + report + "' -", told), HasSubstr("28 / 28"));
    if (std::system("command -v qpdf >/dev/null") != 0) {
        GTEST_SKIP() << "qpdf is not installed; the bookmarks were not looked at";
    }
    EXPECT_THAT(printed("qpdf --check '" + report + "'", told),
                HasSubstr("No syntax or stream encoding errors found"));
    const std::string outlines = printed("qpdf --json --json-key=outlines '" + report + "'", told);
    EXPECT_THAT(outlines,
                AllOf(HasSubstr("\"title\": \"Section\""), HasSubstr("\"destpageposfrom1\": 4"),
                      HasSubstr("\"title\": \"Station 2150\""),
                      HasSubstr("\"destpageposfrom1\": 28")));
}

TEST_F(ExportTest, WritesEveryKindOfPlotFileWithoutADisplay) {
    const Outcome outcome = run("png,pdf,svg,hpgl,wmf --plan --soundings 2 --out plots a.std");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.out, "a.std: 2 soundings, 10 plot files\n");
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(directory.files("plots"),
                UnorderedElementsAre("a0002.png", "a0002.pdf", "a0002.svg", "a0002.hpg",
                                     "a0002.wmf", "a_plan.png", "a_plan.pdf", "a_plan.svg",
                                     "a_plan.hpg", "a_plan.wmf"));
    EXPECT_EQ(head("plots/a0002.png"), "\x89PNG");
    EXPECT_EQ(head("plots/a0002.pdf"), "%PDF");
    EXPECT_THAT(directory.files(), UnorderedElementsAre("a.std")) << "no log files";
}

TEST_F(ExportTest, AllPagesOfAProjectGoIntoOnePdf) {
    EXPECT_EQ(run("pdf,svg --all-in-one --plan a.std").out, "a.std: 2 soundings, 4 plot files\n");
    EXPECT_THAT(directory.files(),
                UnorderedElementsAre("a.std", "a.pdf", "a0001.svg", "a0002.svg", "a_plan.svg"));
    EXPECT_THAT(fileContent(directory.path("a.pdf")), HasSubstr("/Count 3"));

    EXPECT_EQ(run("pdf --all-in-one --soundings 1 a.std").code, 0);
    EXPECT_THAT(fileContent(directory.path("a.pdf")), HasSubstr("/Count 1"));
    putFile(directory.path("a.pdf"), "%PDF-1.7 the user's own");
    EXPECT_EQ(run("pdf --all-in-one a.std").code, 0);
    EXPECT_EQ(fileContent(directory.path("a.pdf")), "%PDF-1.7 the user's own");
    EXPECT_EQ(head("a_soundings.pdf"), "%PDF");
}

TEST_F(ExportTest, WhatCannotBeDoneIsSaid) {
    const struct {
        std::string words;
        int code;
        std::string told;
    } cases[] = {
        {"", 2, "keldrin --export: --export needs a value\n"},
        {"gif a.std", 2,
         "--export takes png, pdf, svg, hpgl, wmf and report, with commas between them\n"},
        {"png", 2, "no project is named"},
        {"png --all-in-one a.std", 2, "--all-in-one needs the format pdf"},
        {"png --size 3 a.std", 2, "unknown option --size"},
        {"png --out a.std/plots a.std", 1, "keldrin --export: cannot make a.std/plots: "},
    };
    for (const auto &c : cases) {
        const Outcome outcome = run(c.words);
        EXPECT_EQ(outcome.code, c.code) << c.words;
        EXPECT_THAT(outcome.err, HasSubstr(c.told));
    }
    fs::create_directory(directory.path("a.pdf"));
    fs::create_directory(directory.path("a_soundings.pdf"));
    const Outcome outcome = run("pdf,png --all-in-one missing.std a.std");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.out, AllOf(HasSubstr("missing.std: FAILED: there is no such file\n"),
                                   HasSubstr("2 plot files, 1 could not be written, FAILED: "
                                             "a_soundings.pdf: Is a directory")));
}

} // namespace
} // namespace keldrin
