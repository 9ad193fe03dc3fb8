#include "toolkit/desktop/canvas.h"

#include "toolkit/desktop/painter_surface.h"

#include <QMouseEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace keldrin {

namespace {

constexpr int WheelStep = 120;

int numberOf(Qt::MouseButton button) {
    switch (button) {
    case Qt::LeftButton:
        return 1;
    case Qt::MiddleButton:
        return 2;
    case Qt::RightButton:
        return 3;
    default:
        return 0;
    }
}

int heldKey(Qt::KeyboardModifiers modifiers) {
    if (modifiers.testFlag(Qt::ControlModifier)) {
        return KeyWithCtrl;
    }
    return modifiers.testFlag(Qt::ShiftModifier) ? KeyWithShift : 0;
}

} // namespace

Canvas::Canvas(QWidget *parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent); // every repaint fills the page: nothing flickers
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(160, 120);
}

void Canvas::showPage() {
    if (page_.changes() != painted_.changes) {
        update();
    }
}

// The picture has the pixels that the canvas covers on its window, so that it is copied as it is.
void Canvas::drawPicture(const QRectF &pixels, double pixelRatio) {
    picture_ = QImage(pixels.toAlignedRect().size(), QImage::Format_RGB32);
    picture_.setDevicePixelRatio(pixelRatio);
    picture_.fill(Qt::white); // paper, in light and dark surroundings
    QPainter painter(&picture_);
    painter.translate((pixels.topLeft() - pixels.toAlignedRect().topLeft()) / pixelRatio);
    PainterSurface surface(painter, QRectF(rect()));
    constexpr int halfLight = 128;
    if (palette().base().color().lightness() < halfLight) { // the log is no paper
        surface.setLogColours(palette().base().color(), palette().text().color());
    }
    page_.replay(surface);
}

void Canvas::paintEvent(QPaintEvent * /*event*/) {
    QPainter painter(this);
    const QRectF pixels = painter.deviceTransform().mapRect(QRectF(rect()));
    const Painted now = {page_.changes(), pixels, palette().cacheKey()};
    if (!(now == painted_)) {
        painted_ = now;
        drawPicture(pixels, devicePixelRatioF());
    }
    const QPointF corner = QPointF(pixels.toAlignedRect().topLeft()) - pixels.topLeft();
    painter.drawImage(corner / devicePixelRatioF(), picture_);
    if (bandOn_) {
        painter.setPen(QPen(Qt::red, 0));
        painter.drawRect(band());
    }
}

void Canvas::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    if (onResize) {
        onResize();
    }
}

// ---- Mouse

QPointF Canvas::fractionOf(QPointF place) const {
    const double across = std::max(1, width());
    const double down = std::max(1, height());
    return {place.x() / across, 1.0 - place.y() / down};
}

void Canvas::notifyButton(int type, const QMouseEvent &event, bool second) {
    const int button = numberOf(event.button());
    if (button != 0 && onMouse) {
        const QPointF place = fractionOf(event.position());
        const int held = type == EventMouseDown ? heldKey(event.modifiers()) : 0;
        onMouse(type, button + held, place.x(), place.y(), second);
    }
}

void Canvas::mousePressEvent(QMouseEvent *event) {
    notifyButton(EventMouseDown, *event);
}

// A fast second press is a press like any.
void Canvas::mouseDoubleClickEvent(QMouseEvent *event) {
    notifyButton(EventMouseDown, *event, true);
}

void Canvas::mouseReleaseEvent(QMouseEvent *event) {
    notifyButton(EventMouseUp, *event);
}

void Canvas::mouseMoveEvent(QMouseEvent *event) {
    const QPointF place = fractionOf(event->position());
    if (bandOn_) {
        bandTo_ = place;
        update();
    }
    if (onMove) {
        onMove(place.x(), place.y());
    }
}

void Canvas::leaveEvent(QEvent * /*event*/) {
    if (onMove) {
        constexpr double nowhere = std::numeric_limits<double>::quiet_NaN();
        onMove(nowhere, nowhere);
    }
}

void Canvas::wheelEvent(QWheelEvent *event) {
    event->accept();
    wheelTurn_ += event->angleDelta().y();
    const QPointF place = fractionOf(event->position());
    for (; std::abs(wheelTurn_) >= WheelStep;
         wheelTurn_ -= wheelTurn_ > 0 ? WheelStep : -WheelStep) {
        if (onMouse) {
            onMouse(EventMouseDown, wheelTurn_ > 0 ? WheelUp : WheelDown, place.x(), place.y(),
                    false);
        }
    }
}

// ---- Rubber band

QRectF Canvas::band() const {
    const auto pixel = [this](QPointF fraction) {
        return QPointF(fraction.x() * width(), (1.0 - fraction.y()) * height());
    };
    return QRectF(pixel(bandFrom_), pixel(bandTo_)).normalized();
}

void Canvas::startBand(double pageX, double pageY) {
    bandOn_ = true;
    bandFrom_ = bandTo_ = {pageX, pageY};
}

void Canvas::endBand() {
    bandOn_ = false;
    update();
}

} // namespace keldrin
