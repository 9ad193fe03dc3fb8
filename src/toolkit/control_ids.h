#pragma once

namespace keldrin {

// Ids that dialogs share. Numbers of dialogs and ids of their other controls stand beside their
// tables.

inline constexpr int ButtonCancel = 1084;
inline constexpr int ButtonContinue = 1090;

// In the dialogs of long work.
inline constexpr int WorkWords = 1130;
inline constexpr int WorkBar = 1131;

} // namespace keldrin
