#pragma once

#include "conditioning/auto_skip.h"
#include "conditioning/further_skip.h"
#include "toolkit/dialog_form.h"

#include <string>

namespace keldrin {

/// What the filters would do to the line, for the user to see.
struct AutoSkipCounted {
    AutoSkipCounts counts;
    FurtherSkipCounts further;
    int otherMarks = 0; ///< windows that are marked now, and that no filter takes
};

/// What dialogs 104 and 145 show and change.
struct AutoSkipAnswers {
    AutoSkipSettings settings;
    float cutoff = 100.0F; ///< percent
    int mostWindows = 128; ///< of all soundings; shown, and the limit of the window numbers

    // Of dialog 145 alone.
    FurtherSkipSettings further = {};
    AutoSkipCounted counted = {};
};

namespace AutoSkipControl {
inline constexpr int FirstWindow = 1085;
inline constexpr int LastWindow = 1086;
inline constexpr int WindowCount = 3086;
inline constexpr int ErrorFilter = 1087;
inline constexpr int Cutoff = 1051;
inline constexpr int NegativeFilter = 1088;
inline constexpr int SlopeFilter = 1089;
inline constexpr int NoiseFilter = 1450;
inline constexpr int NoiseLevel = 1451;
inline constexpr int NoiseUnit = 3451;
inline constexpr int NoiseExponent = 1452;
inline constexpr int CurvatureFilter = 1453;
inline constexpr int SlopeChange = 1454;
inline constexpr int NeighbourFilter = 1455;
inline constexpr int NeighbourFactor = 1456;
inline constexpr int AndLater = 1457;
inline constexpr int KeepMarks = 1458;
inline constexpr int Taken = 1460;
inline constexpr int TakenFurther = 1461;
inline constexpr int Total = 1462;
inline constexpr int OtherMarks = 1463;
} // namespace AutoSkipControl

/// As the menu asks: blocks, with the filters of auto_skip.h.
extern const DialogForm<AutoSkipAnswers> AutoSkipDialog;

/// As the review shows it over its page: with the further filters too, and what all would take. Its
/// loop serves it.
extern const DialogForm<AutoSkipAnswers> LiveAutoSkipDialog;

/// "Skips 43 of 624 windows, some by several rules:"
std::string totalText(const AutoSkipAnswers &answers);

/// "error 41, negative 9, slope 19, range 11"
std::string takenText(const AutoSkipAnswers &answers);

/// The same for the further filters that are on; blank where none is.
std::string takenFurtherText(const AutoSkipAnswers &answers);

/// "21 other windows are skipped now and come back."; blank where there are none.
std::string otherMarksText(const AutoSkipAnswers &answers);

} // namespace keldrin
