#include "page/surfaces/null_surface.h"
#include "support/message_recorder.h"
#include "text/enumeration.h"
#include "toolkit/backend.h"
#include "toolkit/control_ids.h"
#include "toolkit/dialog_model.h"
#include "toolkit/dialog_specs/dialog_specs.h"

#include <gmock/gmock.h>

#include <array>
#include <string>

namespace keldrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A toolkit that answers every blocking dialog in the same way and keeps what it saw.
class AnsweringBackend : public Backend {
  public:
    int choice = 0; ///< entry that the user picks; 0 leaves the first one
    int button = ButtonContinue;
    std::vector<std::string> asked;

    AnsweringBackend() {
        enumerationMemo().entries.clear();
        ToolkitInit(*this, {"keldrin"});
    }
    ~AnsweringBackend() override {
        ToolkitClose();
        enumerationMemo().entries.clear();
    }

    int runModal(DialogModel &dialog) override {
        ControlState &list = *findControl(dialog, 1092);
        asked.push_back(std::to_string(dialog.number) + "|" + findControl(dialog, 1061)->label +
                        "|" + shownValue(*findControl(dialog, 1091)) + "|" +
                        std::to_string(list.entries.size()) + ":" + shownValue(list));
        if (choice > 0) {
            chooseEntry(list, choice);
        }
        return button;
    }

    void start() override {}
    int stop() override { return 0; }
    PixelSize screenSize() override { return {1000, 800}; }
    void openRoot(const RootSpec & /*spec*/) override {}
    PixelRect rootRect() override { return {}; }
    void setTitle(std::string_view /*title*/) override {}
    void setMenu(int /*command*/, bool /*on*/) override {}
    void serveMenu(bool /*on*/) override {}
    Surface &screen() override { return surface_; }
    bool hasSurface() override { return false; }
    void flush() override {}
    RawEvent wait() override { return {}; }
    bool peek(RawEvent & /*event*/) override { return false; }
    void loadDialog(DialogModel & /*dialog*/) override {}
    void showDialog(DialogModel & /*dialog*/, DialogPlacement /*placement*/) override {}
    void hideDialog(DialogModel & /*dialog*/) override {}
    void unloadDialog(DialogModel & /*dialog*/) override {}
    void refresh(DialogModel & /*dialog*/, int /*id*/) override {}
    std::optional<std::string> chooseFile(const FileRequest & /*request*/) override { return {}; }
    BoxResult messageBox(const BoxRequest & /*request*/) override { return {}; }
    RunResult run(const std::vector<std::string> & /*command*/,
                  const ChildWatch & /*watch*/) override {
        return {};
    }
    RubberEnd rubberBand(double /*pageX*/, double /*pageY*/) override { return {}; }
    std::unique_ptr<Surface> printer(PrinterPage & /*page*/) override { return nullptr; }
    void trace(std::string_view /*kind*/, std::string_view /*text*/) override {}

  private:
    NullSurface surface_;
};

constexpr std::array<std::string_view, 3> Units = {"UV/A  ", "NV/AM2", "NT/SEC"};
constexpr std::array<std::string_view, 4> Components = {"EX", "HX", "HXY", "   "};
constexpr std::array<std::string_view, 2> Arrays = {"LOOP", "COIN"};

TEST(Enumeration, MatchesWithoutAsking) {
    AnsweringBackend user;
    const std::pair<const char *, int> cases[] = {
        {"uv/a", 1}, {" nT/sec ", 3}, {"in nV/Am2 units", 2}};
    for (const auto &[text, expected] : cases) {
        int index = 0;
        EXPECT_EQ(Str_to_iEnumeration(text, "Unit.TEM", Units, index), 0) << text;
        EXPECT_EQ(index, expected) << text;
    }
    for (const char *text : {"", "   ", "*", "uV/A*"}) {
        int index = 9;
        EXPECT_EQ(Str_to_iEnumeration(text, "Unit.TEM", Units, index), -1) << text;
        EXPECT_EQ(index, 9) << text;
    }
    EXPECT_THAT(user.asked, IsEmpty());
    EXPECT_THAT(enumerationMemo().entries, IsEmpty());
}

TEST(Enumeration, EqualNamesComeBeforeContainedOnesAndABlankNameCatchesTheRest) {
    AnsweringBackend user;
    const std::pair<const char *, int> cases[] = {
        {"hxy", 3}, {"hxyz", 2}, {"anything", 4}, {"rex", 1}};
    for (const auto &[text, expected] : cases) {
        int index = 0;
        EXPECT_EQ(Str_to_iEnumeration(text, "Rx.Cmp", Components, index), 0) << text;
        EXPECT_EQ(index, expected) << text;
    }
    EXPECT_THAT(user.asked, IsEmpty());
}

TEST(Enumeration, AnAnswerCountsForEveryEnumerationInTheRun) {
    AnsweringBackend user;
    user.choice = 3;
    WDialogLoad(ConfigurationDialog);
    int index = 7;
    EXPECT_EQ(Str_to_iEnumeration(" volts", " Unit.TEM ", Units, index), 0);
    EXPECT_EQ(index, 3);
    // the entry before the choice is `index`, held to the list
    EXPECT_THAT(user.asked, ElementsAre("106|Match this Unit.TEM label|VOLTS|3:NT/SEC"));
    EXPECT_EQ(ToolkitDialogInfo(2), Dialog::Configuration);
    // also where the number means nothing
    EXPECT_EQ(Str_to_iEnumeration("Volts", "Survey.Array", Arrays, index), 0);
    EXPECT_EQ(index, 3);
    EXPECT_EQ(user.asked.size(), 1U);
}

TEST(Enumeration, ACancelledWordIsNeverAskedAgain) {
    AnsweringBackend user;
    user.choice = 2;
    user.button = ButtonCancel;
    int index = 0;
    EXPECT_EQ(Str_to_iEnumeration("volts", "Unit.TEM", Units, index), 2);
    EXPECT_EQ(Str_to_iEnumeration("VOLTS", "Unit.TEM", Units, index), 2);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(user.asked.size(), 1U);
    EXPECT_EQ(enumerationMemo().entries.front().answer, -1);
}

TEST(Enumeration, TheMemoDropsItsOldestWord) {
    AnsweringBackend user;
    int index = 0;
    for (int i = 0; i <= 32; ++i) {
        Str_to_iEnumeration("word" + std::to_string(i), "Unit.TEM", Units, index);
    }
    EXPECT_EQ(enumerationMemo().entries.size(), 32U);
    EXPECT_EQ(user.asked.size(), 33U);
    Str_to_iEnumeration("word1", "Unit.TEM", Units, index);
    EXPECT_EQ(user.asked.size(), 33U);
    Str_to_iEnumeration("word0", "Unit.TEM", Units, index);
    EXPECT_EQ(user.asked.size(), 34U);
}

} // namespace
} // namespace keldrin
