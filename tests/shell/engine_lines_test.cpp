#include "shell/engine_lines.h"

#include <gtest/gtest.h>

namespace keldrin {
namespace {

TEST(EngineLines, SayHowFarTheEngineHasCome) {
    struct Case {
        const char *line;
        double done, total;
        const char *words;
    };
    const Case cases[] = {
        {"rkeldrin: iteration 3 of 8: misfit median 1.11, largest 2.87", 3, 8,
         "iteration 3 of 8: misfit median 1.11, largest 2.87"},
        {"rkeldrin: soundings 512 of 2048", 512, 2048, "soundings 512 of 2048"},
        {"soundings 1 of 2", 1, 2, "soundings 1 of 2"},
        {"rkeldrin: models of 24 soundings written to line1.std, 0.4 s", 0, 0, ""},
        {"rkeldrin: iteration of 8", 0, 0, ""},
        {"rkeldrin: iteration 3 of 0", 0, 0, ""},
        {"rkeldrin: iteration 99999999999 of 8", 0, 0, ""},
        {"", 0, 0, ""},
    };
    for (const Case &c : cases) {
        const CommandProgress progress = engineProgress(c.line);
        EXPECT_EQ(progress.done, c.done) << c.line;
        EXPECT_EQ(progress.total, c.total) << c.line;
        EXPECT_EQ(progress.words, c.words) << c.line;
    }
}

TEST(EngineLines, TheLineOfTheResultIsKnown) {
    EXPECT_TRUE(isEngineSummary("8 iterations, median misfit 0.97, 24 of 24 soundings"));
    EXPECT_TRUE(isEngineSummary("rkeldrin: 1 iteration, median misfit 0.97, 1 of 1 sounding"));
    EXPECT_TRUE(isEngineSummary("0 iterations, no data to fit, 0 of 24 soundings"));
    EXPECT_FALSE(isEngineSummary("iteration 1 of 8: no data to fit"));
    EXPECT_FALSE(isEngineSummary("iteration 3 of 8: misfit median 1.11, largest 2.87"));
    EXPECT_FALSE(isEngineSummary("models of 24 soundings written to median misfit b.std, 0.3 s"));
    EXPECT_EQ(withoutEngineName("rkeldrin: converged"), "converged");
    EXPECT_EQ(withoutEngineName("converged"), "converged");
}

} // namespace
} // namespace keldrin
