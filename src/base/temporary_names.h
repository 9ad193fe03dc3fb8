#pragma once

#include <string>

namespace keldrin {

// Temporary files bear names that say which run of which program on which computer made them, so
// that those of a run that was killed can be distinguished from those of one that is at work.

/// A name for a temporary file in a directory, never given before in this run. Not made from the
/// target's name, which may be as long as the file system allows.
std::string temporaryName(const std::string &directory);

/// Removes the temporary files of this computer's runs that are gone. What cannot be looked at
/// stays.
void removeLeftOvers(const std::string &directory);

} // namespace keldrin
