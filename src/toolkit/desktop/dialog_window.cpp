#include "toolkit/desktop/dialog_window.h"

#include "toolkit/desktop/dialog_layout.h"
#include "toolkit/desktop/field_widgets.h"
#include "toolkit/desktop/form_scroll.h"
#include "toolkit/desktop/keys.h"
#include "toolkit/desktop/panel_frame.h"
#include "toolkit/desktop/qt_text.h"
#include "toolkit/menu.h"
#include "toolkit/user_edits.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QToolTip>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <map>

namespace keldrin {

namespace {

const DialogSpec &specOf(const DialogModel &dialog) {
    static const DialogSpec none;
    const DialogSpec *spec = findDialogSpec(dialog.number);
    return spec != nullptr ? *spec : none;
}

// A panel lies upon the page, not upon the menu and the status bar.
QWidget *parentOf(const DialogModel &dialog, QWidget *root) {
    const auto *window = qobject_cast<QMainWindow *>(root);
    const bool onPage = specOf(dialog).inRoot && window != nullptr;
    return onPage && window->centralWidget() != nullptr ? window->centralWidget() : root;
}

// The frame that the window system puts around a window, known once one of the program is shown.
QMargins frameMargins(const QWidget &window) {
    const QWindow *handle = window.windowHandle();
    return handle != nullptr ? handle->frameMargins() : QMargins();
}

// What a hidden widget wants reaches those around it only when it is asked for, from within.
void measureAgain(QWidget &widget) {
    widget.ensurePolished();
    for (QObject *child : widget.children()) {
        if (child->isWidgetType()) {
            measureAgain(*static_cast<QWidget *>(child));
        }
    }
    if (widget.layout() != nullptr) {
        widget.layout()->activate();
    }
    widget.updateGeometry();
}

// What lies upon the page covers no more of it than it must.
void tighten(QLayout &layout) {
    constexpr int gap = 4;
    const bool framed = qobject_cast<QGroupBox *>(layout.parent()) != nullptr; // no row in it
    layout.setSpacing(gap);
    layout.setContentsMargins(framed ? QMargins(gap, gap, gap, gap) : QMargins());
    for (int i = 0; i < layout.count(); ++i) {
        QLayoutItem *item = layout.itemAt(i);
        QLayout *inner = item->widget() != nullptr ? item->widget()->layout() : item->layout();
        if (inner != nullptr) {
            tighten(*inner);
        }
    }
}

bool leavesField(Qt::FocusReason reason) {
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
           reason != Qt::MenuBarFocusReason;
}

} // namespace

// ---- Making

DialogWindow::DialogWindow(DialogModel &dialog, QWidget *parent)
    : QDialog(parentOf(dialog, parent)), dialog_(dialog) {
    const DialogSpec &spec = specOf(dialog);
    if (spec.inRoot && parentWidget() != nullptr) {
        setWindowFlags(Qt::Widget);
        frame_ = new PanelFrame(this);
        frame_->onClose = [this] {
            reject();
        };
    }
    build(spec);
    if (const ControlState *button = findControl(dialog_, closeButtonOf(dialog_));
        button != nullptr && frame_ != nullptr) {
        frame_->setCloseHint(qtText(withoutMnemonic(button->label)));
    }
    const QSize size = wantedSize().grownBy(frame_ != nullptr ? QMargins() : systemFrame());
    dialog_.size = {size.width(), size.height()};
}

void DialogWindow::build(const DialogSpec &spec) {
    QBoxLayout *all = frame_ != nullptr ? &frame_->content() : new QVBoxLayout(this);
    auto *form = new QWidget(this);
    auto *body = new QVBoxLayout(form);
    body->setContentsMargins(0, 0, 0, 0);
    fields_ = makeFields(spec, form);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    frames_ = layOutFields(fields_, *body, *buttons);
    if (frame_ != nullptr) {
        all->addWidget(form);
    } else {
        all->addWidget(new FormScroll(form, this));
    }
    all->addLayout(buttons);
    if (frame_ != nullptr) {
        tighten(*body);
    }
    giveMnemonics();
    orderTabs();
    for (const DialogField &field : fields_) {
        connectField(field);
    }
    showAll();
    settleLayout();
}

void DialogWindow::giveMnemonics() {
    std::vector<MnemonicText> texts;
    for (const DialogField &field : fields_) {
        const ControlState *control = findControl(dialog_, field.spec.id);
        const auto *label = qobject_cast<QLabel *>(field.widget);
        const bool isLabel = label != nullptr && label->buddy() != nullptr;
        const bool hasOwn = qobject_cast<QAbstractButton *>(field.widget) != nullptr;
        if (control != nullptr && (hasOwn || isLabel || field.label != nullptr)) {
            texts.push_back({control->id, control->label, hasOwn, isLabel});
        }
    }
    mnemonics_ = Mnemonics(texts);
}

void DialogWindow::orderTabs() {
    QWidget *before = nullptr;
    for (const DialogField &field : fields_) {
        if (field.widget->focusPolicy() == Qt::NoFocus) {
            continue; // a text that is only read still has its place among the others
        }
        if (before != nullptr) {
            setTabOrder(before, field.widget);
        }
        before = field.widget;
    }
}

// Buttons that stand together are equally wide.
void DialogWindow::evenButtons() {
    std::map<const QObject *, int> widest; // by what they stand in
    for (const bool measuring : {true, false}) {
        for (const DialogField &field : fields_) {
            if (auto *button = qobject_cast<QPushButton *>(field.widget)) {
                int &width = widest[button->parent()];
                button->setMinimumWidth(measuring ? 0 : width);
                const int air = button->fontMetrics().averageCharWidth();
                width = std::max(width, button->sizeHint().width() + air);
            }
        }
    }
}

void DialogWindow::connectField(const DialogField &field) {
    const int id = field.spec.id;
    field.widget->installEventFilter(this);
    if (auto *edit = dynamic_cast<FieldEdit *>(field.widget)) {
        connect(edit, &QLineEdit::textEdited, this,
                [this, id](const QString &text) { typed(id, text); });
    } else if (auto *check = qobject_cast<QCheckBox *>(field.widget)) {
        connect(check, &QCheckBox::toggled, this,
                [this, id](bool on) { report([&] { userChecks(dialog_, id, on); }); });
    } else if (auto *button = qobject_cast<QPushButton *>(field.widget)) {
        connect(button, &QPushButton::clicked, this, [this, id] { press(id); });
    } else if (auto *list = qobject_cast<QComboBox *>(field.widget)) {
        connect(list, &QComboBox::currentIndexChanged, this,
                [this, id](int index) { report([&] { userChooses(dialog_, id, index + 1); }); });
    } else if (auto *open = qobject_cast<QListWidget *>(field.widget)) {
        connect(open, &QListWidget::currentRowChanged, this,
                [this, id](int row) { report([&] { userChooses(dialog_, id, row + 1); }); });
        connect(open, &QListWidget::itemDoubleClicked, this,
                [this] { press(dialog_.defaultButton); });
    } else if (auto *trackbar = qobject_cast<QSlider *>(field.widget)) {
        connect(trackbar, &QSlider::valueChanged, this,
                [this, id](int value) { report([&] { userMoves(dialog_, id, value); }); });
        connect(trackbar, &QSlider::sliderMoved, trackbar, [trackbar](int value) {
            QToolTip::showText(QCursor::pos(), QString::number(value), trackbar);
        });
    }
}

// ---- What the model holds

void DialogWindow::refresh(int id) {
    if (id == 0) {
        setWindowTitle(qtText(dialog_.caption));
        if (frame_ != nullptr) {
            frame_->setCaption(qtText(dialog_.caption));
        }
        return;
    }
    for (const DialogField &field : fields_) {
        if (field.spec.id == id) {
            showField(field);
        }
    }
}

void DialogWindow::showAll() {
    refresh(0);
    for (const DialogField &field : fields_) {
        showField(field);
    }
}

void DialogWindow::showField(const DialogField &field) {
    const ControlState *control = findControl(dialog_, field.spec.id);
    if (control == nullptr) {
        return;
    }
    if (field.spec.look == StaticLook::GroupTitle) {
        showGroupTitle(field.widget);
        return;
    }
    const auto *label = qobject_cast<QLabel *>(field.widget);
    const bool plain = label != nullptr && label->buddy() == nullptr; // it knows no letters
    showControl(field, *control,
                plain ? qtText(control->label)
                      : mnemonics_.marked(control->id, control->label, label != nullptr),
                unitOf(field.spec));
}

void DialogWindow::showGroupTitle(QWidget *frame) {
    QStringList title;
    for (const DialogField &field : fields_) {
        const ControlState *control = findControl(dialog_, field.spec.id);
        if (field.widget == frame && control != nullptr) {
            title << qtText(control->label);
        }
    }
    static_cast<QGroupBox *>(frame)->setTitle(title.join(' ').replace("&", "&&"));
}

QString DialogWindow::unitOf(const ControlSpec &spec) const {
    for (const int id : {spec.id + UnitIdOffset, spec.unitFrom}) {
        if (const ControlState *unit = findControl(dialog_, id)) {
            return qtText(unit->label);
        }
    }
    return {};
}

QWidget *DialogWindow::widgetOf(int id) const {
    const auto found = std::find_if(fields_.begin(), fields_.end(),
                                    [=](const DialogField &f) { return f.spec.id == id; });
    return found == fields_.end() ? nullptr : found->widget;
}

// ---- What the user does

template <class Edit>
void DialogWindow::report(Edit edit) {
    if (!serving_) {
        return;
    }
    edit();
    showAll();
    if (onAction) {
        onAction();
    }
}

// A pasted text can hold line ends and other control characters, which no field takes.
void DialogWindow::typed(int id, const QString &text) {
    const auto endsLine = [](QChar c) {
        return c.category() == QChar::Other_Control || c.category() == QChar::Separator_Line ||
               c.category() == QChar::Separator_Paragraph;
    };
    QString line = text;
    std::replace_if(line.begin(), line.end(), endsLine, QChar(' '));
    report([&] { typeText(dialog_, id, plainText(line)); });
}

void DialogWindow::press(int id) {
    report([&] { userPresses(dialog_, id); });
}

void DialogWindow::leaveField(const QObject *widget) {
    for (const DialogField &field : fields_) {
        const ControlState *control = findControl(dialog_, field.spec.id);
        if (field.widget == widget && control != nullptr && control->typed) {
            report([&] { commitField(dialog_, field.spec.id); });
        }
    }
}

void DialogWindow::reject() {
    report([&] { userCloses(dialog_); });
}

void DialogWindow::closeEvent(QCloseEvent *event) {
    event->ignore(); // the program closes it
    reject();
}

// ---- Keys

bool DialogWindow::leavesKeys() const {
    return dialog_.mode == DialogModeless && keyHook;
}

void DialogWindow::pressEnter() {
    leaveField(focusWidget());
    if (auto *button = qobject_cast<QPushButton *>(focusWidget())) {
        button->click();
    } else {
        press(dialog_.defaultButton);
    }
}

bool DialogWindow::takesKey(QKeyEvent &key) {
    const bool enter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (leavesKeys()) {
        const int code = key.modifiers().testFlag(Qt::AltModifier) ? 0 : keyCodeOf(key);
        if (enter) {
            leaveField(focusWidget());
        }
        if (code != 0) {
            keyHook(code);
        }
        return code != 0;
    }
    if (enter && !key.isAutoRepeat()) {
        pressEnter();
    } else if (key.key() == Qt::Key_Escape) {
        reject();
    }
    return enter || key.key() == Qt::Key_Escape;
}

// What no control wanted.
void DialogWindow::keyPressEvent(QKeyEvent *event) {
    takesKey(*event);
    event->accept(); // a panel's keys end here
}

// A button needs Space and Tab; while the root window is served, a text field needs all it can use.
bool DialogWindow::isForControl(const QObject *watched, const QKeyEvent &key) const {
    if (key.key() == Qt::Key_Space || key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab) {
        return true;
    }
    return leavesKeys() ? dynamic_cast<const FieldEdit *>(watched) != nullptr
                        : qobject_cast<const QPushButton *>(watched) == nullptr;
}

bool DialogWindow::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::FocusOut &&
        leavesField(static_cast<QFocusEvent *>(event)->reason())) {
        leaveField(watched);
    }
    if (event->type() == QEvent::KeyPress) {
        auto &key = *static_cast<QKeyEvent *>(event);
        return !isForControl(watched, key) && takesKey(key);
    }
    return QDialog::eventFilter(watched, event);
}

// ---- Showing

void DialogWindow::showAt(DialogPlacement placement) {
    setModal(dialog_.mode == DialogModal && frame_ == nullptr);
    showAll();
    for (const DialogField &field : fields_) {
        if (auto *button = qobject_cast<QPushButton *>(field.widget)) {
            button->setDefault(field.spec.id == dialog_.defaultButton);
        }
    }
    settleLayout();
    place(placement);
    giveFocus();
    show();
    if (frame_ == nullptr) {
        activateWindow();
    } else {
        raise();
        giveFocus(); // what is hidden inside a window cannot have it
    }
}

void DialogWindow::giveFocus() {
    bool wanted = dialog_.firstControl == 0;
    for (const DialogField &field : fields_) {
        wanted = wanted || field.spec.id == dialog_.firstControl;
        if (wanted && field.widget->isEnabled() &&
            (field.widget->focusPolicy() & Qt::TabFocus) != 0) {
            field.widget->setFocus(Qt::TabFocusReason); // selects what would be typed over
            return;
        }
    }
}

void DialogWindow::setVisible(bool visible) {
    const bool hadFocus = isAncestorOf(QApplication::focusWidget());
    serving_ = visible;
    QDialog::setVisible(visible);
    if (!visible && frame_ != nullptr && hadFocus) {
        parentWidget()->setFocus();
    }
}

QMargins DialogWindow::systemFrame() const {
    const QMargins own = frameMargins(*this);
    return own.isNull() && parentWidget() != nullptr ? frameMargins(*parentWidget()->window())
                                                     : own;
}

// Of the screen that the root window is on, whichever that is.
QRect DialogWindow::roomOnScreen() const {
    const QWidget *root = parentWidget();
    return (root != nullptr ? root : this)->screen()->availableGeometry();
}

QPoint DialogWindow::heldOnScreen(QPoint corner) const {
    const QRect room = roomOnScreen();
    const QSize spare = room.size() - size().grownBy(systemFrame());
    const QPoint last = room.topLeft() + QPoint(spare.width(), spare.height());
    return {std::max(std::min(corner.x(), last.x()), room.x()),
            std::max(std::min(corner.y(), last.y()), room.y())};
}

void DialogWindow::settleLayout() {
    evenButtons();
    for (const std::vector<QGridLayout *> &grids : frames_) {
        alignLabels(grids);
    }
    measureAgain(*this);
    fitSize();
}

QSize DialogWindow::wantedSize() const {
    QSize wanted = sizeHint();
    if (frame_ != nullptr) {
        return wanted;
    }
    const int besideCaption = 4 * style()->pixelMetric(QStyle::PM_TitleBarHeight); // its buttons
    const int caption = fontMetrics().horizontalAdvance(windowTitle()) + besideCaption;
    wanted = wanted.expandedTo(QSize(caption, 0));
    const QSize most = roomOnScreen().size().shrunkBy(systemFrame());
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const QSize bars(wanted.height() > most.height() ? bar : 0,
                     wanted.width() > most.width() ? bar : 0);
    return (wanted + bars).boundedTo(most);
}

// Grows when the content does; what the user has made smaller stays so otherwise.
void DialogWindow::fitSize() {
    if (frame_ != nullptr) {
        frame_->fit();
        return;
    }
    const QSize wanted = wantedSize();
    if (wanted != fitted_) {
        fitted_ = wanted;
        resize(isVisible() ? size().expandedTo(wanted) : wanted);
        if (isVisible()) {
            move(heldOnScreen(frameGeometry().topLeft()));
        }
    }
}

void DialogWindow::place(DialogPlacement placement) {
    const bool middle = placement.x == -1 && placement.y == -1;
    const QWidget *below = parentWidget();
    if (frame_ != nullptr) {
        const QPoint centre((below->width() - width()) / 2, (below->height() - height()) / 2);
        const QPoint told = below->mapFromGlobal(QPoint(placement.x, placement.y));
        frame_->moveTo(middle ? centre : QPoint(std::max(told.x(), 0), std::max(told.y(), 0)));
        return;
    }
    const QSize all = size().grownBy(systemFrame());
    const bool overParent = below != nullptr && below->window()->isVisible();
    const QRect around = overParent ? below->window()->frameGeometry() : roomOnScreen();
    const QPoint centred = around.center() - QPoint(all.width(), all.height()) / 2;
    move(heldOnScreen(middle ? centred : QPoint(placement.x, placement.y)));
}

bool DialogWindow::event(QEvent *event) {
    const bool done = QDialog::event(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        evenButtons();
    }
    if (event->type() == QEvent::LayoutRequest) {
        fitSize();
    }
    return done;
}

} // namespace keldrin
