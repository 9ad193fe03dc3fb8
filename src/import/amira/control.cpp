#include "base/index.h"
#include "base/real.h"
#include "import/amira/record.h"

#include "base/number_text.h"
#include "messages/message_log.h"

#include <algorithm>
#include <string>
#include <vector>

namespace keldrin {

namespace {

constexpr std::string_view ControlWarning = "AMIRA input WARNING: ";

constexpr float MillisecondsPerMicrosecond = 0.001F;

template <class Target, class T>
void takeGiven(Target &target, const Sourced<T> &source) {
    if (source.level > 0) {
        target = source.value;
    }
}

template <std::size_t N, std::size_t M>
void takeGiven(FixedText<N> &target, const SourcedText<M> &source) {
    if (source.level > 0 && !source.value.isBlank()) {
        target = source.value.view();
    }
}

// A length of the keyword records, which is in metres, in the project's unit.
void takeLength(float &target, const SourcedReal &metres, int unitIndex) {
    if (metres.level > 0) {
        target = metres.value / LengthUnitMetres[asIndex(unitIndex - 1)];
    }
}

void takeVertices(const TxMetadata &tx, AmiraRecord &record) {
    std::vector<LoopVertex> given;
    for (const SourcedPoint &point : tx.XYZ) {
        if (point.level > 0 && isPresent(point.value[0]) && isPresent(point.value[1])) {
            given.push_back({point.value[0], point.value[1], point.value[2]});
        }
    }
    if (given.size() < 3) {
        return;
    }
    if (given.size() > LoopVertices) {
        ReportWarning({"AMIRA input WARNING: the survey information file names " +
                           std::to_string(given.size()) + " loop vertices",
                       "The first " + std::to_string(LoopVertices) + " are used."});
        given.resize(LoopVertices);
    }
    record.vertices = {};
    std::copy(given.begin(), given.end(), record.vertices.begin());
}

template <std::size_t N>
void setText(FixedText<N> &target, const FixedText<N> &text) {
    if (!text.isBlank()) {
        target = text;
    }
}

template <class T>
void setPresent(T &target, T value) {
    if (isPresent(value)) {
        target = value;
    }
}

template <class T>
void setPositive(T &target, T value) {
    if (value > T{0}) {
        target = value;
    }
}

void warn(const std::string &what, const std::string &consequence) {
    ReportWarning({std::string(ControlWarning) + what, consequence});
}

} // namespace

void warnOfGuesses(const AmiraRecord &record) {
    if (record.unitIsGuessed) {
        warn("the unit " + record.TEMUnit.str() + " is no known name (uV/A, nV/Am2, nT/sec)",
             "It is taken as " + std::string(nameOf(AmiraUnitNames, record.unitIndex)) + ".");
    }
    if (!record.hasTxFreq && isPresent(record.frequencyNumber)) {
        warn("there is no TXFREQ, but FREQUENCY is a number",
             messageNumber(record.baseFrequency()) + " Hz is taken.");
    }
}

void AMR_From_Metadata(const SurveyModel &model, AmiraRecord &record) {
    const Metadata &from = model.metadata;
    const int unit = model.control.LengthUnitsIndex;
    takeGiven(record.JobName, from.Job.Name);
    takeGiven(record.JobArea, from.Job.Area);
    takeGiven(record.JobFor, from.Job.For);
    takeGiven(record.JobBy, from.Job.By);
    takeGiven(record.JobNumber, from.Job.Number);
    takeGiven(record.Date, from.Job.Date);
    if (from.Survey.Array.level > 0) {
        record.arrayIndex = limited(from.Survey.ArrayIndex, FixedLoop, CoincidentLoop);
        record.Config = amiraArrayName(record.arrayIndex);
        record.hasConfig = true;
    }
    takeGiven(record.Line, from.Line.Name);
    if (from.Line.Number.level > 0) {
        record.LineNumber = static_cast<float>(from.Line.Number.value);
    }
    // The azimuths of line and loop are in the control values already, each with its own source.
    takeGiven(record.RxArea, from.Rx.Area);
    takeGiven(record.RxAreaXYZ[0], from.Rx.AreaX);
    takeGiven(record.RxAreaXYZ[1], from.Rx.AreaY);
    takeGiven(record.RxAreaXYZ[2], from.Rx.AreaZ);
    record.hasArea = from.Rx.Area.level > 0 || from.Rx.AreaX.level > 0 || from.Rx.AreaY.level > 0 ||
                     from.Rx.AreaZ.level > 0;
    if (from.Rx.AntDelay.level > 0) {
        record.AntDelay = from.Rx.AntDelay.value * MillisecondsPerMicrosecond;
    }
    takeGiven(record.TxArea, from.Tx.Area);
    takeLength(record.XTxLength, from.Tx.LengthX, unit);
    takeLength(record.YTxLength, from.Tx.LengthY, unit);
    takeGiven(record.TxTurn, from.Tx.Turns);
    if (from.Tx.Center.level > 0) {
        record.XTxCenter = from.Tx.Center.value[0];
        record.YTxCenter = from.Tx.Center.value[1];
        record.ZTxCenter = from.Tx.Center.value[2];
    }
    takeGiven(record.XTxCenter, from.Tx.CenterX);
    takeGiven(record.YTxCenter, from.Tx.CenterY);
    takeVertices(from.Tx, record);
    takeGiven(record.TxFreq, from.Tx.Freq);
    record.hasTxFreq = from.Tx.Freq.level > 0;
    if (from.Tx.Ramp.level > 0) {
        record.TurnOff = from.Tx.Ramp.value * MillisecondsPerMicrosecond;
    }
    takeGiven(record.Current, from.Tx.Amp);
}

void AMR_To_Control_Values(const AmiraRecord &record, ControlValues &control) {
    ReportInfoLine("Set STD namelist from AMIRA keyword values.");
    setText(control.JobName, record.JobName);
    setText(control.JobArea, record.JobArea);
    setText(control.JobFor, record.JobFor);
    setText(control.JobBy, record.JobBy);
    setText(control.JobNumber, record.JobNumber);
    setText(control.JobDate, record.Date);
    if (!record.Line.isBlank()) {
        control.LineName = record.Line.view();
    }
    setPresent(control.LineNumber, record.LineNumber);
    setPresent(control.LineAzimuth, record.Azimuth);
    setPresent(control.TxAzimuth, record.Azimuth);
    if (!isPresent(control.TxAzimuth) && isPresent(record.sideAzimuth)) {
        // Else a turned loop would be taken to lie along the line.
        control.TxAzimuth = record.sideAzimuth;
        ReportInfoLine("The azimuth of the loop is that of its first side, " +
                       std::to_string(nearestInt(record.sideAzimuth)) + " degrees.");
    }
    if (record.unitIndex < 1 || record.unitIndex > static_cast<int>(AmiraUnitNames.size())) {
        ReportError({"AMIRA input ERROR:",
                     "File's TEM units = " + record.TEMUnit.str() + " not uV/A, nV/Am2 or nT/sec"});
    } else {
        setTEMUnits(control, NanovoltPerAmpereSquareMetre);
    }
    setSurveyType(control, limited(record.arrayIndex, FixedLoop, CoincidentLoop));
    setPositive(control.NTxTurn, record.TxTurn);
    setPositive(control.XTxLength, record.XTxLength);
    setPositive(control.YTxLength, record.YTxLength);
    setPresent(control.XTxCenter, record.XTxCenter);
    setPresent(control.YTxCenter, record.YTxCenter);
    if (record.TurnOff >= 0.0F) {
        control.TxRamp = 1000.0F * record.TurnOff;
    }
    setPositive(control.TxFreq, record.baseFrequency());
    setPositive(control.RxArea, record.RxArea);
    setPresent(control.XRxOffset, record.XRxOffset);
    setPresent(control.YRxOffset, record.YRxOffset);
}

} // namespace keldrin
