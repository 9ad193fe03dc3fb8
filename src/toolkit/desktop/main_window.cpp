#include "toolkit/desktop/main_window.h"

#include "toolkit/desktop/canvas.h"
#include "toolkit/desktop/keys.h"
#include "toolkit/desktop/page_area.h"
#include "toolkit/desktop/widgets/notice_line.h"
#include "toolkit/desktop/widgets/qt_text.h"
#include "toolkit/menu.h"

#include <QAction>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QStatusBar>
#include <QUrl>

namespace keldrin {

namespace {

// The one file of a drop, or none.
QString droppedFile(const QMimeData &data) {
    const QList<QUrl> urls = data.urls();
    return urls.size() == 1 && urls.front().isLocalFile() ? urls.front().toLocalFile() : QString();
}

/// What stands beside the label of an entry; nothing for code 0.
QString keyText(int code) {
    if (code == 0) {
        return {};
    }
    const QChar letter(static_cast<char16_t>(code & ~KeyWithCtrl));
    return (code & KeyWithCtrl) != 0 ? "\tCtrl+" + QString(letter) : "\t" + QString(letter);
}

} // namespace

MainWindow::MainWindow() : canvas_(new Canvas(this)) {
    setCentralWidget(new PageArea(canvas_, this));
    setAcceptDrops(true);
    makeMenu();
    makeStatusBar();
    canvas_->setFocus();
}

// Beside the label of an entry below another one stands its key.
QAction *MainWindow::addEntry(const MenuEntry &entry) {
    const QAction *above = actionOf(entry.below);
    if (above == nullptr) {
        return menuBar()->addAction(qtText(entry.label));
    }
    return above->menu()->addAction(qtText(entry.label) + keyText(entry.shortcut));
}

void MainWindow::makeMenu() {
    menuBar()->setNativeMenuBar(false); // most of its entries have no menus below them
    for (const MenuEntry &entry : windowContent().menu) {
        if (opensMenu(entry)) {
            QMenu *menu = menuBar()->addMenu(qtText(entry.label));
            menu->menuAction()->setStatusTip(qtText(entry.hint));
            actions_[entry.command] = menu->menuAction();
            continue;
        }
        QAction *action = addEntry(entry);
        action->setStatusTip(qtText(entry.hint));
        action->setEnabled(!entry.greyedAtStart);
        connect(action, &QAction::triggered, this, [this, command = entry.command] {
            statusBar()->clearMessage(); // its hint has been read
            if (onMenu) {
                onMenu(command);
            }
        });
        actions_[entry.command] = action;
    }
}

void MainWindow::makeStatusBar() {
    const int margin = fontMetrics().horizontalAdvance('x');
    notices_ = new NoticeLine(this);
    statusBar()->addWidget(notices_, 1);
    for (const StatusPart part : {StatusPart::Record, StatusPart::Warnings, StatusPart::Sounding,
                                  StatusPart::Marks, StatusPart::Program}) {
        auto *label = new QLabel(this);
        label->setTextFormat(Qt::PlainText);
        label->setContentsMargins(margin, 0, margin, 0);
        label->hide();
        status_[static_cast<std::size_t>(part)] = label;
        statusBar()->addPermanentWidget(label);
    }
    QLabel *warnings = status_[static_cast<std::size_t>(StatusPart::Warnings)];
    warnings->setTextFormat(Qt::RichText); // looks like what it is: a link to the list
    connect(warnings, &QLabel::linkActivated, this, [this] {
        if (onMessages) {
            onMessages();
        }
    });
}

void MainWindow::setStatus(StatusPart part, const QString &text) {
    if (part == StatusPart::Notice || part == StatusPart::Pointer) {
        if (!text.isEmpty()) {
            statusBar()->clearMessage(); // the hint of a menu entry would be drawn over it
        }
        part == StatusPart::Notice ? notices_->setNotice(text) : notices_->setPointer(text);
        return;
    }
    QLabel *label = status_[static_cast<std::size_t>(part)];
    if (part == StatusPart::Marks) {
        setWindowModified(!text.isEmpty());
    }
    const bool isLink = part == StatusPart::Warnings && !text.isEmpty();
    label->setText(isLink ? "<a href=\"messages\">" + text.toHtmlEscaped() + "</a>" : text);
    label->setToolTip(isLink ? "Shows log and messages (F2)." : text);
    label->setVisible(!text.isEmpty());
}

// A task bar shows only how a title begins.
void MainWindow::showTitle(const QString &title) {
    static const QString before = ", data from ";
    const qsizetype at = title.indexOf(before);
    const QString file = at < 0 ? QString() : title.mid(at + before.size()).trimmed();
    QString shown = title;
    shown.replace("[*]", "[*][*]"); // two stand for themselves
    const QString name = QString(file).replace("[*]", "[*][*]");
    setWindowTitle(name.isEmpty() ? shown : name + "[*] - " + shown);
}

QAction *MainWindow::actionOf(int command) const {
    const auto found = actions_.find(command);
    return found == actions_.end() ? nullptr : found->second;
}

void MainWindow::setCommand(int command, bool on) {
    if (QAction *action = actionOf(command)) {
        action->setEnabled(on);
    }
}

void MainWindow::serveMenu(bool on) {
    menuServed_ = on;
    menuBar()->setEnabled(on);
}

void MainWindow::keyPressEvent(QKeyEvent *event) {
    const int code = keyCodeOf(*event);
    if (code != 0 && onKey) {
        onKey(code);
    } else {
        QMainWindow::keyPressEvent(event);
    }
}

// The program decides what a close request means; the window goes when it ends.
void MainWindow::closeEvent(QCloseEvent *event) {
    event->ignore();
    if (onClose) {
        onClose();
    }
}

void MainWindow::contextMenuEvent(QContextMenuEvent *event) {
    if (onContextMenu) {
        onContextMenu(event->globalPos(), !canvas_->geometry().contains(event->pos()));
    }
}

void MainWindow::dragEnterEvent(QDragEnterEvent *event) {
    if (menuServed_ && !droppedFile(*event->mimeData()).isEmpty()) {
        event->acceptProposedAction();
    }
}

void MainWindow::dropEvent(QDropEvent *event) {
    const QString path = droppedFile(*event->mimeData());
    if (menuServed_ && !path.isEmpty() && onDrop) {
        event->acceptProposedAction();
        onDrop(path);
    }
}

} // namespace keldrin
