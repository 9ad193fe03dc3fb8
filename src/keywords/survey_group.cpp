#include "base/index.h"
#include "keywords/group_readers.h"
#include "keywords/shared_names.h"

#include "base/ascii.h"

namespace keldrin {
namespace {

using namespace rows;

using Names = std::span<const std::string_view>;

constexpr std::array<std::string_view, 7> SurveyTypeNames = {"LOTEM", "TEM", "CSAMT", "NSAMT",
                                                             "TDIP",  "CR",  "RPIP"};
constexpr int NaturalSource = 4; // NSAMT

constexpr std::array<std::string_view, 6> LoopArrays = {"FXL", "MVL", "INL", "COL", "LOT", "CNT"};
constexpr std::array<std::string_view, 3> TensorArrays = {"SCALAR", "VECTOR", "TENSOR"};
constexpr std::array<std::string_view, 7> DipoleArrays = {"D-D", "P-D", "P-P", "GRD",
                                                          "SCH", "D-H", "LAB"};

/// The arrays of a survey type: LOTEM and TEM have loops, CSAMT and NSAMT tensors.
Names arraysOf(int typeIndex) {
    constexpr std::array<Names, SurveyTypeNames.size()> byType = {
        LoopArrays,   LoopArrays,   TensorArrays, TensorArrays,
        DipoleArrays, DipoleArrays, DipoleArrays};
    return byType[asIndex(typeIndex - 1)];
}

int readType(const Reading &reading) {
    SurveyMetadata &survey = reading.metadata.Survey;
    keepSource(reading, survey.Type, [&] {
        const std::string type = Str_Upper(reading.record.tokens.front());
        const std::string_view label = reading.row.label;
        if (type == "NSAMT" || type == "AMT" || type == "MT") {
            survey.TypeIndex = NaturalSource;
        } else if (!takeName(type, label, SurveyTypeNames, survey.TypeIndex)) {
            return false;
        }
        survey.Type.value = type;
        Val_Read_Digits(reading.record.where, type, label, survey.TypeNumber, survey.TypeNumber);
        return true;
    });
    return 0;
}

int readArray(const Reading &reading) {
    SurveyMetadata &survey = reading.metadata.Survey;
    keepSource(reading, survey.Array, [&] {
        const std::string_view array = reading.record.tokens.front();
        const Names names = arraysOf(survey.TypeIndex);
        if (!takeName(array, reading.row.label, names, survey.ArrayIndex)) {
            return false;
        }
        survey.Array.value = array;
        return true;
    });
    return 0;
}

constexpr auto SurveyRows = std::to_array<KeywordRow>({
    enumeration<&SurveyMetadata::AcqMethod>("ACQMETHOD", "Survey.AcqMethod", AcqMethodNames),
    irregular<&SurveyMetadata::Type>("TYPE", readType, {}, "Survey.Type"),
    irregular<&SurveyMetadata::Array>("ARRAY", readArray, {}, "Survey.Array"),
    text<&SurveyMetadata::Spread>("SPREAD"),
    text<&SurveyMetadata::Datum>("DATUM"),
    text<&SurveyMetadata::Proj>("PROJ"),
    number<&SurveyMetadata::UTMZone>("UTMZONE", zoneRange("Survey_MD_Read.WARNING: at record ")),
    dropped("DIRECTION"),
});

} // namespace

constinit const GroupTable SurveyGroup = groupTable<SurveyMetadata>("Survey", SurveyRows);

int Survey_MD_Read(const KeywordRecord &record, Metadata &metadata) {
    return readGroup(SurveyGroup, record, metadata);
}

} // namespace keldrin
