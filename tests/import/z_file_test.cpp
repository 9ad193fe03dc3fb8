#include "import/import_steps.h"
#include "import/survey_information.h"
#include "import/z_file.h"
#include "projectfile/project_file.h"
#include "support/files.h"
#include "support/message_recorder.h"
#include "support/temporary_directory.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace keldrin {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// What a survey information file gives besides, so that no default is taken.
const std::string Given = "$ Tx.Length = 100\n$ Tx.Freq = 1\n$ Survey.Array = COL\n";

const std::string ZHead = "line 7\nmagnitude\nIIX\n";

/// A reading of a coil of 1000 m^2, so that a file value in uV/A is the value in nV/(A m2).
std::string reading(const std::string &station, const std::string &time, const std::string &value) {
    const auto column = [](const std::string &text, std::size_t width) {
        return std::string(width - text.size(), ' ') + text;
    };
    return " 2" + column(station, 8) + column(time, 8) + column(value, 12) + "\n";
}

class ZFileTest : public testing::Test {
  protected:
    void prepare(const std::string &text) {
        putFile(path(), text);
        putFile(directory.path("x.mde"), survey);
        messages.infos.clear();
        messages.warnings.clear();
        messages.errors.clear();
        MD_Init(model.metadata, true);
        STD_Init_Namelist(model);
        Mde_File_Input(model, directory.path("x.mde"));
    }
    /// Both passes over a text; the count pass's failure, or else the read pass's status.
    int read(const std::string &text) {
        prepare(text);
        if (Z_Count(model, path()) != 0) {
            return 1;
        }
        EXPECT_EQ(STD_Allocate_hTrn(model, capacity > 0 ? capacity
                                                        : soundingsNeeded(model.lines.entries[0])),
                  0);
        return Z_Read(model, path(), "");
    }
    [[nodiscard]] std::string path() const { return directory.path("x.z"); }
    [[nodiscard]] std::vector<double> stations() const {
        std::vector<double> found;
        for (std::size_t i = 0; i < static_cast<std::size_t>(model.SoundingCount); ++i) {
            found.push_back(model.hTrn[i].Station);
        }
        return found;
    }

    TemporaryDirectory directory;
    MessageRecorder messages;
    SurveyModel model;
    std::string survey = Given + "$ Line.Name = C 7\n$ Rx.Area = 1000\n";
    int capacity = 0;
};

TEST_F(ZFileTest, ReadsOneLineOfSoundings) {
    EXPECT_EQ(read(ZHead + reading("100", "0.1", "50.5") + reading("100", "0.2", "-4") +
                   reading("150.", "0.1", "4.D1")),
              0);
    const LineEntry &line = model.lines.entries[0];
    EXPECT_EQ(model.lines.LineCount, 1);
    EXPECT_EQ(line.LineName.view(), "C 7");
    EXPECT_EQ(line.LineLabel.view(), "C7 COL");
    EXPECT_EQ(line.ArrayIndex, CoincidentLoop);
    EXPECT_THAT(line.ComponentTransients, ElementsAre(0, 0, 2));
    EXPECT_THAT(stations(), ElementsAre(100, 150));
    const SoundingRecord &first = model.hTrn[0];
    EXPECT_EQ(first.NumTW, 2);
    EXPECT_EQ(first.TWcenter[1], 0.2F);
    EXPECT_EQ(first.TEMobs[0], 50.5F);
    EXPECT_EQ(first.TEMobs[1], -4.0F);
    EXPECT_EQ(first.TEMerr[0], 1.0F);
    EXPECT_THAT(first.TEMwgt[0], ElementsAre(0, 0, 1));
    EXPECT_EQ(model.hTrn[1].TEMobs[0], 40.0F);
    EXPECT_EQ(model.control.TEMUnits.view(), "nV/Am2");
    EXPECT_THAT(messages.errors, IsEmpty());
    EXPECT_THAT(messages.warnings, IsEmpty());
    EXPECT_THAT(messages.infos,
                ElementsAre(HasSubstr("Scanning x.mde"), HasSubstr("Survey configuration"),
                            "Counting TEM data in file", path(),
                            "Scanning for beginning of numerical data.", " >line 7", " >magnitude",
                            " >IIX", "Counting numerical data.",
                            "Found 1 line and 2 transients in x.z", "Reading TEM data from file",
                            path(), "Scanning for beginning of numerical data.", " >line 7",
                            " >magnitude", " >IIX", "Reading numerical data.",
                            "2 soundings have been read from x.z"));
}

// A sounding's keys, place and height belong to later steps, whatever the metadata say.
TEST_F(ZFileTest, FillsTheFieldsOfItsFormatAndNoOthers) {
    survey += "$ Rx.Stn = 5\n$ Tx.Stn = 6\n$ Tx.Freq = 25\n";
    EXPECT_EQ(read(ZHead + reading("100", "0.1", "50")), 0);
    const SoundingRecord &record = model.hTrn[0];
    EXPECT_FALSE(isPresent(record.RxStn));
    EXPECT_FALSE(isPresent(record.TxStn));
    EXPECT_FALSE(isPresent(record.East));
    EXPECT_FALSE(isPresent(record.TxFreq));
    EXPECT_FALSE(isPresent(record.Elevation)); // for the heights of a station file
    EXPECT_EQ(record.TWwidth[0], 0.0F);
}

TEST_F(ZFileTest, TheVerticalCoilAndTheStationScalingOfThePresetCount) {
    survey = "$ Rx.Area = 1000, 2000, 4000\n$ Stn.QdrBeg = 1\n$ Stn.Beg = 1000\n$ Stn.Inc = 50\n";
    EXPECT_EQ(read(ZHead + reading("3", "0.1", "8")), 0);
    EXPECT_EQ(model.hTrn[0].TEMobs[0], 2.0F);
    EXPECT_EQ(model.hTrn[0].Station, 1100.0);
}

TEST(ZFields, StandInFixedColumnsWhateverIsBetweenThem) {
    struct Case {
        const char *line;
        int code;
        double station;
        float time, magnitude;
    };
    const Case cases[] = {
        {" 2  1000.5 0.01200  3.0455E+05", 2, 1000.5, 0.012F, 3.0455E5F},
        {"2 1000.5550.0120011234.5678901 behind", 2, 1000.555, 0.012001F, 1234.5678901F},
        {"02  1000.50.012000-3.0455E+005", 2, 1000.5, 0.012F, -3.0455E5F}, // no gap at all
        {" 2   1 00     12       1 . 5 ", 2, 100, 12, 1.5F},               // blanks do not count
        {"+2     1D2     1d0        3E+1", 2, 100, 1, 30},
        {"\x32", 2, 0, 0, 0}, // an empty field is 0
        {" 2     100", 2, 100, 0, 0},
        {"     100     0.1       5", 0, 100, 0.1F, 5},
        {"22     100     0.1       5", 22, 100, 0.1F, 5},
        {"-2     100     0.1       5", -2, 100, 0.1F, 5},
        {"", 0, 0, 0, 0},
    };
    for (const Case &c : cases) {
        ZReading got;
        EXPECT_TRUE(readZFields(c.line, got)) << c.line;
        EXPECT_EQ(got.code, c.code) << c.line;
        EXPECT_EQ(got.station, c.station) << c.line;
        EXPECT_EQ(got.time, c.time) << c.line;
        EXPECT_EQ(got.magnitude, c.magnitude) << c.line;
    }
    for (const char *line :
         {"2. 1000.5   0.012", "STATION TIME VALUE", " 2    1+25   0.012         1.0",
          " 2   100,5   0.012         1.0", " 2   100.5 0.0.012         1.0",
          " 2     100     nan           1", " 2\t100\t0.1\t5", " 2   100.5     inf         1.0",
          " 2   100.5   0.012        1E39", " 2   1E400     0.1", " 2  0x64.5     0.1         1.0",
          " 2       -     0.1         1.0", " 2   100.5     0.1       50 uV"}) {
        ZReading ignored;
        EXPECT_FALSE(readZFields(line, ignored)) << line;
    }
}

TEST_F(ZFileTest, AStationOpensASoundingWhenItChangesAndIsNotLookedUp) {
    EXPECT_EQ(read(ZHead + reading("100", "0.1", "1") + reading("100.001", "0.2", "2") +
                   reading("100.0015", "0.3", "3") + reading("100", "0.1", "4") +
                   reading("200", "0.1", "5") + reading("100", "0.1", "6")),
              0);
    // 100.001 stays with 100, with which 100.0015 is compared too.
    EXPECT_THAT(stations(), ElementsAre(100, 100.0015, 100, 200, 100));
    EXPECT_EQ(model.hTrn[0].NumTW, 2);
    EXPECT_EQ(model.lines.entries[0].Transients, 5);
}

TEST_F(ZFileTest, LinesOfAnotherCodeAreNoReadingsAndLeaveTheStationInForce) {
    EXPECT_EQ(read(ZHead + reading("100", "0.1", "1") + " 1     200     0.1         9\n\n \t \n" +
                   " 3     300     0.1         9\n" + reading("100", "0.2", "2")),
              0);
    EXPECT_THAT(stations(), ElementsAre(100));
    EXPECT_EQ(model.hTrn[0].NumTW, 2);
    EXPECT_THAT(messages.errors, IsEmpty());
    EXPECT_THAT(messages.infos, Contains("Lines that are no readings, passed over in x.z: 2"));
}

TEST_F(ZFileTest, ALineThatCannotBeReadIsToldOnBothPassesAndCostsNoOther) {
    const std::string told = "ERROR while reading data from:|STATION TIME VALUE";
    const std::string toldToo = "ERROR while reading data from:|1     100     0.1       ***";
    EXPECT_EQ(read(ZHead + "  STATION TIME VALUE  \n" + reading("100", "0.1", "1") +
                   " 1     100     0.1       ***\n" + reading("100", "0.2", "2")),
              0);
    EXPECT_THAT(messages.errors, ElementsAre(told, toldToo, told, toldToo));
    EXPECT_EQ(model.hTrn[0].NumTW, 2);
}

TEST_F(ZFileTest, TheDataEndAtTheEndTextAnywhereInTenColumns) {
    for (const char *end :
         {"  9999.0\n", "9999.0 end\n", " 2  9999.0     0.1         5\n", "xx19999.00\n"}) {
        EXPECT_EQ(read(ZHead + reading("100", "0.1", "1") + end + "free text\n"), 0) << end;
        EXPECT_THAT(stations(), ElementsAre(100)) << end;
        EXPECT_THAT(messages.errors, IsEmpty()) << end;
        EXPECT_THAT(messages.warnings, IsEmpty()) << end;
    }
    // Further right it ends nothing; readings after the end are not lost silently.
    EXPECT_EQ(read(ZHead + reading("100", "9999.0", "1") + reading("9999.0", "0.1", "1") +
                   reading("200", "0.1", "1")),
              0);
    EXPECT_EQ(model.SoundingCount, 1);
    EXPECT_THAT(messages.warnings,
                ElementsAre("WARNING: Readings behind the line that ends the data: 1, the first on "
                            "line 6 of x.z|2     200     0.1           1|They are not read."));
}

TEST_F(ZFileTest, TheHeadTellsWhatIsMissingInIt) {
    const std::string row = reading("100", "0.1", "1");
    const std::string noData = "ERROR while reading x.z|Found no valid data";
    const std::string noMark = "ERROR: Could not find correct data type in x.z";
    // Marks in either case and anywhere in 128 columns, in the table's own line too.
    EXPECT_EQ(read("component dBz/dt\niix\n" + row), 0);
    EXPECT_EQ(read("IIX Magnitude\n" + row), 0);
    EXPECT_EQ(read("\xEF\xBB\xBF" + std::string(119, '-') + "MAGNITUDE\r\nIIX\r\n" + row), 0);
    EXPECT_EQ(read(std::string(120, '-') + "MAGNITUDE\nIIX\n" + row), 1);
    EXPECT_THAT(messages.errors, ElementsAre(noMark, noData));
    EXPECT_EQ(read("IIX\nMAGNITUDE\n" + row), 1); // after the table's start it comes too late
    EXPECT_THAT(messages.errors, ElementsAre(noMark, noData));
    // An early end says no more than that there are no data.
    for (const std::string &text :
         {"free text\n   9999.0\nIIX\n" + row, "MAGNITUDE\n IIX\n" + row, "MAGNITUDE\n" + row,
          ZHead, ZHead + " 1     100     0.1         1\n", ZHead + "9999.0\n", std::string()}) {
        EXPECT_EQ(read(text), 1) << text;
        EXPECT_THAT(messages.errors, ElementsAre(noData)) << text;
    }
}

TEST_F(ZFileTest, WhatASoundingCannotTakeIsToldOnceForItsCause) {
    survey = Given + "$ Rx.Area = 0.01\n";
    EXPECT_EQ(read(ZHead + reading("100", "0.1", "1") + reading("100", "0", "2") +
                   reading("200", "-0.1", "2") + " 2     200\n" + reading("300", "0.1", "1E30") +
                   reading("-1E32", "0.1", "1") + reading("300", "1E5", "1") +
                   reading("100", "0.2", "") + reading("400", "0.1", "1") +
                   reading("400", "1E4", "1")),
              0);
    EXPECT_THAT(stations(), ElementsAre(100, 400));
    EXPECT_EQ(model.hTrn[1].NumTW, 2) << "ten seconds are a time";
    EXPECT_EQ(model.hTrn[0].NumTW, 2);
    EXPECT_EQ(model.hTrn[0].TEMobs[1], 0.0F);
    EXPECT_THAT(
        messages.warnings,
        ElementsAre(
            HasSubstr("without a station or a magnitude: 1, the first on line 11 of x.z|2"),
            HasSubstr("without a time above 0: 3, the first on line 5 of x.z|2"),
            HasSubstr("of an impossible station, time or magnitude: 3, the first on line 8")));
    EXPECT_THAT(messages.errors, IsEmpty());
}

TEST_F(ZFileTest, ASoundingTakes128WindowsAndTheRestIsTold) {
    std::string text = ZHead;
    for (int i = 1; i <= 131; ++i) {
        text += reading("100", std::to_string(i), "5");
    }
    EXPECT_EQ(read(text + reading("200", "1", "5")), 0);
    EXPECT_THAT(stations(), ElementsAre(100, 200));
    EXPECT_EQ(model.hTrn[0].NumTW, 128);
    EXPECT_EQ(model.hTrn[0].TWcenter[127], 128.0F);
    EXPECT_THAT(messages.warnings, ElementsAre(HasSubstr("beyond the 128th window of their "
                                                         "sounding: 3, the first on line 132")));
}

TEST_F(ZFileTest, AFullTableStopsTheReadAndKeepsWhatItHas) {
    capacity = 1;
    EXPECT_EQ(read(ZHead + reading("100", "0.1", "1") + reading("200", "0.1", "2") +
                   reading("100", "0.2", "3")),
              0);
    EXPECT_THAT(stations(), ElementsAre(100));
    EXPECT_EQ(model.hTrn[0].NumTW, 1);
    EXPECT_THAT(messages.errors, ElementsAre("WARNING: More than 1 soundings in x.z|"
                                             "Excess data will be dropped."));
}

TEST_F(ZFileTest, AReadPassWithoutASoundingFailsInWords) {
    EXPECT_EQ(read(ZHead + reading("100", "0", "1")), 1); // counted, and then of no use
    EXPECT_THAT(messages.errors, ElementsAre("ERROR while reading x.z"));
    EXPECT_EQ(model.control.TEMUnitsIndex, NanovoltPerAmpereSquareMetre);
    prepare("IIX\n" + reading("100", "0.1", "1"));
    EXPECT_EQ(Z_Read(model, path(), ""), 1);
    EXPECT_THAT(messages.errors, ElementsAre("ERROR: Could not find correct data type in x.z",
                                             "ERROR while reading x.z"));
    EXPECT_EQ(Z_Count(model, directory.path("missing.z")), 1);
    EXPECT_EQ(Z_Read(model, directory.path("missing.z"), ""), 1);
    EXPECT_EQ(messages.errors.back(), "ERROR: Could not find missing.z");
}

TEST_F(ZFileTest, WhatIsNotReadOrNotCertainIsToldOnce) {
    struct Case {
        std::string what;
        std::string survey;
        std::string text;
        std::string told;
    };
    const std::string good = ZHead + reading("100", "0.1", "1");
    const std::string whole = survey;
    const std::string fixed = "$ Rx.Area = 1000\n$ Tx.Length = 100\n$ Tx.Freq = 1\n"
                              "$ Survey.Array = FXL\n";
    const Case cases[] = {
        {"a last line without its end", whole, good + " 2     100     0.2    5",
         "The last line of x.z has no line end|The file may be cut."},
        {"an end mark with data behind it", whole, good + "\x1A" + good,
         "x.z has an end mark (code 26) after line"},
        {"decimal commas", whole, good + reading("100", "0,2", "5,5") + reading("100", "0,3", "5"),
         "Readings with commas for decimal points: 2, the first on line 5 of x.z"},
        {"a station too far", whole, good + reading("1.1E9", "0.1", "1"),
         "impossible station, time or magnitude: 1, the first on line 5"},
        {"a station too far before its rescaling", whole + "$ Stn.QdrInc = 10\n$ Stn.Inc = 1\n",
         good + reading("1.1E9", "0.1", "1"),
         "impossible station, time or magnitude: 1, the first on line 5"},
        {"no loop size", "$ Rx.Area = 1000\n$ Tx.Freq = 1\n$ Survey.Array = COL\n", good,
         "x.z gives no size of the transmitter loop"},
        {"no frequency", "$ Rx.Area = 1000\n$ Tx.Length = 1\n$ Survey.Array = COL\n", good,
         "x.z gives no transmitter frequency"},
        {"no coil area", Given, good, "x.z gives no area of the receiver coil"},
        {"no array", "$ Rx.Area = 1000\n$ Tx.Length = 1\n$ Tx.Freq = 1\n", good,
         "x.z gives no survey array"},
        {"no centre", fixed, good, "x.z gives no centre of the fixed loop"},
    };
    for (const Case &c : cases) {
        survey = c.survey;
        EXPECT_EQ(read(c.text), 0) << c.what;
        std::vector<std::string> all = messages.errors;
        all.insert(all.end(), messages.warnings.begin(), messages.warnings.end());
        EXPECT_THAT(all, ElementsAre(HasSubstr(c.told))) << c.what;
        EXPECT_THAT(stations(), ElementsAre(testing::_)) << c.what;
    }
    survey = fixed + "$ Tx.Center = 500, 600\n";
    EXPECT_EQ(read(good), 0);
    EXPECT_EQ(model.control.XTxCenter, 500.0);
    EXPECT_EQ(model.control.YTxCenter, 600.0);
    EXPECT_THAT(messages.warnings, IsEmpty());
}

TEST_F(ZFileTest, AnArrayThatIsNoneIsToldOnce) {
    survey = "$ Survey.Array = LOT\n";
    EXPECT_EQ(read(ZHead + reading("100", "0.1", "1")), 0);
    EXPECT_THAT(messages.warnings, Contains(HasSubstr("Survey.Array = LOT")).Times(1));
}

TEST_F(ZFileTest, HostileBytesEndInAFailureOrInData) {
    EXPECT_EQ(read(std::string("\0\x1A\xFF\x80", 4)), 1);
    EXPECT_EQ(read(std::string(1'000'000, 'A')), 1);
    EXPECT_EQ(read(ZHead + std::string(500'000, '2') + "\n" + reading("1", "0.1", "5")), 0);
    EXPECT_EQ(Z_Count(model, directory.path()), 1);
    EXPECT_THAT(messages.infos, Not(Contains(HasSubstr("Found 1 line and 0"))));
}

} // namespace
} // namespace keldrin
