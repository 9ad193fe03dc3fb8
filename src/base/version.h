#pragma once

#include <string_view>

namespace keldrin {

inline constexpr std::string_view ProgramName = "KELDRIN "; ///< as shown; its blank counts
inline constexpr std::string_view ProgramVersionText = "4.00i";
inline constexpr std::string_view ProgramDate = "21/July/2020";
inline constexpr std::string_view ProgramIdentity = "KELDRIN v4.00i"; ///< writer of a file

// The package and --version tell the release, which moves with CHANGELOG.md; files and titles keep
// the version above. tests/packaging/check_versions compares all places that name a release.
inline constexpr std::string_view ReleaseText = "4.00i.1";
inline constexpr std::string_view ReleaseDate = "2026-11-22";

} // namespace keldrin
