#pragma once

#include <string>
#include <string_view>

namespace keldrin {

// What the writers of project and model files share when a write cannot or must not replace a file.

/// First line of the message of a file that could not be written.
inline constexpr std::string_view WriteFailureText = "ERROR while writing KELDRIN file";

void reportWriteFailure(const std::string &path, const std::string &reason);

/// Copies a file, whole or not at all.
/// returns  false when that failed; `reason` says why
bool copyWholeFile(const std::string &from, const std::string &to, std::string &reason);

/// Copies a file to its path with "~" behind. A copy, so that there is a file at either path
/// whatever happens to the write that follows.
/// returns  false when that failed; `reason` says why
bool keepOldFile(const std::string &path, std::string &reason);

} // namespace keldrin
