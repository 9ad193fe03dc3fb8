#include "desktop/dialog_values.h"
#include "support/dialog_tables.h"
#include "toolkit/desktop/dialog_window.h"
#include "toolkit/desktop/page_area.h"
#include "toolkit/toolkit.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QProgressBar>
#include <QSlider>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <tuple>

namespace keldrin {
namespace {

/// Every dialog with the values of a survey, in fonts of several sizes.
class DialogLayout : public testing::TestWithParam<std::tuple<int, int>> {
  protected:
    DialogLayout() {
        QFont font = usual_;
        font.setPointSize(std::get<1>(GetParam()));
        QApplication::setFont(font);
        root_ = std::make_unique<QMainWindow>();
        root_->setCentralWidget(new PageArea(new QWidget));
        root_->resize(780, 780);
        root_->show();
        dialog_ = makeDialog(dialogTable(std::get<0>(GetParam())));
        test::fillDialog(dialog_);
        dialog_.mode = DialogModeless;
        window_ = std::make_unique<DialogWindow>(dialog_, root_.get());
        window_->showAt({});
        QTest::qWait(1); // what the layout asks for comes with the next events
    }
    ~DialogLayout() override { QApplication::setFont(usual_); }

    // What is drawn: the widgets that hold no others.
    [[nodiscard]] QList<QWidget *> leaves() const {
        QList<QWidget *> all;
        for (auto *widget : window_->findChildren<QWidget *>()) {
            const bool shown = qobject_cast<QLabel *>(widget) != nullptr ||
                               qobject_cast<QAbstractButton *>(widget) != nullptr ||
                               qobject_cast<QLineEdit *>(widget) != nullptr ||
                               qobject_cast<QComboBox *>(widget) != nullptr ||
                               qobject_cast<QListWidget *>(widget) != nullptr ||
                               qobject_cast<QProgressBar *>(widget) != nullptr ||
                               qobject_cast<QSlider *>(widget) != nullptr;
            if (shown && widget->isVisibleTo(window_.get())) {
                all << widget;
            }
        }
        return all;
    }

    [[nodiscard]] static std::string nameOf(const QWidget &widget) {
        const auto *label = qobject_cast<const QLabel *>(&widget);
        return (label != nullptr ? label->text() : widget.objectName()).toStdString();
    }

    QFont usual_ = QApplication::font();
    std::unique_ptr<QMainWindow> root_;
    DialogModel dialog_;
    std::unique_ptr<DialogWindow> window_;
};

TEST_P(DialogLayout, EveryControlIsThereAndTabsFollowTheTable) {
    QList<QWidget *> wanted;
    for (const ControlState &control : dialog_.controls) {
        QWidget *widget = window_->widgetOf(control.id);
        ASSERT_NE(widget, nullptr) << control.id;
        EXPECT_TRUE(widget->isVisibleTo(window_.get())) << control.id;
        if (window_->listedAction(control.id) != nullptr) {
            continue; // in the list of the button before it
        }
        if ((widget->focusPolicy() & Qt::TabFocus) != 0 && widget->isEnabled()) {
            wanted << widget;
        }
    }
    ASSERT_FALSE(wanted.isEmpty());
    QWidget *at = wanted.front();
    for (QWidget *next : wanted) {
        while (at != next && (at == nullptr || !wanted.contains(at))) {
            at = at->nextInFocusChain();
        }
        EXPECT_EQ(at, next) << nameOf(*next);
        at = at->nextInFocusChain();
    }
}

TEST_P(DialogLayout, NothingIsCutOffAndNothingOverlaps) {
    const QList<QWidget *> all = leaves();
    ASSERT_FALSE(all.isEmpty());
    const auto placeOf = [&](const QWidget *widget) {
        const QRect seen = widget->visibleRegion().boundingRect(); // it may have to be scrolled
        return seen.translated(widget->mapTo(window_.get(), QPoint(0, 0)));
    };
    for (const QWidget *widget : all) {
        const auto *label = qobject_cast<const QLabel *>(widget);
        const bool wrapped = label != nullptr && label->wordWrap();
        const QSize least = widget->minimumSizeHint();
        const int height = wrapped ? label->heightForWidth(label->width()) : least.height();
        EXPECT_GE(widget->height(), height) << nameOf(*widget);
        EXPECT_TRUE(wrapped || widget->width() >= least.width()) << nameOf(*widget);
        EXPECT_TRUE(widget->parentWidget()->rect().contains(widget->geometry())) << nameOf(*widget);
        for (const QWidget *other : all) {
            EXPECT_TRUE(other == widget || other->isAncestorOf(widget) ||
                        widget->isAncestorOf(other) || !placeOf(widget).intersects(placeOf(other)))
                << nameOf(*widget) << " and " << nameOf(*other);
        }
    }
    for (const auto *frame : window_->findChildren<QGroupBox *>()) {
        EXPECT_FALSE(frame->title().isEmpty());
        EXPECT_GE(frame->width(), frame->minimumSizeHint().width()) << frame->title().toStdString();
    }
    const QSize most = window_->screen()->availableGeometry().size();
    EXPECT_LE(window_->width(), most.width());
    EXPECT_LE(window_->height(), most.height());
    EXPECT_GE(dialog_.size.width, window_->width());
    EXPECT_TRUE(window_->isPanel() || dialog_.size.height >= window_->height());
}

// Letters after "&" that stand for themselves are written twice.
QChar mnemonicOf(QString text) {
    text.replace("&&", "");
    const qsizetype mark = text.indexOf('&');
    return mark >= 0 && mark + 1 < text.size() ? text[mark + 1].toUpper() : QChar();
}

TEST_P(DialogLayout, LettersAreUniqueAndFieldsHaveNames) {
    std::set<QChar> letters;
    const auto take = [&](const QString &text) {
        const QChar letter = mnemonicOf(text);
        EXPECT_TRUE(letter.isNull() || letters.insert(letter).second) << text.toStdString();
    };
    for (QWidget *widget : leaves()) {
        if (const auto *label = qobject_cast<QLabel *>(widget)) {
            take(label->buddy() != nullptr ? label->text() : QString());
        } else if (const auto *button = qobject_cast<QAbstractButton *>(widget)) {
            take(button->text());
        }
    }
    EXPECT_GE(letters.size(), 1U);
    for (const ControlState &control : dialog_.controls) {
        const bool field = isNumberField(control.kind) || control.kind == ControlKind::Text ||
                           control.kind == ControlKind::List ||
                           control.kind == ControlKind::Trackbar;
        EXPECT_TRUE(!field || !window_->widgetOf(control.id)->accessibleName().isEmpty())
            << control.id;
        const ControlSpec *spec = nullptr;
        for (const ControlSpec &told : dialog_.spec->controls) {
            spec = told.id == control.id ? &told : spec;
        }
        if (spec != nullptr && spec->label.find('&') != std::string_view::npos) {
            const auto *button = qobject_cast<QAbstractButton *>(window_->widgetOf(control.id));
            ASSERT_NE(button, nullptr);
            EXPECT_EQ(button->text().toStdString(), spec->label) << "the letter of the table stays";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(AllDialogs, DialogLayout,
                         testing::Combine(testing::Values(101, 102, 103, 104, 106, 108, 110, 121,
                                                          122, 150),
                                          testing::Values(8, 11, 16)));

} // namespace
} // namespace keldrin
