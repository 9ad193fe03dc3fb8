#include "toolkit/desktop/widgets/panel_buttons.h"

#include <QPainter>
#include <QPolygonF>

#include <algorithm>

namespace keldrin {

namespace {

// The middle third of a button, on which signs are drawn.
constexpr double Reach = 4.0; // pixels from the middle

QPolygonF arrow(TitleButton::Sign sign) {
    const bool level = sign == TitleButton::Sign::Left || sign == TitleButton::Sign::Right;
    const bool forward = sign == TitleButton::Sign::Right || sign == TitleButton::Sign::Down;
    const double tip = forward ? Reach / 2.0 : -Reach / 2.0;
    QPolygonF line;
    for (const double across : {-Reach, 0.0, Reach}) {
        const double along = across == 0.0 ? tip : -tip;
        line << (level ? QPointF(along, across) : QPointF(across, along));
    }
    return line;
}

void drawSign(QPainter &painter, TitleButton::Sign sign) {
    const QRectF box(-Reach, -Reach, 2.0 * Reach, 2.0 * Reach);
    switch (sign) {
    case TitleButton::Sign::Cross:
        painter.drawLine(box.topLeft(), box.bottomRight());
        painter.drawLine(box.bottomLeft(), box.topRight());
        break;
    case TitleButton::Sign::Dock: // a window with a bar at its side
        painter.drawRect(box);
        painter.fillRect(box.adjusted(Reach, 0.0, 0.0, 0.0), painter.pen().color());
        break;
    case TitleButton::Sign::Float: // a window upon another
        painter.drawRect(box.adjusted(0.0, Reach / 2.0, -Reach / 2.0, 0.0));
        painter.drawPolyline(QPolygonF(
            {QPointF(-Reach / 2.0, -Reach), QPointF(Reach, -Reach), QPointF(Reach, Reach / 2.0)}));
        break;
    default:
        painter.drawPolyline(arrow(sign));
    }
}

} // namespace

TitleButton::TitleButton(QWidget *parent) : QAbstractButton(parent) {
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::ArrowCursor);
}

void TitleButton::setSign(Sign sign, const QString &words) {
    sign_ = sign;
    setToolTip(words);
    setAccessibleName(words);
    update();
}

QSize TitleButton::sizeHint() const {
    const int side = std::max(fontMetrics().height(), static_cast<int>(4.0 * Reach));
    return {side, side};
}

void TitleButton::paintEvent(QPaintEvent * /*event*/) {
    QPainter painter(this);
    const QPalette &colours = palette();
    const bool turned = underMouse() || isDown();
    const QColor ground = colours.color(turned ? QPalette::HighlightedText : QPalette::Highlight);
    const QColor sign = colours.color(turned ? QPalette::Highlight : QPalette::HighlightedText);
    painter.fillRect(rect(), ground);
    painter.setRenderHint(QPainter::Antialiasing);
    constexpr double pen = 1.6;
    painter.setPen(QPen(sign, pen));
    const int side = std::min(width(), height()); // of a strip: its head
    painter.translate(side / 2.0, side / 2.0);
    drawSign(painter, sign_);
}

void TitleButton::enterEvent(QEnterEvent *event) {
    QAbstractButton::enterEvent(event);
    update();
}

void TitleButton::leaveEvent(QEvent *event) {
    QAbstractButton::leaveEvent(event);
    update();
}

// ---- The strip

PanelStrip::PanelStrip(QWidget *parent) : TitleButton(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
}

void PanelStrip::setCaption(const QString &caption) {
    caption_ = caption;
    update();
}

void PanelStrip::paintEvent(QPaintEvent *event) {
    TitleButton::paintEvent(event);
    QPainter painter(this);
    const bool turned = underMouse() || isDown();
    painter.setPen(palette().color(turned ? QPalette::Highlight : QPalette::HighlightedText));
    painter.translate(width(), 0.0);
    painter.rotate(90.0); // read from above
    painter.drawText(QRect(2 * width(), 0, height() - 2 * width(), width()),
                     Qt::AlignLeft | Qt::AlignVCenter, caption_);
}

} // namespace keldrin
