#include "screen/screen_messages.h"

// Linked into tests of flows with windows: messages reach the toolkit's boxes as in the program.
namespace keldrin {
namespace {

[[maybe_unused]] const bool Shown = [] {
    showMessagesOnScreen();
    return true;
}();

} // namespace
} // namespace keldrin
