#include "base/man_page.h"
#include "base/program_help.h"
#include "base/version.h"
#include "base/word_wrap.h"
#include "support/files.h"
#include "support/temporary_directory.h"

#include <gmock/gmock.h>

#include <array>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr std::array Usage = {
    HelpEntry{"dig-hole [--deep N] [--with A SPADE OF ITS OWN] [--quickly] [--until STOP] PLACE...",
              "Digs. With --deep the hole is N-fold well-known \"deep\"."},
    HelpEntry{"dig-hole --help", ""},
};
constexpr std::array Options = {
    HelpEntry{"--deep N", "Depth; 1-5."},
    HelpEntry{"a term longer than all the others", "Below it."},
    HelpEntry{"'q", ".profile is 'read'. C:\\TEMP is not."},
};
constexpr std::array Sections = {HelpSection{"options", Options}};
constexpr std::array<std::string_view, 2> Placeholders = {"N", "PLACE"};
constexpr std::array<std::string_view, 2> SeeAlso = {"fill-hole", "spade"};
constexpr ProgramHelp Sample = {"dig-hole", "holes on demand", "",     Usage,
                                Sections,   Placeholders,      SeeAlso};

TEST(WordWrap, LinesFillTheWidthAndKeepWhatIsInBracketsTogether) {
    EXPECT_THAT(wrapText("", 10), IsEmpty());
    EXPECT_THAT(wrapText("  ", 10), IsEmpty());
    EXPECT_THAT(wrapText("ten-letter a  b", 10), ElementsAre("ten-letter", "a  b"));
    EXPECT_THAT(wrapText("a much-longer-word b", 6), ElementsAre("a", "much-longer-word", "b"));
    EXPECT_THAT(wrapText("go [--to A] [--by B C]", 12), ElementsAre("go [--to A]", "[--by B C]"));
    EXPECT_THAT(wrapText("an [open bracket", 5), ElementsAre("an", "[open bracket"));
}

TEST(ProgramHelp, TextOfHelp) {
    EXPECT_EQ(helpText(Sample), "dig-hole: holes on demand\n"
                                "\n"
                                "usage:\n"
                                "  dig-hole [--deep N] [--with A SPADE OF ITS OWN] [--quickly]\n"
                                "        [--until STOP] PLACE...\n"
                                "      Digs. With --deep the hole is N-fold well-known \"deep\".\n"
                                "  dig-hole --help\n"
                                "\n"
                                "options:\n"
                                "  --deep N  Depth; 1-5.\n"
                                "  a term longer than all the others\n"
                                "            Below it.\n"
                                "  'q        .profile is 'read'. C:\\TEMP is not.\n");
}

// Traps of the format: a line that begins with a point or an apostrophe is a request, a backslash
// an escape, and a plain hyphen may be set as another character, which cannot be pasted.
TEST(ProgramHelp, ManualPage) {
    const std::string page = manPage(Sample);
    EXPECT_THAT(page, HasSubstr(".TH DIG\\-HOLE 1 \"" + std::string(ReleaseDate) + "\" \"KELDRIN " +
                                std::string(ReleaseText) + "\" "));
    EXPECT_THAT(page, HasSubstr("\ndig\\-hole \\- holes on demand\n"));
    EXPECT_THAT(page,
                HasSubstr(".SH \"SYNOPSIS\"\n\\fBdig\\-hole\\fR [\\fB\\-\\-deep\\fR \\fIN\\fR]"));
    EXPECT_THAT(page, HasSubstr("\\fIPLACE\\fR...\n.br\n\\fBdig\\-hole\\fR \\fB\\-\\-help\\fR\n"));
    EXPECT_THAT(page, HasSubstr("\nDigs.\nWith \\fB\\-\\-deep\\fR the hole is N-fold well-known "
                                "\\(dqdeep\\(dq.\n"));
    EXPECT_THAT(page, HasSubstr(".TP\n\\fB\\-\\-deep\\fR \\fIN\\fR\nDepth; 1\\-5.\n"));
    EXPECT_THAT(page, HasSubstr("\n\\&'\\fBq\\fR\n\\&.profile is 'read'.\nC:\\eTEMP is not.\n"));
    EXPECT_THAT(page, HasSubstr(".SH \"SEE ALSO\"\n.BR fill\\-hole (1),\n.BR spade (1)\n"));
}

TEST(ProgramHelp, WordsThatAsk) {
    using Words = std::vector<std::string_view>;
    for (const Words &words : {Words{}, Words{""}, Words{"build"}, Words{"--", "--help"},
                               Words{"--helpless", "help", "-help"}}) {
        EXPECT_EQ(answerHelp(Sample, words), std::nullopt);
    }
    testing::internal::CaptureStdout();
    EXPECT_EQ(answerHelp(Sample, Words{"build", "--version", "--", "--help"}), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "dig-hole " + std::string(ReleaseText) + " " + std::string(ReleaseDate) + "\n");
    testing::internal::CaptureStdout();
    EXPECT_EQ(answerHelp(Sample, Words{"-h", "--version"}), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), helpText(Sample));
}

TEST(Manual, ChaptersAreReadFromTheirFolderAndWrongNamesListAll) {
    const TemporaryDirectory folder;
    putFile(folder.path("physics.txt"), "Response\n");
    ::setenv("KELDRIN_MANUAL", folder.path().c_str(), 1);
    const auto asked = [](std::string_view word) {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        const int code = answerHelp(Sample, {&word, 1}).value_or(-1);
        return std::to_string(code) + "|" + testing::internal::GetCapturedStdout() + "|" +
               testing::internal::GetCapturedStderr();
    };
    EXPECT_EQ(asked("--help=physics"), "0|Response\n|");
    EXPECT_THAT(asked("--help=list"), HasSubstr("  scenarios   The language of scenarios\n|"));
    EXPECT_THAT(asked("--help=../physics"),
                AllOf(StartsWith("2||dig-hole: the manual has no chapter ../physics\n"),
                      HasSubstr("  physics     The physics, with formulas\n")));
    EXPECT_EQ(asked("--help=formats"), "1||dig-hole: the manual is not installed; " +
                                           folder.path("formats.txt") + " cannot be read\n");
    ::unsetenv("KELDRIN_MANUAL");
}

} // namespace
} // namespace keldrin
