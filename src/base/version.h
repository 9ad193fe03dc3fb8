#pragma once

#include <string_view>

namespace keldrin {

inline constexpr std::string_view ProgramName = "KELDRIN "; ///< as shown; its blank counts
inline constexpr std::string_view ProgramVersionText = "4.00i";
inline constexpr std::string_view ProgramDate = "21/July/2020";
inline constexpr std::string_view ProgramIdentity = "KELDRIN v4.00i"; ///< writer of a file

} // namespace keldrin
