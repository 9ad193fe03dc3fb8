#include "conditioning/auto_skip_dialog.h"

#include "support/message_recorder.h"
#include "toolkit/control_ids.h"
#include "toolkit/scripted/answering_backend.h"
#include "toolkit/toolkit_state.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <string>

namespace keldrin {
namespace {

using testing::ElementsAre;
using testing::IsSupersetOf;

struct Window {
    float observed = 0.0F;
    float error = 0.0F;
};

SoundingRecord sounding(std::initializer_list<Window> windows) {
    SoundingRecord record;
    for (const Window &window : windows) {
        const auto i = static_cast<std::size_t>(record.NumTW++);
        record.TEMobs[i] = window.observed;
        record.TEMerr[i] = window.error;
    }
    return record;
}

SurveyModel lineOf(std::initializer_list<SoundingRecord> soundings) {
    SurveyModel model;
    model.hTrn = soundings;
    model.SoundingCount = static_cast<int>(model.hTrn.size());
    model.control.DataCutoff = 5.0F;
    return model;
}

// The skipped windows of a sounding, as one digit each.
std::string marks(const SoundingRecord &record) {
    std::string digits;
    for (std::size_t i = 0; i < static_cast<std::size_t>(record.NumTW); ++i) {
        digits += isSkipped(record.TEMerr[i]) ? '1' : '0';
    }
    return digits;
}

constexpr AutoSkipSettings NoFilter = {1, 128, false, false, false};
constexpr AutoSkipSettings ErrorFilter = {1, 128, true, false, false};
constexpr AutoSkipSettings NegativeFilter = {1, 128, false, true, false};
constexpr AutoSkipSettings SlopeFilter = {1, 128, false, false, true};

AutoSkipSettings within(AutoSkipSettings settings, int first, int last) {
    settings.firstWindow = first;
    settings.lastWindow = last;
    return settings;
}

TEST(AutoSkipFilters, MarkAsTheirWordsSay) {
    const struct {
        const char *what;
        SoundingRecord windows;
        AutoSkipSettings settings;
        std::string expected;
    } cases[] = {
        {"earlier marks are gone", sounding({{9, 1003}, {8, 1900}, {-7, 3}}), NoFilter, "000"},
        {"outside the range all is skipped", sounding({{9, 3}, {8, 3}, {7, 3}, {6, 3}}),
         within(NoFilter, 2, 3), "1001"},
        {"typed the wrong way round", sounding({{9, 3}, {8, 3}, {7, 3}}), within(NoFilter, 3, 1),
         "111"},
        {"from an error on", sounding({{9, 5}, {8, 5.2F}, {7, 1}, {6, 1}}), ErrorFilter, "0111"},
        {"by the error of a skipped window too", sounding({{9, 1005.2F}, {8, 1}}), ErrorFilter,
         "11"},
        {"an error before the range does not stick", sounding({{9, 50}, {8, 1}, {7, 1}}),
         within(ErrorFilter, 2, 3), "100"},
        {"only the negative one", sounding({{9, 3}, {-8, 3}, {0, 3}, {6, 3}}), NegativeFilter,
         "0110"},
        {"a rise with a small error", sounding({{9, 3}, {8, 3}, {8.5F, 1}, {6, 9}}), SlopeFilter,
         "0000"},
        {"a rise with an error", sounding({{9, 3}, {8, 3}, {8.5F, 1.5F}, {6, 0.5F}}), SlopeFilter,
         "0011"},
        {"a level one rises", sounding({{9, 3}, {9, 1.5F}, {6, 3}}), SlopeFilter, "011"},
        {"compared with a skipped window",
         sounding({{9, 3}, {-2, 3}, {1, 3}, {-3, 3}}),
         {1, 128, false, true, true},
         "0111"},
        {"the first of the range has none before it", sounding({{1, 3}, {8, 3}, {7, 3}}),
         within(SlopeFilter, 2, 3), "100"},
    };
    for (const auto &c : cases) {
        SurveyModel model = lineOf({c.windows});
        applyAutoSkip(model, c.settings);
        EXPECT_EQ(marks(model.hTrn[0]), c.expected) << c.what;
        for (std::size_t i = 0; i < static_cast<std::size_t>(c.windows.NumTW); ++i) {
            EXPECT_NEAR(trueError(model.hTrn[0].TEMerr[i]), trueError(c.windows.TEMerr[i]), 1e-4);
        }
    }
}

TEST(AutoSkipFilters, EverySoundingStartsAnew) {
    SurveyModel model = lineOf({sounding({{9, 3}, {8, 6}, {7, 3}}), sounding({{9, 3}, {8, 3}}),
                                sounding({{9, 6}, {10, 3}, {-8, 3}})});
    const AutoSkipCounts counts = applyAutoSkip(model, {});
    EXPECT_EQ(marks(model.hTrn[0]), "011");
    EXPECT_EQ(marks(model.hTrn[1]), "00");
    EXPECT_EQ(marks(model.hTrn[2]), "111");
    EXPECT_EQ(counts.error, 5);
    EXPECT_EQ(counts.slope, 2);
    EXPECT_EQ(counts.negative, 1);
    EXPECT_EQ(counts.skipped, 5) << "a window taken twice is one";
    EXPECT_EQ(counts.windows, 8);
    const AutoSkipCounts ranged = applyAutoSkip(model, within(NoFilter, 2, 2));
    EXPECT_EQ(ranged.outsideRange, 5);
    EXPECT_EQ(ranged.skipped, 5);
}

class AutoSkipDialogAnswers : public testing::Test {
  protected:
    AutoSkipDialogAnswers() { ToolkitInit(backend, {"keldrin"}); }
    ~AutoSkipDialogAnswers() override { ToolkitClose(); }

    void answer(std::function<void(AnsweringBackend &)> by) {
        backend.beforeAnswer = [this, by = std::move(by)](AnsweringBackend &answers, int dialog) {
            EXPECT_EQ(dialog, AutoSkipDialog.number);
            asked = true;
            by(answers);
        };
    }
    static std::string shown(int id) {
        const ControlState *control = findControl(*topDialog(), id);
        return control->kind == ControlKind::Static ? control->label : shownValue(*control);
    }

    MessageRecorder messages;
    AnsweringBackend backend;
    SurveyModel model = lineOf({sounding({{9, 3}, {8, 3}}), sounding({{9, 3}, {8, 3}, {7, 3}})});
    AutoSkipSettings settings;
    bool asked = false;
};

TEST_F(AutoSkipDialogAnswers, LimitedNumbersBecomeSettingsAtContinueOnly) {
    settings = within(settings, 10, 2);
    model.control.DataCutoff = 0.01F;
    const auto look = [](AnsweringBackend &) {
        EXPECT_EQ(shown(1085), "2") << "swapped";
        EXPECT_EQ(shown(1086), "3") << "limited to the longest sounding";
        EXPECT_EQ(shown(3086), "of 3");
        EXPECT_EQ(shown(1051), "0.1");
    };
    answer([&](AnsweringBackend &answers) {
        look(answers);
        answers.pressInstead(ButtonCancel);
    });
    EXPECT_EQ(AutoSkip(model, settings), 1);
    EXPECT_EQ(settings.firstWindow, 10);
    EXPECT_EQ(settings.lastWindow, 2);
    EXPECT_EQ(model.control.DataCutoff, 0.01F);
    EXPECT_EQ(marks(model.hTrn[0]), "00");
    EXPECT_THAT(messages.infos, ElementsAre());
    answer(look);
    EXPECT_EQ(AutoSkip(model, settings), 0);
    EXPECT_EQ(settings.firstWindow, 2);
    EXPECT_EQ(settings.lastWindow, 3);
    EXPECT_EQ(model.control.DataCutoff, 0.1F);
}

TEST_F(AutoSkipDialogAnswers, AnswersStayAndUnreadableOnesDoNotCount) {
    answer([](AnsweringBackend &answers) {
        EXPECT_TRUE(answers.edit(1085, "3"));
        EXPECT_TRUE(answers.edit(1086, "2"));
        EXPECT_TRUE(answers.edit(1051, "99999"));
        EXPECT_TRUE(answers.edit(1089, "off"));
    });
    EXPECT_EQ(AutoSkip(model, settings), 0);
    EXPECT_EQ(marks(model.hTrn[1]), "100") << "3 to 2 means 2 to 3";
    EXPECT_EQ(settings.firstWindow, 2);
    EXPECT_EQ(model.control.DataCutoff, 10000.0F);
    answer([](AnsweringBackend &answers) {
        EXPECT_EQ(shown(1085), "2");
        EXPECT_EQ(shown(1086), "3");
        EXPECT_EQ(shown(1089), "off");
        EXPECT_TRUE(answers.edit(1085, "first"));
        EXPECT_TRUE(answers.edit(1086, "9"));
        EXPECT_TRUE(answers.edit(1051, ""));
    });
    EXPECT_EQ(AutoSkip(model, settings), 0);
    EXPECT_EQ(settings.firstWindow, 2);
    EXPECT_EQ(settings.lastWindow, 3);
    EXPECT_EQ(model.control.DataCutoff, 10000.0F);
    EXPECT_EQ(marks(model.hTrn[1]), "100");
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0);
    EXPECT_THAT(messages.errors, ElementsAre());
    EXPECT_THAT(messages.infos,
                IsSupersetOf({"2 fields keep their values, see the log.",
                              "Use data from window: \"first\" cannot be read; 2 stays.",
                              "Skip data after error: \"\" cannot be read; 10000.0 % stays."}));
}

TEST_F(AutoSkipDialogAnswers, TellsHowManyWindowsEachFilterTook) {
    model.hTrn[1].TEMobs[2] = -7.0F;
    answer([](AnsweringBackend &answers) { answers.edit(1085, "2"); });
    EXPECT_EQ(AutoSkip(model, settings), 0);
    EXPECT_THAT(messages.infos,
                ElementsAre("", "Applying Auto Skip filters", "Auto Skip filtering is finished.",
                            "Windows taken by the window range: 2",
                            "Windows taken by the error filter: 0",
                            "Windows taken by the negative filter: 1",
                            "Windows taken by the slope filter: 0"));
    model.SoundingCount = 0;
    asked = false;
    EXPECT_EQ(AutoSkip(model, settings), 1);
    EXPECT_THAT(messages.errors, ElementsAre("ERROR: No valid data present."));
    EXPECT_FALSE(asked);
}

} // namespace
} // namespace keldrin
