#pragma once

#include "base/fixed_text.h"
#include "base/index.h"
#include "base/real.h"
#include "model/enumerations.h"
#include "model/metadata.h"
#include "model/sounding_index.h"
#include "model/source_file.h"

#include <array>
#include <cmath>
#include <set>
#include <span>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace keldrin {

// The one in-memory state of a run. Every flow receives it by reference and changes it in place.
// Indices that the program shows or files hold are 1-based; C++ containers are indexed from 0.

inline constexpr int MaxWindows = 128;       ///< time windows of a sounding
inline constexpr int MaxLayers = 48;         ///< layers of a sounding's model
inline constexpr int MaxWaveformPoints = 32; ///< points of the transmitter waveform
inline constexpr int MaxHeaderLines = 4;
inline constexpr int MaxSurveyLines = 32;
inline constexpr int ComponentAxes = 3; ///< X, Y, Z
inline constexpr int AxisZ = 2;         ///< from 0

/// A skipped window's stored error is its true error in percent plus this.
inline constexpr float SkipOffset = 1000.0F;

/// The true error of a window, whether it is skipped or not.
inline float trueError(float temErr) {
    return std::fmod(temErr, SkipOffset);
}
inline bool isSkipped(float temErr) {
    return temErr > SkipOffset;
}
/// The stored error with the skip mark set or cleared.
inline float withSkipMark(float temErr, bool skipped) {
    return skipped ? trueError(temErr) + SkipOffset : trueError(temErr);
}

using WindowReals = std::array<float, MaxWindows>;
using LayerReals = std::array<float, MaxLayers>;

/// One sounding: observed data by time window and the layered model below it.
/// The initialisers are the reset values.
struct SoundingRecord {
    double Station = MissingValue; ///< plotted station: mid of Rx and Tx for Moving-Loop, else Rx
    double East = MissingValue;    ///< LengthUnits
    double North = MissingValue;   ///< LengthUnits
    double Elevation = 0.0;        ///< LengthUnits
    double RxStn = MissingValue;   ///< receiver station, first identity key
    double TxStn = MissingValue;   ///< transmitter station or loop number, second identity key
    float TxFreq = MissingValue;   ///< Hz, third identity key
    int NumTW = 0;                 ///< windows in use, 0..128

    WindowReals TWcenter = filledArray<float, MaxWindows>(MissingValue); ///< msec, ascending
    WindowReals TWwidth = filledArray<float, MaxWindows>(0.0F);          ///< msec
    WindowReals TEMobs = filledArray<float, MaxWindows>(MissingValue);   ///< nV/(A m2)
    WindowReals TEMerr =
        filledArray<float, MaxWindows>(1.0F); ///< percent, plus SkipOffset if skipped
    WindowReals TEMcalc = filledArray<float, MaxWindows>(MissingValue); ///< of the model
    /// X, Y and Z weight of each window; not zero switches the component on
    std::array<std::array<float, ComponentAxes>, MaxWindows> TEMwgt{};
    WindowReals AResObs = filledArray<float, MaxWindows>(MissingValue);   ///< ohm-m, of TEMobs
    WindowReals AResSpare = filledArray<float, MaxWindows>(MissingValue); ///< read by no flow
    WindowReals AResCalc = filledArray<float, MaxWindows>(MissingValue);  ///< ohm-m, of TEMcalc

    int NumLayer = 0;                                                ///< layers in use, 0..48
    LayerReals ResInv = filledArray<float, MaxLayers>(MissingValue); ///< ohm-m
    LayerReals ThkInv = filledArray<float, MaxLayers>(MissingValue); ///< LengthUnits
    LayerReals ZMid = filledArray<float, MaxLayers>(0.0F); ///< LengthUnits, downward negative
    LayerReals Res0 = filledArray<float, MaxLayers>(MissingValue); ///< ohm-m, starting model
    LayerReals Rerr0 = filledArray<float, MaxLayers>(100.0F);      ///< percent
    LayerReals dzW = filledArray<float, MaxLayers>(1.0F);          ///< smoothness weight
    LayerReals Rerr = filledArray<float, MaxLayers>(100.0F);       ///< percent
    LayerReals Rsns = filledArray<float, MaxLayers>(0.0F);         ///< sensitivity
};
static_assert(std::is_trivially_copyable_v<SoundingRecord>);

/// Windows in use, 0..128 whatever the record holds.
inline std::size_t windowCount(const SoundingRecord &record) {
    return asIndex(limited(record.NumTW, 0, MaxWindows));
}
/// Layers in use, 0..48 whatever the record holds.
inline std::size_t layerCount(const SoundingRecord &record) {
    return asIndex(limited(record.NumLayer, 0, MaxLayers));
}

/// The project's single values, named as in the project file. The initialisers are the defaults;
/// the limits that readers and dialogs force stand with their tables.
struct ControlValues {
    FixedText<32> ProgramVersion = "KELDRIN v4.00i";
    std::array<FixedText<128>, MaxHeaderLines> Header; ///< line 1 is made from the clock
    FixedText<128> JobName;
    FixedText<128> JobArea;
    FixedText<128> JobFor; ///< client
    FixedText<128> JobBy;  ///< contractor
    FixedText<16> JobNumber;
    FixedText<16> JobDate;
    FixedText<16> LineName;
    float LineNumber = 0.0F;
    float LineAzimuth = MissingValue; ///< degrees clockwise from north
    FixedText<16> SurveyType = "Moving-Loop";
    FixedText<3> LengthUnits = "m";
    float StnScale = 1.0F; ///< LengthUnits per station number
    FixedText<8> TEMUnits = "uV/A";
    double TxStn = 0.0; ///< selected transmitter of a Fixed-Loop line
    int NTxTurn = 1;
    float XTxLength = 100.0F; ///< LengthUnits
    float YTxLength = 100.0F; ///< LengthUnits
    double XTxCenter = 0.0;   ///< Fixed-Loop centre, East
    double YTxCenter = 0.0;   ///< Fixed-Loop centre, North
    float TxAzimuth = 90.0F;  ///< of the loop's x axis, degrees clockwise from north
    float TxRamp = 50.0F;     ///< usec
    float TxFreq = 1.0F;      ///< Hz
    int NTxWF = 0;            ///< waveform points in use
    float TxWFT0 = 0.0F;      ///< time origin of the windows, msec
    std::array<float, MaxWaveformPoints> TxWFT{}; ///< msec
    std::array<float, MaxWaveformPoints> TxWFI{}; ///< relative current, -1..1
    float RxArea = 10000.0F;                      ///< effective coil area, m^2
    float XRxOffset = 0.0F;                       ///< along the line
    float YRxOffset = 0.0F;                       ///< across the line
    float ErrorFloor = 1.0F;                      ///< percent
    float DataCutoff = 100.0F; ///< percent; data with this error or more are dropped
    float dpWeight = 1.0F;
    float dxWeight = 1.0F;
    float dzWeight = 3.0F;
    float dzzWeight = 1.0F;
    int Niteration = 8;
    int NumStn = 2048; ///< records to allocate when a project is read
    int NumTW = 128;
    int NumLayer = 0;       ///< layers in the four arrays below
    LayerReals Res0Layer{}; ///< ohm-m
    LayerReals Res0Error = filledArray<float, MaxLayers>(500.0F); ///< percent
    LayerReals Thk0Layer{};                                       ///< LengthUnits
    LayerReals Thk0Error = filledArray<float, MaxLayers>(500.0F); ///< percent

    int SurveyTypeIndex = MovingLoop;
    int LengthUnitsIndex = Metres;
    int TEMUnitsIndex = MicrovoltPerAmpere;
};

/// Station rescaling: begin and increment of one numbering.
struct StationScale {
    double begin = 0.0;
    double increment = 1.0;
};

/// Station rescaling and coil areas of one survey line. The initialisers are the defaults.
struct LineScaling {
    StationScale StnRescaleQdr;    ///< numbers in the file
    StationScale StnRescaleClient; ///< numbers on the line
    std::array<float, ComponentAxes> RxAreaXYZ = {10000.0F, 10000.0F, 10000.0F}; ///< m^2
};

/// One survey line as the count pass of an import found it.
struct LineEntry {
    FixedText<16> LineLabel; ///< text of the Select Line list
    FixedText<16> LineName;  ///< as written in the file
    int ArrayIndex = 0;      ///< Survey.Array while counting
    int Transients = 0;
    std::array<int, ComponentAxes> ComponentTransients{}; ///< transients by component axis
    int Soundings = 0;   ///< distinct soundings at the most; 0 where the count pass cannot know
    LineScaling scaling; ///< in force at the line's last row, until the user changes it
};

/// What the count pass found: at most 32 lines.
struct LineTable {
    std::array<LineEntry, MaxSurveyLines> entries;
    int LineCount = 0;
    int SelectedLine = 0; ///< 1-based; 0 before a choice

    /// The lines that were found.
    [[nodiscard]] std::span<const LineEntry> found() const {
        return std::span(entries).first(asIndex(LineCount));
    }
    /// The selected line; there must have been a choice.
    [[nodiscard]] const LineEntry &selected() const { return entries[asIndex(SelectedLine - 1)]; }
};

/// What an import takes from the data input dialog: array and scaling of the selected line.
struct ImportPreset : LineScaling {
    int SelectedArrayIndex = 0;
    /// TxStn and RxStn of soundings whose TxStn is to be settled from the offset between them
    std::set<std::pair<double, double>> TxByOffset;
};

/// A station number of the file as a position on the line.
inline double rescaledStation(const LineScaling &scaling, double station) {
    return (station - scaling.StnRescaleQdr.begin) * scaling.StnRescaleClient.increment /
               scaling.StnRescaleQdr.increment +
           scaling.StnRescaleClient.begin;
}

struct SurveyModel {
    ControlValues control;
    Metadata metadata;
    ImportPreset preset;
    LineTable lines;
    ModelSource source; ///< the files that hold what stands here, as far as it was read or written

    std::vector<SoundingRecord> hTrn; ///< its size is SoundingCapacity; it never shrinks
    int SoundingCount = 0;            ///< records in use; 0 means that no project is loaded

    SoundingIndex keyIndex; ///< of hTrn, for find and add; cleared by what reorders hTrn

    // Derived by the project reader and the importers.
    int MaxTW = 0;           ///< largest NumTW
    float TimeRatio = 0.0F;  ///< largest TWcenter(last)/TWcenter(1)
    int ModelLayerCount = 0; ///< 2..48, eight layers a decade of time

    [[nodiscard]] int SoundingCapacity() const { return static_cast<int>(hTrn.size()); }

    /// The records in use; no more than there are.
    [[nodiscard]] std::span<SoundingRecord> soundings() { return std::span(hTrn).first(used()); }
    [[nodiscard]] std::span<const SoundingRecord> soundings() const {
        return std::span(hTrn).first(used());
    }

    /// One record by its number, 1..SoundingCapacity(), as the program shows it and files count.
    [[nodiscard]] SoundingRecord &sounding(int number) { return hTrn[asIndex(number - 1)]; }
    [[nodiscard]] const SoundingRecord &sounding(int number) const {
        return hTrn[asIndex(number - 1)];
    }

  private:
    [[nodiscard]] std::size_t used() const {
        return asIndex(limited(SoundingCount, 0, SoundingCapacity()));
    }
};

/// Selects a line of the table, 1-based and held to the lines there are: its array and scaling
/// become the preset. Without a line nothing changes.
void selectLine(SurveyModel &model, int line);

/// Makes room for at least `requested` records and resets them all; SoundingCount becomes 0.
/// A table that is large enough is kept; a request below 1 without a table allocates nothing.
/// returns  0, or 1 when memory ran out (capacity and count are then 0). Does not report: the
///          caller has the message log, see allocationFailure()
int allocateSoundings(SurveyModel &model, int requested);

/// Sets every allocated record to its reset values, SoundingCount to 0.
void hTrn_Init(SurveyModel &model);

/// Sets all control values and their indices to the defaults, clears MaxTW, ModelLayerCount and
/// TimeRatio, and writes Header(1) from the clock.
void STD_Init_Namelist(SurveyModel &model);

/// Result of a find-or-add: 0 found, 1 added, 2 full.
enum class FindOrAdd { Found = 0, Added = 1, Full = 2 };

// The keys of records in use are set by the functions below alone while soundings are added; what
// sets or reorders them otherwise clears keyIndex, as allocating and resetting do.

/// The first record of a transmitter, frequency and receiver, 0-based; -1 without one. Stations
/// match within 100 spacings of the given one, frequencies within 5.
int hTrn_Find(SurveyModel &model, double TxStn, float TxFreq, double RxStn);

/// The same, and a new record with the three keys where there is none. When the table is full the
/// last record's keys are overwritten and its index is returned with Full; a table without capacity
/// gives index -1 and Full.
FindOrAdd hTrn_Find_Or_Add(SurveyModel &model, double TxStn, float TxFreq, double RxStn,
                           int &index);

/// Gives a record in use other stations.
void hTrn_Set_Stations(SurveyModel &model, int index, double TxStn, double RxStn);

// Normalisation of the enumerations: the index from what a file says, the text from the table.
void setSurveyType(ControlValues &control, int index);
void setLengthUnits(ControlValues &control, int index);
void setTEMUnits(ControlValues &control, int index);

/// Without regard to blanks and case: C gives Coincident, I In-, F Fixed-, anything else
/// Moving-Loop.
int surveyTypeIndexOf(std::string_view text);
/// A first letter F gives feet, anything else metres.
int lengthUnitsIndexOf(std::string_view text);
/// "NV" among the first four characters gives nV/Am2, anything else uV/A; pT/A cannot be reached.
int temUnitsIndexOf(std::string_view text);

/// Sets MaxTW, TimeRatio and ModelLayerCount from the soundings.
void deriveTimeRange(SurveyModel &model);

} // namespace keldrin
