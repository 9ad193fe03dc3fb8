#pragma once

#include <QPointer>
#include <QWidget>

#include <vector>

namespace keldrin {

class PanelFrame;

/// The middle of the root window: the page, and panels that are docked beside it or lie upon it.
/// Without a panel the page fills the area; with one it has the shape of its paper, as large as the
/// room beside the panels allows.
///
/// Panels of one side stand below each other, and what is rolled up is a strip outside of them. The
/// one that came last has its height before the others; what holds a table takes what is left.
class PageArea : public QWidget {
  public:
    /// page  becomes a child, and has the keys
    explicit PageArea(QWidget *page, QWidget *parent = nullptr);

    [[nodiscard]] QWidget &page() const { return *page_; }
    /// What the docked panels have left to the page.
    [[nodiscard]] QRect pageRoom() const { return pageRoom_; }

    /// Takes a panel, a child of this widget.
    void takePanel(PanelFrame &panel);
    void releasePanel(const PanelFrame &panel);

    /// Gives panels and page their places, at once.
    void layOut();

  protected:
    void resizeEvent(QResizeEvent *event) override;

  private:
    QWidget *page_;
    QRect pageRoom_;
    std::vector<QPointer<PanelFrame>> panels_; ///< in the order in which they came
};

} // namespace keldrin
