#include "conditioning/data_input_dialog.h"

#include "conditioning/dialog_fixture.h"

#include <gmock/gmock.h>

namespace keldrin {
namespace {

using testing::ElementsAre;

using namespace DataInputControl;

class DataInputDialogTest : public DialogTest {
  protected:
    DataInputDialogTest() {
        model.lines.LineCount = 2;
        for (int i = 0; i < 2; ++i) {
            LineEntry &entry = model.lines.entries[static_cast<std::size_t>(i)];
            entry.LineLabel = "L" + std::to_string(i + 1);
            entry.ArrayIndex = i + 1;
            const float area = i == 0 ? 1000.0F : 50.0F;
            entry.scaling.RxAreaXYZ = {area, area, area};
            entry.scaling.StnRescaleClient.begin = i == 0 ? 100.0 : 500.0;
        }
    }

    int verify(const Edits &edits, int button = ButtonContinue, std::function<void()> look = {}) {
        answer(edits, button, std::move(look));
        return VerifyDataInput(model);
    }

    SurveyModel model;
};

TEST_F(DataInputDialogTest, ShowsAndTakesTheValuesOfTheSelectedLine) {
    EXPECT_EQ(verify({{Line, "L2"}}), 0);
    EXPECT_EQ(model.lines.SelectedLine, 2);
    EXPECT_EQ(model.preset.SelectedArrayIndex, 2);
    EXPECT_THAT(model.preset.RxAreaXYZ, ElementsAre(50.0F, 50.0F, 50.0F));
    EXPECT_EQ(model.preset.StnRescaleClient.begin, 500.0);
}

TEST_F(DataInputDialogTest, WhatIsTypedBelongsToTheLineThatIsShown) {
    EXPECT_EQ(verify({{AreaZ, "25"}, {Line, "L2"}, {ClientBegin, "700"}}), 0);
    EXPECT_THAT(model.lines.entries[0].scaling.RxAreaXYZ, ElementsAre(1000.0F, 1000.0F, 25.0F));
    EXPECT_EQ(model.lines.entries[0].scaling.StnRescaleClient.begin, 100.0);
    EXPECT_THAT(model.preset.RxAreaXYZ, ElementsAre(50.0F, 50.0F, 50.0F));
    EXPECT_EQ(model.preset.StnRescaleClient.begin, 700.0);
}

TEST_F(DataInputDialogTest, CancelStoresNothing) {
    EXPECT_EQ(verify({{Line, "L2"}, {AreaX, "25"}}, ButtonCancel), 2);
    EXPECT_EQ(model.lines.SelectedLine, 0);
    EXPECT_THAT(model.lines.entries[1].scaling.RxAreaXYZ, ElementsAre(50.0F, 50.0F, 50.0F));
}

TEST_F(DataInputDialogTest, ValuesAreHeldInTheirLimitsAndUntouchedOnesStayExact) {
    LineScaling &scaling = model.lines.entries[0].scaling;
    scaling.RxAreaXYZ = {1e-6F, 100.0F / 3.0F, 1000.0F};
    scaling.StnRescaleClient.increment = 0.0;
    const auto look = [] {
        EXPECT_EQ(shown(Line), "L1") << "the first, where none is chosen";
        EXPECT_EQ(shown(AreaX), "0.1000") << "in its limits before it is shown";
        EXPECT_EQ(shown(AreaY), "33.33");
        EXPECT_EQ(shown(ClientIncrement), "0.00") << "0.001";
    };
    EXPECT_EQ(
        verify({{AreaZ, "1e12"}, {QdrBegin, "-12,5"}, {QdrIncrement, "0"}}, ButtonContinue, look),
        0);
    EXPECT_THAT(model.preset.RxAreaXYZ, ElementsAre(0.1F, 100.0F / 3.0F, 9.9E9F));
    EXPECT_EQ(model.preset.StnRescaleQdr.begin, -12.5);
    EXPECT_EQ(model.preset.StnRescaleQdr.increment, 0.01);
    EXPECT_EQ(model.preset.StnRescaleClient.increment, 0.01);
    EXPECT_THAT(unreadTold(), ElementsAre());
    EXPECT_THAT(messages.warnings,
                ElementsAre("WARNING: The area of the receiver coil is given as 1e-06 m^2|"
                            "It is taken as 0.1 m^2"));
}

TEST_F(DataInputDialogTest, StationsThatFallKeepFalling) {
    model.lines.entries[0].scaling.StnRescaleClient.increment = -0.0005;
    EXPECT_EQ(verify({{QdrIncrement, "-25"}}), 0);
    EXPECT_EQ(model.preset.StnRescaleQdr.increment, -25.0);
    EXPECT_EQ(model.preset.StnRescaleClient.increment, -0.01) << "at least a hundredth in size";
}

TEST_F(DataInputDialogTest, UnreadableFieldsOfEveryLineThatWasShownAreTold) {
    EXPECT_EQ(verify({{AreaY, "a"}, {Line, "L2"}, {AreaZ, "b"}}), 0);
    EXPECT_THAT(model.lines.entries[0].scaling.RxAreaXYZ, ElementsAre(1000.0F, 1000.0F, 1000.0F));
    EXPECT_THAT(model.preset.RxAreaXYZ, ElementsAre(50.0F, 50.0F, 50.0F));
    EXPECT_THAT(unreadTold(),
                ElementsAre("2 fields keep their values, see the log.",
                            "Effective Area across-line Y: \"a\" cannot be read; 1000. m^2 stays.",
                            "Effective Area vertical Z: \"b\" cannot be read; 50.00 m^2 stays."));
    messages.infos.clear();
    EXPECT_EQ(verify({{AreaX, "c"}}, ButtonCancel), 2);
    EXPECT_THAT(unreadTold(), ElementsAre()) << "what is cancelled needs no message";
}

} // namespace
} // namespace keldrin
