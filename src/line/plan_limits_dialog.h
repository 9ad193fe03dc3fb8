#pragma once

#include "line/plan_limits.h"
#include "toolkit/dialog_form.h"

#include <string>

namespace keldrin {

/// What dialog 113 shows and changes.
struct PlanLimitsAnswers {
    PlanLimits limits;
    std::string lengthUnits;
};

namespace PlanLimitsControl {
inline constexpr int DotsTitle = 4021;
inline constexpr int MapTitle = 4022;
inline constexpr int Quantity = 1140; ///< list
inline constexpr int Depth = 1141;
inline constexpr int DepthUnit = 1142;
inline constexpr int Colours = 1143; ///< list
inline constexpr int SetValues = 1144;
inline constexpr int ValuesMinimum = 1145;
inline constexpr int ValuesMaximum = 1146;
inline constexpr int SetMap = 1147;
inline constexpr int West = 1148;
inline constexpr int East = 1149;
inline constexpr int South = 1150;
inline constexpr int North = 1151;
} // namespace PlanLimitsControl

extern const DialogForm<PlanLimitsAnswers> PlanLimitsDialog;

/// Asks the user for the limits of a plan. Limits that the user changes count, whatever their
/// switch says; ends in the wrong order are swapped, and limits that cannot be shown are ignored.
/// limits  in: as the page shows them, those that are not set too; out: the answer
/// returns true when the user confirmed
bool Plan_EditLimits(PlanLimits &limits, std::string_view lengthUnits);

} // namespace keldrin
