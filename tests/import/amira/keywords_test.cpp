#include "import/amira/keywords.h"
#include "support/message_recorder.h"
#include "text/enumeration.h"

#include <gmock/gmock.h>

#include <string>

namespace keldrin {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class AmiraKeywordTest : public testing::Test {
  protected:
    AmiraKeywordTest() { enumerationMemo() = EnumerationMemo{}; }
    int pair(const std::string &keyword, const std::string &value) {
        return AMR_Read_Keyword_Value({5, keyword + "=" + value}, keyword, value, record);
    }
    int line(const std::string &text) {
        return AMR_Read_Keyword_Line({5, text}, classifyAmiraLine(text, true), record);
    }

    MessageRecorder messages;
    AmiraRecord record;
};

TEST_F(AmiraKeywordTest, ASlashLineHoldsOnePair) {
    line("/ JOBNAME: no comment when it comes here");
    EXPECT_EQ(record.JobName.view(), "no comment when it comes here");
    line("/basefreq= 25");
    EXPECT_EQ(record.TxFreq, 25.0F);
    EXPECT_EQ(messages.infos.back(), "basefreq: 25"); // as it stands
    line("/date: 12:30 = noon");
    EXPECT_EQ(record.Date.view(), "12:30 = noon");
    line("/: 3");
    line("/TXFREQ" + std::string(26, ' ') + ": 99"); // the mark stands too far right
    line("/TXFREQ 99");
    EXPECT_EQ(record.TxFreq, 25.0F);
    EXPECT_THAT(messages.warnings, IsEmpty());
}

// One letter before the mark makes a keyword, none makes a row.
TEST_F(AmiraKeywordTest, AMarkCountsFromTheSecondCharacterOn) {
    EXPECT_EQ(classifyAmiraLine("X:5", false), AmiraLine::Pairs);
    EXPECT_EQ(classifyAmiraLine("X=5", false), AmiraLine::Pairs);
    EXPECT_EQ(classifyAmiraLine(":5 1 2", false), AmiraLine::Other);
    EXPECT_EQ(classifyAmiraLine("=5 1 2", false), AmiraLine::Other);
    line("X:5 Y=6");
    EXPECT_EQ(record.East, 5.0);
    EXPECT_EQ(record.North, 6.0);
}

TEST_F(AmiraKeywordTest, UnitsAreKnownByTheirExactNames) {
    struct Case {
        const char *text;
        int index;
        bool isGuessed;
    };
    for (const auto &[text, index, isGuessed] :
         {Case{"uV/A", 1, false}, Case{"nv/am2", 2, false}, Case{"nV/Am^2", 2, false},
          Case{"nT/s", 3, false}, Case{"NT/SEC", 3, false}, Case{"uV/Am2", 1, true},
          Case{"nV/(A m2)", 2, true}, Case{"nT/second", 3, true}}) {
        pair("TEMUNIT", text);
        EXPECT_EQ(record.unitIndex, index) << text;
        EXPECT_EQ(record.unitIsGuessed, isGuessed) << text;
    }
}

TEST_F(AmiraKeywordTest, ALineWithoutSlashHoldsManyPairs) {
    line("LOOP:3 TXTURN =2 RXAREAZ: 2500\tCURRENT = 8.5 JOBFOR:\"A: B\" AZI= LINE=L 7");
    EXPECT_EQ(record.LoopNumber, 3.0);
    EXPECT_EQ(record.TxTurn, 2);
    EXPECT_EQ(record.RxAreaXYZ[2], 2500.0F);
    EXPECT_EQ(record.Current, 8.5F);
    EXPECT_EQ(record.JobFor.view(), "A: B");
    EXPECT_FALSE(isPresent(record.Azimuth));
    EXPECT_EQ(record.Line.view(), "L");
    EXPECT_EQ(messages.infos.front(), "Reading amr file keyword record.");
    EXPECT_THAT(messages.warnings, ElementsAre(HasSubstr("text without a keyword is passed over")));
    line("Note: the crew came late");
    EXPECT_EQ(messages.warnings.size(), 1U);
    line("TIMES(MS)=1, 2, 3 JOBBY:\"open LINE:9");
    EXPECT_EQ(record.times.listed[ChannelTimes::Center], 3);
    EXPECT_EQ(record.JobBy.view(), "open LINE:9");
    EXPECT_THAT(messages.warnings.back(), HasSubstr("a quote is not closed on record 5|TIMES"));
}

TEST_F(AmiraKeywordTest, OfMoreThan32PairsTheFirstAreRead) {
    std::string text;
    for (int i = 1; i <= 33; ++i) {
        text += "TXTURN:" + std::to_string(i) + " ";
    }
    EXPECT_EQ(line(text), 0);
    EXPECT_EQ(record.TxTurn, 32);
    EXPECT_THAT(messages.warnings, ElementsAre(HasSubstr("more than 32 words")));
}

TEST_F(AmiraKeywordTest, NumbersInTexts) {
    struct Case {
        const char *text;
        int status;
        double value;
    };
    for (const auto &[text, status, expected] :
         {Case{"1200N", 0, 1200}, Case{"1200s", 0, -1200}, Case{"L1200E", 0, 1200},
          Case{"L 100 W", 0, -100}, Case{"-5W", 0, 5}, Case{"1.5E2", 0, 150}, Case{"*", -1, 0},
          Case{"", -1, 0}, Case{"L-", -1, 0}, Case{"L 12+50 W", 1, 0}, Case{"100-200", 1, 0},
          Case{"1.2.3", 1, 0}, Case{"1E13", 1, 0}}) {
        double value = 0.0;
        EXPECT_EQ(Cell_to_AmiraNumber(text, value), status) << text;
        EXPECT_EQ(value, expected) << text;
    }
    pair("LINE", "L 12+50 W");
    EXPECT_EQ(messages.errors.back(), "WARNING: Could not read number from L 12+50 W|Record # 5");
    EXPECT_EQ(record.Line.view(), "L 12+50 W");
    EXPECT_FALSE(isPresent(record.LineNumber));
}

TEST_F(AmiraKeywordTest, ArraysAndComponentsAreKnownByTheirLetters) {
    for (const auto &[config, index] : {std::pair{"fixedloop", 1},
                                        {"DOWNHOLE", 1},
                                        {"LTX_SRX", 1},
                                        {"Sounding", 2},
                                        {"inout", 2},
                                        {"INLOOP", 3},
                                        {"LTX_ILR", 3},
                                        {"MVL", 2},
                                        {"COINCIDENT", 4},
                                        {"LOT", 2}}) {
        pair("MODE", config);
        EXPECT_EQ(record.arrayIndex, index) << config;
    }
    for (const auto &[text, code] : {std::pair{"x", 1},
                                     {"HY", 2},
                                     {"dZ", 3},
                                     {"I", 4},
                                     {"C", 5},
                                     {"AX", 1},
                                     {"A", 6},
                                     {"V", 8},
                                     {"UU", 7},
                                     {"1", 0}}) {
        pair("RXCMP", text);
        EXPECT_EQ(record.componentCode, code) << text;
    }
}

TEST_F(AmiraKeywordTest, DataOfAnotherMethodStopTheFile) {
    EXPECT_EQ(pair("DATATYPE", "voltage"), 0);
    EXPECT_EQ(record.DataType.view(), "TEM");
    EXPECT_EQ(line("LOOP:3 DATATYPE:mt LOOP:4"), 2);
    EXPECT_EQ(record.LoopNumber, 3.0);
    EXPECT_EQ(messages.errors.back(), "AMIRA TEM Input ERROR:|DataType=MT /= TEM");
}

TEST_F(AmiraKeywordTest, AnAreaSetsTheAxesWithoutAnAreaOfTheirOwn) {
    pair("RXAREAX", "2000");
    pair("RXAREA", "500");
    EXPECT_THAT(record.RxAreaXYZ, ElementsAre(2000, 500, 500));
    pair("RXAREA", "many");
    EXPECT_THAT(record.RxAreaXYZ, ElementsAre(2000, 500, 500));
    EXPECT_EQ(record.RxArea, 1.0F);
    pair("RXAREAZ", "-2500");
    EXPECT_EQ(record.RxAreaXYZ[2], 2500.0F);
    EXPECT_EQ(messages.warnings.back(),
              "AMR_Read_Keyword_Value.WARNING: RXAREAZ = -2500 < 0|The sign is dropped.");
    pair("RXAREAZ", "0");
    EXPECT_EQ(record.RxAreaXYZ[2], 2500.0F);
    EXPECT_EQ(messages.warnings.back(),
              "AMR_Read_Keyword_Value.WARNING: RXAREAZ = 0 < 0.01|It is not used.");
}

TEST_F(AmiraKeywordTest, AValueThatCannotBeReadTakesItsSubstituteAnAbsentOneNone) {
    pair("XTXLENGTH", "");
    pair("TXFREQ", "*");
    EXPECT_EQ(record.XTxLength, 0.0F);
    EXPECT_EQ(record.TxFreq, 1.0F);
    EXPECT_THAT(messages.errors, IsEmpty());
    pair("XTXLENGTH", "wide");
    EXPECT_EQ(record.XTxLength, 100.0F);
    EXPECT_EQ(messages.errors.back(), "ERROR reading real*4 XTXLENGTH value from wide|"
                                      "Record number 5|XTXLENGTH=wide");
    pair("AZIMUTH", "400");
    EXPECT_EQ(record.Azimuth, 400.0F);
    EXPECT_EQ(messages.errors.back(),
              "AMR_Read_Keyword_Value.WARNING: AZIMUTH =400 < -360 or > 360");
}

TEST_F(AmiraKeywordTest, UnitsAreNamesOfATable) {
    for (const auto &[text, index] : {std::pair{"uV/A", 1}, {"\"nV/Am2\"", 2}, {" nt/sec", 3}}) {
        pair("UNITS", text);
        EXPECT_EQ(record.unitIndex, index) << text;
    }
}

TEST_F(AmiraKeywordTest, VerticesHaveAnIndexAndAnAxis) {
    pair("lv4y", "12.5");
    EXPECT_EQ(record.vertices[3].y, 12.5);
    struct Case {
        const char *keyword, *words;
    };
    for (const auto &[keyword, words] :
         {Case{"LV5X", "AMR_Read_Keyword_Value.WARNING: invalid index|LV5X:1|"
                       "Index=5 < 1 or > maximum=4"},
          Case{"LVX", "AMR_Read_Keyword_Value.WARNING: invalid index|LVX:1|"
                      "Index=0 < 1 or > maximum=4"},
          Case{"LV1E", "AMR_Read_Keyword_Value.WARNING: invalid component label|LV1E:1|"
                       "Trailing component character in LV1E must be X, Y or Z"}}) {
        EXPECT_EQ(pair(keyword, "1"), 1);
        EXPECT_EQ(messages.errors.back(), words);
    }
}

} // namespace
} // namespace keldrin
