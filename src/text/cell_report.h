#pragma once

#include "text/value_readers.h"

#include <string_view>

namespace keldrin {

/// True when a cell has nothing to read: it is blank or holds a "*", the mark of a missing value
/// and of an overflowed field.
bool isEmptyCell(std::string_view cell);

/// The words of a reader's message around the label and the cell.
struct CellWords {
    std::string_view first;                  ///< before the label
    std::string_view after = " value from "; ///< after the label
    bool quoted = false;                     ///< the cell stands between double quotes
};

/// Reports a cell that could not be read: the words, the record number and the line. Nothing for a
/// quiet record.
void reportCell(const RecordLine &record, std::string_view cell, std::string_view label,
                const CellWords &words);

/// What every Val_... wrapper does with the status of its core: a failure is reported and gives
/// the default.
template <class Value>
int reported(int status, const RecordLine &record, std::string_view cell, std::string_view label,
             const CellWords &words, Value defaultValue, Value &result) {
    if (status > CellRead) {
        result = defaultValue;
        reportCell(record, cell, label, words);
    }
    return status;
}

} // namespace keldrin
