#include "conditioning/survey_configuration.h"

#include "base/number_text.h"
#include "conditioning/configuration_dialog.h"
#include "conditioning/transmitter_choice.h"
#include "conditioning/unread_fields.h"
#include "messages/message_log.h"
#include "projectfile/control_block.h"
#include "projectfile/control_table.h"
#include "screen/graphics_errors.h"
#include "toolkit/control_ids.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace keldrin {

namespace {

using namespace ConfigurationControl;

// A value that the data or the project gave is changed only with a warning.
template <class T>
void holdInRange(T &value, const ForcedRange &range, std::string_view name) {
    const auto text = [](auto number) {
        return messageNumber(static_cast<double>(number));
    };
    const T given = value;
    const T low = static_cast<T>(range.low);
    const T high = static_cast<T>(range.high);
    value = limited(value, low, high);
    if (value != given) {
        ReportWarning({"EditSurveyConfiguration.WARNING: " + std::string(name) + " = " +
                           text(given) + " < " + text(low) + " or > " + text(high),
                       std::string(name) + " will be set = " + text(value)});
    }
}

// Brings a control value that the dialog shows into its range.
void holdInRange(ControlValues &control, const ControlRow &row) {
    const ForcedRange &range = entryRange(row);
    ControlGroup group{control, {}};
    visitControl(group, row, [&](auto &value) {
        if constexpr (std::is_arithmetic_v<std::remove_reference_t<decltype(value)>>) {
            holdInRange(value, range, row.name);
        }
    });
}

void bringIntoRange(SurveyModel &model) {
    ControlValues &control = model.control;
    if (control.LineAzimuth < -360.1F) {
        control.LineAzimuth = 90.0F;
    }
    if (!isPresent(control.TxAzimuth)) {
        control.TxAzimuth = control.LineAzimuth;
    }
    for (const ControlSpec &shown : ConfigurationDialog.controls) {
        if (const ControlRow *row = shown.key.empty() ? nullptr : findControlRow(shown.key)) {
            holdInRange(control, *row);
        }
    }
    setLengthUnits(control, control.LengthUnitsIndex);
    setSurveyType(control, control.SurveyTypeIndex);
    settleTransmitter(model);
}

// The lists act at once: indices, texts and, on a turn to Fixed-Loop, the transmitter.
void readLists(Configuration &shown) {
    ControlValues &control = shown.model->control;
    if (readField(ConfigurationDialog, LengthUnits, shown)) {
        setLengthUnits(control, control.LengthUnitsIndex);
    }
    const int array = control.SurveyTypeIndex;
    if (readField(ConfigurationDialog, SurveyArray, shown)) {
        setSurveyType(control, control.SurveyTypeIndex);
    }
    if (control.SurveyTypeIndex != array && control.SurveyTypeIndex == FixedLoop) {
        const double before = control.TxStn;
        settleTransmitter(*shown.model);
        if (!sameStation(control.TxStn, before)) {
            putField(ConfigurationDialog, Transmitter, shown);
        }
    }
}

// A typed transmitter snaps to the nearest one that exists.
void snapTransmitter(Configuration &shown) {
    double &station = shown.model->control.TxStn;
    const double noted = station;
    if (readField(ConfigurationDialog, Transmitter, shown) && !sameStation(station, noted)) {
        station = nearestTransmitter(*shown.model, station);
        putField(ConfigurationDialog, Transmitter, shown);
    }
}

// Serves the dialog until a button or the close box of the root window ends it. Returns the button
// or, for the close box, 0.
int serveDialog(Configuration &shown) {
    for (;;) {
        readLists(shown);
        snapTransmitter(shown);
        followRecord(ConfigurationDialog, shown);
        ToolkitEvent event;
        ToolkitNextEvent(event);
        if (event.type == EventClose) {
            return 0;
        }
        if (event.type == EventButton &&
            (event.value == ButtonContinue || event.value == ButtonCancel)) {
            return event.value;
        }
    }
}

bool sameWithin(const std::array<float, MaxWaveformPoints> &a,
                const std::array<float, MaxWaveformPoints> &b, int count) {
    constexpr float tolerance = 1.0E-4F; // msec
    return std::equal(a.begin(), a.begin() + count, b.begin(),
                      [](float x, float y) { return std::fabs(x - y) <= tolerance; });
}

bool hasDefaultWaveform(const ControlValues &control) {
    ControlValues shape = control;
    setDefaultTxWaveform(shape);
    return control.NTxWF == shape.NTxWF && sameWithin({control.TxWFT0}, {shape.TxWFT0}, 1) &&
           sameWithin(control.TxWFT, shape.TxWFT, shape.NTxWF) &&
           sameWithin(control.TxWFI, shape.TxWFI, shape.NTxWF);
}

// A waveform that was only the default shape follows an edited ramp or frequency.
void followWaveform(ControlValues &control, const ControlValues &before) {
    const bool edited = control.TxRamp != before.TxRamp || control.TxFreq != before.TxFreq;
    if (edited && hasDefaultWaveform(before)) {
        setDefaultTxWaveform(control);
    }
}

} // namespace

int EditSurveyConfiguration(SurveyModel &model, std::string &path, const WriteConfigured &write) {
    const ControlValues before = model.control;
    Configuration shown{&model, nameOfProject(path)};
    bringIntoRange(model);
    openDialog(ConfigurationDialog, shown, DialogModelessAlone,
               [] { CheckGraphicsError("EditSurveyConfiguration fill"); });
    const int button = serveDialog(shown);
    int status = 0;
    if (button == ButtonContinue) {
        reportUnreadFields(readFields(ConfigurationDialog, shown));
        followWaveform(model.control, before);
        if (write(before, shown.name.path())) {
            path = shown.name.path();
        }
    } else if (button == ButtonCancel) {
        model.control = before;
        status = 1;
    } else {
        status = StatusWindowClosed;
    }
    closeDialog(ConfigurationDialog);
    CheckGraphicsError("EditSurveyConfiguration");
    return status;
}

} // namespace keldrin
