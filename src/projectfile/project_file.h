#pragma once

#include "model/survey_model.h"
#include "projectfile/control_block.h"
#include "projectfile/data_table.h"
#include "projectfile/kept_file.h"

#include <string>

namespace keldrin {

// The project file: a control block, then the data table. Logs its stages.

/// Reads a project file whole. A file that does not exist is asked for once.
/// path     in: the file; out: the file that was read
/// changes  control values and soundings; on failure SoundingCount is 0
/// returns  0, or 1 when there is no file, no readable control block or no sounding; reported
///          unless the user declined to choose a file or has stopped the reading
int STD_File_Read(SurveyModel &model, std::string &path);

/// The same from a reader that stands before the text's first line, for a program that has the text
/// in memory. Nothing is asked for.
/// path     the file's, for messages and its size
/// lines    out: where the windows stand
int STD_File_Read_Text(SurveyModel &model, LineReader &reader, const std::string &path,
                       DataTableLines &lines);

/// Writes a project file whole, or leaves the old one as it is.
/// Of a Fixed-Loop line only the soundings of the selected transmitter are written; a line of the
/// log tells how many were left out. A write without a data row first keeps an old file that has
/// some, as its path with "~" behind.
/// changes  as STD_Namelist_Write
/// returns  0 always; a failure is reported, its first line WriteFailureText
int STD_File_Write(SurveyModel &model, const std::string &path);

} // namespace keldrin
