#include "conditioning/data_input_dialog.h"

#include "toolkit/control_ids.h"
#include "toolkit/scripted/answering_backend.h"
#include "toolkit/toolkit.h"

#include <gmock/gmock.h>

#include <functional>

namespace keldrin {
namespace {

using testing::ElementsAre;

constexpr int LineList = 1082;
constexpr int AreaX = 1083;
constexpr int AreaZ = 1117;
constexpr int QdrIncrement = 1115;
constexpr int ClientBegin = 1118;

class DataInputDialog : public testing::Test {
  protected:
    DataInputDialog() {
        ToolkitInit(backend, {"test"});
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
    ~DataInputDialog() override { ToolkitClose(); }

    // The dialog as a user answers it, who ends it by Continue or by the button that is named.
    int answer(const std::function<void(AnsweringBackend &)> &user) {
        backend.beforeAnswer = [&user](AnsweringBackend &answers, int /*dialog*/) {
            user(answers);
        };
        return VerifyDataInput(model);
    }

    AnsweringBackend backend;
    SurveyModel model;
};

TEST_F(DataInputDialog, ShowsAndTakesTheValuesOfTheSelectedLine) {
    EXPECT_EQ(answer([](AnsweringBackend &user) { user.edit(LineList, "L2"); }), 0);
    EXPECT_EQ(model.lines.SelectedLine, 2);
    EXPECT_EQ(model.preset.SelectedArrayIndex, 2);
    EXPECT_THAT(model.preset.RxAreaXYZ, ElementsAre(50.0F, 50.0F, 50.0F));
    EXPECT_EQ(model.preset.StnRescaleClient.begin, 500.0);
}

TEST_F(DataInputDialog, WhatIsTypedBelongsToTheLineThatIsShown) {
    EXPECT_EQ(answer([](AnsweringBackend &user) {
                  user.edit(AreaZ, "25");
                  user.edit(LineList, "L2");
                  user.edit(ClientBegin, "700");
              }),
              0);
    EXPECT_THAT(model.lines.entries[0].scaling.RxAreaXYZ, ElementsAre(1000.0F, 1000.0F, 25.0F));
    EXPECT_EQ(model.lines.entries[0].scaling.StnRescaleClient.begin, 100.0);
    EXPECT_THAT(model.preset.RxAreaXYZ, ElementsAre(50.0F, 50.0F, 50.0F));
    EXPECT_EQ(model.preset.StnRescaleClient.begin, 700.0);
}

TEST_F(DataInputDialog, CancelStoresNothing) {
    EXPECT_EQ(answer([](AnsweringBackend &user) {
                  user.edit(LineList, "L2");
                  user.edit(AreaX, "25");
                  user.pressInstead(ButtonCancel);
              }),
              2);
    EXPECT_EQ(model.lines.SelectedLine, 0);
    EXPECT_THAT(model.lines.entries[1].scaling.RxAreaXYZ, ElementsAre(50.0F, 50.0F, 50.0F));
}

TEST_F(DataInputDialog, ValuesAreHeldInTheirLimits) {
    model.lines.entries[0].scaling.RxAreaXYZ[0] = 1e-6F;
    EXPECT_EQ(answer([](AnsweringBackend &user) {
                  user.edit(AreaZ, "1e12");
                  user.edit(QdrIncrement, "0");
              }),
              0);
    EXPECT_THAT(model.preset.RxAreaXYZ, ElementsAre(0.1F, 1000.0F, 9.9E9F));
    EXPECT_EQ(model.preset.StnRescaleQdr.increment, 0.01);
}

} // namespace
} // namespace keldrin
