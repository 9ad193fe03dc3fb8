#include "toolkit/desktop/desktop_settings.h"

#include <QFileInfo>
#include <QSettings>

namespace keldrin {

namespace {

constexpr qsizetype MostRecentFiles = 10;
constexpr auto WindowSizeKey = "window/size";
constexpr auto RecentKey = "files/recent";
constexpr auto DirectoryKey = "files/directory";

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
