#include "toolkit/desktop/widgets/notice_line.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>

#include <algorithm>

namespace keldrin {

namespace {

QLabel *makeLabel(QWidget *parent) {
    auto *label = new QLabel(parent);
    const int margin = label->fontMetrics().horizontalAdvance('x');
    label->setTextFormat(Qt::PlainText);
    label->setContentsMargins(margin, 0, margin, 0);
    label->hide();
    return label;
}

bool isMove(QEvent::Type type) {
    return type == QEvent::KeyPress || type == QEvent::MouseMove ||
           type == QEvent::MouseButtonPress || type == QEvent::Wheel;
}

} // namespace

NoticeLine::NoticeLine(QWidget *parent)
    : QWidget(parent), notice_(makeLabel(this)), pointer_(makeLabel(this)) {
    setObjectName("notices");
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    goes_.setSingleShot(true);
    connect(&goes_, &QTimer::timeout, this, [this] { setNotice({}); });
}

void NoticeLine::watchUser(bool on) {
    qApp->removeEventFilter(this);
    if (on) {
        qApp->installEventFilter(this);
    }
}

void NoticeLine::setNotice(const QString &text) {
    notice_->setText(text);
    notice_->setToolTip(text);
    goes_.stop();
    watchUser(!text.isEmpty());
    arrange();
}

void NoticeLine::setPointer(const QString &text) {
    pointer_->setText(text);
    pointer_->setToolTip(text);
    arrange();
}

bool NoticeLine::eventFilter(QObject *watched, QEvent *event) {
    if (isMove(event->type())) {
        constexpr int perLetter = 60; // msec
        watchUser(false);
        const int letters = static_cast<int>(notice_->text().size());
        goes_.start(std::max(readingTime + perLetter * letters, 0));
    }
    return QWidget::eventFilter(watched, event);
}

QSize NoticeLine::sizeHint() const {
    return {notice_->sizeHint().width() + pointer_->sizeHint().width(),
            std::max(notice_->sizeHint().height(), pointer_->sizeHint().height())};
}

QSize NoticeLine::minimumSizeHint() const {
    return {0, sizeHint().height()};
}

void NoticeLine::arrange() {
    const bool told = !notice_->text().isEmpty();
    const int noticeWidth = told ? notice_->sizeHint().width() : 0;
    const bool both = noticeWidth + pointer_->sizeHint().width() <= width();
    notice_->setVisible(told);
    pointer_->setVisible(!pointer_->text().isEmpty() && (both || !told));
    notice_->setGeometry(0, 0, std::min(noticeWidth, width()), height());
    pointer_->setGeometry(noticeWidth, 0, std::max(width() - noticeWidth, 0), height());
}

void NoticeLine::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    arrange();
}

} // namespace keldrin
