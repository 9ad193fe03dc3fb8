#pragma once

#include "model/metadata_instruments.h"
#include "model/metadata_value.h"

#include <array>
#include <cstddef>

namespace keldrin {

// What the `$ group.keyword = value` records of field data and side files have said, one record a
// group. The initialisers are the values before anything is read: unset reals hold MissingValue,
// unset texts are blank. Lengths and areas are kept in metres, whatever the file's unit.

struct JobMetadata {
    SourcedText<128> Name;
    SourcedText<128> Area;
    SourcedText<128> For;
    SourcedText<128> By;
    SourcedText<16> Number;
    SourcedText<16> Date;
    SourcedText<128> Comment;
    GroupTail tail;
};

struct SurveyMetadata {
    SourcedInt AcqMethod{4}; ///< index; 4 is TRANSIENT
    SourcedText<8> Type{"TEM"};
    int TypeIndex = 2;
    int TypeNumber = 0; ///< the same token read as a number
    SourcedText<8> Array{"INL"};
    int ArrayIndex = 3; ///< 1..4 of a TEM survey are the survey types of the project
    SourcedText<16> Spread{"1"};
    SourcedText<32> Datum{"WGS84"};
    SourcedText<32> Proj{"UTM"};
    SourcedInt UTMZone{0};
    GroupTail tail;
};

/// Indices into the unit tables of the keyword reader, in the record's order.
struct UnitMetadata {
    SourcedInt Length{1}; ///< 1 m, 2 ft
    SourcedInt Time{2};
    SourcedInt V{3};
    SourcedInt E{2};
    SourcedInt B{1};
    SourcedInt Phase{1};
    int PhaseSign = 1; ///< 1 EM, 2 IP; its source level is that of Phase
    SourcedInt dBdt{1};
    SourcedInt Res{1};
    SourcedInt IP{1};
    GroupTail tail;
};

struct GridPoint {
    std::array<double, 4> pairs{}; ///< two coordinate pairs
    FixedText<16> name;
};

struct GridMetadata {
    Sourced<GridPoint> Ref1;
    Sourced<GridPoint> Ref2;
    Sourced<GridPoint> Calc;
    Sourced<GridPoint> XYOffset; ///< x and y are the first pair
    SourcedReal XAzimuth{90.0F};
    GroupTail tail;
};

struct LineMetadata {
    SourcedText<16> Name{"0"};
    FixedText<128> fullName{"0"}; ///< of Name, as far as the record goes
    SourcedText<16> Direction;
    SourcedText<16> Spread;
    SourcedDouble Number{0.0};
    SourcedReal Azimuth{90.0F};
    SourcedInt Type{1};
    GroupTail tail;
};

struct StnMetadata {
    SourcedDouble Number{0.0};
    SourcedText<16> Name{"0"};
    SourcedDouble QdrBeg{MissingValue};
    SourcedDouble QdrEnd{1.0E32};
    SourcedDouble QdrInc{MissingValue};
    SourcedDouble QdrUnitScale{MissingValue};
    SourcedDouble Beg{MissingValue};
    SourcedDouble Inc{MissingValue};
    SourcedDouble UnitScale{MissingValue};
    SourcedDouble Left{MissingValue};
    SourcedDouble Right{MissingValue};
    GroupTail tail;
};

inline constexpr int LoopPoints = 9; ///< indices 0..8 of the loop's corners, points and map corners
inline constexpr int ElectrodePoints = 5; ///< indices 0..4 of the receiver's points

template <std::size_t N>
inline constexpr auto MissingPoints = filledArray<SourcedPoint, N>({MissingPoint});

struct TxMetadata {
    SourcedDouble QdrStn{0.0};
    SourcedDouble Stn{0.0};
    std::array<SourcedPoint, LoopPoints> XYZ = MissingPoints<LoopPoints>;
    std::array<SourcedPoint, LoopPoints> Point = MissingPoints<LoopPoints>;
    std::array<SourcedPoint, LoopPoints> UTM = MissingPoints<LoopPoints>;
    SourcedPoint Center{MissingPoint};
    SourcedDouble CenterX{MissingValue};
    SourcedDouble CenterY{MissingValue};
    SourcedReals<3> HPR{{90.0F, 0.0F, 0.0F}};
    SourcedReal XAzimuth{90.0F};
    SourcedReal Azimuth{MissingValue}; ///< no default: an unset one follows the line
    SourcedReal Incl{0.0F};
    SourcedLength LengthX{{100.0F}}; ///< m
    SourcedLength LengthY{{100.0F}}; ///< m
    SourcedReal Area{10000.0F};      ///< m^2
    SourcedInt Turns{1};
    SourcedReals<16> Sense{filledArray<float, 16>(0.1F)};
    SourcedReal Amp{1.0F};
    SourcedReal Freq{1.0F}; ///< Hz
    SourcedInt NWaveform{0};
    SourcedInt NCycle{0};
    SourcedReal Duty{50.0F}; ///< percent
    SourcedReal Delay{0.0F}; ///< usec
    SourcedReal Ramp{0.0F};  ///< usec
    SourcedText<16> Type{"HVT"};
    SourcedText<16> SN{"0"};
    GroupTail tail;
};

struct RxMetadata {
    SourcedDouble QdrStn{0.0};
    SourcedDouble Stn{0.0};
    SourcedDoubles<3> PltXYZ{MissingPoint};
    SourcedDoubles<3> PltUTM{MissingPoint};
    SourcedDoubles<4> PltSXYZ{filledArray<double, 4>(MissingValue)};
    SourcedDoubles<5> PltSZXYZ{filledArray<double, 5>(MissingValue)};
    SourcedDoubles<6> PltSLZXYZ{filledArray<double, 6>(MissingValue)};
    std::array<SourcedPoint, ElectrodePoints> XYZ = MissingPoints<ElectrodePoints>;
    std::array<SourcedPoint, ElectrodePoints> UTM = MissingPoints<ElectrodePoints>;
    SourcedPoint Center{MissingPoint};
    SourcedDouble East{MissingValue};
    SourcedDouble North{MissingValue};
    SourcedDouble Elev{MissingValue};
    SourcedDouble Depth{MissingValue};
    SourcedReals<3> HPR{{90.0F, 0.0F, 0.0F}};
    SourcedReal XAzimuth{90.0F};
    SourcedReal Azimuth{MissingValue};
    SourcedReal Incl{0.0F};
    SourcedLength ASpace{{MissingValue}}; ///< m
    SourcedReal SSpace{MissingValue};
    SourcedLength LengthX{{MissingValue}}; ///< m
    SourcedLength LengthY{{MissingValue}}; ///< m
    SourcedReal Area{MissingValue};        ///< m^2, the last value read
    SourcedReal AreaX{MissingValue};
    SourcedReal AreaY{MissingValue};
    SourcedReal AreaZ{MissingValue};
    SourcedReal NSpace{MissingValue};
    SourcedText<8> Cmp{"Ex"};
    Sourced<NamedSensor> Sensor;
    SourcedInt AntSN{0};
    SourcedReal AntScale{MissingValue};
    SourcedReal CntRes{MissingValue};
    SourcedDouble SetupStn{MissingValue};
    SourcedLength SetupLength{{MissingValue}}; ///< m
    SourcedReal WireCap{MissingValue};
    SourcedReal AntDelay{MissingValue};   ///< usec
    SourcedReal AliasDelay{MissingValue}; ///< usec
    SourcedReal ADDelay{MissingValue};    ///< usec
    SourcedReal ADRamp{MissingValue};     ///< usec
    SourcedReal T0Delay{MissingValue};    ///< usec
    float Factor = 1.0F;
    GroupTail tail;
};

/// All groups that the dispatch of keyword records can reach.
struct Metadata {
    JobMetadata Job;
    SurveyMetadata Survey;
    UnitMetadata Unit;
    GridMetadata Grid;
    LineMetadata Line;
    StnMetadata Stn;
    QdrMetadata Qdr;
    GpsMetadata Gps;
    TxMetadata Tx;
    RxMetadata Rx;
    ChMetadata Ch;
};

/// Resets all groups: every value to its default, every source level to 0.
/// clear  false keeps the tails of the groups for later passes
void MD_Init(Metadata &metadata, bool clear);

/// Goes back to the values and source levels of an earlier moment. The tails of the groups stay, so
/// what has been reported since then is not reported a second time as if it were new.
void MD_Restore(Metadata &metadata, const Metadata &before);

} // namespace keldrin
