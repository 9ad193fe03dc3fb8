#include "review/review_loop.h"

#include "review_line.h"
#include "support/files.h"
#include "support/message_recorder.h"
#include "support/temporary_directory.h"
#include "toolkit/scripted/scripted_backend.h"
#include "toolkit/toolkit_state.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

namespace keldrin {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

constexpr std::array<TestWindow, 4> Windows = {
    TestWindow{0.2F, 5000.0F, 100.0F, 2.0F}, TestWindow{1.0F, 300.0F, 50.0F, 8.0F},
    TestWindow{10.0F, 4.0F, 10.0F, 20.0F}, TestWindow{20.0F, 2.0F, 10.0F, 40.0F}};

/// A line of three like soundings in a review with Auto Skip open.
class LiveAutoSkipTest : public testing::Test {
  protected:
    LiveAutoSkipTest() {
        survey.hTrn.assign(3, soundingOf(Windows));
        survey.SoundingCount = 3;
        state.autoSkip.slopeFilter = false;
    }

    // Plays lines of a scenario against one entry of the review.
    int review(const std::vector<std::string> &lines) {
        std::string text;
        for (const std::string &line : lines) {
            text += line + "\n";
        }
        Script script;
        EXPECT_TRUE(parseScript(text, script).empty()) << text;
        std::ostringstream out;
        ScriptedBackend backend(std::move(script), out);
        ToolkitInit(backend, {"keldrin"});
        WindowOpen(ResizableWindow, -1, -1, 1000, 750);
        const int status =
            Review_Loop(survey, state, path, [this](SurveyModel &model, std::string &) {
                model = onDisk;
                return 0;
            });
        transcript = out.str();
        EXPECT_TRUE(toolkitState().dialogs.empty()) << "no dialog is left";
        EXPECT_FALSE(toolkitState().fieldChangeEvents);
        EXPECT_THAT(transcript, Not(HasSubstr("! "))) << transcript;
        ToolkitClose();
        return status;
    }
    [[nodiscard]] std::string marks() const {
        std::string digits;
        for (const SoundingRecord &record : survey.hTrn) {
            for (std::size_t i = 0; i < Windows.size(); ++i) {
                digits += isSkipped(record.TEMerr[i]) ? '1' : '0';
            }
            digits += ' ';
        }
        return digits;
    }
    // Rings of each drawing of the page that "show drawing" lists.
    [[nodiscard]] std::vector<int> rings() const {
        std::vector<int> counts;
        std::istringstream lines(transcript);
        for (std::string line; std::getline(lines, line);) {
            if (line.find("show drawing") != std::string::npos) {
                counts.push_back(0);
            } else if (line.starts_with("mark ring") && !counts.empty()) {
                ++counts.back();
            }
        }
        return counts;
    }

    MessageRecorder messages;
    TemporaryDirectory directory;
    std::string path = directory.path("line.std");
    SurveyModel survey;
    SurveyModel onDisk; ///< what a reload reads
    ReviewState state;
    std::string transcript;
};

TEST_F(LiveAutoSkipTest, RingsFollowTheNumbersAndTheSounding) {
    survey.hTrn[1].TEMerr[0] = 50.0F;
    for (const PageStyle style : {PageStyle::Standard, PageStyle::Presentation}) {
        state = {};
        state.style = style;
        state.autoSkip.slopeFilter = false;
        review({"show drawing", "key a", "show drawing", "set 1051 10", "show drawing",
                "set 1086 3", "key n", "show drawing", "key p", "set 1087 off", "set 1086 4",
                "show drawing", "key Escape", "show drawing", "key x"});
        // Each window has a mark of dB/dt and one of apparent resistivity; without calculated data
        // there is no misfit.
        EXPECT_EQ(rings(), (std::vector{0, 0, 4, 8, 0, 0})) << transcript;
        EXPECT_EQ(marks(), "0000 0000 0000 ");
        EXPECT_EQ(survey.control.DataCutoff, 100.0F);
    }
}

TEST_F(LiveAutoSkipTest, ContinueIsOneStepOfUndoWithTheThreshold) {
    survey.hTrn[2].TEMerr[0] = withSkipMark(2.0F, true);
    const std::string before = marks();
    review({"key a", "set 1051 10", "press Continue", "note marked", "key Ctrl+Z", "key x"});
    EXPECT_EQ(marks(), before);
    EXPECT_EQ(survey.control.DataCutoff, 100.0F);
    EXPECT_THAT(fileContent(path), HasSubstr("DataCutoff=100\n"))
        << "undone is changed too: the project is written";
    EXPECT_FALSE(state.autoSkip.slopeFilter) << "the answers stay, as last answers do";

    review({"key Ctrl+Y", "key x"});
    EXPECT_EQ(marks(), "0011 0011 0011 ");
    EXPECT_EQ(survey.control.DataCutoff, 10.0F);
    EXPECT_THAT(fileContent(path), HasSubstr("DataCutoff=10\n"));
}

TEST_F(LiveAutoSkipTest, AThresholdAloneIsAChangeToo) {
    state.autoSkip.errorFilter = false;
    review({"key a", "set 1051 10", "press Continue",
            "expect status Error threshold changed, not saved", "key Ctrl+Z",
            "reject status Error*", "key Ctrl+Y", "key x"});
    EXPECT_EQ(survey.control.DataCutoff, 10.0F);
    EXPECT_THAT(fileContent(path), HasSubstr("DataCutoff=10\n"));
}

TEST_F(LiveAutoSkipTest, CancelChangesTakesMarksAndThresholdAndRedoBringsThem) {
    onDisk = survey;
    onDisk.control.DataCutoff = 30.0F; // another one than before: the disk counts
    review({"key a", "set 1051 10", "press Continue", "key Escape"});
    EXPECT_EQ(marks(), "0000 0000 0000 ");
    EXPECT_EQ(survey.control.DataCutoff, 30.0F);
    EXPECT_FALSE(std::filesystem::exists(path));
    review({"key Ctrl+Y", "note again", "key Ctrl+Z", "key a",
            "expect field 1051 real on \"\" = \"30.0\"", "press Cancel", "key Ctrl+Y", "key x"});
    EXPECT_EQ(marks(), "0011 0011 0011 ");
    EXPECT_EQ(survey.control.DataCutoff, 10.0F);
}

TEST_F(LiveAutoSkipTest, ItsButtonsKeysAndEventsAreNotThoseOfTheReview) {
    survey.hTrn[0].TEMerr[0] = withSkipMark(2.0F, true);
    const struct {
        std::string line;
        const char *what;
    } ends[] = {{"press Cancel", "the review has a Cancel of the same id"},
                {"key Escape", "Esc of the review throws marks away"},
                {"close dialog", "the close box"}};
    for (const auto &end : ends) {
        state.ReviewStation = 1;
        onDisk = SurveyModel{}; // a reload would be seen
        EXPECT_EQ(review({"key a", "set 1051 1", end.line, "set 1057 3", "key x"}), 0);
        EXPECT_EQ(marks(), "1000 0000 0000 ") << end.what;
        EXPECT_EQ(state.ReviewStation, 3) << "the trackbar still reports: " << end.what;
        EXPECT_EQ(survey.control.DataCutoff, 100.0F) << end.what;
    }
    // Marks by hand while it is open are counted; a second A changes nothing.
    const PagePlace first = placeOf(Windows[0].time, Windows[0].observed, 0.1F);
    const std::string there = std::to_string(first.x) + " " + std::to_string(first.y);
    review({"key a",
            "expect field 1463 static on \"1 other window is skipped now and comes back.\"*",
            "key Home", "key a", "set 1051 10", "click right " + there,
            "expect field 1463 static on \"\" = *", "key Escape", "key x"});
    EXPECT_EQ(marks(), "0000 0000 0000 ");
    EXPECT_EQ(review({"key a", "set 1051 1", "close"}), 3);
    EXPECT_EQ(survey.control.DataCutoff, 100.0F) << "closing the window takes nothing";
}

TEST_F(LiveAutoSkipTest, PlotsHaveNoRingsAndTheJournalHasTheMarks) {
    const std::string plot = directory.path("line0001.svg");
    const std::string ringed = directory.path("ringed.svg");
    review({"key a", "set 1051 10", "press To SVG File", "copy " + plot + " " + ringed,
            "key Escape", "press To SVG File", "key x"});
    EXPECT_FALSE(fileContent(plot).empty());
    EXPECT_EQ(fileContent(ringed), fileContent(plot));
    review({"key a", "set 1051 10", "press Continue", "close"});
    const std::string journal = fileContent(directory.path("line.marks"));
    EXPECT_THAT(journal, HasSubstr(",DataCutoff,10.00\n"));
    EXPECT_EQ(std::count(journal.begin(), journal.end(), '\n'), 2 + 6) << journal;
}

TEST_F(LiveAutoSkipTest, WhatCannotBeReadKeepsItsValueAndIsTold) {
    review({"key a", "set 1051 10", "set 1451 soft", "set 1085 3", "set 1086 2", "press Continue",
            "key x"});
    EXPECT_THAT(messages.infos, Contains(HasSubstr("Noise at 1 msec: \"soft\" cannot be read")));
    EXPECT_EQ(state.autoSkip.firstWindow, 2) << "typed the wrong way round";
    EXPECT_EQ(state.autoSkip.lastWindow, 3);
    EXPECT_EQ(marks(), "1011 1011 1011 ");
}

} // namespace
} // namespace keldrin
