#include "review/review_loop.h"

#include "page/drawing.h"
#include "page/hardcopy.h"
#include "review_line.h"
#include "support/failing_files.h"
#include "support/files.h"
#include "support/message_recorder.h"
#include "support/paged_document.h"
#include "support/temporary_directory.h"
#include "toolkit/scripted/answering_backend.h"
#include "toolkit/scripted/scripted_backend.h"
#include "toolkit/toolkit_state.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace keldrin {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

/// What a scenario that does not fit throws in place of ending the process.
struct Stopped {};

constexpr std::array<TestWindow, 3> LoopWindows = {
    TestWindow{0.2F, 5000.0F, 100.0F}, TestWindow{1.0F, 300.0F, 50.0F}, TestWindow{10.0F, 4.0F}};

/// A scripted toolkit that has PDF and a status bar.
class WindowBackend : public ScriptedBackend {
  public:
    using ScriptedBackend::ScriptedBackend;

    std::unique_ptr<DocumentSurface> document(int driver) override {
        return driver == DriverPdf ? std::make_unique<PagedDocument>() : nullptr;
    }
    void setStatus(StatusPart part, std::string_view text) override {
        if ((part == StatusPart::Pointer || part == StatusPart::Notice) && !text.empty()) {
            told.emplace_back(text);
        }
        if (part == StatusPart::Marks && (statuses.empty() || statuses.back() != text)) {
            statuses.emplace_back(text);
        }
    }
    // The mouse rests on the middle of the data plot.
    void setPointerText(const PointerText &text) override { pointer = text; }
    RawEvent wait() override {
        EXPECT_TRUE(toolkitState().contextEntries.empty()) << "the right button clears marks";
        readings.push_back(pointer ? pointer(0.25, 0.5) : "none");
        return ScriptedBackend::wait();
    }

    std::vector<std::string> statuses;
    std::vector<std::string> told;     ///< where plots have gone
    std::vector<std::string> readings; ///< under the mouse, at each wait
    PointerText pointer;
};

/// A line of three like soundings, whose page shows 0.1 to 1000 msec and 0 to 1e4.
class ReviewTest : public testing::Test {
  protected:
    ReviewTest() {
        survey.hTrn.assign(3, soundingOf(LoopWindows));
        survey.SoundingCount = 3;
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
        WindowBackend backend(std::move(script), out);
        backend.stopRun = [](int) {
            throw Stopped{};
        };
        ToolkitInit(backend, {"keldrin"});
        WindowOpen(ResizableWindow, -1, -1, 1000, 750);
        static constexpr ContextEntry ofMainWindow = {"Section", "S", 'S'};
        ToolkitContextMenu({&ofMainWindow, 1});
        int status = -1;
        try {
            status =
                Review_Loop(survey, state, path, [this](SurveyModel &model, std::string &project) {
                    ++reloads;
                    if (onReload) {
                        onReload(model, project);
                    }
                    return reloadStatus;
                });
        } catch (const Stopped &) {
            ADD_FAILURE() << out.str();
        }
        transcript = out.str();
        EXPECT_EQ(ToolkitDialogInfo(DialogSelected), 0) << "no dialog is left";
        EXPECT_FALSE(backend.pointer) << "nor anybody who reads the mouse";
        statuses = backend.statuses;
        readings = backend.readings;
        told = backend.told;
        ToolkitClose();
        return status;
    }
    static std::string at(const TestWindow &window) {
        const PagePlace place = placeOf(window.time, window.observed, 0.1F);
        return std::to_string(place.x) + " " + std::to_string(place.y);
    }
    static std::string leftClick(const TestWindow &window) { return "click left " + at(window); }

    // The skipped windows of a sounding, as one digit each.
    [[nodiscard]] std::string marks(std::size_t station) const {
        std::string digits;
        for (std::size_t i = 0; i < LoopWindows.size(); ++i) {
            digits += isSkipped(survey.hTrn[station - 1].TEMerr[i]) ? '1' : '0';
        }
        return digits;
    }
    bool wasWritten() {
        const bool there = std::filesystem::exists(path);
        std::filesystem::remove(path);
        return there;
    }
    [[nodiscard]] int drawings() const {
        int count = 0;
        for (std::size_t i = transcript.find("draw page"); i != std::string::npos;
             i = transcript.find("draw page", i + 1)) {
            ++count;
        }
        return count;
    }

    MessageRecorder messages;
    TemporaryDirectory directory;
    std::string path = directory.path("line.std");
    SurveyModel survey;
    ReviewState state;
    int reloads = 0;
    int reloadStatus = 0;
    std::function<void(SurveyModel &, std::string &)> onReload;
    std::string transcript;
    std::vector<std::string> statuses; ///< of unsaved marks, each change
    std::vector<std::string> readings;
    std::vector<std::string> told;
};

TEST_F(ReviewTest, KeysButtonsWheelAndTrackbarWalkTheSoundings) {
    const struct {
        std::string line;
        int from;
        int to;
    } cases[] = {
        {"key n", 1, 2},        {"key N", 2, 3},      {"key Down", 1, 2},
        {"key Right", 3, 3},    {"key p", 3, 2},      {"key P", 2, 1},
        {"key Up", 1, 1},       {"key Left", 3, 2},   {"press &Next", 1, 2},
        {"press 1058", 3, 2},   {"set 1057 3", 1, 3}, {"wheel up 1", 2, 1},
        {"wheel down 5", 1, 3}, {"key End", 1, 3},    {"key Home", 3, 1},
        {"key PageDown", 1, 3}, {"key PageUp", 3, 1}, {"key Enter", 2, 2},
        {"key q", 2, 2},        {"expose", 2, 2},     {"resize 800 600", 2, 2},
        {"menu 40005", 2, 2},
    };
    for (const auto &c : cases) {
        state = {c.from, survey.SoundingCount};
        EXPECT_EQ(review({c.line, "press E&xit Review"}), 0);
        EXPECT_EQ(state.ReviewStation, c.to) << c.line << " from " << c.from;
    }
    EXPECT_FALSE(wasWritten()) << "nothing was changed";
}

TEST_F(ReviewTest, ComesBackToItsStationOnALineOfTheSameLength) {
    review({"key n", "key x"});
    review({"key X"});
    EXPECT_EQ(state.ReviewStation, 2);
    survey.SoundingCount = 2;
    review({"key x"});
    EXPECT_EQ(state.ReviewStation, 1);
    state = {9, 2};
    review({"key x"});
    EXPECT_EQ(state.ReviewStation, 2);

    survey.SoundingCount = 1; // the trackbar still has two places
    review({"set 1057 2", "key x"});
    EXPECT_EQ(state.ReviewStation, 1);
    EXPECT_THAT(transcript, HasSubstr("field 1057 trackbar on \"\" = \"1\"\ndraw"));
    survey.SoundingCount = 0;
    EXPECT_EQ(review({}), 1);
    EXPECT_THAT(transcript, Not(HasSubstr("dialog")));
}

TEST_F(ReviewTest, ClicksSetAndClearAndTheProjectIsWrittenOnExit) {
    EXPECT_EQ(review({leftClick(LoopWindows[1]), "key n", leftClick(LoopWindows[0]),
                      leftClick(LoopWindows[2]), "click right " + at(LoopWindows[0]),
                      "click middle " + at(LoopWindows[1]), "key x"}),
              0);
    EXPECT_EQ(marks(1), "010");
    EXPECT_EQ(marks(2), "001");
    EXPECT_TRUE(wasWritten());
    review({"click left 5 16.5", "key x"});
    EXPECT_TRUE(wasWritten()) << "also after a click beside every point";
    review({"click left 18 9", "key x"});
    EXPECT_TRUE(wasWritten()) << "or on the model plot";
}

TEST_F(ReviewTest, AWriteThatFailsAtTheEndIsToldAndTheMarksStay) {
    const auto leftOver = [this] {
        const std::filesystem::directory_iterator files(directory.path());
        return std::count_if(begin(files), end(files), [](const auto &file) {
            const std::string name = file.path().filename().string();
            return name != "line.std" && name != "line.std~" && !name.starts_with("line.marks");
        });
    };
    const std::string journal = directory.path("line.marks");
    const std::vector<SoundingRecord> unmarked = survey.hTrn;
    review({leftClick(LoopWindows[1]), "key x"});
    const std::string before = fileContent(path);
    const int calls = spoilEveryCall(
        FileFault::Fails,
        [&] {
            messages.errors.clear();
            survey.hTrn = unmarked;
            putFile(path, before);
            std::filesystem::remove(journal);
        },
        [&] {
            EXPECT_EQ(review({leftClick(LoopWindows[0]), "auto box ok quiet", "key x"}), 0);
        },
        [&](const SpoiledCall &spoiled) {
            EXPECT_EQ(marks(1), "100") << spoiled.text();
            EXPECT_TRUE(fileContent(path) != before || !messages.errors.empty()) << spoiled.text();
            if (!messages.errors.empty()) {
                EXPECT_EQ(fileContent(path), before) << spoiled.text();
                EXPECT_TRUE(fileContent(journal).empty() ||
                            fileContent(journal).find(",1\n") != std::string::npos)
                    << "the journal has the mark, unless its own write has failed: "
                    << spoiled.text();
                EXPECT_THAT(transcript, HasSubstr("ask box")) << spoiled.text();
            }
            EXPECT_EQ(leftOver(), 0) << spoiled.text();
        });
    EXPECT_GT(calls, 0);
}

TEST_F(ReviewTest, OnlyAProjectIsWrittenOver) {
    const struct {
        std::string path;
        bool written;
        std::size_t told;
    } cases[] = {{directory.path("line.STD"), true, 0},
                 {directory.path("line.avg"), false, 1},
                 {directory.path("line"), false, 1}};
    for (const auto &c : cases) {
        path = c.path;
        messages.errors.clear();
        putFile(path, "field data");
        review({leftClick(LoopWindows[0]), "auto box ok", "key x"});
        EXPECT_EQ(fileContent(path) != "field data", c.written) << path;
        EXPECT_EQ(messages.errors.size(), c.told) << path;
    }
}

TEST_F(ReviewTest, ADragIsABoxOnceItHasATenthOfASquareCentimetre) {
    const std::string wide = "drag left 1.6 1.6 11.4 17.4";
    review({wide, "key x"});
    EXPECT_EQ(marks(1), "111");
    review({"drag right 11.4 17.4 1.6 1.6", "key x"}); // from any corner
    EXPECT_EQ(marks(1), "000");
    // A long and thin one is a click at its lower left corner.
    const PagePlace first = placeOf(LoopWindows[0].time, LoopWindows[0].observed, 0.1F);
    const std::string y = std::to_string(first.y);
    review({"drag left 2 " + y + " 11.4 " + y, "key x"});
    EXPECT_EQ(marks(1), "100");
    wasWritten();
    review({wide + " aborted", "key x"});
    EXPECT_EQ(marks(1), "100");
    EXPECT_FALSE(wasWritten()) << "nothing was aimed at";
    EXPECT_EQ(drawings(), 1) << "nothing is drawn anew";
}

TEST_F(ReviewTest, ClosingTheWindowWritesNothing) {
    EXPECT_EQ(review({leftClick(LoopWindows[0]), "close"}), 3);
    EXPECT_FALSE(wasWritten());
    EXPECT_THAT(fileContent(directory.path("line.marks")), HasSubstr(",1\n"))
        << "the marks wait for the next start";
    EXPECT_EQ(reloads, 0);
    EXPECT_THAT(transcript, HasSubstr("dialog close 102"));
}

TEST_F(ReviewTest, CancelChangesReloadsAndWritesNothing) {
    const struct {
        std::string line;
        int reloadStatus;
        int status;
    } cases[] = {{"key Escape", 0, 0},
                 {"press Cancel Changes", 1, 0},
                 {"press 1084", 3, 3},
                 {"press Cancel Changes", 4, 4}};
    for (const auto &c : cases) {
        reloads = 0;
        reloadStatus = c.reloadStatus;
        EXPECT_EQ(review({leftClick(LoopWindows[0]), c.line}), c.status) << c.line;
        EXPECT_EQ(reloads, 1);
        EXPECT_FALSE(wasWritten());
    }
}

TEST_F(ReviewTest, ChangesOfMarksCanBeTakenBack) {
    review({"key Ctrl+Z", "key Ctrl+Y", "key x"});
    EXPECT_FALSE(wasWritten()) << "there was nothing to take back";

    review({leftClick(LoopWindows[1]), "key n", "drag left 1.6 1.6 11.4 17.4", "key p",
            "key Ctrl+Z", "key x"});
    EXPECT_EQ(marks(1) + marks(2), "010000");
    EXPECT_EQ(state.ReviewStation, 2) << "what changes comes on show";
    review({"key Ctrl+Z", "key x"});
    EXPECT_EQ(marks(1), "010") << "not beyond this entry";

    review({leftClick(LoopWindows[0]), leftClick(LoopWindows[2]), "key Ctrl+Z", "key Ctrl+Z",
            "key Ctrl+Z", "key Ctrl+Y", "key Ctrl+Shift+Z", "key x"});
    EXPECT_EQ(marks(2), "101");
    review({"click right " + at(LoopWindows[0]) + " double", "key Ctrl+Z", "key x"});
    EXPECT_EQ(marks(2), "101") << "the second click of two had nothing to change";
    EXPECT_TRUE(wasWritten());
}

TEST_F(ReviewTest, HeldKeysCarryMarksFarther) {
    survey.hTrn[2].NumTW = 2;          // the last window is not measured there
    survey.hTrn[1].TWcenter[1] = 1.2F; // nor this one at that time
    survey.hTrn[2].TEMobs[0] = MissingValue;
    const auto click = [](const std::string &held, const TestWindow &window) {
        return "click " + held + " " + at(window);
    };
    review({click("shift left", LoopWindows[1]), "key x"});
    EXPECT_EQ(marks(1) + marks(2), "011000") << "this one and all later";
    review({click("shift right", LoopWindows[2]), click("ctrl left", LoopWindows[1]), "key x"});
    EXPECT_EQ(marks(1) + marks(2) + marks(3), "010000010") << "the time counts, not the number";
    review({"key n", click("ctrl left", LoopWindows[0]), click("ctrl right", LoopWindows[2]),
            "key x"});
    EXPECT_EQ(marks(1) + marks(2) + marks(3), "110100010") << "without a value there is no mark";
    review({"key p", click("ctrl left", {5.0F, 5000.0F}), "key x"});
    EXPECT_EQ(marks(1) + marks(2) + marks(3), "110100010") << "nothing was aimed at";

    review({click("ctrl right", LoopWindows[0]), click("shift left", LoopWindows[0]), "key n",
            "key Ctrl+Z", "key Ctrl+Z", "key x"});
    EXPECT_EQ(marks(1) + marks(2) + marks(3), "110100010") << "one step each";
    EXPECT_EQ(state.ReviewStation, 1) << "shows where it was done";
}

TEST_F(ReviewTest, CopiesMarksToAListOfSoundings) {
    survey.hTrn[2].TEMerr[0] = withSkipMark(2.0F, true);
    review({leftClick(LoopWindows[1]), "key c", "set 4101 2-9", "press Continue", "key x"});
    EXPECT_EQ(marks(1) + marks(2) + marks(3), "010010010") << "also those that are not set";
    for (const char *list : {"", "0", "3-2", "a", "1,,2"}) {
        review({"key Home", "key n", "click right " + at(LoopWindows[1]), "key c",
                "set 4101 \"" + std::string(list) + "\"", "press Continue", "key Escape"});
        EXPECT_EQ(marks(1) + marks(3), "010010") << list;
        survey.hTrn[1].TEMerr = survey.hTrn[0].TEMerr;
    }
    review({"key Home", "click right " + at(LoopWindows[1]), "key C", "set 4101 3", "press Cancel",
            "key x"});
    EXPECT_EQ(marks(1) + marks(3), "000010");
}

TEST_F(ReviewTest, TheCloseButtonOfThePanelDoesNotEndTheReview) {
    EXPECT_EQ(review({leftClick(LoopWindows[0]), "close dialog", "key n", "key x"}), 0);
    EXPECT_EQ(reloads, 0);
    EXPECT_EQ(state.ReviewStation, 2);
    EXPECT_TRUE(wasWritten());
}

TEST_F(ReviewTest, RedoBringsCancelledMarksBackAtTheNextEntry) {
    onReload = [](SurveyModel &model, std::string &) {
        model.hTrn.assign(3, soundingOf(LoopWindows));
        model.hTrn[0].TEMerr[1] = 7.0F; // the file changed meanwhile
    };
    review({leftClick(LoopWindows[1]), "key n", leftClick(LoopWindows[0]),
            leftClick(LoopWindows[2]), "key Ctrl+Z", "key Escape"});
    EXPECT_EQ(marks(1) + marks(2), "000000");
    EXPECT_FALSE(wasWritten());

    review({"key Ctrl+Y", "key Ctrl+Y", "key x"});
    EXPECT_EQ(marks(1) + marks(2), "010100");
    EXPECT_EQ(trueError(survey.hTrn[0].TEMerr[1]), 7.0F) << "the mark comes back, not the error";
    EXPECT_TRUE(wasWritten());
    EXPECT_THAT(told, Contains("Ctrl+Y brings back 3 changes of skip marks that were not saved."));

    review({"key Ctrl+Y", "key Ctrl+Y", "key Ctrl+Z", "key x"});
    EXPECT_EQ(marks(2), "100") << "also the one that was undone";
}

TEST_F(ReviewTest, AnotherLineKnowsNothingOfCancelledMarks) {
    const struct {
        const char *what;
        std::function<void(SurveyModel &, std::string &)> reloads;
    } cases[] = {
        {"another project was chosen",
         [](SurveyModel &, std::string &project) {
             project += ".other.std";
         }},
        {"the project has fewer soundings",
         [](SurveyModel &model, std::string &) {
             model.SoundingCount = 2;
         }},
    };
    for (const auto &c : cases) {
        survey.hTrn.assign(3, soundingOf(LoopWindows));
        survey.SoundingCount = 3;
        onReload = c.reloads;
        review({leftClick(LoopWindows[1]), "key Escape"});
        survey.hTrn.assign(3, soundingOf(LoopWindows));
        review({"key Ctrl+Y", "key x"});
        EXPECT_EQ(marks(1), "000") << c.what;
    }
}

TEST_F(ReviewTest, AMissDoesNotCostTheSoundingsOfAnotherTransmitter) {
    setSurveyType(survey.control, FixedLoop);
    survey.hTrn[2].TxStn = 5.0;
    review({"click left 5 16.5", "key x"});
    EXPECT_FALSE(wasWritten());
    review({leftClick(LoopWindows[0]), "key x"});
    EXPECT_TRUE(wasWritten());
}

TEST_F(ReviewTest, UnsavedMarksAreCountedInTheStatusBar) {
    review({leftClick(LoopWindows[1]), "key n", "drag left 1.6 1.6 11.4 17.4", "key Ctrl+Z",
            "key Ctrl+Y", "click right " + at(LoopWindows[0]), "key x"});
    EXPECT_THAT(statuses,
                ElementsAre("", "1 window changed, not saved", "4 windows changed, not saved",
                            "1 window changed, not saved", "4 windows changed, not saved",
                            "3 windows changed, not saved", ""));
    wasWritten();
    review({"click left 5 16.5", leftClick(LoopWindows[0]), "click right " + at(LoopWindows[0]),
            leftClick(LoopWindows[0]), "key Escape"});
    EXPECT_THAT(statuses, ElementsAre("", "1 window changed, not saved", "",
                                      "1 window changed, not saved", ""))
        << "a miss changes nothing, nor does a mark set and cleared";
    review({"click right " + at(LoopWindows[2]), "close"});
    EXPECT_THAT(statuses, ElementsAre("", "1 window changed, not saved", ""));
}

TEST_F(ReviewTest, TheMouseIsReadForTheSoundingOnShow) {
    survey.hTrn[1] = soundingOf(std::span(LoopWindows).first(1));
    survey.control.TEMUnits = "nV/Am2";
    review({"key n", "press Edit Plot Limits", "set 1063 1", "set 1062 1.0E4", "press Continue",
            "key x"});
    // The page begins at 0.1, then at 1 msec; 6 cm are 1.8 decades beyond its left edge.
    EXPECT_THAT(readings.front(), StartsWith("Time 6.31 msec   Resistivity "));
    EXPECT_THAT(readings.front(), HasSubstr("Window 2: "));
    EXPECT_THAT(readings[1], HasSubstr("Window 1: "));
    EXPECT_THAT(readings.back(), StartsWith("Time 63.1 msec"));
}

TEST_F(ReviewTest, PagesGoToFilesOfEveryKindThatThereIs) {
    const auto has = [this](const std::string &name) {
        return std::filesystem::exists(directory.path(name));
    };
    review({"key n", "press To SVG File", "press To PDF File", "press All to PDF", "key x"});
    EXPECT_TRUE(has("line0002.svg"));
    EXPECT_EQ(countOf("<svg", fileContent(directory.path("line0002.pdf"))), 1U);
    EXPECT_EQ(countOf("<svg", fileContent(directory.path("line.pdf"))), 3U);
    EXPECT_THAT(messages.errors, IsEmpty());
    EXPECT_THAT(told,
                ElementsAre("Saved in line0002.svg", "Saved in line0002.pdf", "Saved in line.pdf"));
    EXPECT_EQ(drawings(), 5) << "the page comes back behind the log";

    review({"press To PNG File", "box ok", "key n", "key x"});
    EXPECT_THAT(messages.errors, ElementsAre("Graphics ERROR: from Plot_HardcopyOpen|There is no "
                                             "such output device."));
    EXPECT_FALSE(has("line0002.png"));
    EXPECT_THAT(told, IsEmpty());
    EXPECT_EQ(state.ReviewStation, 3) << "the review goes on";
}

TEST_F(ReviewTest, TheReviewGoesOnBehindOtherDialogsAndPlots) {
    // The second window, at 4 cm before, is then at 3 cm.
    const std::string y = std::to_string(placeOf(1.0F, LoopWindows[1].observed, 0.1F).y);
    review({"press Edit Plot Limits", "set 1063 0.5", "set 1062 50", "press Continue",
            "click left 3 " + y, "set 1057 2", "key x"});
    EXPECT_EQ(state.ReviewStation, 2) << "the trackbar is served";
    EXPECT_EQ(marks(1), "010");
    review({"press 1081", "press Cancel", "key p", "press Printer Plot", "printer cancel",
            "press To WMF File", "press 1075", leftClick(LoopWindows[2]), "key x"});
    EXPECT_EQ(marks(1), "011");
    review({"key Ctrl+P", "printer 720 540", "key x"});
    EXPECT_THAT(transcript, HasSubstr("got printer 720 540\n"));
    EXPECT_THAT(told, ElementsAre("Sent to the printer."));
    EXPECT_TRUE(std::filesystem::exists(directory.path("line0001.wmf")));
    EXPECT_TRUE(std::filesystem::exists(directory.path("line0001.hpg")));
}

TEST_F(ReviewTest, ASoundingWithoutWindowsCanBeWalkedOver) {
    survey.hTrn[0].NumTW = 0;
    EXPECT_EQ(review({"click left 5 5", "key n", leftClick(LoopWindows[1]), "key x"}), 0);
    EXPECT_EQ(marks(2), "010");
}

TEST_F(ReviewTest, LongLinesHaveCoarserPagesOfTheTrackbar) {
    const std::pair<int, int> cases[] = {{1, 1}, {20, 1}, {21, 2}, {41, 2}, {42, 4}, {2048, 128}};
    for (const auto &[soundings, step] : cases) {
        survey.hTrn.assign(static_cast<std::size_t>(soundings), soundingOf(LoopWindows));
        survey.SoundingCount = soundings;
        int found = 0;
        AnsweringBackend backend;
        backend.beforeAnswer = [&](AnsweringBackend &, int) {
            found = findControl(*topDialog(), 1057)->step;
        };
        ToolkitInit(backend, {"keldrin"});
        EXPECT_EQ(Review_Loop(survey, state, path, [](auto &, auto &) { return 0; }), 0);
        ToolkitClose();
        EXPECT_EQ(found, step) << soundings;
    }
}

} // namespace
} // namespace keldrin
