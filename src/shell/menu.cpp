#include "shell/menu.h"

#include "base/paths.h"
#include "shell/window_keys.h"

namespace keldrin {

namespace {

int commandForFile(std::string_view path) {
    return isProjectPath(path) ? Command::Open : Command::New;
}

} // namespace

void offerMenu() {
    windowContent() = {MenuEntries, KeySections, commandForFile};
}

} // namespace keldrin
