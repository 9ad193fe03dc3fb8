#pragma once

#include "toolkit/message_rows.h"

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>

namespace keldrin {

/// Messages as a table: kind, file, row, text.
class MessageModel : public QAbstractTableModel {
  public:
    enum Column { KindColumn, FileColumn, RowColumn, TextColumn, Columns };

    using QAbstractTableModel::QAbstractTableModel;

    void setRows(const MessageRows &rows);
    void addRow(const MessageRow &row);
    [[nodiscard]] const MessageRow &message(int row) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

  private:
    MessageRows rows_;
};

/// The messages that hold a text, in any case, and are no plain progress when that is left out.
class MessageFilter : public QSortFilterProxyModel {
  public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    void setText(const QString &text);
    void setFaultsOnly(bool only);

  protected:
    [[nodiscard]] bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

  private:
    QString text_;
    bool faultsOnly_ = false;
};

/// "error", "warning", "notice"; blank for progress.
QString kindText(RowKind kind);

} // namespace keldrin
