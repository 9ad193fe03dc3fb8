#pragma once

#include "base/safe_writer.h"
#include "model/survey_model.h"
#include "projectfile/replace_files.h"

#include <string>

namespace keldrin {

// The layered-model file beside a project: `*.m1d`, a table of layers. Each sounding has a row of
// its surface, which repeats layer 1, and then one row for each layer; Zinv is the elevation of the
// layer's middle, so that thicknesses follow from it. The columns stand in model_columns.h.

/// Extension of the model file, put in place of the project's.
inline constexpr const char *ModelExtension = ".m1d";

/// The model file of a project, an existing one whatever the case of its letters: "line.m1d" of
/// "line.std", "line.m1d~" of "line.std~".
std::string modelPathOf(const std::string &projectPath);

/// Reads the models of the soundings in hTrn; a block of rows finds its sounding by the stations.
/// Bad cells take the column's default and are reported; rows without a station, Zinv or ResInv,
/// blocks without a sounding and layers beyond the 48th are dropped.
/// changes  NumLayer, ThkInv, ZMid and the layer values of the soundings met; ModelLayerCount is
///          raised to the largest NumLayer; the source of the models becomes this file
/// returns  0; 1 without soundings, nothing is read, and when the user has stopped the reading; 2
///          when there is no file, or none that can be read (reported in the second case only)
[[nodiscard]] int M1D_File_Read(SurveyModel &model, const std::string &path);

/// Writes the models of all soundings whole, or leaves the old file as it is. A sounding without
/// layers has its row of the surface alone; those that the project file leaves out are left out.
/// What stands there is kept as kept_files.h says. No program calls it, since models are written
/// with their project (Project_Files_Write); it is the documented way to write them alone.
///
/// changes  the source of the models becomes this file
/// returns  what happened; a failure has been reported
WriteOutcome M1D_File_Write(SurveyModel &model, const std::string &path);

/// The model file ready to be written.
FileWrite prepareModels(SurveyModel &model, const std::string &path);

} // namespace keldrin
