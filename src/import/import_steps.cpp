#include "import/import_steps.h"

#include "base/ascii.h"
#include "messages/message_log.h"

#include <algorithm>
#include <string>

namespace keldrin {

namespace {

void warnOfArray(const LineEntry &entry, const Metadata &metadata) {
    if (heldArrayIndex(entry.ArrayIndex) != entry.ArrayIndex) {
        ReportWarning({"WARNING: Survey.Array = " + metadata.Survey.Array.value.str() +
                           " of line " + entry.LineName.str() + " is no array of this program",
                       "Will treat it as " +
                           std::string(nameOf(SurveyTypeNames, heldArrayIndex(entry.ArrayIndex)))});
    }
}

} // namespace

ListPlace List_Find_Or_Add(LineTable &lines, std::string_view label) {
    for (int i = 0; i < lines.LineCount; ++i) {
        if (lines.entries[static_cast<std::size_t>(i)].LineLabel == label) {
            return {i, FindOrAdd::Found};
        }
    }
    const bool full = lines.LineCount >= MaxSurveyLines;
    const int index = full ? MaxSurveyLines - 1 : lines.LineCount++;
    lines.entries[static_cast<std::size_t>(index)].LineLabel = label;
    return {index, full ? FindOrAdd::Full : FindOrAdd::Added};
}

FixedText<16> lineLabel(std::string_view lineName, std::string_view arrayText) {
    return Str_Upper(Str_No_Blanks(lineName)) + " " + std::string(cutText(arrayText, 4));
}

bool LineIdentity::take(const Metadata &metadata) {
    const FixedText<16> &name = metadata.Line.Name.value;
    const FixedText<4> array = metadata.Survey.Array.value.view();
    if (name == LastLineName && array == LastArrayText) {
        return false;
    }
    LastLineName = name;
    LastArrayText = array;
    return true;
}

LineEntry &currentLineEntry(LineTable &lines, const LineIdentity &identity,
                            const Metadata &metadata) {
    const ListPlace place = List_Find_Or_Add(lines, identity.label().view());
    LineEntry &entry = lines.entries[static_cast<std::size_t>(place.index)];
    entry.LineName = identity.LastLineName;
    entry.ArrayIndex = metadata.Survey.ArrayIndex;
    if (place.result != FindOrAdd::Found) {
        warnOfArray(entry, metadata);
    }
    return entry;
}

void resetLines(LineTable &lines) {
    lines = LineTable{};
}

void presetFromMetadata(SurveyModel &model) {
    const Metadata &metadata = model.metadata;
    ImportPreset &preset = model.preset;
    preset.SelectedArrayIndex = metadata.Survey.ArrayIndex;
    preset.StnRescaleQdr = {metadata.Stn.QdrBeg.value, metadata.Stn.QdrInc.value};
    preset.StnRescaleClient = {metadata.Stn.Beg.value, metadata.Stn.Inc.value};
    preset.RxAreaXYZ = {metadata.Rx.AreaX.value, metadata.Rx.AreaY.value, metadata.Rx.AreaZ.value};
}

int heldArrayIndex(int arrayIndex) {
    return std::clamp(arrayIndex, FixedLoop, CoincidentLoop);
}

int soundingsNeeded(const LineEntry &entry) {
    return entry.Soundings > 0 ? entry.Soundings : entry.Transients;
}

FindOrAdd findOrAddKeepingLast(SurveyModel &model, double TxStn, float TxFreq, double RxStn,
                               int &index) {
    if (model.SoundingCapacity() < 1) {
        return FindOrAdd::Full;
    }
    SoundingRecord &last = model.hTrn.back();
    const double lastTx = last.TxStn;
    const double lastRx = last.RxStn;
    const float lastFreq = last.TxFreq;
    const FindOrAdd result = hTrn_Find_Or_Add(model, TxStn, TxFreq, RxStn, index);
    if (result == FindOrAdd::Full) {
        last.TxStn = lastTx;
        last.RxStn = lastRx;
        last.TxFreq = lastFreq;
    }
    return result;
}

std::string foundText(int lines, int transients) {
    return "Found " + std::to_string(lines) + " lines and " + std::to_string(transients) +
           " TEM transients.";
}

int finishCount(const LineTable &lines, int transients, std::string_view reader) {
    const std::string found = foundText(lines.LineCount, transients);
    if (lines.LineCount < 1 || transients < 1) {
        ReportError({std::string(reader) + ".WARNING: found no TEM data", found});
        return 1;
    }
    ReportInfoLine(found);
    return 0;
}

} // namespace keldrin
