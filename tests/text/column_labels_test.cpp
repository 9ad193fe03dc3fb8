#include "support/message_recorder.h"
#include "text/columns.h"

#include <gmock/gmock.h>

#include <array>
#include <string>

namespace keldrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::array<LabelAlias, 4> Aliases = {
    {{"DBDT.MAG", "MAG"}, {"STN", "STATION"}, {"ZZ", "TIME"}, {"ALPHA", "TIME"}}}; // the last: lost
constexpr std::array<std::string_view, 3> Variables = {"STATION", "TIME", "MAG"};
constexpr LabelMatch Exact = {};
constexpr LabelMatch Contained = {.exactMatch = false};
constexpr LabelMatch Complete = {.reportMissing = true};

TEST(ColumnLabels, AliasTablesEndAtTheFirstHigherEntry) {
    EXPECT_EQ(aliasOf("STN", Aliases), "STATION");
    EXPECT_EQ(aliasOf("ST", Aliases), "ST");
    EXPECT_EQ(aliasOf("ZZZ", Aliases), "ZZZ");
    EXPECT_EQ(aliasOf("ALPHA", Aliases), "ALPHA");
    EXPECT_EQ(aliasOf("", Aliases), "");
}

TEST(ColumnLabels, TheFirstColumnThatReachesAVariableTakesIt) {
    ColumnMap map;
    EXPECT_EQ(
        Str_Column_Labels_Alias("skip, dBdt.mag,,Station,stn MAG", Exact, Aliases, Variables, map),
        0);
    EXPECT_EQ(map.nCols, 6);
    EXPECT_THAT(map.iVarCol, ElementsAre(4, 0, 2));
    EXPECT_THAT(map.iColVar, ElementsAre(0, 3, 0, 1, 0, 0));
}

TEST(ColumnLabels, LooseMatchesTakeALabelThatContainsTheName) {
    constexpr std::array<std::string_view, 2> Names = {"TXAMP.MAG", "TIME"};
    ColumnMap map;
    Str_Column_Labels_Alias("TxAmp.Mag2", Contained, {}, Names, map);
    EXPECT_THAT(map.iVarCol, ElementsAre(1, 0));
    Str_Column_Labels_Alias("TxAmp.Mag2", Exact, {}, Names, map);
    EXPECT_THAT(map.iVarCol, ElementsAre(0, 0));
    // without aliases the order of the variables decides: the second name gets what is left
    constexpr std::array<std::string_view, 2> Nested = {"MAG", "TXMAG"};
    Str_Column_Labels("TXMAG MAG TXMAG", Contained, Nested, map);
    EXPECT_THAT(map.iVarCol, ElementsAre(1, 3));
    Str_Column_Labels_Alias("TXMAG MAG TXMAG", Contained, {}, Nested, map);
    EXPECT_THAT(map.iVarCol, ElementsAre(1, 3));
}

TEST(ColumnLabels, MissingColumnsAreReportedOnDemand) {
    const MessageRecorder messages;
    ColumnMap map;
    EXPECT_EQ(Str_Column_Labels("time", Exact, Variables, map), 0);
    EXPECT_THAT(messages.errors, IsEmpty());
    EXPECT_EQ(Str_Column_Labels("time mag", Complete, Variables, map), 1);
    EXPECT_EQ(Str_Column_Labels_Alias("time", Complete, Aliases, Variables, map), 1);
    EXPECT_EQ(Str_Column_Labels("station time mag", Complete, Variables, map), 0);
    EXPECT_THAT(messages.errors, ElementsAre("ERROR: Could not find column|STATION",
                                             "ERROR: Could not find columns|STATION, MAG"));
}

TEST(ColumnLabels, SynonymsAreTriedInTurn) {
    const std::vector<std::vector<std::string_view>> synonyms = {{"STATION", "STN"}, {"X", "EAST"}};
    const MessageRecorder messages;
    ColumnMap map;
    EXPECT_EQ(Str_Column_Labels_Synonyms("stn,east,station", Complete, synonyms, map), 0);
    EXPECT_THAT(map.iVarCol, ElementsAre(3, 2));
    EXPECT_EQ(Str_Column_Labels_Synonyms("stn", Complete, synonyms, map), 1);
    EXPECT_THAT(messages.errors, ElementsAre("ERROR: Could not find column|X"));
}

TEST(ColumnLabels, CsvLinesAreLogged) {
    const MessageRecorder messages;
    ColumnMap map;
    int highest = -1;
    EXPECT_EQ(Str_Column_Labels_Csv("Mag,first x,Time,rest", Exact, Variables, map, highest), 0);
    EXPECT_THAT(map.iVarCol, ElementsAre(0, 3, 1));
    EXPECT_EQ(highest, 3);
    EXPECT_THAT(messages.infos,
                ElementsAre("Parsing column labels on line:", "Mag,first x,Time,rest"));
}

} // namespace
} // namespace keldrin
