#pragma once

#include "engine/engine_run.h"
#include "model/survey_model.h"
#include "projectfile/data_table.h"

#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

/// Where a cell of a table's line stands: bytes begin to end of the line.
struct CellPlace {
    std::size_t begin = 0;
    std::size_t end = 0;
    bool mayBeEmpty = false; ///< commas hold its place; where blanks do, it takes a "*"
};

/// The places of the cells that Str_Split_Columns finds in a line, all of them.
std::vector<CellPlace> cellPlaces(std::string_view line);

/// A project's text with other calculated values.
struct RewrittenProject {
    std::string text;
    std::string fault;                ///< why there is none, in words; blank when there is
    std::vector<std::string> without; ///< columns that the table has no place for
};

/// Puts TEMcalc, AResObs and AResCalc of a model into the rows of the project that it was read
/// from. Every other byte of the text stays. A column that the file lacks is added to its label
/// line and to each of these rows; a table without labels has a place for TEMcalc alone.
/// original  the bytes that were read
/// lines     where its windows stand
/// changed   for each sounding of the model, whether its rows are written
///
/// The text is read back and compared before it is returned, so that a row which would no longer
/// be read as it was (one that grows beyond 8192 bytes) becomes a fault. Reports what reading does.
/// Of a run that was stopped the result is not to be used.
RewrittenProject rewriteCells(std::string_view original, const DataTableLines &lines,
                              const SurveyModel &model, const std::vector<char> &changed,
                              const std::string &path, const EngineRun &run = {});

} // namespace keldrin
