#pragma once

#include <QScrollArea>

namespace keldrin {

/// Shows a form whole, or with scroll bars where the screen is too small for it.
class FormScroll : public QScrollArea {
  public:
    FormScroll(QWidget *form, QWidget *parent);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace keldrin
