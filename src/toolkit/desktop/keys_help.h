#pragma once

class QWidget;

namespace keldrin {

/// Shows the list of keys beside the window, which goes on being served. Its button "Manual", and
/// F1 while it is shown, open the manual in the system's browser; where that cannot be done the
/// list says why.
void showKeysHelp(QWidget *window);

} // namespace keldrin
