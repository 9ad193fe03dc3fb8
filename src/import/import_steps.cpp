#include "import/import_steps.h"

#include "base/ascii.h"
#include "base/index.h"
#include "base/number_text.h"
#include "base/real.h"
#include "messages/message_log.h"

#include <array>
#include <functional>

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

LineEntry &settleEntry(LineTable &lines, const LineIdentity &identity, int arrayIndex,
                       FindOrAdd &found) {
    const ListPlace place = List_Find_Or_Add(lines, identity.label().view());
    LineEntry &entry = lines.entries[asIndex(place.index)];
    entry.LineName = identity.LastLineName;
    entry.ArrayIndex = arrayIndex;
    found = place.result;
    return entry;
}

} // namespace

ListPlace List_Find_Or_Add(LineTable &lines, std::string_view label) {
    for (int i = 0; i < lines.LineCount; ++i) {
        if (lines.entries[asIndex(i)].LineLabel == label) {
            return {i, FindOrAdd::Found};
        }
    }
    const bool full = lines.LineCount >= MaxSurveyLines;
    const int index = full ? MaxSurveyLines - 1 : lines.LineCount++;
    lines.entries[asIndex(index)].LineLabel = label;
    return {index, full ? FindOrAdd::Full : FindOrAdd::Added};
}

FixedText<16> lineLabel(std::string_view lineName, std::string_view arrayText) {
    return Str_Upper(Str_No_Blanks(lineName)) + " " + std::string(cutText(arrayText, 4));
}

bool LineIdentity::take(std::string_view lineName, std::string_view arrayText) {
    const FixedText<16> name = lineName;
    const FixedText<4> array = arrayText;
    if (name == LastLineName && array == LastArrayText) {
        return false;
    }
    LastLineName = name;
    LastArrayText = array;
    return true;
}

bool LineIdentity::take(const Metadata &metadata) {
    return take(metadata.Line.Name.value.view(), metadata.Survey.Array.value.view());
}

LineEntry &currentLineEntry(LineTable &lines, const LineIdentity &identity, int arrayIndex) {
    FindOrAdd found = FindOrAdd::Found;
    return settleEntry(lines, identity, arrayIndex, found);
}

LineEntry &currentLineEntry(LineTable &lines, const LineIdentity &identity,
                            const Metadata &metadata) {
    FindOrAdd found = FindOrAdd::Found;
    LineEntry &entry = settleEntry(lines, identity, metadata.Survey.ArrayIndex, found);
    if (found != FindOrAdd::Found) {
        warnOfArray(entry, metadata);
    }
    return entry;
}

void resetLines(LineTable &lines) {
    lines = LineTable{};
}

LineScaling scalingFromMetadata(const Metadata &metadata) {
    const RxMetadata &rx = metadata.Rx;
    return {{metadata.Stn.QdrBeg.value, metadata.Stn.QdrInc.value},
            {metadata.Stn.Beg.value, metadata.Stn.Inc.value},
            {rx.AreaX.value, rx.AreaY.value, rx.AreaZ.value}};
}

void presetFromMetadata(SurveyModel &model) {
    static_cast<LineScaling &>(model.preset) = scalingFromMetadata(model.metadata);
    model.preset.SelectedArrayIndex = model.metadata.Survey.ArrayIndex;
}

int heldArrayIndex(int arrayIndex) {
    return limited(arrayIndex, FixedLoop, CoincidentLoop);
}

std::size_t SoundingCounter::KeyHash::operator()(const Key &key) const {
    std::size_t hash = std::hash<int>{}(key.line);
    hash = hash * 31 + std::hash<double>{}(key.tx);
    hash = hash * 31 + std::hash<double>{}(key.rx);
    return hash * 31 + std::hash<float>{}(key.freq);
}

void SoundingCounter::count(const LineTable &lines, LineEntry &entry, double tx, double rx,
                            float freq) {
    const Key key{static_cast<int>(&entry - lines.entries.data()), tx, rx, freq};
    if (key == last_) {
        return;
    }
    last_ = key;
    if (seen_.insert(key).second) {
        ++entry.Soundings;
    }
}

int soundingsNeeded(const LineEntry &entry) {
    return entry.Soundings > 0 ? entry.Soundings : entry.Transients;
}

bool isHoldableStation(double station) {
    return std::fabs(station) <= 999999999.0;
}

bool isHoldableTime(float time) {
    return time == 0.0F || (time >= 1.0E-9F && time <= 9.999E9F);
}

void settleTxByOffset(SurveyModel &model) {
    const auto scale = static_cast<double>(model.control.StnScale);
    if (!(scale > 0.0)) {
        return;
    }
    for (int i = 0; i < model.SoundingCount; ++i) {
        const SoundingRecord &record = model.sounding(i + 1);
        if (model.preset.TxByOffset.count({record.TxStn, record.RxStn}) > 0) {
            const double offset = record.RxStn - record.TxStn;
            hTrn_Set_Stations(model, i, record.RxStn - offset / scale, record.RxStn);
        }
    }
    model.preset.TxByOffset.clear();
}

FindOrAdd findOrAddKeepingLast(SurveyModel &model, double TxStn, float TxFreq, double RxStn,
                               int &index) {
    if (model.SoundingCount < model.SoundingCapacity()) {
        return hTrn_Find_Or_Add(model, TxStn, TxFreq, RxStn, index);
    }
    index = hTrn_Find(model, TxStn, TxFreq, RxStn);
    return index < 0 ? FindOrAdd::Full : FindOrAdd::Found;
}

void LineNotice::note(int record, std::string_view line) {
    if (++count == 1) {
        firstRecord = record;
        firstLine = trimBlanks(line);
    }
}

void LineNotice::report(std::string_view file, std::string_view what,
                        std::string_view consequence) const {
    if (count > 0) {
        ReportWarning({"WARNING: " + std::string(what) + ": " + std::to_string(count) +
                           ", the first on line " + std::to_string(firstRecord) + " of " +
                           std::string(file),
                       firstLine, consequence});
    }
}

void LineNotices::note(std::string_view label, std::string_view fullName, std::string_view array,
                       int record) {
    const std::string key(label);
    const std::string name = Str_Upper(Str_No_Blanks(fullName)) + " " + Str_Upper(array);
    const auto known = nameOfLabel_.find(key);
    if (known == nameOfLabel_.end()) {
        if (nameOfLabel_.size() >= std::size_t{MaxSurveyLines}) {
            beyond_.note(record, fullName);
        }
        nameOfLabel_.emplace(key, name);
    } else if (known->second != name && shared_.insert(name).second) {
        merged_.note(record, fullName);
    }
}

void LineNotices::report(std::string_view file) const {
    beyond_.report(file, "Lines beyond the 32nd",
                   "Only the last of them can be chosen, in place of the 32nd line.");
    merged_.report(file, "Lines whose name and array agree in the 16 characters that are kept",
                   "They are taken as one line.");
}

GivenSettings givenSettings(const SurveyModel &model) {
    const Metadata &from = model.metadata;
    constexpr std::array<float, ComponentAxes> DefaultAreas = LineScaling{}.RxAreaXYZ;
    GivenSettings given;
    given.loop = from.Tx.LengthX.level > 0 || from.Tx.LengthY.level > 0;
    given.frequency = from.Tx.Freq.level > 0;
    given.coilArea = from.Rx.AreaX.level > 0 || from.Rx.AreaY.level > 0 ||
                     from.Rx.AreaZ.level > 0 || model.preset.RxAreaXYZ != DefaultAreas;
    given.array = from.Survey.Array.level > 0;
    given.centre = isPresent(from.Tx.CenterX.value) && isPresent(from.Tx.CenterY.value);
    return given;
}

void warnOfDefaults(std::string_view file, const GivenSettings &given, const SurveyModel &model) {
    const ControlValues &control = model.control;
    const std::string unit(nameOf(LengthUnitNames, control.LengthUnitsIndex));
    const auto warn = [&](bool isGiven, std::string_view what, const std::string &taken) {
        if (!isGiven) {
            ReportWarning({"WARNING: " + std::string(file) + " gives no " + std::string(what),
                           "The default is taken: " + taken});
        }
    };
    warn(given.loop, "size of the transmitter loop",
         messageNumber(control.XTxLength) + " by " + messageNumber(control.YTxLength) + " " + unit);
    warn(given.frequency, "transmitter frequency", messageNumber(control.TxFreq) + " Hz");
    warn(given.coilArea, "area of the receiver coil",
         messageNumber(model.preset.RxAreaXYZ[2]) + " m^2");
    warn(given.array, "survey array", control.SurveyType.str());
    warn(given.centre || control.SurveyTypeIndex != FixedLoop, "centre of the fixed loop",
         "East " + messageNumber(control.XTxCenter) + ", North " +
             messageNumber(control.YTxCenter));
}

void noteFileEnd(const LineReader &reader, std::string_view file) {
    if (reader.endedAtMark()) {
        ReportNotice(NoticeLevel::Box,
                     {"WARNING: " + std::string(file) + " has an end mark (code 26) after line " +
                          std::to_string(reader.lineNumber()),
                      "What stands behind it was not read."});
    }
    if (reader.endedInLine()) {
        ReportWarning({"WARNING: The last line of " + std::string(file) + " has no line end",
                       "The file may be cut."});
    }
    if (reader.firstCutLine() > 0) {
        ReportWarning({"WARNING: Line " + std::to_string(reader.firstCutLine()) + " of " +
                           std::string(file) + " is too long",
                       "What stands behind its last column that fits was not read."});
    }
}

void noteDecimalCommas(const LineNotice &commas, std::string_view file) {
    commas.report(file, "A data line seems to have commas for decimal points",
                  "A comma is read as the end of a column: the values are not what they seem.");
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
