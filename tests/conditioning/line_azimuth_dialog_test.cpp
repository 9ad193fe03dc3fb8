#include "conditioning/line_azimuth_dialog.h"

#include "base/real.h"
#include "conditioning/dialog_fixture.h"

#include <gmock/gmock.h>

namespace keldrin {
namespace {

using testing::ElementsAre;
using LineAzimuthDialogTest = DialogTest;
using namespace LineAzimuthControl;

TEST_F(LineAzimuthDialogTest, ShowsBothWithinTheCircleAndTakesTheAnswer) {
    const struct {
        float trend, azimuth;
        const char *shownTrend, *shownAzimuth, *typed;
        float expected;
    } cases[] = {
        {63.4F, 450.0F, "63", "90", "", 90.0F},     {-450.0F, -400.5F, "-90", "-41", "", -41.0F},
        {MissingValue, 12.5F, "", "13", "", 13.0F}, {63.4F, 10.0F, "63", "10", "400", 360.0F},
        {63.4F, 10.0F, "63", "10", "-7", -7.0F},
    };
    for (const auto &c : cases) {
        const Edits edits = *c.typed != '\0' ? Edits{{Azimuth, c.typed}} : Edits{};
        answer(edits, ButtonContinue, [&] {
            EXPECT_EQ(shown(Trend), c.shownTrend);
            EXPECT_FALSE(control(Trend).enabled);
            EXPECT_EQ(shown(Azimuth), c.shownAzimuth);
        });
        float azimuth = c.azimuth;
        VerifyLineAzimuth(c.trend, azimuth);
        EXPECT_EQ(azimuth, c.expected);
    }
    EXPECT_THAT(unreadTold(), ElementsAre());
}

TEST_F(LineAzimuthDialogTest, AnUnreadableAnswerKeepsTheAzimuthAndIsTold) {
    answer({{Azimuth, "N45E"}});
    float azimuth = 450.0F;
    VerifyLineAzimuth(63.0F, azimuth);
    EXPECT_EQ(azimuth, 90.0F);
    EXPECT_THAT(unreadTold(),
                ElementsAre("Verify Line azimuth: \"N45E\" cannot be read; 90 deg stays."));
}

} // namespace
} // namespace keldrin
