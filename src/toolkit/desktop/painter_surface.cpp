#include "toolkit/desktop/painter_surface.h"

#include "page/page_colours.h"
#include "page/text_metrics.h"

#include <QFontMetricsF>
#include <QPaintEngine>
#include <QPolygonF>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

namespace keldrin {

namespace {

constexpr double Pixel = 1.0;
constexpr double SamePlace = 0.01; // pixels; a line that leans less than that lies along an axis

QColor colourOf(PageColour colour) {
    return QColor::fromRgb(static_cast<QRgb>(colour));
}

// A control character would begin a line or draw a box.
QString shownText(std::string_view bytes) {
    QString text = QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
    for (QChar &character : text) {
        if (character < u' ') {
            character = u' ';
        }
    }
    return text;
}

bool isUpright(const QPointF &a, const QPointF &b) {
    return std::fabs(a.x() - b.x()) < SamePlace;
}

bool isLevel(const QPointF &a, const QPointF &b) {
    return std::fabs(a.y() - b.y()) < SamePlace;
}

bool isAlongAxes(const QPolygonF &line) {
    for (qsizetype i = 1; i < line.size(); ++i) {
        if (!isUpright(line[i - 1], line[i]) && !isLevel(line[i - 1], line[i])) {
            return false;
        }
    }
    return true;
}

// The pixels whose middle lies in an upright rectangle; nothing for an area of another shape. The
// painter counts in 64ths of a pixel, and so does this.
std::optional<QRect> pixelsOf(const QPolygonF &area) {
    constexpr qsizetype corners = 4;
    if (area.size() != corners) {
        return std::nullopt;
    }
    const bool levelFirst = area[0].y() == area[1].y() && area[1].x() == area[2].x() &&
                            area[2].y() == area[3].y() && area[3].x() == area[0].x();
    const bool uprightFirst = area[0].x() == area[1].x() && area[1].y() == area[2].y() &&
                              area[2].x() == area[3].x() && area[3].y() == area[0].y();
    if (!levelFirst && !uprightFirst) {
        return std::nullopt;
    }
    const auto pixel = [](double place) {
        constexpr double parts = 64.0;
        return static_cast<int>(std::floor(std::round(place * parts) / parts + 0.5));
    };
    const auto [left, right] = std::minmax({pixel(area[0].x()), pixel(area[2].x())});
    const auto [top, bottom] = std::minmax({pixel(area[0].y()), pixel(area[2].y())});
    return QRect(left, top, right - left, bottom - top);
}

// How much smaller letters are set that keep their own shape, where they are wider than the page
// counts on.
double partOfWideFont(QFont font) {
    constexpr std::string_view usual = "Apparent resistivity (ohm-m) 0123456789";
    constexpr int exactPixels = 1000;
    font.setPixelSize(exactPixels);
    const double width = QFontMetricsF(font).horizontalAdvance(shownText(usual)) / exactPixels;
    return std::min(1.0, static_cast<double>(textWidthInEms(usual)) / width);
}

} // namespace

QFont programFont() {
    QFont font(QStringLiteral("Sans Serif"));
    font.setStyleHint(QFont::SansSerif);
    return font;
}

PainterSurface::PainterSurface(QPainter &painter, const QRectF &target)
    : painter_(painter), target_(painter.deviceTransform().mapRect(target)),
      onPixels_(painter.paintEngine()->type() == QPaintEngine::Raster) {
    painter_.save();
    base_ = painter_.deviceTransform().inverted() * painter_.worldTransform();
    painter_.setWorldTransform(base_);
    painter_.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    PainterSurface::begin(PageWidthCm, PageHeightCm);
}

PainterSurface::~PainterSurface() {
    painter_.restore();
}

void PainterSurface::begin(float widthCm, float heightCm) {
    widthCm_ = widthCm;
    heightCm_ = heightCm;
    xPerCm_ = target_.width() / static_cast<double>(widthCm);
    yPerCm_ = target_.height() / static_cast<double>(heightCm);
}

void PainterSurface::clear() {
    smooth(true);
    painter_.fillRect(target_, Qt::white);
}

void PainterSurface::setPen(PageColour colour, float widthPt) {
    constexpr double cmPerPoint = 2.54 / 72.0;
    const double width = static_cast<double>(widthPt) * cmPerPoint * std::min(xPerCm_, yPerCm_);
    const bool isInk = inLog_ && colour == Colour::Black;
    colour_ = isInk ? static_cast<PageColour>(logInk_.rgb() & RGB_MASK) : colour;
    pen_ = std::max(Pixel, std::round(width));
}

void PainterSurface::setLogColours(const QColor &paper, const QColor &ink) {
    logPaper_ = paper;
    logInk_ = ink;
}

void PainterSurface::pageKind(std::string_view kind) {
    inLog_ = kind == "log" && logPaper_.isValid();
    if (inLog_) {
        painter_.fillRect(target_, logPaper_);
        setPen(Colour::Black, 0.0F);
    }
}

QPointF PainterSurface::place(PagePoint point) const {
    return {target_.left() + static_cast<double>(point.x) * target_.width(),
            target_.bottom() - static_cast<double>(point.y) * target_.height()};
}

// Where the middle of a line must stand for its edges to lie between pixels.
double PainterSurface::snapped(double place, double low, double high) const {
    const double half = pen_ / 2.0;
    const double held = std::max(std::min(place, high - half), low + half);
    const bool odd = std::fmod(pen_, 2.0) == 1.0;
    return odd ? std::floor(held) + Pixel / 2.0 : std::round(held);
}

QPointF PainterSurface::snapped(QPointF point) const {
    return {snapped(point.x(), target_.left(), target_.right()),
            snapped(point.y(), target_.top(), target_.bottom())};
}

// Curves stay where they are; of a line along an axis, only that coordinate moves which all of
// its points share.
QPolygonF PainterSurface::path(std::span<const PagePoint> points, bool closed) const {
    QPolygonF line;
    line.reserve(static_cast<qsizetype>(points.size()) + 1);
    for (const PagePoint &point : points) {
        line.push_back(place(point));
    }
    if (closed && !line.isEmpty()) {
        line.push_back(line.front());
    }
    const bool alongAxes = isAlongAxes(line);
    QPolygonF drawn = line;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const QPointF &previous = line[std::max<qsizetype>(i - 1, 0)];
        const QPointF &next = line[std::min(i + 1, line.size() - 1)];
        const bool upright = (i > 0 && isUpright(previous, line[i])) ||
                             (i + 1 < line.size() && isUpright(line[i], next));
        const bool level = (i > 0 && isLevel(previous, line[i])) ||
                           (i + 1 < line.size() && isLevel(line[i], next));
        const QPointF moved = snapped(line[i]);
        drawn[i].setX(alongAxes || upright ? moved.x() : line[i].x());
        drawn[i].setY(alongAxes || level ? moved.y() : line[i].y());
    }
    return drawn;
}

// A marker is laid about its centre, at the same scale in both directions, so that a plus has
// equal arms whatever the shape of the page.
QPolygonF PainterSurface::markerPath(std::span<const PagePoint> points) const {
    const double perCm = std::sqrt(xPerCm_ * yPerCm_);
    const QPointF centre = snapped(place(centre_));
    QPolygonF line;
    for (const PagePoint &point : points) {
        const double right = static_cast<double>((point.x - centre_.x) * widthCm_) * perCm;
        const double up = static_cast<double>((point.y - centre_.y) * heightCm_) * perCm;
        line.push_back(centre + QPointF(std::round(right), -std::round(up)));
    }
    return line;
}

// Lines along the axes are drawn one by one: square ends fill their corners, joins would not.
void PainterSurface::drawLine(const QPolygonF &line) {
    const bool alongAxes = isAlongAxes(line);
    smooth(true);
    painter_.setPen(QPen(colourOf(colour_), pen_, Qt::SolidLine,
                         alongAxes ? Qt::SquareCap : Qt::RoundCap, Qt::RoundJoin));
    painter_.setBrush(Qt::NoBrush);
    if (!alongAxes) {
        painter_.drawPolyline(line);
        return;
    }
    for (qsizetype i = 1; i < line.size(); ++i) {
        painter_.drawLine(line[i - 1], line[i]);
    }
}

void PainterSurface::polyline(std::span<const PagePoint> points) {
    if (points.empty()) {
        return;
    }
    drawLine(marker_ != 0 ? markerPath(points) : path(points, false));
}

void PainterSurface::drawRound(std::span<const PagePoint> outline) {
    double diameter = 0.0; // cm, across the outline
    for (const PagePoint &point : outline) {
        const auto right = static_cast<double>((point.x - centre_.x) * widthCm_);
        const auto up = static_cast<double>((point.y - centre_.y) * heightCm_);
        diameter = std::max(diameter, 2.0 * std::hypot(right, up));
    }
    const double radius = std::max(Pixel, diameter / 2.0 * std::sqrt(xPerCm_ * yPerCm_));
    painter_.drawEllipse(snapped(place(centre_)), radius, radius);
}

void PainterSurface::polygon(std::span<const PagePoint> points, bool filled) {
    if (points.empty()) {
        return;
    }
    smooth(true);
    if (marker_ == RingMarker) {
        painter_.setPen(QPen(colourOf(colour_), pen_));
        painter_.setBrush(Qt::NoBrush);
        drawRound(points);
        return;
    }
    if (!filled) {
        drawLine(path(points, true));
        return;
    }
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(colourOf(colour_));
    if (marker_ == DotMarker) {
        drawRound(points);
    } else {
        QPolygonF corners;
        for (const PagePoint &point : points) {
            corners.push_back(place(point));
        }
        painter_.drawPolygon(corners);
    }
}

// Pixels belong to one area each. Where there are none, as in a PDF, readers smooth the edges of
// each area, so a hairline of its colour covers the seam.
void PainterSurface::fill(std::span<const PagePoint> corners, PageColour colour) {
    QPolygonF area;
    area.reserve(static_cast<qsizetype>(corners.size()));
    for (const PagePoint &corner : corners) {
        area.push_back(place(corner));
    }
    smooth(false);
    if (!onPixels_) {
        painter_.setPen(QPen(colourOf(colour), Pixel));
    } else if (const std::optional<QRect> pixels = pixelsOf(area)) {
        if (!pixels->isEmpty()) {
            painter_.fillRect(*pixels, colourOf(colour));
        }
        return;
    } else {
        painter_.setPen(Qt::NoPen);
    }
    painter_.setBrush(colourOf(colour));
    painter_.drawPolygon(area);
}

// Lines and letters are smooth, areas are not. It is switched only when the other kind follows: a
// section has very many areas.
void PainterSurface::smooth(bool on) {
    if (on != smooth_) {
        painter_.setRenderHint(QPainter::Antialiasing, on);
        smooth_ = on;
    }
}

void PainterSurface::text(PagePoint at, std::string_view string, float charWidth, float charHeight,
                          float degrees) {
    smooth(true);
    const QString shown = shownText(string);
    const double angle = static_cast<double>(degrees) * std::numbers::pi / 180.0;
    const double right = xPerCm_ * std::cos(angle);
    const double up = yPerCm_ * std::sin(angle);
    const double perCm = std::hypot(right, up); // along the text
    const double acrossPerCm = xPerCm_ * yPerCm_ / perCm;
    const double emWidth = static_cast<double>(EmPerCharacterWidth * charWidth * widthCm_) * perCm;
    const double emHeight = static_cast<double>(charHeight * heightCm_) * acrossPerCm;

    QFont font = programFont();
    font.setHintingPreference(QFont::PreferVerticalHinting);
    font.setStyleStrategy(QFont::PreferNoShaping); // a ligature is not found by its letters
    const double size =
        std::min(emWidth, emHeight) * (naturalLetters_ ? partOfWideFont(font) : 1.0);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(size))));
    const double told = static_cast<double>(textWidthInEms(string)) * emWidth;
    const double natural = QFontMetricsF(font, painter_.device()).horizontalAdvance(shown);
    const double room = naturalLetters_ ? told - natural : std::max(0.0, told - natural);

    const QPointF start = place(at);
    painter_.translate(std::round(start.x()), std::round(start.y()));
    painter_.rotate(-std::atan2(up, right) * 180.0 / std::numbers::pi);
    // Smaller letters are centred vertically on their line.
    const double lower = static_cast<double>(CapitalHeight) * (emHeight - font.pixelSize());
    painter_.translate(anchor_ * room, -std::round(lower / 2.0));
    painter_.scale(natural > told && !naturalLetters_ ? told / natural : 1.0, 1.0);
    painter_.setPen(colourOf(colour_));
    painter_.setFont(font);
    painter_.drawText(QPointF(0.0, 0.0), shown);
    painter_.setWorldTransform(base_);
    anchor_ = 0.0;
}

void PainterSurface::beginMarker(int marker, PagePoint centre) {
    marker_ = marker;
    centre_ = centre;
}

} // namespace keldrin
