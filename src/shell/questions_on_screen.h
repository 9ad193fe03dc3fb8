#pragma once

namespace keldrin {

/// Puts the questions of the readers to the user in dialogs and file choosers from now on.
void askQuestionsOnScreen();

} // namespace keldrin
