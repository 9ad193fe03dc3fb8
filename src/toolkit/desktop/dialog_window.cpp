#include "toolkit/desktop/dialog_window.h"

#include "toolkit/desktop/panel_frame.h"
#include "toolkit/desktop/widgets/dialog_layout.h"
#include "toolkit/desktop/widgets/form_scroll.h"
#include "toolkit/desktop/widgets/qt_text.h"
#include "toolkit/menu.h"

#include <QAbstractButton>
#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace keldrin {

namespace {

const DialogSpec &specOf(const DialogModel &dialog) {
    static const DialogSpec none;
    return dialog.spec != nullptr ? *dialog.spec : none;
}

// A panel lies upon the page, not upon the menu and the status bar.
QWidget *parentOf(const DialogModel &dialog, QWidget *root) {
    const auto *window = qobject_cast<QMainWindow *>(root);
    const bool onPage = specOf(dialog).inRoot && window != nullptr;
    return onPage && window->centralWidget() != nullptr ? window->centralWidget() : root;
}

// What stands beside the page or upon it takes no more of its room than it must.
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

} // namespace

// ---- Making

DialogWindow::DialogWindow(DialogModel &dialog, QWidget *parent)
    : QDialog(parentOf(dialog, parent)), dialog_(dialog) {
    const DialogSpec &spec = specOf(dialog);
    if (spec.inRoot && parentWidget() != nullptr) {
        setWindowFlags(Qt::Widget);
        const bool beside = spec.place == DialogPlace::Beside;
        frame_ =
            new PanelFrame(this, beside || spec.place == DialogPlace::Docked,
                           beside ? PanelFrame::CloseBox::Closes : PanelFrame::CloseBox::RollsUp);
        frame_->onClose = [this] {
            reject();
        };
        frame_->onChange = [this] {
            if (onPanelChange) {
                onPanelChange(frame_->state());
            }
        };
    }
    build(spec);
    const QSize size = wantedSize().grownBy(frame_ != nullptr ? QMargins() : systemFrame());
    dialog_.size = {size.width(), size.height()};
}

void DialogWindow::build(const DialogSpec &spec) {
    QBoxLayout *all = frame_ != nullptr ? &frame_->content() : new QVBoxLayout(this);
    auto *form = new QWidget(this);
    auto *body = new QVBoxLayout(form);
    body->setContentsMargins(0, 0, 0, 0);
    fields_ = makeFields(spec, form);
    listed_ = makeButtonLists(spec, fields_);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    frames_ = layOutFields(fields_, *body, *buttons);
    all->addWidget(new FormScroll(form, this));
    all->addLayout(buttons);
    const bool fills = std::any_of(fields_.begin(), fields_.end(), [](const DialogField &field) {
        return field.spec.kind == ControlKind::Grid; // which takes all the height
    });
    if (frame_ != nullptr) {
        tighten(*body);
    }
    if (frame_ != nullptr && !fills) {
        all->addStretch(1);
    }
    giveMnemonics();
    orderTabs();
    for (const DialogField &field : fields_) {
        connectField(field);
    }
    for (const ListedButton &button : listed_) {
        connect(button.action, &QAction::triggered, this, [this, id = button.id] { press(id); });
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

PanelState DialogWindow::panelState() const {
    return frame_ != nullptr ? frame_->state() : PanelState{};
}

void DialogWindow::setPanelState(const PanelState &state) {
    if (frame_ != nullptr) {
        frame_->setState(state);
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
    for (const ListedButton &button : listed_) {
        if (button.id == id) {
            showListed(button);
        }
    }
    greyTexts(fields_);
}

void DialogWindow::showAll() {
    refresh(0);
    for (const DialogField &field : fields_) {
        showField(field);
    }
    for (const ListedButton &button : listed_) {
        showListed(button);
    }
    greyTexts(fields_);
}

void DialogWindow::showListed(const ListedButton &button) {
    if (const ControlState *control = findControl(dialog_, button.id)) {
        button.action->setText(qtText(withoutMnemonic(control->label)).replace("&", "&&"));
        button.action->setEnabled(control->enabled);
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
    if (found != fields_.end()) {
        return found->widget;
    }
    const auto listed = std::find_if(listed_.begin(), listed_.end(),
                                     [=](const ListedButton &b) { return b.id == id; });
    return listed == listed_.end() ? nullptr : listed->opener;
}

QAction *DialogWindow::listedAction(int id) const {
    const auto listed = std::find_if(listed_.begin(), listed_.end(),
                                     [=](const ListedButton &b) { return b.id == id; });
    return listed == listed_.end() ? nullptr : listed->action;
}

} // namespace keldrin
