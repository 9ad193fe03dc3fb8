#include "keywords/group_readers.h"

namespace keldrin {
namespace {

using namespace rows;

constexpr std::array<std::string_view, 3> TypeNames = {"STRAIGHT", "MEANDER", "POINTS"};

constexpr auto LineRows = std::to_array<KeywordRow>({
    text<&LineMetadata::Name>("NAME"),
    text<&LineMetadata::Direction>("DIRECTION"),
    text<&LineMetadata::Spread>("SPREAD"),
    number<&LineMetadata::Number>("NUMBER", StationRange),
    azimuth<&LineMetadata::Azimuth>("AZIMUTH"),
    enumeration<&LineMetadata::Type>("TYPE", "Line.Type", TypeNames),
});

constexpr GroupTable LineGroup = groupTable<LineMetadata>("Line", LineRows);

} // namespace

int Line_MD_Read(const KeywordRecord &record, Metadata &metadata) {
    return readGroup(LineGroup, record, metadata);
}

} // namespace keldrin
