#include "engine/project_cells.h"

#include "base/fixed_text.h"
#include "projectfile/control_group.h"
#include "projectfile/project_file.h"
#include "support/message_recorder.h"
#include "text/columns.h"

#include <gmock/gmock.h>

#include <atomic>
#include <random>

namespace keldrin {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(CellPlaces, AreThoseOfTheReader) {
    std::mt19937 random(7);
    const std::string_view alphabet = "ab1, \t\",  ,";
    for (int run = 0; run < 20000; ++run) {
        std::string line;
        const std::size_t length = random() % 14;
        while (line.size() < length) {
            line += alphabet[random() % alphabet.size()];
        }
        SplitCells cells;
        Str_Split_Columns(line, 1000, 1000, cells);
        const std::vector<CellPlace> places = cellPlaces(line);
        ASSERT_EQ(places.size(), cells.cells.size()) << '[' << line << ']';
        for (std::size_t i = 0; i < places.size(); ++i) {
            const std::string own = line.substr(places[i].begin, places[i].end - places[i].begin);
            SplitCells again;
            Str_Split_Columns(own, 1000, 1000, again);
            const std::string_view wanted = trimRight(cells.cells[i]);
            const std::string_view got = again.cells.empty() ? "" : trimRight(again.cells[0]);
            ASSERT_EQ(got, wanted) << '[' << line << "] cell " << i;
        }
    }
}

TEST(CellPlaces, MayBeEmptyOnlyBetweenCommas) {
    const std::string line = "a, b c ,d";
    std::vector<bool> empty;
    for (const CellPlace &place : cellPlaces(line)) {
        empty.push_back(place.mayBeEmpty);
    }
    EXPECT_THAT(empty, ElementsAre(true, false, false, true));
}

/// A project in memory, read and then written with calculated values of 1.5 nV/(A m2), 20 and
/// 30 ohm-m in every window.
class CalculatedCells : public testing::Test {
  protected:
    RewrittenProject rewrite(const std::string &control, const std::string &table,
                             std::vector<char> changed = {}) {
        text = "head\n&KELDRIN NumStn=16 SurveyType='In-Loop' " + control + "/\n" + table;
        LineReader reader(MostGroupLine);
        reader.openText(text);
        model = {};
        EXPECT_EQ(STD_File_Read_Text(model, reader, "none.std", lines), 0);
        for (int i = 0; i < model.SoundingCount; ++i) {
            SoundingRecord &record = model.hTrn[static_cast<std::size_t>(i)];
            for (std::size_t k = 0; k < static_cast<std::size_t>(record.NumTW); ++k) {
                record.TEMcalc[k] = calculated;
                record.AResObs[k] = 20.0F;
                record.AResCalc[k] = 30.0F;
            }
        }
        changed.resize(static_cast<std::size_t>(model.SoundingCount), 1);
        return rewriteCells(text, lines, model, changed, "none.std");
    }

    /// The table alone.
    std::string tableOf(const RewrittenProject &project) const {
        EXPECT_EQ(project.fault, "");
        const std::size_t head = text.find("/\n") + 2;
        EXPECT_EQ(project.text.substr(0, head), text.substr(0, head));
        return project.text.substr(head);
    }

    MessageRecorder messages;
    float calculated = 1.5F;
    std::string text;
    DataTableLines lines;
    SurveyModel model;
};

TEST_F(CalculatedCells, TakeTheirPlaceAndNothingElseMoves) {
    const std::string labels = "TEMcalc, AResCalc ,Station,East,North;x,Elevation,TWcenter,TWwidth,"
                               "TEMobs,TEMerr,AResObs\r\n";
    const RewrittenProject project =
        rewrite("TEMUnits='nV'", labels + "  7 ,,1,2,3,4,.1,.05,5,3,\r\n"
                                          "! 1,2,3\r\n"
                                          "\r\n"
                                          "*,*,1,2,3,4,.2,\t.05,5,1003.5,\"12\"  \r\n"
                                          "7,7,*,2,3,4,.1,.05,5,3,7\r\n");
    EXPECT_EQ(tableOf(project), labels + "  1.50000E+00 ,30,1,2,3,4,.1,.05,5,3,20\r\n"
                                         "! 1,2,3\r\n"
                                         "\r\n"
                                         "1.50000E+00,30,1,2,3,4,.2,\t.05,5,1003.5,20  \r\n"
                                         "7,7,*,2,3,4,.1,.05,5,3,7\r\n");
}

TEST_F(CalculatedCells, AreInTheUnitsOfTheFile) {
    const RewrittenProject project =
        rewrite("TEMUnits='uV/A' RxArea=2000", "1,2,3,4,.1,.05,5,3,0,0,1,7\n");
    EXPECT_EQ(tableOf(project), "1,2,3,4,.1,.05,5,3,0,0,1,3.00000E+00\n");
    EXPECT_THAT(project.without, ElementsAre("AResCalc", "AResObs")) << "without labels";
}

TEST_F(CalculatedCells, MissingColumnsGoBehindTheWidestRow) {
    const RewrittenProject project =
        rewrite("TEMUnits='nV'", "Station,East,North,Elevation,TWcenter,TWwidth,TEMobs,TEMerr\n"
                                 "1,2,3,4,.1,.05,5,3,,a note\n"
                                 "1,2,3,4,.2,.05,5,3,\n"
                                 "2 2 3 4 .1 .05 5 3 \n");
    EXPECT_EQ(tableOf(project),
              "Station,East,North,Elevation,TWcenter,TWwidth,TEMobs,TEMerr,,,,TEMcalc,AResObs,"
              "AResCalc\n"
              "1,2,3,4,.1,.05,5,3,,a note,1.50000E+00,20,30\n"
              "1,2,3,4,.2,.05,5,3,,,,1.50000E+00,20,30\n"
              "2 2 3 4 .1 .05 5 3,,,,1.50000E+00,20,30 \n");
}

TEST_F(CalculatedCells, MissingValuesAreEmptyOrAnAsteriskBetweenBlanks) {
    calculated = MissingValue;
    const RewrittenProject project = rewrite(
        "TEMUnits='nV'",
        "Station East North TEMcalc Elevation TWcenter TWwidth TEMobs TEMerr AResObs AResCalc\n"
        "1 2 3 7 4 .1 .05 5 3 7 7\n"
        "1,2,3,7,4,.2,.05,5,3,7,7\n");
    EXPECT_EQ(
        tableOf(project),
        "Station East North TEMcalc Elevation TWcenter TWwidth TEMobs TEMerr AResObs AResCalc\n"
        "1 2 3 * 4 .1 .05 5 3 20 30\n"
        "1,2,3,,4,.2,.05,5,3,20,30\n");
}

TEST_F(CalculatedCells, AStoppedRunWritesNoMoreRows) {
    rewrite("TEMUnits='nV'", "1,2,3,4,.1,.05,5,3,0,0,1,7\n");
    const std::atomic<bool> stop = true;
    EXPECT_EQ(rewriteCells(text, lines, model, {1}, "none.std", {1, &stop}).text, "");
}

TEST_F(CalculatedCells, SoundingsThatAreNotChangedKeepTheirBytes) {
    const std::string labels =
        "Station,East,North,Elevation,TWcenter,TWwidth,TEMobs,TEMerr,TEMcalc\n";
    const RewrittenProject project = rewrite(
        "TEMUnits='nV'", labels + "1,2,3,4,.1,.05,5,3,7.0\n2,2,3,4,.1,.05,5,3,8.0\n", {0, 1});
    EXPECT_THAT(tableOf(project), HasSubstr("\n1,2,3,4,.1,.05,5,3,7.0\n"));
    EXPECT_THAT(tableOf(project), HasSubstr("\n2,2,3,4,.1,.05,5,3,1.50000E+00,20,30\n"));
}

TEST_F(CalculatedCells, TheLastLineMayLackItsEndOrEndAtAMark) {
    const std::string labels =
        "Station,East,North,Elevation,TWcenter,TWwidth,TEMobs,TEMerr,TEMcalc,AResObs,AResCalc\n";
    for (const std::string end : {"", "\x1A", "\r\x1A\n1,2,3\n", "\r\n\x1A"}) {
        std::string before = labels;
        before.append("1,2,3,4,.1,.05,5,3,7,7,7").append(end);
        std::string after = labels;
        after.append("1,2,3,4,.1,.05,5,3,1.50000E+00,20,30").append(end);
        EXPECT_EQ(tableOf(rewrite("TEMUnits='nV'", before)), after);
    }
}

TEST_F(CalculatedCells, RowsThatWouldNotBeReadAsBeforeAreAFault) {
    const std::string labels =
        "TEMcalc,Station,East,North,Elevation,TWcenter,TWwidth,TEMobs,AResObs,TEMerr\n";
    const std::string longRow = "7,1,2,3,4,.1,.05,5,7," + std::string(MostTableLine - 25, ' ') +
                                ".123\n"; // ends at the last byte that is read
    const RewrittenProject project = rewrite("TEMUnits='nV'", labels + longRow);
    EXPECT_THAT(project.fault,
                HasSubstr("longer than " + std::to_string(MostTableLine) + " bytes"));
}

TEST_F(CalculatedCells, ATableOfEighteenColumnsHasNoPlaceForMore) {
    std::string labels = "Station,East,North,Elevation,TWcenter,TWwidth,TEMobs,TEMerr,TEMcalc";
    std::string row = "1,2,3,4,.1,.05,5,3,7";
    for (char c = 'a'; c < 'j'; ++c) {
        labels.append(",x").append(1, c);
        row += ",0";
    }
    const RewrittenProject project = rewrite("TEMUnits='nV'", labels + "\n" + row + "\n");
    EXPECT_THAT(project.without, ElementsAre("AResCalc", "AResObs"));
    EXPECT_THAT(tableOf(project),
                HasSubstr("\n1,2,3,4,.1,.05,5,3,1.50000E+00,0,0,0,0,0,0,0,0,0\n"));
}

} // namespace
} // namespace keldrin
