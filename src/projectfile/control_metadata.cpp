#include "base/index.h"
#include "projectfile/control_block.h"

namespace keldrin {

namespace {

template <std::size_t N, std::size_t M>
void takeText(FixedText<N> &target, const SourcedText<M> &source) {
    if (!source.value.isBlank()) {
        target = source.value.view();
    }
}

template <class T, class S>
void takeIfSet(T &target, const Sourced<S> &source) {
    if (isPresent(source.value)) {
        target = static_cast<T>(source.value);
    }
}

template <class T>
void takeIfAbove(T &target, const Sourced<T> &source, T low) {
    if (source.value > low) {
        target = source.value;
    }
}

/// A length in metres as a length in the project's unit.
void takeLength(float &target, const SourcedReal &metres, int unitIndex) {
    if (metres.value > 0.01F) {
        target = metres.value / LengthUnitMetres[asIndex(unitIndex - 1)];
    }
}

} // namespace

void Control_From_Metadata(SurveyModel &model) {
    const Metadata &from = model.metadata;
    ControlValues &control = model.control;
    takeText(control.JobName, from.Job.Name);
    takeText(control.JobArea, from.Job.Area);
    takeText(control.JobFor, from.Job.For);
    takeText(control.JobBy, from.Job.By);
    takeText(control.JobNumber, from.Job.Number);
    takeText(control.JobDate, from.Job.Date);
    takeText(control.LineName, from.Line.Name);
    takeIfSet(control.LineNumber, from.Line.Number);
    takeIfSet(control.LineAzimuth, from.Line.Azimuth);
    setSurveyType(control, from.Survey.ArrayIndex);
    setLengthUnits(control, from.Unit.Length.value);
    if (from.Tx.Stn.level > 0) {
        control.TxStn = from.Tx.Stn.value;
    }
    takeIfAbove(control.NTxTurn, from.Tx.Turns, 0);
    takeLength(control.XTxLength, from.Tx.LengthX, control.LengthUnitsIndex);
    takeLength(control.YTxLength, from.Tx.LengthY, control.LengthUnitsIndex);
    takeIfSet(control.XTxCenter, from.Tx.CenterX);
    takeIfSet(control.YTxCenter, from.Tx.CenterY);
    takeIfAbove(control.TxRamp, from.Tx.Ramp, 0.0F);
    takeIfAbove(control.TxFreq, from.Tx.Freq, 0.0F);
    const bool followsLine = from.Tx.Azimuth.level < from.Line.Azimuth.level;
    control.TxAzimuth = followsLine ? from.Line.Azimuth.value : from.Tx.Azimuth.value;
    takeIfAbove(control.RxArea, from.Rx.Area, 0.0F);
}

} // namespace keldrin
