#include "toolkit/desktop/desktop_backend.h"

#include "toolkit/desktop/canvas.h"
#include "toolkit/desktop/dialog_window.h"
#include "toolkit/desktop/documents.h"
#include "toolkit/desktop/keys_help.h"
#include "toolkit/desktop/main_window.h"
#include "toolkit/desktop/widgets/message_list.h"
#include "toolkit/desktop/widgets/qt_text.h"
#include "toolkit/desktop/work_window.h"
#include "toolkit/menu.h"
#include "toolkit/toolkit_state.h"
#include "toolkit/user_edits.h"

#include <QApplication>
#include <QEventLoop>
#include <QFileInfo>
#include <QIcon>
#include <QMenu>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <cmath>

namespace keldrin {

DesktopBackend::DesktopBackend(DesktopSettings settings) : settings_(settings) {}

DesktopBackend::~DesktopBackend() = default;

int DesktopBackend::stop() {
    work_.reset();
    dialogs_.clear();
    if (window_ != nullptr && !window_->isMaximized()) {
        settings_.keepWindowSize(window_->size());
    }
    window_.reset();
    if (onStopped) {
        onStopped();
    }
    return 0;
}

// ---- The root window

PixelSize DesktopBackend::screenSize() {
    const QSize size = QGuiApplication::primaryScreen()->size();
    return {size.width(), size.height()};
}

void DesktopBackend::openRoot(const RootSpec &spec) {
    window_ = std::make_unique<MainWindow>();
    connectWindow();
    const QSize kept = settings_.windowSize();
    const QSize most = QGuiApplication::primaryScreen()->availableSize();
    const QSize told(spec.width, spec.height);
    constexpr QSize least(640, 480); // a panel and its page can still be used
    window_->setMinimumSize(least.boundedTo(most));
    window_->resize(kept.isValid() ? kept.boundedTo(most) : told);
    if (spec.x >= 0 && spec.y >= 0) {
        window_->move(spec.x, spec.y);
    }
    window_->canvas().page().begin(PageWidthCm, PageHeightCm);
    window_->show();
    waitForScreen();
}

// A dialog that comes before the window has its place would miss it.
void DesktopBackend::waitForScreen() {
    constexpr qint64 longest = 250; // msec
    QElapsedTimer waited;
    waited.start();
    while (!window_->windowHandle()->isExposed() && waited.elapsed() < longest) {
        constexpr int pause = 5;
        QCoreApplication::processEvents(QEventLoop::AllEvents, pause);
    }
    settle();
}

void DesktopBackend::connectWindow() {
    Canvas &canvas = window_->canvas();
    canvas.onMouse = [this](int type, int button, double pageX, double pageY, bool second) {
        mouse({type, button, 0, pageX, pageY, second});
    };
    canvas.onMove = [this](double pageX, double pageY) {
        pointer_ = {pageX, pageY};
        tellPointer();
    };
    canvas.onResize = [this] {
        if (reportsResize) {
            queueEvent({EventResize, 0, 0, 0.0, 0.0});
            wake();
        }
    };
    window_->onKey = [this](int code) {
        key(code);
    };
    window_->onMenu = [this](int command) {
        if (work_ == nullptr) {
            queueEvent({EventMenu, command, 0, 0.0, 0.0});
            wake();
        }
    };
    window_->onClose = [this] {
        if (work_ != nullptr) {
            userAsksToClose();
            work_->closeAsked();
            return;
        }
        if (bandOn_) {
            bandEnd_ = bandEnd_ ? bandEnd_ : RubberEnd{EventClose, 0.0, 0.0};
        } else {
            queueEvent({EventClose, 0, 0, 0.0, 0.0});
        }
        wake();
    };
    window_->onMessages = [] {
        ToolkitShowMessages();
    };
    window_->onDrop = [this](const QString &path) {
        openDropped(plainText(path));
    };
    window_->onContextMenu = [this](QPoint place, bool beside) {
        if (QMenu *menu = makeContextMenu(beside)) {
            menu->popup(place);
        }
    };
}

// Places of the page are places of the canvas.
PixelRect DesktopBackend::rootRect() {
    const Canvas &canvas = window_->canvas();
    const QPoint corner = canvas.mapToGlobal(QPoint(0, 0));
    return {corner.x(), corner.y(), canvas.width(), canvas.height()};
}

void DesktopBackend::setTitle(std::string_view title) {
    window_->showTitle(qtText(title));
}

void DesktopBackend::setMenu(int command, bool on) {
    window_->setCommand(command, on);
}

void DesktopBackend::serveMenu(bool on) {
    window_->serveMenu(on);
}

Surface &DesktopBackend::screen() {
    return window_->canvas().page();
}

bool DesktopBackend::hasSurface() {
    return window_ != nullptr && window_->isVisible() && !window_->isMinimized();
}

// The log asks at each of its lines; the eye does not follow more often than this.
void DesktopBackend::flush() {
    constexpr qint64 leastPause = 30; // msec
    if (!sinceFlush_.isValid() || sinceFlush_.elapsed() >= leastPause) {
        window_->canvas().showPage();
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        sinceFlush_.start();
    }
}

void DesktopBackend::showMessages(const MessageRows &rows) {
    QWidget *modal = QApplication::activeModalWidget();
    QWidget *parent = modal != nullptr ? modal : window_.get();
    if (messages_ == nullptr) {
        messages_ = new MessageList(parent);
    }
    messages_->moveTo(parent);
    messages_->setRows(rows);
    messages_->show();
    messages_->raise();
}

void DesktopBackend::addMessage(const MessageRow &row) {
    if (messages_ != nullptr && messages_->isVisible()) {
        messages_->addRow(row);
    }
}

void DesktopBackend::addRecentFile(const std::string &path) {
    settings_.addRecentFile(qtText(path));
}

void DesktopBackend::setStatus(StatusPart part, std::string_view text) {
    recordOn_ = part == StatusPart::Record ? !text.empty() : recordOn_;
    if (window_ != nullptr) {
        window_->setStatus(part, qtText(text));
    }
}

void DesktopBackend::setPointerText(const PointerText &text) {
    pointerText_ = text;
}

void DesktopBackend::tellPointer() {
    if (pointerText_) {
        const bool away = std::isnan(pointer_.x());
        setStatus(StatusPart::Pointer, away ? "" : pointerText_(pointer_.x(), pointer_.y()));
    }
}

std::unique_ptr<DocumentSurface> DesktopBackend::document(int driver) {
    return desktopDocument(driver);
}

void DesktopBackend::trace(std::string_view /*kind*/, std::string_view /*text*/) {}

// ---- Events

void DesktopBackend::settle() {
    constexpr int rounds = 3; // what a paint or a layout asks for comes with the next round
    for (int i = 0; i < rounds; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

void DesktopBackend::wake() {
    if (waiting_ != nullptr) {
        waiting_->quit();
    }
}

void DesktopBackend::waitUntil(const std::function<bool()> &done) {
    QEventLoop *outer = waiting_;
    window_->canvas().showPage();
    while (!done()) {
        QEventLoop loop;
        waiting_ = &loop;
        if (onIdle) {
            QTimer::singleShot(0, &loop, onIdle);
        }
        loop.exec();
    }
    waiting_ = outer;
}

RawEvent DesktopBackend::wait() {
    dropped_ = toolkitState().queue.empty() ? std::nullopt : dropped_;
    tellPointer(); // of the page as it is now
    waitUntil([] { return !toolkitState().queue.empty(); });
    return {};
}

bool DesktopBackend::peek(RawEvent &event) {
    QCoreApplication::processEvents();
    std::deque<RawEvent> &queue = toolkitState().queue;
    if (queue.empty()) {
        return false;
    }
    event = queue.front();
    queue.pop_front();
    return true;
}

void DesktopBackend::key(int code) {
    if (work_ != nullptr) {
        return;
    }
    if (bandOn_) {
        swallowedUp_ = bandButton_;
        bandEnd_ = bandEnd_ ? bandEnd_ : RubberEnd{EventKey, 0.0, 0.0};
    } else {
        if (code == KeyF1) {
            showKeysHelp(window_.get());
        }
        queueEvent({EventKey, code, 0, 0.0, 0.0});
    }
    wake();
}

void DesktopBackend::mouse(const RawEvent &event) {
    const int type = event.type;
    const int button = plainButton(event.value);
    if (work_ != nullptr) {
        return;
    }
    if (type == EventMouseUp && button == swallowedUp_) {
        swallowedUp_ = 0;
        return;
    }
    if (type == EventMouseDown) {
        buttonDown_ = button;
    }
    if (!bandOn_) {
        queueEvent(event);
    } else if (!bandEnd_ && (type == EventMouseDown || button == bandButton_)) {
        swallowedUp_ = type == EventMouseDown ? bandButton_ : 0;
        bandEnd_ = RubberEnd{type, event.pageX, event.pageY};
    }
    wake();
}

RubberEnd DesktopBackend::rubberBand(double pageX, double pageY) {
    bandOn_ = true;
    bandEnd_.reset();
    bandButton_ = buttonDown_;
    window_->canvas().startBand(pageX, pageY);
    waitUntil([this] { return bandEnd_.has_value(); });
    window_->canvas().endBand();
    bandOn_ = false;
    return *bandEnd_;
}

// ---- Files that are opened without a chooser

// The program's own command runs; its chooser is answered with the file.
void DesktopBackend::openDropped(const std::string &path) {
    if (windowContent().commandForFile == nullptr) {
        return;
    }
    dropped_ = path;
    queueEvent({EventMenu, windowContent().commandForFile(path), 0, 0.0, 0.0});
    wake();
}

void DesktopBackend::addRecentFiles(QMenu &menu) {
    const QStringList files = settings_.recentFiles();
    menu.addSection("Recent files");
    if (files.isEmpty()) {
        menu.addAction("(none)")->setEnabled(false);
    }
    for (const QString &file : files) {
        const QFileInfo info(file);
        QAction *action = menu.addAction(info.fileName() + "   " + info.absolutePath());
        QObject::connect(action, &QAction::triggered, &menu,
                         [this, file] { openDropped(plainText(file)); });
    }
}

// A page may have entries while the menu bar, and with it the files, is out of service.
QMenu *DesktopBackend::makeContextMenu(bool beside) {
    const std::span<const ContextEntry> entries = toolkitState().contextEntries;
    if (work_ != nullptr || (!beside && entries.empty() && !window_->servesMenu())) {
        return nullptr;
    }
    auto *menu = new QMenu(window_.get());
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const ContextEntry &entry : entries) {
        QAction *action = menu->addAction(qtText(entry.label) + "\t" + qtText(entry.keyName));
        QObject::connect(action, &QAction::triggered, menu,
                         [this, code = entry.key] { key(code); });
    }
    if (toolkitState().toggleRecord != nullptr) {
        QAction *record =
            menu->addAction(qtText(RecordEntry.label) + "\t" + qtText(RecordEntry.keyName));
        record->setCheckable(true);
        record->setChecked(recordOn_);
        QObject::connect(record, &QAction::triggered, menu, [this] { key(RecordEntry.key); });
    }
    if (window_->servesMenu()) {
        addRecentFiles(*menu);
    }
    return menu;
}

} // namespace keldrin
