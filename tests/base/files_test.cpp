#include "base/paths.h"
#include "base/safe_writer.h"
#include "support/files.h"
#include "support/temporary_directory.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <string>

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

#ifdef __linux__
TEST(SafeWriter, AFullDiskIsAFailure) {
    EXPECT_FALSE(writeWholeFile("/proc/keldrin.std", "text").written);
    EXPECT_FALSE(appendToFile("/dev/full", std::string(100'000, 'x')));
}
#endif

} // namespace
} // namespace keldrin
