#include "base/file_operations.h"
#include "base/paths.h"
#include "base/safe_writer.h"
#include "base/temporary_names.h"
#include "support/files.h"
#include "support/temporary_directory.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <string>
#ifndef _WIN32
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace keldrin {
namespace {

namespace fs = std::filesystem;

TEST(Paths, SplitAtTheLastSeparatorOfEitherKindAndThePointBehindIt) {
    struct Case {
        const char *path, *directory, *base, *extension;
    };
    const Case cases[] = {
        {"line1.std", "", "line1", ".std"},
        {"/data/survey.v2/line1", "/data/survey.v2/", "line1", ""},
        {"C:\\data\\line1.AVG", "C:\\data\\", "line1", ".AVG"},
        {"a\\b/c.d.e", "a\\b/", "c.d", ".e"},
        {"a/b\\c.d", "a/b\\", "c", ".d"},
        {"/data/.hidden", "/data/", ".hidden", ""},
        {"dir/", "dir/", "", ""},
        {"name.", "", "name", "."},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(directoryOf(c.path), c.directory) << c.path;
        EXPECT_EQ(baseNameOf(c.path), c.base) << c.path;
        EXPECT_EQ(extensionOf(c.path), c.extension) << c.path;
        EXPECT_EQ(std::string(withoutExtension(c.path)) + c.extension, c.path);
    }
    EXPECT_TRUE(isProjectPath("x.STD"));
    EXPECT_FALSE(isProjectPath("x.avg"));
    EXPECT_FALSE(isProjectPath(""));
}

TEST(Paths, JoinWithTheSeparatorFoundInThePath) {
    EXPECT_EQ(joinPath("C:\\data", "x"), "C:\\data\\x");
    EXPECT_EQ(joinPath("data/", "x"), "data/x");
    EXPECT_EQ(joinPath("", "x"), "x");
}

TEST(Paths, SideFileIsFoundWithoutRegardToCaseButExactFirst) {
    const TemporaryDirectory directory;
    const std::string data = directory.path("Line1.AVG");
    EXPECT_EQ(sideFilePath(data, ".stn"), directory.path("Line1.stn"));
    putFile(directory.path("line1.STN"), "");
    putFile(directory.path("LINE1.STN"), "");
    EXPECT_EQ(sideFilePath(data, ".stn"), directory.path("LINE1.STN")); // first in byte order
    putFile(directory.path("Line1.stn"), "");
    EXPECT_EQ(sideFilePath(data, ".stn"), directory.path("Line1.stn"));
}

TEST(Paths, BackslashesAreTriedAsSlashesOnlyWhereThatExists) {
    const TemporaryDirectory directory;
    putFile(directory.path("a.std"), "");
    EXPECT_EQ(existingForm(directory.path() + "\\a.std"), directory.path() + "/a.std");
    EXPECT_EQ(existingForm(directory.path() + "\\b.std"), directory.path() + "\\b.std");
}

TEST(SafeWriter, ReplacesAFileWholeAndLeavesNothingElseBehind) {
    const TemporaryDirectory directory;
    const std::string path = directory.path("x.std");
    ASSERT_TRUE(writeWholeFile(path, "old").written);
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    ASSERT_TRUE(writeWholeFile(path, "new content").written);
    EXPECT_EQ(fileContent(path), "new content");
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(std::distance(fs::directory_iterator(directory.path()), fs::directory_iterator()), 1);
}

TEST(SafeWriter, FollowsALinkAndKeepsIt) {
    const TemporaryDirectory directory;
    putFile(directory.path("real.std"), "old");
    fs::create_symlink("real.std", directory.path("link.std"));
    ASSERT_TRUE(writeWholeFile(directory.path("link.std"), "new").written);
    EXPECT_TRUE(fs::is_symlink(directory.path("link.std")));
    EXPECT_EQ(fileContent(directory.path("real.std")), "new");
}

TEST(SafeWriter, SaysWhyItFailedAndLeavesTheOldFile) {
    const TemporaryDirectory directory;
    const WriteOutcome outcome = writeWholeFile(directory.path("no/such/x.std"), "text");
    EXPECT_FALSE(outcome.written);
    EXPECT_FALSE(outcome.failure.empty());
    fs::create_directory(directory.path("d.std"));
    EXPECT_FALSE(writeWholeFile(directory.path("d.std"), "text").written);
    EXPECT_EQ(std::distance(fs::directory_iterator(directory.path()), fs::directory_iterator()), 1);
}

TEST(SafeWriter, FollowsALinkToAFileThatDoesNotExistYet) {
    const TemporaryDirectory directory;
    fs::create_symlink("real.std", directory.path("link.std"));
    ASSERT_TRUE(writeWholeFile(directory.path("link.std"), "new").written);
    EXPECT_TRUE(fs::is_symlink(directory.path("link.std")));
    EXPECT_EQ(fileContent(directory.path("real.std")), "new");
}

#ifndef _WIN32
TEST(SafeWriter, RefusesWhatIsNoPlainFileAsTargetAndAsInput) {
    const TemporaryDirectory directory;
    const std::string pipe = directory.path("pipe.std");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string &path : {pipe, std::string("/dev/zero"), std::string("/dev/null")}) {
        EXPECT_EQ(writeWholeFile(path, "text").failure, NotAPlainFile) << path;
        std::string content;
        std::string failure;
        EXPECT_FALSE(readWholeFile(path, content, failure)) << path;
        EXPECT_EQ(failure, NotAPlainFile) << path;
    }
    EXPECT_TRUE(fs::is_fifo(pipe));
}

TEST(SafeWriter, RemovesWhatKilledRunsHaveLeftAndNothingElse) {
    const TemporaryDirectory directory;
    const std::string own = temporaryName(directory.path());
    const std::string name = fileNameOf(own).data();
    const std::string host = name.substr(9, name.find('-', 9) - 9);
    const std::string gone = directory.path(".keldrin-" + host + "-999999999-1-1.part");
    const std::string reborn =
        directory.path(".keldrin-" + host + "-" + std::to_string(::getpid()) + "-1-1.part");
    const std::string alive = directory.path(".keldrin-" + host + "-1-1-1.part");
    const std::string elsewhere = directory.path(".keldrin-otherhost-999999999-1-1.part");
    const std::string alien = directory.path(".keldrin-notes.part");
    for (const std::string &path : {own, gone, reborn, alive, elsewhere, alien}) {
        putFile(path, "x");
    }
    ASSERT_TRUE(writeWholeFile(directory.path("x.std"), "text").written);
    EXPECT_FALSE(fs::exists(gone));
    EXPECT_FALSE(fs::exists(reborn)) << "of an earlier process of this number";
    for (const std::string &path : {own, alive, elsewhere, alien}) {
        EXPECT_TRUE(fs::exists(path)) << path;
    }
}
#endif

#ifdef __linux__
TEST(SafeWriter, AFullDiskIsAFailure) {
    EXPECT_FALSE(writeWholeFile("/proc/keldrin.std", "text").written);
    EXPECT_FALSE(appendToFile("/dev/full", std::string(100'000, 'x')));
}
#endif

} // namespace
} // namespace keldrin
