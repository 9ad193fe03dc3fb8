#include "base/index.h"
#include "base/real.h"
#include "projectfile/control_block.h"

#include "messages/message_log.h"
#include "projectfile/control_group.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace keldrin {

namespace {

constexpr std::size_t MostReportedLine = 256;

void reportFault(GroupStatus status, std::string_view faultyLine) {
    if (status == GroupStatus::Faulty) {
        ReportNotice(NoticeLevel::Box, {"ERROR while reading *.std file namelist block near line:",
                                        faultyLine.substr(0, MostReportedLine)});
    } else {
        ReportNotice(NoticeLevel::Box, {"ERROR while reading input *.std file namelist block",
                                        "Unexpected end-of-file."});
    }
}

void logHeader(const ControlValues &control) {
    ReportInfoLine("");
    ReportInfoLine("Input-model-file header:");
    for (const FixedText<128> &line : control.Header) {
        if (!line.isBlank()) {
            ReportInfoLine(line.view());
        }
    }
    ReportInfoLine("");
}

template <std::size_t N>
void replaceUnlessBlank(FixedText<N> &target, const FixedText<N> &legacy) {
    if (!legacy.isBlank()) {
        target = legacy;
    }
}

/// No line that is written gives the layers of the background model, so its resistivities do.
void countBackgroundLayers(ControlValues &control) {
    control.NumLayer = limited(control.NumLayer, 0, MaxLayers);
    if (control.NumLayer != 0) {
        return;
    }
    while (control.NumLayer < MaxLayers && control.Res0Layer[asIndex(control.NumLayer)] > 0.0F) {
        ++control.NumLayer;
    }
}

void normalise(ControlGroup &group) {
    ControlValues &control = group.control;
    setLengthUnits(control, lengthUnitsIndexOf(control.LengthUnits.view()));
    setTEMUnits(control, temUnitsIndexOf(control.TEMUnits.view()));
    setSurveyType(control, surveyTypeIndexOf(control.SurveyType.view()));
    control.StnScale = std::fabs(control.StnScale);
    for (const ControlRow &row : ControlTable) {
        forceRange(group, row);
    }
    if (group.legacy.REPRATE > 0.0F) {
        control.TxFreq = group.legacy.REPRATE;
    }
    STD_Check_TxWaveform(control);
    replaceUnlessBlank(control.JobName, group.legacy.PROJECT);
    replaceUnlessBlank(control.JobFor, group.legacy.CLIENT);
    replaceUnlessBlank(control.LineName, group.legacy.LINE);
    countBackgroundLayers(control);
}

constexpr int NotNamed = std::numeric_limits<int>::min();

/// A file that names no count gets the usual room for soundings and announces none.
void settleRoom(SurveyModel &model, int usualRoom) {
    int &room = model.control.NumStn;
    model.source.project.content.announced = std::max(room, 0);
    room = room == NotNamed ? usualRoom : room;
}

} // namespace

int STD_Namelist_Read(SurveyModel &model, LineReader &reader, const std::string &path) {
    ReportInfoLine("Reading namelist data from");
    ReportInfoLine(path);
    STD_Init_Namelist(model);
    const int usualRoom = std::exchange(model.control.NumStn, NotNamed);
    ControlGroup group{model.control, {}};
    std::string faultyLine;
    const GroupStatus status = readControlGroup(reader, group, faultyLine);
    settleRoom(model, usualRoom);
    if (status != GroupStatus::Read) {
        reportFault(status, faultyLine);
        return 1;
    }
    logHeader(model.control);
    normalise(group);
    return 0;
}

} // namespace keldrin
