#include "conditioning/data_input_dialog.h"
#include "conditioning/dialog_fixture.h"
#include "conditioning/line_azimuth_dialog.h"

#include <gmock/gmock.h>

namespace keldrin {
namespace {

using testing::ElementsAre;

class DataInputDialogTest : public DialogTest {
  protected:
    DataInputDialogTest() {
        model.lines.LineCount = 2;
        model.lines.entries[0].LineLabel = "8040N FXL";
        model.lines.entries[1].LineLabel = "8225N MVL";
        model.lines.entries[1].ArrayIndex = MovingLoop;
        model.lines.entries[0].scaling.RxAreaXYZ = {1.0F, 100.0F / 3.0F, 1.0E12F};
        model.lines.entries[0].scaling.StnRescaleClient.increment = 0.0;
        model.lines.entries[1].scaling.RxAreaXYZ = {7.0F, 8.0F, 9.0F};
    }
    LineScaling &scaling(std::size_t line) { return model.lines.entries[line].scaling; }

    SurveyModel model;
};

using namespace DataInputControl;

TEST_F(DataInputDialogTest, EveryFieldIsShownTypedAndHeldInItsLimits) {
    answer({{AreaX, "0"},
            {QdrBegin, "-12,5"},
            {QdrIncrement, "0"},
            {ClientBegin, "1E12"},
            {ClientIncrement, "-0.001"}},
           ButtonContinue, [] {
               EXPECT_EQ(shown(Line), "8040N FXL") << "the first, where none is chosen";
               EXPECT_EQ(shown(AreaX), "1.000");
               EXPECT_EQ(shown(AreaY), "33.33");
               EXPECT_EQ(shown(AreaZ), "9.900E+9") << "held in its range before it is shown";
               EXPECT_EQ(shown(QdrBegin), "0.00");
               EXPECT_EQ(shown(QdrIncrement), "1.00");
               EXPECT_EQ(shown(ClientIncrement), "0.00") << "0.001";
           });
    EXPECT_EQ(VerifyDataInput(model), 0);
    EXPECT_EQ(model.lines.SelectedLine, 1);
    EXPECT_EQ(scaling(0).RxAreaXYZ[0], 0.1F);
    EXPECT_EQ(scaling(0).RxAreaXYZ[1], 100.0F / 3.0F) << "untouched and exact";
    EXPECT_EQ(scaling(0).RxAreaXYZ[2], 9.9E9F);
    EXPECT_EQ(scaling(0).StnRescaleQdr.begin, -12.5);
    EXPECT_EQ(scaling(0).StnRescaleQdr.increment, 0.01);
    EXPECT_EQ(scaling(0).StnRescaleClient.begin, 9.9E9);
    EXPECT_EQ(scaling(0).StnRescaleClient.increment, -0.01);
    EXPECT_EQ(model.preset.RxAreaXYZ[0], 0.1F);
}

TEST_F(DataInputDialogTest, AreasBelongToTheLineThatTheyWereTypedFor) {
    answer({{AreaX, "2"}, {AreaY, "a"}, {Line, "#2"}, {AreaX, "3"}, {AreaZ, "b"}});
    EXPECT_EQ(VerifyDataInput(model), 0);
    EXPECT_EQ(model.lines.SelectedLine, 2);
    EXPECT_EQ(model.preset.SelectedArrayIndex, MovingLoop);
    EXPECT_EQ(scaling(0).RxAreaXYZ[0], 2.0F);
    EXPECT_EQ(scaling(1).RxAreaXYZ[0], 3.0F);
    EXPECT_EQ(scaling(1).RxAreaXYZ[1], 8.0F);
    EXPECT_THAT(messages.errors,
                ElementsAre("Effective Area across-line Y: \"a\" cannot be read; 33.33 m^2 stays.|"
                            "Effective Area vertical Z: \"b\" cannot be read; 9.000 m^2 stays."));
}

TEST_F(DataInputDialogTest, CancelStoresNothing) {
    const LineScaling first = scaling(0);
    answer({{AreaX, "2"}, {Line, "#2"}, {QdrBegin, "5"}, {AreaY, "?"}}, ButtonCancel);
    EXPECT_EQ(VerifyDataInput(model), 2);
    EXPECT_EQ(model.lines.SelectedLine, 0);
    EXPECT_EQ(scaling(0).RxAreaXYZ, first.RxAreaXYZ);
    EXPECT_EQ(scaling(0).StnRescaleClient.increment, 0.0);
    EXPECT_EQ(scaling(1).StnRescaleQdr.begin, 0.0);
}

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
    EXPECT_THAT(messages.errors, ElementsAre());
}

TEST_F(LineAzimuthDialogTest, AnUnreadableAnswerKeepsTheAzimuthAndIsTold) {
    answer({{Azimuth, "N45E"}});
    float azimuth = 450.0F;
    VerifyLineAzimuth(63.0F, azimuth);
    EXPECT_EQ(azimuth, 90.0F);
    EXPECT_THAT(messages.errors,
                ElementsAre("Verify Line azimuth: \"N45E\" cannot be read; 90 stays."));
}

} // namespace
} // namespace keldrin
