#pragma once

#include "toolkit/dialog_form.h"

#include <string>

namespace keldrin {

/// What dialog 102, the panel beside the page, shows.
struct PanelValues {
    int station = 1; ///< ordinal of the sounding on show
    int soundings = 1;
    std::string place = {}; ///< where it stands, and what the user types to go elsewhere
};

namespace ReviewControl {
inline constexpr int StationTitle = 1030;
inline constexpr int FirstStation = 1028;
inline constexpr int Station = 1057; ///< trackbar
inline constexpr int Place = 1401;   ///< field of a station or an ordinal
inline constexpr int LastStation = 1069;
inline constexpr int Previous = 1058;
inline constexpr int Next = 1059;
inline constexpr int PrinterPlot = 1067;
inline constexpr int Export = 1400; ///< opens the list of the six that follow
inline constexpr int ToHpgl = 1075;
inline constexpr int ToMetafile = 1074;
inline constexpr int ToPng = 1076;
inline constexpr int ToPdf = 1077;
inline constexpr int ToSvg = 1079;
inline constexpr int AllToPdf = 1073;
inline constexpr int EditLimits = 1081;
inline constexpr int AutoSkip = 1490; ///< opens its dialog over the page
inline constexpr int Exit = 1068;
inline constexpr int KeysHelp = 1402;
} // namespace ReviewControl

extern const DialogForm<PanelValues> ReviewDialog;

} // namespace keldrin
