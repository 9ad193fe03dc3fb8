#pragma once

#include "toolkit/desktop/panel_frame.h"

#include <QByteArray>
#include <QSize>
#include <QStringList>

namespace keldrin {

/// What the desktop remembers between runs. Without memory it starts afresh and keeps nothing, so
/// that a driven run is the same every time.
struct DesktopSettings {
    bool memory = true;

    /// The size of the window as the user left it; not valid when there is none.
    [[nodiscard]] QSize windowSize() const;
    void keepWindowSize(QSize size) const;

    /// Where and how the user has left the panel of a dialog's number.
    [[nodiscard]] PanelState panel(int number) const;
    void keepPanel(int number, const PanelState &state) const;

    /// Files opened lately, the last one first; only those that still exist.
    [[nodiscard]] QStringList recentFiles() const;
    void addRecentFile(const QString &path) const;

    /// The directory that the last chooser left; blank when there is none.
    [[nodiscard]] QString lastDirectory() const;
    void keepLastDirectory(const QString &directory) const;
};

} // namespace keldrin
