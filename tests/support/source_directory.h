#pragma once

namespace keldrin {

/// Where the sources of the project lie, its examples among them; without a separator at its end.
extern const char *const SourceDirectory;

} // namespace keldrin
