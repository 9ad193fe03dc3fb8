#pragma once

#include "line/page_commands.h"
#include "toolkit/menu.h"

#include <array>

namespace keldrin {

/// Numbers of the menu's entries, with those of line/page_commands.h; scenarios may use them in
/// place of the labels.
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

/// The menu bar from left to right. What is greyed at the start needs soundings.
inline constexpr std::array<MenuEntry, 14> MenuEntries = {{
    {Command::New, "&New", "Read dB/dt data and build new *.std file.", false, KeyWithCtrl | 'N'},
    {Command::Open, "&Open", "Open existing *.std (and *.m1d) file.", false, KeyWithCtrl | 'O'},
    {Command::Save, "&Save", "Save KELDRIN inversion files.", false, KeyWithCtrl | 'S'},
    {Command::Edit, "&Edit Survey Configuration",
     "Edit survey configuration and inversion control parameters.", true},
    {Command::AutoSkip, "Auto Skip", "Set skip flags automatically based on threshold criteria.",
     false},
    {Command::Invert, "&Invert", "Invert dBz/dt to smoothly varying model.", true},
    {Command::Review, "&Review Data", "Review dB/dt data and inversion model.", true},
    {Command::View, "&View", "Show the line as a whole.", false},
    {Command::Section, "&Section", "Show the line's resistivities by depth and by time.", true, 'S',
     Command::View},
    {Command::Profile, "Pro&file", "Show the line's dB/dt window by window.", true, 'F',
     Command::View},
    {Command::Plan, "P&lan", "Show the stations of the line on a map.", true, 'M', Command::View},
    {Command::Export, "&Export...", "Write the line as files of other programs.", true,
     KeyWithCtrl | 'E', Command::View},
    {Command::Report, "&Report", "Write one PDF with plan, profiles, section and all soundings.",
     true, 0, Command::View},
    {Command::Exit, "E&xit", "Exit program", false, KeyWithCtrl | 'Q'},
}};

/// Gives the toolkit this menu and the program's list of keys. A main does it first of all, since a
/// scenario names entries of the menu.
void offerMenu();

} // namespace keldrin
