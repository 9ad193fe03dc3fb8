#include "import/survey_information.h"

#include "base/ascii.h"
#include "base/line_reader.h"
#include "base/paths.h"
#include "import/import_steps.h"
#include "keywords/record.h"
#include "messages/message_log.h"
#include "messages/questions.h"
#include "messages/reading_place.h"
#include "projectfile/control_block.h"

#include <cmath>
#include <string_view>

namespace keldrin {

namespace {

constexpr std::size_t InformationLineLimit = 8192;
constexpr int SourceLevel = 1;

// Unset values take their counterparts, increments of no size count as unset.
void settleStationScaling(StnMetadata &stn, double leastIncrement) {
    const auto isUsable = [leastIncrement](double increment) {
        return isPresent(increment) && !(std::fabs(increment) < leastIncrement);
    };
    if (!isPresent(stn.QdrBeg.value)) {
        stn.QdrBeg.value = 0.0;
    }
    if (!isUsable(stn.QdrInc.value)) {
        stn.QdrInc.value = 1.0;
    }
    if (!isPresent(stn.Beg.value)) {
        stn.Beg.value = stn.QdrBeg.value;
    }
    if (!isUsable(stn.Inc.value)) {
        stn.Inc.value = stn.QdrInc.value;
    }
}

void settleCoilAreas(RxMetadata &rx) {
    for (SourcedReal *area : {&rx.Area, &rx.AreaX, &rx.AreaY, &rx.AreaZ}) {
        if (!(area->value >= 0.01F)) {
            area->value = 10000.0F;
            area->level = 0; // nobody has given it
        }
    }
}

// False when the system refuses to read on (reported).
bool readRecords(Metadata &metadata, LineReader &reader, std::string_view name) {
    std::string_view line;
    for (;;) {
        const LineStatus status = reader.next(line);
        if (status == LineStatus::End) {
            noteFileEnd(reader, name);
            return true;
        }
        if (status == LineStatus::Fault) {
            ReportUnreadFile(
                name, {"ERROR while reading file near line " + std::to_string(reader.lineNumber()),
                       name, reader.errorText()});
            return false;
        }
        line = trimRight(line);
        const bool longEnough = line.size() >= 2;
        line = trimLeft(line);
        if (longEnough && line.front() == '$') {
            MDP_Read_Record(metadata, reader.lineNumber(), line, SourceLevel);
        }
    }
}

void readFile(Metadata &metadata, const std::string &fileName) {
    const std::string name(fileNameOf(fileName));
    ReportInfoLine("Scanning " + name + " for survey information.");
    LineReader reader(InformationLineLimit);
    if (!reader.open(fileName)) {
        ReportUnreadFile(
            name, {"ERROR: Could not open survey information file", fileName, reader.errorText()});
        return;
    }
    const ReadingPlace place(reader, fileName);
    if (readRecords(metadata, reader, name)) {
        ReportInfoLine("Survey configuration, stn # scaling and annotation read from " + name);
    }
    settleStationScaling(metadata.Stn, 1.0E-6);
}

} // namespace

int Mde_File_Input(SurveyModel &model, std::string fileName) {
    const FileQuestion question = {"Optional *.mde file|*.mde|",
                                   "Select optional survey information file."};
    if (pathExists(fileName) || askForFile(question, fileName)) {
        readFile(model.metadata, fileName);
    }
    Control_From_Metadata(model);
    // Once more: what the defaults and the file have set must pass the same, coarser test.
    settleStationScaling(model.metadata.Stn, 0.001);
    settleCoilAreas(model.metadata.Rx);
    presetFromMetadata(model);
    return 0;
}

} // namespace keldrin
