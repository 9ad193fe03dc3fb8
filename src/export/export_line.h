#pragma once

#include "model/survey_model.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

// The line as files of other programs.

enum class ExportFormat : unsigned char { Csv, Gdf2, Vtk };

/// A format by the names that users see.
struct ExportFormatName {
    ExportFormat format;
    std::string_view name;  ///< on a command line
    std::string_view words; ///< in a dialog
};

/// All formats.
std::span<const ExportFormatName> exportFormats();

/// What became of one format.
struct ExportResult {
    ExportFormat format = ExportFormat::Csv;
    std::vector<std::string> files = {}; ///< paths, all written or none
    std::string failure = {};            ///< why none was written, in one line; blank when all were
};

/// What became of the line. The caller must look at it.
struct [[nodiscard]] ExportOutcome {
    std::vector<ExportResult> results; ///< one for each format, in their order
    int soundings = 0;                 ///< exported
    int windows = 0;
    int layers = 0;
    int leftOut = 0;  ///< soundings of other transmitters, which are not in the project file either
    int unplaced = 0; ///< soundings with a model that have no place in the curtain

    [[nodiscard]] bool failed() const; ///< for tests
    [[nodiscard]] int written() const; ///< files
};

/// Writes the line's soundings in each format beside each other:
///
///   csv   BASE_soundings.csv, BASE_windows.csv, BASE_layers.csv
///   gdf2  BASE.dfn, BASE.dat; BASE_gdf2.dfn and .dat where BASE.dat holds something else, since
///         field data are named so too
///   vtk   BASE.vtk; none without a sounding that has a model and a place
///
/// The files of one format are replaced together or stay as they were. Each is in the log, and
/// each failure is reported with its path.
/// base     path of the files without the endings above
ExportOutcome ExportLine(const SurveyModel &model, std::span<const ExportFormat> formats,
                         const std::string &base);

} // namespace keldrin
