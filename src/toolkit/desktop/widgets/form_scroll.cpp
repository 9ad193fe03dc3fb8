#include "toolkit/desktop/widgets/form_scroll.h"

#include <QEvent>

namespace keldrin {

FormScroll::FormScroll(QWidget *form, QWidget *parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setWidget(form);
}

QSize FormScroll::sizeHint() const {
    return widget()->sizeHint();
}

QSize FormScroll::minimumSizeHint() const {
    constexpr int leastLines = 8;
    constexpr int leastColumns = 30;
    const QSize least(leastColumns * fontMetrics().averageCharWidth(),
                      leastLines * fontMetrics().lineSpacing());
    return least.boundedTo(widget()->minimumSizeHint());
}

// The form wants another size now, and so does this.
bool FormScroll::eventFilter(QObject *watched, QEvent *event) {
    const bool done = QScrollArea::eventFilter(watched, event);
    if (watched == widget() && event->type() == QEvent::LayoutRequest) {
        updateGeometry();
    }
    return done;
}

} // namespace keldrin
