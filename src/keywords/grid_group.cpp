#include "keywords/group_readers.h"
#include "keywords/points.h"

namespace keldrin {
namespace {

using namespace rows;

constexpr std::size_t MostGridTokens = 14;
constexpr std::size_t GridTokenWidth = 16;

/// "Grid.Ref1[pair,coordinate]" of a point of two pairs, "Grid.XYOffset[coordinate]" of one pair.
std::string coordinateLabel(const Reading &reading, std::size_t index, std::size_t count) {
    if (count == 2) {
        return labelOf(reading, index, count);
    }
    return std::string(reading.row.label) + std::to_string(index / 2 + 1) + "," +
           std::to_string(index % 2 + 1) + "]";
}

/// The first tokens are `Count` coordinates; one more is the point's name.
template <auto Member, std::size_t Count>
int readGridPoint(const Reading &reading) {
    Sourced<GridPoint> &field = memberIn(reading.metadata, Member);
    const auto &tokens = reading.record.tokens;
    keepSource(reading, field, [&] {
        bool stored = false;
        for (std::size_t i = 0; i < std::min(tokens.size(), Count); ++i) {
            stored |= takeValue(reading, plainCell<double>, tokens[i],
                                coordinateLabel(reading, i, Count), field.value.pairs[i]);
        }
        if (tokens.size() > Count && !tokens[Count].empty()) {
            field.value.name = tokens[Count];
            stored = true;
        }
        return stored;
    });
    return 0;
}

constexpr auto GridRows = std::to_array<KeywordRow>({
    irregular("REF1", readGridPoint<&GridMetadata::Ref1, 4>, StationRange, "Grid.Ref1["),
    irregular("REF2", readGridPoint<&GridMetadata::Ref2, 4>, StationRange, "Grid.Ref2["),
    irregular("CALC", readGridPoint<&GridMetadata::Calc, 4>, StationRange, "Grid.Calc["),
    irregular("XYOFFSET", readGridPoint<&GridMetadata::XYOffset, 2>, StationRange,
              "Grid.XYOffset["),
    azimuth<&GridMetadata::XAzimuth>("XAZIMUTH"),
});

} // namespace

constinit const GroupTable GridGroup = groupTable<GridMetadata>("Grid", GridRows);

int Grid_MD_Read(const KeywordRecord &record, Metadata &metadata) {
    std::vector<std::string_view> pieces;
    for (const std::string_view token : record.tokens) {
        splitAtColons(token, MostGridTokens, GridTokenWidth, pieces);
    }
    KeywordRecord flattened = record;
    flattened.tokens = pieces;
    return readGroup(GridGroup, flattened, metadata);
}

} // namespace keldrin
