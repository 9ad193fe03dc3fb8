#pragma once

#include <string_view>

namespace keldrin {

/// Reads and clears the toolkit's error state; a state other than 0 is reported as an error, and
/// the 21st ends the program, after a box that says so.
/// tag  the place in the program, or empty
void CheckGraphicsError(std::string_view tag = {});

/// The same for a state, not 0, that has been read.
void ReportGraphicsError(int number, std::string_view tag);

} // namespace keldrin
