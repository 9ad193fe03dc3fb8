#include "model/enumerations.h"
#include "support/message_recorder.h"
#include "text/angles.h"
#include "text/decimal_commas.h"
#include "text/number_in_text.h"
#include "text/times.h"
#include "text/value_readers.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>

namespace keldrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr RecordLine Here = {12, "  100 200 abc  "};

template <class Value>
struct CellCase {
    const char *cell;
    int status;
    Value value; ///< the default, where nothing was read
};

/// Runs a reader over a table; the message must come with a status above 0 and only then.
template <class Value>
void expectCells(std::initializer_list<CellCase<Value>> cases, Value defaultValue,
                 int (*read)(const RecordLine &, std::string_view, std::string_view, Value,
                             Value &)) {
    for (const auto &[cell, status, expected] : cases) {
        const MessageRecorder messages;
        Value value{};
        EXPECT_EQ(read(Here, cell, "Label", defaultValue, value), status) << '[' << cell << ']';
        EXPECT_EQ(value, expected) << '[' << cell << ']';
        EXPECT_EQ(messages.errors.size(), status > 0 ? 1U : 0U) << '[' << cell << ']';
    }
}

TEST(ValueReaders, EmptyCellsAreNeitherReadNorReported) {
    for (const char *cell : {"", "   ", "*", "*****", "  *", "1.2*", "5,*"}) {
        const MessageRecorder messages;
        std::int32_t integer = 0;
        std::int64_t wide = 0;
        float real = 0;
        double exact = 0;
        bool yes = false;
        EXPECT_EQ(Val_Read_Int(Here, cell, "L", 7, integer), CellEmpty) << cell;
        EXPECT_EQ(Val_Read_Int8(Here, cell, "L", 7, wide), CellEmpty) << cell;
        EXPECT_EQ(Val_Read_Digits(Here, cell, "L", 7, integer), CellEmpty) << cell;
        EXPECT_EQ(Val_Read_R4(Here, cell, "L", 7.0F, real), CellEmpty) << cell;
        EXPECT_EQ(Val_Read_Length(Here, cell, "L", 1, 7.0F, real), CellEmpty) << cell;
        EXPECT_EQ(Val_Read_NumberInText(Here, cell, "L", 7.0F, real), CellEmpty) << cell;
        EXPECT_EQ(Val_Read_Azimuth(Here, cell, "L", 7.0F, real), CellEmpty) << cell;
        EXPECT_EQ(Val_Read_Pitch(Here, cell, "L", 7.0F, real), CellEmpty) << cell;
        EXPECT_EQ(real, 7.0F);
        EXPECT_EQ(Val_Read_R8(Here, cell, "L", 7.0, exact), CellEmpty) << cell;
        EXPECT_EQ(Val_Read_NumberInText8(Here, cell, "L", 7.0, exact), CellEmpty) << cell;
        EXPECT_EQ(Val_Read_Hours(Here, cell, "L", 7.0, exact), CellEmpty) << cell;
        EXPECT_EQ(Val_Read_HHMMSS(Here, cell, "L", 7.0, exact), CellEmpty) << cell;
        EXPECT_EQ(Val_Read_NMEA(Here, cell, "L", 7.0, exact), CellEmpty) << cell;
        EXPECT_EQ(Val_Read_TimeOfDay(Here, cell, "L", 7.0, exact), CellEmpty) << cell;
        EXPECT_EQ(exact, 7.0);
        EXPECT_EQ(Val_Read_YesNo(Here, cell, "L", true, yes), CellEmpty) << cell;
        EXPECT_TRUE(yes);
        EXPECT_THAT(messages.errors, IsEmpty());
    }
}

TEST(ValueReaders, PlainNumbers) {
    expectCells<std::int32_t>({{"12", 0, 12},
                               {" -3,4", 0, -3},
                               {",", 0, 7}, // a null value is a good read of the default
                               {"12.5", 1, 7},
                               {"12x", 1, 7},
                               {"-inf", -1, 7}},
                              7, Val_Read_Int);
    expectCells<float>({{"1,5", 0, 1.0F},
                        {"2/3", 0, 2.0F},
                        {"1.5d2", 0, 150.0F},
                        {"INF", -1, 7.0F},
                        {"infinity", -1, 7.0F},
                        {"INFO", -1, 7.0F},
                        {"1 inf", -1, 7.0F},
                        {"NaN", 1, 7.0F},
                        {"1e39", 1, 7.0F},
                        {"                               123", 0, 123.0F},
                        {"1.0000000000000000000000000000000000E+02", 0, 100.0F},
                        {"1                               inf", 0, 1.0F}},
                       7.0F, Val_Read_R4);
    expectCells<double>({{"1e39", 0, 1e39}, {"abc", 1, 7.0}}, 7.0, Val_Read_R8);
    expectCells<std::int64_t>({{"9000000000", 0, 9000000000}, {"1e3", 1, 7}}, 7, Val_Read_Int8);
}

TEST(ValueReaders, MessagesNameLabelCellRecordAndLine) {
    const MessageRecorder messages;
    std::int32_t integer = 0;
    double hours = 0;
    bool yes = false;
    Val_Read_Int(Here, "12.5", "Tx.Turn ", 0, integer);
    Val_Read_Hours(Here, "noon", "GDP.Time", 0.0, hours);
    Val_Read_YesNo(Here, "2", "Ch.Status", false, yes);
    Val_Read_NMEA(Here, "1x45.1", "Lat", 0.0, hours);
    Val_Read_TimeOfDay(Here, "12:30", "Time", 0.0, hours);
    Val_Read_TimeOfDay(Here, "noon", "Time", 0.0, hours);
    const std::string where = "|Record number 12|100 200 abc";
    EXPECT_THAT(
        messages.errors,
        ElementsAre("ERROR reading integer Tx.Turn value from 12.5" + where,
                    "ERROR reading hh:mm:ss GDP.Time value from \"noon\"" + where,
                    "ERROR reading Ch.Status Yes/No, True/False or 1/0 response from 2" + where,
                    "ERROR reading NMEA-format ddmm.mmm Lat value from 1x45.1" + where,
                    "ERROR: Did not find expected hh:mm:ss.s format in \"12:30\"" + where,
                    "ERROR reading hh:mm:ss.s value from noon|"
                    "Was also unable to read as seconds." +
                        where));
}

TEST(ValueReaders, OnlyTheFirstCharacterOfAnAnswerCounts) {
    for (const bool given : {true, false}) {
        expectCells<bool>({{"Yep", 0, true},
                           {" TRUE", 0, true},
                           {"1.0", 0, true},
                           {"no", 0, false},
                           {"False", 0, false},
                           {"0", 0, false},
                           {"2", 1, given},
                           {"-1", 1, given}},
                          given, Val_Read_YesNo);
    }
}

TEST(ValueReaders, LengthsAreInMetres) {
    const auto length = [](const char *cell, int unit) {
        const MessageRecorder messages;
        float value = 0.0F;
        const int status = Val_Read_Length(Here, cell, "L", unit, -1.0e32F, value);
        return std::pair(status, value);
    };
    EXPECT_EQ(length("100ft", 1), std::pair(0, 100.0F * 0.3048F));
    EXPECT_EQ(length("100", 2), std::pair(0, 100.0F * 0.3048F));
    EXPECT_EQ(length("100", 5), std::pair(0, 100.0F * 0.3048F));
    EXPECT_EQ(length("100", 0), std::pair(0, 100.0F));
    EXPECT_EQ(length("100 M", 2), std::pair(0, 100.0F));
    EXPECT_EQ(length("m", 1), std::pair(1, -1.0e32F));
    EXPECT_EQ(length("inf", 1), std::pair(1, -1.0e32F)); // its F is taken for feet
    EXPECT_EQ(length(",ft", 1), std::pair(0, -1.0e32F)); // a default is not scaled
}

TEST(ValueReaders, NumbersInsideText) {
    expectCells<float>({{"L100N", 0, 100.0F},
                        {"12.5m", 0, 12.5F},
                        {"Line 1 2", 0, 12.0F},
                        {"abc", 0, 7.0F},
                        {"a-b-c", 1, 7.0F},
                        {"abcdefghijklmnop1", 0, 7.0F}}, // after the 16 characters looked at
                       7.0F, Val_Read_NumberInText);
    expectCells<std::int32_t>({{"-12.5", 0, 125}, {"none", 0, 7}, {"9999999999", 1, 7}}, 7,
                              Val_Read_Digits);
    expectCells<double>({{"L100N", 0, 100.0}, {"cab", 1, 7.0}}, 7.0, Val_Read_NumberInText8);
    double letter = 0.0;
    EXPECT_EQ(Cell_to_NumberInText8("cab", 7.0, letter), CellFailed);
    EXPECT_EQ(letter, 2.0);
}

TEST(ValueReaders, AzimuthsAndBearings) {
    expectCells<float>({{"45.5", 0, 45.5F},
                        {"-10", 0, -10.0F},
                        {"abc", 0, 7.0F}, // no bearing, so nothing is reported
                        {"n45e", 0, 45.0F},
                        {"N 30 W", 0, 330.0F},
                        {"S90E", 0, 90.0F},
                        {"S10W", 0, 190.0F},
                        {"NORTH", 0, 0.0F},
                        {"WEST", 0, 270.0F},
                        {"S", 0, 180.0F},
                        {"SE", 0, 135.0F},
                        {"WSW", 0, 225.0F},
                        {"NORTHEAST", 0, 0.0F}, // the first word that it holds
                        {"N91E", 1, 7.0F},
                        {"N5E", 1, 7.0F},
                        {"E45N", 1, 7.0F},
                        {"1E2", 1, 7.0F}, // a letter of the compass among the first two
                        {"NX", 1, 7.0F}},
                       7.0F, Val_Read_Azimuth);
    expectCells<float>({{"Up", 0, 90.0F},
                        {"horiz", 0, 0.0F},
                        {"d", 0, -90.0F},
                        {"-30", 0, -30.0F},
                        {"x", 1, 7.0F}},
                       7.0F, Val_Read_Pitch);
    expectCells<double>({{"12330.0", 0, 123.5},
                         {"-3715.00", 0, -37.25},
                         {"0030", 0, 0.5},
                         {"30.5", 1, 7.0},
                         {".5", 1, 7.0}},
                        7.0, Val_Read_NMEA);
    EXPECT_EQ(DMS_to_Degrees(-1.0, 10.0, 30.0, 36.0), -10.51);
}

TEST(ValueReaders, Times) {
    expectCells<double>({{"1.5", 0, 1.5},
                         {"01:30:00", 0, 1.5},
                         {"1:30:36", 0, 1.51},
                         {"101:30:00", 0, 1.5}, // two characters of hours
                         {"12:30", 1, 7.0},
                         {":30:00", 1, 7.0},
                         {"1::00", 1, 7.0},
                         {"1:30:", 1, 7.0},
                         {"1:2:3:4", 1, 7.0}},
                        7.0, Val_Read_Hours);
    expectCells<double>(
        {{"133000", 0, 13.5}, {"-13000.0", 0, -1.5}, {"1330", 1, 7.0}, {"1x3000", 1, 7.0}}, 7.0,
        Val_Read_HHMMSS);
    expectCells<double>(
        {{"01:30:36", 0, 1.51}, {"-0:30:00", 0, -0.5}, {"36", 0, 0.01}, {"1:x:3", 1, 7.0}}, 7.0,
        Val_Read_TimeOfDay);
    double hours = 0.0;
    const MessageRecorder messages;
    EXPECT_EQ(Val_Read_TimeOfDay(Here, "noon", "L", 7.0, hours), 0); // reported, but status 0
    EXPECT_EQ(hours, 7.0);
    EXPECT_EQ(messages.errors.size(), 1U);
}

TEST(Times, HoursAsTextCarryTheirRounding) {
    const auto text = [](double hours, int decimals) {
        std::string out;
        dHours_to_sHHMMSS(hours, decimals, out);
        return out;
    };
    EXPECT_EQ(text(1.51, 3), "01:30:36.000");
    EXPECT_EQ(text(-1.5, 1), "-01:30:00.0");
    EXPECT_EQ(text(1.99999999, 9), "02:00:00.000");
    EXPECT_EQ(text(123.0, 0), "123:00:00");
    std::string out;
    dHours_to_HHMMSS(1.5F, 2, out);
    EXPECT_EQ(out, "013000.00");
    const MessageRecorder messages;
    EXPECT_EQ(text(1000.0, 3), "");
    EXPECT_THAT(messages.errors,
                ElementsAre("dHours_to_sHHMMSS.IOERR = 1|iHour=1000, iMin=0|iSec=0, MSec=0"));
}

TEST(ValueReaders, PlacesEndAt1E9) {
    double place = 0.0;
    EXPECT_EQ(Cell_to_Place("-1e9", 7.0, place), CellRead);
    EXPECT_EQ(place, -1.0e9);
    for (const char *cell : {"1.1e9", "-1.1E9", "0+25", "200-50", "12+5"}) {
        EXPECT_EQ(Cell_to_Place(cell, 7.0, place), CellFailed) << cell;
        EXPECT_EQ(place, 7.0) << cell;
    }
    EXPECT_EQ(Cell_to_Place("*", 7.0, place), CellEmpty);
}

TEST(ValueReaders, LengthsAreInMetresOrFeetAlone) {
    const std::pair<const char *, float> good[] = {{"100m", 100.0F},      {"100 meters", 100.0F},
                                                   {"100 Metre", 100.0F}, {"100ft", 30.48F},
                                                   {"1e2 FEET", 30.48F},  {"100 foot.", 30.48F}};
    float length = 0.0F;
    for (const auto &[cell, metres] : good) {
        EXPECT_EQ(Cell_to_Length(cell, Metres, 7.0F, length), CellRead) << cell;
        EXPECT_FLOAT_EQ(length, metres) << cell;
    }
    for (const char *cell : {"100cm", "100 cm", "1 km", "5 mm", "3 miles", "6 fathoms"}) {
        EXPECT_EQ(Cell_to_Length(cell, Metres, 7.0F, length), CellFailed) << cell;
        EXPECT_EQ(length, 7.0F) << cell;
    }
}

TEST(ValueReaders, AQuietRecordReportsNothing) {
    const MessageRecorder messages;
    double value = 0.0;
    EXPECT_EQ(Val_Read_R8({3, "x", true}, "x", "Tx.Freq", 7.0, value), CellFailed);
    EXPECT_EQ(value, 7.0);
    EXPECT_THAT(messages.errors, testing::IsEmpty());
}

TEST(DecimalCommas, AreSeenOnlyWhereNoOtherReadingIsLikely) {
    for (const char *line :
         {"1,5 2,5", "2 1 1 Hz 0,1 50,3 2", "\t-1,5E-3 7", "L1 3,2", "1,5 100N"}) {
        EXPECT_TRUE(hasDecimalCommas(line)) << line;
    }
    for (const char *line : {"", "1 2 3", "1,2,3", "1, 2, 3", "1.5,2.5 3", "1,5 2.5", "1,5 *",
                             "L1,3 2", "1,", "1,5e", "1,x", "1,5 3%"}) {
        EXPECT_FALSE(hasDecimalCommas(line)) << line;
    }
}

} // namespace
} // namespace keldrin
