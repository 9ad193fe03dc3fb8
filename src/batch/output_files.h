#pragma once

#include <span>
#include <string>
#include <string_view>

namespace keldrin {

/// Makes the directory of --out unless it is blank. False, and told on stderr, when that fails.
bool makeOutputDirectory(std::string_view command, const std::string &directory);

/// True when what is made of files[index] would have the name of what an earlier file gave: their
/// names are the same, and all go into one `directory`, or that is blank and they lie together.
bool nameIsTaken(std::span<const std::string> files, std::size_t index,
                 const std::string &directory);

} // namespace keldrin
