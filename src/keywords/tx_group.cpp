#include "keywords/components.h"
#include "keywords/group_readers.h"
#include "keywords/points.h"

namespace keldrin {
namespace {

using namespace rows;

int readTxLength(const Reading &reading) {
    TxMetadata &tx = reading.metadata.Tx;
    takeSides(reading, {&tx.LengthX, &tx.LengthY});
    return 0;
}

/// The centre as one record: its first two coordinates are also CenterX and CenterY.
int readCenter(const Reading &reading) {
    TxMetadata &tx = reading.metadata.Tx;
    keepSource(reading, tx.Center, [&] {
        XyzPoint read = MissingPoint;
        if (!takeValues(reading, plainCell<double>, reading.record.tokens, elementsOf(read))) {
            return false;
        }
        tx.Center.value = read;
        const std::array<SourcedDouble *, 2> axes = {&tx.CenterX, &tx.CenterY};
        for (std::size_t i = 0; i < axes.size(); ++i) {
            if (isPresent(read[i]) && reading.record.level >= axes[i]->level) {
                *axes[i] = {read[i], reading.record.level};
            }
        }
        return true;
    });
    return 0;
}

/// Percent of the half period; a value up to about 1 is a fraction.
int dutyCell(const Reading &reading, std::string_view token, std::string_view label, float unread,
             float &value) {
    constexpr float highestFraction = 1.0001F;
    const int status = plainCell<float>(reading, token, label, unread, value);
    if (value <= highestFraction) {
        value *= 100.0F;
    }
    return status;
}

// Delay and ramp are tested against 10000 usec, but a longer one becomes 100 usec: 5000 stands.
constexpr Limits ShutOffRange = testedAgainst(0.0, 10000.0, 0.0, 100.0, " usec");

constexpr auto TxRows = std::to_array<KeywordRow>({
    number<&TxMetadata::QdrStn>("QDRSTN", StationRange),
    number<&TxMetadata::Stn>("STN", StationRange),
    indexedPoint<&TxMetadata::XYZ>("XYZ", MapRange),
    indexedPoint<&TxMetadata::Point>("POINT", StationRange),
    indexedPoint<&TxMetadata::UTM>("UTM", MapRange),
    irregular("CENTER", readCenter, StationRange, "Tx.Center["),
    number<&TxMetadata::CenterX>("CENTERX", StationRange),
    number<&TxMetadata::CenterY>("CENTERY", StationRange),
    azimuth<&TxMetadata::HPR>("HPR", "Tx.HPR["),
    azimuth<&TxMetadata::XAzimuth>("XAZIMUTH"),
    azimuth<&TxMetadata::Azimuth>("AZIMUTH"),
    number<&TxMetadata::Incl>("INCL", SlopeRange),
    irregular<&TxMetadata::LengthX>("LENGTH", readTxLength, LengthRange, "Tx.Length["),
    length<&TxMetadata::LengthX>("LENGTHX"),
    length<&TxMetadata::LengthY>("LENGTHY"),
    number<&TxMetadata::Area>("AREA", above(0.0, 1.0E20, " m^2")),
    number<&TxMetadata::Turns>("TURNS", between(1.0, 1000.0)),
    number<&TxMetadata::Sense>("SENSE", Unlimited, "Tx.Sense["),
    number<&TxMetadata::Amp>("AMP", between(-10000.0, 10000.0)),
    number<&TxMetadata::Freq>("FREQ", between(1.0E-6, 10000.0)),
    number<&TxMetadata::NWaveform>("NWAVEFORM", inWords(atLeast(4), " < 4 or > ")),
    number<&TxMetadata::NCycle>("NCYCLE", atLeast(1)),
    irregular<&TxMetadata::Duty>("DUTY", readValues<&TxMetadata::Duty, &dutyCell>,
                                 between(0.01, 100.0)),
    number<&TxMetadata::Delay>("DELAY", ShutOffRange),
    number<&TxMetadata::Ramp>("RAMP", ShutOffRange),
    text<&TxMetadata::Type>("TYPE"),
    text<&TxMetadata::SN>("SN"),
});

} // namespace

constinit const GroupTable TxGroup = groupTable<TxMetadata>("Tx", TxRows);

int Tx_MD_Read(const KeywordRecord &record, Metadata &metadata) {
    return readGroup(TxGroup, record, metadata);
}

} // namespace keldrin
