#include "keywords/group_readers.h"
#include "keywords/shared_names.h"

#include "base/ascii.h"

namespace keldrin {
namespace {

using namespace rows;

constexpr std::array<std::string_view, 2> LengthNames = {"M", "F"};
constexpr std::array<std::string_view, 3> TimeNames = {"USEC", "MSEC", "SEC"};
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
    enumeration<&UnitMetadata::Length>("LENGTH", "Unit.Length", LengthNames),
    enumeration<&UnitMetadata::Time>("TIME", "Unit.Time", TimeNames),
    enumeration<&UnitMetadata::V>("V", "Unit.V", VNames),
    enumeration<&UnitMetadata::E>("E", "Unit.E", ENames),
    enumeration<&UnitMetadata::B>("B", "Unit.B", BNames),
    irregular("PHASE", readPhase, {}, "Unit.Phase", PhaseNames),
    irregular("PHASESIGN", readPhaseSign, {}, "Unit.PhaseSign", PhaseSignNames),
    enumeration<&UnitMetadata::dBdt>("DBDT", "Unit.dBdt", DBdtNames),
    enumeration<&UnitMetadata::Res>("RES", "Unit.Res", ResNames),
    enumeration<&UnitMetadata::IP>("IP", "Unit.IP", IPNames),
});

constexpr GroupTable UnitGroup = groupTable<UnitMetadata>("Unit", UnitRows);

} // namespace

int Unit_MD_Read(const KeywordRecord &record, Metadata &metadata) {
    return readGroup(UnitGroup, record, metadata);
}

} // namespace keldrin
