#include "support/files.h"
#include "support/sanitizer.h"
#include "toolkit/sample_menu.h"
#include "toolkit/scripted/scripted_backend.h"
#include "toolkit/scripted/scripted_run.h"
#include "toolkit/toolkit_state.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <string>

namespace keldrin {
namespace {

std::string inTempDir(const std::string &name, std::string_view content) {
    std::string path = testing::TempDir() + name;
    putFile(path, content);
    return path;
}

TEST(ScriptedRun, AnUnreadableScenarioStartsNothing) {
    const std::string path = inTempDir("keldrin_bad.scn", "menu New\njump\n\nset x\n");
    std::ostringstream transcript;
    std::ostringstream complaints;
    EXPECT_EQ(startScriptedRun(path, {"keldrin"}, transcript, complaints), ScriptUnreadable);
    EXPECT_EQ(toolkitState().backend, nullptr);
    EXPECT_EQ(transcript.str(), "");
    EXPECT_EQ(complaints.str().substr(0, path.size() + 3), path + ":2:");
    EXPECT_NE(complaints.str().find(path + ":4:"), std::string::npos);
    EXPECT_EQ(startScriptedRun(path + ".none", {"keldrin"}, transcript, complaints),
              ScriptUnreadable);
}

// A program that asks for a file and would then leave a trace.
[[noreturn]] void chooseThenWrite(const std::string &scenario, const std::string &trace) {
    if (startScriptedRun(scenario, {"keldrin"}, std::cerr, std::cerr) == 0) {
        WindowOpen(ResizableWindow, -1, -1, 100, 100);
        std::string path;
        ToolkitFileChooser("d|*.std|", ChooseExisting, path, "Open");
        putFile(trace, path);
        std::exit(ToolkitClose());
    }
    std::exit(ScriptUnreadable);
}

TEST(ScriptedRun, TheProcessEndsInsideTheRequest) {
    const std::string trace = testing::TempDir() + "keldrin_trace.txt";
    std::filesystem::remove(trace);
    const auto ends = [&](std::string_view lines, int code, const char *said) {
        const std::string scenario = inTempDir("keldrin_run.scn", lines);
        EXPECT_EXIT(chooseThenWrite(scenario, trace), testing::ExitedWithCode(code), said) << lines;
    };
    ends("menu New\n", ScriptOutOfStep, "! 1: .menu New. does not answer file open.*\nend out");
    ends("", ScriptEndedInRequest, "from \"\"\nend script");
    EXPECT_FALSE(std::filesystem::exists(trace)) << "nothing more is written";
    ends("file a.std\nnote passed over\n", ScriptPassed, "got file \"a.std\"\nend program");
    EXPECT_TRUE(std::filesystem::exists(trace));
}

TEST(ScriptedRun, ACrashHasACodeOfItsOwn) {
    if (UnderSanitizer) {
        GTEST_SKIP() << "the sanitizer has its own end of a crash";
    }
    const std::string scenario = inTempDir("keldrin_crash.scn", "");
    EXPECT_EXIT(
        {
            startScriptedRun(scenario, {"keldrin"}, std::cerr, std::cerr);
            std::abort();
        },
        testing::ExitedWithCode(ScriptNoProgress), "");
}

} // namespace
} // namespace keldrin
