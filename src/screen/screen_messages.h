#pragma once

namespace keldrin {

/// Shows messages and progress in the windows of the toolkit from now on: the log in the root
/// window, errors in a box, notices in the status bar, long work in a dialog.
void showMessagesOnScreen();

} // namespace keldrin
