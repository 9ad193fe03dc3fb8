#include "toolkit/child_process.h"

#include "support/files.h"
#include "support/temporary_directory.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

namespace keldrin {
namespace {

using testing::ElementsAre;

/// Runs shell scripts as child processes, in a directory of the test's own.
class ChildProcess : public testing::Test {
  protected:
    RunResult run(const std::string &script, const std::string &argument = "") {
        const std::string engine = directory.path("engine");
        putFile(engine, "#!/bin/sh\ncd '" + directory.path() + "'\n" + script);
        std::filesystem::permissions(engine, std::filesystem::perms::owner_all);
        lines.clear();
        looks = 0;
        ChildWatch watch;
        watch.line = [this](std::string_view line) {
            lines.emplace_back(line);
        };
        watch.goOn = [this] {
            ++looks;
            return stopAfter.empty() || lines.empty() || lines.back() != stopAfter;
        };
        return runChild({"engine", argument}, directory.path(), watch);
    }

    TemporaryDirectory directory;
    std::string stopAfter; ///< a line; blank: the child is not stopped
    std::vector<std::string> lines;
    int looks = 0;
};

TEST_F(ChildProcess, IsFoundByNameAndGetsItsArgumentWhole) {
    const std::string argument = "a b'; $HOME \"c\".std";
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const RunResult result =
        run("echo said; echo sworn >&2; printf '%s|%s' \"$#\" \"$1\" > seen; exit 7\n", argument);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_THAT(lines, ElementsAre("said", "sworn"));
    EXPECT_EQ(result.toolkitError, 0);
    EXPECT_EQ(result.exitCode, 7);
    EXPECT_FALSE(result.stopped);
    EXPECT_EQ(fileContent(directory.path("seen")), "1|" + argument);
    EXPECT_EQ(run("kill -9 $$\n").exitCode, 137);
}

TEST_F(ChildProcess, ThatCannotBeStartedGivesTheSystemsCode) {
    const RunResult missing = runChild({"keldrin_no_such_program"}, directory.path());
    EXPECT_EQ(missing.toolkitError, ErrorCannotRun);
    EXPECT_EQ(missing.systemError, ENOENT);
    EXPECT_EQ(runChild({}, directory.path()).systemError, ENOENT);
    const std::string engine = directory.path("no_program");
    putFile(engine, "no program at all");
    std::filesystem::permissions(engine, std::filesystem::perms::owner_all);
    const RunResult refused = runChild({"no_program"}, directory.path());
    EXPECT_EQ(refused.toolkitError, ErrorCannotRun);
    EXPECT_NE(refused.systemError, 0);
    EXPECT_EQ(programDirectory("/opt/keldrin/keldrin"), "/opt/keldrin/");
    EXPECT_FALSE(programDirectory("keldrin").empty());
}

TEST_F(ChildProcess, EveryLineArrivesInOrderAndTheLastOneWithoutItsEnd) {
    EXPECT_EQ(
        run("awk 'BEGIN { for (i = 1; i <= 100000; ++i) print i; printf \"end\" }'\n").exitCode, 0);
    ASSERT_EQ(lines.size(), 100001U);
    for (std::size_t i = 0; i < 100000; ++i) {
        ASSERT_EQ(lines[i], std::to_string(i + 1));
    }
    EXPECT_EQ(lines.back(), "end");
    // 575 KiB come in pieces of at most 64, however fast the child is.
    EXPECT_GT(looks, 5) << "the watch is asked between the lines too";
}

TEST_F(ChildProcess, HasNothingToRead) {
    EXPECT_EQ(run("cat; echo read\n").exitCode, 0);
    EXPECT_THAT(lines, ElementsAre("read"));
}

TEST_F(ChildProcess, IsWaitedForWhenItClosesItsConsole) {
    EXPECT_EQ(run("echo quiet; exec >&- 2>&-; sleep 0.3; : > done; exit 5\n").exitCode, 5);
    EXPECT_TRUE(std::filesystem::exists(directory.path("done")));
    EXPECT_THAT(lines, ElementsAre("quiet"));
    EXPECT_GT(looks, 3);
}

TEST_F(ChildProcess, WhatItLeavesRunningIsNotWaitedForAndNotEnded) {
    EXPECT_EQ(run("(while [ ! -e go ]; do sleep 0.05; done; : > done) & echo $!\n").exitCode, 0);
    EXPECT_FALSE(std::filesystem::exists(directory.path("done"))) << "it still holds the console";
    putFile(directory.path("go"), "");
    for (int i = 0; i < 200 && !std::filesystem::exists(directory.path("done")); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    EXPECT_TRUE(std::filesystem::exists(directory.path("done")));
}

TEST_F(ChildProcess, OneThatIsLeftWritingDoesNotHoldTheProgram) {
    EXPECT_EQ(run("(while [ ! -e go ]; do echo more; done) & echo $!; exit 3\n").exitCode, 3);
    putFile(directory.path("go"), "");
    EXPECT_FALSE(lines.empty());
}

TEST_F(ChildProcess, MayTidyUpWhenItIsStopped) {
    stopAfter = "ready";
    const RunResult result = run("trap 'echo tidy; : > done; exit 9' TERM\n"
                                 "echo ready\nwhile :; do sleep 0.05; done\n");
    EXPECT_TRUE(result.stopped);
    EXPECT_EQ(result.exitCode, 9);
    EXPECT_EQ(lines.back(), "tidy"); // the shell may say that its sleep was ended
    EXPECT_TRUE(std::filesystem::exists(directory.path("done")));
}

TEST_F(ChildProcess, IsKilledWhenItDoesNotEnd) {
    stopAfter = "ready";
    const RunResult result = run("trap '' TERM\necho ready\nwhile :; do sleep 0.05; done\n");
    EXPECT_TRUE(result.stopped);
    EXPECT_EQ(result.exitCode, 137);
    EXPECT_EQ(result.toolkitError, 0);
}

TEST_F(ChildProcess, TakesItsOwnChildrenWithIt) {
    stopAfter = "inner ready";
    putFile(directory.path("inner"), "trap 'sleep 0.2; echo inner tidy; exit' TERM\n"
                                     "echo inner ready\nwhile :; do sleep 0.05; done\n");
    EXPECT_TRUE(run("sh inner\n").stopped);
    EXPECT_EQ(lines.back(), "inner tidy") << "the outer one is gone by then";

    // One that does not end, and does not even hold the console.
    putFile(directory.path("inner"), "trap '' TERM\nexec >&- 2>&-\n"
                                     "while :; do echo >> alive; sleep 0.02; done\n");
    stopAfter = "ready";
    EXPECT_TRUE(
        run("sh inner &\nwhile [ ! -e alive ]; do sleep 0.02; done; echo ready; wait\n").stopped);
    const std::string alive = fileContent(directory.path("alive"));
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_EQ(fileContent(directory.path("alive")), alive);
}

TEST_F(ChildProcess, IsStoppedWithoutAWordFromIt) {
    ChildWatch watch;
    int asked = 0;
    watch.goOn = [&asked] {
        return ++asked < 3;
    };
    putFile(directory.path("engine"), "#!/bin/sh\nexec sleep 60\n");
    std::filesystem::permissions(directory.path("engine"), std::filesystem::perms::owner_all);
    const RunResult result = runChild({"engine"}, directory.path(), watch);
    EXPECT_TRUE(result.stopped);
    EXPECT_EQ(result.exitCode, 143);
}

} // namespace
} // namespace keldrin
