#include "toolkit/desktop/common_dialogs.h"

#include "toolkit/desktop/widgets/qt_text.h"
#include "toolkit/file_filter.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QPushButton>
#include <QSplitter>
#include <QTreeView>
#include <QUrl>

namespace keldrin {

namespace {

constexpr QSize ChooserSize(820, 500); ///< wide enough for whole sizes and dates

// "*.std *.STD": field computers write names in capitals.
QString nameFilter(const FileFilter &filter) {
    QStringList patterns;
    for (const std::string &pattern : filter.patterns) {
        const QString spelling = qtText(pattern);
        patterns << spelling;
        if (spelling.toUpper() != spelling) {
            patterns << spelling.toUpper();
        }
    }
    return qtText(filter.description) + " (" + patterns.join(' ') + ")";
}

QString startDirectory(const QFileInfo &start, const QString &given,
                       const DesktopSettings &settings) {
    if (!given.isEmpty() && start.absoluteDir().exists()) {
        return start.absolutePath();
    }
    const QString last = settings.lastDirectory();
    return last.isEmpty() ? QDir::currentPath() : last;
}

QList<QUrl> placesOf(const DesktopSettings &settings) {
    QList<QUrl> places = {QUrl::fromLocalFile(QDir::homePath()),
                          QUrl::fromLocalFile(QDir::currentPath())};
    for (const QString &file : settings.recentFiles()) {
        const QUrl place = QUrl::fromLocalFile(QFileInfo(file).absolutePath());
        if (!places.contains(place)) {
            places << place;
        }
    }
    return places;
}

// The program goes on without such a file.
bool isOptional(const FileFilter &filter) {
    return qtText(filter.description).startsWith("Optional", Qt::CaseInsensitive);
}

// The names take the room that sizes and dates leave, and the places beside them get some. A dialog
// of the system's has neither.
void showWholeNames(const QFileDialog &chooser) {
    constexpr int placesWidth = 150;
    if (auto *split = chooser.findChild<QSplitter *>()) {
        split->setSizes({placesWidth, ChooserSize.width() - placesWidth});
    }
    for (const QTreeView *list : chooser.findChildren<QTreeView *>()) {
        list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
        list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    }
}

} // namespace

void prepareChooser(QFileDialog &chooser, const FileRequest &request,
                    const DesktopSettings &settings) {
    const FileFilter filter = parseFileFilter(request.filter);
    const QString given = qtText(request.path);
    const QFileInfo start(given);
    chooser.setWindowTitle(qtText(request.title));
    chooser.setAcceptMode(request.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    chooser.setFileMode(request.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    chooser.setNameFilters({nameFilter(filter), "All files (*)"});
    chooser.setDirectory(startDirectory(start, given, settings));
    chooser.resize(ChooserSize);
    chooser.setSidebarUrls(placesOf(settings));
    if (request.save && !filter.patterns.empty()) {
        chooser.setDefaultSuffix(QFileInfo(qtText(filter.patterns.front())).suffix());
    }
    if (!given.isEmpty() && (request.save || start.isFile())) {
        chooser.selectFile(start.fileName());
    }
    if (isOptional(filter)) {
        chooser.setLabelText(QFileDialog::Reject, "Without it");
    }
    showWholeNames(chooser);
}

void prepareBox(QMessageBox &box, const BoxRequest &request) {
    QStringList lines;
    for (const std::string &line : request.lines) {
        lines << qtText(line);
    }
    box.setIcon(request.icon == BoxErrorIcon ? QMessageBox::Critical : QMessageBox::Information);
    box.setWindowTitle(qtText(request.title));
    box.setTextFormat(Qt::PlainText);
    box.setText(lines.join('\n'));
    box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
    box.setDefaultButton(request.defaultButton == 1 ? QMessageBox::Ok : QMessageBox::Cancel);
    box.setEscapeButton(QMessageBox::Ok);
    if (request.icon == BoxErrorIcon) {
        box.setInformativeText("Cancel ends the program; what is not saved is lost.");
        box.button(QMessageBox::Cancel)->setToolTip("Ends the program.");
    }
    box.setCheckBox(new QCheckBox("Do not show further messages of this command"));
}

BoxResult answerOf(const QMessageBox &box) {
    const bool cancelled = box.clickedButton() == box.button(QMessageBox::Cancel);
    return {cancelled ? 0 : 1, box.checkBox()->isChecked()};
}

} // namespace keldrin
