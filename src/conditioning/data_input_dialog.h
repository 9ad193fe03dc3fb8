#pragma once

#include "model/survey_model.h"
#include "toolkit/dialog_form.h"

namespace keldrin {

/// Lets the user choose the line, the coil areas and the station rescaling of an import, and stores
/// the answers in the line table and the preset. Areas and rescaling belong to their line.
/// returns  0, or 2 on Cancel with nothing stored
int VerifyDataInput(SurveyModel &model);

/// What dialog 101 shows and changes.
struct DataInputAnswers {
    LineTable lines;
    LineScaling scaling; ///< of the selected line
};

namespace DataInputControl {
inline constexpr int CoilTitle = 4001;
inline constexpr int AreaTitle = 4002;
inline constexpr int RescalingTitle = 4003;
inline constexpr int BeginTitle = 4004;
inline constexpr int IncrementTitle = 4005;
inline constexpr int Line = 1082;
inline constexpr int AreaX = 1083;
inline constexpr int AreaY = 1116;
inline constexpr int AreaZ = 1117;
inline constexpr int QdrBegin = 1114;
inline constexpr int QdrIncrement = 1115;
inline constexpr int ClientBegin = 1118;
inline constexpr int ClientIncrement = 1119;
} // namespace DataInputControl

extern const DialogForm<DataInputAnswers> DataInputDialog;

} // namespace keldrin
