#pragma once

#include "toolkit/backend.h"
#include "toolkit/desktop/desktop_settings.h"

#include <QFileDialog>
#include <QMessageBox>

namespace keldrin {

// The system's dialogs, set up as the program asks for them.

/// Prepares a file chooser: both spellings of the patterns, the starting directory, recent places
/// in the side bar; a save chooser completes a name before it asks whether to overwrite.
void prepareChooser(QFileDialog &chooser, const FileRequest &request,
                    const DesktopSettings &settings);

/// Prepares a message box. Esc and its close box answer OK; only Cancel is Cancel. It has a switch
/// for silence, QMessageBox::checkBox().
void prepareBox(QMessageBox &box, const BoxRequest &request);

/// What the user answered.
BoxResult answerOf(const QMessageBox &box);

} // namespace keldrin
