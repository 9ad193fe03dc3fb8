#pragma once

class QKeyEvent;

namespace keldrin {

/// The code of a pressed key as events carry it: the character, or a code of ToolkitKey, with
/// KeyWithCtrl and KeyWithShift added. 0 for keys that say nothing alone, such as Shift.
int keyCodeOf(const QKeyEvent &key);

/// Qt's number of a code of ToolkitKey without modifiers; 0 for characters.
int qtKeyOf(int code);

} // namespace keldrin
