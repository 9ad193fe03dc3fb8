#pragma once

#include "base/line_reader.h"
#include "base/safe_writer.h"
#include "projectfile/table_file.h"

#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

// The data table of a project file: one line a time window, soundings in order. The columns stand
// in data_table.cpp.

const TableFormat &dataTableFormat();

/// Makes room for soundings, see allocateSoundings().
/// returns  0, or 1 when memory ran out; reported, and capacity and count are 0
[[nodiscard]] int STD_Allocate_hTrn(SurveyModel &model, int requested);

/// Where the stored windows stand in the file, for a program that changes single cells of it.
struct DataTableLines {
    struct Labels {
        int line = 0;            ///< of the file, from 1; 0: positions of a table without labels
        std::vector<int> column; ///< of each column of the table, from 1; 0 the file has none
    };
    struct Row {
        int line = 0;           ///< of the file, from 1
        std::size_t labels = 0; ///< index of its labels
    };
    std::vector<Labels> labels;
    std::vector<Row> rows;                         ///< of all windows, sounding by sounding
    int unitsIndex = NanovoltPerAmpereSquareMetre; ///< of TEMobs and TEMcalc in the file
};

/// Reads the table on an open file, from the line after the control block, into hTrn.
/// Values come out in nV/(A m2), whatever the control block says. NumStn, or as many soundings as
/// a file of this size can hold, sets the capacity; what goes beyond it is dropped with a report.
/// path     the file's, for messages and its size
/// changes  hTrn, SoundingCount, MaxTW, TimeRatio, ModelLayerCount, the control values TEMUnits
///          and, for a Fixed-Loop line, TxStn
/// lines    out, unless null: where the windows stand
/// returns  0, or 1 without memory or without a sounding
[[nodiscard]] int STD_Data_Read(SurveyModel &model, LineReader &reader, const std::string &path,
                                DataTableLines *lines = nullptr);

/// Rows that were written, and the soundings of other transmitters that were not.
struct WrittenTable {
    int soundings = 0; ///< with rows
    int rows = 0;
    int leftOut = 0;
};

/// Appends the rows of all soundings to a text.
WrittenTable appendDataRows(std::string &out, const SurveyModel &model);

/// Writes the table alone, with a column of the misfit in percent between TEMcalc and AResObs and
/// a comment line after the labels. No program calls it; it is the documented form of the table for
/// spreadsheets.
/// returns  what happened; a failure has been reported
WriteOutcome STD_Table_Export(const SurveyModel &model, const std::string &path);

/// Bytes that the table of a model takes in a file, with some to spare.
std::size_t dataTableRoom(const SurveyModel &model);

} // namespace keldrin
