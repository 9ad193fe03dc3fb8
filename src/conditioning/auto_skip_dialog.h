#pragma once

#include "conditioning/auto_skip.h"
#include "toolkit/dialog_form.h"

namespace keldrin {

/// What dialog 104 shows and changes.
struct AutoSkipAnswers {
    AutoSkipSettings settings;
    float cutoff = 100.0F; ///< percent
    int mostWindows = 128; ///< of all soundings; shown, and the limit of the window numbers
};

namespace AutoSkipControl {
inline constexpr int FirstWindow = 1085;
inline constexpr int LastWindow = 1086;
inline constexpr int WindowCount = 3086;
inline constexpr int ErrorFilter = 1087;
inline constexpr int Cutoff = 1051;
inline constexpr int NegativeFilter = 1088;
inline constexpr int SlopeFilter = 1089;
} // namespace AutoSkipControl

extern const DialogForm<AutoSkipAnswers> AutoSkipDialog;

} // namespace keldrin
