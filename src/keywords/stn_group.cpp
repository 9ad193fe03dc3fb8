#include "keywords/group_readers.h"

namespace keldrin {
namespace {

using namespace rows;

/// A step between stations may be negative, but not vanish.
constexpr Limits StepRange =
    magnitudeBetween(1.0E-6, 9.9E9, Magnitude::SignKept, {}, ValueForm::AbsoluteKey);
constexpr Limits ScaleRange = magnitudeBetween(1.0E-6, 9.9E9, Magnitude::Positive, " m/stn#");

constexpr auto StnRows = std::to_array<KeywordRow>({
    number<&StnMetadata::Number>("NUMBER", StationRange),
    text<&StnMetadata::Name>("NAME"),
    number<&StnMetadata::QdrBeg>("QDRBEG", StationRange),
    number<&StnMetadata::QdrEnd>("QDREND", StationRange),
    number<&StnMetadata::QdrInc>("QDRINC", StepRange),
    number<&StnMetadata::QdrUnitScale>("QDRUNITSCALE", ScaleRange),
    number<&StnMetadata::Beg>("BEG", StationRange),
    number<&StnMetadata::Inc>("INC", StepRange),
    number<&StnMetadata::UnitScale>("UNITSCALE", ScaleRange),
    number<&StnMetadata::Left>("LEFT", StationRange),
    number<&StnMetadata::Right>("RIGHT", StationRange),
});

} // namespace

constinit const GroupTable StnGroup = groupTable<StnMetadata>("Stn", StnRows);

int Stn_MD_Read(const KeywordRecord &record, Metadata &metadata) {
    return readGroup(StnGroup, record, metadata);
}

} // namespace keldrin
