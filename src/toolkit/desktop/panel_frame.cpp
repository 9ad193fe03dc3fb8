#include "toolkit/desktop/panel_frame.h"

#include "base/real.h"
#include "toolkit/desktop/page_area.h"
#include "toolkit/desktop/widgets/panel_buttons.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QRubberBand>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace keldrin {

namespace {

// A panel larger than the room for it can be moved until its other end is seen.
int held(int corner, int size, int room) {
    return limited(corner, std::min(room - size, 0), std::max(room - size, 0));
}

} // namespace

PanelFrame::PanelFrame(QWidget *panel, bool docks, CloseBox closeBox)
    : QFrame(panel), panel_(panel), closeBox_(closeBox),
      area_(docks ? dynamic_cast<PageArea *>(panel->parentWidget()) : nullptr) {
    state_.side = area_ != nullptr ? PanelSide::Right : PanelSide::Floating;
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
    inside->addWidget(strip_ = new PanelStrip(this));
    inside->addWidget(makeTitle());
    inside->addWidget(body_ = new QWidget(this), 1);
    content_ = new QVBoxLayout(body_);
    content_->setContentsMargins(9, 6, 9, 9);
    strip_->setObjectName("unroll");
    connect(strip_, &QAbstractButton::clicked, this, [this] { rollUp(false); });
    showState();
}

PanelFrame::~PanelFrame() {
    leave();
}

// ---- Making

TitleButton *PanelFrame::addTitleButton(const char *name, std::function<void()> action) {
    auto *button = new TitleButton(title_);
    button->setObjectName(name);
    title_->layout()->addWidget(button);
    connect(button, &QAbstractButton::clicked, this, std::move(action));
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
    row->setSpacing(2);
    row->addWidget(caption_, 1);
    dock_ = addTitleButton("dock", [this] { dock(isDocked() ? PanelSide::Floating : lastSide_); });
    dock_->setVisible(area_ != nullptr);
    roll_ = addTitleButton("roll", [this] { rollUp(!state_.rolledUp); });
    roll_->setVisible(closeBox_ == CloseBox::RollsUp);
    close_ = addTitleButton("close", [this] {
        if (onClose) {
            onClose();
        }
    });
    return title_;
}

void PanelFrame::setCaption(const QString &caption) {
    caption_->setText(caption);
    strip_->setCaption(caption);
}

// ---- Its state

bool PanelFrame::isDocked() const {
    return area_ != nullptr && state_.side != PanelSide::Floating;
}

PanelState PanelFrame::state() const {
    return state_;
}

void PanelFrame::setState(const PanelState &state) {
    state_ = state;
    state_.rolledUp = state.rolledUp && closeBox_ == CloseBox::RollsUp;
    state_.side = area_ != nullptr ? state.side : PanelSide::Floating;
    showState();
}

// What is seen of it, and what its buttons do now.
void PanelFrame::showState() {
    using enum TitleButton::Sign;
    const bool docked = isDocked();
    const bool right = state_.side == PanelSide::Right;
    lastSide_ = docked ? state_.side : lastSide_;
    const bool up = state_.rolledUp;
    title_->setMinimumWidth(up && !docked ? caption_->sizeHint().width() : 0);
    strip_->setVisible(docked && up);
    title_->setVisible(!docked || !up);
    body_->setVisible(!up);
    const QString showAll = "Show the panel";
    const QString rollUpWords = docked ? "Roll the panel up" : "Show the title bar only";
    strip_->setSign(right ? Left : Right, showAll);
    dock_->setSign(docked ? Float : Dock,
                   docked ? "Let the panel float upon the page" : "Dock the panel beside the page");
    const TitleButton::Sign away = !docked ? Up : right ? Right : Left;
    roll_->setSign(up ? Down : away, up ? showAll : rollUpWords);
    close_->setSign(Cross, closeBox_ == CloseBox::Closes ? "Close" : rollUpWords);
    layout()->activate();
}

void PanelFrame::rollUp(bool rolledUp) {
    const int width = title_->width();
    state_.rolledUp = rolledUp;
    if (rolledUp && panel_->isAncestorOf(QApplication::focusWidget())) {
        panel_->parentWidget()->setFocus(); // which is seen
    }
    showState();
    if (rolledUp && !isDocked()) {
        title_->setMinimumWidth(width);
    }
    fit();
    notifyChange();
}

void PanelFrame::notifyChange() {
    if (onChange) {
        onChange();
    }
}

void PanelFrame::dock(PanelSide side) {
    state_.side = side;
    state_.rolledUp = false;
    showState();
    fit();
    if (side == PanelSide::Floating && !dragging_) {
        moveTo(state_.corner.value_or(firstCorner()));
        panel_->raise();
    }
    notifyChange();
}

// Beside the page where there is room; else over its lower left corner, which shows least.
QPoint PanelFrame::firstCorner() const {
    const QRect room = area_->pageRoom();
    const bool beside = room.right() - area_->page().geometry().right() >= panel_->width();
    const int x = beside ? room.right() + 1 - panel_->width() : room.left();
    return {x, room.bottom() + 1 - panel_->height()};
}

void PanelFrame::enter(QPoint corner) {
    if (area_ != nullptr) {
        area_->takePanel(*this);
    }
    fit();
    if (!isDocked()) {
        moveTo(state_.corner.value_or(corner));
    }
}

void PanelFrame::leave() {
    if (area_ != nullptr) {
        area_->releasePanel(*this);
    }
}

// ---- Its place

int PanelFrame::dockedWidth(int height) const {
    const QSize wanted = panel_->sizeHint();
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    return wanted.width() + (!state_.rolledUp && wanted.height() > height ? bar : 0);
}

bool PanelFrame::holdsTable() const {
    return body_->findChild<QAbstractItemView *>() != nullptr;
}

int PanelFrame::leastWidth() const {
    return minimumSizeHint().width();
}

int PanelFrame::wantedHeight() const {
    return panel_->sizeHint().height();
}

// Its title and some lines.
int PanelFrame::leastHeight() const {
    const int lines = holdsTable() ? 9 : 4;
    return std::min(wantedHeight(),
                    title_->sizeHint().height() + lines * fontMetrics().lineSpacing());
}

void PanelFrame::moveTo(QPoint corner) {
    const QSize room = panel_->parentWidget()->size();
    const QSize size = panel_->size();
    panel_->move(held(corner.x(), size.width(), room.width()),
                 held(corner.y(), size.height(), room.height()));
    fromTopLeft_ = panel_->pos();
    fromBottomRight_ =
        QPoint(room.width(), room.height()) - (fromTopLeft_ + QPoint(size.width(), size.height()));
    state_.corner = fromTopLeft_;
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
    if (isDocked()) {
        area_->layOut();
        return;
    }
    if (area_ != nullptr) {
        area_->layOut(); // the page has the whole room
    }
    const int room = panel_->parentWidget()->height();
    const QSize wanted = panel_->sizeHint();
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    panel_->resize(wanted.height() > room ? QSize(wanted.width() + bar, room) : wanted);
    keepDistance();
}

// ---- The mouse on its title bar

// The side at whose edge a place of the screen is.
PanelSide PanelFrame::sideAt(QPoint place) const {
    const int reach = 2 * fontMetrics().height();
    const int x = area_ != nullptr ? area_->mapFromGlobal(place).x() : reach;
    if (area_ == nullptr || (x >= reach && x <= area_->width() - reach)) {
        return PanelSide::Floating;
    }
    return x < reach ? PanelSide::Left : PanelSide::Right;
}

void PanelFrame::showTarget(PanelSide side) {
    if (side == PanelSide::Floating) {
        target_.reset();
        return;
    }
    if (target_ == nullptr) {
        target_ = std::make_unique<QRubberBand>(QRubberBand::Rectangle, area_);
    }
    const int width = dockedWidth(area_->height());
    const int x = side == PanelSide::Left ? 0 : area_->width() - width;
    target_->setGeometry(x, 0, width, area_->height());
    target_->show();
    target_->raise();
}

void PanelFrame::drag(QPoint place) {
    if (!dragging_) {
        if ((place - *pressed_).manhattanLength() < QApplication::startDragDistance()) {
            return;
        }
        dragging_ = true;
        floatedAt_ = state_.corner;
        if (isDocked()) {
            dock(PanelSide::Floating);
            grabbed_.setX(std::min(grabbed_.x(), panel_->width() - 1));
            panel_->raise();
        }
    }
    moveTo(panel_->parentWidget()->mapFromGlobal(place) - grabbed_);
    showTarget(sideAt(place));
}

void PanelFrame::drop(QPoint place) {
    const PanelSide side = dragging_ ? sideAt(place) : PanelSide::Floating;
    showTarget(PanelSide::Floating);
    pressed_.reset();
    dragging_ = false;
    if (side != PanelSide::Floating) {
        state_.corner = floatedAt_; // it has only passed the edge
        dock(side);
    }
    notifyChange();
}

bool PanelFrame::serveTitle(QEvent &event) {
    const auto mouse = [&]() -> QMouseEvent & {
        return static_cast<QMouseEvent &>(event);
    };
    switch (event.type()) {
    case QEvent::MouseButtonDblClick:
        if (area_ != nullptr) {
            dock(isDocked() ? PanelSide::Floating : lastSide_);
        } else {
            rollUp(!state_.rolledUp);
        }
        return true;
    case QEvent::MouseButtonPress:
        if (mouse().button() == Qt::LeftButton) {
            pressed_ = mouse().globalPosition().toPoint();
            grabbed_ = panel_->mapFromGlobal(*pressed_);
        }
        return true;
    case QEvent::MouseMove:
        if (pressed_) {
            drag(mouse().globalPosition().toPoint());
        }
        return true;
    case QEvent::MouseButtonRelease:
        if (pressed_) {
            drop(mouse().globalPosition().toPoint());
        }
        return true;
    default:
        return false;
    }
}

bool PanelFrame::eventFilter(QObject *watched, QEvent *event) {
    if (watched == title_ && serveTitle(*event)) {
        return true;
    }
    if (watched == panel_->parentWidget() && event->type() == QEvent::Resize && !isDocked()) {
        fit();
    }
    return QFrame::eventFilter(watched, event);
}

} // namespace keldrin
