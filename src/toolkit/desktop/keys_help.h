#pragma once

class QWidget;

namespace keldrin {

/// Shows the list of keys beside the window, which goes on being served.
void showKeysHelp(QWidget *window);

} // namespace keldrin
