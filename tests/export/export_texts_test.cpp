#include "export/export_formats.h"
#include "export/exported_case.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <limits>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace keldrin {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr float NaN = std::numeric_limits<float>::quiet_NaN();
constexpr float Infinity = std::numeric_limits<float>::infinity();

std::vector<std::string> linesOf(const std::string &text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::set<std::size_t> lengths(const std::vector<std::string> &lines) {
    std::set<std::size_t> all;
    for (const std::string &line : lines) {
        all.insert(line.size());
    }
    return all;
}

TEST(CsvTables, KeysStandFirstAndUnitsBehindNames) {
    SurveyModel model = lineOf(1, 1, 1);
    setLengthUnits(model.control, Feet);
    const CsvTables tables = csvTables(exportedLine(model));
    EXPECT_THAT(tables.soundings, StartsWith("line,station [ft],transmitter,sounding,line_number,"
                                             "easting [ft],northing [ft],elevation [ft],"));
    EXPECT_THAT(linesOf(tables.windows),
                ElementsAre("line,station [ft],transmitter,sounding,window,time [ms],width [ms],"
                            "dbdt [nV/(A m2)],error [%],flag,apparent_resistivity [ohm m],"
                            "calculated [nV/(A m2)],misfit",
                            "7,0,0,1,1,0.25,0.125,100,1,0,20,100,0"));
    EXPECT_THAT(linesOf(tables.layers),
                ElementsAre("line,station [ft],transmitter,sounding,layer,top [ft],bottom [ft],"
                            "elevation [ft],resistivity [ohm m],error [%],background [ohm m],"
                            "sensitivity",
                            "7,0,0,1,1,0,10,95,50,100,,5"));
}

TEST(CsvTables, StationsAreLengthsWhereTheirScaleIsOne) {
    SurveyModel model = lineOf(1, 1, 1);
    EXPECT_THAT(csvTables(exportedLine(model)).layers, StartsWith("line,station [m],transmitter,"));
    model.control.StnScale = 25.0F;
    EXPECT_THAT(csvTables(exportedLine(model)).layers, StartsWith("line,station,transmitter,"));
}

TEST(CsvTables, WhatIsMissingOrNoNumberIsEmpty) {
    SurveyModel model = lineOf(1, 3, 0);
    SoundingRecord &record = model.hTrn[0];
    record.East = MissingValue;
    record.Elevation = std::numeric_limits<double>::infinity();
    record.TEMobs = {NaN, -2.5F, 1.0E20F};
    record.TEMcalc = {1.0F, Infinity, MissingValue};
    record.AResObs = {0.0F, MissingValue, NaN}; // 0 stands for none
    const CsvTables tables = csvTables(exportedLine(model));
    EXPECT_EQ(linesOf(tables.soundings)[1], "7,0,0,1,0,,2000,,0,8,3,0,,,");
    EXPECT_THAT(linesOf(tables.windows), ElementsAre(testing::_, EndsWith(",0.25,0.125,,1,0,,1,"),
                                                     EndsWith(",0.5,0.125,-2.5,1,0,,,"),
                                                     EndsWith(",0.75,0.125,1e+20,1,0,,,")));
}

TEST(CsvTables, SkippedWindowsKeepTheirDataAndTrueError) {
    SurveyModel model = lineOf(1, 2, 0);
    model.hTrn[0].TEMerr = {1126.06F, 3.39F};
    const std::vector<std::string> rows = linesOf(csvTables(exportedLine(model)).windows);
    EXPECT_THAT(rows[1], HasSubstr(",100,126.06,1,"));
    EXPECT_THAT(rows[2], HasSubstr(",50,3.39,0,"));
}

TEST(CsvTables, TextsAreQuotedWhereTheyNeedIt) {
    SurveyModel model = lineOf(1, 0, 0);
    const auto key = [&](std::string_view name) {
        model.control.LineName = name;
        const std::string row = linesOf(csvTables(exportedLine(model)).soundings)[1];
        return row.substr(0, row.rfind(",0,0,1,0,"));
    };
    EXPECT_EQ(key("8225N FXL"), "8225N FXL");
    EXPECT_EQ(key("a,b"), "\"a,b\"");
    EXPECT_EQ(key("5\" pipe"), "\"5\"\" pipe\"");
    EXPECT_EQ(key("S\xC3\xBC\x64"), "S\xC3\xBC\x64");
    EXPECT_EQ(key("S\xFC\x64"), "S\xEF\xBF\xBD\x64") << "bytes that are no UTF-8";
}

TEST(CsvTables, MisfitCountsUsableWindowsInTheirErrors) {
    SurveyModel model = lineOf(1, 3, 0);
    SoundingRecord &record = model.hTrn[0];
    record.TEMerr = {2.0F, 2.0F, 1002.0F};
    record.TEMcalc = {102.0F, 50.0F, 0.0F}; // a deviation of one error, none, and a skipped one
    const std::vector<std::string> rows = linesOf(csvTables(exportedLine(model)).windows);
    EXPECT_THAT(rows[1], EndsWith(",-0.9901"));
    EXPECT_THAT(rows[2], EndsWith(",0"));
    EXPECT_THAT(rows[3], Not(EndsWith(",")));
    EXPECT_THAT(linesOf(csvTables(exportedLine(model)).soundings)[1],
                EndsWith(",3,0,0.7001,0.9901,"))
        << "the skipped window is not part of the sounding's misfit";
}

TEST(Gdf2Files, RowsHaveOneLengthAndArraysThatOfTheLongestSounding) {
    SurveyModel model = lineOf(3, 4, 2);
    model.hTrn[1].NumTW = 1;
    model.hTrn[2].NumLayer = 0;
    const Gdf2Files files = gdf2Files(exportedLine(model));
    EXPECT_THAT(files.definition, HasSubstr(";time:4E12.4:UNIT=ms,NULL=-9.9999E+32,NAME="));
    EXPECT_THAT(files.definition, HasSubstr(";resistivity:2E12.4:UNIT=ohm.m,"));
    EXPECT_EQ(lengths(linesOf(files.data)).size(), 1U);
    EXPECT_THAT(linesOf(files.data)[1], HasSubstr("  2.5000E-01 -9.9999E+32 -9.9999E+32"));
    EXPECT_THAT(linesOf(files.data)[1], HasSubstr("  0 -9 -9 -9")) << "flags";
}

TEST(Gdf2Files, FieldsWithoutAnyValueAreLeftOutAndSingleOnesAreNoArrays) {
    const Gdf2Files files = gdf2Files(exportedLine(lineOf(2, 1, 0)));
    EXPECT_THAT(files.definition, Not(HasSubstr(";resistivity:")));
    EXPECT_THAT(files.definition, HasSubstr(";time:E12.4:"));
    EXPECT_THAT(files.definition, EndsWith("DEFN 22 ST=RECD,RT=;END DEFN\n"));
}

TEST(Gdf2Files, AValueThatWouldFillItsColumnIsNull) {
    const auto easting = [](double value) {
        SurveyModel model = lineOf(1, 0, 0);
        model.hTrn[0].East = value;
        return gdf2Files(exportedLine(model)).data.substr(24, 12);
    };
    EXPECT_EQ(easting(99999999.99), " 99999999.99");
    EXPECT_EQ(easting(99999999.996), " -9999999.99") << "rounded up to 100000000.00";
    EXPECT_EQ(easting(100000000.0), " -9999999.99");
    EXPECT_EQ(easting(-9999999.0), " -9999999.00");
    EXPECT_EQ(easting(1.0E300), " -9999999.99");
    EXPECT_EQ(easting(std::numeric_limits<double>::quiet_NaN()), " -9999999.99");
    EXPECT_EQ(easting(MissingValue), " -9999999.99");
}

/// Lines of a section of a VTK file, after the line that begins with `head`.
std::vector<std::string> section(const std::string &text, const std::string &head, std::size_t n) {
    const std::vector<std::string> lines = linesOf(text);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].compare(0, head.size(), head) == 0) {
            const auto first = lines.begin() + static_cast<std::ptrdiff_t>(i) + 1;
            return {first, std::min(first + static_cast<std::ptrdiff_t>(n), lines.end())};
        }
    }
    return {};
}

/// Points of the uppermost edges of all columns of one layer each: two of four.
std::vector<std::string> topPoints(const SurveyModel &model) {
    const std::vector<std::string> points =
        section(vtkCurtain(exportedLine(model)).text, "POINTS",
                4 * static_cast<std::size_t>(model.SoundingCount));
    std::vector<std::string> top;
    for (std::size_t i = 0; i + 1 < points.size(); i += 4) {
        top.push_back(points[i] + " | " + points[i + 1]);
    }
    return top;
}

TEST(VtkCurtain, ColumnsMeetHalfWayAndTheEndsReachAsFarOutward) {
    SurveyModel model = lineOf(3, 0, 1);
    model.hTrn[2].East = 1050.0; // the line turns to the north
    model.hTrn[2].North = 2030.0;
    EXPECT_THAT(topPoints(model),
                ElementsAre("975 2000 100 | 1025 2000 100", "1025 2000 100 | 1050 2015 100",
                            "1050 2015 100 | 1050 2045 100"));
}

TEST(VtkCurtain, LayersStandAtTheirElevations) {
    const VtkCurtain curtain = vtkCurtain(exportedLine(lineOf(2, 0, 2)));
    EXPECT_EQ(curtain.cells, 4);
    EXPECT_THAT(section(curtain.text, "POINTS 12 double", 6),
                ElementsAre("975 2000 100", "1025 2000 100", "975 2000 90", "1025 2000 90",
                            "975 2000 80", "1025 2000 80"));
    EXPECT_THAT(section(curtain.text, "CELLS 4 20", 3),
                ElementsAre("4 0 1 3 2", "4 2 3 5 4", "4 6 7 9 8"));
    EXPECT_THAT(section(curtain.text, "CELL_TYPES 4", 4), ElementsAre("9", "9", "9", "9"));
    EXPECT_THAT(section(curtain.text, "SCALARS sounding double 1", 5),
                ElementsAre("LOOKUP_TABLE default", "1", "1", "2", "2"));
}

TEST(VtkCurtain, NothingReachesAcrossAWideGap) {
    SurveyModel model = lineOf(5, 0, 1);
    for (const std::size_t i : {3U, 4U}) {
        model.hTrn[i].East += 500.0;
    }
    const std::vector<std::string> top = topPoints(model);
    EXPECT_EQ(top[2], "1075 2000 100 | 1125 2000 100");
    EXPECT_EQ(top[3], "1625 2000 100 | 1675 2000 100");
}

TEST(VtkCurtain, NeighboursAreThoseAlongTheStations) {
    SurveyModel model = lineOf(3, 0, 1);
    std::swap(model.hTrn[0], model.hTrn[2]); // the file's order is another one
    EXPECT_EQ(topPoints(model)[1], "1025 2000 100 | 1075 2000 100");
    EXPECT_THAT(section(vtkCurtain(exportedLine(model)).text, "SCALARS sounding", 4),
                ElementsAre("LOOKUP_TABLE default", "3", "2", "1"));
    model.hTrn[0].NumLayer = 0; // without a model it still bounds its neighbour
    EXPECT_EQ(topPoints(model)[1], "1025 2000 100 | 1075 2000 100");
}

TEST(VtkCurtain, SoundingsOfOnePlaceLieUponEachOther) {
    SurveyModel model = lineOf(3, 0, 1);
    model.hTrn[1].East = model.hTrn[0].East;
    EXPECT_THAT(topPoints(model),
                ElementsAre("950 2000 100 | 1050 2000 100", "950 2000 100 | 1050 2000 100",
                            "1050 2000 100 | 1150 2000 100"));
}

TEST(VtkCurtain, ASoundingAloneIsAsWideAsItsLoop) {
    SurveyModel model = lineOf(1, 0, 1);
    model.control.XTxLength = 40.0F;
    EXPECT_THAT(topPoints(model), ElementsAre("980 2000 100 | 1020 2000 100"));
    model.control.LineAzimuth = 180.0F;
    EXPECT_THAT(topPoints(model), ElementsAre("1000 2020 100 | 1000 1980 100"));
}

TEST(VtkCurtain, LeavesOutWhatCannotBePlacedOrHasNoValue) {
    SurveyModel model = lineOf(3, 0, 2);
    model.hTrn[0].North = MissingValue;
    model.hTrn[1].ResInv[0] = NaN;
    model.hTrn[1].Rerr[1] = MissingValue;
    model.hTrn[1].Elevation = MissingValue;
    model.hTrn[2].ThkInv[1] = -3.0F; // a layer without extent
    const VtkCurtain curtain = vtkCurtain(exportedLine(model));
    EXPECT_EQ(curtain.unplaced, 1);
    EXPECT_EQ(curtain.cells, 2);
    EXPECT_THAT(section(curtain.text, "SCALARS ln_error", 2),
                ElementsAre("LOOKUP_TABLE default", "-1"));
    EXPECT_THAT(curtain.text, Not(HasSubstr("nan")));
}

} // namespace
} // namespace keldrin
