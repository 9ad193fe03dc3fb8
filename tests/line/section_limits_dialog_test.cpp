#include "line/section_limits_dialog.h"

#include "line_survey.h"
#include "support/message_recorder.h"
#include "toolkit/control_ids.h"
#include "toolkit/scripted/answering_backend.h"
#include "toolkit/toolkit.h"
#include "toolkit/toolkit_state.h"
#include "toolkit/user_edits.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace keldrin {
namespace {

class LineLimits : public testing::Test {
  protected:
    using Edits = std::vector<std::pair<int, std::string>>;

    LineLimits() {
        ToolkitInit(backend, {"keldrin"});
        WindowOpen(7, -1, -1, 1000, 750);
    }
    ~LineLimits() override { ToolkitClose(); }
    LineLimits(const LineLimits &) = delete;
    LineLimits &operator=(const LineLimits &) = delete;

    // Ticks a check box, unless it is 0, and types into fields.
    void answer(int check, const Edits &edits, int button = ButtonContinue) {
        backend.beforeAnswer = [this, check, edits, button](AnsweringBackend &answers, int) {
            shown = topDialog()->controls;
            if (check != 0) {
                userChecks(*topDialog(), check, true);
            }
            for (const auto &[id, text] : edits) {
                EXPECT_TRUE(answers.edit(id, text)) << id;
            }
            answers.pressInstead(button);
        };
    }
    [[nodiscard]] std::string textOf(int id) const {
        for (const ControlState &state : shown) {
            if (state.id == id) {
                return state.text;
            }
        }
        return "none";
    }

    MessageRecorder messages;
    AnsweringBackend backend;
    SurveyModel survey = lineSurvey(4);
    std::vector<ControlState> shown;
};

TEST_F(LineLimits, OfASectionShowWhatIsInForceAndCountWhenSwitchedOn) {
    using namespace SectionLimitsControl;
    SectionLimits limits;
    const SectionPage page = sectionPage(survey, limits, "line.std");
    answer(SetResistivity, {{ResistivityHigh, "5"}, {ResistivityLow, "200"}, {TimeLow, "0"}});
    EXPECT_TRUE(askSectionLimits(page, limits));
    EXPECT_EQ(textOf(ResistivityHigh), "200.0");
    EXPECT_EQ(textOf(ResistivityLow), "10.00");
    const SectionPage changed = sectionPage(survey, limits, "line.std");
    EXPECT_EQ(changed.resistivity.low, 5.0F) << "ends in the wrong order are exchanged";
    EXPECT_EQ(changed.resistivity.high, 200.0F);
    EXPECT_EQ(changed.times.top, page.times.top);
    EXPECT_EQ(messages.warnings.size(), 0U) << "0 msec has no place on the axis";

    const SectionLimits before = limits;
    answer(0, {{ResistivityHigh, "70"}}, ButtonCancel);
    EXPECT_FALSE(askSectionLimits(changed, limits));
    EXPECT_EQ(limits.resistivity.high, before.resistivity.high);
}

TEST_F(LineLimits, OfProfilesTakeAListOfWindows) {
    using namespace ProfileLimitsControl;
    ProfileLimits limits;
    const ProfilePage page = profilePage(survey, limits, "line.std");
    answer(SetData, {{Windows, "1-2,5"}, {DataHigh, "300"}});
    EXPECT_TRUE(askProfileLimits(page, limits));
    EXPECT_EQ(textOf(DataHigh), "1000.");
    const ProfilePage changed = profilePage(survey, limits, "line.std");
    EXPECT_EQ(changed.curves.size(), 3U);
    EXPECT_FLOAT_EQ(changed.top, ArcSinh(300.0F));
    answer(0, {{Windows, "7-5"}});
    EXPECT_TRUE(askProfileLimits(changed, limits));
    EXPECT_EQ(limits.windows, "1-2,5") << "a list that cannot be read changes nothing";
}

} // namespace
} // namespace keldrin
