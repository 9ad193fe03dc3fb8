#include "toolkit/desktop/desktop_settings.h"

#include <QFileInfo>
#include <QSettings>

#include <array>

namespace keldrin {

namespace {

constexpr qsizetype MostRecentFiles = 10;
constexpr auto WindowSizeKey = "window/size";
constexpr auto RecentKey = "files/recent";
constexpr auto DirectoryKey = "files/directory";

// In the order of PanelSide.
constexpr std::array SideNames = {"floating", "left", "right"};

QString panelKey(int number, const char *item) {
    return QString("panel%1/%2").arg(number).arg(item);
}

QSettings store() {
    return {QSettings::IniFormat, QSettings::UserScope, "keldrin", "keldrin"};
}

} // namespace

QSize DesktopSettings::windowSize() const {
    return memory ? store().value(WindowSizeKey).toSize() : QSize();
}

void DesktopSettings::keepWindowSize(QSize size) const {
    if (memory) {
        store().setValue(WindowSizeKey, size);
    }
}

PanelState DesktopSettings::panel(int number) const {
    PanelState state;
    if (!memory) {
        return state;
    }
    const QSettings kept = store();
    const QString side = kept.value(panelKey(number, "side")).toString();
    for (std::size_t i = 0; i < SideNames.size(); ++i) {
        state.side = side == SideNames[i] ? static_cast<PanelSide>(i) : state.side;
    }
    state.rolledUp = kept.value(panelKey(number, "rolledUp"), false).toBool();
    if (const QVariant corner = kept.value(panelKey(number, "corner")); corner.isValid()) {
        state.corner = corner.toPoint();
    }
    return state;
}

void DesktopSettings::keepPanel(int number, const PanelState &state) const {
    if (!memory) {
        return;
    }
    QSettings kept = store();
    kept.setValue(panelKey(number, "side"), SideNames[static_cast<std::size_t>(state.side)]);
    kept.setValue(panelKey(number, "rolledUp"), state.rolledUp);
    if (state.corner) {
        kept.setValue(panelKey(number, "corner"), *state.corner);
    }
}

QStringList DesktopSettings::recentFiles() const {
    QStringList files = memory ? store().value(RecentKey).toStringList() : QStringList();
    files.removeIf([](const QString &path) { return !QFileInfo::exists(path); });
    return files;
}

void DesktopSettings::addRecentFile(const QString &path) const {
    const QString whole = QFileInfo(path).absoluteFilePath();
    if (!memory || !QFileInfo::exists(whole)) {
        return;
    }
    QStringList files = recentFiles();
    files.removeAll(whole);
    files.prepend(whole);
    store().setValue(RecentKey, QStringList(files.mid(0, MostRecentFiles)));
}

QString DesktopSettings::lastDirectory() const {
    const QString directory = memory ? store().value(DirectoryKey).toString() : QString();
    return QFileInfo(directory).isDir() ? directory : QString();
}

void DesktopSettings::keepLastDirectory(const QString &directory) const {
    if (memory) {
        store().setValue(DirectoryKey, directory);
    }
}

} // namespace keldrin
