#include "keywords/group_readers.h"
#include "keywords/length_units.h"
#include "keywords/shared_names.h"

#include "base/ascii.h"
#include "model/enumerations.h"

#include <algorithm>
#include <string>

namespace keldrin {
namespace {

using namespace rows;

constexpr std::array<std::string_view, 2> LengthNames = {"M", "F"};
constexpr std::array<std::string_view, 3> TimeNames = {"USEC", "MSEC", "SEC"};
constexpr int Msec = 2;
constexpr std::array<std::string_view, 8> VNames = {"NV/A", "UV/A", "MV/A", "V/A",
                                                    "NV",   "UV",   "MV",   "V"};
// "MV/Am" stays in mixed case: no value, which is compared in upper case, equals it, so "mV/Am" is
// found by containment to be V/AM, as it always was.
constexpr std::array<std::string_view, 8> ENames = {"NV/AM", "UV/AM", "MV/Am", "V/AM",
                                                    "NV/M",  "UV/M",  "MV/M",  "V/M"};
constexpr std::array<std::string_view, 6> BNames = {"PT/A", "NT/A", "T/A", "PT", "NT", "T"};
constexpr std::array<std::string_view, 2> PhaseNames = {"MRAD", "DEG"};
constexpr std::array<std::string_view, 2> PhaseSignNames = {"EM", "IP"};
constexpr std::array<std::string_view, 2> DBdtNames = {"UV/A", "NV/AM2"};
constexpr std::array<std::string_view, 1> ResNames = {"OHM-"};

/// Lengths are read in metres or feet. A unit that only begins with such a letter, as "cm" seems to
/// do, is reported.
int readLengthUnit(const Reading &reading) {
    UnitMetadata &unit = reading.metadata.Unit;
    keepSource(reading, unit.Length, [&] {
        const int before = unit.Length.value;
        if (!takeEnumerations(reading, elementsOf(unit.Length.value))) {
            return false;
        }
        settleAssumedLengths(reading.metadata, before, unit.Length.value);
        const std::string_view word = reading.record.tokens.front();
        if (lengthUnitNamed(word) == 0 && word.find_first_of("mMfF") != std::string_view::npos) {
            notePartlyUsed(reading, std::string("is not a unit of lengths here: ") +
                                        (unit.Length.value == Feet ? "feet" : "metres") +
                                        " are taken");
        }
        return true;
    });
    return 0;
}

/// Times are read in msec whatever the file states.
int readTimeUnit(const Reading &reading) {
    SourcedInt &unit = reading.metadata.Unit.Time;
    keepSource(reading, unit, [&] {
        const bool stored = takeEnumerations(reading, elementsOf(unit.value));
        if (stored && unit.value != Msec) {
            notePartlyUsed(reading, "is not used: the times of AVG and Z files are read in msec");
        }
        return stored;
    });
    return 0;
}

/// Values are read in uV/A whatever the file states. Only a whole name counts: "uV/Am2" holds
/// "uV/A" and is another unit.
int readDBdtUnit(const Reading &reading) {
    SourcedInt &unit = reading.metadata.Unit.dBdt;
    keepSource(reading, unit, [&] {
        const std::string word = Str_Upper(reading.record.tokens.front());
        if (word.empty() || holds(word, "*")) {
            return false;
        }
        if (word != reading.row.names.front()) {
            notePartlyUsed(reading, "is not used: the values of AVG and Z files are read in uV/A");
        }
        const auto found = std::find(reading.row.names.begin(), reading.row.names.end(), word);
        if (found == reading.row.names.end()) {
            return false;
        }
        unit.value = static_cast<int>(found - reading.row.names.begin()) + 1;
        return true;
    });
    return 0;
}

/// A second token names the sign convention.
int readPhase(const Reading &reading) {
    UnitMetadata &unit = reading.metadata.Unit;
    const auto &tokens = reading.record.tokens;
    keepSource(reading, unit.Phase, [&] {
        bool stored = takeEnumerations(reading, elementsOf(unit.Phase.value));
        if (tokens.size() > 1 && !tokens[1].empty()) {
            unit.PhaseSign = holds(Str_Upper(tokens[1]), "IP") ? 2 : 1;
            stored = true;
        }
        return stored;
    });
    return 0;
}

int readPhaseSign(const Reading &reading) {
    UnitMetadata &unit = reading.metadata.Unit;
    keepSource(reading, unit.Phase,
               [&] { return takeEnumerations(reading, elementsOf(unit.PhaseSign)); });
    return 0;
}

constexpr auto UnitRows = std::to_array<KeywordRow>({
    irregular<&UnitMetadata::Length>("LENGTH", readLengthUnit, {}, "Unit.Length", LengthNames),
    irregular<&UnitMetadata::Time>("TIME", readTimeUnit, {}, "Unit.Time", TimeNames),
    enumeration<&UnitMetadata::V>("V", "Unit.V", VNames),
    enumeration<&UnitMetadata::E>("E", "Unit.E", ENames),
    enumeration<&UnitMetadata::B>("B", "Unit.B", BNames),
    irregular<&UnitMetadata::Phase>("PHASE", readPhase, {}, "Unit.Phase", PhaseNames),
    irregular<&UnitMetadata::PhaseSign>("PHASESIGN", readPhaseSign, {}, "Unit.PhaseSign",
                                        PhaseSignNames),
    irregular<&UnitMetadata::dBdt>("DBDT", readDBdtUnit, {}, "Unit.dBdt", DBdtNames),
    enumeration<&UnitMetadata::Res>("RES", "Unit.Res", ResNames),
    enumeration<&UnitMetadata::IP>("IP", "Unit.IP", IPNames),
});

} // namespace

constinit const GroupTable UnitGroup = groupTable<UnitMetadata>("Unit", UnitRows);

int Unit_MD_Read(const KeywordRecord &record, Metadata &metadata) {
    return readGroup(UnitGroup, record, metadata);
}

} // namespace keldrin
