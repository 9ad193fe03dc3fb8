#include "program/batch/command.h"
#include "support/files.h"
#include "support/source_directory.h"
#include "support/temporary_directory.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;

// The engine is a script of the test, first on the search path. By the name of its project it
// succeeds, fails, or works slowly; it writes down how it was called.
constexpr std::string_view Engine = R"(#!/bin/sh
for project; do :; done
echo "$*" >>calls.txt
case $project in
bad*) echo "rkeldrin: $project cannot be read: torn" >&2; exit 1 ;;
silent*) exit 1 ;;
mute*) exit 0 ;;
killed*) kill -9 $$ ;;
slow*) sleep 0.3 ;;
esac
echo "rkeldrin: iteration 1 of 8: misfit median 2.00, largest 3.00"
echo "rkeldrin: 1 iteration, median misfit 0.97, 24 of 24 soundings"
echo "rkeldrin: models of 24 soundings written to $project, 0.1 s"
)";

class InvertCommandTest : public testing::Test {
  protected:
    InvertCommandTest() : before_(fs::current_path()), path_(std::getenv("PATH")) {
        fs::current_path(directory_.path());
        fs::create_directory("bin");
        putFile("bin/rkeldrin", Engine);
        fs::permissions("bin/rkeldrin", fs::perms::owner_all);
        usePath((fs::path(directory_.path()) / "bin").string() + ":" + path_);
    }
    ~InvertCommandTest() override {
        usePath(path_);
        fs::current_path(before_);
    }

    static void usePath(const std::string &path) { ::setenv("PATH", path.c_str(), 1); }

    /// The lines of standard output.
    std::vector<std::string> invert(const std::vector<std::string_view> &words, int code) {
        testing::internal::CaptureStdout();
        EXPECT_EQ(invertCommand(words), code);
        std::vector<std::string> lines;
        std::string text = testing::internal::GetCapturedStdout();
        for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n')) {
            lines.push_back(text.substr(0, end));
            text.erase(0, end + 1);
        }
        return lines;
    }

  private:
    TemporaryDirectory directory_;
    fs::path before_;
    std::string path_;
};

TEST_F(InvertCommandTest, OneLineForEachProjectInTheirOrderAndCodeOneWhenAnyFailed) {
    const auto good = "1 iteration, median misfit 0.97, 24 of 24 soundings, [0-9]+\\.[0-9] s";
    EXPECT_THAT(invert({"--jobs", "3", "slow.std", "bad.std", "good.std"}, ExitFailed),
                ElementsAre(MatchesRegex(std::string("slow.std: ") + good),
                            "bad.std: FAILED: bad.std cannot be read: torn",
                            MatchesRegex(std::string("good.std: ") + good)));
    EXPECT_EQ(invert({"good.std", "slow.std"}, ExitOk).size(), 2U);
    EXPECT_THAT(
        invert({"mute.std"}, ExitOk),
        ElementsAre(HasSubstr("mute.std: rkeldrin ended without saying how the run went, ")));
    EXPECT_THAT(invert({"silent.std", "killed.std"}, ExitFailed),
                ElementsAre(HasSubstr("silent.std: FAILED: rkeldrin ended with code 1"),
                            HasSubstr("killed.std: FAILED: rkeldrin was ended by signal 9")));
}

TEST_F(InvertCommandTest, ThreadsAndNamesAreHandedOnAsTheyAre) {
    invert({"--threads", "3", "--", "-odd name.std"}, ExitOk);
    EXPECT_EQ(fileContent("calls.txt"), "--threads 3 -- -odd name.std\n");
}

TEST_F(InvertCommandTest, AMissingEngineIsTheReason) {
    usePath("/nowhere");
    EXPECT_THAT(invert({"good.std"}, ExitFailed),
                ElementsAre(AllOf(HasSubstr("good.std: FAILED: rkeldrin cannot be run: "),
                                  HasSubstr("No such file"))));
}

TEST_F(InvertCommandTest, WrongWordsStartNothing) {
    testing::internal::CaptureStderr();
    for (const std::vector<std::string_view> &words : {std::vector<std::string_view>{},
                                                       {"--jobs"},
                                                       {"--jobs", "0", "a.std"},
                                                       {"--threads", "257", "a.std"},
                                                       {"--threads", "2x", "a.std"},
                                                       {"--fast", "a.std"}}) {
        EXPECT_TRUE(invert(words, ExitUsage).empty());
    }
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("no project is named"));
    EXPECT_FALSE(fs::exists("calls.txt"));
}

} // namespace
} // namespace keldrin
