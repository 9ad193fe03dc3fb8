#include "shell/questions_on_screen.h"

// Linked into tests of flows with windows: readers ask in the toolkit's dialogs as in the program.
namespace keldrin {
namespace {

[[maybe_unused]] const bool Asked = [] {
    askQuestionsOnScreen();
    return true;
}();

} // namespace
} // namespace keldrin
