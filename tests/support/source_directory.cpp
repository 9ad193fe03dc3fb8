#include "support/source_directory.h"

namespace keldrin {

const char *const SourceDirectory = KELDRIN_SOURCE_DIR;

} // namespace keldrin
