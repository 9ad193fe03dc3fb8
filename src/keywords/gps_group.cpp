#include "keywords/group_readers.h"
#include "keywords/points.h"

#include "text/cell_report.h"

#include <algorithm>

namespace keldrin {
namespace {

using namespace rows;

/// A value out of range becomes 0, and the warning names the record and both bounds.
constexpr Limits gpsRange(double low, double high, std::string_view words) {
    Limits limits = zeroOutside(inWords(between(low, high), words));
    limits.firstLine = "Gps_MD_Read.WARNING: at record ";
    return limits;
}

constexpr Limits CountRange = gpsRange(0.0, std::numeric_limits<int>::max(), " < 0 or > ");

constexpr Limits offsetRange() {
    Limits limits = gpsRange(-12.0, 12.0, " < -12 or > 12 hour");
    limits.unit = " hours";
    limits.form = ValueForm::WithUnit;
    return limits;
}

constexpr Limits mapRange() {
    Limits limits = zeroOutside(StationRange);
    limits.firstLine = "GPS_MD_Read.WARNING: at record ";
    return limits;
}

/// Hours alone, or hours and minutes, are filled up to hh:mm:ss. The reader takes two characters of
/// hours, so "-10" loses its sign, and that is meant.
int offsetCell(const Reading &reading, std::string_view token, std::string_view label,
               double unread, double &value) {
    std::string time(token);
    if (!isEmptyCell(token)) {
        for (auto colons = std::count(token.begin(), token.end(), ':'); colons < 2; ++colons) {
            time += ":00";
        }
    }
    return hoursCell(reading, time, label, unread, value);
}

constexpr auto GpsRows = std::to_array<KeywordRow>({
    number<&GpsMetadata::Lat>("LAT", gpsRange(-90.0, 90.0, " < -90 or > 90 deg")),
    // The words are those of the latitude; PDOP has those of the satellites.
    number<&GpsMetadata::Lon>("LON", gpsRange(-180.0, 180.0, " < -90 or > 90 deg")),
    number<&GpsMetadata::Alt>("ALT", gpsRange(-1.0E6, 1.0E6, " < -1.0E6 or > 1.0E6 m")),
    text<&GpsMetadata::Datum>("DATUM"),
    text<&GpsMetadata::Proj>("PROJ"),
    number<&GpsMetadata::UTMZone>("UTMZONE", zoneRange("Gps_MD_Read.WARNING: at record ")),
    irregular("UTMXYZ", readPoint<&GpsMetadata::UTMXYZ>, mapRange(), "GPS.UTMXYZ["),
    number<&GpsMetadata::Week>("WEEK", CountRange),
    number<&GpsMetadata::Sec>("SEC", gpsRange(0.0, 1.0E32, " < 0.0D0 or > 1.0E32 sec")),
    irregular("LOCALTIMEOFFSET", readValues<&GpsMetadata::LocalTimeOffset, &offsetCell>,
              offsetRange(), "Gps.LocalTimeOffset"),
    number<&GpsMetadata::LeapSecond>("LEAPSECOND", CountRange),
    number<&GpsMetadata::NumSat>("NUMSAT", gpsRange(0.0, 64.0, " < 0 or > 64")),
    number<&GpsMetadata::PDOP>("PDOP", gpsRange(0.0, 1000.0, " < 0 or > 64")),
    number<&GpsMetadata::Status>("STATUS"),
    number<&GpsMetadata::TCDAC>("TCDAC", gpsRange(0.0, 1.0E32, " < 0.0 or > 1.0E32 TCDAC")),
    text<&GpsMetadata::SN>("SN"),
    text<&GpsMetadata::FW>("FW"),
    text<&GpsMetadata::SW>("SW"),
});

} // namespace

constinit const GroupTable GpsGroup = groupTable<GpsMetadata>("Gps", GpsRows);

int Gps_MD_Read(const KeywordRecord &record, Metadata &metadata) {
    return readGroup(GpsGroup, record, metadata);
}

} // namespace keldrin
