#include "keywords/channel_codes.h"
#include "keywords/keyword_fixture.h"

namespace keldrin {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;

using ChannelGroupTest = KeywordTest;

TEST_F(ChannelGroupTest, Numbers) {
    const NumberCase cases[] = {
        {"$ Ch.NumOn = 0", at<&ChMetadata::NumOn>, 1, 1},
        {"$ Ch.NumOn = 17,3", at<&ChMetadata::NumOn>, 16, 1},
        {"$ ChCmp = Hz,hx,refoff", at<&ChMetadata::Cmp, 2>, 7},
        {"$ Ch.NumberType = Offset,Stn #", at<&ChMetadata::NumberType, 1>, 2},
        {"$ Ch.Stn = 1,2e10", at<&ChMetadata::Stn, 1>, 9.9E9, 1},
        {"$ ChNumber = 10.25,11.25", at<&ChMetadata::Number, 1>, 11.25},
        {"$ Ch.Area = -1E30", at<&ChMetadata::Area>, -1.0E30},
        {"$ Rx.LabID = 4", at<&ChMetadata::LabID>, 4},
        {"$ Lab.Name = 5", at<&ChMetadata::LabID>, 5}, // an alias of the number
        {"$ Lab.Length = 0", at<&ChMetadata::LabLength>, 0.01, 1},
        {"$ Ch.Azimuth = 1,361", at<&ChMetadata::Azimuth, 1>, 360, 1},
        {"$ Ch.Incl = -91", at<&ChMetadata::Incl>, -90, 1},
        {"$ Ch.Length = -1", at<&ChMetadata::Length>, 0, 1},
        {"$ ChFactor = -1E30", at<&ChMetadata::Factor>, -1.0E30},
        {"$ Ch.Factor = 1E10", at<&ChMetadata::Factor>, 9900000256.0, 1},
        {"$ Ch.Vmin = -10001", at<&ChMetadata::Vmin>, -10000, 1},
        {"$ Ch.Unit = mrad,PFE", at<&ChMetadata::Unit, 1>, 3},
        {"$ Ch.PreAmp = *,8", at<&ChMetadata::PreAmp, 1>, 8},
        {"$ Ch.PreAmp = *,8", at<&ChMetadata::PreAmp, 0>, 1},
        {"$ Ch.GainFactor = 0", at<&ChMetadata::GainFactor>, 0.01, 1},
        {"$ Ch.ExtGain = 0.01", at<&ChMetadata::ExtGain>, 0.01, 1},
        {"$ ChSP = 20001", at<&ChMetadata::SP>, 20000, 1},
        {"$ Ch.Res = 1E9", at<&ChMetadata::CRes>, 1.0E9},
        {"$ Ch.QdrBox = 2,-1", at<&ChMetadata::QdrBox, 1>, 0, 1},
        {"$ Ch.QdrSlot = 17", at<&ChMetadata::QdrSlot>, 16, 1},
        {"$ Ch.Coil = 12,-3", at<&ChMetadata::AntSN, 0>, 12, 1},
        {"$ Ch.Skip = no,Yep,0", at<&ChMetadata::Skip, 1>, 1},
        {"$ Ch.Flip = *,T", at<&ChMetadata::Flip, 0>, 0},
    };
    for (const NumberCase &test : cases) {
        forget();
        EXPECT_EQ(read(test.line), 0);
        EXPECT_THAT(test.field(metadata), isNumber(test.expected)) << test.line;
        EXPECT_THAT(messages.errors, SizeIs(test.reports)) << test.line;
    }
}

// Bearings and units of length belong to the loops; a channel's angle and length are numbers.
TEST_F(ChannelGroupTest, AnglesAndLengthsArePlainNumbers) {
    readAll({"$ Ch.Azimuth = 10,N45E", "$ Unit.Length = ft", "$ Ch.Length = 100,100ft",
             "$ Ch.Skip = maybe"});
    EXPECT_EQ(metadata.Ch.Azimuth.value[0], 10.0F);
    EXPECT_EQ(metadata.Ch.Azimuth.value[1], 0.0F);
    EXPECT_EQ(metadata.Ch.Length.value[0], 100.0F);
    EXPECT_THAT(messages.errors,
                ElementsAre(HasSubstr("real*4 Ch.Azimuth[2] value from N45E"),
                            HasSubstr("real*4 Ch.Length[2] value from 100ft"),
                            HasSubstr("Ch.Skip[1] Yes/No, True/False or 1/0 response from maybe")));
}

TEST_F(ChannelGroupTest, TokensBelongToChannels) {
    std::string line = "$ Ch.StnName = 0";
    for (int i = 1; i < 20; ++i) {
        line += "," + std::to_string(i);
    }
    read(line);
    EXPECT_EQ(metadata.Ch.StnName.value[15], "15"); // the rest is ignored
    read("$ Ch.Notch = ,60 Hz");
    EXPECT_TRUE(metadata.Ch.Notch.value[0].isBlank());
    EXPECT_EQ(metadata.Ch.Notch.value[1], "60 Hz");

    read("$ Ch.Stn = 1,2,3");
    read("$ Ch.Stn = 7,7,7,7", SideFile); // one level for all channels
    EXPECT_EQ(metadata.Ch.Stn.value[3], 0.0);
    read("$ Ch.Stn = *,5");
    EXPECT_EQ(metadata.Ch.Stn.value[0], 1.0);
    EXPECT_EQ(metadata.Ch.Stn.value[1], 5.0);
    expectSilence();
}

// A token is the point of its channel.
TEST_F(ChannelGroupTest, Points) {
    readAll({"$ Ch.Tx1 = 10:20:5, 1e10:*:7, 30", "$ Ch.Lat = 91,-90", "$ Ch.Lon = -180:180:x"});
    EXPECT_THAT(metadata.Ch.Tx1.value[0], ElementsAre(10, 20, 5));
    EXPECT_THAT(metadata.Ch.Tx1.value[1], ElementsAre(9.9E9, -1.0E32, 7));
    EXPECT_EQ(metadata.Ch.Tx1.value[2][0], 30.0);
    EXPECT_FALSE(isPresent(metadata.Ch.Tx1.value[2][1]));
    EXPECT_EQ(metadata.Ch.Lat.value[0][0], 90.0);
    EXPECT_EQ(metadata.Ch.Lat.value[1][0], -90.0);
    EXPECT_EQ(metadata.Ch.Lon.value[0][1], 180.0);
    EXPECT_THAT(messages.errors, ElementsAre("Ch_MD_Read.WARNING:|Ch.Tx1[2] = 1e+10 > 9.9e+09|"
                                             "Ch.Tx1[2] will be set = 9.9e+09",
                                             HasSubstr("Ch.Lat[1] = 91 > 90"),
                                             HasSubstr("real*8 Ch.Lon[1] value from x")));
}

TEST_F(ChannelGroupTest, Sensors) {
    read("$ Ch.Sensor = B-field,*,TxRef-1,1234");
    const auto &sensors = metadata.Ch.Sensor.value;
    EXPECT_THAT((std::array{sensors[0].index, sensors[1].index, sensors[2].index, sensors[3].index,
                            sensors[4].index}),
                ElementsAre(3, 2, 5, 2, 2));
    EXPECT_EQ(sensors[1].name, "dBdt");
    EXPECT_EQ(sensors[2].name, "TxRef-1");
    expectSilence();
    read("$ Ch.Sensor = dBdt,coil");
    EXPECT_EQ(sensors[1].index, 4);
    EXPECT_THAT(messages.errors, ElementsAre(HasSubstr("integer Ch.Sensor[2] value from coil")));
}

TEST_F(ChannelGroupTest, GainCodes) {
    const struct {
        std::string_view code;
        float factor;
        std::array<int, 3> stages;
        int divisor = 0;
        int status = 0;
    } cases[] = {
        {"111", 8, {2, 2, 2}},
        {"3A", 1, {4, 8, 0}}, // 8 and 0.125
        {" 3a ", 1, {4, 8, 0}},
        {"356-2", 8.0F * 32.0F * 64.0F / 4.0F, {4, 6, 7}, 3},
        {"3569-2", 8.0F * 32.0F * 64.0F / 4.0F, {4, 6, 7}, 3}, // a fourth stage does not count
        {"6-0", 64, {7, 0, 0}, 0},                             // a divisor of 1 does not count
        {"6-A", 512, {7, 0, 0}, 8},
        {"6-", 64, {7, 0, 0}},
        {"-1", 0.5F, {0, 0, 0}, 2},
        {"012345678-1", 8, {1, 2, 3}}, // after 8 characters the "-" does not count
        {"None", 1, {0, 0, 0}},
        {"", 1, {0, 0, 0}, 0, 1},
        {"1*", 1, {0, 0, 0}, 0, 1},
        {"17", 1, {0, 0, 0}, 0, 1}, // there is no such digit
        {"1-x", 1, {0, 0, 0}, 0, 1},
    };
    for (const auto &test : cases) {
        ChannelGain gain{"666", 64.0F, {7, 7, 7}, 7};
        EXPECT_EQ(Ch_Decode_Gain(test.code, gain), test.status) << test.code;
        EXPECT_EQ(gain.factor, test.factor) << test.code;
        EXPECT_EQ(gain.stages, test.stages) << test.code;
        EXPECT_EQ(gain.divisor, test.divisor) << test.code;
    }
    read("$ ChGain = 111,*,3A,356-2,");
    EXPECT_EQ(metadata.Ch.Gain.value[0].factor, 8.0F);
    EXPECT_EQ(metadata.Ch.Gain.value[1].code, "NONE");
    EXPECT_EQ(metadata.Ch.Gain.value[3].code, "356-2");
    expectSilence();
}

TEST_F(ChannelGroupTest, StatusWords) {
    const struct {
        std::string_view word;
        std::array<int, 7> fields;
    } cases[] = {
        {"0000", {0, 0, 0, 0, 0, 0, 0}}, {"FFFF", {3, 7, 1, 3, 7, 1, 7}},
        {"0003", {3, 0, 0, 0, 0, 0, 0}}, {"1c", {0, 7, 0, 0, 0, 0, 0}},
        {"0020", {0, 0, 1, 0, 0, 0, 0}}, {"0040", {0, 0, 0, 1, 0, 0, 0}},
        {"0500", {0, 0, 0, 0, 5, 0, 0}}, {"0800", {0, 0, 0, 0, 0, 1, 0}},
        {"6000", {0, 0, 0, 0, 0, 0, 6}}, {"8000", {0, 0, 0, 0, 0, 0, 0}},
    };
    for (const auto &test : cases) {
        ChannelStatus status;
        EXPECT_EQ(Ch_Decode_Status(test.word, status), 0);
        EXPECT_EQ(status.fields, test.fields) << test.word;
    }
    for (const std::string_view word : {"", "ZZZZ", "12345", "0x1F", "-1", "1 2"}) {
        ChannelStatus status;
        EXPECT_EQ(Ch_Decode_Status(word, status), 1) << word;
    }
    read("$ ChStatus = 0003,ZZZZ,*,0020");
    EXPECT_EQ(metadata.Ch.Status.value[0].fields[0], 3);
    EXPECT_EQ(metadata.Ch.Status.value[3].fields[2], 1);
    EXPECT_THAT(messages.errors, SizeIs(0));
    EXPECT_THAT(messages.warnings,
                ElementsAre("Ch_MD_READ.Error while reading ChStatus|Ch.Status[2] = ZZZZ in record "
                            "# 1|$ ChStatus = 0003,ZZZZ,*,0020"));
}

TEST_F(ChannelGroupTest, WordsOfRangeReports) {
    read("$ Ch.ExtGain = 2,0");
    EXPECT_THAT(messages.errors,
                ElementsAre("Ch_MD_Read.WARNING:|Ch.ExtGain[2] = 0 <= 0.01 or > 3.40282e+38|"
                            "Ch.ExtGain[2] will be set = 0.01"));
    read("$ Ch.NumOn = 20");
    EXPECT_EQ(messages.errors[1],
              "Ch_MD_Read.WARNING:|Ch.NumOn = 20 > 16|Ch.NumOn will be set = 16");
    read("$ Ch.NumOn = 20"); // the first of a keyword is an error, later ones are warnings
    EXPECT_THAT(messages.errors, SizeIs(2));
    EXPECT_THAT(messages.warnings, SizeIs(1));
}

} // namespace
} // namespace keldrin
