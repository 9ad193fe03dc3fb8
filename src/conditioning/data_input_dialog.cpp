#include "conditioning/data_input_dialog.h"

#include "messages/message_log.h"
#include "toolkit/control_ids.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace keldrin {

namespace {

constexpr int LineList = 1082;
constexpr std::array<int, ComponentAxes> AreaFields = {1083, 1116, 1117};
constexpr std::string_view AreaFormat = "(1P,G14.4E1)";
constexpr std::string_view ScaleFormat = "(F14.2)";
constexpr double LargestNumber = 9.9E9;

/// A rescaling number of the dialog and what it edits.
struct ScaleField {
    int id;
    StationScale ImportPreset::*scale;
    double StationScale::*number;
};

constexpr std::array ScaleFields = {
    ScaleField{1114, &ImportPreset::StnRescaleQdr, &StationScale::begin},
    ScaleField{1115, &ImportPreset::StnRescaleQdr, &StationScale::increment},
    ScaleField{1118, &ImportPreset::StnRescaleClient, &StationScale::begin},
    ScaleField{1119, &ImportPreset::StnRescaleClient, &StationScale::increment},
};

// An increment of at least `least` in size; 0 counts as positive.
double heldIncrement(double increment, double least) {
    return std::fabs(increment) < least ? std::copysign(least, increment < 0.0 ? -1.0 : 1.0)
                                        : increment;
}

void holdIncrements(ImportPreset &preset, double least) {
    for (StationScale *scale : {&preset.StnRescaleQdr, &preset.StnRescaleClient}) {
        scale->increment = heldIncrement(scale->increment, least);
    }
}

void bringIntoRange(ImportPreset &preset) {
    for (float &area : preset.RxAreaXYZ) {
        area = limited(area, 0.1F, 9.9E9F);
    }
    for (const ScaleField &field : ScaleFields) {
        double &number = preset.*field.scale.*field.number;
        number = limited(number, -LargestNumber, LargestNumber);
    }
    holdIncrements(preset, 0.001);
}

void fillDialog(const LineTable &lines, const ImportPreset &preset) {
    std::vector<std::string> labels;
    labels.reserve(static_cast<std::size_t>(lines.LineCount));
    for (int i = 0; i < lines.LineCount; ++i) {
        labels.push_back(lines.entries[static_cast<std::size_t>(i)].LineLabel.str());
    }
    WDialogPutMenu(LineList, labels, lines.SelectedLine);
    for (std::size_t axis = 0; axis < AreaFields.size(); ++axis) {
        WDialogRangeReal(AreaFields[axis], 0.1F, 9.9E9F);
        WDialogPutReal(AreaFields[axis], preset.RxAreaXYZ[axis], AreaFormat);
    }
    for (const ScaleField &field : ScaleFields) {
        WDialogRangeDouble(field.id, -LargestNumber, LargestNumber);
        WDialogPutDouble(field.id, preset.*field.scale.*field.number, ScaleFormat);
    }
    CheckGraphicsError("VerifyDataInput fill");
}

// A field that holds no number keeps its old value.
void readDialog(LineTable &lines, ImportPreset &preset) {
    WDialogGetMenu(LineList, lines.SelectedLine);
    for (std::size_t axis = 0; axis < AreaFields.size(); ++axis) {
        WDialogGetReal(AreaFields[axis], preset.RxAreaXYZ[axis]);
    }
    for (const ScaleField &field : ScaleFields) {
        WDialogGetDouble(field.id, preset.*field.scale.*field.number);
    }
    holdIncrements(preset, 0.01);
}

} // namespace

int VerifyDataInput(SurveyModel &model) {
    CheckGraphicsError();
    LineTable &lines = model.lines;
    lines.SelectedLine = std::max(std::min(lines.SelectedLine, lines.LineCount), 1);
    ImportPreset preset = model.preset;
    bringIntoRange(preset);
    WDialogLoad(Dialog::DataInput);
    fillDialog(lines, preset);
    WDialogShow(-1, -1, ButtonContinue, DialogModal);
    const bool confirmed = ToolkitDialogInfo(1) == ButtonContinue;
    if (confirmed) {
        readDialog(lines, preset);
        preset.SelectedArrayIndex =
            lines.entries[static_cast<std::size_t>(lines.SelectedLine - 1)].ArrayIndex;
        model.preset = preset;
    }
    WDialogUnload();
    return confirmed ? 0 : 2;
}

} // namespace keldrin
