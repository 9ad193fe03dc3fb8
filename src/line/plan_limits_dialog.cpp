#include "line/plan_limits_dialog.h"

#include "conditioning/unread_fields.h"
#include "line/plan_values.h"
#include "page/colour_scales.h"
#include "toolkit/control_ids.h"

#include <array>
#include <cmath>
#include <utility>

namespace keldrin {

namespace {

using enum ControlKind;
using PlanAnswers = PlanLimitsAnswers;

std::vector<std::string> quantityNames(const PlanAnswers & /*answers*/) {
    return planQuantityNames();
}

std::vector<std::string> planScales(const PlanAnswers & /*answers*/) {
    return colourScaleNames();
}

std::string depthUnit(const PlanAnswers &answers) {
    return answers.lengthUnits;
}

template <auto Limit>
consteval FieldAccess planField() {
    return fieldOf<&PlanAnswers::limits, Limit>();
}

template <auto Limit>
constexpr ControlSpec choice(int id, std::string_view label) {
    return checkBox(id, label, planField<Limit>());
}

template <auto End>
constexpr ControlSpec valueEnd(int id, std::string_view label, std::string_view name) {
    return {.id = id,
            .kind = Real,
            .label = label,
            .format = "(1P,G12.4E1)",
            .field = fieldOf<&PlanAnswers::limits, &PlanLimits::values, End>(),
            .name = name};
}

template <auto End>
constexpr ControlSpec mapEnd(int id, std::string_view label) {
    return {.id = id,
            .kind = Double,
            .label = label,
            .format = "(F14.1)",
            .field = fieldOf<&PlanAnswers::limits, &PlanLimits::map, End>()};
}

namespace plan {
using namespace PlanLimitsControl;
constexpr std::array Controls = {
    groupTitle(DotsTitle, "Dots"),
    ControlSpec{.id = Quantity,
                .kind = List,
                .label = "Coloured by",
                .field = planField<&PlanLimits::quantity>(),
                .entries = givenBy<quantityNames>()},
    ControlSpec{.id = Depth,
                .kind = Real,
                .label = "Depth",
                .format = "(F12.1)",
                .limits = {0.0, 99999.0},
                .field = planField<&PlanLimits::depth>()},
    ControlSpec{
        .id = DepthUnit, .field = shownBy<depthUnit>(), .sameRow = true, .look = StaticLook::Unit},
    ControlSpec{.id = Colours,
                .kind = List,
                .label = "Colours",
                .field = planField<&PlanLimits::colours>(),
                .entries = givenBy<planScales>()},
    choice<&PlanLimits::setValues>(SetValues, "Set the limits of the colours"),
    valueEnd<&AxisLimits::low>(ValuesMinimum, "minimum", "Colours minimum"),
    inRow(valueEnd<&AxisLimits::high>(ValuesMaximum, "maximum", "Colours maximum")),
    groupTitle(MapTitle, "Map"),
    choice<&PlanLimits::setMap>(SetMap, "Set the limits of the map"),
    mapEnd<&MapLimits::west>(West, "West"),
    inRow(mapEnd<&MapLimits::east>(East, "East")),
    mapEnd<&MapLimits::south>(South, "South"),
    inRow(mapEnd<&MapLimits::north>(North, "North")),
    ContinueRow,
    CancelRow,
};
} // namespace plan

void swapEnds(PlanLimits &limits) {
    const auto inOrder = [](auto &low, auto &high) {
        if (high < low) {
            std::swap(low, high);
        }
    };
    inOrder(limits.values.low, limits.values.high);
    inOrder(limits.map.west, limits.map.east);
    inOrder(limits.map.south, limits.map.north);
}

} // namespace

const DialogForm<PlanLimitsAnswers> PlanLimitsDialog = DialogSpec{
    .number = 113,
    .caption = "Set plan limits",
    .defaultButton = ButtonContinue,
    .controls = plan::Controls,
    .place = DialogPlace::LowerRight,
};

bool Plan_EditLimits(PlanLimits &limits, std::string_view lengthUnits) {
    PlanAnswers answers{limits, std::string(lengthUnits)};
    const DialogAnswer answer = askDialog(PlanLimitsDialog, answers);
    if (!answer.confirmed()) {
        return false;
    }
    PlanLimits &chosen = answers.limits;
    const bool otherQuantity = chosen.quantity != limits.quantity;
    const bool otherValues =
        chosen.values.low != limits.values.low || chosen.values.high != limits.values.high;
    chosen.setValues = otherValues || (chosen.setValues && !(otherQuantity && limits.setValues));
    chosen.setMap = chosen.setMap || chosen.map != limits.map;
    swapEnds(chosen);
    limits = chosen;
    reportUnreadFields(answer.unread);
    return true;
}

} // namespace keldrin
