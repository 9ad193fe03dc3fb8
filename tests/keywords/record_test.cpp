#include "keywords/keyword_fixture.h"

#include <random>

namespace keldrin {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;

using RecordTest = KeywordTest;

TEST_F(RecordTest, FormOfARecordDecidesItsStatus) {
    const struct {
        std::string_view line;
        int status;
        double frequency; ///< Tx.Freq afterwards; its default is 1
    } cases[] = {
        {"$ Tx.Freq = 4", 0, 4},
        {"comment $Tx.Freq=4", 0, 4},
        {"12:30 $ Tx.Freq = 4", 0, 4}, // a colon before the "$" opens no prefix
        {"$ tEm : tx.freq = 4", 0, 4},
        {"$ TX.FREQ = 4 $ a:b = c", 0, 4},
        {"$ HEADER.TYPE = 4", 0, 1},
        {"$ Tx.Freq =", 0, 1},
        {"$ Tx.Freq =   ", 0, 1},
        {"$ Tx.Freq 4", 1, 1},
        {"Tx.Freq = 4", 1, 1},
        {"Tx.Freq = $ 4", 1, 1},
        {"a = 1 $ Tx.Freq = 4", 1, 1}, // the first "=" of the line counts
        {"", 1, 1},
        {"$ Survey: Tx.Freq = 4", 2, 1},
        {"$ : Tx.Freq = 4", 2, 1},
        {"$ KELDRINS: Tx.Freq = 4", 2, 1},
        {"$ KELDRIN: Tx.Freq = 4", 3, 1}, // the prefix stays in the key and hides its group
        {"$ my keldrin 4: Tx.Freq = 4", 3, 1},
        // cut to 32 characters, this prefix has no blank after the name
        {"$ 1234567890123456789012345KELDRIN : Tx.Freq = 4", 2, 1},
        {"$ 12345678901234567890KELDRIN : Tx.Freq = 4", 3, 1},
        {"$ Foo = 1", 3, 1},
        {"$ .Freq = 4", 3, 1},
        {"$ TXX.Freq = 4", 3, 1},
        {"$ STACK.COUNT = 4", 3, 1},
        {"$ Tx.Freq                             = 4", 0, 4},
        {"$ HEADER.NoSuchKeyword = 1", 0, 1}, // the whole group is passed over
        {"$ qdr.NumCard = 4", 0, 1},
        {"$ gps.Lat = 40", 0, 1},
        {"$ ch.Gain = 111", 0, 1},
        {"$ VEXA.VXSN = 4", 3, 1},
    };
    for (const auto &test : cases) {
        forget();
        EXPECT_EQ(read(test.line), test.status) << test.line;
        EXPECT_EQ(metadata.Tx.Freq.value, static_cast<float>(test.frequency)) << test.line;
        expectSilence();
    }
}

TEST_F(RecordTest, KeyWithoutKeywordIsReported) {
    const struct {
        std::string_view line;
        std::string_view key;
    } cases[] = {
        {"  $ Tx. = 5", "Tx."},
        {"$ = 5", ""},
        {"$ Stn.QdrEnd = 3", "Stn.QdrEnd"}, // its alias is blank
    };
    for (const auto &test : cases) {
        forget();
        EXPECT_EQ(read(test.line), 1);
        EXPECT_THAT(messages.warnings,
                    ElementsAre("MDP_Read_Value.WARNING: No keyword name in " +
                                std::string(test.key) + " from line|" +
                                std::string(test.line.substr(test.line.find('$')))));
        EXPECT_THAT(messages.errors, SizeIs(0));
    }
    EXPECT_EQ(metadata.Stn.QdrEnd.value, 1.0E32);
    EXPECT_EQ(read("$ StnHigh = 3"), 0); // looked up once, so the blank alias is not met
    EXPECT_EQ(metadata.Stn.QdrEnd.value, 3.0);
}

TEST_F(RecordTest, AliasesAreLookedUpOnce) {
    readAll({"$ Project = Alpha", "$ ADCARDSN = 1", "$ xmtr = 7", "$ RXAREAZ = 3",
             "$ Length.Units = ft", "$ JobLine = 12E", "$ TX = 8"});
    EXPECT_EQ(metadata.Job.Name.value, "Alpha");
    EXPECT_EQ(metadata.Tx.QdrStn.value, 8.0);
    EXPECT_EQ(metadata.Rx.AreaZ.value, 3.0F);
    EXPECT_EQ(metadata.Unit.Length.value, 2);
    EXPECT_EQ(metadata.Line.Name.value, "12E");

    EXPECT_EQ(read("$ NCycle = 64"), 3); // TS.NCYCLE, which is an alias too
    EXPECT_EQ(metadata.Tx.NCycle.value, 0);
    EXPECT_EQ(read("$ TS.NCycle = 64"), 0);
    EXPECT_EQ(metadata.Tx.NCycle.value, 64);
    expectSilence();
}

TEST_F(RecordTest, TextTakesTheFirstTokenAsItStands) {
    const TextCase cases[] = {
        {"$ Job.For = Smith, Bob", textAt<&JobMetadata::For>, "Smith"},
        {"$ Job.For =  \"Smith, Bob\" ; Ltd", textAt<&JobMetadata::For>, "Smith, Bob"},
        {"$ Job.Comment = 12345678901234567890123456789012345", textAt<&JobMetadata::Comment>,
         "12345678901234567890123456789012"},
        {"$ Job.Number = 12345678901234567890", textAt<&JobMetadata::Number>, "1234567890123456"},
        {"$ Job.Area = a = b: $ 5", textAt<&JobMetadata::Area>, "a = b: $ 5"},
        {"$ Job.By = ,x", textAt<&JobMetadata::By>, ""},
        {"$ Job.Date = 2020-07-21", textAt<&JobMetadata::Date>, "2020-07-21"},
        {"$ SURVEY.JOB = 7", textAt<&JobMetadata::Number>, "7"},
        {"$ Line.Name = L 10", textAt<&LineMetadata::Name>, "L 10"},
        {"$ Stn.Name = 5+50", textAt<&StnMetadata::Name>, "5+50"},
        {"$ Tx.Type = wire", textAt<&TxMetadata::Type>, "wire"},
        {"$ Spread = 3", textAt<&SurveyMetadata::Spread>, "3"},
    };
    for (const TextCase &test : cases) {
        forget();
        EXPECT_EQ(read(test.line), 0);
        EXPECT_EQ(test.field(metadata), test.expected) << test.line;
        EXPECT_THAT(messages.errors, testing::IsEmpty());
    }
}

TEST_F(RecordTest, UnknownKeywordsAreErrorsThreeTimesForEachGroup) {
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(read("  $ Tx.Colour = red  "), 0);
    }
    EXPECT_EQ(read("$ Rx.Colour = red"), 0);
    EXPECT_THAT(messages.errors, SizeIs(4));
    EXPECT_THAT(messages.warnings, SizeIs(2));
    EXPECT_EQ(messages.errors[0], "Tx_MD_Read.WARNING:|Did not recognize keyword Tx.Colour in "
                                  "record # 1|$ Tx.Colour = red");
    EXPECT_THAT(messages.errors[3], HasSubstr("Rx_MD_Read.WARNING:"));
    EXPECT_THAT(messages.warnings[1], HasSubstr("record # 5"));
    readAll({"$ QDR.Colour = red", "$ GPS.Colour = red", "$ Ch.Colour = red"});
    EXPECT_THAT(messages.errors[4], HasSubstr("Qdr_MD_Read.WARNING:|Did not recognize"));
    EXPECT_THAT(messages.errors[5], HasSubstr("Gps_MD_Read.WARNING:|Did not recognize"));
    EXPECT_THAT(messages.errors[6], HasSubstr("Ch_MD_Read.WARNING:|Did not recognize"));
}

TEST_F(RecordTest, TooManyTokensKeepTheFirst) {
    std::string line = "$ Tx.Sense = 0.5";
    for (int i = 0; i < 200; ++i) {
        line += ",2";
    }
    read(line);
    EXPECT_EQ(metadata.Tx.Sense.value[0], 0.5F);
    EXPECT_EQ(metadata.Tx.Sense.value[15], 2.0F);
    EXPECT_THAT(messages.errors, ElementsAre(HasSubstr("more than 128 columns")));
}

// Bytes that no file should hold, after keys that reach every kind of reader.
TEST_F(RecordTest, AnyBytesAreSurvived) {
    const std::string_view heads[] = {"$ Tx.XYZ1 =",
                                      "$ Tx.Length =",
                                      "$ Grid.Ref1 =",
                                      "$ Rx.Area =",
                                      "$ Rx.Cmp =",
                                      "$ Survey.Type =",
                                      "$ Unit.Phase =",
                                      "$ Line.Name =",
                                      "$ GPS.LocalTimeOffset =",
                                      "$ GPS.UTMXYZ =",
                                      "$ Ch.Gain =",
                                      "$ Ch.Status =",
                                      "$ Ch.Tx1 =",
                                      "$ Ch.Sensor =",
                                      "$ Tx.UTM",
                                      "$",
                                      ""};
    const std::string_view alphabet = "0123456789+-.eE:,;/*\"$= mMfFN\t\0\xFF\xC3\x80";
    std::mt19937 random(20200721); // NOLINT: the same bytes on every run
    for (int i = 0; i < 20000; ++i) {
        std::string line(heads[random() % std::size(heads)]);
        for (auto length = random() % 80; length > 0; --length) {
            line += alphabet[random() % alphabet.size()];
        }
        read(line, static_cast<int>(random() % 3));
        ASSERT_TRUE(metadata.Survey.TypeIndex >= 1 && metadata.Survey.TypeIndex <= 7);
        ASSERT_TRUE(metadata.Tx.LengthX.value >= 0.01F);
        ASSERT_TRUE(std::fabs(metadata.Gps.LocalTimeOffset.value) <= 12.0);
        ASSERT_TRUE(metadata.Ch.Gain.value[15].factor > 0.0F);
    }
}

} // namespace
} // namespace keldrin
