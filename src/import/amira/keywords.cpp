#include "import/amira/keywords.h"

#include "base/ascii.h"
#include "base/free_form.h"
#include "base/index.h"
#include "base/number_text.h"
#include "import/amira/times.h"
#include "messages/message_log.h"
#include "text/edit_distance.h"
#include "text/enumeration.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <type_traits>

namespace keldrin {

namespace {

constexpr std::string_view ValueWarning = "AMR_Read_Keyword_Value.WARNING:";
constexpr float LargestAzimuth = 360.0F;
constexpr float LeastFrequency = 1.0E-6F; ///< Hz

/// One pair on its way to its table row. The keyword is the one in use, in capitals; tabs and
/// quotes of the value are gone.
struct AmiraPair {
    const RecordLine &where;
    std::string_view keyword;
    std::string_view value;
    AmiraRecord &record;
    float substitute; ///< for a value that cannot be read; coordinates become missing
    float least;      ///< of a size; a smaller one is not used

    [[nodiscard]] std::string text() const {
        return std::string(keyword) + ":" + std::string(value);
    }
};

using PairReader = int (*)(const AmiraPair &pair);

struct AmiraKeyword {
    std::string_view keyword;
    PairReader read;
    float substitute = 0.0F;
    float least = 0.0F;
    std::string (*initial)() = nullptr; ///< the value in force before the file, for the manual
};

int readCell(const AmiraPair &pair, float &value) {
    return Val_Read_R4(pair.where, pair.value, pair.keyword, pair.substitute, value);
}
int readCell(const AmiraPair &pair, double &value) {
    return Val_Read_R8(pair.where, pair.value, pair.keyword, MissingValue, value);
}
int readCell(const AmiraPair &pair, int &value) {
    return Val_Read_Int(pair.where, pair.value, pair.keyword, static_cast<int>(pair.substitute),
                        value);
}

template <auto Member>
int readText(const AmiraPair &pair) {
    if (!pair.value.empty()) {
        pair.record.*Member = pair.value;
    }
    return 0;
}

template <auto Member>
int readCapitals(const AmiraPair &pair) {
    if (!pair.value.empty()) {
        pair.record.*Member = Str_Upper(pair.value);
    }
    return 0;
}

template <auto Member>
int readNumber(const AmiraPair &pair) {
    auto value = pair.record.*Member;
    if (readCell(pair, value) != CellEmpty) {
        pair.record.*Member = value;
    }
    return 0;
}

// A size that must not be negative. CellEmpty when there is none to take; one that is too small is
// reported.
int takeSize(const AmiraPair &pair, float &size) {
    float value = 0.0F;
    const int status = readCell(pair, value);
    if (status == CellEmpty) {
        return status;
    }
    const std::string words = std::string(ValueWarning) + " " + std::string(pair.keyword) + " = " +
                              messageNumber(value) + " < ";
    if (std::fabs(value) < pair.least) {
        warnAt(pair.where, {words + messageNumber(pair.least), "It is not used."});
        return CellEmpty;
    }
    if (value < 0.0F) {
        warnAt(pair.where, {words + "0", "The sign is dropped."});
    }
    size = std::fabs(value);
    return status;
}

template <auto Member>
int readSize(const AmiraPair &pair) {
    takeSize(pair, pair.record.*Member);
    return 0;
}

// The coil area of the axes that have no keyword of their own.
int readArea(const AmiraPair &pair) {
    AmiraRecord &record = pair.record;
    if (takeSize(pair, record.RxArea) != CellRead) {
        return 0;
    }
    record.hasArea = true;
    for (std::size_t axis = 0; axis < ComponentAxes; ++axis) {
        if (!record.hasOwnArea[axis]) {
            record.RxAreaXYZ[axis] = record.RxArea;
        }
    }
    return 0;
}

template <std::size_t Axis>
int readAxisArea(const AmiraPair &pair) {
    if (takeSize(pair, pair.record.RxArea) != CellEmpty) {
        pair.record.RxAreaXYZ[Axis] = pair.record.RxArea;
        pair.record.hasOwnArea[Axis] = true;
        pair.record.hasArea = true;
    }
    return 0;
}

int readDataType(const AmiraPair &pair) {
    readCapitals<&AmiraRecord::DataType>(pair);
    FixedText<256> &type = pair.record.DataType;
    if (type == "VOLTAGE") {
        type = "TEM";
    }
    if (type == "TEM") {
        return 0;
    }
    reportAt(pair.where, {"AMIRA TEM Input ERROR:", "DataType=" + type.str() + " /= TEM"});
    return StopsFile;
}

int readConfig(const AmiraPair &pair) {
    readCapitals<&AmiraRecord::Config>(pair);
    pair.record.arrayIndex = amiraArrayIndex(pair.record.Config.view());
    pair.record.hasConfig = pair.record.hasConfig || !pair.value.empty();
    return 0;
}

int readComponent(const AmiraPair &pair) {
    readCapitals<&AmiraRecord::Component>(pair);
    pair.record.componentCode = amiraComponent(pair.record.Component.view());
    return 0;
}

// The index of a known name, 0 for another text.
int knownUnit(std::string_view upper) {
    for (const AmiraUnitSpelling &spelling : AmiraUnitSpellings) {
        if (upper == spelling.name) {
            return spelling.index;
        }
    }
    const auto *const found = std::find(AmiraUnitNames.begin(), AmiraUnitNames.end(), upper);
    return found == AmiraUnitNames.end() ? 0 : static_cast<int>(found - AmiraUnitNames.begin()) + 1;
}

int nearestUnit(std::string_view text) {
    const auto *const nearest = std::min_element(
        AmiraUnitNames.begin(), AmiraUnitNames.end(), [&](std::string_view a, std::string_view b) {
            return Str_Edit_Distance(text, a) < Str_Edit_Distance(text, b);
        });
    return static_cast<int>(nearest - AmiraUnitNames.begin()) + 1;
}

// The user is asked about a unit of unknown name, with the nearest name preselected. The unit that
// was taken is reported after the rows, see warnOfGuesses().
int readUnit(const AmiraPair &pair) {
    if (pair.value.empty()) {
        return 0;
    }
    AmiraRecord &record = pair.record;
    record.TEMUnit = pair.value;
    record.unitIndex = knownUnit(Str_Upper(pair.value));
    record.unitIsGuessed = record.unitIndex == 0;
    int index = nearestUnit(pair.value);
    if (record.unitIsGuessed &&
        Str_to_iEnumeration(pair.value, "Unit.TEM", AmiraUnitNames, index) == 0) {
        record.unitIndex = index;
    }
    record.unitIsGuessed = record.unitIsGuessed && record.unitIndex > 0;
    return 0;
}

// A name of the channels, but some files give the base frequency here: "25" or "25 Hz".
int readFrequency(const AmiraPair &pair) {
    if (pair.value.empty()) {
        return 0;
    }
    const std::string text = Str_Upper(pair.value);
    pair.record.Frequency = text;
    std::string_view number = text;
    if (number.size() > 2 && number.substr(number.size() - 2) == "HZ") {
        number = trimBlanks(number.substr(0, number.size() - 2));
    }
    float hertz = 0.0F;
    const bool isNumber = number.find_first_of(" \t,/") == std::string_view::npos &&
                          readFreeForm(number, hertz) == FreeForm::Value && hertz >= LeastFrequency;
    pair.record.frequencyNumber = isNumber ? hertz : static_cast<float>(MissingValue);
    return 0;
}

int readTxFreq(const AmiraPair &pair) {
    pair.record.hasTxFreq =
        takeSize(pair, pair.record.TxFreq) != CellEmpty || pair.record.hasTxFreq;
    return 0;
}

int readXRxOffset(const AmiraPair &pair) {
    float offset = 0.0F;
    if (readCell(pair, offset) != CellEmpty) {
        pair.record.XRxOffset = offset;
        pair.record.hasXRxOffset = true;
    }
    return 0;
}

// The text is kept, the number only where there is one.
template <auto Text, auto Number>
int readNamed(const AmiraPair &pair) {
    if (pair.value.empty()) {
        return 0;
    }
    pair.record.*Text = pair.value;
    using Real = std::remove_reference_t<decltype(pair.record.*Number)>;
    double number = 0.0;
    const bool read = AMR_Number(pair.where, pair.value, number) == CellRead;
    pair.record.*Number = read ? static_cast<Real>(number) : static_cast<Real>(MissingValue);
    return 0;
}

int readLoop(const AmiraPair &pair) {
    double number = pair.record.LoopNumber;
    if (AMR_Number(pair.where, pair.value, number) == CellRead) {
        pair.record.hasLoop = true;
        pair.record.LoopNumber = number;
    }
    return readText<&AmiraRecord::Loop>(pair);
}

int readAzimuth(const AmiraPair &pair) {
    float azimuth = MissingValue;
    if (Val_Read_Azimuth(pair.where, pair.value, pair.keyword, pair.substitute, azimuth) ==
        CellEmpty) {
        return 0;
    }
    if (!(azimuth >= -LargestAzimuth && azimuth <= LargestAzimuth)) {
        reportAt(pair.where, {std::string(ValueWarning) + " " + std::string(pair.keyword) + " =" +
                              messageNumber(azimuth) + " < -360 or > 360"});
    }
    pair.record.Azimuth = azimuth;
    return 0;
}

template <class T>
std::string amiraValueText(const T &value) {
    if constexpr (std::is_arithmetic_v<T>) {
        const auto number = static_cast<double>(value);
        return isPresent(number) ? messageNumber(number) : std::string();
    } else {
        return value.str();
    }
}

template <auto Member>
std::string amiraInitial() {
    const AmiraRecord record;
    return amiraValueText(record.*Member);
}

template <auto Member>
constexpr AmiraKeyword textRow(std::string_view keyword) {
    return {keyword, readText<Member>, 0.0F, 0.0F, amiraInitial<Member>};
}
template <auto Member>
constexpr AmiraKeyword capitalsRow(std::string_view keyword) {
    return {keyword, readCapitals<Member>, 0.0F, 0.0F, amiraInitial<Member>};
}
template <auto Member>
constexpr AmiraKeyword numberRow(std::string_view keyword, float substitute = 0.0F) {
    return {keyword, readNumber<Member>, substitute, 0.0F, amiraInitial<Member>};
}
template <auto Member>
constexpr AmiraKeyword sizeRow(std::string_view keyword, float substitute) {
    return {keyword, readSize<Member>, substitute, 0.0F, amiraInitial<Member>};
}
/// One with a reader of its own.
template <auto Member>
constexpr AmiraKeyword ownRow(std::string_view keyword, PairReader read, float substitute = 0.0F,
                              float least = 0.0F) {
    return {keyword, read, substitute, least, amiraInitial<Member>};
}

constexpr auto Absent = static_cast<float>(MissingValue);
constexpr float LeastArea = 0.01F; ///< m^2

constexpr auto Keywords = std::to_array<AmiraKeyword>({
    textRow<&AmiraRecord::JobName>("JOBNAME"),
    textRow<&AmiraRecord::JobArea>("JOBAREA"),
    textRow<&AmiraRecord::JobFor>("JOBFOR"),
    textRow<&AmiraRecord::JobBy>("JOBBY"),
    ownRow<&AmiraRecord::DataType>("DATATYPE", readDataType),
    ownRow<&AmiraRecord::Config>("CONFIG", readConfig),
    textRow<&AmiraRecord::Date>("DATE"),
    capitalsRow<&AmiraRecord::Instrument>("INSTRUMENT"),
    ownRow<&AmiraRecord::Frequency>("FREQUENCY", readFrequency),
    ownRow<&AmiraRecord::TEMUnit>("TEMUNIT", readUnit),
    ownRow<&AmiraRecord::Line>("LINE", readNamed<&AmiraRecord::Line, &AmiraRecord::LineNumber>),
    ownRow<&AmiraRecord::Station>("STATION",
                                  readNamed<&AmiraRecord::Station, &AmiraRecord::StationNumber>),
    ownRow<&AmiraRecord::Azimuth>("AZIMUTH", readAzimuth, 90.0F),
    numberRow<&AmiraRecord::East>("EAST", Absent),
    numberRow<&AmiraRecord::North>("NORTH", Absent),
    numberRow<&AmiraRecord::Elevation>("ELEVATION", Absent),
    numberRow<&AmiraRecord::Depth0RL>("DEPTH0RL"),
    numberRow<&AmiraRecord::Depth>("DEPTH", Absent),
    numberRow<&AmiraRecord::Distance>("DISTANCE", Absent),
    ownRow<&AmiraRecord::Component>("COMPONENT", readComponent),
    ownRow<&AmiraRecord::RxArea>("RXAREA", readArea, 1.0F, LeastArea),
    ownRow<&AmiraRecord::RxArea>("RXAREAX", readAxisArea<0>, 1.0F, LeastArea),
    ownRow<&AmiraRecord::RxArea>("RXAREAY", readAxisArea<1>, 1.0F, LeastArea),
    ownRow<&AmiraRecord::RxArea>("RXAREAZ", readAxisArea<2>, 1.0F, LeastArea),
    ownRow<&AmiraRecord::XRxOffset>("XRXOFFSET", readXRxOffset),
    numberRow<&AmiraRecord::YRxOffset>("YRXOFFSET"),
    numberRow<&AmiraRecord::ZRxOffset>("ZRXOFFSET"),
    numberRow<&AmiraRecord::AntDelay>("ANTDELAY"),
    capitalsRow<&AmiraRecord::Gain>("GAIN"),
    ownRow<&AmiraRecord::Loop>("LOOP", readLoop),
    capitalsRow<&AmiraRecord::LoopShape>("LOOPSHAPE"),
    sizeRow<&AmiraRecord::TxArea>("TXAREA", 1.0F),
    sizeRow<&AmiraRecord::XTxLength>("XTXLENGTH", 100.0F),
    sizeRow<&AmiraRecord::YTxLength>("YTXLENGTH", 100.0F),
    numberRow<&AmiraRecord::TxTurn>("TXTURN", 1.0F),
    numberRow<&AmiraRecord::XTxCenter>("XTXCENTER", Absent),
    numberRow<&AmiraRecord::YTxCenter>("YTXCENTER", Absent),
    numberRow<&AmiraRecord::ZTxCenter>("ZTXCENTER", Absent),
    textRow<&AmiraRecord::TxFile>("TXFILE"),
    ownRow<&AmiraRecord::TxFreq>("TXFREQ", readTxFreq, 0.01F, LeastFrequency),
    numberRow<&AmiraRecord::OnTime>("ONTIME", 1000.0F),
    numberRow<&AmiraRecord::OffTime>("OFFTIME", 1000.0F),
    numberRow<&AmiraRecord::TurnOn>("TURNON"),
    numberRow<&AmiraRecord::TurnOff>("TURNOFF"),
    numberRow<&AmiraRecord::Current>("CURRENT", 1.0F),
    numberRow<&AmiraRecord::XCollar>("XCOLLAR", Absent),
    numberRow<&AmiraRecord::YCollar>("YCOLLAR", Absent),
    numberRow<&AmiraRecord::ZCollar>("ZCOLLAR", Absent),
    numberRow<&AmiraRecord::Dip>("DIP", 90.0F),
    capitalsRow<&AmiraRecord::Polarity>("POLARITY"),
    numberRow<&AmiraRecord::VPri>("VPRI", 1.0F),
    textRow<&AmiraRecord::ChannelFile>("CHANNELFILE"),
    numberRow<&AmiraRecord::InitDelay>("INITDELAY"),
    numberRow<&AmiraRecord::NumTimes>("NUMTIMES"),
});

// A coordinate of a corner of the loop: LV, the number of the corner, the axis.
int readVertex(const AmiraPair &pair) {
    int index = 0;
    const bool hasIndex = Str_Trailing_Integer(pair.keyword, index) == 0;
    const auto corners = static_cast<int>(LoopVertices);
    if (!hasIndex || index < 1 || index > corners) {
        reportAt(pair.where, {std::string(ValueWarning) + " invalid index", pair.text(),
                              "Index=" + std::to_string(hasIndex ? index : 0) +
                                  " < 1 or > maximum=" + std::to_string(corners)});
        return 1;
    }
    constexpr std::array coordinates = {&LoopVertex::x, &LoopVertex::y, &LoopVertex::z};
    const std::size_t axis = std::string_view("XYZ").find(pair.keyword.back());
    if (axis == std::string_view::npos) {
        reportAt(pair.where, {std::string(ValueWarning) + " invalid component label", pair.text(),
                              "Trailing component character in " + std::string(pair.keyword) +
                                  " must be X, Y or Z"});
        return 1;
    }
    double &coordinate = pair.record.vertices[asIndex(index - 1)].*coordinates[axis];
    double value = coordinate;
    if (readCell(pair, value) != CellEmpty) {
        coordinate = value;
    }
    return 0;
}

int readTimes(const AmiraPair &pair) {
    return AMR_Read_Times(pair.where, pair.keyword, pair.value, pair.record.times);
}

// The row of a keyword: an equal one first, then those that a part of the keyword names.
AmiraKeyword rowOf(std::string_view keyword) {
    const auto *const found =
        std::find_if(Keywords.begin(), Keywords.end(),
                     [keyword](const AmiraKeyword &row) { return row.keyword == keyword; });
    if (found != Keywords.end()) {
        return *found;
    }
    if (keyword.substr(0, 2) == "LV") {
        return {"LV", readVertex, Absent};
    }
    if (holds(keyword, "TIMES")) {
        return {"TIMES", readTimes};
    }
    return {keyword, nullptr};
}

// The value without tabs, quotes and the blanks around it.
std::string cleaned(std::string_view text) {
    std::string clean(text);
    std::replace_if(
        clean.begin(), clean.end(), [](char c) { return c == '"' || c == '\t'; }, ' ');
    return std::string(trimBlanks(clean));
}

} // namespace

std::vector<AmiraKeywordFacts> amiraKeywords() {
    std::vector<AmiraKeywordFacts> facts;
    facts.reserve(std::size(Keywords));
    for (const AmiraKeyword &keyword : Keywords) {
        facts.push_back({keyword.keyword, keyword.initial(), keyword.least});
    }
    return facts;
}

std::string amiraKeyword(std::string_view keyword) {
    return std::string(aliasOf(Str_Upper(cleaned(keyword)), amiraAliases()));
}

bool isAmiraKeyword(std::string_view keyword) {
    return rowOf(amiraKeyword(keyword)).read != nullptr;
}

int AMR_Read_Keyword_Value(const RecordLine &where, std::string_view keyword,
                           std::string_view value, AmiraRecord &record) {
    ReportInfoLine(std::string(keyword) + ":" + std::string(value));
    const std::string known = amiraKeyword(keyword);
    const AmiraKeyword row = rowOf(known);
    if (row.read == nullptr) {
        return 0;
    }
    const std::string clean = cleaned(value);
    return row.read({where, known, clean, record, row.substitute, row.least});
}

} // namespace keldrin
