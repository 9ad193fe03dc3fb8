#pragma once

#include "page/surfaces/page_list.h"
#include "toolkit/toolkit.h"

#include <QImage>
#include <QRectF>
#include <QWidget>

#include <cstdint>

#include <functional>

namespace keldrin {

/// The page of the root window. It repaints from the list of what was drawn, at any size and pixel
/// ratio, without asking the program, and reports where the mouse is in fractions of the page. What
/// was painted is kept as a picture for as long as it is the same.
class Canvas : public QWidget {
  public:
    explicit Canvas(QWidget *parent);

    /// What is drawn on. The window follows when it is asked to show it.
    PageList &page() { return page_; }
    /// Asks for a repaint if the page has changed since the last one.
    void showPage();

    /// Called when mouse buttons (1 left, 2 middle, 3 right, 4 and 5 the wheel) go down and up.
    /// `second` is the second press of a double click.
    std::function<void(int type, int button, double pageX, double pageY, bool second)> onMouse;
    /// Called with the mouse's place, and when it leaves with a place that is no number.
    std::function<void(double pageX, double pageY)> onMove;
    std::function<void()> onResize;

    /// The rectangle that follows the mouse, from a corner in fractions of the page.
    void startBand(double pageX, double pageY);
    void endBand();

  protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

  private:
    /// What the picture was made of.
    struct Painted {
        std::uint64_t changes = 0; ///< of the page
        QRectF pixels;             ///< that the canvas covers on its window
        qint64 palette = 0;

        bool operator==(const Painted &) const = default;
    };

    void drawPicture(const QRectF &pixels, double pixelRatio);
    [[nodiscard]] QPointF fractionOf(QPointF place) const;
    void notifyButton(int type, const QMouseEvent &event, bool second = false);
    [[nodiscard]] QRectF band() const;

    PageList page_;
    Painted painted_;
    QImage picture_;
    bool bandOn_ = false;
    QPointF bandFrom_; ///< fractions of the page, y upward
    QPointF bandTo_;
    int wheelTurn_ = 0; ///< eighths of a degree that make no whole step yet
};

} // namespace keldrin
