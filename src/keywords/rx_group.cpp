#include "keywords/components.h"
#include "keywords/group_readers.h"
#include "keywords/points.h"
#include "keywords/sensors.h"

#include "messages/message_log.h"

namespace keldrin {
namespace {

using namespace rows;

/// Receiver lengths play no part in an inversion, and a second one gets a message that says so.
int readRxLength(const Reading &reading) {
    RxMetadata &rx = reading.metadata.Rx;
    const bool stored = takeSides(reading, {&rx.LengthX, &rx.LengthY});
    const auto &tokens = reading.record.tokens;
    if (stored && tokens.size() > 1 && !tokens[1].empty() && !isLengthUnit(tokens[1])) {
        reportRecord(reading.record.where, false,
                     {"Rx_MD_Read.WARNING:",
                      std::string(reading.record.key) + " has a second value in record # " +
                          std::to_string(reading.record.where.number),
                      "Values will not be used."});
    }
    return 0;
}

/// A unit such as "m^2" among the areas.
bool isAreaUnit(std::string_view token) {
    return !token.empty() && token.front() == 'm';
}

int readArea(const Reading &reading) {
    RxMetadata &rx = reading.metadata.Rx;
    const std::array<SourcedReal *, 3> axes = {&rx.AreaX, &rx.AreaY, &rx.AreaZ};
    float last = 0.0F;
    if (takeComponents(reading, plainCell<float>, axes, isAreaUnit, last)) {
        keepSource(reading, rx.Area, [&] {
            rx.Area.value = last;
            return true;
        });
    }
    return 0;
}

/// All tokens as one text, with nothing between them.
int readComponent(const Reading &reading) {
    SourcedText<8> &component = reading.metadata.Rx.Cmp;
    keepSource(reading, component, [&] {
        std::string joined;
        for (const std::string_view token : reading.record.tokens) {
            joined.append(token);
        }
        if (joined.empty()) {
            return false;
        }
        component.value = joined;
        return true;
    });
    return 0;
}

constexpr Limits DelayRange = between(0.0, 1.0E6, " usec");
constexpr Limits AxisAreaRange = between(1.0E-6, MostReal, " m^2");
/// Of the record for all axes, where a minus sign does not count.
constexpr Limits AreaRange =
    magnitudeBetween(AxisAreaRange.low, AxisAreaRange.high, Magnitude::Positive, " m^2");

constexpr auto RxRows = std::to_array<KeywordRow>({
    number<&RxMetadata::QdrStn>("QDRSTN", StationRange),
    number<&RxMetadata::Stn>("STN", StationRange),
    // The plotted points stand before the indexed ones, which take any other XYZ or UTM.
    number<&RxMetadata::PltXYZ>("PLTXYZ", StationRange),
    number<&RxMetadata::PltUTM>("PLTUTM", StationRange),
    number<&RxMetadata::PltSXYZ>("PLTSXYZ", StationRange),
    number<&RxMetadata::PltSZXYZ>("PLTSZXYZ", StationRange),
    number<&RxMetadata::PltSLZXYZ>("PLTSLZXYZ", StationRange),
    indexedPoint<&RxMetadata::XYZ>("XYZ", MapRange),
    indexedPoint<&RxMetadata::UTM>("UTM", MapRange),
    number<&RxMetadata::Center>("CENTER", StationRange, "Rx.Center["),
    number<&RxMetadata::East>("EAST", StationRange),
    number<&RxMetadata::North>("NORTH", StationRange),
    number<&RxMetadata::Elev>("ELEV", StationRange),
    number<&RxMetadata::Depth>("DEPTH", StationRange),
    azimuth<&RxMetadata::HPR>("HPR", "Rx.HPR["),
    azimuth<&RxMetadata::XAzimuth>("XAZIMUTH"),
    azimuth<&RxMetadata::Azimuth>("AZIMUTH"),
    number<&RxMetadata::Incl>("INCL", SlopeRange),
    length<&RxMetadata::ASpace>("ASPACE"),
    number<&RxMetadata::SSpace>("SSPACE", between(LengthRange.low, LengthRange.high)),
    irregular("LENGTH", readRxLength, LengthRange, "Rx.Length["),
    length<&RxMetadata::LengthX>("LENGTHX"),
    length<&RxMetadata::LengthY>("LENGTHY"),
    irregular("AREA", readArea, AreaRange, "Rx.Area["),
    number<&RxMetadata::AreaX>("AREAX", AxisAreaRange),
    number<&RxMetadata::AreaY>("AREAY", AxisAreaRange),
    number<&RxMetadata::AreaZ>("AREAZ", AxisAreaRange),
    number<&RxMetadata::NSpace>("NSPACE", between(-990000.0, 990000.0)),
    irregular<&RxMetadata::Cmp>("CMP", readComponent),
    irregular<&RxMetadata::Sensor>("SENSOR", readSensors<&RxMetadata::Sensor, &RxMetadata::AntSN>,
                                   {}, "Rx.Sensor"),
    number<&RxMetadata::AntSN>("ANTSN", atLeast(0)),
    number<&RxMetadata::AntScale>("ANTSCALE", between(-MostReal, MostReal, " uT/V")),
    number<&RxMetadata::CntRes>("CNTRES", between(0.0, 1.0E32, " ohm")),
    number<&RxMetadata::SetupStn>("SETUPSTN", StationRange),
    length<&RxMetadata::SetupLength>("SETUPLENGTH", between(0.0, 1.0E9, " m")),
    number<&RxMetadata::WireCap>("WIRECAP", between(-10000.0, 10000.0, " pF/m")),
    number<&RxMetadata::AntDelay>("ANTDELAY", DelayRange),
    number<&RxMetadata::AliasDelay>("ALIASDELAY", DelayRange),
    number<&RxMetadata::ADDelay>("ADDELAY", DelayRange),
    number<&RxMetadata::ADRamp>("ADRAMP", between(0.0, 10000.0, " usec")),
    number<&RxMetadata::T0Delay>("T0DELAY", between(-10000.0, 10000.0, " usec")),
    dropped("RXLOC"),
    dropped("RYLOC"),
});

} // namespace

constinit const GroupTable RxGroup = groupTable<RxMetadata>("Rx", RxRows);

int Rx_MD_Read(const KeywordRecord &record, Metadata &metadata) {
    return readGroup(RxGroup, record, metadata);
}

} // namespace keldrin
