#pragma once

namespace keldrin {

// Numbers that dialogs, menus and scripts share.

namespace Command {
inline constexpr int New = 40001;
inline constexpr int Open = 40002;
inline constexpr int Invert = 40003;
inline constexpr int Review = 40004;
inline constexpr int Exit = 40005;
inline constexpr int Edit = 40006;
inline constexpr int AutoSkip = 40007;
inline constexpr int Save = 40008;
} // namespace Command

namespace Dialog {
inline constexpr int DataInput = 101;
inline constexpr int Review = 102;
inline constexpr int PlotLimits = 103;
inline constexpr int AutoSkip = 104;
inline constexpr int MatchingLabel = 106;
inline constexpr int Configuration = 108;
inline constexpr int LineAzimuth = 110;
inline constexpr int Engine = 121;
inline constexpr int Progress = 122;
} // namespace Dialog

inline constexpr int ButtonCancel = 1084;
inline constexpr int ButtonContinue = 1090;

// In the dialogs of long work.
inline constexpr int WorkWords = 1130;
inline constexpr int WorkBar = 1131;

} // namespace keldrin
