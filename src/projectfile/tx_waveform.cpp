#include "base/index.h"
#include "projectfile/control_block.h"

#include "base/number_text.h"
#include "messages/message_log.h"
#include "projectfile/control_table.h"

#include <cmath>

namespace keldrin {

namespace {

constexpr std::string_view Name = "STD_Check_TxWaveform.WARNING";
constexpr std::string_view WillReset = "Will reset to default waveform shape using TxFreq & TxRamp";

void warnOfLongRamp(const ControlValues &control, float quarterPeriod) {
    ReportError({Name,
                 "TxRamp=" + messageNumber(control.TxRamp) +
                     " usec > TxWaveform/4=" + messageNumber(quarterPeriod) + " usec",
                 "TxWaveform/4 usec = 1E6/(4*TxFreq), where TxFreq=" +
                     messageNumber(control.TxFreq) + " hertz"});
}

std::string element(std::string_view name, std::size_t i) {
    return std::string(name) + "(" + std::to_string(i + 1) + ")=";
}

/// What is wrong with the waveform; empty when nothing is.
std::string waveformFault(const ControlValues &control) {
    constexpr float LeastStep = 1.0E-6F; // msec
    const WaveformReals &times = control.TxWFT;
    const WaveformReals &currents = control.TxWFI;
    const std::size_t points = asIndex(control.NTxWF);
    for (std::size_t i = 0; i + 1 < points; ++i) {
        const float earliestNext = times[i] + LeastStep;
        if (!(earliestNext < times[i + 1])) {
            return element("TxWFT", i) + messageNumber(earliestNext) +
                   " >= " + element("TxWFT", i + 1) + messageNumber(times[i + 1]) + " msec";
        }
    }
    for (std::size_t i = 0; i < points; ++i) {
        if (times[i] > control.TxWFT0) {
            return element("TxWFT", i) + messageNumber(times[i]) +
                   " > fTxWFT0=" + messageNumber(control.TxWFT0) + " msec";
        }
        if (std::fabs(currents[i]) > 1.0F) {
            return "ABS{" + element("TxWFI", i) + messageNumber(currents[i]) + "} > 1.0";
        }
    }
    return {};
}

} // namespace

void setDefaultTxWaveform(ControlValues &control) {
    const float quarter = 250.0F / control.TxFreq;    // msec
    const float ramp = 0.001F * control.TxRamp;       // msec
    const float doubleRamp = 0.002F * control.TxRamp; // msec; the slow rise is meant
    control.NTxWF = 4;
    control.TxWFT0 = quarter + ramp;
    control.TxWFT = {0.0F, doubleRamp, quarter, quarter + ramp};
    control.TxWFI = {0.0F, 1.0F, 1.0F, 0.0F};
}

void STD_Check_TxWaveform(ControlValues &control) {
    ControlGroup group{control, {}};
    forceRange(group, *controlRow("TxFreq"));
    forceRange(group, *controlRow("TxRamp"));
    const float quarterPeriod = 250000.0F / control.TxFreq; // usec
    if (control.TxRamp > quarterPeriod) {
        warnOfLongRamp(control, quarterPeriod);
    }
    if (control.NTxWF >= 2) {
        control.NTxWF = std::min(control.NTxWF, MaxWaveformPoints);
        const std::string fault = waveformFault(control);
        if (fault.empty()) {
            return;
        }
        ReportError({Name, fault, WillReset});
    }
    setDefaultTxWaveform(control);
}

} // namespace keldrin
