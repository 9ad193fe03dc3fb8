#pragma once

namespace keldrin {

/// Numbers of the menu's entries for the pages of the line; those of the others stand in
/// shell/menu.h.
namespace Command {
inline constexpr int View = 40009; ///< opens the menu of the pages
inline constexpr int Section = 40010;
inline constexpr int Profile = 40011;
inline constexpr int Plan = 40012;
inline constexpr int Export = 40013;
inline constexpr int Report = 40014;
} // namespace Command

} // namespace keldrin
