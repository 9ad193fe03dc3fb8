#include "toolkit/desktop/panel_frame.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace keldrin {

namespace {

// A panel larger than the room for it can be moved until its other end is seen.
int held(int corner, int size, int room) {
    return std::clamp(corner, std::min(room - size, 0), std::max(room - size, 0));
}

} // namespace

PanelFrame::PanelFrame(QWidget *panel) : QFrame(panel), panel_(panel) {
    setFrameStyle(static_cast<int>(QFrame::StyledPanel) | static_cast<int>(QFrame::Raised));
    panel->setAutoFillBackground(true);
    // What happens upon the panel is not meant for the widget below it.
    panel->setAttribute(Qt::WA_NoMousePropagation);
    panel->parentWidget()->installEventFilter(this);
    auto *outside = new QVBoxLayout(panel);
    outside->setContentsMargins(0, 0, 0, 0);
    outside->addWidget(this);
    auto *inside = new QVBoxLayout(this);
    inside->setContentsMargins(0, 0, 0, 0);
    inside->setSpacing(0);
    inside->addWidget(makeTitle());
    inside->addWidget(body_ = new QWidget(this));
    content_ = new QVBoxLayout(body_);
    content_->setContentsMargins(9, 6, 9, 9);
    colourTitle();
}

QToolButton *PanelFrame::addTitleButton(const char *name, std::function<void()> action) {
    auto *button = new QToolButton(title_);
    button->setObjectName(name);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setCursor(Qt::ArrowCursor);
    title_->layout()->addWidget(button);
    connect(button, &QToolButton::clicked, this, std::move(action));
    return button;
}

QWidget *PanelFrame::makeTitle() {
    title_ = new QWidget(this);
    title_->setAutoFillBackground(true);
    title_->setBackgroundRole(QPalette::Highlight);
    title_->setCursor(Qt::SizeAllCursor);
    title_->installEventFilter(this);
    caption_ = new QLabel(title_);
    caption_->setObjectName("caption");
    caption_->setTextFormat(Qt::PlainText);
    caption_->setForegroundRole(QPalette::HighlightedText);
    auto *row = new QHBoxLayout(title_);
    row->setContentsMargins(9, 2, 2, 2);
    row->setSpacing(0);
    row->addWidget(caption_, 1);
    roll_ = addTitleButton("roll", [this] { rollUp(!rolledUp_); });
    close_ = addTitleButton("close", [this] {
        if (onClose) {
            onClose();
        }
    });
    close_->setText(QString(QChar(0x00D7))); // a cross
    close_->setToolTip("Show the title bar only");
    close_->setAccessibleName("Roll up");
    showRolled();
    return title_;
}

// The buttons are drawn in the colour of the caption.
void PanelFrame::colourTitle() {
    QPalette colours = palette();
    for (const QPalette::ColorRole role : {QPalette::ButtonText, QPalette::WindowText}) {
        colours.setColor(role, colours.color(QPalette::HighlightedText));
    }
    roll_->setPalette(colours);
    close_->setPalette(colours);
}

void PanelFrame::changeEvent(QEvent *event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && close_ != nullptr) {
        colourTitle();
    }
}

void PanelFrame::showRolled() {
    roll_->setArrowType(rolledUp_ ? Qt::DownArrow : Qt::UpArrow);
    roll_->setToolTip(rolledUp_ ? "Show the dialog" : "Show the title bar only");
    roll_->setAccessibleName(roll_->toolTip());
}

void PanelFrame::rollUp(bool rolledUp) {
    rolledUp_ = rolledUp;
    title_->setMinimumWidth(rolledUp ? title_->width() : 0);
    if (rolledUp && panel_->isAncestorOf(QApplication::focusWidget())) {
        panel_->parentWidget()->setFocus(); // which is seen
    }
    body_->setVisible(!rolledUp);
    layout()->activate();
    showRolled();
    fit();
}

void PanelFrame::setCaption(const QString &caption) {
    caption_->setText(caption);
}

void PanelFrame::moveTo(QPoint corner) {
    const QSize room = panel_->parentWidget()->size();
    const QSize size = panel_->size();
    panel_->move(held(corner.x(), size.width(), room.width()),
                 held(corner.y(), size.height(), room.height()));
    fromTopLeft_ = panel_->pos();
    fromBottomRight_ =
        QPoint(room.width(), room.height()) - (fromTopLeft_ + QPoint(size.width(), size.height()));
}

void PanelFrame::keepDistance() {
    const QSize room = panel_->parentWidget()->size();
    const QSize size = panel_->size();
    const QSize spare = room - size;
    const bool right = fromBottomRight_.x() < fromTopLeft_.x();
    const bool bottom = fromBottomRight_.y() < fromTopLeft_.y();
    const QPoint corner(right ? spare.width() - fromBottomRight_.x() : fromTopLeft_.x(),
                        bottom ? spare.height() - fromBottomRight_.y() : fromTopLeft_.y());
    panel_->move(held(corner.x(), size.width(), room.width()),
                 held(corner.y(), size.height(), room.height()));
}

void PanelFrame::fit() {
    panel_->resize(panel_->sizeHint());
    keepDistance();
}

bool PanelFrame::dragTitle(QEvent &event) {
    const auto place = [&] {
        return static_cast<QMouseEvent &>(event).globalPosition().toPoint();
    };
    switch (event.type()) {
    case QEvent::MouseButtonDblClick:
        rollUp(!rolledUp_);
        return true;
    case QEvent::MouseButtonPress:
        dragging_ = static_cast<QMouseEvent &>(event).button() == Qt::LeftButton;
        grabbed_ = place() - panel_->pos();
        return true;
    case QEvent::MouseMove:
        if (dragging_) {
            moveTo(place() - grabbed_);
        }
        return true;
    case QEvent::MouseButtonRelease:
        dragging_ = false;
        return true;
    default:
        return false;
    }
}

bool PanelFrame::eventFilter(QObject *watched, QEvent *event) {
    if (watched == title_ && dragTitle(*event)) {
        return true;
    }
    if (watched == panel_->parentWidget() && event->type() == QEvent::Resize) {
        keepDistance();
    }
    return QFrame::eventFilter(watched, event);
}

} // namespace keldrin
