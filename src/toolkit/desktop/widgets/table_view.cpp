#include "toolkit/desktop/widgets/table_view.h"

#include "base/index.h"
#include "toolkit/desktop/widgets/qt_text.h"

#include <QAbstractTableModel>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPalette>
#include <QScrollBar>

#include <algorithm>
#include <array>
#include <utility>

namespace keldrin {

namespace {

// A share of the colour of the selection, in light and dark palettes.
QColor pointedColour(const QPalette &palette) {
    constexpr double share = 0.3;
    const QColor base = palette.color(QPalette::Base);
    const QColor mark = palette.color(QPalette::Highlight);
    const auto mixed = [](int ground, int added) {
        return static_cast<int>((1.0 - share) * ground + share * added);
    };
    return {mixed(base.red(), mark.red()), mixed(base.green(), mark.green()),
            mixed(base.blue(), mark.blue())};
}

} // namespace

/// The rows and columns of a table as its view asks for them.
class TableModel : public QAbstractTableModel {
  public:
    explicit TableModel(QWidget *parent) : QAbstractTableModel(parent), view_(*parent) {}

    void show(const TableContent &content) {
        const bool sameShape =
            content.columns == content_.columns && content.rows.size() == content_.rows.size();
        if (sameShape) {
            content_ = content;
            notifyAll();
        } else {
            beginResetModel();
            content_ = content;
            endResetModel();
        }
    }

    void pointAt(int row) {
        if (row != pointed_) {
            pointed_ = row;
            notifyAll();
        }
    }
    [[nodiscard]] int pointed() const { return pointed_; }

    [[nodiscard]] int rowCount(const QModelIndex &parent) const override {
        return parent.isValid() ? 0 : static_cast<int>(content_.rows.size());
    }
    [[nodiscard]] int columnCount(const QModelIndex &parent) const override {
        return parent.isValid() ? 0 : static_cast<int>(content_.columns.size());
    }

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override {
        const std::vector<std::string> &row = content_.rows[asIndex(index.row())];
        const std::size_t column = asIndex(index.column());
        switch (role) {
        case Qt::DisplayRole:
            return column < row.size() ? qtText(row[column]) : QString();
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(alignmentOf(column));
        case Qt::BackgroundRole:
            return index.row() + 1 == pointed_ ? QVariant(pointedColour(view_.palette()))
                                               : QVariant();
        default:
            return {};
        }
    }

    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override {
        if (orientation == Qt::Horizontal && role == Qt::DisplayRole) {
            return qtText(content_.columns[asIndex(section)].head);
        }
        if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole) {
            return QVariant::fromValue(alignmentOf(asIndex(section)));
        }
        return {};
    }

  private:
    [[nodiscard]] Qt::Alignment alignmentOf(std::size_t column) const {
        return (content_.columns[column].isNumber ? Qt::AlignRight : Qt::AlignLeft) |
               Qt::AlignVCenter;
    }

    void notifyAll() {
        const int rows = rowCount({});
        const int columns = columnCount({});
        if (rows > 0 && columns > 0) {
            emit dataChanged(index(0, 0), index(rows - 1, columns - 1));
        }
    }

    const QWidget &view_;
    TableContent content_;
    int pointed_ = 0;
};

TableView::TableView(int rows, QWidget *parent)
    : QTableView(parent), content_(new TableModel(this)), rows_(rows) {
    constexpr int measuredRows = 200; // of a long table, for the width of its columns
    setModel(content_);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setAlternatingRowColors(true);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setShowGrid(false);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setResizeContentsPrecision(measuredRows);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    constexpr int air = 6; // pixels above and below the text of a row
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + air);
}

// ---- What the model holds

// Columns only grow, so that they stand still while the content changes.
void TableView::fitColumns() {
    for (int column = 0; column < content_->columnCount({}); ++column) {
        const int wanted =
            std::max(sizeHintForColumn(column), horizontalHeader()->sectionSizeHint(column));
        if (wanted > columnWidth(column) || shownChanges_ == 0) {
            setColumnWidth(column, wanted);
        }
    }
}

void TableView::selectAgain(const TableRows &rows) {
    if (rows == selectedRows()) {
        return;
    }
    QItemSelection selection;
    for (const int row : rows) {
        const int last = content_->columnCount({}) - 1;
        selection.select(content_->index(row - 1, 0), content_->index(row - 1, last));
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

void TableView::showTable(const ControlState &control) {
    quiet_ = true;
    if (shownChanges_ != control.tableChanges) {
        content_->show(control.table);
        fitColumns();
        shownChanges_ = control.tableChanges;
        updateGeometry();
    }
    selectAgain(control.rows);
    if (content_->pointed() != control.index) {
        content_->pointAt(control.index);
        if (control.index > 0) {
            scrollTo(content_->index(control.index - 1, 0));
        }
    }
    quiet_ = false;
}

// ---- What the user does

TableRows TableView::selectedRows() const {
    TableRows rows;
    for (const QModelIndex &index : selectionModel()->selectedRows()) {
        rows.push_back(index.row() + 1);
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

void TableView::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) {
    QTableView::selectionChanged(selected, deselected);
    if (!quiet_ && onSelect) {
        onSelect(selectedRows());
    }
}

bool TableView::usesKey(const QKeyEvent &key) {
    constexpr std::array keys = {Qt::Key_Up,  Qt::Key_Down,   Qt::Key_Home,
                                 Qt::Key_End, Qt::Key_PageUp, Qt::Key_PageDown};
    const bool all = key.key() == Qt::Key_A && key.modifiers().testFlag(Qt::ControlModifier);
    return all || std::find(keys.begin(), keys.end(), key.key()) != keys.end();
}

// ---- Size

int TableView::heightOf(int rows) const {
    return horizontalHeader()->sizeHint().height() + rows * verticalHeader()->defaultSectionSize() +
           2 * frameWidth();
}

QSize TableView::sizeHint() const {
    constexpr int fewest = 5;
    const int width = horizontalHeader()->length() + verticalScrollBar()->sizeHint().width();
    return {width + 2 * frameWidth(), heightOf(std::max(rows_, fewest))};
}

QSize TableView::minimumSizeHint() const {
    constexpr int fewest = 3;
    constexpr int columns = 30;
    return {columns * fontMetrics().averageCharWidth(), heightOf(fewest)};
}

} // namespace keldrin
