#include "import/amira/keywords.h"

#include <algorithm>
#include <array>

namespace keldrin {

namespace {

// Sorted by label: the search stops at the first label above the one sought.
constexpr std::array<LabelAlias, 74> Aliases = {{
    {"ASEP", "YRXOFFSET"},
    {"AZI", "AZIMUTH"},
    {"AZIM", "AZIMUTH"},
    {"BASEFREQ", "TXFREQ"},
    {"BFREQ", "TXFREQ"},
    {"BOREHOLE", "LINE"},
    {"C", "COMPONENT"},
    {"CH0001", "CH1"},
    {"CH001", "CH1"},
    {"CH01", "CH1"},
    {"CHANNELS", "FREQUENCY"},
    {"COLE", "XCOLLAR"},
    {"COLN", "YCOLLAR"},
    {"COLRL", "ZCOLLAR"},
    {"COMP", "COMPONENT"},
    {"CONFIGURATION", "CONFIG"},
    {"CUR", "CURRENT"},
    {"CURR", "CURRENT"},
    {"DELAY", "INITDELAY"},
    {"DIST", "DISTANCE"},
    {"DIST_ABS", "DISTANCE"},
    {"DRILLHOLE", "LINE"},
    {"EASTING", "EAST"},
    {"ELEV", "ELEVATION"},
    {"F", "FREQUENCY"},
    {"FREQ", "FREQUENCY"},
    {"G", "GAIN"},
    {"HOLE", "LINE"},
    {"INIT", "INITDELAY"},
    {"INIT_DELAY", "INITDELAY"},
    {"INST", "INSTRUMENT"},
    {"LAYOUT", "CONFIG"},
    {"LOOPAREA", "TXAREA"},
    {"LOOPSIDE", "XTXLENGTH"},
    {"LOOPSIDEACROSS", "YTXLENGTH"},
    {"LSIDE", "XTXLENGTH"},
    {"LSIDEACROSS", "YTXLENGTH"},
    {"MODE", "CONFIG"},
    {"NCH", "NUMTIMES"},
    {"NORTHING", "NORTH"},
    {"NRTH", "NORTH"},
    {"PROFILE", "LINE"},
    {"PROJECT", "JOBNAME"},
    {"RAMP", "TURNOFF"},
    {"READING", "STATION"},
    {"RISETIME", "TURNON"},
    {"RMP", "TURNOFF"},
    {"RXAREAA", "RXAREAZ"},
    {"RXAREAU", "RXAREAX"},
    {"RXAREAV", "RXAREAY"},
    {"RXCMP", "COMPONENT"},
    {"RXDELAY", "ANTDELAY"},
    {"RXDX", "XRXOFFSET"},
    {"SEP", "XRXOFFSET"},
    {"SEPACROSS", "YRXOFFSET"},
    {"SEPARATION", "XRXOFFSET"},
    {"SEPARATIONACROSS", "YRXOFFSET"},
    {"SOUNDING", "STATION"},
    {"STN", "STATION"},
    {"TEMINST", "INSTRUMENT"},
    {"TXCENTX", "XTXCENTER"},
    {"TXCENTY", "YTXCENTER"},
    {"TXCX", "XTXCENTER"},
    {"TXCY", "YTXCENTER"},
    {"TXDELAY", "TURNOFF"},
    {"TXSIDE", "XTXLENGTH"},
    {"TXSIDEACROSS", "YTXLENGTH"},
    {"TYPE", "CONFIG"},
    {"UNITS", "TEMUNIT"},
    {"VP", "VPRI"},
    {"WIDTH", "TWWIDTH"},
    {"X", "EAST"},
    {"Y", "NORTH"},
    {"Z", "ELEVATION"},
}};

static_assert(std::is_sorted(Aliases.begin(), Aliases.end(),
                             [](const LabelAlias &a, const LabelAlias &b) {
                                 return a.label < b.label;
                             }));

} // namespace

std::span<const LabelAlias> amiraAliases() {
    return Aliases;
}

} // namespace keldrin
