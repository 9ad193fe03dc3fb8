#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

/// Line end of written files on this platform.
#ifdef _WIN32
inline constexpr std::string_view LineEnd = "\r\n";
#else
inline constexpr std::string_view LineEnd = "\n";
#endif

/// What became of a write. The caller must look at it.
struct [[nodiscard]] WriteOutcome {
    bool written = false;
    std::string failure = {};           ///< why not, in words; blank when written
    std::vector<std::string> kept = {}; ///< paths under which older files were kept
};

/// Writes a whole file: to a temporary name in the same directory, flushed to the disk, checked,
/// then renamed over `path`, whose permissions it keeps. See FileTransaction.
///
/// A reader never sees half a file: on any failure the old file stays as it was and nothing else
/// is left. A symbolic link is followed, so the link itself stays. What is neither a plain file nor
/// absent is refused.
WriteOutcome writeWholeFile(const std::string &path, std::string_view content);

/// Copies a plain file, whole or not at all.
WriteOutcome copyWholeFile(const std::string &from, const std::string &to);

/// Appends to a file, creating it. False when anything fails.
[[nodiscard]] bool appendToFile(const std::string &path, std::string_view content);

} // namespace keldrin
