#pragma once

#include <string>
#include <string_view>

namespace keldrin {

/// Line end of written files on this platform.
#ifdef _WIN32
inline constexpr std::string_view LineEnd = "\r\n";
#else
inline constexpr std::string_view LineEnd = "\n";
#endif

/// Writes a whole file: to a temporary name in the same directory, flushed to the disk, checked,
/// then renamed over `path`, whose permissions it keeps.
///
/// A reader never sees half a file: on any failure the old file stays as it was and the temporary
/// one is removed. A symbolic link is followed, so the link itself stays.
///
/// returns  true when all is on the disk; otherwise `reason` says what the system refused
bool writeWholeFile(const std::string &path, std::string_view content, std::string &reason);

/// Appends to a file, creating it. False when anything fails.
bool appendToFile(const std::string &path, std::string_view content);

} // namespace keldrin
