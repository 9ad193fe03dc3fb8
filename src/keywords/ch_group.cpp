#include "keywords/channel_codes.h"
#include "keywords/group_readers.h"
#include "keywords/points.h"
#include "keywords/sensors.h"
#include "keywords/shared_names.h"

#include "messages/message_log.h"
#include "text/cell_report.h"

namespace keldrin {
namespace {

using namespace rows;

constexpr std::array<std::string_view, 7> ComponentNames = {"EX", "EY", "EZ",    "HX",
                                                            "HY", "HZ", "REFOFF"};
constexpr std::array<std::string_view, 5> NumberTypeNames = {"STN NUMBER", "STN #", "OFFSET",
                                                             "N-SPACING", "ANTENNA #"};

bool takeAnswer(const Reading &reading, std::string_view token, std::string_view label,
                bool &value) {
    return Val_Read_YesNo(reading.record.where, token, label, value, value) == CellRead;
}

/// One channel's code. A code that cannot be decoded is reported and leaves the channel alone.
template <class Code, int (*Decode)(std::string_view token, Code &code)>
bool takeCode(const Reading &reading, std::string_view token, std::string_view label, Code &value) {
    Code code;
    token = token.substr(0, token.find_first_of(",;")); // a last delimiter belongs to its token
    if (isEmptyCell(token)) {
        return false;
    }
    if (Decode(token, code) != 0) {
        const RecordLine &where = reading.record.where;
        reportRecord(where, false,
                     {"Ch_MD_READ.Error while reading " + std::string(reading.record.key),
                      std::string(label) + " = " + std::string(token) + " in record # " +
                          std::to_string(where.number),
                      where.line});
        return false;
    }
    value = code;
    return true;
}

template <auto Member>
constexpr KeywordRow point(std::string_view keyword, std::string_view label, Limits limits) {
    return irregular(keyword, readEach<Member, takeTokenPoint>, limits, label);
}

template <auto Member>
constexpr KeywordRow answer(std::string_view keyword, std::string_view label) {
    return irregular(keyword, readEach<Member, takeAnswer>, Unlimited, label);
}

constexpr Limits LabRange = between(LengthRange.low, MostReal);
constexpr Limits VoltRange = between(-10000.0, 10000.0);
constexpr Limits GainRange = between(0.01, MostReal);
constexpr auto MostFloat = static_cast<double>(std::numeric_limits<float>::max());
constexpr Limits ExtGainRange = inWords(above(0.01, MostFloat), " <= 0.01 or > ");

// Angles and lengths of channels are plain numbers here: no bearings, no units.
constexpr auto ChRows = std::to_array<KeywordRow>({
    number<&ChMetadata::NumOn>("NUMON", between(1.0, 16.0)),
    enumeration<&ChMetadata::Cmp>("CMP", "Ch.Cmp[", ComponentNames),
    enumeration<&ChMetadata::NumberType>("NUMBERTYPE", "Ch.NumberType[", NumberTypeNames),
    number<&ChMetadata::Stn>("STN", StationRange, "Ch.Stn["),
    text<&ChMetadata::StnName>("STNNAME"),
    number<&ChMetadata::Number>("NUMBER", StationRange, "Ch.Number["),
    number<&ChMetadata::Area>("AREA", Unlimited, "Ch.Area["),
    number<&ChMetadata::LabID>("LABID", Unlimited, "Ch.LabID["),
    text<&ChMetadata::LabName>("LABNAME"),
    number<&ChMetadata::LabLength>("LABLENGTH", LabRange, "Ch.LabLength["),
    number<&ChMetadata::LabArea>("LABAREA", LabRange, "Ch.LabArea["),
    number<&ChMetadata::Azimuth>("AZIMUTH", CircleRange, "Ch.Azimuth["),
    number<&ChMetadata::Incl>("INCL", SlopeRange, "Ch.Incl["),
    irregular("SENSOR", readSensors<&ChMetadata::Sensor, &ChMetadata::AntSN>, Unlimited,
              "Ch.Sensor["),
    point<&ChMetadata::Tx1>("TX1", "Ch.Tx1[", StationRange),
    point<&ChMetadata::Tx2>("TX2", "Ch.Tx2[", StationRange),
    point<&ChMetadata::Rx1>("RX1", "Ch.Rx1[", StationRange),
    point<&ChMetadata::Rx2>("RX2", "Ch.Rx2[", StationRange),
    point<&ChMetadata::Lat>("LAT", "Ch.Lat[", SlopeRange),
    point<&ChMetadata::Lon>("LON", "Ch.Lon[", between(-180.0, 180.0)),
    number<&ChMetadata::Length>("LENGTH", between(0.0, MostReal), "Ch.Length["),
    number<&ChMetadata::Factor>("FACTOR", atMost(MostReal), "Ch.Factor["),
    number<&ChMetadata::Vmin>("VMIN", VoltRange, "Ch.Vmin["),
    number<&ChMetadata::Vmax>("VMAX", VoltRange, "Ch.Vmax["),
    number<&ChMetadata::AntScale>("ANTSCALE", Unlimited, "Ch.AntScale["),
    enumeration<&ChMetadata::Unit>("UNIT", "Ch.Unit[", IPNames),
    number<&ChMetadata::PreAmp>("PREAMP", GainRange, "Ch.PreAmp["),
    number<&ChMetadata::GainFactor>("GAINFACTOR", GainRange, "Ch.GainFactor["),
    irregular("GAIN", readEach<&ChMetadata::Gain, takeCode<ChannelGain, Ch_Decode_Gain>>, Unlimited,
              "Ch.Gain["),
    number<&ChMetadata::ExtGain>("EXTGAIN", ExtGainRange, "Ch.ExtGain["),
    irregular("STATUS", readEach<&ChMetadata::Status, takeCode<ChannelStatus, Ch_Decode_Status>>,
              Unlimited, "Ch.Status["),
    text<&ChMetadata::Notch>("NOTCH"),
    text<&ChMetadata::HighPass>("HIGHPASS"),
    text<&ChMetadata::LowPass>("LOWPASS"),
    text<&ChMetadata::Alias>("ALIAS"),
    number<&ChMetadata::SP>("SP", between(-20000.0, 20000.0), "Ch.SP["),
    number<&ChMetadata::CRes>("CRES", Unlimited, "Ch.CRES["),
    number<&ChMetadata::CCap>("CCAP", Unlimited, "Ch.CCAP["),
    answer<&ChMetadata::Skip>("SKIP", "Ch.Skip["),
    answer<&ChMetadata::Flip>("FLIP", "Ch.Flip["),
    number<&ChMetadata::QdrBox>("QDRBOX", atLeast(0), "Ch.QdrBox["),
    number<&ChMetadata::QdrSlot>("QDRSLOT", between(1.0, 16.0), "Ch.QdrSlot["),
    text<&ChMetadata::ADCardSN>("ADCARDSN"),
    number<&ChMetadata::AntSN>("ANTSN", atLeast(0), "Ch.AntSN["),
});

} // namespace

constinit const GroupTable ChGroup = groupTable<ChMetadata>("Ch", ChRows);

int Ch_MD_Read(const KeywordRecord &record, Metadata &metadata) {
    return readGroup(ChGroup, record, metadata);
}

} // namespace keldrin
