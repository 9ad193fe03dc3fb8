#include "base/index.h"
#include "physics/apparent_resistivity.h"

#include "base/number_text.h"
#include "base/real.h"
#include "messages/message_log.h"
#include "physics/ordered_work.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <thread>
#include <vector>

namespace keldrin {

namespace {

constexpr int FewestSoundingsPerThread = 8;

/// What holds for all soundings of the line.
struct LineGeometry {
    float unit = 1.0F; ///< metres in a length unit
    float sine = 0.0F; ///< of the rotation of receiver positions into the loop's axes
    float cosine = 1.0F;
};

LineGeometry lineGeometry(const ControlValues &control) {
    LineGeometry line;
    line.unit = control.LengthUnitsIndex == Feet ? LengthUnitMetres[1] : LengthUnitMetres[0];
    float degrees = 0.0F;
    if (control.SurveyTypeIndex == FixedLoop) {
        degrees = control.TxAzimuth;
    } else if (control.SurveyTypeIndex == MovingLoop) {
        degrees = control.LineAzimuth - control.TxAzimuth;
    }
    line.sine = std::sin(degrees * Degree);
    line.cosine = std::cos(degrees * Degree);
    return line;
}

// Sets the receiver relative to the loop's centre and axes, in metres. Differences of coordinates
// and stations are taken in double and rounded to single.
void placeReceiver(AResInput &input, const ControlValues &control, const LineGeometry &line,
                   const SoundingRecord &record) {
    const auto [unit, s, c] = line;
    if (control.SurveyTypeIndex == FixedLoop) {
        // The azimuth is a compass bearing of the x axis; the y axis is 90 degrees to its left.
        const float dx = static_cast<float>(record.East - control.XTxCenter) * unit;
        const float dy = static_cast<float>(record.North - control.YTxCenter) * unit;
        input.rxX = s * dx + c * dy;
        input.rxY = -c * dx + s * dy;
    } else if (control.SurveyTypeIndex == MovingLoop) {
        // XRxOffset plays no part: the stations hold the distance along the line.
        const float d = static_cast<float>(record.RxStn - record.TxStn) * control.StnScale * unit;
        const float o = control.YRxOffset * unit;
        input.rxX = c * d + s * o;
        input.rxY = -s * d + c * o;
    }
}

AResInput inputOf(const ControlValues &control, const LineGeometry &line,
                  const SoundingRecord &record) {
    AResInput input;
    input.iTemArray = control.SurveyTypeIndex;
    input.xLength = control.XTxLength * line.unit;
    input.yLength = control.YTxLength * line.unit;
    input.ramp = control.TxRamp;
    input.freq = control.TxFreq; // the project's, not the sounding's
    placeReceiver(input, control, line, record);
    input.ntw = record.NumTW;
    input.twCenter = record.TWcenter;
    input.twWidth = record.TWwidth;
    input.weights = record.TEMwgt;
    return input;
}

/// Results of one sounding, until its turn to be stored has come.
struct SoundingARes {
    AResOutcome observed;
    AResOutcome calculated;
    WindowReals obs{};
    WindowReals calc{};
    std::array<std::size_t, MaxWindows> calcWindow{}; ///< window of each value of `calc`
    std::size_t calcCount = 0;
};

// Apparent resistivities of the windows that have a calculated value. The weights keep the order of
// all windows though the other lists are closed up, so after a gap a window has those of an
// earlier one: apparent resistivities of existing projects are held to it.
void computeCalculated(const AResInput &all, const SoundingRecord &record, SoundingARes &result) {
    WindowReals centre{};
    WindowReals width{};
    WindowReals values{};
    for (std::size_t k = 0; k < asIndex(all.ntw); ++k) {
        if (record.TEMcalc[k] >= -9.9E31F) {
            const std::size_t i = result.calcCount++;
            result.calcWindow[i] = k;
            centre[i] = record.TWcenter[k];
            width[i] = record.TWwidth[k];
            values[i] = record.TEMcalc[k];
        }
    }
    if (result.calcCount == 0) {
        return;
    }
    AResInput some = all;
    some.ntw = static_cast<int>(result.calcCount);
    some.twCenter = centre;
    some.twWidth = width;
    result.calculated = ARes_dBdt(some, values, std::span(result.calc).first(result.calcCount));
}

void computeSounding(const ControlValues &control, const LineGeometry &line,
                     const SoundingRecord &record, SoundingARes &result) {
    result = {};
    const AResInput input = inputOf(control, line, record);
    result.observed = ARes_dBdt(input, record.TEMobs, result.obs);
    if (result.observed.error == 0) {
        computeCalculated(input, record, result);
    }
}

/// A value that the check refuses, and the soundings that have it.
struct Refusal {
    AResFailure failure;
    int soundings = 0;
    double firstStation = MissingValue;
};

/// What is said after the last sounding.
struct LineSummary {
    std::vector<Refusal> refusals;
    int windows = 0;  ///< of observed data that were solved or at the floor
    int unfitted = 0; ///< that no half-space fits
};

void noteRefusal(LineSummary &summary, const AResFailure &failure, const SoundingRecord &record) {
    if (failure.fault == AResFault::None) {
        return;
    }
    const auto same = [&](const Refusal &refusal) {
        return refusal.failure == failure;
    };
    auto refusal = std::find_if(summary.refusals.begin(), summary.refusals.end(), same);
    if (refusal == summary.refusals.end()) {
        const double station = isPresent(record.Station) ? record.Station : record.RxStn;
        refusal = summary.refusals.insert(refusal, {failure, 0, station});
    }
    ++refusal->soundings;
}

void reportSummary(const LineSummary &summary) {
    for (const Refusal &refusal : summary.refusals) {
        ReportError(
            {"ARes_dBdt.ERROR", failureText(refusal.failure),
             "Soundings without apparent resistivities: " + std::to_string(refusal.soundings) +
                 ", the first at station " + messageNumber(refusal.firstStation)});
    }
    if (summary.unfitted > 0) {
        ReportInfoLine("Windows that no half-space fits (more than 0.1 left in ArcSinh): " +
                       std::to_string(summary.unfitted) + " of " + std::to_string(summary.windows));
    }
}

// Stores and reports one sounding; returns its error.
int finishSounding(SurveyModel &model, int item, const SoundingARes &result, LineSummary &summary) {
    SoundingRecord &record = model.hTrn[asIndex(item)];
    noteRefusal(summary, result.observed.failure, record);
    summary.windows += result.observed.error == 1 ? 0 : record.NumTW;
    summary.unfitted += result.observed.unfitted;
    ARes_ReportUnsolved(result.observed);
    if (result.observed.error != 0) {
        return result.observed.error;
    }
    std::copy_n(result.obs.begin(), record.NumTW, record.AResObs.begin());
    ARes_ReportUnsolved(result.calculated);
    if (result.calculated.error != 0) {
        return result.calculated.error;
    }
    for (std::size_t i = 0; i < result.calcCount; ++i) {
        record.AResCalc[result.calcWindow[i]] = result.calc[i];
    }
    ReportInfoLine("Stn " + std::to_string(item + 1) + "/" + std::to_string(model.SoundingCount) +
                   " ARes done");
    return 0;
}

int threadsFor(int soundings, int most) {
    const int processors = static_cast<int>(std::thread::hardware_concurrency());
    return std::min(most > 0 ? most : processors, soundings / FewestSoundingsPerThread);
}

} // namespace

int ARes_Survey(SurveyModel &model, const AResProgress &progress) {
    int error = 0;
    LineSummary summary;
    const LineGeometry line = lineGeometry(model.control);
    const int count = std::min(model.SoundingCount, model.SoundingCapacity());
    OrderedWork<SoundingARes> work(
        count,
        [&](int item, SoundingARes &result) {
            computeSounding(model.control, line, model.hTrn[asIndex(item)], result);
        },
        [&](int item, const SoundingARes &result) {
            error = finishSounding(model, item, result, summary);
            return !progress.step || progress.step(item + 1, count);
        });
    work.run(threadsFor(count, progress.threads));
    reportSummary(summary);
    return error;
}

} // namespace keldrin
