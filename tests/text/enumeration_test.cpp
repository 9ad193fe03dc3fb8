#include "text/enumeration.h"

#include "messages/questions.h"
#include "support/message_recorder.h"

#include <gmock/gmock.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace keldrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A user who answers every question in the same way, and keeps what was asked.
class Answers {
  public:
    int choice = 0; ///< entry that the user picks; 0 leaves the first one
    bool goesOn = true;
    std::vector<std::string> asked;

    Answers() {
        enumerationMemo().entries.clear();
        questions().matchingName = [this](const NameQuestion &question, int &index) {
            asked.push_back(std::string(question.label) + "|" + std::string(question.word) + "|" +
                            std::to_string(question.names.size()) + ":" + std::to_string(index));
            index = goesOn && choice > 0 ? choice : index;
            return goesOn;
        };
    }
    Answers(const Answers &) = delete;
    Answers &operator=(const Answers &) = delete;
    ~Answers() {
        questions() = Questions{};
        enumerationMemo().entries.clear();
    }
};

constexpr std::array<std::string_view, 3> Units = {"UV/A  ", "NV/AM2", "NT/SEC"};
constexpr std::array<std::string_view, 4> Components = {"EX", "HX", "HXY", "   "};
constexpr std::array<std::string_view, 2> Arrays = {"LOOP", "COIN"};

TEST(Enumeration, MatchesWithoutAsking) {
    Answers user;
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
    Answers user;
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
    Answers user;
    user.choice = 3;
    int index = 7;
    EXPECT_EQ(Str_to_iEnumeration(" volts", " Unit.TEM ", Units, index), 0);
    EXPECT_EQ(index, 3);
    // the first choice is `index`, limited to the list
    EXPECT_THAT(user.asked, ElementsAre("Unit.TEM|VOLTS|3:3"));
    // also where the number means nothing
    EXPECT_EQ(Str_to_iEnumeration("Volts", "Survey.Array", Arrays, index), 0);
    EXPECT_EQ(index, 3);
    EXPECT_EQ(user.asked.size(), 1U);
}

TEST(Enumeration, ACancelledWordIsNeverAskedAgain) {
    Answers user;
    user.choice = 2;
    user.goesOn = false;
    int index = 0;
    EXPECT_EQ(Str_to_iEnumeration("volts", "Unit.TEM", Units, index), 2);
    EXPECT_EQ(Str_to_iEnumeration("VOLTS", "Unit.TEM", Units, index), 2);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(user.asked.size(), 1U);
    EXPECT_EQ(enumerationMemo().entries.front().answer, -1);
}

TEST(Enumeration, WithoutAUserTheFirstChoiceIsTakenAndAWarningSaysSo) {
    const Answers restoring;
    questions() = Questions{};
    MessageRecorder recorder;
    int index = 2;
    EXPECT_EQ(Str_to_iEnumeration("volts", "Unit.TEM", Units, index), 0);
    EXPECT_EQ(Str_to_iEnumeration("volts", "Unit.TEM", Units, index), 0);
    EXPECT_EQ(index, 2);
    EXPECT_THAT(recorder.warnings, ElementsAre("WARNING: Unit.TEM = VOLTS matches no known "
                                               "name|It is taken as NV/AM2"));
}

TEST(Enumeration, TheMemoDropsItsOldestWord) {
    Answers user;
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
