#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QSlider>

namespace keldrin {

/// An edit field as wide as a number of digits in the font in force.
class FieldEdit : public QLineEdit {
  public:
    FieldEdit(int columns, QWidget *parent) : QLineEdit(parent), columns_(columns) {}

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

    enum class Look {
        Usual,
        Unreadable, ///< marked in red
        Fixed,      ///< a text to be read only
    };
    /// Colours the field, in the palette in force.
    void setLook(Look look);

  protected:
    void changeEvent(QEvent *event) override;

  private:
    void colour();

    int columns_ = 0;
    Look look_ = Look::Usual;
    bool colouring_ = false;
};

/// A list that drops down, as wide as the widest of its entries. Only what has the focus turns with
/// the wheel.
class DropList : public QComboBox {
  public:
    explicit DropList(QWidget *parent) : QComboBox(parent) {}

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void wheelEvent(QWheelEvent *event) override;
};

/// A list that is as high as its entries, up to a number of rows, and as wide as the widest.
class OpenList : public QListWidget {
  public:
    OpenList(int rows, QWidget *parent) : QListWidget(parent), rows_(rows) {}

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

  private:
    int rows_ = 0;
};

/// A bar whose wheel turns as that of the page: up goes back.
class StationBar : public QSlider {
  public:
    explicit StationBar(QWidget *parent) : QSlider(Qt::Horizontal, parent) {}

  protected:
    void wheelEvent(QWheelEvent *event) override;

  private:
    int turned_ = 0; ///< eighths of a degree that make no whole step yet
};

} // namespace keldrin
