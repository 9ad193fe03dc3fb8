#include "conditioning/data_input_dialog.h"

#include "screen/graphics_errors.h"
#include "toolkit/control_ids.h"
#include "toolkit/dialog_specs/dialog_specs.h"
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
    StationScale LineScaling::*scale;
    double StationScale::*number;
};

constexpr std::array ScaleFields = {
    ScaleField{1114, &LineScaling::StnRescaleQdr, &StationScale::begin},
    ScaleField{1115, &LineScaling::StnRescaleQdr, &StationScale::increment},
    ScaleField{1118, &LineScaling::StnRescaleClient, &StationScale::begin},
    ScaleField{1119, &LineScaling::StnRescaleClient, &StationScale::increment},
};

// An increment of at least `least` in size; 0 counts as positive.
double heldIncrement(double increment, double least) {
    return std::fabs(increment) < least ? std::copysign(least, increment < 0.0 ? -1.0 : 1.0)
                                        : increment;
}

void holdIncrements(LineScaling &scaling, double least) {
    for (StationScale *scale : {&scaling.StnRescaleQdr, &scaling.StnRescaleClient}) {
        scale->increment = heldIncrement(scale->increment, least);
    }
}

void bringIntoRange(LineScaling &scaling) {
    for (float &area : scaling.RxAreaXYZ) {
        area = limited(area, 0.1F, 9.9E9F);
    }
    for (const ScaleField &field : ScaleFields) {
        double &number = scaling.*field.scale.*field.number;
        number = limited(number, -LargestNumber, LargestNumber);
    }
    holdIncrements(scaling, 0.001);
}

LineEntry &selectedEntry(LineTable &lines) {
    return lines.entries[static_cast<std::size_t>(lines.SelectedLine - 1)];
}

void putLineList(const LineTable &lines) {
    std::vector<std::string> labels;
    labels.reserve(static_cast<std::size_t>(lines.LineCount));
    for (int i = 0; i < lines.LineCount; ++i) {
        labels.push_back(lines.entries[static_cast<std::size_t>(i)].LineLabel.str());
    }
    WDialogPutMenu(LineList, labels, lines.SelectedLine);
}

void setRanges() {
    for (const int id : AreaFields) {
        WDialogRangeReal(id, 0.1F, 9.9E9F);
    }
    for (const ScaleField &field : ScaleFields) {
        WDialogRangeDouble(field.id, -LargestNumber, LargestNumber);
    }
}

void putScaling(const LineScaling &scaling) {
    for (std::size_t axis = 0; axis < AreaFields.size(); ++axis) {
        WDialogPutReal(AreaFields[axis], scaling.RxAreaXYZ[axis], AreaFormat);
    }
    for (const ScaleField &field : ScaleFields) {
        WDialogPutDouble(field.id, scaling.*field.scale.*field.number, ScaleFormat);
    }
    CheckGraphicsError("VerifyDataInput fill");
}

// A field that holds no number keeps its old value.
void readScaling(LineScaling &scaling) {
    for (std::size_t axis = 0; axis < AreaFields.size(); ++axis) {
        WDialogGetReal(AreaFields[axis], scaling.RxAreaXYZ[axis]);
    }
    for (const ScaleField &field : ScaleFields) {
        WDialogGetDouble(field.id, scaling.*field.scale.*field.number);
    }
    holdIncrements(scaling, 0.01);
}

// The values shown are those of the selected line: another choice first keeps what was typed.
void followSelection(LineTable &lines) {
    int selected = lines.SelectedLine;
    WDialogGetMenu(LineList, selected);
    selected = std::clamp(selected, 1, std::max(lines.LineCount, 1));
    if (selected == lines.SelectedLine) {
        return;
    }
    readScaling(selectedEntry(lines).scaling);
    lines.SelectedLine = selected;
    bringIntoRange(selectedEntry(lines).scaling);
    putScaling(selectedEntry(lines).scaling);
}

} // namespace

int VerifyDataInput(SurveyModel &model) {
    CheckGraphicsError();
    LineTable lines = model.lines; // a Cancel leaves the table as it was
    lines.SelectedLine = std::max(std::min(lines.SelectedLine, lines.LineCount), 1);
    bringIntoRange(selectedEntry(lines).scaling);
    WDialogLoad(DataInputDialog);
    putLineList(lines);
    setRanges();
    putScaling(selectedEntry(lines).scaling);
    WDialogWatch([&lines](int id) {
        if (id == LineList) {
            followSelection(lines);
        }
    });
    WDialogShow(-1, -1, ButtonContinue, DialogModal);
    const bool confirmed = ToolkitDialogInfo(1) == ButtonContinue;
    if (confirmed) {
        followSelection(lines);
        readScaling(selectedEntry(lines).scaling);
        model.lines = lines;
        selectLine(model, lines.SelectedLine);
    }
    WDialogUnload();
    return confirmed ? 0 : 2;
}

} // namespace keldrin
