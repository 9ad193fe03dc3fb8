#include "batch/command.h"

namespace keldrin {

int playCommand(CommandWords) {
    return ExitUsage;
}

} // namespace keldrin
