#pragma once

#include "page/surfaces/surface.h"

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QRectF>
#include <QTransform>

namespace keldrin {

/// The one letter of the program: the system's own sans-serif family.
QFont programFont();

/// Draws a page with a painter: on the window, in a picture, in a PDF, on a printer.
///
/// The page fills the target, whatever its shape. Places are stretched with it, letters and markers
/// are not: they keep their natural shape, within the extent that the page gives them. On pixels,
/// lines are at least one pixel wide, and those along an axis cover whole pixels.
class PainterSurface : public Surface {
  public:
    /// painter  open, and left as it was when the surface goes; nobody else draws with it meanwhile
    /// target   in the painter's units
    PainterSurface(QPainter &painter, const QRectF &target);
    ~PainterSurface() override;

    void begin(float widthCm, float heightCm) override; ///< without it the page is 24 by 18 cm
    bool end() override { return true; }
    void clear() override;
    void setPen(PageColour colour, float widthPt) override;
    void polyline(std::span<const PagePoint> points) override;
    void polygon(std::span<const PagePoint> points, bool filled) override;
    void text(PagePoint at, std::string_view string, float charWidth, float charHeight,
              float degrees) override;
    void flush() override {}
    void fill(std::span<const PagePoint> corners, PageColour colour) override;
    void textAnchor(float part) override { anchor_ = static_cast<double>(part); }
    void naturalLetters(bool on) override { naturalLetters_ = on; }
    void beginMarker(int marker, PagePoint centre) override;
    void endMarker() override { marker_ = 0; }
    void pageKind(std::string_view kind) override;

    /// Colours of a page that is a log, in place of black on white.
    void setLogColours(const QColor &paper, const QColor &ink);

  private:
    [[nodiscard]] QPointF place(PagePoint point) const;
    [[nodiscard]] double snapped(double place, double low, double high) const;
    [[nodiscard]] QPointF snapped(QPointF point) const;
    [[nodiscard]] QPolygonF path(std::span<const PagePoint> points, bool closed) const;
    [[nodiscard]] QPolygonF markerPath(std::span<const PagePoint> points) const;
    void drawRound(std::span<const PagePoint> outline);
    void drawLine(const QPolygonF &line);
    void smooth(bool on);

    // All of it in device pixels: the painter's units are made so.
    QPainter &painter_;
    QTransform base_;
    QRectF target_;
    bool onPixels_;
    bool smooth_ = true; ///< as the painter draws now
    float widthCm_ = PageWidthCm;
    float heightCm_ = PageHeightCm;
    double xPerCm_ = 1.0;
    double yPerCm_ = 1.0;
    PageColour colour_ = 0;
    double pen_ = 1.0; ///< whole pixels
    double anchor_ = 0.0;
    bool naturalLetters_ = false;
    QColor logPaper_; ///< not valid: white
    QColor logInk_;
    bool inLog_ = false; ///< the page is a log with colours of its own
    int marker_ = 0;     ///< being drawn; 0 none
    PagePoint centre_;   ///< of the marker
};

} // namespace keldrin
