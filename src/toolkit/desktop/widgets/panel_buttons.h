#pragma once

#include <QAbstractButton>

namespace keldrin {

/// A small button of a panel's title bar. Under the mouse its sign and its ground change colours,
/// so that it is as readable as the caption in every palette.
class TitleButton : public QAbstractButton {
  public:
    enum class Sign { Up, Down, Left, Right, Cross, Dock, Float };

    explicit TitleButton(QWidget *parent);

    /// words  for those who point at it or cannot see it
    void setSign(Sign sign, const QString &words);

    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;

  private:
    Sign sign_ = Sign::Cross;
};

/// All that is seen of a docked panel while it is rolled up: a strip as high as the window, which
/// is a button itself.
class PanelStrip : public TitleButton {
  public:
    explicit PanelStrip(QWidget *parent);

    void setCaption(const QString &caption);

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    QString caption_;
};

} // namespace keldrin
