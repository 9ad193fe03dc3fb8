#pragma once

#include "toolkit/dialog_model.h"

#include <QTableView>

#include <functional>

namespace keldrin {

class TableModel;

/// A table of which the user selects rows: by the mouse, with Shift or Ctrl for more of them, or by
/// the keys that move. One row can be pointed at, which changes no selection.
class TableView : public QTableView {
  public:
    /// rows  that are seen at first
    TableView(int rows, QWidget *parent);

    /// Shows what the model holds. The place in the table stays where it can.
    void showTable(const ControlState &control);

    /// Called with the selected rows, from 1, when the user has changed them.
    std::function<void(const TableRows &rows)> onSelect;

    /// True for the keys that it needs for itself.
    [[nodiscard]] static bool usesKey(const QKeyEvent &key);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  protected:
    void selectionChanged(const QItemSelection &selected,
                          const QItemSelection &deselected) override;

  private:
    void fitColumns();
    void selectAgain(const TableRows &rows);
    [[nodiscard]] TableRows selectedRows() const;
    [[nodiscard]] int heightOf(int rows) const;

    TableModel *content_;
    int rows_ = 0;
    int shownChanges_ = 0; ///< ControlState::tableChanges of what is shown
    bool quiet_ = false;   ///< the program selects, not the user
};

} // namespace keldrin
