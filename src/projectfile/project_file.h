#pragma once

#include "base/safe_writer.h"
#include "model/survey_model.h"
#include "projectfile/control_block.h"
#include "projectfile/data_table.h"

#include <string>

namespace keldrin {

// The project file: a control block, then the data table. Logs its stages.

/// Reads a project file whole. A file that does not exist is asked for once.
/// path     in: the file; out: the file that was read
/// changes  control values and soundings; on failure SoundingCount is 0. The source of the model
///          becomes this file, without a model file
/// returns  0, or 1 when there is no file, no readable control block or no sounding; reported
///          unless the user declined to choose a file or has stopped the reading
[[nodiscard]] int STD_File_Read(SurveyModel &model, std::string &path);

/// The same from a reader that stands before the text's first line, for a program that has the text
/// in memory. Nothing is asked for.
/// path     the file's, for messages and its size
/// lines    out: where the windows stand
[[nodiscard]] int STD_File_Read_Text(SurveyModel &model, LineReader &reader,
                                     const std::string &path, DataTableLines &lines);

/// What a write is for.
enum class WriteKind {
    Replace, ///< the file takes its name
    Trial,   ///< it is written, flushed and removed again: proof that it can be written there
};

/// Writes a project file whole, or leaves the old one as it is. What stands there is kept as
/// kept_files.h says.
/// Of a Fixed-Loop line only the soundings of the selected transmitter are written; a line of the
/// log says how many were left out.
/// changes  as STD_Namelist_Write; the source of the model becomes this file
/// returns  what happened; a failure has been reported
WriteOutcome STD_File_Write(SurveyModel &model, const std::string &path,
                            WriteKind kind = WriteKind::Replace);

/// Writes a project and its model file together, or leaves both as they are. Logs, keeps and
/// reports as STD_File_Write and M1D_File_Write.
WriteOutcome Project_Files_Write(SurveyModel &model, const std::string &path);

} // namespace keldrin
