#pragma once

#include <QTimer>
#include <QWidget>

class QLabel;

namespace keldrin {

/// The part of the status bar that says what has just been done and what lies under the mouse.
/// Where both have no room beside each other the notice is seen alone, so that it is not cut. It
/// goes some time after the user's next move, when it can have been read, and not while nobody is
/// there.
class NoticeLine : public QWidget {
  public:
    explicit NoticeLine(QWidget *parent);

    void setNotice(const QString &text);
    void setPointer(const QString &text);

    int readingTime = 10000; ///< msec from the first move on; long texts have more

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  protected:
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

  private:
    void watchUser(bool on);
    void arrange();

    QLabel *notice_;
    QLabel *pointer_;
    QTimer goes_;
};

} // namespace keldrin
