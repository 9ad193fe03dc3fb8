#include "toolkit/desktop/widgets/message_list.h"

#include "toolkit/desktop/widgets/message_model.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace keldrin {

namespace {

constexpr QSize FirstSize(760, 480);

QTreeView *makeView(QAbstractItemModel *model, QWidget *parent) {
    auto *view = new QTreeView(parent);
    view->setModel(model);
    view->setRootIsDecorated(false);
    view->setAlternatingRowColors(true);
    view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    const QFontMetrics metrics = view->fontMetrics();
    const int margin = 3 * metrics.horizontalAdvance('x');
    view->setColumnWidth(MessageModel::KindColumn, metrics.horizontalAdvance("warning") + margin);
    view->setColumnWidth(MessageModel::FileColumn,
                         metrics.horizontalAdvance("survey_line_12.avg") + margin);
    view->setColumnWidth(MessageModel::RowColumn, metrics.horizontalAdvance("000000") + margin);
    return view;
}

bool isAtEnd(const QTreeView &view) {
    const QScrollBar &bar = *view.verticalScrollBar();
    return bar.value() >= bar.maximum();
}

} // namespace

MessageList::MessageList(QWidget *parent) : QDialog(parent) {
    setObjectName("messages");
    setWindowTitle("Log and messages");
    resize(FirstSize);
    model_ = new MessageModel(this);
    filter_ = new MessageFilter(this);
    filter_->setSourceModel(model_);
    view_ = makeView(filter_, this);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(makeFilterRow());
    layout->addWidget(view_);
    layout->addWidget(makeButtons());
    auto *copyKey = new QShortcut(QKeySequence::Copy, view_);
    copyKey->setContext(Qt::WidgetShortcut);
    connect(copyKey, &QShortcut::activated, this, &MessageList::copy);
    view_->setFocus();
}

QWidget *MessageList::makeFilterRow() {
    auto *row = new QWidget(this);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    filterText_ = new QLineEdit(row);
    filterText_->setPlaceholderText("Text in kind, file, row or message");
    filterText_->setClearButtonEnabled(true);
    filterKind_ = new QComboBox(row);
    filterKind_->addItems({"All", "Warnings and errors"});
    auto *label = new QLabel("&Filter", row);
    label->setBuddy(filterText_);
    layout->addWidget(label);
    layout->addWidget(filterText_, 1);
    layout->addWidget(filterKind_);
    connect(filterText_, &QLineEdit::textChanged, this, [this](const QString &text) {
        filter_->setText(text);
        view_->scrollToBottom();
    });
    connect(filterKind_, &QComboBox::currentIndexChanged, this, [this](int index) {
        filter_->setFaultsOnly(index == 1);
        view_->scrollToBottom();
    });
    return row;
}

QWidget *MessageList::makeButtons() {
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton *copy = buttons->addButton("&Copy", QDialogButtonBox::ActionRole);
    copy->setToolTip("Copies the selected messages, or all that are listed, as text.");
    copy->setAutoDefault(false); // Enter in the filter copies nothing
    QPushButton *close = buttons->button(QDialogButtonBox::Close);
    close->setAutoDefault(false);
    close->setIcon({}); // the theme's is black, also on a dark button
    connect(copy, &QPushButton::clicked, this, &MessageList::copy);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    return buttons;
}

void MessageList::setRows(const MessageRows &rows) {
    model_->setRows(rows);
    view_->scrollToBottom();
}

void MessageList::addRow(const MessageRow &row) {
    const bool follows = isAtEnd(*view_);
    model_->addRow(row);
    if (follows) {
        view_->scrollToBottom();
    }
}

void MessageList::moveTo(QWidget *parent) {
    if (parentWidget() == parent) {
        return;
    }
    const bool shown = isVisible();
    const QRect place = geometry();
    setParent(parent, windowFlags());
    setGeometry(place);
    setVisible(shown);
}

QString MessageList::copyText() const {
    QModelIndexList rows = view_->selectionModel()->selectedRows();
    if (rows.isEmpty()) {
        for (int i = 0; i < filter_->rowCount(); ++i) {
            rows << filter_->index(i, 0);
        }
    }
    std::sort(rows.begin(), rows.end());
    QString text;
    for (const QModelIndex &row : rows) {
        const auto cell = [&](int column) {
            return row.siblingAtColumn(column).data().toString();
        };
        QString place = cell(MessageModel::KindColumn) + '\t' + cell(MessageModel::FileColumn) +
                        '\t' + cell(MessageModel::RowColumn) + '\t';
        for (const QString &line : cell(MessageModel::TextColumn).split('\n')) {
            text += place + line + '\n';
            place = "\t\t\t";
        }
    }
    return text;
}

void MessageList::copy() {
    QApplication::clipboard()->setText(copyText());
}

} // namespace keldrin
