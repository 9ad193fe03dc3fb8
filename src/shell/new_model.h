#pragma once

#include "base/safe_writer.h"
#include "model/survey_model.h"

#include <string>

namespace keldrin {

/// What a caller may ask of a new model beyond the flow itself.
struct NewModelOptions {
    std::string outputDirectory;     ///< for the project; blank: beside the data file
    WriteOutcome *outcome = nullptr; ///< gets what became of the last write
};

/// Turns one field data file into a project: reads it with its side files, lets the user settle
/// line and configuration, conditions the soundings, computes apparent resistivities and writes
/// the first project file.
/// At Continue in the configuration dialog the project is only tried on the disk; it gets its name
/// once it is complete. Of a file of several lines the name offered has the line's name after it
/// when a project of the plain name exists.
/// path     in: the data file, or blank to ask the user; out: the project's path, blank on failure
///          and where it could not be written (reported; the model stays)
/// returns  0; 1 failed or cancelled in the configuration dialog; 2 declined at the file or the
///          data input dialog; 3 the window was closed. Not 0 leaves no sounding in use
int BuildNewModel(SurveyModel &model, std::string &path, const NewModelOptions &options = {});

/// "BASE_LINE", for the project of one line of several.
std::string nameWithLine(std::string_view base, std::string_view lineName);

/// What the callers of BuildNewModel say when it did not end with 0, a Cancel included.
void reportAbortedBuild();

/// "KELDRIN 4.00i updated 21/July/2020, data from " and a name of at most 64 bytes.
void showDataTitle(std::string_view displayName);

} // namespace keldrin
