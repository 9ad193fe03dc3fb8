#pragma once

#include <QFrame>
#include <QPoint>

#include <functional>

class QLabel;
class QToolButton;
class QVBoxLayout;

namespace keldrin {

/// Frame and title bar of a panel: a widget that lies upon another one like a window, also where
/// the window system does not let programs place their windows. It is moved by its title bar, stays
/// inside, and keeps its distance from the nearer edges when the widget below it is resized. Rolled
/// up, it shows its title bar only and what it covered.
class PanelFrame : public QFrame {
  public:
    /// Fills `panel`, a child of the widget that it lies upon.
    explicit PanelFrame(QWidget *panel);

    void setCaption(const QString &caption);
    /// Where the content goes, below the title bar.
    [[nodiscard]] QVBoxLayout &content() { return *content_; }
    /// Moves the panel's corner to a place of the widget below, as near as can be.
    void moveTo(QPoint corner);
    /// Gives the panel the size that it wants.
    void fit();

    std::function<void()> onClose; ///< the close box

    void rollUp(bool rolledUp);

  protected:
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

  private:
    QWidget *makeTitle();
    QToolButton *addTitleButton(const char *name, std::function<void()> action);
    void colourTitle();
    void showRolled();
    bool dragTitle(QEvent &event);
    void keepDistance();

    QWidget *panel_;
    QWidget *title_ = nullptr;
    QLabel *caption_ = nullptr;
    QToolButton *roll_ = nullptr;
    QToolButton *close_ = nullptr;
    QWidget *body_ = nullptr;
    QVBoxLayout *content_ = nullptr;
    bool rolledUp_ = false;
    QPoint grabbed_; ///< place of the panel under the mouse while it is dragged
    bool dragging_ = false;
    QPoint fromTopLeft_; ///< distances of the panel's edges from those of the widget below
    QPoint fromBottomRight_;
};

} // namespace keldrin
