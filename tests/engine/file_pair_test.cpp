#include "engine/file_pair.h"

#include "support/files.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace keldrin {
namespace {

TEST(FilePair, NeitherIsReplacedWhenEitherHasChangedSinceItWasRead) {
    const TemporaryDirectory directory;
    const std::array<std::string, 2> paths = {directory.path("line.m1d"),
                                              directory.path("line.std")};
    for (const std::string &changed : paths) {
        std::array<OldFile, 2> old;
        std::string reason;
        for (std::size_t i = 0; i < paths.size(); ++i) {
            putFile(paths[i], "as it was");
            ASSERT_TRUE(old[i].read(paths[i], reason));
        }
        putFile(changed, "by another");
        const std::string text = "new";
        EXPECT_EQ(replacePair({old[0], text, ""}, {old[1], text, ""}, {}, reason),
                  PairResult::Failed)
            << changed;
        EXPECT_NE(reason.find("has changed"), std::string::npos) << reason;
        for (const std::string &path : paths) {
            EXPECT_EQ(fileContent(path), path == changed ? "by another" : "as it was");
        }
    }
}

} // namespace
} // namespace keldrin
