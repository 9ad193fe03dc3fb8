#include "keywords/group_readers.h"
#include "keywords/shared_names.h"

namespace keldrin {
namespace {

using namespace rows;

constexpr std::array<std::string_view, 5> QdrTypeNames = {"QDRA", "QDRB", "QDRC", "QDRD", "OTHER"};
constexpr std::array<std::string_view, 3> SourceNames = {"FIELD", "ISYS", "ESYS"};
constexpr std::array<std::string_view, 5> GainModeNames = {"NOISY", "QUIET", "STANDARD", "HIGHGAIN",
                                                           "UNKNOWN"};

constexpr auto QdrRows = std::to_array<KeywordRow>({
    enumeration<&QdrMetadata::Type>("TYPE", "QDR.Type", QdrTypeNames),
    text<&QdrMetadata::File>("FILE"),
    text<&QdrMetadata::ProgVer>("PROGVER"),
    text<&QdrMetadata::SN>("SN"),
    text<&QdrMetadata::FPSN>("FPSN"),
    text<&QdrMetadata::Operator>("OPERATOR"),
    text<&QdrMetadata::TCardSN>("TCARDSN"),
    text<&QdrMetadata::Sync>("SYNC"),
    text<&QdrMetadata::ADCardSN>("ADCARDSN"),
    number<&QdrMetadata::ADCardSND>("ADCARDSND", Unlimited, "QDR.ADCardSND["),
    text<&QdrMetadata::ADCardVer>("ADCARDVER"),
    text<&QdrMetadata::ADCardFeat>("ADCARDFEAT"),
    text<&QdrMetadata::CardType>("CARDTYPE"),
    enumeration<&QdrMetadata::SigSource>("SIGSOURCE", "QDR.SigSource", SourceNames),
    number<&QdrMetadata::CalVolts>("CALVOLTS", between(0.0, 20.0, " volts")),
    number<&QdrMetadata::Bat>("BAT", above(0.0, 20.0, " volts")),
    // A current above 100 A becomes 20 A: 50 A stands.
    number<&QdrMetadata::Amp>("AMP", testedAgainst(0.0, 100.0, 0.0, 20.0, " amp")),
    number<&QdrMetadata::Temp>("TEMP", between(-100.0, 100.0, " deg C")),
    number<&QdrMetadata::Humid>("HUMID", between(0.0, 100.0, " %")),
    number<&QdrMetadata::NumCard>("NUMCARD", inWords(between(1.0, 16.0), " < 1 or > ")),
    number<&QdrMetadata::Number>("NUMBER", refusedOutside(atLeast(0)), "QDR.NUMBER["),
    number<&QdrMetadata::Ch>("CH", atMost(16.0), "QDR.Ch["),
    text<&QdrMetadata::Date>("DATE"),
    // The clock's label, in this group too.
    irregular("TIME", readValues<&QdrMetadata::Time, &hoursCell>, Unlimited, "Gps.Time"),
    number<&QdrMetadata::Blk>("BLK", above(0.0, Unlimited.high), "QDR.Blk["),
    number<&QdrMetadata::Setup>("SETUP"),
    enumeration<&QdrMetadata::AcqMethod>("ACQMETHOD", "QDR.AcqMethod", AcqMethodNames),
    enumeration<&QdrMetadata::GainMode>("GAINMODE", "QDR.GainMode", GainModeNames),
    enumeration<&QdrMetadata::GainMethod>("GAINMETHOD", "QDR.GainMethod", SourceNames),
});

} // namespace

constinit const GroupTable QdrGroup = groupTable<QdrMetadata>("Qdr", QdrRows);

int Qdr_MD_Read(const KeywordRecord &record, Metadata &metadata) {
    return readGroup(QdrGroup, record, metadata);
}

} // namespace keldrin
