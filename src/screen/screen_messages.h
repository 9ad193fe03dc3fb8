#pragma once

namespace keldrin {

/// Shows messages and progress in the windows of the toolkit from now on: the log in the root
/// window, errors in a box, notices in the status bar, long work in a dialog.
void showMessagesOnScreen();

/// A command of the user begins: what the status bar says of the one before is gone.
void beginCommandOnScreen();

/// Says in the status bar how many warnings the current command has given; nothing without any.
void showWarningCount();

} // namespace keldrin
