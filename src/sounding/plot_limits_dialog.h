#pragma once

#include "toolkit/dialog_form.h"

#include <string>

namespace keldrin {

/// The ends of an axis as the user sees them.
struct AxisEnds {
    float maximum = 1.0F;
    float minimum = 0.0F;
};

/// What dialog 103 shows and changes.
struct PlotLimitsAnswers {
    std::string dataUnits;
    std::string lengthUnits;
    AxisEnds data; ///< dB/dt
    AxisEnds time; ///< msec
    AxisEnds depth;
    AxisEnds resistivity; ///< ohm-m
    int style = 1;        ///< entry of the list, from 1
    AxisEnds apparent;    ///< ohm-m, of the presentation alone
};

namespace PlotLimitsControl {
inline constexpr int DataGroup = 4011;
inline constexpr int ModelGroup = 4013;
inline constexpr int PageGroup = 4015;
inline constexpr int TimeTitle = 4012;
inline constexpr int ResistivityTitle = 4014;
inline constexpr int ApparentTitle = 4016;
inline constexpr int DataTitle = 1054;
inline constexpr int DataMaximum = 1027;
inline constexpr int DataMinimum = 1045;
inline constexpr int TimeMaximum = 1062;
inline constexpr int TimeMinimum = 1063;
inline constexpr int DepthTitle = 1056;
inline constexpr int DepthMaximum = 1064;
inline constexpr int DepthMinimum = 1065;
inline constexpr int ResistivityMaximum = 1066;
inline constexpr int ResistivityMinimum = 1080;
inline constexpr int Style = 1094;
inline constexpr int ApparentMaximum = 1095;
inline constexpr int ApparentMinimum = 1096;
} // namespace PlotLimitsControl

extern const DialogForm<PlotLimitsAnswers> PlotLimitsDialog;

} // namespace keldrin
