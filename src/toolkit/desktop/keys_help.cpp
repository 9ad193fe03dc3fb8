#include "toolkit/desktop/keys_help.h"

#include "base/manual.h"
#include "base/paths.h"
#include "toolkit/desktop/widgets/qt_text.h"
#include "toolkit/menu.h"

#include <QDesktopServices>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>

namespace keldrin {

namespace {

constexpr auto NoticeName = "notice";

QString sectionText(const HelpSection &section) {
    QString title = qtText(section.title);
    title.front() = title.front().toUpper();
    QString text = "<tr><td colspan='2'><br><b>" + title.toHtmlEscaped() + "</b></td></tr>";
    for (const HelpEntry &key : section.entries) {
        text += "<tr><td>" + qtText(key.term).toHtmlEscaped() + "</td><td>&nbsp;&nbsp;" +
                qtText(key.text).toHtmlEscaped() + "</td></tr>";
    }
    return text;
}

QString keysText() {
    QString text = "<table cellspacing='4'>";
    for (const HelpSection &section : windowContent().keys) {
        text += sectionText(section);
    }
    return text + "</table>";
}

/// The keys, with a scroll bar where the screen is too low for all of them.
QScrollArea *scrolledKeys(QDialog &help) {
    constexpr int partOfScreen = 60; // percent
    auto *area = new QScrollArea(&help);
    auto *keys = new QLabel(keysText());
    keys->setContentsMargins(0, 0, area->verticalScrollBar()->sizeHint().width(), 0);
    area->setWidget(keys);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    const int room = help.screen()->availableGeometry().height() * partOfScreen / 100;
    area->setMinimumSize(keys->sizeHint().width(), std::min(keys->sizeHint().height(), room));
    return area;
}

/// Starts the browser. Blank when that was done, else why it was not.
QString openManual() {
    const QFileInfo page(qtText(joinPath(manualFolder(), "index.html")));
    if (!page.isFile()) {
        return "The manual is not installed: there is no " + page.filePath();
    }
    const QString path = page.canonicalFilePath();
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path))
               ? QString()
               : "No browser could be started. The manual is in " + path;
}

void showManual(QDialog *help) {
    auto *notice = help->findChild<QLabel *>(NoticeName);
    notice->setText(openManual());
    notice->setVisible(!notice->text().isEmpty());
}

} // namespace

void showKeysHelp(QWidget *window) {
    constexpr auto name = "keys-help";
    auto *help = window->findChild<QDialog *>(name);
    if (help != nullptr && help->isVisible()) {
        showManual(help);
    }
    if (help == nullptr) {
        help = new QDialog(window);
        help->setObjectName(name);
        help->setAttribute(Qt::WA_DeleteOnClose);
        help->setWindowTitle("Keys and mouse");
        auto *layout = new QVBoxLayout(help);
        layout->addWidget(scrolledKeys(*help));
        auto *notice = new QLabel(help);
        notice->setObjectName(NoticeName);
        notice->setWordWrap(true);
        notice->setTextInteractionFlags(Qt::TextSelectableByMouse);
        notice->hide();
        layout->addWidget(notice);
        auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, help);
        buttons->button(QDialogButtonBox::Close)->setIcon({}); // black, also on a dark button
        auto *manual = buttons->addButton("&Manual", QDialogButtonBox::HelpRole);
        const auto open = [help] {
            showManual(help);
        };
        QObject::connect(manual, &QPushButton::clicked, help, open);
        QObject::connect(new QShortcut(Qt::Key_F1, help), &QShortcut::activated, help, open);
        QObject::connect(buttons, &QDialogButtonBox::rejected, help, &QDialog::close);
        layout->addWidget(buttons);
    }
    help->show();
    help->raise();
}

} // namespace keldrin
