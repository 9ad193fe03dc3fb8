#include "toolkit/desktop/page_area.h"

#include "page/surfaces/surface.h"
#include "toolkit/desktop/panel_frame.h"

#include <algorithm>
#include <cstddef>

namespace keldrin {

namespace {

using Panels = std::vector<PanelFrame *>;

// The largest page of the paper's shape, in the middle of a room.
QRect paperIn(const QRect &room) {
    constexpr double shape = static_cast<double>(PageWidthCm) / static_cast<double>(PageHeightCm);
    const int width = std::min(room.width(), static_cast<int>(room.height() * shape));
    const int height = std::min(room.height(), static_cast<int>(room.width() / shape));
    return {room.x() + (room.width() - width) / 2, room.y() + (room.height() - height) / 2, width,
            height};
}

// The part of a room at one of its sides, which it loses.
QRect cutOff(QRect &room, PanelSide side, int width) {
    QRect part = room;
    part.setWidth(std::min(width, room.width()));
    if (side == PanelSide::Right) {
        part.moveRight(room.right());
        room.setWidth(room.width() - part.width());
    } else {
        room.setLeft(part.right() + 1);
    }
    return part;
}

// Heights of panels below each other. The last one comes first, a table, which can be scrolled,
// after the others; and a table takes what is left, or else the last one.
std::vector<int> sharedHeights(const Panels &panels, int room) {
    std::vector<int> heights(panels.size());
    std::size_t taker = panels.size() - 1;
    int spare = room;
    int least = 0; // of those that are still to come
    for (const PanelFrame *panel : panels) {
        least += panel->leastHeight();
    }
    for (const bool table : {false, true}) {
        for (std::size_t i = panels.size(); i-- > 0;) {
            if (panels[i]->holdsTable() == table) {
                least -= panels[i]->leastHeight();
                heights[i] = std::clamp(spare - least, 0, panels[i]->wantedHeight());
                spare -= heights[i];
                taker = table ? i : taker;
            }
        }
    }
    heights[taker] += std::max(spare, 0);
    return heights;
}

// A table leaves the page half of the room, if it can.
int columnWidth(const Panels &panels, const std::vector<int> &heights, int room) {
    int width = 0;
    for (std::size_t i = 0; i < panels.size(); ++i) {
        const int wanted = panels[i]->dockedWidth(heights[i]);
        const int most = std::max(room / 2, panels[i]->leastWidth());
        width = std::max(width, panels[i]->holdsTable() ? std::min(wanted, most) : wanted);
    }
    return width;
}

void layOutSide(const Panels &panels, PanelSide side, QRect &room) {
    Panels column;
    for (PanelFrame *panel : panels) {
        if (panel->state().side == side && panel->state().rolledUp) {
            panel->panel().setGeometry(cutOff(room, side, panel->dockedWidth(room.height())));
        } else if (panel->state().side == side) {
            column.push_back(panel);
        }
    }
    if (column.empty()) {
        return;
    }
    const std::vector<int> heights = sharedHeights(column, room.height());
    QRect place = cutOff(room, side, columnWidth(column, heights, room.width()));
    for (std::size_t i = 0; i < column.size(); ++i) {
        place.setHeight(heights[i]);
        column[i]->panel().setGeometry(place);
        place.translate(0, heights[i]);
    }
}

} // namespace

PageArea::PageArea(QWidget *page, QWidget *parent) : QWidget(parent), page_(page) {
    page_->setParent(this);
    setFocusProxy(page_);
    setAutoFillBackground(true);
}

void PageArea::takePanel(PanelFrame &panel) {
    releasePanel(panel);
    panels_.emplace_back(&panel);
    layOut();
}

void PageArea::releasePanel(const PanelFrame &panel) {
    if (std::erase_if(panels_, [&](const auto &p) { return p.isNull() || p == &panel; }) > 0) {
        layOut();
    }
}

void PageArea::layOut() {
    Panels docked;
    for (const QPointer<PanelFrame> &panel : panels_) {
        if (panel != nullptr && panel->isDocked()) {
            docked.push_back(panel);
        }
    }
    pageRoom_ = rect();
    layOutSide(docked, PanelSide::Left, pageRoom_);
    layOutSide(docked, PanelSide::Right, pageRoom_);
    page_->setGeometry(panels_.empty() ? pageRoom_ : paperIn(pageRoom_));
}

void PageArea::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    layOut();
}

} // namespace keldrin
