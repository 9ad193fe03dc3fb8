#pragma once

#include "toolkit/message_rows.h"

#include <QDialog>
#include <QString>

class QComboBox;
class QLineEdit;
class QTreeView;

namespace keldrin {

class MessageModel;
class MessageFilter;

/// Log and messages as a list in a window of its own: kind, file and row in columns, a filter, and
/// copies as text. It does not block and stays open beside the work; the newest message is in view
/// unless the user has scrolled away from it.
class MessageList : public QDialog {
  public:
    explicit MessageList(QWidget *parent);

    void setRows(const MessageRows &rows);
    void addRow(const MessageRow &row);

    /// Makes it a window of this one, so that it can be used beside it, and keeps its place. A
    /// modal dialog blocks all windows but its own.
    void moveTo(QWidget *parent);

    /// The rows that are selected, else all that the filter leaves: one line for each line of a
    /// message, with tabs between kind, file, row and text.
    [[nodiscard]] QString copyText() const;

    // For whoever drives it.
    QLineEdit &filterText() { return *filterText_; }
    QComboBox &filterKind() { return *filterKind_; }
    QTreeView &view() { return *view_; }

  private:
    QWidget *makeFilterRow();
    QWidget *makeButtons();
    void copy();

    MessageModel *model_ = nullptr;
    MessageFilter *filter_ = nullptr;
    QTreeView *view_ = nullptr;
    QLineEdit *filterText_ = nullptr;
    QComboBox *filterKind_ = nullptr;
};

} // namespace keldrin
