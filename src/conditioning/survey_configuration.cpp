#include "conditioning/survey_configuration.h"

#include "base/ascii.h"
#include "base/number_text.h"
#include "base/paths.h"
#include "conditioning/transmitter_choice.h"
#include "messages/message_log.h"
#include "projectfile/control_block.h"
#include "screen/graphics_errors.h"
#include "toolkit/control_ids.h"
#include "toolkit/dialog_specs/dialog_specs.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace keldrin {

namespace {

constexpr int UnitList = 1006;
constexpr int ArrayList = 1008;
constexpr int OffsetField = 1011;
constexpr int OffsetUnit = 1110;
constexpr int LoopSizeHead = 1010;
constexpr int LoopCentreHead = 1111;
constexpr int TransmitterField = 1122;
constexpr int LoopEastField = 1046;
constexpr int LoopNorthField = 1047;
constexpr int LineNameField = 1072;
constexpr int SaveAsField = 1043;
constexpr std::string_view ProjectExtension = ".std";

struct HeaderField {
    int id;
    std::size_t line; ///< of Header, from 0
};
constexpr std::array HeaderFields = {HeaderField{1001, 1}, HeaderField{1003, 2},
                                     HeaderField{1004, 3}};

struct TextField {
    int id;
    FixedText<128> ControlValues::*text;
};
constexpr std::array TextFields = {
    TextField{1071, &ControlValues::JobName}, TextField{1100, &ControlValues::JobArea},
    TextField{1101, &ControlValues::JobFor}, TextField{1102, &ControlValues::JobBy}};

// Entry limits are those that a value is brought into before it is shown; the control's limits act
// on what the user types. They are the same but for the station scale, whose entry limits are
// tighter on purpose, so that the control's never bite on entry.
struct RealField {
    int id;
    std::string_view name; ///< as in the project file
    float ControlValues::*value;
    float low, high;           ///< of the control
    float entryLow, entryHigh; ///< on entry
    std::string_view format;
};
constexpr std::array RealFields = {
    RealField{1104, "LineNumber", &ControlValues::LineNumber, -9.9E8F, 9.9E9F, -9.9E8F, 9.9E9F,
              "(F12.1)"},
    RealField{1108, "StnScale", &ControlValues::StnScale, 1.0E-6F, 1.0E6F, 1.1E-6F, 900000.0F,
              "(1P,G12.4E1)"},
    RealField{OffsetField, "YRxOffset", &ControlValues::YRxOffset, -9.9E8F, 9.9E9F, -9.9E8F, 9.9E9F,
              "(F12.1)"},
    RealField{1015, "XTxLength", &ControlValues::XTxLength, 0.1F, 990000.0F, 0.1F, 990000.0F,
              "(F12.1)"},
    RealField{1016, "YTxLength", &ControlValues::YTxLength, 0.1F, 990000.0F, 0.1F, 990000.0F,
              "(F12.1)"},
    RealField{1025, "TxRamp", &ControlValues::TxRamp, 0.1F, 990000.0F, 0.1F, 990000.0F, "(F12.1)"},
    RealField{1026, "TxFreq", &ControlValues::TxFreq, 0.01F, 1024.0F, 0.01F, 1024.0F,
              "(0P,G12.4E1)"},
    RealField{1037, "ErrorFloor", &ControlValues::ErrorFloor, 0.1F, 9999.9F, 0.1F, 9999.9F,
              "(F12.1)"},
    RealField{1032, "dpWeight", &ControlValues::dpWeight, 0.01F, 100.0F, 0.01F, 100.0F,
              "(0P,G12.4E1)"},
    RealField{1038, "dzWeight", &ControlValues::dzWeight, 0.01F, 100.0F, 0.01F, 100.0F,
              "(0P,G12.4E1)"},
    RealField{1051, "DataCutoff", &ControlValues::DataCutoff, 0.1F, 9999.9F, 0.1F, 9999.9F,
              "(F12.1)"},
};

struct DoubleField {
    int id;
    std::string_view name;
    double ControlValues::*value;
    std::string_view format;
};
constexpr std::array DoubleFields = {
    DoubleField{TransmitterField, "TxStn", &ControlValues::TxStn, "(F14.1)"},
    DoubleField{LoopEastField, "XTxCenter", &ControlValues::XTxCenter, "(F12.0)"},
    DoubleField{LoopNorthField, "YTxCenter", &ControlValues::YTxCenter, "(F12.0)"}};

struct IntegerField {
    int id;
    std::string_view name;
    int ControlValues::*value;
    int low, high;
};
constexpr std::array IntegerFields = {
    IntegerField{1024, "NTxTurn", &ControlValues::NTxTurn, 1, 32},
    IntegerField{1041, "Niteration", &ControlValues::Niteration, 0, 32}};

/// A bearing, shown and taken back in whole degrees.
struct AzimuthField {
    int id;
    float ControlValues::*value;
};
constexpr std::array AzimuthFields = {AzimuthField{1106, &ControlValues::LineAzimuth},
                                      AzimuthField{1078, &ControlValues::TxAzimuth}};

/// The project's path, taken apart for the "Save As" field.
struct ProjectName {
    std::string directory; ///< with its last separator
    std::string base;
    std::string extension; ///< ".std" as the path spelled it

    [[nodiscard]] std::string path() const { return directory + base + extension; }
};

ProjectName nameOfProject(std::string_view path) {
    return {std::string(directoryOf(path)), std::string(trimRight(baseNameOf(path))),
            std::string(isProjectPath(path) ? extensionOf(path) : ProjectExtension)};
}

// A value that the data or the project gave is not changed without a word.
template <class T>
void holdInRange(T &value, T low, T high, std::string_view name) {
    const T given = value;
    value = limited(value, low, high);
    if (value != given) {
        const auto text = [](T number) {
            return messageNumber(static_cast<double>(number));
        };
        ReportWarning({"EditSurveyConfiguration.WARNING: " + std::string(name) + " = " +
                           text(given) + " < " + text(low) + " or > " + text(high),
                       std::string(name) + " will be set = " + text(value)});
    }
}

void bringIntoRange(SurveyModel &model) {
    ControlValues &control = model.control;
    if (control.LineAzimuth < -360.1F) {
        control.LineAzimuth = 90.0F;
    }
    if (!isPresent(control.TxAzimuth)) {
        control.TxAzimuth = control.LineAzimuth;
    }
    for (const AzimuthField &field : AzimuthFields) {
        control.*field.value = limited(control.*field.value, -360.0F, 360.0F);
    }
    for (const RealField &field : RealFields) {
        holdInRange(control.*field.value, field.entryLow, field.entryHigh, field.name);
    }
    for (const DoubleField &field : DoubleFields) {
        holdInRange(control.*field.value, -9.9E8, 9.9E9, field.name);
    }
    for (const IntegerField &field : IntegerFields) {
        holdInRange(control.*field.value, field.low, field.high, field.name);
    }
    setLengthUnits(control, control.LengthUnitsIndex);
    setSurveyType(control, control.SurveyTypeIndex);
    settleTransmitter(model);
}

void setRanges() {
    for (const AzimuthField &field : AzimuthFields) {
        WDialogRangeInteger(field.id, -360, 360);
    }
    for (const RealField &field : RealFields) {
        if (field.value != &ControlValues::LineNumber) { // any number names a line
            WDialogRangeReal(field.id, field.low, field.high);
        }
    }
    for (const IntegerField &field : IntegerFields) {
        WDialogRangeInteger(field.id, field.low, field.high);
    }
}

template <std::size_t N>
std::vector<std::string> listOf(const std::array<std::string_view, N> &names) {
    return {names.begin(), names.end()};
}

void fillFields(const ControlValues &control, const ProjectName &name) {
    for (const HeaderField &field : HeaderFields) {
        WDialogPutString(field.id, control.Header[field.line].view());
    }
    for (const TextField &field : TextFields) {
        WDialogPutString(field.id, (control.*field.text).view());
    }
    WDialogPutString(LineNameField, control.LineName.view());
    for (const AzimuthField &field : AzimuthFields) {
        WDialogPutInteger(field.id, nearestInt(control.*field.value));
    }
    for (const RealField &field : RealFields) {
        WDialogPutReal(field.id, control.*field.value, field.format);
    }
    for (const DoubleField &field : DoubleFields) {
        WDialogPutDouble(field.id, control.*field.value, field.format);
    }
    for (const IntegerField &field : IntegerFields) {
        WDialogPutInteger(field.id, control.*field.value);
    }
    WDialogPutMenu(UnitList, listOf(LengthUnitNames), control.LengthUnitsIndex);
    WDialogPutMenu(ArrayList, listOf(SurveyTypeNames), control.SurveyTypeIndex);
    WDialogPutString(SaveAsField, name.base);
}

// The lists act at once: indices, texts and, on a turn to Fixed-Loop, the transmitter.
void readLists(SurveyModel &model) {
    ControlValues &control = model.control;
    int index = 0;
    if (WDialogGetMenu(UnitList, index) && index >= Metres && index <= Feet) {
        setLengthUnits(control, index);
    }
    if (WDialogGetMenu(ArrayList, index) && index >= FixedLoop && index <= CoincidentLoop) {
        const bool turned = index != control.SurveyTypeIndex;
        setSurveyType(control, index);
        if (turned && index == FixedLoop) {
            const double before = control.TxStn;
            settleTransmitter(model);
            if (!sameStation(control.TxStn, before)) {
                WDialogPutDouble(TransmitterField, control.TxStn, "(F14.1)");
            }
        }
    }
}

// A typed transmitter snaps to the nearest one that exists.
void snapTransmitter(SurveyModel &model) {
    ControlValues &control = model.control;
    const double noted = control.TxStn;
    if (!WDialogGetDouble(TransmitterField, control.TxStn) || sameStation(control.TxStn, noted)) {
        return;
    }
    control.TxStn = nearestTransmitter(model, control.TxStn);
    WDialogPutDouble(TransmitterField, control.TxStn, "(F14.1)");
}

void showComputedLabels(const ControlValues &control) {
    const std::string unit(nameOf(LengthUnitNames, control.LengthUnitsIndex));
    WDialogPutString(LoopSizeHead, "Tx Loop Size (" + unit + ")");
    WDialogPutString(LoopCentreHead, "FXL Tx Loop Center (" + unit + ")");
    WDialogPutString(OffsetUnit, unit);
}

void setFieldStates(const ControlValues &control) {
    for (const DoubleField &field : DoubleFields) {
        WDialogFieldState(field.id, control.SurveyTypeIndex == FixedLoop);
    }
    WDialogFieldState(OffsetField, control.SurveyTypeIndex == MovingLoop);
}

// Serves the dialog until a button or the close box of the root window ends it. Returns the button
// or, for the close box, 0.
int serveDialog(SurveyModel &model) {
    for (;;) {
        readLists(model);
        snapTransmitter(model);
        showComputedLabels(model.control);
        setFieldStates(model.control);
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

// What is typed in "Save As": a ".std" is dropped; a blank name, or one with a separator, is none.
void readSaveAs(ProjectName &name) {
    std::string typed;
    WDialogGetString(SaveAsField, typed);
    std::string_view base = trimBlanks(typed);
    constexpr std::size_t extension = ProjectExtension.size();
    if (base.size() >= extension &&
        sameIgnoringCase(base.substr(base.size() - extension), ProjectExtension)) {
        base = trimBlanks(base.substr(0, base.size() - extension));
    }
    if (!base.empty() && base.find_first_of("/\\") == std::string_view::npos) {
        name.base = base;
    }
}

// A field that holds no number keeps its value.
void readFields(ControlValues &control, ProjectName &name) {
    std::string text;
    for (const HeaderField &field : HeaderFields) {
        WDialogGetString(field.id, text);
        control.Header[field.line] = text;
    }
    for (const TextField &field : TextFields) {
        WDialogGetString(field.id, text);
        control.*field.text = text;
    }
    WDialogGetString(LineNameField, text);
    control.LineName = text;
    for (const RealField &field : RealFields) {
        if (field.id != OffsetField || control.SurveyTypeIndex == MovingLoop) {
            WDialogGetReal(field.id, control.*field.value);
        }
    }
    for (const DoubleField &field : DoubleFields) {
        WDialogGetDouble(field.id, control.*field.value);
    }
    for (const IntegerField &field : IntegerFields) {
        WDialogGetInteger(field.id, control.*field.value);
    }
    for (const AzimuthField &field : AzimuthFields) {
        int degrees = 0;
        if (WDialogGetInteger(field.id, degrees)) {
            control.*field.value = static_cast<float>(degrees);
        }
    }
    readSaveAs(name);
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
    ProjectName name = nameOfProject(path);
    bringIntoRange(model);
    WDialogLoad(ConfigurationDialog);
    ToolkitDialogOption(10, 1);
    setRanges();
    fillFields(model.control, name);
    CheckGraphicsError("EditSurveyConfiguration fill");
    WDialogShow(-1, -1, ButtonContinue, DialogModelessAlone);
    const int button = serveDialog(model);
    int status = 0;
    if (button == ButtonContinue) {
        readFields(model.control, name);
        followWaveform(model.control, before);
        if (write(before, name.path())) {
            path = name.path();
        }
    } else if (button == ButtonCancel) {
        model.control = before;
        status = 1;
    } else {
        status = 3;
    }
    WDialogUnload();
    ToolkitDialogOption(10, 0);
    CheckGraphicsError("EditSurveyConfiguration");
    return status;
}

} // namespace keldrin
