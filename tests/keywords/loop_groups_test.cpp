#include "keywords/keyword_fixture.h"

namespace keldrin {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;

using LoopGroupsTest = KeywordTest;

TEST_F(LoopGroupsTest, Numbers) {
    const NumberCase cases[] = {
        {"$ Tx.Duty = 0.5", at<&TxMetadata::Duty>, 50},
        {"$ Tx.Duty = 50", at<&TxMetadata::Duty>, 50},
        {"$ Tx.Duty = 1.0001", at<&TxMetadata::Duty>, 100, 1},
        {"$ Tx.Duty = -3", at<&TxMetadata::Duty>, 0.01, 1},
        {"$ Tx.Ramp = 5000", at<&TxMetadata::Ramp>, 5000},
        {"$ Tx.Ramp = 20000", at<&TxMetadata::Ramp>, 100, 1},
        {"$ Tx.Delay = -1", at<&TxMetadata::Delay>, 0, 1},
        {"$ Tx.Area = 0", at<&TxMetadata::Area>, 0, 1},
        {"$ Tx.Area = 1e-20", at<&TxMetadata::Area>, 1.0E-20},
        {"$ Tx.Freq = 1e-6", at<&TxMetadata::Freq>, 1.0E-6}, // the bound itself, in 32 bits
        {"$ Tx.Turns = 0", at<&TxMetadata::Turns>, 1, 1},
        {"$ Tx.NCycle = 0", at<&TxMetadata::NCycle>, 1, 1},
        {"$ Tx.NWaveform = 4", at<&TxMetadata::NWaveform>, 4},
        {"$ Tx.Incl = 91", at<&TxMetadata::Incl>, 90, 1},
        {"$ Tx.Amp = 1,5", at<&TxMetadata::Amp>, 1},
        {"$ Tx.Azimuth = N", at<&TxMetadata::Azimuth>, 0},
        {"$ Tx.HPR = 10,20,30,40", at<&TxMetadata::HPR, 2>, 30},
        {"$ TxShunt = 0.2;0.3", at<&TxMetadata::Sense, 1>, 0.3},
        {"$ TxCX = 1.5D3", at<&TxMetadata::CenterX>, 1500},
        {"$ Rx.AntSN = -1", at<&RxMetadata::AntSN>, 0, 1},
        {"$ Rx.ADRamp = 10001", at<&RxMetadata::ADRamp>, 10000, 1},
        {"$ Rx.AreaX = -5", at<&RxMetadata::AreaX>, 1.0E-6, 1},
        {"$ Rx.SetupLength = 10ft", at<&RxMetadata::SetupLength>, 3.048},
        {"$ Rx.SetupLength = 0", at<&RxMetadata::SetupLength>, 0},
        {"$ Station = 12.5", at<&RxMetadata::QdrStn>, 12.5},
        {"$ ExAzm = SE", at<&RxMetadata::Azimuth>, 135},
        {"$ Rx.PltSZXYZ = 1,2,3,4,5,6", at<&RxMetadata::PltSZXYZ, 4>, 5},
    };
    for (const NumberCase &test : cases) {
        forget();
        EXPECT_EQ(read(test.line), 0);
        EXPECT_THAT(test.field(metadata), isNumber(test.expected)) << test.line;
        EXPECT_THAT(messages.errors, SizeIs(test.reports)) << test.line;
    }
}

// The unit is that of the record's last letter of m or f; a letter of its own goes before it.
TEST_F(LoopGroupsTest, LoopSides) {
    const struct {
        std::string_view value;
        double x;
        double y;
    } cases[] = {
        {"100", 100, 100},
        {"100m,200m", 100, 200},
        {"100ft", 30.48, 30.48},
        {"100,200 ft", 30.48, 60.96},
        {"100 m, 200, ft", 100, 60.96},
        {"100, 200 ft, m", 100, 60.96},
        {"100, ft", 30.48, 30.48}, // a unit is no second length
        {"100,*", 100, 100},
        {"*,200", 100, 200}, // 100 is the default
    };
    for (const auto &test : cases) {
        forget();
        read("$ Tx.Length = " + std::string(test.value));
        EXPECT_THAT(at<&TxMetadata::LengthX>(metadata), isNumber(test.x)) << test.value;
        EXPECT_THAT(at<&TxMetadata::LengthY>(metadata), isNumber(test.y)) << test.value;
        expectSilence();
    }
    forget();
    readAll({"$ Unit.Length = ft", "$ Tx.LengthX = 100", "$ Tx.LengthY = 100m"});
    EXPECT_THAT(at<&TxMetadata::LengthX>(metadata), isNumber(30.48));
    EXPECT_THAT(at<&TxMetadata::LengthY>(metadata), isNumber(100));
}

TEST_F(LoopGroupsTest, SidesAndAxesKeepTheirOwnLevels) {
    read("$ TxDX = 10");
    read("$ Tx.Length = 50", SideFile);
    EXPECT_EQ(metadata.Tx.LengthX.value, 10.0F);
    EXPECT_EQ(metadata.Tx.LengthY.value, 50.0F);

    read("$ Rx.AreaZ = 7");
    read("$ Rx.Area = 1,2", SideFile);
    EXPECT_EQ(metadata.Rx.AreaX.value, 1.0F);
    EXPECT_EQ(metadata.Rx.AreaY.value, 2.0F);
    EXPECT_EQ(metadata.Rx.AreaZ.value, 7.0F);
    EXPECT_EQ(metadata.Rx.AreaZ.level, DataFile);
    read("$ Rx.Area = 1,2,bad", SideFile); // no axis is left that the third may set
    EXPECT_EQ(metadata.Rx.Area.value, 2.0F);
    expectSilence();
}

TEST_F(LoopGroupsTest, CoilAreas) {
    const struct {
        std::string_view value;
        float x, y, z, last;
    } cases[] = {
        {"5", 5, 5, 5, 5},     {"5,6", 5, 6, 6, 6},   {"5,6,7,8", 5, 6, 7, 7},
        {"5,m^2", 5, 5, 5, 5}, {"5,*,7", 5, 5, 7, 7}, {"-5", 5, 5, 5, 5}, // the magnitude counts
    };
    for (const auto &test : cases) {
        forget();
        read("$ RxArea = " + std::string(test.value));
        const RxMetadata &rx = metadata.Rx;
        EXPECT_THAT((std::array{rx.AreaX.value, rx.AreaY.value, rx.AreaZ.value, rx.Area.value}),
                    ElementsAre(test.x, test.y, test.z, test.last))
            << test.value;
        expectSilence();
    }
    read("$ Rx.Area = M"); // only a lower-case letter is a unit
    EXPECT_THAT(messages.errors, SizeIs(1));
}

TEST_F(LoopGroupsTest, SecondReceiverLengthIsReported) {
    readAll({"$ ASpace = 50", "$ Rx.Length = 50,m"});
    expectSilence();
    read("$ Rx.Length = 50,60");
    read("$ Rx.Length = 50,60", SideFile); // not looked at
    EXPECT_THAT(messages.warnings, ElementsAre(HasSubstr("|Values will not be used.")));
}

TEST_F(LoopGroupsTest, IndexedPoints) {
    readAll({"$ Tx.XYZ0 = 1,2,3,4", "$ Tx1 = 10:20:30:40,99", "$ Tx.LoopUTM8 = 5,6",
             "$ Tx.Point2 = 1E10,*,3", "$ Rx.XYZ4 = 7", "$ Rx.PltXYZ = 1,2,3"});
    EXPECT_THAT(metadata.Tx.XYZ[0].value, ElementsAre(1, 2, 3));
    EXPECT_THAT(metadata.Tx.XYZ[1].value, ElementsAre(10, 20, 30));
    EXPECT_EQ(metadata.Tx.UTM[8].value[1], 6.0);
    EXPECT_EQ(metadata.Tx.Point[2].value[0], 9.9E9);
    EXPECT_EQ(metadata.Tx.tail.lastPointIndex, 2);
    EXPECT_EQ(metadata.Rx.XYZ[4].value[0], 7.0);
    EXPECT_THAT(metadata.Rx.PltXYZ.value, ElementsAre(1, 2, 3)); // no indexed point
    EXPECT_THAT(messages.errors, ElementsAre(HasSubstr("Tx.Point2[1] = 1e+10 > 9.9e+09")));

    read("$ Tx.XYZ0 = 8"); // a new record clears the point
    EXPECT_EQ(metadata.Tx.XYZ[0].value[0], 8.0);
    EXPECT_FALSE(isPresent(metadata.Tx.XYZ[0].value[1]));
    read("$ Tx.XYZ2 = 9", SideFile); // a level for each index
    EXPECT_EQ(metadata.Tx.XYZ[2].value[0], 9.0);
}

TEST_F(LoopGroupsTest, IndicesThatDoNotExist) {
    EXPECT_EQ(read("$ Tx.XYZ9 = 1,2,3"), 1);
    EXPECT_EQ(read("$ Rx.UTM5 = 1,2,3"), 1);
    EXPECT_EQ(read("$ Tx.X1Y2XYZ = 1,2,3"), 1); // all digits together
    EXPECT_EQ(read("$ Tx.XYZ = 1,2,3"), 0);
    EXPECT_THAT(messages.warnings,
                ElementsAre("Tx_MD_READ.WARNING: out-of-range index value in|Tx.XYZ9|Index=9 <0 "
                            "or >8",
                            "Rx_MD_READ.WARNING: out-of-range index value in|Rx.UTM5|Index=5 <0 "
                            "or >4",
                            HasSubstr("|Index=12 "),
                            "Tx_MD_READ.WARNING: unable to read index value from|Tx.XYZ"));
    EXPECT_EQ(read("$ Tx.XYZ99999999999 = 1"), 1);
    EXPECT_THAT(messages.errors, SizeIs(1)); // the reader's own words
    EXPECT_FALSE(isPresent(metadata.Tx.XYZ[0].value[0]));
}

TEST_F(LoopGroupsTest, Sensors) {
    const struct {
        std::string_view value;
        int index;
    } cases[] = {
        {"dB/dt coil", 2}, {"dBdt", 2},  {"ABC", 3},        {"B-field 12", 3},
        {"Dipole", 1},     {"ANT/4", 4}, {"TxRef-1", 5},    {"1234", 2},
        {"coil-2", 2},     {"Tube", 3},  {"dipole ant", 1}, {"antenna B", 3},
    };
    for (const auto &test : cases) {
        forget();
        read("$ Rx.Sensor = " + std::string(test.value));
        EXPECT_EQ(metadata.Rx.Sensor.value.index, test.index) << test.value;
        EXPECT_EQ(metadata.Rx.Sensor.value.name, test.value);
        expectSilence();
    }
    read("$ Rx.Sensor = TxRef"); // neither word nor number: read as an antenna's number
    EXPECT_EQ(metadata.Rx.Sensor.value.index, 4);
    EXPECT_THAT(messages.errors, ElementsAre(HasSubstr("integer Rx.Sensor value from TxRef")));
}

TEST_F(LoopGroupsTest, ComponentsAreJoined) {
    read("$ Rx.Cmp = Hz,Hx; Hy, RefOff");
    EXPECT_EQ(metadata.Rx.Cmp.value, "HzHxHyRe");
    read("$ Cmp = Hz");
    EXPECT_EQ(metadata.Rx.Cmp.value, "Hz");
}

TEST_F(LoopGroupsTest, ACentreFillsItsTwoCoordinates) {
    readAll({"$ Tx.Center = 500, 600, 7"});
    EXPECT_EQ(metadata.Tx.CenterX.value, 500.0);
    EXPECT_EQ(metadata.Tx.CenterY.value, 600.0);
    readAll({"$ Tx.CenterX = 1"});
    EXPECT_EQ(metadata.Tx.CenterX.value, 1.0);
    readAll({"$ Tx.Center = 2,3"}, SideFile); // of a lower level
    EXPECT_EQ(metadata.Tx.CenterX.value, 1.0);
    EXPECT_EQ(metadata.Tx.CenterY.value, 600.0);
    readAll({"$ Tx.Center = 9"});
    EXPECT_EQ(metadata.Tx.CenterX.value, 9.0);
    EXPECT_EQ(metadata.Tx.CenterY.value, 600.0);
    expectSilence();
}

TEST_F(LoopGroupsTest, ValuesThatAreNotUsedAreToldOnceForEachKeyword) {
    readAll({"$ Tx.Freq = 12,5", "$ Tx.Freq = 13,5", "$ Tx.LengthX = 100, m",
             "$ Tx.Length = 1, 2, 3", "$ Job.Number = 12345678901234567",
             "$ Job.Area = 123456789012345678901234567890123", "$ Line.Name = A, B"});
    EXPECT_THAT(messages.warnings,
                ElementsAre("Tx_MD_Read.WARNING:|Tx.Freq in record # 1 has more values than are "
                            "used|$ Tx.Freq = 12,5",
                            HasSubstr("Tx.Length in record # 4 has more values"),
                            HasSubstr("Job.Number in record # 5 is cut to \"1234567890123456\""),
                            HasSubstr("Job.Area in record # 6 has a value of more than 32"),
                            HasSubstr("Line.Name in record # 7 is cut at a comma")));
    EXPECT_THAT(messages.errors, testing::IsEmpty());
}

TEST_F(LoopGroupsTest, AQuietRecordTellsNoFault) {
    for (const char *line :
         {"$ Tx.Freq = x", "$ Tx.Freq = 1e9", "$ Tx.Foo = 1", "$ Tx.XYZ9 = 1", "$ Rx.Length = 1,2",
          "$ Unit.Time = sec", "$ Ch.Status = ZZZZ", "$ STN.QDREND = 1", "$ Job.Name = a,b"}) {
        MDP_Read_Record(metadata, 1, line, DataFile, true);
    }
    expectSilence();
}

} // namespace
} // namespace keldrin
