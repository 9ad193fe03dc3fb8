#include "conditioning/data_input_dialog.h"

#include "base/index.h"
#include "base/number_text.h"
#include "conditioning/unread_fields.h"
#include "messages/message_log.h"
#include "screen/graphics_errors.h"
#include "toolkit/control_ids.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace keldrin {

namespace {

// ---- The table

using enum ControlKind;
using namespace DataInputControl;

std::vector<std::string> lineLabels(const DataInputAnswers &answers) {
    std::vector<std::string> labels;
    for (const LineEntry &line : answers.lines.found()) {
        labels.push_back(line.LineLabel.str());
    }
    return labels;
}

constexpr double LeastArea = 0.1; ///< m^2

template <std::size_t axis>
constexpr ControlSpec area(int id, std::string_view label, std::string_view name) {
    return {.id = id,
            .kind = Real,
            .label = label,
            .format = "(1P,G14.4E1)",
            .unit = "m^2",
            .limits = {LeastArea, 9.9E9},
            .field = fieldOf<&DataInputAnswers::scaling, &LineScaling::RxAreaXYZ, axis>(),
            .name = name};
}

template <auto Scale, auto Number>
constexpr ControlSpec rescaling(int id, std::string_view label, std::string_view name,
                                bool sameRow) {
    return {.id = id,
            .kind = Double,
            .label = label,
            .format = "(F14.2)",
            .limits = {-9.9E9, 9.9E9},
            .field = fieldOf<&DataInputAnswers::scaling, Scale, Number>(),
            .name = name,
            .sameRow = sameRow};
}

constexpr ControlSpec title(int id, std::string_view label, StaticLook look, bool sameRow) {
    return {.id = id, .label = label, .sameRow = sameRow, .look = look};
}

constexpr auto Qdr = &LineScaling::StnRescaleQdr;
constexpr auto Client = &LineScaling::StnRescaleClient;

constexpr std::array DataInputControls = {
    ControlSpec{.id = Line,
                .kind = List,
                .label = "Select Line",
                .length = MaxSurveyLines,
                .field = fieldOf<&DataInputAnswers::lines, &LineTable::SelectedLine>(),
                .entries = givenBy<lineLabels>()},
    title(DataInputControl::CoilTitle, "Rx Coil", StaticLook::GroupTitle, false),
    title(DataInputControl::AreaTitle, "Effective Area", StaticLook::GroupTitle, true),
    area<0>(AreaX, "along-line X", "Effective Area along-line X"),
    area<1>(AreaY, "across-line Y", "Effective Area across-line Y"),
    area<2>(AreaZ, "vertical Z", "Effective Area vertical Z"),
    title(DataInputControl::RescalingTitle, "Stn Number Rescaling", StaticLook::GroupTitle, false),
    title(DataInputControl::BeginTitle, "Beginning", StaticLook::Head, false),
    title(DataInputControl::IncrementTitle, "Increment", StaticLook::Head, true),
    rescaling<Qdr, &StationScale::begin>(QdrBegin, "QDR", "QDR Beginning", false),
    rescaling<Qdr, &StationScale::increment>(QdrIncrement, "QDR", "QDR Increment", true),
    rescaling<Client, &StationScale::begin>(ClientBegin, "Client", "Client Beginning", false),
    rescaling<Client, &StationScale::increment>(ClientIncrement, "Client", "Client Increment",
                                                true),
    ContinueRow,
    CancelRow,
};

// ---- The flow

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

LineScaling &scalingOf(LineTable &lines, int line) {
    return lines.entries[asIndex(line - 1)].scaling;
}

void showScaling(DataInputAnswers &answers) {
    answers.scaling = scalingOf(answers.lines, answers.lines.SelectedLine);
    limitFields(DataInputDialog, answers);
    holdIncrements(answers.scaling, 0.001);
}

/// An area that the file gives and no coil has.
void warnOfSmallArea(const LineScaling &given, const LineScaling &taken) {
    for (std::size_t axis = 0; axis < ComponentAxes; ++axis) {
        if (given.RxAreaXYZ[axis] < static_cast<float>(LeastArea)) {
            ReportWarning({"WARNING: The area of the receiver coil is given as " +
                               messageNumber(given.RxAreaXYZ[axis]) + " m^2",
                           "It is taken as " + messageNumber(taken.RxAreaXYZ[axis]) + " m^2"});
            return;
        }
    }
}

} // namespace

const DialogForm<DataInputAnswers> DataInputDialog = DialogSpec{
    .number = 101,
    .caption = "Verify data input parameters.",
    .defaultButton = ButtonContinue,
    .controls = DataInputControls,
    .firstControl = ButtonContinue,
};

int VerifyDataInput(SurveyModel &model) {
    CheckGraphicsError();
    DataInputAnswers answers{model.lines, {}}; // a Cancel leaves the table as it was
    LineTable &lines = answers.lines;
    lines.SelectedLine = std::max(std::min(lines.SelectedLine, lines.LineCount), 1);
    showScaling(answers);
    int shownLine = lines.SelectedLine;
    const auto keepScaling = [&] {
        holdIncrements(answers.scaling, 0.01);
        scalingOf(lines, shownLine) = answers.scaling;
        shownLine = lines.SelectedLine;
    };
    std::vector<UnreadField> unread; // of lines that were selected before the last one
    const auto followSelection = [&](int id) {
        if (id == Line) {
            const std::vector<UnreadField> faulty = readFields(DataInputDialog, answers);
            unread.insert(unread.end(), faulty.begin(), faulty.end());
            keepScaling();
            showScaling(answers);
            putFields(DataInputDialog, answers);
            CheckGraphicsError("VerifyDataInput fill");
        }
    };
    const DialogAnswer answer = askDialog(DataInputDialog, answers, [&] {
        CheckGraphicsError("VerifyDataInput fill");
        WDialogWatch(followSelection);
    });
    if (!answer.confirmed()) {
        return 2;
    }
    keepScaling();
    unread.insert(unread.end(), answer.unread.begin(), answer.unread.end());
    reportUnreadFields(unread);
    warnOfSmallArea(scalingOf(model.lines, lines.SelectedLine), answers.scaling);
    model.lines = lines;
    selectLine(model, lines.SelectedLine);
    return 0;
}

} // namespace keldrin
