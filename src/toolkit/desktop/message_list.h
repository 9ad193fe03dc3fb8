#pragma once

#include <string>
#include <vector>

class QWidget;

namespace keldrin {

/// Shows log and messages as a list in a window of its own, the newest in view. Where it is open
/// already it gets the new lines. It does not block, also beside a modal dialog.
void showMessageList(QWidget *window, const std::vector<std::string> &lines);

} // namespace keldrin
