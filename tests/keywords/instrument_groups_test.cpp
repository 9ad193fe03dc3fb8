#include "keywords/keyword_fixture.h"

namespace keldrin {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;

using InstrumentGroupsTest = KeywordTest;

TEST_F(InstrumentGroupsTest, NumbersOfTheReceiver) {
    const NumberCase cases[] = {
        {"$ QDR.NumCard = 0", at<&QdrMetadata::NumCard>, 1, 1},
        {"$ QDR.NCard = 17", at<&QdrMetadata::NumCard>, 16, 1},
        {"$ QDR.CalVolts = 0", at<&QdrMetadata::CalVolts>, 0},
        {"$ QDRBat = 0", at<&QdrMetadata::Bat>, 0, 1}, // reported, though it stays what it was
        {"$ QDR.Bat = 21", at<&QdrMetadata::Bat>, 20, 1},
        {"$ QDR.Amp = 50", at<&QdrMetadata::Amp>, 50}, // tested against 100 A
        {"$ QDR.Amp = 150", at<&QdrMetadata::Amp>, 20, 1},
        {"$ QDR.Amp = -1", at<&QdrMetadata::Amp>, 0, 1},
        {"$ QDRTemp = -40.5", at<&QdrMetadata::Temp>, -40.5},
        {"$ QDR.Temp = -101", at<&QdrMetadata::Temp>, -100, 1},
        {"$ QDRHumid = 101", at<&QdrMetadata::Humid>, 100, 1},
        {"$ QDR.Ch = 5,-1,17", at<&QdrMetadata::Ch, 2>, 16, 1},
        {"$ QDRChn = 5,-1,17", at<&QdrMetadata::Ch, 1>, -1, 1},
        {"$ QDR.ADCardSND = 12,13", at<&QdrMetadata::ADCardSND, 1>, 13},
        {"$ QDR.Blk = 7, 0", at<&QdrMetadata::Blk, 1>, 0, 1},
        {"$ QDR.Blk = 7:9", at<&QdrMetadata::Blk, 0>, 1, 1}, // no point, so no colons
        {"$ QDR.Setup = -4", at<&QdrMetadata::Setup>, -4},
        {"$ QDR.Time = 01:30:00", at<&QdrMetadata::Time>, 1.5},
        {"$ Time0 = 13.25", at<&QdrMetadata::Time>, 13.25},
        {"$ QDR.Type = other", at<&QdrMetadata::Type>, 5},
        {"$ QDR.Type = QDRb rev 2", at<&QdrMetadata::Type>, 2},
        {"$ QDR.SigSource = ISys", at<&QdrMetadata::SigSource>, 2},
        {"$ QDR.AcqMethod = Decay", at<&QdrMetadata::AcqMethod>, 3},
        {"$ QDR.GainMode = HighGain", at<&QdrMetadata::GainMode>, 4},
        {"$ QDR.GainMethod = ESys", at<&QdrMetadata::GainMethod>, 3},
    };
    for (const NumberCase &test : cases) {
        forget();
        EXPECT_EQ(read(test.line), 0);
        EXPECT_THAT(test.field(metadata), isNumber(test.expected)) << test.line;
        EXPECT_THAT(messages.errors, SizeIs(test.reports)) << test.line;
    }
}

// What lies outside becomes 0 here, not the nearest bound, whatever the words of the warning say.
TEST_F(InstrumentGroupsTest, NumbersOfTheClock) {
    const NumberCase cases[] = {
        {"$ GPS.Lat = -90", at<&GpsMetadata::Lat>, -90},
        {"$ GPS.Lat = -90.5", at<&GpsMetadata::Lat>, 0, 1},
        {"$ GPS.Lon = -180", at<&GpsMetadata::Lon>, -180},
        {"$ GPS.Lon = 200", at<&GpsMetadata::Lon>, 0, 1},
        {"$ GPS.Alt = -1D6", at<&GpsMetadata::Alt>, -1.0E6},
        {"$ GPS.Alt = 1.1E6", at<&GpsMetadata::Alt>, 0, 1},
        {"$ GPS.UTMZone = -60", at<&GpsMetadata::UTMZone>, -60},
        {"$ GPS.UTMZone = 61", at<&GpsMetadata::UTMZone>, 0, 1},
        {"$ GPS.UTMXYZ = 1:2:3:4", at<&GpsMetadata::UTMXYZ, 2>, 3},
        {"$ GPS.UTMXYZ = 1,2,3,4", at<&GpsMetadata::UTMXYZ, 2>, 3},
        {"$ GPS.UTMXYZ = 1e10,2", at<&GpsMetadata::UTMXYZ, 0>, 0, 1},
        {"$ GPS.UTMXYZ = 1e10,2", at<&GpsMetadata::UTMXYZ, 1>, 2, 1},
        {"$ GPS.Week = 2110", at<&GpsMetadata::Week>, 2110},
        {"$ GPS.Week = -1", at<&GpsMetadata::Week>, 0, 1},
        {"$ GPS.Sec = 604799.5", at<&GpsMetadata::Sec>, 604799.5},
        {"$ GPS.Sec = 1.1E32", at<&GpsMetadata::Sec>, 0, 1},
        {"$ GPS.LeapSecond = -1", at<&GpsMetadata::LeapSecond>, 0, 1},
        {"$ GPS.LeapSecond = *", at<&GpsMetadata::LeapSecond>, 16},
        {"$ GPS.NumSat = 64", at<&GpsMetadata::NumSat>, 64},
        {"$ GPS.NumSat = 65", at<&GpsMetadata::NumSat>, 0, 1},
        {"$ GPS.PDOP = 65", at<&GpsMetadata::PDOP>, 65},
        {"$ GPS.PDOP = 1001", at<&GpsMetadata::PDOP>, 0, 1},
        {"$ GPS.Status = -5", at<&GpsMetadata::Status>, -5},
        {"$ GPS.TCDAC = -1", at<&GpsMetadata::TCDAC>, 0, 1},
    };
    for (const NumberCase &test : cases) {
        forget();
        EXPECT_EQ(read(test.line), 0);
        EXPECT_THAT(test.field(metadata), isNumber(test.expected)) << test.line;
        EXPECT_THAT(messages.errors, SizeIs(test.reports)) << test.line;
    }
}

TEST_F(InstrumentGroupsTest, LocalTimeOffsets) {
    const struct {
        std::string_view value;
        double hours;
        int reports = 0;
    } cases[] = {
        {"-7", -7},
        {"5:30", 5.5},
        {"5:30:36", 5.51},
        {"-7:00:00", -7},
        {"12", 12},
        {"13", 0, 1},
        {"-7:30", -6.5}, // minutes count forward, whatever the sign
                         // of the hours
        {"-10", 10},     // hours are two characters, and the sign is a third
        {"5.5", 0, 1},   // filled up to 5.5:00:00, of which the hours are no integer
        {"*", 0},
        {":", 0, 1},
    };
    for (const auto &test : cases) {
        forget();
        read("$ GPS.LocalTimeOffset = " + std::string(test.value));
        EXPECT_THAT(metadata.Gps.LocalTimeOffset.value, isNumber(test.hours)) << test.value;
        EXPECT_THAT(messages.errors, SizeIs(test.reports)) << test.value;
    }
    EXPECT_THAT(messages.errors, ElementsAre(HasSubstr("ERROR reading hh:mm:ss Gps.LocalTimeOffset "
                                                       "value from \"::00\"|")));
}

TEST_F(InstrumentGroupsTest, Texts) {
    const TextCase cases[] = {
        {"$ QDRSN = 217", textAt<&QdrMetadata::SN>, "217"},
        {"$ QDR.ProgVer = 12345678901234567890123456789012345", textAt<&QdrMetadata::ProgVer>,
         "12345678901234567890123456789012"},
        {"$ QDR.Oper = B. Field, C. Stone", textAt<&QdrMetadata::Operator>, "B. Field"},
        {"$ Date0 = 21/07/20", textAt<&QdrMetadata::Date>, "21/07/20"},
        {"$ CardSN = 1A;2B", textAt<&QdrMetadata::ADCardSN, 1>, "2B"},
        {"$ QDR.ADCardVer = a,,c", textAt<&QdrMetadata::ADCardVer, 2>, "c"},
        {"$ GPS.Datum = WGS84", textAt<&GpsMetadata::Datum>, "WGS84"},
        {"$ GPS.FW = 1.02", textAt<&GpsMetadata::FW>, "1.02"},
    };
    for (const TextCase &test : cases) {
        forget();
        EXPECT_EQ(read(test.line), 0);
        EXPECT_EQ(test.field(metadata), test.expected) << test.line;
        EXPECT_THAT(messages.errors, testing::IsEmpty());
    }
}

// A card's number below 0 is no number: what stood there stays.
TEST_F(InstrumentGroupsTest, NegativeCardNumbersAreRefused) {
    read("$ QDR.Number = 1,2,3", SideFile);
    read("$ QDR.Number = -1");
    EXPECT_EQ(metadata.Qdr.Number.level, SideFile); // nothing was stored
    read("$ QDR.Number = 7,-2,9");
    EXPECT_EQ(metadata.Qdr.Number.level, DataFile);
    EXPECT_EQ(metadata.Qdr.Number.value[0], 7);
    EXPECT_EQ(metadata.Qdr.Number.value[1], 2);
    EXPECT_EQ(metadata.Qdr.Number.value[2], 9);
    EXPECT_THAT(messages.errors, ElementsAre("Qdr_MD_Read.WARNING:|QDR.NUMBER[1] = -1 < 0|"
                                             "QDR.NUMBER[1] will be set = 1"));
    EXPECT_THAT(messages.warnings, SizeIs(1));
}

TEST_F(InstrumentGroupsTest, WordsOfReports) {
    const struct {
        std::string_view line;
        std::string_view report;
    } cases[] = {
        {"$ QDR.NumCard = 0",
         "Qdr_MD_Read.WARNING:|QDR.NumCard = 0 < 1 or > 16|QDR.NumCard will be set = 1"},
        {"$ QDRBat = 0", "Qdr_MD_Read.WARNING:|QDRBat = 0 <= 0 volts|QDRBat will be set = 0 volts"},
        {"$ QDR.Amp = 150",
         "Qdr_MD_Read.WARNING:|QDR.Amp = 150 > 100 amp|QDR.Amp will be set = 20 amp"},
        {"$ QDR.Ch = 1,17", "Qdr_MD_Read.WARNING:|QDR.Ch[2] = 17 > 16|QDR.Ch[2] will be set = 16"},
        {"$ QDR.Time = noon", "ERROR reading hh:mm:ss Gps.Time value from \"noon\"|Record number 1|"
                              "$ QDR.Time = noon"},
        {"$ GPS.Lon = 200", "Gps_MD_Read.WARNING: at record 1|GPS.Lon = 200 < -90 or > 90 "
                            "deg|GPS.Lon will be set = 0"},
        {"$ GPS.UTMZone = -61", "Gps_MD_Read.WARNING: at record 1|GPS.UTMZone = abs|-61| < 1 or > "
                                "60|GPS.UTMZone will be set = 0"},
        {"$ GPS.UTMXYZ = 1:-1e10", "GPS_MD_Read.WARNING: at record 1|GPS.UTMXYZ[2] = -1e+10 < "
                                   "-9.9e+09|GPS.UTMXYZ[2] will be set = 0"},
        {"$ GPS.Week = -1", "Gps_MD_Read.WARNING: at record 1|GPS.Week = -1 < 0 or > 2147483647|"
                            "GPS.Week will be set = 0"},
        {"$ GPS.PDOP = 1001",
         "Gps_MD_Read.WARNING: at record 1|GPS.PDOP = 1001 < 0 or > 64|GPS.PDOP will be set = 0"},
        {"$ GPS.LocalTimeOffset = 13",
         "Gps_MD_Read.WARNING: at record 1|Gps.LocalTimeOffset = 13 hours < -12 or > 12 hour|"
         "Gps.LocalTimeOffset will be set = 0 hours"},
        {"$ GPS.Sec = -1", "Gps_MD_Read.WARNING: at record 1|GPS.Sec = -1 < 0.0D0 or > 1.0E32 sec|"
                           "GPS.Sec will be set = 0"},
    };
    for (const auto &test : cases) {
        forget();
        EXPECT_EQ(read(test.line), 0);
        EXPECT_THAT(messages.errors, ElementsAre(std::string(test.report)));
    }
}

} // namespace
} // namespace keldrin
