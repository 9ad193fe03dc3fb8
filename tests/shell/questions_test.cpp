#include "conditioning/configuration_dialog.h"
#include "messages/questions.h"
#include "shell/matching_label_dialog.h"
#include "toolkit/control_ids.h"
#include "toolkit/dialog_model.h"
#include "toolkit/scripted/answering_backend.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace keldrin {
namespace {

/// A user who picks the second name, or cancels.
class NamingBackend : public AnsweringBackend {
  public:
    NamingBackend() { ToolkitInit(*this, {"keldrin"}); }
    ~NamingBackend() override { ToolkitClose(); }

    int runModal(DialogModel &dialog) override {
        ControlState &list = *findControl(dialog, MatchingLabelControl::Names);
        asked = std::to_string(dialog.number) + "|" +
                findControl(dialog, MatchingLabelControl::Title)->label + "|" +
                shownValue(*findControl(dialog, MatchingLabelControl::Word)) + "|" +
                shownValue(list);
        chooseEntry(list, 2);
        return button;
    }
    std::optional<std::string> chooseFile(const FileRequest &request) override {
        asked = request.title + "|" + request.filter + "|" + request.path;
        return "chosen.stn";
    }

    int button = ButtonContinue;
    std::string asked;
};

constexpr std::array<std::string_view, 3> Units = {"UV/A  ", "NV/AM2", "NT/SEC"};

TEST(QuestionsOnScreen, AWordIsMatchedInADialogOverTheOneBelow) {
    NamingBackend user;
    WDialogLoad(ConfigurationDialog);
    int index = 3;
    EXPECT_TRUE(askForName({"VOLTS", "Unit.TEM", Units}, index));
    EXPECT_EQ(user.asked, "106|Match this Unit.TEM label|VOLTS|NT/SEC");
    EXPECT_EQ(index, 2);
    EXPECT_EQ(ToolkitDialogInfo(DialogSelected), ConfigurationDialog.number);
    user.button = ButtonCancel;
    index = 1;
    EXPECT_FALSE(askForName({"VOLTS", "Unit.TEM", Units}, index));
    EXPECT_EQ(index, 1);
}

TEST(QuestionsOnScreen, AFileIsChosenFromWhereItWasLookedFor) {
    NamingBackend user;
    std::string path = "line.stn";
    EXPECT_TRUE(askForFile({"Optional stn file|*.stn|", "Select it"}, path));
    EXPECT_EQ(user.asked, "Select it|Optional stn file|*.stn||line.stn");
    EXPECT_EQ(path, "chosen.stn");
}

} // namespace
} // namespace keldrin
