#pragma once

#include "base/line_reader.h"
#include "projectfile/table_file.h"

#include <string>
#include <string_view>

namespace keldrin {

// The data table of a project file: one line a time window, soundings in order. The columns stand
// in data_table.cpp.

const TableFormat &dataTableFormat();

/// Makes room for soundings, see allocateSoundings().
/// returns  0, or 1 when memory ran out; reported, and capacity and count are 0
int STD_Allocate_hTrn(SurveyModel &model, int requested);

/// Reads the table on an open file, from the line behind the control block, into hTrn.
/// Values come out in nV/(A m2), whatever the control block says. NumStn, or as many soundings as
/// a file of this size can hold, sets the capacity; what goes beyond it is dropped with a report.
/// path     the file's, for messages and its size
/// changes  hTrn, SoundingCount, MaxTW, TimeRatio, ModelLayerCount, the control values TEMUnits
///          and, for a Fixed-Loop line, TxStn
/// returns  0, or 1 without memory or without a sounding
int STD_Data_Read(SurveyModel &model, LineReader &reader, const std::string &path);

/// Rows that were written, and the soundings of other transmitters that were not.
struct WrittenTable {
    int rows = 0;
    int leftOut = 0;
};

/// Appends the rows of all soundings to a text.
WrittenTable appendDataRows(std::string &out, const SurveyModel &model);

/// Writes the table alone, with a column of the misfit in percent between TEMcalc and AResObs and
/// a comment line behind the labels. A failure is reported.
/// returns  0
int STD_Table_Export(const SurveyModel &model, const std::string &path);

/// Bytes that the table of a model takes in a file, with some to spare.
std::size_t dataTableRoom(const SurveyModel &model);

} // namespace keldrin
