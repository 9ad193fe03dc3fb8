#include "text/column_values.h"

#include "base/real.h"
#include "text/columns.h"
#include "text/value_readers.h"

#include <algorithm>

namespace keldrin {

namespace {

template <class Real>
void readColumns(std::string_view line, std::span<const int> iVarCol, std::span<Real> values,
                 int (*read)(std::string_view, Real, Real &)) {
    SplitCells cells;
    const auto lastColumn = std::max_element(iVarCol.begin(), iVarCol.end());
    Str_Split_Columns(line, lastColumn == iVarCol.end() ? 0 : *lastColumn, line.size(), cells);
    for (std::size_t k = 0; k < values.size(); ++k) {
        const int column = k < iVarCol.size() ? iVarCol[k] : 0;
        if (read(cells.column(column), MissingValue, values[k]) != CellRead) {
            values[k] = MissingValue;
        }
    }
}

} // namespace

void Str_Columns_to_R4(std::string_view line, std::span<const int> iVarCol,
                       std::span<float> values) {
    readColumns(line, iVarCol, values, Cell_to_R4);
}

void Str_Columns_to_R8(std::string_view line, std::span<const int> iVarCol,
                       std::span<double> values) {
    readColumns(line, iVarCol, values, Cell_to_R8);
}

} // namespace keldrin
