#pragma once

#include <QPointer>
#include <QWidget>

namespace keldrin {

class PanelFrame;

/// The middle of the root window: the page, and a panel that is docked beside it or lies upon it.
/// Without a panel the page fills the area; with one it has the shape of its paper, as large as the
/// room beside the panel allows.
class PageArea : public QWidget {
  public:
    /// page  becomes a child, and has the keys
    explicit PageArea(QWidget *page, QWidget *parent = nullptr);

    [[nodiscard]] QWidget &page() const { return *page_; }

    /// Takes a panel, a child of this widget, in place of an earlier one.
    void takePanel(PanelFrame &panel);
    void releasePanel(const PanelFrame &panel);

    /// Gives panel and page their places, at once.
    void layOut();

  protected:
    void resizeEvent(QResizeEvent *event) override;

  private:
    QWidget *page_;
    QPointer<PanelFrame> panel_;
};

} // namespace keldrin
