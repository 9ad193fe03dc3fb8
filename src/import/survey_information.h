#pragma once

#include "model/survey_model.h"

#include <string>

namespace keldrin {

/// Reads the survey information file (*.mde) that may stand beside a data file: its
/// `$ group.keyword = value` records act as defaults while the data file is read. Then settles the
/// station scaling and the coil areas and takes the metadata into control values and preset.
/// fileName  offered to the user to be chosen when it does not exist; the file is optional
/// returns   0 in every case
int Mde_File_Input(SurveyModel &model, std::string fileName);

} // namespace keldrin
