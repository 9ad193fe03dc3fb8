#include "import/amira/fixture.h"
#include "import/amira/times.h"

#include <filesystem>

namespace keldrin {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string TimesHead = "CONFIG:INLOOP LSIDE:100 TXFREQ:25\n/TEMUNIT: nV/Am2\n";
const std::string TimesRows = "STATION CH1 CH2 CH3\n1 10 20 30\n";

TEST_F(AmiraTest, ListsOfTheHeaderServeWhereThereIsNoChannelFile) {
    channels.clear();
    EXPECT_EQ(read(TimesHead + "/TIMES: 0.001,0.002,0.004\n" + TimesRows), 0);
    EXPECT_THAT(times(0), ElementsAre(1, 2, 4)); // sec unless given
    EXPECT_EQ(read(TimesHead + "TIMES(MS):1,2 TIMESWIDTH(US)=500,600\n" + TimesRows), 0);
    EXPECT_THAT(times(0), ElementsAre(1, 2));
    EXPECT_EQ(sounding(0).TWwidth[1], 0.6F);
    EXPECT_THAT(messages.warnings, ElementsAre(HasSubstr("channels and times differ in number")));
    EXPECT_EQ(
        read(TimesHead + "/TIMESSTART(US): 1000 2000 4000\n/TIMESEND(MS):4,8,16\n" + TimesRows), 0);
    EXPECT_THAT(times(0), ElementsAre(2, 4, 8));
    EXPECT_EQ(sounding(0).TWwidth[0], 3.0F); // from start to end
    EXPECT_EQ(sounding(0).TWwidth[2], 12.0F);
    EXPECT_EQ(read(TimesHead + "/TIMESEND(MS): 2,3\n/TIMESSTART(MS): 1,4\n" + TimesRows), 0);
    EXPECT_EQ(sounding(0).TWwidth[0], 1.0F);
    EXPECT_EQ(sounding(0).TWwidth[1], 0.0F);
    EXPECT_THAT(messages.warnings, Contains(HasSubstr("end before they begin")));
}

TEST_F(AmiraTest, AListLowersTheCountOfTheChannelFileAndNeverRaisesIt) {
    EXPECT_EQ(read(TimesHead + "/TIMES(MS):7,8,9,10\n" + TimesRows +
                   "/TIMES(MS):5,6\n2 10 20 30\n" + "/TIMES(MS):5,6,7\n3 10 20 30\n"),
              0);
    EXPECT_THAT(times(0), ElementsAre(1, 2, 4));
    EXPECT_THAT(times(1), ElementsAre(5, 6));
    EXPECT_THAT(times(2), ElementsAre(5, 6));
}

TEST_F(AmiraTest, WithoutAnyTimesTheImportEnds) {
    channels.clear();
    EXPECT_EQ(read(TimesHead + TimesRows), 2); // no user is there to choose a channel file
    EXPECT_THAT(messages.errors.back(), HasSubstr("Could not find channel file"));
    channels = "DELAY\n1\n";
    EXPECT_EQ(read(TimesHead + TimesRows), 0);
    channels = "DELAY\n";
    EXPECT_EQ(read(TimesHead + TimesRows), 1); // nothing of an earlier import is left
    EXPECT_THAT(messages.errors, Contains("AMIRA Chn file input WARNING:|"
                                          "No valid channel times read from x.chn"));
}

TEST_F(AmiraTest, AFaultyKeywordIsToldByTheFirstPassAlone) {
    EXPECT_EQ(read(TimesHead + "/LOOP: 1e400\n/RXAREAZ: -5\n/TIMES(MS): 1,2,x\n" + TimesRows), 0);
    EXPECT_THAT(messages.errors, testing::SizeIs(2));
    EXPECT_THAT(messages.warnings, Contains(HasSubstr("The sign is dropped")).Times(1));
}

TEST_F(AmiraTest, TheNamedChannelFileIsSoughtAsWrittenThenBesideTheData) {
    std::filesystem::create_directory(directory.path("sub"));
    putFile(directory.path("sub/b.chn"), "t\nDELAY\n3\n");
    putFile(directory.path("C.CHN"), "t\nDELAY\n5\n");
    EXPECT_EQ(read(TimesHead + "/CHANNELFILE: sub\\b.chn\n" + TimesRows), 0);
    EXPECT_THAT(times(0), ElementsAre(3));
    EXPECT_EQ(read(TimesHead + "CHANNELFILE:D:\\crew\\c.chn\n" + TimesRows), 0);
    EXPECT_THAT(times(0), ElementsAre(5));
    EXPECT_EQ(read(TimesHead + "CHANNELFILE:" + directory.path("sub/b.chn") + "\n" + TimesRows), 0);
    EXPECT_THAT(times(0), ElementsAre(3));
    EXPECT_EQ(read(TimesHead + "/CHANNELFILE:\n" + TimesRows), 0);
    EXPECT_THAT(times(0), ElementsAre(1, 2, 4));
    EXPECT_EQ(read(TimesHead + "/CHANNELFILE: none.chn\n" + TimesRows), 2);
}

TEST_F(AmiraTest, AChannelFileHasRowsBelowLabels) {
    channels = "9 9\n! DELAY\n/INITDELAY: 0.5\n\\ x\nWIDTH, DELAY\n0.2 1\n* 2\n0.2 *\nx 3\n?2 3\n"
               "-1 4\n";
    EXPECT_EQ(read(TimesHead + TimesRows), 0);
    EXPECT_THAT(times(0), ElementsAre(testing::FloatEq(std::sqrt(1.4F * 1.6F)), 2.5F));
    EXPECT_THAT(values(0), ElementsAre(10, 20)); // the third channel has no time
    EXPECT_EQ(sounding(0).TWwidth[1], 0.0F);     // derived later
    EXPECT_THAT(messages.errors, IsEmpty());
    EXPECT_THAT(messages.warnings,
                Contains("WARNING: Channels whose DELAY cannot be read: 1, the first on line 9 of "
                         "x.chn|0.2 *|Their values are passed over."));
    EXPECT_THAT(messages.warnings, Contains(HasSubstr("WIDTH cannot be read: 2, the first on "
                                                      "line 10 of x.chn|x 3")));
    EXPECT_THAT(messages.infos, Contains("  5 times read from x.chn"));
}

TEST_F(AmiraTest, AChannelWithoutATimeKeepsItsPlace) {
    for (const char *bad : {"*", "NaN", "1.5x", "?", "inf"}) {
        channels = std::string("DELAY\n-----\n1\n") + bad + "\n4\n";
        messages.warnings.clear();
        EXPECT_EQ(read(TimesHead + TimesRows), 0);
        EXPECT_THAT(times(0), ElementsAre(1, 4)) << bad;
        EXPECT_THAT(values(0), ElementsAre(10, 30)) << bad;
        EXPECT_THAT(messages.warnings, ElementsAre(HasSubstr("DELAY cannot be read: 1"))) << bad;
    }
}

TEST_F(AmiraTest, AChannelFileThatDoesNotFitIsTold) {
    channels = "DELAY WIDTH\n1 0.1\n2 0."; // of fewer channels, or cut off
    EXPECT_EQ(read(TimesHead + "STATION NCH CH1 CH2 CH3\n1 3 10 20 30\n"), 0);
    EXPECT_THAT(times(0), testing::SizeIs(2));
    EXPECT_THAT(messages.warnings, ElementsAre(HasSubstr("The last line of x.chn has no line end"),
                                               HasSubstr("channels and times differ in number")));
    channels = "CENTRE WIDTH\n1 0.1\n";
    EXPECT_EQ(read(TimesHead + TimesRows), 1);
    EXPECT_THAT(messages.errors,
                Contains("WARNING: Could not find DELAY column.|In: CENTRE WIDTH"));
    channels = "DELAY\n";
    for (int i = 1; i <= 130; ++i) {
        channels += std::to_string(i) + "\n";
    }
    messages.warnings.clear();
    EXPECT_EQ(read(TimesHead + TimesRows), 0);
    EXPECT_THAT(messages.infos, Contains("  128 times read from x.chn"));
    EXPECT_THAT(messages.warnings, Contains("WARNING: More than 128 channel times in x.chn|"
                                            "Times will be skipped starting with line 131|129"));
    channels = "DELAY\n1\nDATATYPE:MT\n";
    EXPECT_EQ(read(TimesHead + TimesRows), 2);
}

TEST_F(AmiraTest, ARowOf128ChannelsIsReadAsFarAsItsColumnsGo) {
    channels = "DELAY\n";
    std::string row = "1";
    for (int i = 1; i <= 128; ++i) {
        channels += std::to_string(i) + "\n";
        row += "   " + std::to_string(i) + ".0000000000000";
    }
    EXPECT_EQ(read(TimesHead + "STATION CH1\n" + row + "\n"), 0);
    EXPECT_EQ(sounding(0).NumTW, 127);
    EXPECT_EQ(sounding(0).TEMobs[126], 127.0F);
    EXPECT_EQ(read(TimesHead + "STATION NCH CH1\n1 128" + row.substr(1) + "\n"), 0);
    EXPECT_EQ(sounding(0).NumTW, 126);
    EXPECT_THAT(messages.errors,
                Contains(HasSubstr("WARNING: Could not read all channels in:|1 128")));
}

TEST(AmiraTimesTest, AListIsTakenWholeOrNotAtAll) {
    MessageRecorder messages;
    ChannelTimes times;
    EXPECT_EQ(AMR_Read_Times({}, "TIMES", "", times), 1);
    EXPECT_EQ(messages.errors.back(), "AMR_Read_Keyword_Value.WARNING:|TIMES:|"
                                      "did not recover any value time-window values.");
    EXPECT_EQ(AMR_Read_Times({}, "TIMES(MS)", "1,-2", times), 1);
    EXPECT_EQ(messages.errors.back(), "AMR_Read_Keyword_Value.WARNING:|TIMES(MS):1,-2|"
                                      "TWF(2)=-2 < 0 or > 1e+07");
    EXPECT_EQ(AMR_Read_Times({}, "TIMES(MS)", "1,,2", times), 1);
    EXPECT_FALSE(isPresent(times.values[ChannelTimes::Center][0]));
    EXPECT_THAT(messages.warnings, IsEmpty());
    EXPECT_EQ(AMR_Read_Times({}, "TIMES(NS)", "1", times), 0);
    EXPECT_EQ(times.values[ChannelTimes::Center][0], 1000.0F);
    EXPECT_THAT(messages.warnings, ElementsAre(HasSubstr("times count as sec")));
}

} // namespace
} // namespace keldrin
