#include "conditioning/configuration_dialog.h"

#include "base/ascii.h"
#include "base/paths.h"
#include "projectfile/control_table.h"
#include "toolkit/control_ids.h"

#include <array>
#include <type_traits>
#include <utility>

namespace keldrin {

namespace {

using enum ControlKind;

constexpr std::string_view OneDecimal = "(F12.1)";
constexpr std::string_view FourDecimals = "(0P,G12.4E1)";
constexpr std::string_view ProjectExtension = ".std";

// ---- What the controls show besides control values

std::string lengthUnit(const Configuration &shown) {
    return std::string(nameOf(LengthUnitNames, shown.model->control.LengthUnitsIndex));
}

std::string loopSizeTitle(const Configuration &shown) {
    return "Tx Loop Size (" + lengthUnit(shown) + ")";
}

std::string loopCenterTitle(const Configuration &shown) {
    return "FXL Tx Loop Center (" + lengthUnit(shown) + ")";
}

bool isFixedLoop(const Configuration &shown) {
    return shown.model->control.SurveyTypeIndex == FixedLoop;
}

bool isMovingLoop(const Configuration &shown) {
    return shown.model->control.SurveyTypeIndex == MovingLoop;
}

// A typed ".std" is dropped. A blank name, or one with a separator, is not accepted.
bool takeBaseName(std::string &base, const FieldValue &value) {
    const std::string &typed = std::get<std::string>(value);
    std::string_view name = trimBlanks(typed);
    constexpr std::size_t extension = ProjectExtension.size();
    if (name.size() >= extension &&
        sameIgnoringCase(name.substr(name.size() - extension), ProjectExtension)) {
        name = trimBlanks(name.substr(0, name.size() - extension));
    }
    if (name.empty() || name.find_first_of("/\\") != std::string_view::npos) {
        return false;
    }
    base = name;
    return true;
}

// ---- Rows of the table

template <auto... Path>
constexpr FieldAccess controlField() {
    return fieldOf<&Configuration::model, &SurveyModel::control, Path...>();
}

// A control value with the limits that the project's reader keeps too.
template <auto Member>
constexpr ControlSpec value(int id, ControlKind kind, std::string_view label,
                            std::string_view format = {}, std::string_view unit = {}) {
    constexpr const ControlRow &row = controlRowOf(Member);
    return {.id = id,
            .kind = kind,
            .label = label,
            .format = format,
            .unit = unit,
            .limits = {row.range.low, row.range.high},
            .field = controlField<Member>(),
            .key = row.name};
}

template <auto... Path>
constexpr ControlSpec text(int id, std::string_view label) {
    constexpr auto length =
        static_cast<int>(std::remove_cvref_t<decltype(dialog_field::follow<Path...>(
                             std::declval<ControlValues &>()))>::Limit);
    return {
        .id = id, .kind = Text, .label = label, .length = length, .field = controlField<Path...>()};
}

// A position takes any number and is a matter of Fixed-Loop; a value typed before the array was
// changed counts all the same.
template <auto Member>
constexpr ControlSpec position(int id, std::string_view label, std::string_view format) {
    ControlSpec spec = value<Member>(id, Double, label, format);
    spec.limits = {};
    spec.enabledFrom = givenBy<isFixedLoop>();
    spec.readWhileDisabled = true;
    return spec;
}

template <auto Member, const auto &Names>
constexpr ControlSpec list(int id, std::string_view label) {
    return {.id = id,
            .kind = List,
            .label = label,
            .length = static_cast<int>(std::size(Names)),
            .field = controlField<Member>(),
            .entries = alwaysNamed<Names>()};
}

template <auto textOf>
constexpr ControlSpec title(int id, std::string_view label, StaticLook look) {
    return {.id = id, .label = label, .field = shownBy<textOf>(), .look = look};
}

constexpr ControlSpec beginning(ControlSpec spec, DialogPart part, std::string_view title = {}) {
    spec.part = part;
    spec.partTitle = title;
    return spec;
}

// A field after a row's title, with its label above it.
constexpr ControlSpec under(ControlSpec spec) {
    spec.labelAbove = true;
    return inRow(spec);
}

constexpr ControlSpec withLengthUnit(ControlSpec spec) {
    spec.unitFrom = ConfigurationControl::OffsetUnit;
    return spec;
}

constexpr ControlSpec forMovingLoop(ControlSpec spec) {
    spec.enabledFrom = givenBy<isMovingLoop>();
    return spec;
}

constexpr ControlSpec saveAs() {
    return {.id = ConfigurationControl::SaveAs,
            .kind = Text,
            .label = "Save As",
            .unit = ProjectExtension,
            .length = 255,
            .field = fieldTakenBy<takeBaseName, &Configuration::name, &ProjectName::base>(
                "is no name of a file")};
}

using namespace ConfigurationControl;
using CV = ControlValues;

constexpr std::array ConfigurationControls = {
    beginning(text<&CV::Header, 1>(Header2, "Descriptive Text"), DialogPart::Frame, "Job and line"),
    text<&CV::Header, 2>(Header3, ""),
    text<&CV::Header, 3>(Header4, ""),
    text<&CV::JobName>(JobName, "Job Name"),
    inRow(text<&CV::JobArea>(JobArea, "Job Area")),
    text<&CV::JobFor>(JobFor, "Job For"),
    inRow(text<&CV::JobBy>(JobBy, "Job By")),
    text<&CV::LineName>(LineName, "Line Name"),
    inRow(value<&CV::LineNumber>(LineNumber, Real, "Line Number", OneDecimal)),
    inRow(value<&CV::LineAzimuth>(LineAzimuth, Integer, "Line Azimuth", {}, "deg")),
    beginning(value<&CV::StnScale>(StnScale, Real, "Station # Scale", "(1P,G12.4E1)"),
              DialogPart::LeftFrame, "Array"),
    inRow(list<&CV::LengthUnitsIndex, LengthUnitNames>(LengthUnits, "Length Units")),
    list<&CV::SurveyTypeIndex, SurveyTypeNames>(SurveyArray, "TEM Array"),
    withLengthUnit(forMovingLoop(
        value<&CV::YRxOffset>(Offset, Real, "Tx-Rx Offset (across-line)", OneDecimal))),
    inRow(title<lengthUnit>(OffsetUnit, "m", StaticLook::Unit)),
    beginning(title<loopSizeTitle>(LoopSizeTitle, "Tx Loop Size (m)", StaticLook::RowTitle),
              DialogPart::LeftFrame, "Transmitter"),
    withLengthUnit(under(named(value<&CV::XTxLength>(LoopSizeX, Real, "x along line", OneDecimal),
                               "Tx Loop Size x along line"))),
    withLengthUnit(under(named(value<&CV::YTxLength>(LoopSizeY, Real, "y across line", OneDecimal),
                               "Tx Loop Size y across line"))),
    under(named(value<&CV::TxAzimuth>(LoopAzimuth, Integer, "x azm", {}, "deg"), "Tx Loop x azm")),
    under(value<&CV::NTxTurn>(Turns, Integer, "# Turns")),
    value<&CV::TxRamp>(Ramp, Real, "Transmitter Ramp Time", OneDecimal, "usec"),
    value<&CV::TxFreq>(Frequency, Real, "Transmitter Frequency", FourDecimals, "Hz"),
    position<&CV::TxStn>(Transmitter, "Tx.Stn =Tx ID", "(F14.1)"),
    title<loopCenterTitle>(LoopCenterTitle, "FXL Tx Loop Center (m)", StaticLook::RowTitle),
    under(named(position<&CV::XTxCenter>(LoopEast, "East", "(F12.0)"), "Tx Loop Center East")),
    under(named(position<&CV::YTxCenter>(LoopNorth, "North", "(F12.0)"), "Tx Loop Center North")),
    beginning(
        value<&CV::dpWeight>(BackgroundWeight, Real, "Background Model Weighting", FourDecimals),
        DialogPart::RightFrame, "Inversion"),
    value<&CV::dzWeight>(SmoothnessWeight, Real, "Vertical Smoothness Weighting", FourDecimals),
    value<&CV::ErrorFloor>(ErrorFloor, Real, "Data Error Floor", OneDecimal, "%"),
    value<&CV::Niteration>(Iterations, Integer, "Maximum # of Iterations"),
    value<&CV::DataCutoff>(DataCutoff, Real, "Drop Data with Error Above", OneDecimal, "%"),
    beginning(saveAs(), DialogPart::Plain),
    ContinueRow,
    CancelRow,
};

constexpr std::array Followers = {LoopSizeTitle, LoopCenterTitle, OffsetUnit, Transmitter,
                                  LoopEast,      LoopNorth,       Offset};

} // namespace

ProjectName nameOfProject(std::string_view path) {
    return {std::string(directoryOf(path)), std::string(trimRight(baseNameOf(path))),
            std::string(isProjectPath(path) ? extensionOf(path) : ProjectExtension)};
}

const DialogForm<Configuration> ConfigurationDialog = DialogSpec{
    .number = 108,
    .caption = "Verify TEM survey configuration",
    .defaultButton = ButtonContinue,
    .controls = ConfigurationControls,
    .firstControl = ButtonContinue,
    .followers = Followers,
};

} // namespace keldrin
