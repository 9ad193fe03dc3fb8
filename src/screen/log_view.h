#pragma once

namespace keldrin {

/// Drains the queue of messages up to the first key or mouse press and empties the shown log.
/// A close request among them ends the program.
void ClearLog();

/// Draws the newest lines into the root window; nothing without a drawable surface.
void LogText_Update();

/// Sets font and size of the log's text for the window as it is now; nothing without a window.
void selectLogFont();

} // namespace keldrin
