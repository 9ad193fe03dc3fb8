#pragma once

#include "base/line_reader.h"
#include "base/number_text.h"
#include "model/survey_model.h"
#include "text/columns.h"

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace keldrin {

// Tables of numbers under a line of labels, as the project and the layered-model file hold them.
// A column table drives both ways: text to row values to record, and back.

enum class CellType : unsigned char { R8, R4, Int };

/// When a cell is left empty by the writer, its comma kept.
enum class EmptyCell : unsigned char { Never, IfMissing, UnlessAboveZero };

/// Weight of one axis (0 x, 1 y, 2 z), stored as one triple a window.
struct WeightAxis {
    std::size_t axis = 0;
};

/// The field of a SoundingRecord that a column holds: one a sounding, or one a window or layer.
/// Nothing for a value that the file's own code computes.
using ColumnField =
    std::variant<std::monostate, double SoundingRecord::*, WindowReals SoundingRecord::*,
                 LayerReals SoundingRecord::*, WeightAxis>;

namespace column_units {
inline constexpr std::string_view NoUnit = {};
inline constexpr std::string_view UnitOfLengths = "m or ft"; ///< as LengthUnits says
inline constexpr std::string_view UnitOfData = "TEMUnits";   ///< the control value
} // namespace column_units

struct TableColumn {
    std::string_view label;   ///< looked for in a label line, in capitals
    std::string_view written; ///< put on the label line
    std::string_view unit;    ///< blank: none
    ColumnField field;
    CellType type;
    EditDescriptor edit; ///< not used for Int
    double defaultValue; ///< where the column or the value is missing
    int position;        ///< column in a table without labels, from 1; 0 absent
    bool required;       ///< on a label line
    EmptyCell empty = EmptyCell::Never;
    bool read = true; ///< else it is written only, and missing in the rows read
};

inline constexpr std::size_t MostTableColumns = 18;

/// The values of one row in the order of the column table. 32-bit values and integers stand in
/// it unchanged; one that is not above -9.9e31 is missing.
using RowValues = std::array<double, MostTableColumns>;

/// What differs between the kinds of table files.
struct TableFormat {
    std::span<const TableColumn> columns;
    std::span<const LabelAlias> aliases; ///< old labels; empty: matched without
    std::string_view labelFailure;       ///< words before the line number
    bool faultIsError = true;            ///< a read fault is an error, else a line of the log
    int maxCells = static_cast<int>(MostTableColumns);
};

inline constexpr std::size_t MostTableLine = 8192; ///< bytes of a line; the rest is cut
inline constexpr std::size_t MostTableLabel = 32;  ///< bytes of a column label

/// What distinguishes a full row from one that was cut off.
struct RowShape {
    int fields = 0;         ///< between commas, or cells where there is none
    bool endsBlank = false; ///< nothing stands after the last comma
};

/// A reading of one table.
struct TableScan {
    const TableFormat &format;
    LineReader &reader;
    ColumnMap map;
    SplitCells cells;
    std::vector<std::string_view> labels;
    bool labelsGood = true;
    int lineCount = 0;     ///< lines of the table so far
    int labelLine = 0;     ///< line of the file with the labels in force; 0 without
    std::string_view line; ///< the current line without blanks around it
    bool silent = false;   ///< nothing is reported

    int rows = 0;          ///< data lines so far, without a cut one
    RowShape shape = {};   ///< of the last data line, else of the labels
    bool lacksEnd = false; ///< the text ended without a line end
    bool endsCut = false;  ///< ... and its last row is not full
};

/// A scan that stands before the table's first line, with the positions of a table without labels.
TableScan beginTableScan(const TableFormat &format, LineReader &reader);

/// True when the file holds the column, by its 0-based place in the column table.
inline bool hasColumn(const TableScan &scan, std::size_t column) {
    return scan.map.iVarCol[column] > 0;
}

/// Reads on to the next data row; comments, label lines and lines under bad labels are dealt with.
/// A cell that cannot be read is reported and takes its default.
/// returns  false at the end of the file
bool nextTableRow(TableScan &scan, RowValues &values);

/// The same without a look at the cells, see splitTableRow(). A row that was cut off at the end of
/// the file is counted and not given: its last number may have lost digits.
bool nextDataLine(TableScan &scan);

/// Splits the current line into scan.cells.
void splitTableRow(TableScan &scan);

/// True when a table that was scanned to its end was read whole and lost no part of a row.
bool isWholeTable(const TableScan &scan);

/// Why a table is not whole, in words; blank when it is.
std::string wholenessText(const TableScan &scan);

/// What a line of a table is, by its first character.
enum class TableLine { Blank, Comment, Labels, Data };

/// The kind of a line, which is cut and stripped of the blanks around it.
TableLine classifyTableLine(std::string_view &line);

/// Appends the label line.
void appendLabelLine(std::string &out, std::span<const TableColumn> columns);

/// Appends one row.
void appendTableRow(std::string &out, std::span<const TableColumn> columns,
                    const RowValues &values);

// Row values and records. Fields of the sounding are the `double` ones; all others belong to the
// window or layer `element` (from 0).

void loadSoundingFields(std::span<const TableColumn> columns, const SoundingRecord &record,
                        RowValues &values);
void loadElementFields(std::span<const TableColumn> columns, const SoundingRecord &record,
                       std::size_t element, RowValues &values);
void storeSoundingFields(std::span<const TableColumn> columns, const RowValues &values,
                         SoundingRecord &record);
void storeElementFields(std::span<const TableColumn> columns, const RowValues &values,
                        std::size_t element, SoundingRecord &record);

/// True when the writers of project and model leave a sounding out: one of another transmitter
/// than the selected one of a Fixed-Loop line.
bool isLeftOut(const ControlValues &control, const SoundingRecord &record);

} // namespace keldrin
