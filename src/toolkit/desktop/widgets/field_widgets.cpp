#include "toolkit/desktop/widgets/field_widgets.h"

#include "base/real.h"

#include <QEvent>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QWheelEvent>

#include <algorithm>

namespace keldrin {

QSize FieldEdit::sizeHint() const {
    constexpr int ownCount = 17; // columns of the usual edit field, in the width of an x
    const QFontMetrics metrics(font());
    const int added = metrics.horizontalAdvance(QString(columns_, '0')) -
                      ownCount * metrics.horizontalAdvance('x');
    return QLineEdit::sizeHint() + QSize(added, 0);
}

// Numbers are always seen whole; a long text can be narrower.
QSize FieldEdit::minimumSizeHint() const {
    constexpr int leastColumns = 12;
    const int spare = std::max(columns_ - leastColumns, 0);
    return sizeHint() - QSize(fontMetrics().horizontalAdvance(QString(spare, '0')), 0);
}

void FieldEdit::setLook(Look look) {
    if (look_ != look) {
        look_ = look;
        setReadOnly(look == Look::Fixed);
        setFocusPolicy(look == Look::Fixed ? Qt::ClickFocus : Qt::StrongFocus);
        colour();
    }
}

// Red is mixed into the ground, so that the text stays as legible as it was, light or dark.
void FieldEdit::colour() {
    constexpr double share = 0.35;
    constexpr QRgb red = 0xE02020;
    const auto mixed = [](int ground, int added) {
        return static_cast<int>((1.0 - share) * ground + share * added);
    };
    colouring_ = true;
    setPalette(QPalette());
    QPalette own = palette();
    const QColor base = own.color(QPalette::Base);
    if (look_ == Look::Unreadable) {
        own.setColor(QPalette::Base,
                     QColor(mixed(base.red(), qRed(red)), mixed(base.green(), qGreen(red)),
                            mixed(base.blue(), qBlue(red))));
        setPalette(own);
    } else if (look_ == Look::Fixed) {
        own.setColor(QPalette::Base, own.color(QPalette::Window));
        setPalette(own);
    }
    colouring_ = false;
}

void FieldEdit::changeEvent(QEvent *event) {
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && look_ != Look::Usual && !colouring_) {
        colour();
    }
}

QSize DropList::sizeHint() const {
    constexpr int leastColumns = 6;
    constexpr int air = 2; // pixels above and below the text
    const QFontMetrics metrics(font());
    int width = metrics.horizontalAdvance(QString(leastColumns, 'x'));
    for (int i = 0; i < count(); ++i) {
        width = std::max(width, metrics.horizontalAdvance(itemText(i)));
    }
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QSize content(width, metrics.height() + air);
    return style()->sizeFromContents(QStyle::CT_ComboBox, &option, content, this);
}

void DropList::wheelEvent(QWheelEvent *event) {
    if (hasFocus()) {
        QComboBox::wheelEvent(event);
    } else {
        event->ignore(); // it scrolls what the list stands in
    }
}

QSize OpenList::sizeHint() const {
    constexpr int fewest = 3;
    const int row = std::max(sizeHintForRow(0), fontMetrics().height());
    const int margins = 2 * frameWidth();
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    return {std::max(sizeHintForColumn(0), 0) + bar + margins,
            limited(count(), fewest, std::max(rows_, fewest)) * row + margins};
}

void StationBar::wheelEvent(QWheelEvent *event) {
    constexpr int step = 120; // eighths of a degree
    turned_ += event->angleDelta().y();
    setValue(value() - turned_ / step);
    turned_ %= step;
    event->accept();
}

} // namespace keldrin
