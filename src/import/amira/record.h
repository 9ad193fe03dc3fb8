#pragma once

#include "messages/message_log.h"
#include "model/survey_model.h"
#include "text/value_readers.h"

#include <array>
#include <initializer_list>
#include <string_view>

namespace keldrin {

// What the keywords of an AMIRA file have said: the values in force at one place of the file. Many
// are kept for completeness and used by no step. Lengths are in the file's unit.

/// A corner of the transmitter loop.
struct LoopVertex {
    double x = MissingValue;
    double y = MissingValue;
    double z = MissingValue;
};

inline constexpr std::size_t LoopVertices = 4;

/// Times of the channels of a file, msec, in order of channel.
struct ChannelTimes {
    /// What a list of times can give.
    enum List : std::size_t { Center, Width, Begin, End, Lists };

    std::array<WindowReals, Lists> values = {
        filledArray<float, MaxWindows>(MissingValue), filledArray<float, MaxWindows>(0.0F),
        filledArray<float, MaxWindows>(MissingValue), filledArray<float, MaxWindows>(MissingValue)};
    std::array<int, Lists> listed{}; ///< values of each keyword list
    int NumChannels = 0;             ///< channels with usable times
};

struct AmiraRecord {
    FixedText<128> JobName;
    FixedText<128> JobArea;
    FixedText<128> JobFor;
    FixedText<128> JobBy;
    FixedText<16> JobNumber; ///< of the survey information file
    FixedText<16> Date;

    FixedText<256> DataType = "TEM";
    FixedText<16> Config = "FIXEDLOOP";
    bool hasConfig = false;
    int arrayIndex = FixedLoop; ///< of Config
    FixedText<64> Instrument = "TORVU";
    FixedText<16> Frequency = "Z1";       ///< a name, not the base frequency, unless it is a number
    float frequencyNumber = MissingValue; ///< of Frequency, Hz
    FixedText<16> TEMUnit;
    int unitIndex = 0;          ///< of TEMUnit, see AmiraUnitNames; 0 none
    bool unitIsGuessed = false; ///< TEMUnit is no known name

    FixedText<64> Line; ///< whole, so that names that agree in 16 characters are distinguished
    float LineNumber = MissingValue;
    FixedText<16> Station;
    double StationNumber = MissingValue;
    float Azimuth = MissingValue; ///< of the line, degrees
    double East = MissingValue;
    double North = MissingValue;
    double Elevation = MissingValue;
    float Depth0RL = 0.0F;
    float Depth = MissingValue;
    float Distance = MissingValue;

    FixedText<2> Component = "Z";
    int componentCode = 3; ///< of Component, see amiraComponent()
    float RxArea = 10000.0F;
    std::array<float, ComponentAxes> RxAreaXYZ = {10000.0F, 10000.0F, 10000.0F}; ///< m^2
    std::array<bool, ComponentAxes> hasOwnArea{}; ///< the file has an area keyword of the axis
    bool hasArea = false;                         ///< an area was given
    float XRxOffset = 0.0F;                       ///< receiver ahead of the transmitter
    bool hasXRxOffset = false;
    float YRxOffset = 0.0F;
    float ZRxOffset = 0.0F;
    float AntDelay = 0.0F; ///< msec
    FixedText<8> Gain = "1";

    FixedText<16> Loop = "0";
    double LoopNumber = 0.0;
    bool hasLoop = false; ///< the file names a loop
    FixedText<16> LoopShape = "SQUARE";
    float TxArea = MissingValue; ///< m^2
    float XTxLength = 0.0F;
    float YTxLength = 0.0F;
    int TxTurn = 1;
    double XTxCenter = MissingValue;
    double YTxCenter = MissingValue;
    double ZTxCenter = MissingValue;
    FixedText<256> TxFile;
    std::array<LoopVertex, LoopVertices> vertices;
    float sideAzimuth = MissingValue; ///< of the vertices' first side, when they gave the sides

    float TxFreq = 1.0F; ///< base frequency, Hz; see baseFrequency()
    bool hasTxFreq = false;
    float OnTime = MissingValue;  ///< msec
    float OffTime = MissingValue; ///< msec
    float TurnOn = 0.0F;          ///< msec
    float TurnOff = 0.0F;         ///< ramp, msec
    float Current = MissingValue; ///< A

    double XCollar = MissingValue;
    double YCollar = MissingValue;
    double ZCollar = MissingValue;
    float Dip = 90.0F;
    FixedText<2> Polarity = "+";
    float VPri = 0.0F;

    FixedText<256> ChannelFile; ///< as a keyword names it; blank: the data file's own
    float InitDelay = 0.0F;     ///< msec
    int NumTimes = 0;
    ChannelTimes times;

    /// Hz: TXFREQ, else a FREQUENCY that is a number, else the default.
    [[nodiscard]] float baseFrequency() const {
        return hasTxFreq || !isPresent(frequencyNumber) ? TxFreq : frequencyNumber;
    }
};

/// TEMUNIT: the values of a file by 1-based index.
inline constexpr std::array<std::string_view, 3> AmiraUnitNames = {"UV/A", "NV/AM2", "NT/SEC"};
inline constexpr int AmiraMicrovolts = 1; ///< uV/A of the coil
inline constexpr int AmiraNanotesla = 3;  ///< nT/sec, not per ampere

/// Other spellings of these, in capitals.
struct AmiraUnitSpelling {
    std::string_view name;
    int index;
};
inline constexpr std::array AmiraUnitSpellings = {AmiraUnitSpelling{"NV/AM^2", 2},
                                                  AmiraUnitSpelling{"NT/S", AmiraNanotesla}};

/// The survey array of a CONFIG text in capitals, 1..4.
int amiraArrayIndex(std::string_view config);

/// The text of an array in labels of lines: FXL, MVL, INL or COL.
std::string_view amiraArrayName(int arrayIndex);

/// The component of a text: X 1, Y 2, Z 3, I 4 and C 5, which count as Z, A 6, U 7, V 8, which are
/// no dB/dt; 0 for a text that holds none of these letters. Two characters are looked at, in any
/// case; the letter that stands first in this list decides.
int amiraComponent(std::string_view text);

/// The number in a cell such as "1200N": from the first of "-0123456789" to the last digit, in free
/// form. A letter W or S after it makes the other sign.
/// returns  0; -1 without a digit; 1 when it cannot be read as one number of at most 1.0E9 in
///          size ("12+50"); `value` is then unchanged
int Cell_to_AmiraNumber(std::string_view cell, double &value);

/// The same; a number that cannot be read is reported.
int AMR_Number(const RecordLine &where, std::string_view cell, double &value);

/// Report faults of a record, unless it is quiet: an earlier pass has reported them.
void reportAt(const RecordLine &where, std::initializer_list<MessageLine> lines);
void warnAt(const RecordLine &where, std::initializer_list<MessageLine> lines);

/// Takes what the survey information file has said over the defaults.
void AMR_From_Metadata(const SurveyModel &model, AmiraRecord &record);

/// Centre, sides and area of the loop from its vertices, where keywords have not given them. Puts
/// the vertices in a counterclockwise order, those of a crossed loop too (reported).
/// metresPerUnit  of the vertices' coordinates
/// returns        0, or 1 with fewer than three vertices
int AMR_Loop_Geometry(AmiraRecord &record, double metresPerUnit);

/// Sides that are still unknown: of a square of the loop's area, or equal to the other side.
void settleLoopSides(AmiraRecord &record);

/// The values in force into the control values. A unit that is not one of the three is reported.
void AMR_To_Control_Values(const AmiraRecord &record, ControlValues &control);

/// One warning for a unit, and one for a frequency, that the file does not state.
void warnOfGuesses(const AmiraRecord &record);

} // namespace keldrin
