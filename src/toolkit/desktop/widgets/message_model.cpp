#include "toolkit/desktop/widgets/message_model.h"

#include "base/index.h"
#include "toolkit/desktop/widgets/qt_text.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace keldrin {

namespace {

constexpr std::array Heads = {"Kind", "File", "Row", "Message"};

// A message may begin with blank lines in the log; an empty one stays empty.
QString textOf(const MessageRow &row) {
    QStringList lines;
    for (const std::string &line : row.lines) {
        lines << qtText(line);
    }
    return lines.join('\n');
}

QString cellText(const MessageRow &row, int column) {
    switch (column) {
    case MessageModel::KindColumn:
        return kindText(row.kind);
    case MessageModel::FileColumn:
        return qtText(row.file);
    case MessageModel::RowColumn:
        return row.row > 0 ? QString::number(row.row) : QString();
    default:
        return textOf(row);
    }
}

} // namespace

QString kindText(RowKind kind) {
    switch (kind) {
    case RowKind::Error:
        return "error";
    case RowKind::Warning:
        return "warning";
    case RowKind::Notice:
        return "notice";
    case RowKind::Info:
        break;
    }
    return {};
}

void MessageModel::setRows(const MessageRows &rows) {
    beginResetModel();
    rows_ = rows;
    endResetModel();
}

void MessageModel::addRow(const MessageRow &row) {
    const int count = rowCount();
    beginInsertRows({}, count, count);
    rows_.push_back(row);
    endInsertRows();
}

const MessageRow &MessageModel::message(int row) const {
    return rows_[asIndex(row)];
}

int MessageModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int MessageModel::columnCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : static_cast<int>(Columns);
}

QVariant MessageModel::data(const QModelIndex &index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    if (role == Qt::DisplayRole) {
        return cellText(message(index.row()), index.column());
    }
    if (role == Qt::TextAlignmentRole) {
        const Qt::Alignment side = index.column() == RowColumn ? Qt::AlignRight : Qt::AlignLeft;
        return QVariant::fromValue(side | Qt::AlignTop);
    }
    return {};
}

QVariant MessageModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    return QString(Heads[asIndex(section)]);
}

void MessageFilter::setText(const QString &text) {
    text_ = text.trimmed();
    invalidateFilter();
}

void MessageFilter::setFaultsOnly(bool only) {
    faultsOnly_ = only;
    invalidateFilter();
}

bool MessageFilter::filterAcceptsRow(int row, const QModelIndex & /*parent*/) const {
    const auto &model = static_cast<const MessageModel &>(*sourceModel());
    const MessageRow &message = model.message(row);
    if (faultsOnly_ && message.kind != RowKind::Error && message.kind != RowKind::Warning) {
        return false;
    }
    QString cells;
    for (int column = 0; column < MessageModel::Columns; ++column) {
        cells += cellText(message, column) + '\n';
    }
    const QStringList words = text_.split(' ', Qt::SkipEmptyParts);
    return std::all_of(words.begin(), words.end(), [&](const QString &word) {
        return cells.contains(word, Qt::CaseInsensitive);
    });
}

} // namespace keldrin
