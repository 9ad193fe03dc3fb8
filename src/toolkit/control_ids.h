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
inline constexpr int View = 40009;
inline constexpr int Section = 40010;
inline constexpr int Profile = 40011;
inline constexpr int Plan = 40012;
} // namespace Command

// Numbers of dialogs and ids of their controls stand beside their tables.

inline constexpr int ButtonCancel = 1084;
inline constexpr int ButtonContinue = 1090;

// In the dialogs of long work.
inline constexpr int WorkWords = 1130;
inline constexpr int WorkBar = 1131;

} // namespace keldrin
