#pragma once

#include "model/metadata_value.h"

namespace keldrin {

// What a receiver has said of itself, its clock and its channels. No result depends on it; reading
// it shows the user faults in the field records.

inline constexpr std::size_t MostChannels = 16; ///< also the most cards of a receiver

using ValueText = FixedText<32>; ///< a whole value of a record
using SourcedValueText = Sourced<ValueText>;
/// One value a channel or card; the level is that of the whole list.
template <class T>
using SourcedList = Sourced<std::array<T, MostChannels>>;

template <class T>
constexpr SourcedList<T> everyChannel(const T &value) {
    return {filledArray<T, MostChannels>(value)};
}

/// Indices of enumerations are 1-based; 0 is not set.
struct QdrMetadata {
    SourcedInt Type{3}; ///< 3 is QDRC
    SourcedValueText File;
    SourcedValueText ProgVer;
    SourcedValueText SN;
    SourcedValueText FPSN;
    SourcedValueText Operator;
    SourcedValueText TCardSN;
    SourcedValueText Sync;
    SourcedList<ValueText> ADCardSN;
    SourcedList<int> ADCardSND;
    SourcedList<ValueText> ADCardVer;
    SourcedList<ValueText> ADCardFeat;
    SourcedValueText CardType;
    SourcedInt SigSource;
    SourcedReal CalVolts{20.0F}; ///< volts
    SourcedReal Bat;             ///< volts
    SourcedReal Amp;             ///< A
    SourcedReal Temp;            ///< deg C
    SourcedReal Humid;           ///< percent
    SourcedInt NumCard{1};
    SourcedList<int> Number;
    SourcedList<int> Ch;
    SourcedValueText Date;
    SourcedDouble Time; ///< hours
    SourcedDoubles<2> Blk{{1.0, 0.0}};
    SourcedInt Setup;
    SourcedInt AcqMethod;
    SourcedInt GainMode;
    SourcedInt GainMethod;
    GroupTail tail;
};

struct GpsMetadata {
    SourcedDouble Lat; ///< degrees
    SourcedDouble Lon; ///< degrees
    SourcedDouble Alt; ///< m
    SourcedValueText Datum;
    SourcedValueText Proj;
    SourcedInt UTMZone; ///< below 0 in the southern hemisphere
    SourcedPoint UTMXYZ;
    SourcedInt Week;
    SourcedDouble Sec;
    SourcedDouble LocalTimeOffset; ///< hours
    SourcedInt LeapSecond{16};
    SourcedInt NumSat;
    SourcedReal PDOP;
    SourcedInt Status;
    SourcedReal TCDAC;
    SourcedValueText SN;
    SourcedValueText FW;
    SourcedValueText SW;
    GroupTail tail;
};

/// The amplifier stages of a channel, from a code such as 356-2. Stages and divisor are 1-based
/// places in the table of gain digits; 0 is not one.
struct ChannelGain {
    FixedText<8> code{"NONE"};
    float factor = 1.0F; ///< product of the stages by the divisor
    std::array<int, 3> stages{};
    int divisor = 0;
};

/// A status word of four hexadecimal digits and its bit fields, lowest first.
struct ChannelStatus {
    FixedText<4> code{"000o"};
    std::array<int, 7> fields{};
};

/// The converter of every channel; no record changes it.
struct ChannelConverter {
    FixedText<8> name{"24BIT"};
    int bits = 24;
    std::array<float, 2> inputScale = {100.0F, 1.0F};
    float lowerLimit = 2.98E-7F;
    std::array<float, 2> outputScale = {1.0F, 1000.0F};
    float smallest = 1.0E-12F;
};

struct ChMetadata {
    SourcedInt NumOn;
    SourcedList<int> Cmp; ///< index, 0 blank
    SourcedList<int> NumberType;
    SourcedList<double> Stn;
    SourcedList<ValueText> StnName;
    SourcedList<double> Number;
    SourcedList<float> Area;
    SourcedList<int> LabID;
    SourcedList<ValueText> LabName;
    SourcedList<float> LabLength;
    SourcedList<float> LabArea;
    SourcedList<float> Azimuth; ///< degrees
    SourcedList<float> Incl;    ///< degrees
    SourcedList<NamedSensor> Sensor;
    SourcedList<XyzPoint> Tx1 = everyChannel(MissingPoint);
    SourcedList<XyzPoint> Tx2 = everyChannel(MissingPoint);
    SourcedList<XyzPoint> Rx1 = everyChannel(MissingPoint);
    SourcedList<XyzPoint> Rx2 = everyChannel(MissingPoint);
    SourcedList<XyzPoint> Lat = everyChannel(MissingPoint); ///< degrees
    SourcedList<XyzPoint> Lon = everyChannel(MissingPoint); ///< degrees
    SourcedList<float> Length;
    SourcedList<float> Factor = everyChannel(1.0F);
    SourcedList<float> Vmin;
    SourcedList<float> Vmax;
    SourcedList<float> AntScale; ///< uT/V
    SourcedList<int> Unit;
    SourcedList<float> PreAmp = everyChannel(1.0F);
    SourcedList<float> GainFactor;
    SourcedList<ChannelGain> Gain;
    SourcedList<float> ExtGain;
    SourcedList<ChannelStatus> Status;
    SourcedList<ValueText> Notch;
    SourcedList<ValueText> HighPass;
    SourcedList<ValueText> LowPass;
    SourcedList<ValueText> Alias;
    SourcedList<float> SP;
    SourcedList<float> CRes;                      ///< ohm
    SourcedList<float> CCap = everyChannel(1.0F); ///< farads
    SourcedList<bool> Skip;
    SourcedList<bool> Flip;
    SourcedList<int> QdrBox;
    SourcedList<int> QdrSlot;
    SourcedList<ValueText> ADCardSN;
    SourcedList<int> AntSN;
    ChannelConverter Converter;
    GroupTail tail;
};

} // namespace keldrin
