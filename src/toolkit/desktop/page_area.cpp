#include "toolkit/desktop/page_area.h"

#include "page/surfaces/surface.h"
#include "toolkit/desktop/panel_frame.h"

#include <algorithm>

namespace keldrin {

namespace {

// The largest page of the paper's shape, in the middle of a room.
QRect paperIn(const QRect &room) {
    constexpr double shape = static_cast<double>(PageWidthCm) / static_cast<double>(PageHeightCm);
    const int width = std::min(room.width(), static_cast<int>(room.height() * shape));
    const int height = std::min(room.height(), static_cast<int>(room.width() / shape));
    return {room.x() + (room.width() - width) / 2, room.y() + (room.height() - height) / 2, width,
            height};
}

} // namespace

PageArea::PageArea(QWidget *page, QWidget *parent) : QWidget(parent), page_(page) {
    page_->setParent(this);
    setFocusProxy(page_);
    setAutoFillBackground(true);
}

void PageArea::takePanel(PanelFrame &panel) {
    panel_ = &panel;
    layOut();
}

void PageArea::releasePanel(const PanelFrame &panel) {
    if (panel_ == &panel) {
        panel_.clear();
        layOut();
    }
}

void PageArea::layOut() {
    QRect room = rect();
    if (panel_ != nullptr && panel_->isDocked()) {
        const int width = std::min(panel_->dockedWidth(height()), room.width());
        const bool right = panel_->state().side == PanelSide::Right;
        const int x = right ? room.width() - width : 0;
        panel_->panel().setGeometry(x, 0, width, room.height());
        room = QRect(right ? 0 : width, 0, room.width() - width, room.height());
    }
    page_->setGeometry(panel_ != nullptr ? paperIn(room) : room);
}

void PageArea::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    layOut();
}

} // namespace keldrin
