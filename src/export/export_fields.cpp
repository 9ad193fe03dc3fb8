#include "export/export_fields.h"

#include "base/index.h"

#include <array>
#include <charconv>
#include <cmath>
#include <stdexcept>

namespace keldrin {

namespace {

using Record = SoundingRecord;

template <auto member>
ExportValue recordValue(const ExportedSounding &sounding, std::size_t /*element*/) {
    return sounding.record->*member;
}

template <auto member>
ExportValue elementValue(const ExportedSounding &sounding, std::size_t element) {
    return (sounding.record->*member)[element];
}

/// Values that are 0 where there is none.
template <auto member>
ExportValue positiveValue(const ExportedSounding &sounding, std::size_t element) {
    const float value = (sounding.record->*member)[element];
    return value > 0.0F ? ExportValue(value) : ExportValue();
}

ExportValue lineName(const ExportedSounding &sounding, std::size_t /*element*/) {
    return sounding.control->LineName.view();
}

ExportValue lineNumber(const ExportedSounding &sounding, std::size_t /*element*/) {
    return sounding.control->LineNumber;
}

ExportValue ordinal(const ExportedSounding &sounding, std::size_t /*element*/) {
    return sounding.ordinal;
}

ExportValue elementNumber(const ExportedSounding & /*sounding*/, std::size_t element) {
    return static_cast<int>(element + 1);
}

ExportValue windowCount(const ExportedSounding &sounding, std::size_t /*element*/) {
    return static_cast<int>(sounding.windows);
}

ExportValue layerCount(const ExportedSounding &sounding, std::size_t /*element*/) {
    return static_cast<int>(sounding.layers);
}

/// A statistic of the data, to the digits that mean something.
ExportValue rounded(float value) {
    constexpr double digits = 1.0E4;
    return isPresent(value) ? std::round(static_cast<double>(value) * digits) / digits
                            : static_cast<double>(MissingValue);
}

ExportValue misfit(const ExportedSounding &sounding, std::size_t /*element*/) {
    return rounded(sounding.fit.misfit);
}

ExportValue medianMisfit(const ExportedSounding &sounding, std::size_t /*element*/) {
    return rounded(sounding.fit.median);
}

ExportValue windowResidual(const ExportedSounding &sounding, std::size_t element) {
    return rounded(sounding.fit.residuals[element]);
}

ExportValue depthOfData(const ExportedSounding &sounding, std::size_t /*element*/) {
    const auto seen = asIndex(seenLayers(*sounding.record));
    return seen > 0 ? ExportValue(sounding.edges[seen]) : ExportValue();
}

// A project file holds one frequency for all.
ExportValue frequency(const ExportedSounding &sounding, std::size_t /*element*/) {
    const float own = sounding.record->TxFreq;
    return isPresent(own) ? own : sounding.control->TxFreq;
}

// The mark of a skipped window leaves single precision no more than three decimals.
ExportValue windowError(const ExportedSounding &sounding, std::size_t element) {
    const float stored = sounding.record->TEMerr[element];
    if (!isPresent(stored)) {
        return {};
    }
    return isSkipped(stored) ? std::round(trueError(stored) * 1000.0F) / 1000.0F
                             : trueError(stored);
}

ExportValue windowFlag(const ExportedSounding &sounding, std::size_t element) {
    return isSkipped(sounding.record->TEMerr[element]) ? 1 : 0;
}

ExportValue layerTop(const ExportedSounding &sounding, std::size_t element) {
    return sounding.edges[element];
}

ExportValue layerBottom(const ExportedSounding &sounding, std::size_t element) {
    return sounding.edges[element + 1];
}

ExportValue layerElevation(const ExportedSounding &sounding, std::size_t element) {
    const double surface = sounding.record->Elevation;
    if (!isPresent(surface)) {
        return {};
    }
    const double depth = 0.5 * (sounding.edges[element] + sounding.edges[element + 1]);
    return std::round((surface - depth) * 1000.0) / 1000.0;
}

constexpr bool Key = true;
constexpr bool NoKey = false;
constexpr std::string_view PositionNull = "-9999999.99";
constexpr std::string_view StationNull = "-99999.000";
constexpr std::string_view RealNull = "-9.9999E+32";
constexpr std::string_view DataNull = "-9.99999E+32";
constexpr std::string_view PlainNull = "-99.000";

using enum FieldOf;

/// of, key, CSV name, GDF2 name, unit, format, null, words, value
constexpr auto Fields = std::to_array<ExportField>({
    {Sounding, Key, "line", "", "", "", "", "Name of the line", lineName},
    {Sounding, NoKey, "line_number", "line", "", "F12.2", PositionNull, "Line number", lineNumber},
    {Sounding, Key, "station", "station", StationUnit, "F12.3", StationNull, "Station on the line",
     recordValue<&Record::Station>},
    {Sounding, NoKey, "easting", "easting", LengthUnit, "F12.2", PositionNull, "Easting",
     recordValue<&Record::East>},
    {Sounding, NoKey, "northing", "northing", LengthUnit, "F12.2", PositionNull, "Northing",
     recordValue<&Record::North>},
    {Sounding, NoKey, "elevation", "elevation", LengthUnit, "F12.2", PositionNull,
     "Elevation of the surface", recordValue<&Record::Elevation>},
    {Sounding, Key, "transmitter", "transmitter", "", "F12.3", StationNull,
     "Transmitter station or loop number", recordValue<&Record::TxStn>},
    {Sounding, NoKey, "receiver", "receiver", StationUnit, "F12.3", StationNull, "Receiver station",
     recordValue<&Record::RxStn>},
    {Sounding, NoKey, "frequency", "frequency", "Hz", "F12.4", "-999.0000", "Repetition frequency",
     frequency},
    {Sounding, Key, "sounding", "sounding", "", "I8", "", "Number of the sounding in the project",
     ordinal},
    {Sounding, NoKey, "nwindows", "nwindows", "", "I4", "", "Number of windows", windowCount},
    {Sounding, NoKey, "nlayers", "nlayers", "", "I4", "", "Number of layers", layerCount},
    {Sounding, NoKey, "misfit", "misfit", "", "F12.3", PlainNull,
     "Misfit in standard deviations (robust rms)", misfit},
    {Sounding, NoKey, "median_misfit", "median_misfit", "", "F12.3", PlainNull,
     "Median misfit of the windows in standard deviations", medianMisfit},
    {Sounding, NoKey, "data_depth", "data_depth", LengthUnit, "F10.2", "-99999.99",
     "Depth down to which the data see", depthOfData},
    {Window, Key, "window", "", "", "", "", "Number of the window", elementNumber},
    {Window, NoKey, "time", "time", "ms", "E12.4", RealNull, "Centre of the window",
     elementValue<&Record::TWcenter>},
    {Window, NoKey, "width", "width", "ms", "E12.4", RealNull, "Width of the window",
     elementValue<&Record::TWwidth>},
    {Window, NoKey, "dbdt", "dbdt", "nV/(A m2)", "E13.5", DataNull, "Observed dB/dt",
     elementValue<&Record::TEMobs>},
    {Window, NoKey, "error", "dbdt_error", "%", "F10.3", PlainNull, "Error of dB/dt", windowError},
    {Window, NoKey, "flag", "flag", "", "I3", "-9", "1 where the window is skipped", windowFlag},
    {Window, NoKey, "apparent_resistivity", "apparent_resistivity", "ohm m", "E12.4", RealNull,
     "Apparent resistivity of the observed dB/dt", positiveValue<&Record::AResObs>},
    {Window, NoKey, "calculated", "calculated", "nV/(A m2)", "E13.5", DataNull,
     "dB/dt of the layered model", elementValue<&Record::TEMcalc>},
    {Window, NoKey, "misfit", "", "", "", "", "Observed less calculated in standard deviations",
     windowResidual},
    {Layer, Key, "layer", "", "", "", "", "Number of the layer", elementNumber},
    {Layer, NoKey, "top", "top", LengthUnit, "F11.3", "-99999.000", "Depth of the layer's top",
     layerTop},
    {Layer, NoKey, "bottom", "bottom", LengthUnit, "F11.3", "-99999.000",
     "Depth of the layer's bottom", layerBottom},
    {Layer, NoKey, "elevation", "", LengthUnit, "", "", "Elevation of the layer's middle",
     layerElevation},
    {Layer, NoKey, "resistivity", "resistivity", "ohm m", "E12.4", RealNull, "Layer resistivity",
     elementValue<&Record::ResInv>},
    {Layer, NoKey, "error", "resistivity_error", "%", "E12.4", RealNull,
     "Error of the layer resistivity", elementValue<&Record::Rerr>},
    {Layer, NoKey, "background", "", "ohm m", "", "", "Resistivity of the background",
     elementValue<&Record::Res0>},
    {Layer, NoKey, "sensitivity", "sensitivity", "", "E12.4", RealNull,
     "Sensitivity of the data to this layer and all below", elementValue<&Record::Rsns>},
});

// A null must leave a blank before it, or two columns would run into one.
constexpr bool nullsFit() {
    for (const ExportField &field : Fields) {
        if (!field.gdf2.empty() && field.null.size() >= columnWidth(field.format)) {
            return false;
        }
    }
    return true;
}
static_assert(nullsFit());

} // namespace

std::span<const ExportField> exportFields() {
    return Fields;
}

std::string_view unitText(const ExportField &field, const ControlValues &control) {
    const bool isLength =
        field.unit == LengthUnit || (field.unit == StationUnit && control.StnScale == 1.0F);
    if (isLength) {
        return nameOf(LengthUnitNames, control.LengthUnitsIndex);
    }
    return field.unit == StationUnit ? std::string_view() : field.unit;
}

std::size_t valueCount(const ExportField &field, const ExportedSounding &sounding) {
    switch (field.of) {
    case FieldOf::Window:
        return sounding.windows;
    case FieldOf::Layer:
        return sounding.layers;
    default:
        return 1;
    }
}

} // namespace keldrin
