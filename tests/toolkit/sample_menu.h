#pragma once

#include "toolkit/menu.h"

#include <array>

namespace keldrin {

namespace Command {
inline constexpr int New = 101;
inline constexpr int Open = 102;
inline constexpr int Save = 103;
inline constexpr int Edit = 104;
inline constexpr int AutoSkip = 105;
inline constexpr int Invert = 106;
inline constexpr int Exit = 107;
} // namespace Command

inline constexpr std::array<MenuEntry, 7> SampleMenu = {{
    {Command::New, "&New", "", false, KeyWithCtrl | 'N'},
    {Command::Open, "&Open", "", false, KeyWithCtrl | 'O'},
    {Command::Save, "&Save", "", false, 0},
    {Command::Edit, "&Edit Line Names", "", true, 0},
    {Command::AutoSkip, "Auto Skip", "", false, 0},
    {Command::Invert, "&Invert", "", true, 0},
    {Command::Exit, "E&xit", "", false, 0},
}};

/// Offered to the toolkit before the tests run.
inline const bool SampleMenuOffered = [] {
    windowContent().menu = SampleMenu;
    return true;
}();

} // namespace keldrin
